// Numbers to and from decimal text, and the platform's case tables.

#include <cctype>
#include <climits>

#include "support/zcsl_string.h"
#include "support/zcsl_utf8.h"

namespace {

struct decimal {
  uint64_t magnitude = 0;  // exact up to 32 bits, and above that merely above it
  bool negative = false;
};

decimal parse_decimal(const char* text) {
  decimal parsed;
  while (std::isspace(static_cast<uint8_t>(*text))) ++text;
  if (*text == '-' || *text == '+') parsed.negative = *text++ == '-';
  for (; zcsl_string_isdigit(static_cast<uint8_t>(*text)); ++text) {
    if (parsed.magnitude > UINT32_MAX) continue;
    parsed.magnitude = parsed.magnitude * 10 + static_cast<uint64_t>(*text - '0');
  }
  return parsed;
}

// The platform's tables cover these, and its functions are defined over them alone.
bool in_case_tables(int32_t value) {
  return value >= -128 && value <= 254;
}

}  // namespace

uint32_t zcsl_string_atou32(const char* string) {
  if (!string) return 0;
  const decimal parsed = parse_decimal(string);
  if (parsed.magnitude > UINT32_MAX) return UINT32_MAX;
  const auto value = static_cast<uint32_t>(parsed.magnitude);
  return parsed.negative ? 0u - value : value;
}

int32_t zcsl_string_atoi32(const char* string) {
  if (!string) return 0;
  const decimal parsed = parse_decimal(string);
  if (parsed.magnitude > INT32_MAX) return parsed.negative ? INT32_MIN : INT32_MAX;
  const auto value = static_cast<int32_t>(parsed.magnitude);
  return parsed.negative ? -value : value;
}

char* zcsl_string_u32toa(uint32_t value, char* buffer, uint32_t size) {
  if (!buffer || size == 0) return buffer;
  uint32_t digits = 1;
  for (uint32_t rest = value; rest >= 10; rest /= 10) ++digits;
  if (digits > size - 1) digits = size - 1;
  buffer[digits] = 0;
  for (; digits > 0; value /= 10) buffer[--digits] = static_cast<char>('0' + value % 10);
  return buffer;
}

uint8_t zcsl_string_isdigit(uint32_t code_point) {
  return code_point >= '0' && code_point <= '9';
}

int32_t zcsl_string_char_tolower(int32_t value) {
  return in_case_tables(value) ? (*__ctype_tolower_loc())[value] : value;
}

int32_t zcsl_string_char_toupper(int32_t value) {
  return in_case_tables(value) ? (*__ctype_toupper_loc())[value] : value;
}
