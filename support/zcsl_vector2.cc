// The record vector: room, insertion, deletion, and the operations. The search is in
// zcsl_vector2_search.cc. The magic code that an operation gives (0x320 or 0x321) is part of its
// contract and differs by operation.

#include "support/zcsl_vector2.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/zcsl_output.h"
#include "support/zcsl_sort_internal.h"
#include "support/zcsl_vector2_internal.h"
#include "support/zcsl_vector2_search.h"
#include "support/zcsl_vector_internal.h"

namespace {

// Block sizes are u32 for every caller (get_buffer, attach), so no array outgrows that.
uint64_t most_records(const zcsl_vector2* vector) {
  return UINT32_MAX / vector->record_size;
}

// Puts a block of the new capacity in place of an owned one.
zvsdk_status resize_owned(zcsl_vector2* vector, uint32_t capacity) {
  if (capacity == 0) {
    zcsl_memory_free(std::exchange(vector->data, nullptr));
    return 0;
  }
  void* block = zcsl_memory_realloc(vector->data, vector->bytes(capacity));
  if (!block) return zcsl_error_no_memory;
  vector->data = static_cast<uint8_t*>(block);
  return 0;
}

// Leaves a borrowed block to its owner and goes on with a copy.
zvsdk_status replace_borrowed(zcsl_vector2* vector, uint32_t capacity) {
  void* block = zcsl_memory_alloc(vector->bytes(capacity));
  if (!block) return zcsl_error_no_memory;
  const size_t kept = vector->bytes(std::min(vector->capacity, capacity));
  if (kept) std::memcpy(block, vector->data, kept);
  vector->data = static_cast<uint8_t*>(block);
  vector->owned = 1;
  return 0;
}

zvsdk_status _zcsl_vector2_growarray(zcsl_vector2* vector, uint64_t capacity) {
  if (vector->count > capacity || vector->capacity == capacity) return 0;
  if (capacity > most_records(vector)) return zcsl_error_no_memory;
  const uint32_t records = static_cast<uint32_t>(capacity);
  const zvsdk_status status =
      vector->owned ? resize_owned(vector, records) : replace_borrowed(vector, records);
  if (!status) vector->capacity = records;
  return status;
}

// The next step of growth; near the limit the step ends there.
uint64_t next_capacity(const zcsl_vector2* vector) {
  const uint64_t step = vector->capacity == 0 ? 16 : (uint64_t{vector->capacity} / 2 + 1) * 3;
  return std::min(step, most_records(vector));
}

// Room for `more` records beside those in use.
zvsdk_status make_room(zcsl_vector2* vector, uint32_t more) {
  const uint64_t wanted = uint64_t{vector->count} + more;
  if (wanted <= vector->capacity) return 0;
  return _zcsl_vector2_growarray(vector, std::max(wanted, next_capacity(vector)));
}

zvsdk_status place(zcsl_vector2* vector, uint32_t index, const void* record) {
  if (const zvsdk_status failure = make_room(vector, 1)) return failure;
  uint8_t* slot = vector->at(index);
  std::memmove(slot + vector->record_size, slot, vector->bytes(vector->count - index));
  std::memcpy(slot, record, vector->record_size);
  ++vector->count;
  return 0;
}

void release_records(zcsl_vector2* vector, uint32_t first, uint32_t end) {
  for (uint32_t i = first; vector->free && i < end; ++i) vector->free(vector->at(i));
}

// Adds to a sorted or unique vector, where the place depends on the records already there.
zvsdk_status add_in_order(zcsl_vector2* vector, const void* record, uint32_t* position) {
  const zvsdk_status search = _zcsl_vector2_findvalue(vector, UINT32_MAX, record, position);
  if (!search && vector->unique()) {
    release_records(vector, *position, *position + 1);
    std::memcpy(vector->at(*position), record, vector->record_size);
    return 0;
  }
  while (!search && *position < vector->count &&
         vector->order(record, vector->at(*position)) == 0) {
    ++*position;
  }
  return place(vector, *position, record);
}

zvsdk_status add_record(zcsl_vector2* vector, const void* record, uint32_t* index) {
  uint32_t position = vector->count;
  const bool ordered = vector->sorted() || vector->unique();
  const zvsdk_status status =
      ordered ? add_in_order(vector, record, &position) : place(vector, position, record);
  if (!status) zcsl_give(index, position);
  return status;
}

zvsdk_status delete_records(zcsl_vector2* vector, uint32_t first, uint32_t last) {
  if (first >= vector->count) return zcsl_warn_end_of_range;
  if (first > last) return 0;
  const uint32_t end = std::min(last, vector->count - 1) + 1;
  release_records(vector, first, end);
  std::memmove(vector->at(first), vector->at(end), vector->bytes(vector->count - end));
  vector->count -= end - first;
  return 0;
}

zvsdk_status drop_records(zcsl_vector2* vector) {
  release_records(vector, 0, vector->count);
  if (vector->owned) zcsl_memory_free(vector->data);
  vector->data = nullptr;
  vector->capacity = 0;
  vector->count = 0;
  vector->owned = 1;
  return 0;
}

void exchange(uint8_t* a, uint8_t* b, uint8_t* spare, size_t size) {
  std::memcpy(spare, a, size);
  std::memcpy(a, b, size);
  std::memcpy(b, spare, size);
}

// The slot past the last record is the swap space.
zvsdk_status swap_records(zcsl_vector2* vector, uint32_t a, uint32_t b) {
  if (a >= vector->count || b >= vector->count) return zcsl_warn_end_of_range;
  if (a == b) return 0;
  if (vector->count == vector->capacity) {
    const zvsdk_status failure = _zcsl_vector2_growarray(vector, uint64_t{vector->count} + 1);
    if (failure) return failure;
  }
  exchange(vector->at(a), vector->at(b), vector->at(vector->count), vector->record_size);
  return 0;
}

int32_t compare_in_context(const void* a, const void* b, void* context) {
  return static_cast<const zcsl_vector2*>(context)->order(a, b);
}

// Stores the order and runs `sort` when the records are not in it already.
template <class Sort>
zvsdk_status sort_records(zcsl_vector2* vector, zcsl_vector_compare_fn compare, int force,
                          Sort&& sort) {
  zcsl_vector_set_order(vector, compare);
  return zcsl_vector_bring_in_order(vector, force, sort);
}

}  // namespace

