// Integers and floating point as text.

#include <cmath>
#include <cstring>

#include "support/zcsl_printf_internal.h"

namespace {

// Text that grows towards the front of a buffer.
struct backward_text {
  char* begin;
  char* end;

  explicit backward_text(char* buffer) : begin(buffer + print_buffer_size), end(begin) {}
  void put(char byte) { *--begin = byte; }
  uint32_t size() const { return static_cast<uint32_t>(end - begin); }
};

uint64_t masked(uint64_t magnitude, print_length length) {
  if (length == print_length::h) return magnitude & 0xFFFF;
  if (length == print_length::hh) return magnitude & 0xFF;
  return magnitude;
}

// With the zero flag the digits fill the width, also under the flag for the left.
uint32_t digits_wanted(const print_request& request, char sign) {
  const uint32_t precision = request.precision.value_or(0);
  const uint32_t by_width = request.width - (sign && request.width ? 1 : 0);
  return request.zero_pad ? std::max(precision, by_width) : precision;
}

}  // namespace

print_text print_integer(const print_request& request, const print_format& format, bool negative,
                         uint64_t magnitude, char* buffer) {
  const bool is_signed = format.flags & print_signed;
  const char sign = is_signed ? print_sign(request, negative) : '\0';
  const uint64_t value = masked(magnitude, request.length);
  backward_text text(buffer);
  uint64_t rest = value;
  do {
    text.put(s_aDigits[format.digits + rest % format.base]);
    rest /= format.base;
  } while (rest);
  for (const uint32_t wanted = digits_wanted(request, sign); text.size() < wanted;) text.put('0');
  if (sign) text.put(sign);
  if (request.alternate && value && format.prefix) {
    for (const char* prefix = s_aPrefix + format.prefix; *prefix; ++prefix) text.put(*prefix);
  }
  return {text.begin, text.size()};
}

namespace {

constexpr uint32_t s_max_real_precision = 165;
constexpr uint32_t s_real_digits = 16;  // from the next one on, a digit is 0
constexpr int32_t s_max_exponent = 350;

// A value as a mantissa of 1 to below 10 and a decimal exponent; zero has exponent 0.
struct scaled_real {
  double mantissa;
  int32_t exponent = 0;
  uint32_t taken = 0;  // digits

  void shrink(double limit, double factor, int32_t step) {
    while (mantissa >= limit && exponent <= s_max_exponent) {
      mantissa *= factor;
      exponent += step;
    }
  }
  void grow(double limit, double factor, int32_t step) {
    while (mantissa < limit) {
      mantissa *= factor;
      exponent -= step;
    }
  }
  void scale() {
    if (!(mantissa > 0)) return;
    shrink(1e32, 1e-32, 32);
    shrink(1e8, 1e-8, 8);
    shrink(10, 0.1, 1);
    grow(1e-8, 1e8, 8);
    grow(1, 10, 1);
  }
  char next_digit() {
    if (taken++ >= s_real_digits) return '0';
    const int32_t digit = static_cast<int32_t>(mantissa);
    mantissa = (mantissa - digit) * 10;
    return static_cast<char>('0' + digit);
  }
};

double rounder(uint32_t precision) {
  double half = 0.5;
  while (precision-- > 0) half *= 0.1;
  return half;
}

// How a scaled value is to be written.
struct real_layout {
  bool exponent_form;
  uint32_t decimals;
  bool strip_zeros;
  char letter;  // of the exponent
};

// Text that grows towards the end of a buffer.
struct forward_text {
  char* begin;
  char* end;

