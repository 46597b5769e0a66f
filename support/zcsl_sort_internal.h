/*
 * zcsl_sort_internal.h: the sort over a signed 32-bit key inside each record. It gives exactly the
 * permutation that zcsl_utils_qsort gives with the comparison "difference of the two keys, wrapped
 * to 32 bits", but ties are nearly free: a million records of one key take a few scans. Keys that
 * are all distinct are sorted in count times log2(count) steps from whatever order; where that is
 * an unlucky one it takes a scratch block of 8 bytes a record, and without memory it takes longer.
 * Quadratic are only unlucky orders of keys some of which are equal. Internal.
 */
#ifndef ZCSL_SORT_INTERNAL_H
#define ZCSL_SORT_INTERNAL_H

#include "support/zcsl_sort.h"

/* The key: an int32_t at `offset` in the record, compared as a - b, or as b - a if descending. */
struct zcsl_sort_key {
  uint32_t offset;
  bool descending;
};

/*
 * Sorts by the key. Only the first `needed` places are brought into their final order, which saves
 * most of the work when the rest is about to be deleted; the places behind hold the other records
 * in no particular order. Give `count` (or more) to sort everything. 0x900F0001 for a null base, a
 * record size of 0 or a key that does not lie within the record.
 */
zvsdk_status zcsl_sort_by_key(void* base, uint32_t count, uint32_t record_size, zcsl_sort_key key,
                              uint32_t needed);

#endif
