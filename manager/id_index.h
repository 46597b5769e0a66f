/*
 * id_index.h: from the ids of a list to the places of its elements, in constant time and without a
 * lock. Ids that lie close together, as those of one list usually do, are looked up in an array;
 * others in a hash table. Immutable once made.
 */
#ifndef ID_INDEX_H
#define ID_INDEX_H

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace manager {

inline constexpr uint32_t no_element = ~0u;
/* Ids lie from 1 to here. */
inline constexpr uint32_t largest_id = 0x7FFFFFFE;

class id_index {
 public:
  id_index() = default;
  /* Place i belongs to ids[i]. An id that comes twice keeps its first place. */
  explicit id_index(const std::vector<uint32_t>& ids);

  uint32_t find(uint32_t id) const noexcept {
    const uint32_t offset = id - first_;
    if (offset < near_.size()) return near_[offset];
    if (far_.empty()) return no_element;
    const auto found = far_.find(id);
    return found != far_.end() ? found->second : no_element;
  }

 private:
  uint32_t first_ = 0;
  std::vector<uint32_t> near_;                  // from first_ on
  std::unordered_map<uint32_t, uint32_t> far_;  // instead of near_
};

}  // namespace manager

#endif
