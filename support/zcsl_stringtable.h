/*
 * zcsl_stringtable.h: interned texts. Each distinct text is stored once and named by a small
 * number, its reference. All texts lie in one block, which is also their serialized form: a 0x00
 * byte, then each text with its terminator, in the order of their records.
 *
 * References are stable while the table lives; removal leaves a hole. When a block is attached the
 * k-th text in it has reference k, so references that are written beside a block must first be
 * brought in step (get_buffer_sync_ref) if texts were removed. Text pointers are valid until the
 * block next changes.
 *
 * Costs: add, get and find are constant time; remove is linear in the later texts; attach is one
 * copy and one walk. The table has no lock: whoever shares it provides one, and any number of
 * readers may run at once. Statuses as in zcsl_vector.h; a wrong handle gives 0x900D0321.
 */
#ifndef ZCSL_STRINGTABLE_H
#define ZCSL_STRINGTABLE_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_stringtable zcsl_stringtable;

/* The name of a text: its record's number from 1 up. 0 names no text. */
typedef uint32_t zcsl_stringtable_ref;

/*
 * A new table. When one of its parts cannot be made the call returns 0 and leaves the output as it
 * was, so set the output to null before and check it after.
 */
ZVSDK_API zvsdk_status zcsl_stringtable_create(zcsl_stringtable** table, uint32_t flags);
/* Releases the table with its texts. */
ZVSDK_API zvsdk_status zcsl_stringtable_delete(zcsl_stringtable* table);
/* Forgets all texts. Null returns 0. */
ZVSDK_API zvsdk_status zcsl_stringtable_clear(zcsl_stringtable* table);
/* The reference of a text, which is added when it is not present. Empty texts are refused. */
ZVSDK_API zvsdk_status zcsl_stringtable_add_value(zcsl_stringtable* table, const char* string,
                                                  zcsl_stringtable_ref* ref);
/* 0x100D0361 past the last reference, 0x100D0003 for a removed text. Outputs are optional. */
ZVSDK_API zvsdk_status zcsl_stringtable_get_value(zcsl_stringtable* table, zcsl_stringtable_ref ref,
                                                  const char** string, uint32_t* hash);
/* The reference of a text that is present, else 0x100D0003. */
ZVSDK_API zvsdk_status zcsl_stringtable_get_value_ref(zcsl_stringtable* table, const char* string,
                                                      zcsl_stringtable_ref* ref);
/*
 * Removes a text. 0x100D0003 for one that was removed before, and, although it is removed, for one
 * whose hash was that of a text removed earlier.
 */
ZVSDK_API zvsdk_status zcsl_stringtable_remove_value(zcsl_stringtable* table,
                                                     zcsl_stringtable_ref ref);
/* The number of texts that were not removed. */
ZVSDK_API zvsdk_status zcsl_stringtable_count(zcsl_stringtable* table, uint32_t* count);
/* Text number `position` (from 0) of those that were not removed. Outputs are optional. */
ZVSDK_API zvsdk_status zcsl_stringtable_enum(zcsl_stringtable* table, uint32_t position,
                                             zcsl_stringtable_ref* ref, const char** string);
/* The block, borrowed. `has_holes` is 1 when references must be brought in step. All optional. */
ZVSDK_API zvsdk_status zcsl_stringtable_get_buffer(zcsl_stringtable* table, const void** data,
                                                   uint32_t* size, uint8_t* has_holes);
/* The reference that a text will have once the present block is attached. */
ZVSDK_API zvsdk_status zcsl_stringtable_get_buffer_sync_ref(zcsl_stringtable* table,
                                                            zcsl_stringtable_ref ref,
                                                            zcsl_stringtable_ref* sync_ref);
/*
 * Replaces the texts by those of a block, which is copied. Any bytes are safe; what cannot be a
 * block gives 0x900D0009. After a failure for want of memory the table is only fit for clear,
 * attach and delete.
 */
ZVSDK_API zvsdk_status zcsl_stringtable_attach_buffer(zcsl_stringtable* table, const void* buffer,
                                                      uint32_t size);

#ifdef __cplusplus
}
#endif

#endif
