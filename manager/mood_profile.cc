// Profiles from texts, and from points of the mood plane.

#include "manager/mood_profile.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <compare>
#include <cstring>
#include <numeric>

#include "manager/lists.h"

namespace manager {
namespace {

constexpr uint32_t s_whole = 100;        // the weights of a point's profile together
constexpr uint32_t s_finer_level = 2;    // of the moods that profiles name
constexpr size_t s_nearest = 5;          // moods in a point's profile
constexpr size_t s_most_pairs = 64;      // in a given profile
constexpr int32_t s_thousandths = 1000;  // the plane's unit of length
constexpr uint64_t s_softening = 50 * 50;
constexpr uint64_t s_scale = 256;  // of quotients, whose cubes times 100 fit 64 bits
constexpr uint64_t s_beyond_plane = 2 * s_thousandths * s_thousandths + 1;

struct mood_weight {
  uint32_t id;
  uint32_t weight;
};

mood_profile written(const std::vector<mood_weight>& moods) {
  std::string text;
  for (const mood_weight& each : moods) {
    if (!text.empty()) text += ',';
    text += std::to_string(each.id) + ':' + std::to_string(each.weight);
  }
  return {std::move(text), moods.front().id};
}

/* Reads a number from 1 to `most` and the separator behind it, which may be the text's end. */
bool read_number(const char*& at, char separator, uint32_t most, uint32_t& number) {
  const auto [end, fault] = std::from_chars(at, at + std::strlen(at), number);
  if (fault != std::errc() || number == 0 || number > most) return false;
  if (*end != separator && (separator != ',' || *end != '\0')) return false;
  at = end + (*end != '\0');
  return true;
}

struct near_mood {
  uint64_t distance;  // squared
  uint32_t index;     // in the list, which decides between equal distances
  uint32_t id;

  auto operator<=>(const near_mood&) const = default;
};

/* The nearest moods, the nearest first, and one more. */
std::vector<near_mood> nearest_moods(const std::vector<list_definition::plane_point>& moods,
                                     int32_t valence, int32_t energy) {
  const auto square = [](double coordinate, int32_t from) {
    const int64_t along = std::lround(coordinate * s_thousandths) - from;
    return static_cast<uint64_t>(along * along);
  };
  std::vector<near_mood> found;
  found.reserve(moods.size());
  for (const auto& mood : moods) {
    if (mood.level != s_finer_level) continue;
    const uint64_t distance = square(mood.valence, valence) + square(mood.energy, energy);
    found.push_back({distance, mood.index, mood.id});
  }
  const size_t count = std::min(found.size(), s_nearest + 1);
  std::partial_sort(found.begin(), found.begin() + count, found.end());
  found.resize(count);
  return found;
}

/*
 * Of the moods at squared distances d1 <= d2 <= ... take the first five. Each has the pull
 *
 *   ((d6 - d + 1) / (d + 0.05 squared)) cubed
 *
 * which is greatest on the mood itself and vanishes where another mood takes its place among the
 * five, so that near points have near profiles. The cube keeps most of the weight on the nearest
 * one to four moods: comparing looks at the heaviest moods alone, and a profile spread thinly would
 * hardly be like itself. Every mood has one part of the whole; the rest is shared by pull, rounded
 * down, and what rounding leaves goes to the largest remainders. All in integers, so that every
 * machine comes to the same text.
 */
std::vector<uint64_t> pulls_of(const std::vector<near_mood>& near) {
  const size_t count = std::min(near.size(), s_nearest);
  const uint64_t limit = near.size() > count ? near[count].distance : s_beyond_plane;
  std::vector<uint64_t> pulls;
  for (size_t i = 0; i < count; ++i) {
    const uint64_t fall = (limit - near[i].distance + 1) * s_scale;
    const uint64_t base = 1 + fall / (near[i].distance + s_softening);
    pulls.push_back(base * base * base);
  }
  return pulls;
}

/* The moods around a point, in thousandths of the plane, with their weights. */
std::vector<mood_weight> weigh_moods(const std::vector<list_definition::plane_point>& moods,
                                     int32_t valence, int32_t energy) {
  const std::vector<near_mood> near = nearest_moods(moods, valence, energy);
  const std::vector<uint64_t> pulls = pulls_of(near);
  if (pulls.empty()) return {};
  const uint64_t sum = std::accumulate(pulls.begin(), pulls.end(), uint64_t{0});
  std::vector<mood_weight> parts;
  std::vector<std::pair<uint64_t, size_t>> lacking;  // to one more part, and whose
  uint32_t left = s_whole;
  for (size_t i = 0; i < pulls.size(); ++i) {
    const uint64_t share = pulls[i] * (s_whole - pulls.size());
    // NOLINTNEXTLINE(clang-analyzer-core.DivideZero): each pull is 1 at least
    parts.push_back({near[i].id, 1 + static_cast<uint32_t>(share / sum)});
    lacking.emplace_back(sum - share % sum, i);
    left -= parts[i].weight;
  }
  std::sort(lacking.begin(), lacking.end());
  for (uint32_t i = 0; i < left; ++i) ++parts[lacking[i].second].weight;
  return parts;
}

}  // namespace

bool looks_like_profile(const char* text) {
  return std::strchr(text, ':') != nullptr && text[std::strspn(text, "0123456789:, ")] == '\0';
}

std::optional<mood_profile> parse_profile(const char* text) {
  std::vector<mood_weight> moods;
  for (const char* at = text; at == text || at[-1] == ',';) {
    mood_weight mood{};
    if (!read_number(at, ':', largest_id, mood.id)) return {};
    if (!read_number(at, ',', s_whole, mood.weight)) return {};
    moods.push_back(mood);
    if (moods.size() > s_most_pairs) return {};
  }
  std::stable_sort(moods.begin(), moods.end(),
                   [](const auto& a, const auto& b) { return a.weight > b.weight; });
  return written(moods);
}

void mood_plane::build() {
  const auto moods = lists_.definition_of("moods");
  if (moods == nullptr) return;
  std::vector<mood_profile> cells;
  for (int32_t cell = 0; cell < (s_steps + 1) * (s_steps + 1); ++cell) {
    constexpr int32_t step = s_thousandths / s_steps;
    const auto parts = weigh_moods(moods->plane_points(), cell % (s_steps + 1) * step,
                                   cell / (s_steps + 1) * step);
    if (parts.empty()) return;
    cells.push_back(written(parts));
  }
  cells_ = std::move(cells);
}

const mood_profile* mood_plane::at(float valence, float energy) {
  std::call_once(built_, [&] { build(); });
  if (cells_.empty()) return nullptr;
  const auto nearest = [](float coordinate) {
    return static_cast<size_t>(std::lround(coordinate * s_steps));
  };
  return &cells_[nearest(energy) * (s_steps + 1) + nearest(valence)];
}

}  // namespace manager
