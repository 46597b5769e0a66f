// The pointer vector. The magic code that an operation gives (0x320 or 0x321) is part of its
// contract and differs by operation.

#include "support/zcsl_vector.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/zcsl_output.h"
#include "support/zcsl_sort.h"
#include "support/zcsl_vector_internal.h"

namespace {

int32_t compare_values(const void* a, const void* b) {
  const uintptr_t x = reinterpret_cast<uintptr_t>(a);
  const uintptr_t y = reinterpret_cast<uintptr_t>(b);
  return (x > y) - (x < y);
}

}  // namespace

struct zcsl_vector : zcsl_container_head<0xABCDEF12, zcsl_critsec> {
  static constexpr const char* source = "zcsl_vector";

  void** items = nullptr;
  uint32_t capacity = 0;
  uint32_t count = 0;
  uint32_t flags = 0;
  zcsl_vector_compare_fn compare = nullptr;
  zcsl_vector_free_fn free = nullptr;

  bool sorted() const { return (flags & zcsl_vector_flag_sorted) != 0; }
  void* at(uint32_t index) const { return items[index]; }
  int32_t order(const void* a, const void* b) const {
    return compare ? compare(a, b) : compare_values(a, b);
  }
};

namespace {

zvsdk_status set_capacity(zcsl_vector* vector, uint32_t capacity) {
  void* items = zcsl_memory_realloc(vector->items, sizeof(void*) * size_t{capacity});
  if (!items) return zcsl_error_no_memory;
  vector->items = static_cast<void**>(items);
  vector->capacity = capacity;
  return 0;
}

// Room for one more item. Small capacities, where half of the half is nothing, grow by one.
zvsdk_status make_room(zcsl_vector* vector) {
  const uint64_t present = vector->capacity;
  if (vector->count < present) return 0;
  if (present == UINT32_MAX) return zcsl_error_no_memory;
  const uint64_t wanted = present == 0 ? 16 : std::max(present / 2 * 3, present + 1);
  return set_capacity(vector, static_cast<uint32_t>(std::min<uint64_t>(wanted, UINT32_MAX)));
}

zvsdk_status place(zcsl_vector* vector, uint32_t index, void* item) {
  if (const zvsdk_status failure = make_room(vector)) return failure;
  void** slot = vector->items + index;
  std::memmove(slot + 1, slot, sizeof(void*) * (vector->count - index));
  *slot = item;
  ++vector->count;
  return 0;
}

// Binary search in a sorted vector. The lower bound is the first item not below `item`, the upper
// bound the first item above it; `stays_left` says which comparison results go to the left half.
template <class StaysLeft>
uint32_t bound(const zcsl_vector* vector, const void* item, StaysLeft stays_left, bool* found) {
  uint32_t low = 0;
  uint32_t end = vector->count;
  *found = false;
  while (low < end) {
    const uint32_t mid = low + ((end - 1 - low) >> 1);
    const int32_t order = vector->order(item, vector->items[mid]);
    if (order == 0) *found = true;
    if (stays_left(order)) {
      end = mid;
    } else {
      low = mid + 1;
    }
  }
  return low;
}

zvsdk_status find_sorted(const zcsl_vector* vector, const void* item, uint32_t* index) {
  bool found = false;
  *index = bound(
      vector, item, [](int32_t order) { return order <= 0; }, &found);
  return found ? 0 : zcsl_warn_not_found;
}

zvsdk_status find_linear(const zcsl_vector* vector, const void* item, uint32_t* index) {
  for (uint32_t i = 0; i < vector->count; ++i) {
    const void* candidate = vector->items[i];
    if (candidate == item || (vector->compare && vector->compare(candidate, item) == 0)) {
      *index = i;
      return 0;
    }
  }
  return zcsl_warn_not_found;
}

zvsdk_status take_out(zcsl_vector* vector, uint32_t index, void** item) {
  if (index >= vector->count) return zcsl_warn_end_of_range;
  void** slot = vector->items + index;
  zcsl_give(item, *slot);
  --vector->count;
  std::memmove(slot, slot + 1, sizeof(void*) * (vector->count - index));
  vector->items[vector->count] = nullptr;
  return 0;
}

int32_t compare_slots(const void* a, const void* b, void* context) {
  const zcsl_vector_compare_fn compare = static_cast<const zcsl_vector*>(context)->compare;
  return compare(*static_cast<void* const*>(a), *static_cast<void* const*>(b));
}

zvsdk_status sort_items(zcsl_vector* vector, zcsl_vector_compare_fn compare, bool force) {
  zcsl_vector_set_order(vector, compare);
  if (!compare) return 0;
  return zcsl_vector_bring_in_order(vector, force, [&] {
    return zcsl_utils_qsort(vector->items, vector->count, sizeof(void*), compare_slots, vector);
  });
}

zvsdk_status clear_items(zcsl_vector* vector) {
  for (uint32_t i = 0; vector->free && i < vector->count; ++i) {
    if (vector->items[i]) vector->free(vector->items[i]);
  }
  if (vector->items) std::memset(vector->items, 0, sizeof(void*) * size_t{vector->capacity});
  vector->count = 0;
  return 0;
}

}  // namespace

