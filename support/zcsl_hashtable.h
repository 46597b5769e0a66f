/*
 * zcsl_hashtable.h: text keys to one or several values of opaque bytes, enumerated in the order in
 * which the keys came. A key with one value is one allocation. Add, find and delete are constant
 * time; index_get is constant for an enumeration in rising order.
 *
 * Values are copied in, or kept by reference, and then the free callback, if there is one, releases
 * them (it also sees the copies, just before they go). With zcsl_hashtable_flag_threadsafe find and
 * the counts share a read lock, the rest take the write lock, and free callbacks run outside it,
 * except for retired values in clear. Without the flag any number of readers (find, counts and
 * index_get) may run at once as long as the caller keeps writers out. Statuses as in zcsl_vector.h;
 * a wrong handle gives 0x900D0321.
 */
#ifndef ZCSL_HASHTABLE_H
#define ZCSL_HASHTABLE_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* With neither unique_key nor multi_value, adding a present key replaces its first value. */
enum {
  zcsl_hashtable_flag_threadsafe = 0x001,
  zcsl_hashtable_flag_case_sensitive = 0x010,  /* else a to z match A to Z */
  zcsl_hashtable_flag_unique_key = 0x020,      /* adding a present key gives 0x900D0368 */
  zcsl_hashtable_flag_multi_value = 0x040,     /* adding to a present key appends a value */
  zcsl_hashtable_flag_free_at_once = 0x080,    /* a replaced value goes even if a reader has it */
  zcsl_hashtable_flag_key_by_reference = 0x100 /* the caller keeps the key texts alive */
};

typedef struct zcsl_hashtable zcsl_hashtable;

/* Releases a value's data. Not called for a value without data. */
typedef void (*zcsl_hashtable_free_fn)(void* data, uint32_t size);

/* An empty table. */
ZVSDK_API zvsdk_status zcsl_hashtable_create(zcsl_hashtable** table, uint32_t flags,
                                             zcsl_hashtable_free_fn free);
/* Clears and releases the table. */
ZVSDK_API zvsdk_status zcsl_hashtable_delete(zcsl_hashtable* table);
/*
 * Adds a value under a key. `data` and `size` are both zero (no data) or neither. With `copy`
 * nonzero the bytes are copied. A failed add leaves the data to the caller.
 *
 * In a thread-safe table without free_at_once a replaced value that a reader has received stays
 * readable until the table is cleared.
 */
ZVSDK_API zvsdk_status zcsl_hashtable_value_add(zcsl_hashtable* table, const char* key,
                                                const void* data, uint32_t size, int copy);
/*
 * Value number `index` of a key, else 0x100D0003, which a null table gives as well. `data` and
 * `size` are optional.
 */
ZVSDK_API zvsdk_status zcsl_hashtable_value_find_ex(zcsl_hashtable* table, const char* key,
                                                    uint32_t index, void** data, uint32_t* size);
/* Value number `index` of the table, key by key. Outputs are optional. 0x100D0361 past the end. */
ZVSDK_API zvsdk_status zcsl_hashtable_index_get(zcsl_hashtable* table, uint32_t index,
                                                const char** key, void** data, uint32_t* size);
/* The number of values under a key. An absent key returns 0 and leaves `count` as it is. */
ZVSDK_API zvsdk_status zcsl_hashtable_value_count(zcsl_hashtable* table, const char* key,
                                                  uint32_t* count);
/* The number of values of all keys. */
ZVSDK_API zvsdk_status zcsl_hashtable_count(zcsl_hashtable* table, uint32_t* count);
/* The number of keys. Linear in it. */
ZVSDK_API zvsdk_status zcsl_hashtable_key_count(zcsl_hashtable* table, uint32_t* count);
/* Removes a key with all its values. 0x100D0003 when absent. */
ZVSDK_API zvsdk_status zcsl_hashtable_value_delete(zcsl_hashtable* table, const char* key);
/* Removes all keys. The buckets stay. */
ZVSDK_API zvsdk_status zcsl_hashtable_clear(zcsl_hashtable* table);

#ifdef __cplusplus
}
#endif

#endif
