// text.h: text from strangers. The library takes UTF-8 of at most three bytes a character and no
// NUL; a terminal must get no control characters. Each function is one pass over its argument.
#ifndef ZVPLAYLIST_TEXT_H
#define ZVPLAYLIST_TEXT_H

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvplaylist {

// Longest text that a track's field may have, in bytes: an ident is refused above it (paths end
// there too), any other field is cut.
inline constexpr size_t max_text_bytes = 4096;

struct repaired_text {
  std::string text;
  bool had_invalid = false;  // bytes that are no UTF-8, or NUL
  bool had_wide = false;     // characters above U+FFFF
  bool was_cut = false;      // longer than max_text_bytes
};

// Every unusable character replaced by U+FFFD.
repaired_text replace_unusable(std::string_view text);
// The same with white space trimmed off both ends, and cut to max_text_bytes.
repaired_text repair_text(std::string_view text);

// Fit for a terminal and for formats of lines: control and direction characters become U+FFFD, line
// breaks and tabs a space.
std::string printable(std::string_view text);

// Terminal columns that a valid text takes.
size_t display_width(std::string_view text);

// ASCII only, so that the result is the same in every locale.
std::string ascii_lower(std::string_view text);
std::string_view trim(std::string_view text);
// "A, B".
std::string joined(const std::vector<std::string>& parts);
constexpr bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
// Calls `take` with each part of a text between separators, trimmed, empty ones left out.
template <class Take>
void each_part(std::string_view text, std::string_view separators, Take take) {
  while (!text.empty()) {
    const size_t end = std::min(text.find_first_of(separators), text.size());
    const std::string part(trim(text.substr(0, end)));
    if (!part.empty()) take(part);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}
// What the statement's names and keywords are made of.
constexpr bool is_word_byte(char c) {
  return is_digit(c) || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

}  // namespace zvplaylist

#endif
