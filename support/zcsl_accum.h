/*
 * zcsl_accum.h: the accumulator, a growable byte string, and formatted printing into it.
 *
 * Use: create, append any number of times, then get_string (the text stays the accumulator's, valid
 * until the next change) or detach (the text becomes the caller's, released with zcsl_string_free),
 * then delete. Appends are amortised constant per byte: capacity doubles. The text is always
 * 0-terminated and may hold inner 0 bytes. An accumulator belongs to one thread at a time.
 *
 * Status: 0; 0x90050001 for a null accumulator or a null required output; 0x90050002 for no memory,
 * with the text unchanged. What is appended must not lie in the accumulator's own text.
 *
 * Formats are the library's own: `%`, flags (- + space # ! 0), width, precision, length (l ll h hh
 * z), conversion. Conversions: s c d i o u x X b f F e E g G p n %, `%w` for the first word of a
 * string, `%N` for one 0 byte. Every integer argument has 32 bits, whatever its length says, except
 * that `ll` has 64; pointers have the pointer's size. `%n` stores the length so far through its
 * pointer: 1 byte with hh, 2 with h, 8 with ll, and 4 in every other case, also with z. `%*s` cuts
 * the string at the width. An unknown conversion writes itself and takes no argument; a null string
 * writes "(null)". Only numbers limit their width: a format must come from somebody trusted.
 */
#ifndef ZCSL_ACCUM_H
#define ZCSL_ACCUM_H

#include <stdarg.h>

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_accum zcsl_accum;

/*
 * Makes an empty accumulator. A `storage` larger than the record holds both record and text, and
 * nothing is allocated until the text outgrows it; the caller keeps the block until after delete.
 * Otherwise both are allocated, and a nonzero `size` is the initial capacity, zero-filled.
 */
ZVSDK_API zvsdk_status zcsl_string_accum_create(zcsl_accum** accum, void* storage, uint32_t size);
/* Null is a no-op. */
ZVSDK_API zvsdk_status zcsl_string_accum_delete(zcsl_accum* accum);

/* Appends; `text`, optional, receives the whole text. Null or nothing to append is success. */
ZVSDK_API zvsdk_status zcsl_string_accum_append(zcsl_accum* accum, const char* string,
                                                const char** text);
ZVSDK_API zvsdk_status zcsl_string_accum_append_bytes(zcsl_accum* accum, const void* bytes,
                                                      uint32_t size, const char** text);
/* Appends the first `max_chars` code points. */
ZVSDK_API zvsdk_status zcsl_string_accum_append_chars(zcsl_accum* accum, const char* string,
                                                      uint32_t max_chars, const char** text);
/* Under lack of memory the text is short, without an error. */
ZVSDK_API zvsdk_status zcsl_string_accum_append_format(zcsl_accum* accum, const char* format, ...);
ZVSDK_API zvsdk_status zcsl_string_accum_append_vformat(zcsl_accum* accum, const char* format,
                                                        va_list arguments);
/* Replaces the whole text. A null string, as "" does, empties it. */
ZVSDK_API zvsdk_status zcsl_string_accum_set(zcsl_accum* accum, const char* string);

/* Both outputs optional. `size` counts the terminator, but is 0 for an empty text. */
ZVSDK_API zvsdk_status zcsl_string_accum_get_string(zcsl_accum* accum, const char** text,
                                                    uint32_t* size);
/* The same `size`; required. */
ZVSDK_API zvsdk_status zcsl_string_accum_bytelen(zcsl_accum* accum, uint32_t* size);
/*
 * Hands the text over, in a block of exactly its size, and leaves the accumulator empty. `text` is
 * required and is null when nothing was ever stored; `size` is optional, as in get_string.
 */
ZVSDK_API zvsdk_status zcsl_string_accum_detach(zcsl_accum* accum, char** text, uint32_t* size);
/* Cuts `count` bytes from `start` on, clamped to the text; `removed`, optional, tells how many. */
ZVSDK_API zvsdk_status zcsl_string_accum_remove_range(zcsl_accum* accum, uint32_t start,
                                                      uint32_t count, uint32_t* removed);
/* Empties the text and keeps the capacity. */
ZVSDK_API zvsdk_status zcsl_string_accum_clear(zcsl_accum* accum);

/* A new formatted string, released with zcsl_string_free; null for a null format or on failure. */
ZVSDK_API char* zcsl_string_mprintf(const char* format, ...);
ZVSDK_API char* zcsl_string_vmprintf(const char* format, va_list arguments);
/*
 * Copies at most `size` - 1 bytes and a terminator, which is there also on failure. Returns the
 * untruncated length plus one, or -1 for a null format. Nothing is written with a null buffer or a
 * `size` of 0. Texts under some 250 bytes need no memory; for want of memory a longer one is short.
 * The buffer must not be an argument as well.
 */
ZVSDK_API int32_t zcsl_string_snprintf(char* buffer, uint32_t size, const char* format, ...);
ZVSDK_API int32_t zcsl_string_vsnprintf(char* buffer, uint32_t size, const char* format,
                                        va_list arguments);

#ifdef __cplusplus
}
#endif

#endif