zvsdk_status zcsl_vector_create(zcsl_vector** vector, uint32_t flags,
                                zcsl_vector_compare_fn compare, zcsl_vector_free_fn free_item) {
  const bool threadsafe = (flags & zcsl_vector_flag_threadsafe) != 0;
  return zcsl_container_create(vector, threadsafe, [&](zcsl_vector* made) {
    made->flags = flags;
    made->compare = compare;
    made->free = free_item;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector_delete(zcsl_vector* vector) {
  if (!vector) return 0;
  const zvsdk_status status = zcsl_container_operate(vector, zcsl_error_bad_magic_320, true,
                                                     [&] { return clear_items(vector); });
  return status ? status : zcsl_container_end(vector, vector->items);
}

zvsdk_status zcsl_vector_add(zcsl_vector* vector, void* item) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true, [&] {
    bool found = false;
    const auto not_above = [](int32_t order) { return order < 0; };
    const uint32_t index =
        vector->sorted() ? bound(vector, item, not_above, &found) : vector->count;
    return place(vector, index, item);
  });
}

zvsdk_status zcsl_vector_insert(zcsl_vector* vector, uint32_t index, void* item) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true, [&] {
    const uint32_t position = std::min(index, vector->count);
    const zvsdk_status status = place(vector, position, item);
    if (!status) zcsl_vector_check_neighbours(vector, position);
    return status;
  });
}

zvsdk_status zcsl_vector_getindex(zcsl_vector* vector, uint32_t index, void** item) {
  return zcsl_container_operate(vector, item != nullptr, [&] {
    if (index >= vector->count) return zcsl_warn_end_of_range;
    *item = vector->items[index];
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector_removeindex(zcsl_vector* vector, uint32_t index, void** item) {
  return zcsl_container_operate(vector, true, [&] { return take_out(vector, index, item); });
}

zvsdk_status zcsl_vector_deleteindex(zcsl_vector* vector, uint32_t index) {
  void* item = nullptr;
  const zvsdk_status status = zcsl_vector_removeindex(vector, index, &item);
  if (!status && vector->free) vector->free(item);
  return status;
}

zvsdk_status zcsl_vector_swapindex(zcsl_vector* vector, uint32_t a, uint32_t b) {
  return zcsl_container_operate(vector, true, [&] {
    if (a >= vector->count || b >= vector->count) return zcsl_warn_end_of_range;
    std::swap(vector->items[a], vector->items[b]);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector_count(zcsl_vector* vector, uint32_t* count) {
  return zcsl_vector_operate_count(vector, count);
}

zvsdk_status zcsl_vector_find(zcsl_vector* vector, const void* item, uint32_t* index) {
  return zcsl_container_operate(vector, true, [&] {
    uint32_t position = 0;
    const zvsdk_status status = vector->sorted() ? find_sorted(vector, item, &position)
                                                 : find_linear(vector, item, &position);
    if (!status) zcsl_give(index, position);
    return status;
  });
}

zvsdk_status zcsl_vector_sort(zcsl_vector* vector, zcsl_vector_compare_fn compare, int force) {
  return zcsl_container_operate(vector, true,
                                [&] { return sort_items(vector, compare, force != 0); });
}

zvsdk_status zcsl_vector_foreach(zcsl_vector* vector, zcsl_vector_foreach_fn callback,
                                 void* context) {
  return zcsl_vector_operate_foreach(vector, callback, context);
}

zvsdk_status zcsl_vector_set_min_size(zcsl_vector* vector, uint32_t size) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true, [&] {
    return size > vector->capacity ? set_capacity(vector, size) : zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector_clear(zcsl_vector* vector) {
  return zcsl_container_operate(vector, true, [&] { return clear_items(vector); });
}
