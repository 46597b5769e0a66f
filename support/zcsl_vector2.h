/*
 * zcsl_vector2.h: a growable array of fixed-size records, stored by value. It can keep itself
 * sorted, replace duplicates, search from a hint, and take over or borrow a ready-made block.
 *
 * Costs: append and getindex are constant, a search in a sorted vector is logarithmic and cheaper
 * near its hint, in any other linear; insert and delete move the tail. Record pointers stay valid
 * until the array next moves (any insertion, swap, attach, clear or set_min_size may move it).
 *
 * With zcsl_vector_flag_threadsafe each operation holds a recursive lock for its whole work, the
 * callbacks included. Without it the caller guards the vector. Statuses as in zcsl_vector.h.
 */
#ifndef ZCSL_VECTOR2_H
#define ZCSL_VECTOR2_H

#include "support/zcsl_vector.h" /* flags and callback types */

#ifdef __cplusplus
extern "C" {
#endif

/* Further flag: adding a record that compares equal to one in place replaces that one. */
enum { zcsl_vector2_flag_unique = 0x20 };

typedef struct zcsl_vector2 zcsl_vector2;

/* An empty vector; `record_size` is 1 at least. Without `compare` records order by their bytes. */
ZVSDK_API zvsdk_status zcsl_vector2_create(zcsl_vector2** vector, uint32_t record_size,
                                           uint32_t flags, zcsl_vector_compare_fn compare,
                                           zcsl_vector_free_fn free);
/* Frees what the records hold, the array if it is the vector's own, and the vector. */
ZVSDK_API zvsdk_status zcsl_vector2_delete(zcsl_vector2* vector);
/*
 * Copies a record in: at the end of an unsorted vector, behind its equals in a sorted one, over its
 * equal in a unique one, and at the front of a unique vector that is not sorted. `size` must be the
 * record size, else 0x900D0209. The record must not lie in the vector itself, whose array moves.
 * `index` is optional.
 */
ZVSDK_API zvsdk_status zcsl_vector2_add(zcsl_vector2* vector, const void* record, uint32_t size,
                                        uint32_t* index);
/*
 * Inserts at `index`, at the end at most. A record out of order there ends the sorted state. It
 * must not lie in the vector itself.
 */
ZVSDK_API zvsdk_status zcsl_vector2_insert(zcsl_vector2* vector, uint32_t index, const void* record,
                                           uint32_t size);
/*
 * `record` receives a pointer into the array (address of any pointer type, cast to void**), or
 * nothing with 0x100D0361 when `index` is not below the count.
 */
ZVSDK_API zvsdk_status zcsl_vector2_getindex(zcsl_vector2* vector, uint32_t index, void** record);
/* A null vector counts 0. */
ZVSDK_API zvsdk_status zcsl_vector2_count(zcsl_vector2* vector, uint32_t* count);
/* The first equal record of a sorted vector, or of an unsorted one in a walk from the front. */
ZVSDK_API zvsdk_status zcsl_vector2_find(zcsl_vector2* vector, const void* record, uint32_t* index);
/* As find, starting near index `hint`; any value is safe. `index` is optional. */
ZVSDK_API zvsdk_status zcsl_vector2_hintfind(zcsl_vector2* vector, uint32_t hint,
                                             const void* record, uint32_t* index);
/*
 * Stores `compare` (null: order by bytes) and sorts, unless the vector is sorted that way already
 * and `force` is 0. Not stable; ties fall as zcsl_utils_qsort puts them.
 */
ZVSDK_API zvsdk_status zcsl_vector2_sort(zcsl_vector2* vector, zcsl_vector_compare_fn compare,
                                         int force);
/* Calls back for every record in index order; 0x100D01A0 when the callback stopped the walk. */
ZVSDK_API zvsdk_status zcsl_vector2_foreach(zcsl_vector2* vector, zcsl_vector_foreach_fn callback,
                                            void* context);
/* Exchanges two records. The sorted state is not touched. Fails only for want of memory. */
ZVSDK_API zvsdk_status zcsl_vector2_swapindex(zcsl_vector2* vector, uint32_t a, uint32_t b);
/* Deletes one record, after what it holds is freed. */
ZVSDK_API zvsdk_status zcsl_vector2_deleteindex(zcsl_vector2* vector, uint32_t index);
/* Deletes `first` to `last`, both inclusive, as far as there are records; first > last is no-op. */
ZVSDK_API zvsdk_status zcsl_vector2_deleterange(zcsl_vector2* vector, uint32_t first,
                                                uint32_t last);
/* Room for exactly `count` records; never fewer than there are. Null returns 0. */
ZVSDK_API zvsdk_status zcsl_vector2_set_min_size(zcsl_vector2* vector, uint32_t count);
/* The records in use, borrowed. All outputs are optional; sizes are in bytes. */
ZVSDK_API zvsdk_status zcsl_vector2_get_buffer(zcsl_vector2* vector, void** data,
                                               uint32_t* byte_size, uint32_t* record_size);
/*
 * Drops the records and goes on with those in `buffer`. With `owned` nonzero the block came from
 * zcsl_memory_alloc and is the vector's from here on; else it must outlive the vector or its first
 * growth, which copies it. The block must be aligned as its records are. `sorted` says whether the
 * records are in order.
 */
ZVSDK_API zvsdk_status zcsl_vector2_attach(zcsl_vector2* vector, void* buffer, uint32_t byte_size,
                                           uint32_t record_size, int owned, int sorted);
/* Frees what the records hold and the array. */
ZVSDK_API zvsdk_status zcsl_vector2_clear(zcsl_vector2* vector);

#ifdef __cplusplus
}
#endif

#endif
