/*
 * zcsl_vector.h: a growable array of pointer-sized values, with an optional order, an optional free
 * callback and a sorted state that it looks after itself.
 *
 * Use: create, add or insert, getindex, find or foreach, delete. With a free callback the vector
 * owns its items; an operation with an output parameter hands the item over instead of freeing it.
 * Costs: add at the end and getindex are constant; a sorted add and a find in a sorted vector are
 * logarithmic (the add moves the tail, one slot an item); any other find is linear. The array grows
 * by half and never shrinks.
 *
 * Threads: with zcsl_vector_flag_threadsafe each operation holds a recursive lock for its whole
 * work, so a foreach callback may use the same vector. Without it the caller guards the vector.
 *
 * Conventions of every container: a null handle or required pointer gives 0x900D0001, a handle that
 * is no live container of the kind 0x900D0320 or 0x900D0321, an allocation that failed 0x900D0002
 * with the container as it was; create gives 0x900D0007 before the datatypes module is started.
 * Outcomes that are no errors: 0x100D0003 not found, 0x100D0361 end of range, 0x100D01A0 aborted.
 * Deleting null returns 0.
 */
#ifndef ZCSL_VECTOR_H
#define ZCSL_VECTOR_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Flags of both vector kinds. "Sorted" is a request and a state: the items are in order now. */
enum { zcsl_vector_flag_threadsafe = 0x01, zcsl_vector_flag_sorted = 0x10 };

typedef struct zcsl_vector zcsl_vector;

/* The order of two items (of two record pointers in a record vector): negative, zero, positive. */
typedef int32_t (*zcsl_vector_compare_fn)(const void* a, const void* b);
/* Releases an item (in a record vector: what the record holds, not the record). */
typedef void (*zcsl_vector_free_fn)(void* item);
/* One step of a walk; 0 stops it. */
typedef int32_t (*zcsl_vector_foreach_fn)(void* context, void* item);

/* An empty vector. Without `compare` items are ordered as unsigned numbers. Allocates no items. */
ZVSDK_API zvsdk_status zcsl_vector_create(zcsl_vector** vector, uint32_t flags,
                                          zcsl_vector_compare_fn compare, zcsl_vector_free_fn free);
/* Clears and releases the vector. */
ZVSDK_API zvsdk_status zcsl_vector_delete(zcsl_vector* vector);
/* Appends; in a sorted vector the item goes behind all items that compare equal. */
ZVSDK_API zvsdk_status zcsl_vector_add(zcsl_vector* vector, void* item);
/* Inserts at `index`, at the end at most. An item out of order there ends the sorted state. */
ZVSDK_API zvsdk_status zcsl_vector_insert(zcsl_vector* vector, uint32_t index, void* item);
/* The item at `index`, which stays. */
ZVSDK_API zvsdk_status zcsl_vector_getindex(zcsl_vector* vector, uint32_t index, void** item);
/* Takes an item out and hands it over; `item` is optional. The free callback does not run. */
ZVSDK_API zvsdk_status zcsl_vector_removeindex(zcsl_vector* vector, uint32_t index, void** item);
/* Takes an item out and frees it, also one that is null, after the lock is released. */
ZVSDK_API zvsdk_status zcsl_vector_deleteindex(zcsl_vector* vector, uint32_t index);
/* Exchanges two items. The sorted state is not touched. */
ZVSDK_API zvsdk_status zcsl_vector_swapindex(zcsl_vector* vector, uint32_t a, uint32_t b);
/* A null vector counts 0. */
ZVSDK_API zvsdk_status zcsl_vector_count(zcsl_vector* vector, uint32_t* count);
/* The first item that is or compares equal to `item`. `index` is optional. */
ZVSDK_API zvsdk_status zcsl_vector_find(zcsl_vector* vector, const void* item, uint32_t* index);
/*
 * Stores `compare` and sorts, unless the vector is sorted that way already and `force` is 0. A null
 * `compare` sorts nothing. Not stable; ties fall as zcsl_utils_qsort puts them.
 */
ZVSDK_API zvsdk_status zcsl_vector_sort(zcsl_vector* vector, zcsl_vector_compare_fn compare,
                                        int force);
/* Calls back for every item in index order; 0x100D01A0 when the callback stopped the walk. */
ZVSDK_API zvsdk_status zcsl_vector_foreach(zcsl_vector* vector, zcsl_vector_foreach_fn callback,
                                           void* context);
/* Makes room for `size` items at least. Never shrinks. */
ZVSDK_API zvsdk_status zcsl_vector_set_min_size(zcsl_vector* vector, uint32_t size);
/* Frees every item that is not null. The room stays. */
ZVSDK_API zvsdk_status zcsl_vector_clear(zcsl_vector* vector);

#ifdef __cplusplus
}
#endif

#endif
