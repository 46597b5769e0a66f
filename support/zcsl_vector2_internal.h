/*
 * zcsl_vector2_internal.h: the record vector from inside: its record, a view for loops over all
 * records, and bulk operations with the outcome of many single ones. Internal.
 *
 * The view is for a caller that keeps writers out (by the vector's owner's lock) while it uses it;
 * the bulk operations lock as every operation does.
 */
#ifndef ZCSL_VECTOR2_INTERNAL_H
#define ZCSL_VECTOR2_INTERNAL_H

#include <stddef.h>

#include "support/zcsl_container.h"
#include "support/zcsl_vector2.h"

struct zcsl_vector2 : zcsl_container_head<0xABCDEF13, zcsl_critsec> {
  static constexpr const char* source = "zcsl_vector2";

  uint8_t* data = nullptr;
  uint32_t capacity = 0;
  uint32_t record_size = 0;
  uint32_t count = 0;
  uint8_t owned = 1;
  uint32_t flags = 0;
  zcsl_vector_compare_fn compare = nullptr;
  zcsl_vector_free_fn free = nullptr;

  bool sorted() const { return (flags & zcsl_vector_flag_sorted) != 0; }
  bool unique() const { return (flags & zcsl_vector2_flag_unique) != 0; }
  size_t bytes(uint32_t records) const { return size_t{records} * record_size; }
  uint8_t* at(uint32_t index) { return data + bytes(index); }
  int32_t order(const void* a, const void* b) const {
    return compare ? compare(a, b) : zcsl_memory_memcmp(a, b, record_size);
  }
};

/* The records of a vector as an array of their type. Null counts none. */
template <class Record>
struct zcsl_vector2_view {
  explicit zcsl_vector2_view(zcsl_vector2* vector)
      : records(vector ? reinterpret_cast<Record*>(vector->data) : nullptr),
        count(vector ? vector->count : 0) {}

  Record* begin() const { return records; }
  Record* end() const { return records + count; }
  Record& operator[](uint32_t index) const { return records[index]; }

  Record* records;
  uint32_t count;
};

/* Makes sure that the next `more` additions need no memory. Grows as additions would. */
zvsdk_status zcsl_vector2_reserve(zcsl_vector2* vector, uint32_t more);

/*
 * zcsl_vector2_sort with `compare`, for a `compare` that orders by the signed 32-bit field at byte
 * `key_offset`, higher first, by difference (b - a, wrapping). The records end up exactly where
 * that sort puts them, and the stored order and the sorted state too, but the comparison is not
 * called.
 *
 * Only the first `needed` records must be in their final places; the others are some permutation of
 * the rest, for a caller that deletes them next.
 */
zvsdk_status zcsl_vector2_sort_by_key(zcsl_vector2* vector, zcsl_vector_compare_fn compare,
                                      uint32_t key_offset, int force, uint32_t needed);

/* True for a record that is to go. Called once a record, in index order. */
typedef bool (*zcsl_vector2_match_fn)(void* context, const void* record);

/*
 * Deletes all records that match, in one pass: the free callback runs in index order, the others
 * keep their order. Same outcome as zcsl_vector2_deleteindex for each.
 */
zvsdk_status zcsl_vector2_delete_matching(zcsl_vector2* vector, zcsl_vector2_match_fn matches,
                                          void* context);

#endif
