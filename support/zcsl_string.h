/*
 * zcsl_string.h: operations on NUL-terminated text in a restricted UTF-8, whose sequences have one
 * to three bytes (U+0000 to U+FFFF). Overlong forms and surrogates decode; four-byte sequences do
 * not. Formatted output is in zcsl_accum.h, similarity in zcsl_fuzzy.h.
 *
 * Null is accepted everywhere and has a meaning. Strings made here belong to the caller, who
 * releases them with zcsl_string_free. A "bytelen" counts the terminator, a "bytelen_nonull" does
 * not, a "charlen" counts code points. Folding means A to Z only, unless said otherwise. All
 * functions are reentrant and linear in the text, and need no start of the string module.
 */
#ifndef ZCSL_STRING_H
#define ZCSL_STRING_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* 1 for equal, 0 for not. Compares bytes; two nulls are equal, null equals nothing else. */
ZVSDK_API uint8_t zcsl_string_equal(const char* a, const char* b, uint8_t ignore_case);
/* -1, 0 or 1 by unsigned bytes. Null sorts before every string. */
ZVSDK_API int32_t zcsl_string_strcmp(const char* a, const char* b);
/* -1, 0 or 1 by folded code points. Null sorts before every string. */
ZVSDK_API int32_t zcsl_string_stricmp(const char* a, const char* b);
/* As zcsl_string_stricmp, over the first `max_chars` code points. */
ZVSDK_API int32_t zcsl_string_strnicmp(const char* a, const char* b, uint32_t max_chars);
/* As zcsl_string_strnicmp, without folding. */
ZVSDK_API int32_t zcsl_string_strncmp(const char* a, const char* b, uint32_t max_chars);
/* 1 when the bytes of `prefix` open `string`, as "" opens every string. 0 when either is null. */
ZVSDK_API uint8_t zcsl_string_startswith(const char* string, const char* prefix,
                                         uint8_t ignore_case);
/*
 * The number of leading code points that are equal when folded. The optional ends lie behind the
 * last character that was read from each string, also when that last pair differed. With a null
 * string the result is 0 and the ends are not written.
 */
ZVSDK_API uint32_t zcsl_string_stricmp_len(const char* a, const char* b, const char** end_a,
                                           const char** end_b);

/* 1 for null, for "", and when the first character does not decode or decodes as 0. */
ZVSDK_API uint8_t zcsl_string_isempty(const char* string);
/* 1 when every character up to the terminator decodes. Null is valid. */
ZVSDK_API uint8_t zcsl_string_isvalid(const char* string);

/* A new copy; null for null or for lack of memory. */
ZVSDK_API char* zcsl_string_strdup(const char* string);
/*
 * A new block of `size` bytes set to `fill`, with at most `size` - 1 bytes of the string in front
 * and 0 in its last byte. Null for a null string, a `size` of 0, or lack of memory. At most `size`
 * bytes of the string are read.
 */
ZVSDK_API char* zcsl_string_strdupn(const char* string, uint32_t size, uint8_t fill);
/* Releases a string of this library. Null is a no-op. */
ZVSDK_API void zcsl_string_free(char* string);

/* Bytes with the terminator: 0 for null, 1 for "". */
ZVSDK_API uint32_t zcsl_string_bytelen(const char* string);
/* Bytes without the terminator: 0 for null. */
ZVSDK_API uint32_t zcsl_string_bytelen_nonull(const char* string);
/* Code points. A character that does not decode is counted and ends the count. */
ZVSDK_API uint32_t zcsl_string_charlen(const char* string);
/* Bytes of the first `max_chars` code points. A character that does not decode ends the count. */
ZVSDK_API uint32_t zcsl_string_byteclen(const char* string, uint32_t max_chars);

/*
 * Reads the code point at `*position` and moves behind it; `size`, optional, receives the bytes
 * consumed. Returns 0, not moving, when it does not decode or when a pointer is null. At the
 * terminator it returns 0 and moves one byte past it: stop on the 0 and do not read on.
 */
ZVSDK_API uint32_t zcsl_string_charnext(const char** position, uint32_t* size);
/* The first place of a code point, or null; the walk ends where a character does not decode. */
ZVSDK_API const char* zcsl_string_strchr(const char* string, uint32_t code_point);
/*
 * The first place where `needle` stands in `text`, folding; null for none. An empty needle is
 * found at the start. The optional outputs receive the end of the match and its code points.
 */
ZVSDK_API const char* zcsl_string_subistring(const char* text, const char* needle, const char** end,
                                             uint32_t* matched);
/* As zcsl_string_subistring, without folding. */
ZVSDK_API const char* zcsl_string_substring(const char* text, const char* needle, const char** end,
                                            uint32_t* matched);
/* Drops bytes 1 to 32 from both ends, in place. Returns `string`. */
ZVSDK_API char* zcsl_string_trim(char* string);

/*
 * Decimal text to number: leading white space, a sign, digits; the rest is ignored. Out of range
 * gives 0xFFFFFFFF, 0x7FFFFFFF or -0x80000000; a minus sign wraps in the unsigned form. 0 for null.
 */
ZVSDK_API uint32_t zcsl_string_atou32(const char* string);
ZVSDK_API int32_t zcsl_string_atoi32(const char* string);
/*
 * Writes decimal digits and a terminator; of a number that does not fit, the `size` - 1 digits of
 * lowest order. Returns `buffer`. A null buffer or a `size` of 0 writes nothing.
 */
ZVSDK_API char* zcsl_string_u32toa(uint32_t value, char* buffer, uint32_t size);

/* 1 for '0' to '9'. */
ZVSDK_API uint8_t zcsl_string_isdigit(uint32_t code_point);
/* By the platform's tables for the current locale, for -128 to 254; other values are unchanged. */
ZVSDK_API int32_t zcsl_string_char_tolower(int32_t value);
ZVSDK_API int32_t zcsl_string_char_toupper(int32_t value);

#ifdef __cplusplus
}
#endif

#endif
