// The search of the record vector. In a sorted vector it gallops from the hint in doubling steps
// until the record is bracketed, then halves what is left; without a usable hint it halves from the
// start. Otherwise it walks, from the hint and once round.

#include "support/zcsl_vector2_search.h"

#include "support/zcsl_error.h"

namespace {

// A search in progress: the record may stand at `low` to `high`, both inclusive.
struct bracket {
  zcsl_vector2* vector;
  const void* record;
  uint32_t low;
  uint32_t high;
  bool found;
  bool done;

  // Compares at `position` and says whether the record stands there or before.
  bool not_behind(uint32_t position) {
    const int32_t order = vector->order(record, vector->at(position));
    if (order == 0) found = true;
    return order <= 0;
  }
};

void gallop(bracket& search, uint32_t position) {
  for (uint32_t step = 1;; step *= 2) {
    if (search.not_behind(position)) {
      search.high = position == 0 ? 0 : position - 1;
      if (position <= search.low || position - search.low <= step) return;
      position -= step;
    } else {
      search.low = position + 1;
      if (search.high <= position || search.high - position <= step) return;
      position += step;
    }
    if (search.low > search.high) return;
  }
}

void halve(bracket& search) {
  while (!search.done && search.low <= search.high) {
    const uint32_t mid = search.low + ((search.high - search.low) >> 1);
    if (!search.not_behind(mid)) {
      search.low = mid + 1;
    } else if (mid == 0) {
      search.done = true;
    } else {
      search.high = mid - 1;
    }
  }
}

zvsdk_status search_sorted(zcsl_vector2* vector, uint32_t hint, const void* record,
                           uint32_t* position) {
  bracket search{.vector = vector,
                 .record = record,
                 .low = 0,
                 .high = vector->count - 1,
                 .found = false,
                 .done = false};
  if (hint <= search.high) gallop(search, hint);
  halve(search);
  *position = search.low;
  return search.found ? 0 : zcsl_warn_not_found;
}

bool walk(zcsl_vector2* vector, uint32_t first, uint32_t end, const void* record,
          uint32_t* position) {
  for (uint32_t i = first; i < end; ++i) {
    if (vector->order(record, vector->at(i)) == 0) {
      *position = i;
      return true;
    }
  }
  return false;
}

zvsdk_status search_unsorted(zcsl_vector2* vector, uint32_t hint, const void* record,
                             uint32_t* position) {
  const uint32_t start = hint < vector->count ? hint : 0;
  *position = start;
  const bool found = walk(vector, start, vector->count, record, position) ||
                     walk(vector, 0, start, record, position);
  return found ? 0 : zcsl_warn_not_found;
}

}  // namespace

zvsdk_status _zcsl_vector2_findvalue(zcsl_vector2* vector, uint32_t hint, const void* record,
                                     uint32_t* position) {
  *position = 0;
  if (vector->count == 0) return zcsl_warn_not_found;
  return vector->sorted() ? search_sorted(vector, hint, record, position)
                          : search_unsorted(vector, hint, record, position);
}
