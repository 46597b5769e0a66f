/*
 * zcsl_utf8.h: decoding and encoding one character of the restricted UTF-8, and the comparison and
 * search cores that the string family shares. Internal.
 *
 * Decoding never reads behind the terminator: no continuation byte is 0.
 */
#ifndef ZCSL_UTF8_H
#define ZCSL_UTF8_H

#include "support/zcsl_error.h"

inline constexpr uint8_t utflmasktab[] = {0x7F, 0x1F, 0x0F};  // payload of the lead byte
inline constexpr uint8_t utfmarktab[] = {0x00, 0xC0, 0xE0};   // mark of the lead byte

/* The multi-byte rest of _utf8_get_next_char. */
zvsdk_status _utf8_get_sequence(const char** position, uint32_t* code_point);

/*
 * Reads the code point at `*position` and moves behind it. Fails with zcsl_error_bad_utf8, and
 * without moving, on a sequence of more than three bytes, a stray continuation byte or a broken
 * sequence. Overlong forms and surrogates pass. The terminator is the code point 0.
 */
inline zvsdk_status _utf8_get_next_char(const char** position, uint32_t* code_point) {
  const auto byte = static_cast<uint8_t>(**position);
  if (byte >= 0x80) return _utf8_get_sequence(position, code_point);
  *code_point = byte;
  ++*position;
  return 0;
}

/*
 * Writes a code point without a terminator; `room` must leave space for one, or the result is
 * 0x90050008. Code points above U+FFFF give 0x90050001. `written` receives the bytes, 0 on failure.
 */
zvsdk_status _utf8_set_next_char(char* buffer, uint32_t room, uint32_t code_point,
                                 uint32_t* written);

/* Adds 32 to A to Z and leaves the rest. */
constexpr uint32_t _utf8_fold(uint32_t code_point) {
  return code_point - 'A' < 26u ? code_point + 32 : code_point;
}

/* What parts words and is trimmed: 1 to 32, as a byte or as a code point. */
constexpr bool _utf8_is_blank(uint32_t code_point) {
  return code_point - 1 < 32u;
}
constexpr bool _utf8_is_blank_byte(char byte) {
  return _utf8_is_blank(static_cast<uint8_t>(byte));
}

/* The last value that the platform's case tables fold here; the first is -128. */
inline constexpr int32_t zcsl_case_table_last = 254;

inline constexpr uint32_t utf8_no_limit = 0xFFFFFFFFu;

/*
 * Compares at most `max_chars` code points. `result` is the difference of the first two that
 * differ, or -1, 0, 1 at an end or a failure; `matched` the number of equal ones; the ends lie
 * behind what was read. All outputs are optional. The status is that of the decoder.
 */
zvsdk_status _zcsl_string_utf8_compare(const char* a, const char* b, uint32_t max_chars,
                                       bool case_sensitive, int32_t* result, uint32_t* matched,
                                       const char** end_a, const char** end_b);

/* The search behind zcsl_string_substring and zcsl_string_subistring. */
const char* _zcsl_string_substring(const char* text, const char* needle, const char** end,
                                   uint32_t* matched, bool case_sensitive);

#endif
