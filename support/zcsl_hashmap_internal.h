/*
 * zcsl_hashmap_internal.h: for callers that put many keys into a hash map. Internal.
 */
#ifndef ZCSL_HASHMAP_INTERNAL_H
#define ZCSL_HASHMAP_INTERNAL_H

#include "support/zcsl_hashmap.h"

/*
 * Has the place of a key fetched into the cache. A large table is all cache misses: a caller that
 * knows its next keys asks for each a dozen insertions ahead, and waits for none. The caller has
 * the map to itself.
 */
void zcsl_hashmap_prefetch(const zcsl_hashmap* map, uint32_t key);

#endif
