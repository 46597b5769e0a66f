/*
 * zcsl_printf_internal.h: the pieces of the formatter: what a conversion asks for, how finished
 * text goes out, and the two kinds of numbers. Internal.
 */
#ifndef ZCSL_PRINTF_INTERNAL_H
#define ZCSL_PRINTF_INTERNAL_H

#include <algorithm>
#include <cstdarg>
#include <optional>

#include "support/zcsl_accum.h"

enum class print_type : uint8_t {
  string,
  character,
  word,
  integer,
  fixed,
  exponent,
  general,
  pointer,
  count,
  zero_byte,
  percent
};

enum : uint8_t { print_plain = 1, print_signed = 2, print_string = 4 };

/* One row of the conversion table. */
struct print_format {
  char conversion;
  uint8_t base;
  uint8_t flags;
  print_type type;
  uint8_t digits;  // offset into s_aDigits
  uint8_t prefix;  // offset into s_aPrefix
};

enum class print_length : uint8_t { none, l, ll, h, hh, z };

/* One conversion of a format, as parsed. */
struct print_request {
  bool left_justify = false;
  bool plus = false;
  bool blank = false;
  bool alternate = false;
  bool alternate2 = false;
  bool zero_pad = false;
  bool width_by_argument = false;
  uint32_t width = 0;
  std::optional<uint32_t> precision;
  print_length length = print_length::none;
  uint32_t conversion = 0;  // as it stands in the format; 0 when that ends or is broken there
};

/* The arguments, so that functions can share them. */
struct print_arguments {
  va_list list;
};

/* A piece of finished text. */
struct print_text {
  const char* bytes;
  uint32_t size;
};

/* The row of a conversion character, or null for an unknown one. */
const print_format* print_find_format(uint32_t conversion);
/*
 * Reads flags, width, precision, length and conversion; `*format` stands behind the percent sign
 * and is moved behind the conversion. Takes arguments for a width or a precision of `*`.
 */
print_request print_parse_request(const char** format, print_arguments* arguments);
/* Caps width and precision, so that a number fits its buffer. */
void print_limit_request(print_request* request, const print_format& format);

/* The sign to put in front: '-', '+', ' ' or 0 for none. */
inline char print_sign(const print_request& request, bool negative) {
  if (negative) return '-';
  return request.plus ? '+' : request.blank ? ' ' : '\0';
}

inline constexpr char s_aDigits[] = "0123456789ABCDEF0123456789abcdef";
inline constexpr char s_aPrefix[] = {0x2D, 0x78, 0x30, 0x00, 0x58, 0x30, 0x00};

/* Room for 350 digits in front of the point and 165 behind it, with sign, point and exponent. */
enum { print_buffer_size = 560 };

/* Writes a number into a buffer of print_buffer_size bytes; the text lies somewhere within it. */
print_text print_integer(const print_request& request, const print_format& format, bool negative,
                         uint64_t magnitude, char* buffer);
print_text print_real(const print_request& request, const print_format& format, double value,
                      char* buffer);

/* The formatter. Always returns 0; without memory the text is short. */
zvsdk_status _zcsl_string_printf(zcsl_accum* accum, const char* format, va_list arguments);
/* A new formatted string. Returns its length plus one, 0 for an empty one, or -1 on failure. */
int32_t _zcsl_string_mvprintf(char** text, const char* format, va_list arguments);

#endif
