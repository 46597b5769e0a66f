/*
 * zcsl_vector2_search.h: the search of the record vector. Internal to the record vector; the caller
 * holds its lock.
 */
#ifndef ZCSL_VECTOR2_SEARCH_H
#define ZCSL_VECTOR2_SEARCH_H

#include "support/zcsl_vector2_internal.h"

/*
 * The position of the first record that is equal, or 0x100D0003 and where a new one belongs: the
 * first record above it in a sorted vector, the start of the walk in any other.
 */
zvsdk_status _zcsl_vector2_findvalue(zcsl_vector2* vector, uint32_t hint, const void* record,
                                     uint32_t* position);

#endif
