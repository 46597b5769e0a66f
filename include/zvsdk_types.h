/*
 * zvsdk_types.h: what every public header stands on: status codes and the opaque handle types.
 *
 * A status is a 32-bit value. Zero is success. Bits 31 to 28 are the class: 0x9 is an error (the
 * value is negative as a signed number), 0x1 is a warning, an ordinary outcome such as "not found"
 * or "end of range". Bits 23 to 16 name the package that raised it, bits 15 to 0 the code. The low
 * word carries the meaning whichever package raised it: low word 3 is "not found" everywhere.
 *
 * Text is NUL-terminated UTF-8 of at most three bytes a character (U+0000 to U+FFFF).
 */
#ifndef ZVSDK_TYPES_H
#define ZVSDK_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

#define ZVSDK_API __attribute__((visibility("default")))

typedef uint32_t zvsdk_status;

/* Bit 31: the call failed. A warning is neither success nor an error. */
static inline int zvsdk_is_error(zvsdk_status status) {
  return (int32_t)status < 0;
}
/* The meaning of a status whatever its package. */
static inline uint32_t zvsdk_low_word(zvsdk_status status) {
  return status & 0xFFFFu;
}
/* The package that raised a status. */
static inline uint32_t zvsdk_package(zvsdk_status status) {
  return (status >> 16) & 0xFFu;
}

/* Package numbers that appear in status codes and index the log mask. */
enum {
  zvsdk_package_playlist = 0x89,
  zvsdk_package_banner = 0x31 /* second target of the start and stop banners */
};

/* Handles of the playlist library. A handle is valid until its last reference is released. */
typedef struct playlist_collection playlist_collection;
typedef struct playlist_results playlist_results;

/* Handles of the manager. */
typedef struct zvsdk_sdkmanager zvsdk_sdkmanager; /* the manager handle and its table, in one */
typedef struct zvsdk_client zvsdk_client;
typedef struct zvsdk_user zvsdk_user;
typedef struct zvsdk_locale zvsdk_locale;
typedef struct zvsdk_list zvsdk_list;
typedef struct zvsdk_list_element zvsdk_list_element;
typedef struct zvsdk_correlates zvsdk_correlates;
typedef struct zvsdk_correlates_set zvsdk_correlates_set;
typedef struct zvsdk_zdo zvsdk_zdo;
typedef struct zvsdk_storage_table zvsdk_storage_table;
typedef struct zvsdk_storage_schema zvsdk_storage_schema;
typedef struct zvsdk_storage_record zvsdk_storage_record;
typedef struct zvsdk_storage_cursor zvsdk_storage_cursor;
typedef struct zvsdk_storage_transaction zvsdk_storage_transaction;

/* What the check of a storage file found (zvsdk_manager.h). */
typedef struct zvsdk_storage_info zvsdk_storage_info;

#ifdef __cplusplus
}
#endif

#endif
