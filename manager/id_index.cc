// Chooses how the ids of a list are looked up.

#include "manager/id_index.h"

#include <algorithm>

namespace manager {
namespace {

/* Most places of the array: some for each id, and a few for good measure. */
constexpr uint64_t s_places_per_id = 8;
constexpr uint64_t s_spare_places = 4096;

}  // namespace

id_index::id_index(const std::vector<uint32_t>& ids) {
  if (ids.empty()) return;
  const auto [first, last] = std::minmax_element(ids.begin(), ids.end());
  const uint64_t width = uint64_t{*last} - *first + 1;
  if (width > ids.size() * s_places_per_id + s_spare_places) {
    for (uint32_t i = 0; i < ids.size(); ++i) far_.emplace(ids[i], i);
    return;
  }
  first_ = *first;
  near_.resize(width, no_element);
  for (uint32_t i = 0; i < ids.size(); ++i) {
    uint32_t& place = near_[ids[i] - first_];
    if (place == no_element) place = i;
  }
}

}  // namespace manager
