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
    const uint32_t offset = id - m_first;
    if (offset < m_near.size()) return m_near[offset];
    if (m_far.empty()) return no_element;
    const auto found = m_far.find(id);
    return found != m_far.end() ? found->second : no_element;
  }

 private:
  uint32_t m_first = 0;
  std::vector<uint32_t> m_near;                  // from m_first on
  std::unordered_map<uint32_t, uint32_t> m_far;  // instead of m_near
};

}  // namespace manager

#endif
