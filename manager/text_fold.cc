// Case folding of UTF-8 text without a locale.

#include "manager/text_fold.h"

namespace manager {
namespace {

/* The lower-case letter of a character of two bytes (U+0080 to U+07FF). */
unsigned lower(unsigned c) {
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 0x20;
  const bool even_upper = (c >= 0x100 && c <= 0x137) || (c >= 0x14A && c <= 0x177);
  const bool odd_upper = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (c == 0x130) return c;  // its small letter is one byte and stands for another letter
  if (even_upper) return c | 1;
  if (odd_upper) return c + (c & 1);
  if (c == 0x178) return 0xFF;
  if (c >= 0x391 && c <= 0x3A9 && c != 0x3A2) return c + 0x20;
  if (c >= 0x410 && c <= 0x42F) return c + 0x20;
  if (c >= 0x400 && c <= 0x40F) return c + 0x50;
  return c;
}

bool is_continuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

}  // namespace

std::string fold_case(std::string_view text) {
  std::string folded(text);
  for (size_t i = 0; i < folded.size(); ++i) {
    const auto byte = static_cast<unsigned char>(folded[i]);
    if (byte >= 'A' && byte <= 'Z') folded[i] = static_cast<char>(byte + 0x20);
    const bool two_bytes = byte >= 0xC2 && byte <= 0xDF && i + 1 < folded.size();
    if (!two_bytes || !is_continuation(folded[i + 1])) continue;
    const unsigned c =
        lower((byte & 0x1Fu) << 6 | (static_cast<unsigned char>(folded[i + 1]) & 0x3Fu));
    folded[i] = static_cast<char>(0xC0 | c >> 6);
    folded[++i] = static_cast<char>(0x80 | (c & 0x3F));
  }
  return folded;
}

}  // namespace manager
