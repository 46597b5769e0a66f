// The variadic calls in front of the formatter.

#include <algorithm>
#include <cstring>
#include <span>

#include "support/zcsl_error.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_printf_internal.h"

namespace {

constexpr uint32_t s_mprintf_stack_size = 300;

// Formats into an accumulator that starts on the stack, and gives what `finish` makes of it.
template <class Finish>
int32_t print_on_stack(const char* format, va_list arguments, Finish finish) {
  alignas(void*) char storage[s_mprintf_stack_size];
  zcsl_accum_owner accum;
  if (!format || zcsl_string_accum_create(accum.out(), storage, sizeof storage)) return -1;
  _zcsl_string_printf(accum.get(), format, arguments);
  return finish(accum.get());
}

// Copies as much of the text as fits with its terminator; returns the length of it all plus one.
int32_t copy_text(zcsl_accum* accum, std::span<char> buffer) {
  const char* text = nullptr;
  uint32_t size = 0;
  zcsl_string_accum_get_string(accum, &text, &size);
  if (size == 0) return 1;
  if (!buffer.empty()) {
    const size_t copied = std::min<size_t>(size, buffer.size()) - 1;
    std::memcpy(buffer.data(), text, copied);
    buffer[copied] = 0;
  }
  return static_cast<int32_t>(size);
}

}  // namespace

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

int32_t _zcsl_string_mvprintf(char** text, const char* format, va_list arguments) {
  if (!text) return -1;
  return print_on_stack(format, arguments, [text](zcsl_accum* accum) {
    uint32_t size = 0;
    return zcsl_string_accum_detach(accum, text, &size) ? -1 : static_cast<int32_t>(size);
  });
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
  const std::span<char> place(buffer, buffer ? size : 0);
  if (!place.empty()) place[0] = 0;
  return print_on_stack(format, arguments,
                        [place](zcsl_accum* accum) { return copy_text(accum, place); });
}

int32_t zcsl_string_snprintf(char* buffer, uint32_t size, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const int32_t length = zcsl_string_vsnprintf(buffer, size, format, arguments);
  va_end(arguments);
  return length;
}
