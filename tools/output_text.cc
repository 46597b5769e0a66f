// The playlist as aligned columns.
#include <algorithm>
#include <array>

#include "tools/output.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

constexpr size_t column_count = 5;
// A column is as wide as its widest entry, up to this; a longer entry pushes its own line only.
constexpr size_t widest_column = 80;

using text_row = std::array<std::string, column_count>;
constexpr std::array<bool, column_count> right_aligned = {true, false, false, false, true};

std::string or_dash(const std::string& text) {
  return text.empty() ? "-" : text;
}

text_row row_of(size_t rank, const ranked_track& place) {
  const track& entry = *place.entry;
  return {std::to_string(rank), printable(entry.ident), printable(or_dash(entry.title)),
          printable(or_dash(joined(entry.artists))), std::to_string(place.score)};
}

std::string aligned(const text_row& row, const std::array<size_t, column_count>& widths) {
  std::string line;
  for (size_t i = 0; i < column_count; ++i) {
    const size_t width = display_width(row[i]);
    const std::string padding(widths[i] - std::min(width, widths[i]), ' ');
    line += i == 0 ? "" : "  ";
    line += right_aligned[i] ? padding + row[i] : row[i] + padding;
  }
  return line + '\n';
}

}  // namespace

std::string render_text(const playlist& tracks) {
  std::vector<text_row> rows;
  std::array<size_t, column_count> widths{};
  for (const ranked_track& place : tracks) {
    rows.push_back(row_of(rows.size() + 1, place));
    for (size_t i = 0; i < column_count; ++i)
      widths[i] = std::max(widths[i], std::min(display_width(rows.back()[i]), widest_column));
  }
  std::string document;
  for (const text_row& row : rows) document += aligned(row, widths);
  return document;
}

}  // namespace zvplaylist