zvsdk_status zcsl_vector2_create(zcsl_vector2** vector, uint32_t record_size, uint32_t flags,
                                 zcsl_vector_compare_fn compare, zcsl_vector_free_fn free_record) {
  const bool threadsafe = (flags & zcsl_vector_flag_threadsafe) != 0;
  return zcsl_container_create(record_size ? vector : nullptr, threadsafe, [&](zcsl_vector2* made) {
    made->record_size = record_size;
    made->flags = flags;
    made->compare = compare;
    made->free = free_record;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector2_delete(zcsl_vector2* vector) {
  if (!vector) return 0;
  const zvsdk_status status = zcsl_container_operate(vector, zcsl_error_bad_magic_320, true,
                                                     [&] { return drop_records(vector); });
  return status ? status : zcsl_container_end(vector);
}

zvsdk_status zcsl_vector2_add(zcsl_vector2* vector, const void* record, uint32_t size,
                              uint32_t* index) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, record != nullptr, [&] {
    if (size != vector->record_size) return zcsl_error_size_mismatch;
    return add_record(vector, record, index);
  });
}

zvsdk_status zcsl_vector2_insert(zcsl_vector2* vector, uint32_t index, const void* record,
                                 uint32_t size) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, record != nullptr, [&] {
    if (size != vector->record_size) return zcsl_error_size_mismatch;
    const uint32_t position = std::min(index, vector->count);
    const zvsdk_status status = place(vector, position, record);
    if (!status) zcsl_vector_check_neighbours(vector, position);
    return status;
  });
}

