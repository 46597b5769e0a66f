// Fuzzes the formatter: any format, with arguments of the types that it asks for.
//
// The input is a format, a 0 byte, and bytes that become the arguments. The format is cut into
// pieces of at most one conversion, so that each goes out through a call whose arguments have the
// right types whatever the conversion is.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "support/zcsl_owners.h"

namespace {

constexpr size_t s_max_width_digits = 4;  // a width is memory: keep it small

// The bytes behind the format, taken as values; zeros when they have run out.
class argument_bytes {
 public:
  explicit argument_bytes(std::string_view bytes) : bytes_(bytes) {}

  template <class Value>
  Value take() {
    Value value{};
    const size_t size = std::min(sizeof value, bytes_.size());
    std::memcpy(&value, bytes_.data(), size);
    bytes_.remove_prefix(size);
    return value;
  }
  std::string take_string() {
    const size_t size = std::min<size_t>(take<uint8_t>(), bytes_.size());
    std::string text(bytes_.substr(0, size));
    bytes_.remove_prefix(size);
    return text;
  }

 private:
  std::string_view bytes_;
};

// One piece of a format: literal text and, behind it, at most one conversion.
struct piece {
  std::string text;
  int stars = 0;
  bool wide = false;
  uint32_t conversion = 0;  // decoded as the formatter does, which takes overlong forms
  bool too_wide = false;
};

size_t skip(std::string_view format, size_t at, std::string_view what) {
  return std::min(format.find_first_not_of(what, at), format.size());
}

// Flags, then a width or a precision.
size_t skip_number(std::string_view format, size_t at, piece* found) {
  if (at < format.size() && format[at] == '*') {
    ++found->stars;
    return at + 1;
  }
  const size_t end = skip(format, at, "0123456789");
  if (end - at > s_max_width_digits) found->too_wide = true;
  return end;
}

size_t skip_length(std::string_view format, size_t at, piece* found) {
  for (std::string_view length : {"ll", "l", "hh", "h", "z"}) {
    if (format.substr(at, length.size()) != length) continue;
    found->wide = length == "ll";
    return at + length.size();
  }
  return at;
}

piece next_piece(std::string_view format) {
  piece found;
  size_t at = format.find('%');
  if (at == format.npos) return {std::string(format)};
  at = skip(format, at + 1, "-+ #!0");
  at = skip_number(format, at, &found);
  if (at < format.size() && format[at] == '.') at = skip_number(format, at + 1, &found);
  at = skip_length(format, at, &found);
  const std::string rest(format.substr(at));
  const char* behind = rest.c_str();
  if (!rest.empty()) found.conversion = zcsl_string_charnext(&behind, nullptr);
  at += found.conversion ? static_cast<size_t>(behind - rest.c_str()) : 0;
  found.text = format.substr(0, at);
  return found;
}

template <class Value>
void print(zcsl_accum* accum, const piece& one, argument_bytes* arguments, Value value) {
  const int first = arguments->take<int16_t>();
  const int second = arguments->take<int16_t>();
  const char* format = one.text.c_str();
  if (one.stars == 0) zcsl_string_accum_append_format(accum, format, value);
  if (one.stars == 1) zcsl_string_accum_append_format(accum, format, first, value);
  if (one.stars == 2) zcsl_string_accum_append_format(accum, format, first, second, value);
}

void print_integer(zcsl_accum* accum, const piece& one, argument_bytes* arguments) {
  if (one.wide) {
    print(accum, one, arguments, arguments->take<int64_t>());
  } else {
    print(accum, one, arguments, arguments->take<int32_t>());
  }
}

void print_piece(zcsl_accum* accum, const piece& one, argument_bytes* arguments) {
  const char conversion = one.conversion < 0x80 ? static_cast<char>(one.conversion) : '\0';
  if (conversion == 's' || conversion == 'w') {
    const std::string text = arguments->take_string();
    print(accum, one, arguments, text.empty() ? nullptr : text.c_str());
  } else if (conversion && std::strchr("fFeEgG", conversion)) {
    print(accum, one, arguments, arguments->take<double>());
  } else if (conversion == 'n') {
    uint64_t length = 0;
    print(accum, one, arguments, &length);
  } else if (conversion == 'p') {
    print(accum, one, arguments, reinterpret_cast<void*>(arguments->take<uintptr_t>()));
  } else {
    print_integer(accum, one, arguments);
  }
}

void check_text(zcsl_accum* accum) {
  const char* text = nullptr;
  uint32_t size = 0;
  if (zcsl_string_accum_get_string(accum, &text, &size)) std::abort();
  if (size > 0 && text[size - 1] != 0) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view input(reinterpret_cast<const char*>(data), size);
  const size_t end = std::min(input.find('\0'), size);
  argument_bytes arguments(input.substr(std::min(end + 1, size)));
  alignas(8) char storage[64];
  zcsl_accum_owner accum;
  if (zcsl_string_accum_create(accum.out(), storage, sizeof storage)) return 0;
  for (std::string_view format = input.substr(0, end); !format.empty();) {
    const piece one = next_piece(format);
    if (!one.too_wide) print_piece(accum.get(), one, &arguments);
    if (one.text.find('%') != one.text.npos && !one.conversion) break;  // the format is broken here
    format.remove_prefix(one.text.size());
    check_text(accum.get());
  }
  return 0;
}
