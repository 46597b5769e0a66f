// The variadic calls in front of the formatter.

#include <algorithm>
#include <cstring>

#include "support/zcsl_error.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_printf_internal.h"

zvsdk_status zcsl_string_accum_append_vformat(zcsl_accum* accum, const char* format,
                                              va_list arguments) {
  if (!accum) return ZCSL_ERROR(zcsl_package_string, zcsl_code_invalid_arg);
  return format ? _zcsl_string_printf(accum, format, arguments) : 0;
}

zvsdk_status zcsl_string_accum_append_format(zcsl_accum* accum, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const zvsdk_status status = zcsl_string_accum_append_vformat(accum, format, arguments);
  va_end(arguments);
  return status;
}

char* zcsl_string_vmprintf(const char* format, va_list arguments) {
  zcsl_string_owner text;
  return _zcsl_string_mvprintf(text.out(), format, arguments) < 0 ? nullptr : text.release();
}

char* zcsl_string_mprintf(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  char* text = zcsl_string_vmprintf(format, arguments);
  va_end(arguments);
  return text;
}

int32_t zcsl_string_vsnprintf(char* buffer, uint32_t size, const char* format, va_list arguments) {
  zcsl_string_owner text;
  const int32_t whole = _zcsl_string_mvprintf(text.out(), format, arguments);
  if (whole < 0) return -1;
  const uint32_t length = whole > 0 ? static_cast<uint32_t>(whole) - 1 : 0;
  if (buffer && size > 0) {
    const uint32_t copied = std::min(length, size - 1);
    std::memcpy(buffer, text.get(), copied);
    buffer[copied] = 0;
  }
  return static_cast<int32_t>(length + 1);
}

int32_t zcsl_string_snprintf(char* buffer, uint32_t size, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int32_t length = zcsl_string_vsnprintf(buffer, size, format, arguments);
  va_end(arguments);
  return length;
}
