/*
 * zcsl_lrumap.h: a bounded cache from u32 keys to pointer-sized values that lets the oldest entries
 * go. An entry is as old as its insertion or its last lookup. Insert, lookup and remove are
 * constant time, plus constant time for each entry that gives way; each entry is one allocation.
 *
 * With a free callback the map owns its values; a remove with an output hands the value over. The
 * callback runs at the end of an operation, when the map is whole again.
 *
 * Not thread-safe under any flag: a lookup reorders the entries, so the caller keeps even lookups
 * apart. Statuses as in zcsl_vector.h; a wrong handle gives 0x900D0321.
 */
#ifndef ZCSL_LRUMAP_H
#define ZCSL_LRUMAP_H

#include "support/zcsl_hashmap.h" /* zcsl_hashmap_flag_unique_key */

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_lrumap zcsl_lrumap;

/* Releases an entry. */
typedef void (*zcsl_lrumap_free_fn)(uint32_t key, void* value);

/* An empty map without a limit. Of the flags only zcsl_hashmap_flag_unique_key counts. */
ZVSDK_API zvsdk_status zcsl_lrumap_create(zcsl_lrumap** map, uint32_t flags,
                                          zcsl_lrumap_free_fn free);
/* Frees every entry, in no order of age, and the map. */
ZVSDK_API zvsdk_status zcsl_lrumap_delete(zcsl_lrumap* map);
/*
 * Adds the newest entry. A value under the same key is freed, and then the oldest entries beyond
 * the limit are, oldest first. With unique keys a present key gives 0x900D0368 and keeps its age.
 * On failure the value stays the caller's.
 */
ZVSDK_API zvsdk_status zcsl_lrumap_insert(zcsl_lrumap* map, uint32_t key, void* value);
/* Makes an entry the newest. 0x100D0003 when absent. `value` is optional. */
ZVSDK_API zvsdk_status zcsl_lrumap_lookup(zcsl_lrumap* map, uint32_t key, void** value);
/* Takes a key out; without `value` the entry is freed. 0x100D0003 when absent. */
ZVSDK_API zvsdk_status zcsl_lrumap_remove(zcsl_lrumap* map, uint32_t key, void** value);
/* Sets the limit, 0 for none, and frees what is beyond it, oldest first. */
ZVSDK_API zvsdk_status zcsl_lrumap_set_max_count(zcsl_lrumap* map, uint32_t count);
/* The limit; 0 for none. */
ZVSDK_API zvsdk_status zcsl_lrumap_get_max_count(zcsl_lrumap* map, uint32_t* count);
/* The number of entries. */
ZVSDK_API zvsdk_status zcsl_lrumap_count(zcsl_lrumap* map, uint32_t* count);

/* The entry at an end, which keeps its age. Outputs are optional. 0x100D0003 when empty. */
ZVSDK_API zvsdk_status zcsl_lrumap_oldest(zcsl_lrumap* map, uint32_t* key, void** value);
ZVSDK_API zvsdk_status zcsl_lrumap_newest(zcsl_lrumap* map, uint32_t* key, void** value);
/* Takes the entry at an end out; without `value` it is freed. `key` is optional. */
ZVSDK_API zvsdk_status zcsl_lrumap_remove_oldest(zcsl_lrumap* map, uint32_t* key, void** value);
ZVSDK_API zvsdk_status zcsl_lrumap_remove_newest(zcsl_lrumap* map, uint32_t* key, void** value);

#ifdef __cplusplus
}
#endif

#endif
