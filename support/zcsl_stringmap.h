/*
 * zcsl_stringmap.h: a hash table (zcsl_hashtable.h) whose values are texts. Order, cost, flags,
 * statuses and thread rule are the table's. Texts handed out are the map's.
 */
#ifndef ZCSL_STRINGMAP_H
#define ZCSL_STRINGMAP_H

#include "support/zcsl_hashtable.h" /* flags */

#ifdef __cplusplus
extern "C" {
#endif

/* Further flag: value pointers are stored instead of copies; the caller keeps the texts alive. */
enum { zcsl_stringmap_flag_value_by_reference = 0x1000 };

typedef struct zcsl_stringmap zcsl_stringmap;

/* An empty map; `flags` are the table's and the one above. */
ZVSDK_API zvsdk_status zcsl_stringmap_create(zcsl_stringmap** map, uint32_t flags);
/* Releases the map with its texts. */
ZVSDK_API zvsdk_status zcsl_stringmap_delete(zcsl_stringmap* map);
/* Adds a text under a key, as the flags say. A null `value` is stored and comes back as null. */
ZVSDK_API zvsdk_status zcsl_stringmap_value_add(zcsl_stringmap* map, const char* key,
                                                const char* value);
/* Text number `index` of a key. `value` is optional. A value that is no text gives 0x900D0360. */
ZVSDK_API zvsdk_status zcsl_stringmap_value_find_ex(zcsl_stringmap* map, const char* key,
                                                    uint32_t index, const char** value);
/* Text number `index` of the map, key by key. Outputs are optional. 0x100D0361 past the end. */
ZVSDK_API zvsdk_status zcsl_stringmap_value_get(zcsl_stringmap* map, uint32_t index,
                                                const char** key, const char** value);
/* Removes a key with all its texts. 0x100D0003 when absent. */
ZVSDK_API zvsdk_status zcsl_stringmap_value_delete(zcsl_stringmap* map, const char* key);
/* The number of texts of all keys. */
ZVSDK_API zvsdk_status zcsl_stringmap_count(zcsl_stringmap* map, uint32_t* count);
/* The number of texts under a key. An absent key returns 0 and leaves `count` as it is. */
ZVSDK_API zvsdk_status zcsl_stringmap_value_count(zcsl_stringmap* map, const char* key,
                                                  uint32_t* count);
/* Removes all keys. */
ZVSDK_API zvsdk_status zcsl_stringmap_clear(zcsl_stringmap* map);

#ifdef __cplusplus
}
#endif

#endif