zvsdk_status zcsl_vector2_getindex(zcsl_vector2* vector, uint32_t index, void** record) {
  return zcsl_container_operate(vector, record != nullptr, [&] {
    if (index >= vector->count) return zcsl_warn_end_of_range;
    *record = vector->at(index);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector2_count(zcsl_vector2* vector, uint32_t* count) {
  return zcsl_vector_operate_count(vector, count);
}

zvsdk_status zcsl_vector2_find(zcsl_vector2* vector, const void* record, uint32_t* index) {
  return zcsl_vector2_hintfind(vector, UINT32_MAX, record, index);
}

zvsdk_status zcsl_vector2_hintfind(zcsl_vector2* vector, uint32_t hint, const void* record,
                                   uint32_t* index) {
  return zcsl_container_operate(vector, record != nullptr, [&] {
    uint32_t position = 0;
    const zvsdk_status status = _zcsl_vector2_findvalue(vector, hint, record, &position);
    if (!status) zcsl_give(index, position);
    return status;
  });
}

zvsdk_status zcsl_vector2_sort(zcsl_vector2* vector, zcsl_vector_compare_fn compare, int force) {
  return zcsl_container_operate(vector, true, [&] {
    return sort_records(vector, compare, force, [&] {
      return zcsl_utils_qsort(vector->data, vector->count, vector->record_size, compare_in_context,
                              vector);
    });
  });
}

zvsdk_status zcsl_vector2_sort_by_key(zcsl_vector2* vector, zcsl_vector_compare_fn compare,
                                      uint32_t key_offset, int force, uint32_t needed) {
  return zcsl_container_operate(vector, true, [&] {
    return sort_records(vector, compare, force, [&] {
      const zcsl_sort_key key{.offset = key_offset, .descending = true};
      return zcsl_sort_by_key(vector->data, vector->count, vector->record_size, key, needed);
    });
  });
}

zvsdk_status zcsl_vector2_foreach(zcsl_vector2* vector, zcsl_vector_foreach_fn callback,
                                  void* context) {
  return zcsl_vector_operate_foreach(vector, callback, context);
}

zvsdk_status zcsl_vector2_swapindex(zcsl_vector2* vector, uint32_t a, uint32_t b) {
  return zcsl_container_operate(vector, true, [&] { return swap_records(vector, a, b); });
}

zvsdk_status zcsl_vector2_deleteindex(zcsl_vector2* vector, uint32_t index) {
  return zcsl_vector2_deleterange(vector, index, index);
}

zvsdk_status zcsl_vector2_deleterange(zcsl_vector2* vector, uint32_t first, uint32_t last) {
  return zcsl_container_operate(vector, true, [&] { return delete_records(vector, first, last); });
}

zvsdk_status zcsl_vector2_delete_matching(zcsl_vector2* vector, zcsl_vector2_match_fn matches,
                                          void* context) {
  return zcsl_container_operate(vector, matches != nullptr, [&] {
    uint32_t kept = 0;
    for (uint32_t i = 0; i < vector->count; ++i) {
      if (matches(context, vector->at(i))) {
        release_records(vector, i, i + 1);
      } else {
        if (kept != i) std::memcpy(vector->at(kept), vector->at(i), vector->record_size);
        ++kept;
      }
    }
    vector->count = kept;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector2_set_min_size(zcsl_vector2* vector, uint32_t count) {
  if (!vector) return 0;
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true,
                                [&] { return _zcsl_vector2_growarray(vector, count); });
}

zvsdk_status zcsl_vector2_reserve(zcsl_vector2* vector, uint32_t more) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true,
                                [&] { return make_room(vector, more); });
}

zvsdk_status zcsl_vector2_get_buffer(zcsl_vector2* vector, void** data, uint32_t* byte_size,
                                     uint32_t* record_size) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, true, [&] {
    zcsl_give(data, vector->data);
    zcsl_give(byte_size, static_cast<uint32_t>(vector->bytes(vector->count)));
    zcsl_give(record_size, vector->record_size);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector2_attach(zcsl_vector2* vector, void* buffer, uint32_t byte_size,
                                 uint32_t record_size, int owned, int sorted) {
  return zcsl_container_operate(vector, zcsl_error_bad_magic_320, record_size != 0, [&] {
    if (byte_size % record_size) return zcsl_error_size_mismatch;
    if (!buffer && byte_size) return zcsl_error_invalid_arg;  // no block holds those records
    drop_records(vector);
    vector->data = static_cast<uint8_t*>(buffer);
    vector->record_size = record_size;
    vector->capacity = vector->count = byte_size / record_size;
    vector->owned = owned != 0;
    zcsl_vector_end_sorted(vector);
    if (sorted) vector->flags |= zcsl_vector_flag_sorted;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_vector2_clear(zcsl_vector2* vector) {
  return zcsl_container_operate(vector, true, [&] { return drop_records(vector); });
}
