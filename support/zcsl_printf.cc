// The formatter: walks a format, turns each conversion into text, and sends that out with its
// padding. Conversions are parsed in zcsl_printf_parse.cc, numbers made in zcsl_printf_number.cc.

#include <cstring>

#include "support/zcsl_printf_internal.h"
#include "support/zcsl_string.h"
#include "support/zcsl_utf8.h"

namespace {

// --- Output ---

void append(zcsl_accum* accum, print_text text) {
  zcsl_string_accum_append_bytes(accum, text.bytes, text.size, nullptr);
}

void append_spaces(zcsl_accum* accum, uint32_t count) {
  static constexpr char spaces[] = "                             ";  // 29
  while (count > 0) {
    const uint32_t run = std::min<uint32_t>(count, sizeof spaces - 1);
    if (zcsl_string_accum_append_bytes(accum, spaces, run, nullptr)) return;
    count -= run;
  }
}

void append_padded(zcsl_accum* accum, const print_request& request, print_text text) {
  const uint32_t padding = request.width > text.size ? request.width - text.size : 0;
  if (!request.left_justify) append_spaces(accum, padding);
  append(accum, text);
  if (request.left_justify) append_spaces(accum, padding);
}

// --- Strings and characters ---

// How many bytes of a string may go out. A width taken from an argument limits it as well.
size_t string_limit(const print_request& request) {
  if (request.precision) return *request.precision;
  return request.width_by_argument ? request.width : SIZE_MAX;
}

print_text string_text(const print_request& request, const char* string) {
  const size_t size = strnlen(string, string_limit(request));
  return {string, static_cast<uint32_t>(std::min<size_t>(size, UINT32_MAX))};
}

print_text word_text(const print_request& request, const char* string) {
  while (_utf8_is_blank_byte(*string)) ++string;
  print_text text = string_text(request, string);
  if (request.width_by_argument && !request.precision) return text;  // spaces inside are kept
  const char* end = std::find_if(string, string + text.size, _utf8_is_blank_byte);
  text.size = static_cast<uint32_t>(end - string);
  return text;
}

print_text character_text(const print_request& request, uint32_t code_point, char* buffer) {
  const uint32_t repeat = request.precision.value_or(1);
  uint32_t size = repeat;
  if (repeat > 1) {
    std::memset(buffer, static_cast<uint8_t>(code_point), repeat);
  } else if (repeat == 1) {
    _utf8_set_next_char(buffer, print_buffer_size, code_point, &size);
  }
  return {buffer, size};
}

// --- Numbers ---

print_text integer_argument(const print_request& request, const print_format& format,
                            print_arguments* arguments, char* buffer) {
  const bool wide = request.length == print_length::ll;
  const bool is_signed = (format.flags & print_signed) && request.length != print_length::z;
  uint64_t value;
  if (wide) {
    value = va_arg(arguments->list, uint64_t);
  } else {
    const auto narrow = va_arg(arguments->list, uint32_t);
    value = is_signed ? static_cast<uint64_t>(int64_t{static_cast<int32_t>(narrow)}) : narrow;
  }
  const bool negative = is_signed && static_cast<int64_t>(value) < 0;
  return print_integer(request, format, negative, negative ? 0u - value : value, buffer);
}

print_text pointer_argument(const print_request& request, const print_format& format,
                            print_arguments* arguments, char* buffer) {
  const auto value = reinterpret_cast<uintptr_t>(va_arg(arguments->list, void*));
  return print_integer(request, format, false, value, buffer);
}

template <class Width>
void store(void* target, uint32_t value) {
  const auto narrowed = static_cast<Width>(value);
  std::memcpy(target, &narrowed, sizeof narrowed);
}

void store_count(zcsl_accum* accum, const print_request& request, void* target) {
  if (!target) return;
  uint32_t size = 0;
  zcsl_string_accum_bytelen(accum, &size);
  const uint32_t length = size ? size - 1 : 0;
  switch (request.length) {
    case print_length::hh:
      return store<uint8_t>(target, length);
    case print_length::h:
      return store<uint16_t>(target, length);
    case print_length::ll:
      return store<uint64_t>(target, length);
    default:
      return store<uint32_t>(target, length);
  }
}

// --- Conversions ---

const char* string_argument(print_arguments* arguments) {
  const char* string = va_arg(arguments->list, const char*);
  return string ? string : "(null)";
}

print_text make_text(zcsl_accum* accum, const print_request& request, const print_format& format,
                     print_arguments* arguments, char* buffer) {
  switch (format.type) {
    case print_type::string:
      return string_text(request, string_argument(arguments));
    case print_type::word:
      return word_text(request, string_argument(arguments));
    case print_type::character:
      return character_text(request, va_arg(arguments->list, uint32_t), buffer);
    case print_type::integer:
      return integer_argument(request, format, arguments, buffer);
    case print_type::pointer:
      return pointer_argument(request, format, arguments, buffer);
    case print_type::fixed:
    case print_type::exponent:
    case print_type::general:
      return print_real(request, format, va_arg(arguments->list, double), buffer);
    case print_type::count:
      store_count(accum, request, va_arg(arguments->list, void*));
      return {"", 0};
    case print_type::zero_byte:
      return {"", 1};
    case print_type::percent:
      break;
  }
  return {"%", 1};
}

// A conversion that does not exist goes out as it was written, without flags and sizes.
print_text unknown_text(const print_request& request, char* buffer) {
  uint32_t size = 0;
  buffer[0] = '%';
  if (request.conversion) {
    _utf8_set_next_char(buffer + 1, print_buffer_size - 1, request.conversion, &size);
  }
  return {buffer, size + 1};
}

void convert(zcsl_accum* accum, const char** format, print_arguments* arguments) {
  char buffer[print_buffer_size];
  print_request request = print_parse_request(format, arguments);
  const print_format* found = print_find_format(request.conversion);
  if (!found) return append_padded(accum, request, unknown_text(request, buffer));
  print_limit_request(&request, *found);
  append_padded(accum, request, make_text(accum, request, *found, arguments, buffer));
}

// Everything up to the next percent sign, the end, or a character that does not decode.
print_text literal_text(const char** format) {
  const char* start = *format;
  const char* end = start;
  while (*end != '%' && zcsl_string_charnext(format, nullptr)) end = *format;
  *format = end;
  return {start, static_cast<uint32_t>(end - start)};
}

}  // namespace

zvsdk_status _zcsl_string_printf(zcsl_accum* accum, const char* format, va_list arguments) {
  print_arguments shared;
  va_copy(shared.list, arguments);
  for (append(accum, literal_text(&format)); *format == '%'; append(accum, literal_text(&format))) {
    ++format;
    convert(accum, &format, &shared);
  }
  va_end(shared.list);
  return 0;
}
