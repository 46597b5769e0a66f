// Decoding, repairing and measuring of UTF-8.
#include "tools/text.h"

#include <algorithm>
#include <iterator>

namespace zvplaylist {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

struct decoded {
  char32_t code;
  size_t size;
  bool valid;
};

struct lead_form {
  unsigned char mask, mark;
  char32_t lowest;  // of that many bytes; below it the form is overlong
};
constexpr lead_form lead_forms[] = {
    {0x80, 0x00, 0}, {0xE0, 0xC0, 0x80}, {0xF0, 0xE0, 0x800}, {0xF8, 0xF0, 0x10000}};

bool is_scalar(char32_t code, char32_t lowest) {
  return code >= lowest && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF);
}

// The character at the start of a text that is not empty. An invalid one is one byte long.
decoded decode(std::string_view text) {
  const auto lead = static_cast<unsigned char>(text.front());
  for (size_t i = 0; i < std::size(lead_forms); ++i) {
    const lead_form& form = lead_forms[i];
    if ((lead & form.mask) != form.mark) continue;
    char32_t code = lead & static_cast<unsigned char>(~form.mask);
    for (size_t k = 1; k <= i; ++k) {
      if (k >= text.size() || (text[k] & 0xC0) != 0x80) return {0, 1, false};
      code = code << 6 | (text[k] & 0x3F);
    }
    if (!is_scalar(code, form.lowest)) return {0, 1, false};
    return {code, i + 1, true};
  }
  return {0, 1, false};
}

struct code_range {
  char32_t first, last;
};

template <size_t N>
bool within(char32_t code, const code_range (&ranges)[N]) {
  return std::any_of(std::begin(ranges), std::end(ranges), [code](const code_range& range) {
    return code >= range.first && code <= range.last;
  });
}

constexpr code_range double_width[] = {{0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF},
                                       {0xAC00, 0xD7A3}, {0xF900, 0xFAFF}, {0xFE30, 0xFE6F},
                                       {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}};
constexpr code_range no_width[] = {
    {0x0300, 0x036F}, {0x200B, 0x200D}, {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}};
// C0, DEL and C1 could carry escape sequences; marks and overrides could make a line read
// backwards; the last two are no characters, and XML forbids them.
constexpr code_range unprintable[] = {{0x00, 0x1F},     {0x7F, 0x9F},     {0x200E, 0x200F},
                                      {0x2028, 0x202E}, {0x2066, 0x2069}, {0xFFFE, 0xFFFF}};

// Cuts at a character's start.
void cut(std::string& text, size_t size) {
  while (size > 0 && (text[size] & 0xC0) == 0x80) --size;
  text.resize(size);
}

}  // namespace

std::string_view trim(std::string_view text) {
  constexpr std::string_view white = " \t\r\n\v\f";
  const size_t first = text.find_first_not_of(white);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(white) - first + 1);
}

repaired_text replace_unusable(std::string_view text) {
  repaired_text result;
  result.text.reserve(text.size());
  while (!text.empty()) {
    const decoded next = decode(text);
    const bool wide = next.valid && next.code > 0xFFFF;
    const bool usable = next.valid && next.code != 0 && !wide;
    result.text += usable ? text.substr(0, next.size) : replacement;
    result.had_wide |= wide;
    result.had_invalid |= !usable && !wide;
    text.remove_prefix(next.size);
  }
  return result;
}

repaired_text repair_text(std::string_view text) {
  repaired_text result = replace_unusable(trim(text));
  result.was_cut = result.text.size() > max_text_bytes;
  if (result.was_cut) cut(result.text, max_text_bytes);
  return result;
}

std::string printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const decoded next = decode(text);
    if (next.code == '\n' || next.code == '\r' || next.code == '\t')
      result += ' ';
    else
      result +=
          !next.valid || within(next.code, unprintable) ? replacement : text.substr(0, next.size);
    text.remove_prefix(next.size);
  }
  return result;
}

size_t display_width(std::string_view text) {
  size_t width = 0;
  while (!text.empty()) {
    const decoded next = decode(text);
    if (!within(next.code, no_width))
      width += next.code > 0xFFFF || within(next.code, double_width) ? 2 : 1;
    text.remove_prefix(next.size);
  }
  return width;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text;
}

std::string ascii_lower(std::string_view text) {
  std::string result(text);
  for (char& c : result)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return result;
}

}  // namespace zvplaylist
