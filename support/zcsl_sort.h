/*
 * zcsl_sort.h: the one sort of the system. In place, not stable, allocates nothing, and
 * deterministic to the byte: records that compare equal are permuted in a way that depends on their
 * order before the sort alone, so no other sort may stand in for it.
 */
#ifndef ZCSL_SORT_H
#define ZCSL_SORT_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Negative when `a` comes before `b`, positive when behind, 0 when equal. The outcome must follow
 * from the two records and the context alone. It need not be a consistent order.
 */
typedef int32_t (*zcsl_sort_compare)(const void* a, const void* b, void* context);

/*
 * Sorts `count` records of `record_size` bytes. 0x900F0001 for a null base, a null comparison or a
 * record size of 0. About count times log2(count) comparisons in the usual case. Quadratic when
 * most records compare equal, and when they stand in an order whose middle record is, range after
 * range, near the first or the last, such as rising and then falling. Reentrant; uses the caller's
 * array and its own stack only.
 */
ZVSDK_API zvsdk_status zcsl_utils_qsort(void* base, uint32_t count, uint32_t record_size,
                                        zcsl_sort_compare compare, void* context);

#ifdef __cplusplus
}
#endif

#endif
