// Tempo and mood similarity. Built without contraction of floating-point expressions: scores are to
// be the same to the last bit on every machine.
#include "attributes/playlist_dsp.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "module/playlist_services.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"
#include "zvsdk_playlist.h"

namespace {

constexpr char s_source[] = "playlist_dsp";

// ---- Tempo ----------------------------------------------------------------------------------

constexpr double s_divisor = 290.0;
constexpr double s_upper_bound = 12.0;
constexpr double s_cubed = 21.41256661842911;
constexpr double s_squared = -44.71767914238594;
constexpr double s_linear = 32.696596322861204;
constexpr double s_constant = 1.630119227133498;

constexpr double curve(uint32_t tempo) {
  const double x = tempo / s_divisor;
  const double squared = x * x;
  const double p = squared * s_squared + squared * x * s_cubed + x * s_linear + s_constant;
  return p <= 0.0 ? 0.0 : std::min(p, s_upper_bound);
}

// The curve has no falling stretch, so every tempo from here on lies at its upper bound.
constexpr uint32_t s_first_at_bound = 320;

// A candidate costs two look-ups: the compiler evaluates the same expression, rounded the same way.
constexpr auto s_curve = [] {
  std::array<double, s_first_at_bound + 1> values{};
  for (uint32_t tempo = 0; tempo <= s_first_at_bound; ++tempo) values[tempo] = curve(tempo);
  return values;
}();
static_assert(s_curve[s_first_at_bound - 1] < s_upper_bound);
static_assert(s_curve[s_first_at_bound] == s_upper_bound);
static_assert(std::is_sorted(s_curve.begin(), s_curve.end()));

double place(uint32_t tempo) {
  return s_curve[std::min(tempo, s_first_at_bound)];
}

// ---- Mood -----------------------------------------------------------------------------------

constexpr uint32_t s_parts_enough = 79;  // a profile is read until its parts exceed this
constexpr int32_t s_lowest_score = -1000;

// Behind the next mark, or null. The marks are ASCII: only text that is not needs decoding.
const char* behind(const char* text, char mark) {
  while (static_cast<signed char>(*text) > 0 && *text != mark) ++text;
  if (*text != mark) text = zcsl_string_strchr(text, static_cast<uint32_t>(mark));
  return text != nullptr ? text + 1 : nullptr;
}

// The axis of a mood, if it has correlates.
void set_axis(playlist_normalized_mood_vector* vector, uint32_t i, uint32_t id,
              zvsdk_correlates* correlates) {
  zvsdk_correlates_set* set = nullptr;
  const bool has_set =
      g_playlist_lists_interface->correlates_get_set(correlates, id, s_lowest_score, &set) == 0;
  vector->ids[i] = id;
  vector->sets[i] = has_set ? set : nullptr;
  vector->reference[i] = has_set ? 100.0f : 0.0f;
}

// Where a candidate stands on an axis, from -100 to 100. Weights are a stranger's: the sum wraps.
int32_t coordinate(zvsdk_correlates_set* set, const playlist_mood_vector& candidate) {
  if (set == nullptr) return 0;
  uint32_t sum = 0;
  for (uint32_t j = 0; j < candidate.count; ++j) {
    int32_t score = 0;
    if (g_playlist_lists_interface->correlates_set_get_score(set, candidate.ids[j], &score) == 0)
      sum += static_cast<uint32_t>(score) * candidate.weights[j];
  }
  return std::clamp(static_cast<int32_t>(sum) / 1000, -100, 100);
}

// The score of a squared distance between points of so many axes, 2 apart at most on each.
int32_t score_of_distance(float squared, uint32_t axes) {
  const float farthest = std::sqrt(static_cast<float>(axes) * 4.0f);
  const float distance = std::sqrt(squared) / farthest * 2000.0f;
  return static_cast<int32_t>(std::clamp(1000.0f - distance, -1000.0f, 1000.0f));
}

}  // namespace

zvsdk_status playlist_dsp_initialize() {
  return 0;
}

zvsdk_status playlist_dsp_shutdown() {
  return 0;
}

zvsdk_status dsp_primary_tempo_similarity(uint32_t a, uint32_t b, int32_t* score) {
  if (score == nullptr) return playlist_dsp_nothing_to_compare;
  const double distance = std::abs(place(a) - place(b));
  // Half a point is added and the fraction cut off, so that the scale ends at -999.
  const double raised = 1000.0 - distance / s_upper_bound * 2000.0 + 0.5;
  *score = distance <= 0.0 ? 1000 : static_cast<int32_t>(raised);
  return 0;
}

zvsdk_status playlist_fill_mood_vector(const char* text, playlist_mood_vector* vector) {
  if (vector == nullptr) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  *vector = {};
  uint32_t& count = vector->count;
  for (uint64_t parts = 0; text != nullptr && count < playlist_mood_limit;) {
    vector->ids[count] = zcsl_string_atou32(text);
    text = behind(text, ':');
    if (text == nullptr) break;
    const uint32_t weight = zcsl_string_atou32(text);
    vector->weights[count] = weight;
    parts += weight;
    if (weight != 0) ++count;
    if (parts > s_parts_enough) break;
    text = behind(text, ',');
  }
  return 0;
}

zvsdk_status playlist_create_normalized_mood_vector(playlist_normalized_mood_vector** vector) {
  void* record = zcsl_memory_calloc(1, sizeof(playlist_normalized_mood_vector));
  if (record == nullptr) return zcsl_logged(playlist_error_no_memory, __LINE__, s_source);
  *vector = static_cast<playlist_normalized_mood_vector*>(record);
  return 0;
}

zvsdk_status playlist_delete_normalized_mood_vector(playlist_normalized_mood_vector* vector) {
  if (vector == nullptr) return 0;
  for (uint32_t i = 0; i < vector->count; ++i)
    if (vector->sets[i] != nullptr)
      g_playlist_lists_interface->correlates_set_release(vector->sets[i]);
  zcsl_memory_free(vector);
  return 0;
}

zvsdk_status dsp_mood_normalize_vector(const playlist_mood_vector* source,
                                       playlist_normalized_mood_vector* normalized,
                                       zvsdk_correlates* correlates) {
  if (source == nullptr || normalized == nullptr || source->count == 0)
    return playlist_dsp_nothing_to_compare;
  normalized->count = source->count;
  for (uint32_t i = 0; i < source->count; ++i) set_axis(normalized, i, source->ids[i], correlates);
  return 0;
}

zvsdk_status dsp_mood_similarity(zvsdk_correlates*,
                                 const playlist_normalized_mood_vector* criterion,
                                 const playlist_mood_vector* candidate, int32_t* score) {
  if (criterion == nullptr || candidate == nullptr || score == nullptr)
    return playlist_dsp_nothing_to_compare;
  *score = 0;
  if (criterion->count == 0 || candidate->count == 0) return playlist_dsp_nothing_to_compare;
  float squared = 0.0f;
  for (uint32_t i = 0; i < criterion->count; ++i) {
    const int32_t wanted = static_cast<int32_t>(criterion->reference[i]);
    const int32_t found = coordinate(criterion->sets[i], *candidate);
    const float apart = static_cast<float>(wanted) / 100.0f - static_cast<float>(found) / 100.0f;
    squared += apart * apart;
  }
  *score = score_of_distance(squared, criterion->count);
  return 0;
}
