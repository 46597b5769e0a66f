// Tempo similarity. Built without contraction of floating-point expressions: scores are to be the
// same to the last bit on every machine.
#include "attributes/playlist_dsp.h"

#include <algorithm>
#include <array>

namespace {

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

}  // namespace

zvsdk_status dsp_primary_tempo_similarity(uint32_t a, uint32_t b, int32_t* score) {
  if (score == nullptr) return playlist_dsp_nothing_to_compare;
  const double difference = place(a) - place(b);
  const double distance = difference < 0.0 ? -difference : difference;
  // Half a point is added and the fraction cut off, so that the scale ends at -999.
  const double raised = 1000.0 - distance / s_upper_bound * 2000.0 + 0.5;
  *score = distance <= 0.0 ? 1000 : static_cast<int32_t>(raised);
  return 0;
}
