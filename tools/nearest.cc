// Titles first, then edit distance.
#include "tools/nearest.h"

#include <algorithm>
#include <numeric>
#include <utility>
#include <vector>

#include "tools/text.h"

namespace zvplaylist {

namespace {

// How many bytes must be put in, taken out or exchanged to get from one text to the other; any
// number above `most` stands for more than that.
size_t edit_distance(std::string_view from, std::string_view to, size_t most) {
  if (std::max(from.size(), to.size()) - std::min(from.size(), to.size()) > most) return most + 1;
  std::vector<size_t> row(to.size() + 1);  // distances from what was read to each start of `to`
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 0; i < from.size(); ++i) {
    size_t diagonal = std::exchange(row[0], i + 1);
    for (size_t k = 0; k < to.size(); ++k) {
      const size_t exchanged = diagonal + (from[i] != to[k]);
      diagonal = row[k + 1];
      row[k + 1] = std::min({exchanged, diagonal + 1, row[k] + 1});
    }
    if (*std::min_element(row.begin(), row.end()) > most) return most + 1;
  }
  return row.back();
}

}  // namespace

const track* nearest_track(const catalog& tracks, std::string_view text) {
  const std::string wanted = ascii_lower(text);
  const track* nearest = nullptr;
  size_t limit = wanted.size() / 4 + 1;
  for (const track& each : tracks) {
    if (ascii_lower(each.title) == wanted) return &each;
    const size_t distance = edit_distance(wanted, ascii_lower(each.ident), limit);
    if (distance >= limit) continue;
    limit = distance;
    nearest = &each;
  }
  return nearest;
}

}  // namespace zvplaylist