  explicit forward_text(char* buffer) : begin(buffer), end(buffer) {}
  void put(char byte) { *end++ = byte; }
  uint32_t size() const { return static_cast<uint32_t>(end - begin); }
};

void put_digits(forward_text* text, scaled_real* value, const real_layout& layout, bool point) {
  const int32_t exponent = layout.exponent_form ? 0 : value->exponent;
  uint32_t decimals = layout.decimals;
  if (exponent < 0) text->put('0');
  for (int32_t i = 0; i <= exponent; ++i) text->put(value->next_digit());
  if (point) text->put('.');
  for (int32_t i = exponent + 1; i < 0 && decimals > 0; ++i, --decimals) text->put('0');
  for (; decimals > 0; --decimals) text->put(value->next_digit());
}

void strip_zeros(forward_text* text, bool keep_one) {
  while (text->end[-1] == '0') --text->end;
  if (text->end[-1] != '.') return;
  if (keep_one) {
    text->put('0');
  } else {
    --text->end;
  }
}

void put_exponent(forward_text* text, int32_t exponent, char letter) {
  text->put(letter);
  text->put(exponent < 0 ? '-' : '+');
  const int32_t size = std::abs(exponent);
  if (size >= 100) text->put(static_cast<char>('0' + size / 100));
  text->put(static_cast<char>('0' + size / 10 % 10));
  text->put(static_cast<char>('0' + size % 10));
}

// Moves the text right and fills the gap behind the sign with zeros.
void zero_fill(forward_text* text, const print_request& request, char sign) {
  if (!request.zero_pad || request.left_justify || text->size() >= request.width) return;
  const uint32_t gap = request.width - text->size();
  char* first = text->begin + (sign ? 1 : 0);
  std::memmove(first + gap, first, static_cast<size_t>(text->end - first));
  std::memset(first, '0', gap);
  text->end += gap;
}

print_text infinite_text(char sign) {
  if (sign == '-') return {"-Inf", 4};
  if (sign == '+') return {"+Inf", 4};
  return {"Inf", 3};
}

real_layout choose_layout(const print_request& request, const print_format& format,
                          int32_t exponent, uint32_t precision) {
  real_layout layout = {.exponent_form = format.type == print_type::exponent,
                        .decimals = precision,
                        .strip_zeros = false,
                        .letter = s_aDigits[format.digits]};
  if (format.type != print_type::general) return layout;
  layout.strip_zeros = !request.alternate;
  layout.exponent_form = exponent <= -5 || exponent > static_cast<int32_t>(precision);
  if (!layout.exponent_form) {
    layout.decimals = static_cast<uint32_t>(static_cast<int32_t>(precision) - exponent);
  }
  return layout;
}

print_text layout_text(const print_request& request, const real_layout& layout, char sign,
                       scaled_real value, char* buffer) {
  const int32_t exponent = value.exponent;
  const bool point = layout.decimals > 0 || request.alternate || request.alternate2;
  forward_text text(buffer);
  if (sign) text.put(sign);
  put_digits(&text, &value, layout, point);
  if (layout.strip_zeros && point) strip_zeros(&text, request.alternate2);
  if (layout.exponent_form) put_exponent(&text, exponent, layout.letter);
  zero_fill(&text, request, sign);
  return {text.begin, text.size()};
}

}  // namespace

print_text print_real(const print_request& request, const print_format& format, double value,
                      char* buffer) {
  if (std::isnan(value)) return {"NaN", 3};
  uint32_t precision = std::min(request.precision.value_or(6), s_max_real_precision);
  if (format.type == print_type::general && precision > 0) --precision;
  const double half = rounder(precision);
  const bool fixed = format.type == print_type::fixed;
  const char sign = print_sign(request, value < 0);

  scaled_real scaled{.mantissa = std::fabs(value) + (fixed ? half : 0)};
  scaled.scale();
  if (scaled.exponent > s_max_exponent) return infinite_text(sign);
  if (!fixed) {
    scaled.mantissa += half;
    if (scaled.mantissa >= 10) {
      scaled.mantissa *= 0.1;
      ++scaled.exponent;
    }
  }
  const real_layout layout = choose_layout(request, format, scaled.exponent, precision);
  return layout_text(request, layout, sign, scaled, buffer);
}
