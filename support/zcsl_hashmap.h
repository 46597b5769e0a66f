/*
 * zcsl_hashmap.h: u32 keys to pointer-sized values in one flat open-addressed table. No entry is an
 * allocation of its own, and there is no order. Insert, lookup and remove are constant time; the
 * table doubles before it is three quarters full.
 *
 * With a free callback the map owns its values; update and a remove with an output hand the value
 * over. With zcsl_hashmap_flag_threadsafe lookup, count and enum share a read lock and the rest
 * take the write lock; insert and clear call the free callback inside it. Statuses as in
 * zcsl_vector.h; a wrong handle gives 0x900D0321.
 */
#ifndef ZCSL_HASHMAP_H
#define ZCSL_HASHMAP_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

enum {
  zcsl_hashmap_flag_threadsafe = 0x01,
  zcsl_hashmap_flag_unique_key = 0x20 /* adding a present key gives 0x900D0368 */
};

typedef struct zcsl_hashmap zcsl_hashmap;

/* Releases an entry. */
typedef void (*zcsl_hashmap_free_fn)(uint32_t key, void* value);

/* An empty map. */
ZVSDK_API zvsdk_status zcsl_hashmap_create(zcsl_hashmap** map, uint32_t flags,
                                           zcsl_hashmap_free_fn free);
/* Frees every entry and the map. Takes no lock. */
ZVSDK_API zvsdk_status zcsl_hashmap_delete(zcsl_hashmap* map);
/* Stores a value; one that it replaces is freed when it is not null. */
ZVSDK_API zvsdk_status zcsl_hashmap_insert(zcsl_hashmap* map, uint32_t key, void* value);
/* Stores a value; one that it replaces goes to `old` (optional; null for a new key). */
ZVSDK_API zvsdk_status zcsl_hashmap_update(zcsl_hashmap* map, uint32_t key, void* value,
                                           void** old);
/* 0x100D0003 when absent. `value` is optional. */
ZVSDK_API zvsdk_status zcsl_hashmap_lookup(zcsl_hashmap* map, uint32_t key, void** value);
/*
 * Takes a key out; without `value` the entry is freed, after the lock is released. 0x100D0003 when
 * absent.
 */
ZVSDK_API zvsdk_status zcsl_hashmap_remove(zcsl_hashmap* map, uint32_t key, void** value);
/* The number of entries. */
ZVSDK_API zvsdk_status zcsl_hashmap_count(zcsl_hashmap* map, uint32_t* count);
/* Frees every entry. The capacity stays. */
ZVSDK_API zvsdk_status zcsl_hashmap_clear(zcsl_hashmap* map);
/* Rebuilds the table at the size that its entries need. */
ZVSDK_API zvsdk_status zcsl_hashmap_compact(zcsl_hashmap* map);
/* Makes room for `entries` at least. Never shrinks. */
ZVSDK_API zvsdk_status zcsl_hashmap_set_min_size(zcsl_hashmap* map, uint32_t entries);
/*
 * Steps through the entries. `cursor` is null to start and null again at the end, which gives
 * 0x100D0003. It holds as long as nothing is inserted or removed. `key` and `value` are optional.
 */
ZVSDK_API zvsdk_status zcsl_hashmap_enum(zcsl_hashmap* map, void** cursor, uint32_t* key,
                                         void** value);

#ifdef __cplusplus
}
#endif

#endif
