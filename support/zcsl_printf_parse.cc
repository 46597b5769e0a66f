// Parsing of conversions: the table of what there is, and flags, width, precision and length.

#include <cstring>

#include "support/zcsl_printf_internal.h"
#include "support/zcsl_string.h"

namespace {

constexpr print_format s_fmtinfo[] = {
    {'s', 0, print_string, print_type::string, 0, 0},
    {'c', 0, print_plain, print_type::character, 0, 0},
    {'w', 0, print_string, print_type::word, 0, 0},
    {'d', 10, print_signed, print_type::integer, 0, 0},
    {'i', 10, print_signed, print_type::integer, 0, 0},
    {'o', 8, print_plain, print_type::integer, 0, 2},
    {'u', 10, print_plain, print_type::integer, 0, 0},
    {'x', 16, print_plain, print_type::integer, 16, 1},
    {'X', 16, print_plain, print_type::integer, 0, 4},
    {'b', 2, print_plain, print_type::integer, 0, 0},
    {'f', 0, print_signed, print_type::fixed, 0, 0},
    {'F', 0, print_signed, print_type::fixed, 0, 0},
    {'e', 0, print_signed, print_type::exponent, 30, 0},
    {'E', 0, print_signed, print_type::exponent, 14, 0},
    {'g', 0, print_signed, print_type::general, 30, 0},
    {'G', 0, print_signed, print_type::general, 14, 0},
    {'p', 16, print_plain, print_type::pointer, 0, 1},
    {'n', 0, print_plain, print_type::count, 0, 0},
    {'N', 0, print_string, print_type::zero_byte, 0, 0},
    {'%', 0, print_plain, print_type::percent, 0, 0},
};

constexpr uint32_t s_max_precision = 310;
constexpr uint32_t s_max_numeric_width = 340;

bool is_numeric(print_type type) {
  return type >= print_type::integer && type <= print_type::pointer;
}

// Sets the flag that a character stands for; false where it stands for none.
bool parse_flag(print_request* request, char character) {
  static constexpr struct {
    char character;
    bool print_request::*flag;
  } flags[] = {{'-', &print_request::left_justify}, {'+', &print_request::plus},
               {' ', &print_request::blank},        {'#', &print_request::alternate},
               {'!', &print_request::alternate2},   {'0', &print_request::zero_pad}};
  for (const auto& row : flags) {
    if (row.character != character) continue;
    request->*row.flag = true;
    return true;
  }
  return false;
}

// Digits, saturating: a number that long means "very wide" and nothing else.
uint32_t parse_digits(const char** format) {
  constexpr uint32_t limit = INT32_MAX;
  uint32_t value = 0;
  for (; zcsl_string_isdigit(static_cast<uint8_t>(**format)); ++*format) {
    const auto digit = static_cast<uint32_t>(**format - '0');
    value = value > (limit - digit) / 10 ? limit : value * 10 + digit;
  }
  return value;
}

// A width or a precision: digits, or the absolute value of an argument.
struct print_size {
  uint32_t value;
  bool by_argument = false;
  bool negative = false;
};

print_size parse_size(const char** format, print_arguments* arguments) {
  if (**format != '*') return {.value = parse_digits(format)};
  ++*format;
  const int32_t value = va_arg(arguments->list, int32_t);  // NOLINT(clang-analyzer-valist*)
  const auto positive = static_cast<uint32_t>(value);
  return {
      .value = value < 0 ? 0u - positive : positive, .by_argument = true, .negative = value < 0};
}

void parse_width(print_request* request, const char** format, print_arguments* arguments) {
  const print_size size = parse_size(format, arguments);
  request->width = size.value;
  request->width_by_argument = size.by_argument;
  if (size.negative) request->left_justify = true;
}

void parse_precision(print_request* request, const char** format, print_arguments* arguments) {
  if (**format != '.') return;
  ++*format;
  request->precision = parse_size(format, arguments).value;
}

void parse_length(print_request* request, const char** format) {
  static constexpr struct {
    char text[3];
    print_length length;
  } lengths[] = {{"ll", print_length::ll},
                 {"l", print_length::l},
                 {"hh", print_length::hh},
                 {"h", print_length::h},
                 {"z", print_length::z}};
  for (const auto& row : lengths) {
    const size_t size = std::strlen(row.text);
    if (std::strncmp(*format, row.text, size) != 0) continue;
    request->length = row.length;
    *format += size;
    return;
  }
}

}  // namespace

const print_format* print_find_format(uint32_t conversion) {
  for (const print_format& format : s_fmtinfo) {
    if (static_cast<uint32_t>(format.conversion) == conversion) return &format;
  }
  return nullptr;
}

print_request print_parse_request(const char** format, print_arguments* arguments) {
  print_request request;
  while (parse_flag(&request, **format)) ++*format;
  parse_width(&request, format, arguments);
  parse_precision(&request, format, arguments);
  parse_length(&request, format);
  const char* behind = *format;
  request.conversion = zcsl_string_charnext(&behind, nullptr);
  if (request.conversion) *format = behind;
  return request;
}

void print_limit_request(print_request* request, const print_format& format) {
  if (!(format.flags & print_string) && request->precision) {
    request->precision = std::min(*request->precision, s_max_precision);
  }
  if (is_numeric(format.type)) request->width = std::min(request->width, s_max_numeric_width);
}
