// ZV_Tempo: similarity, and the bands that criteria are.
#include "attributes/playlist_attr_lists.h"
#include "attributes/playlist_dsp.h"
#include "tests/attributes/attribute_fixture.h"

namespace {

constexpr char s_tempo[] = "ZV_Tempo";

int32_t similarity(uint32_t a, uint32_t b) {
  int32_t score = 0;
  EXPECT_EQ(0u, dsp_primary_tempo_similarity(a, b, &score));
  return score;
}

TEST(tempo_similarity, has_the_known_scores_in_either_order) {
  const int64_t rows[][3] = {
      {100, 100, 1000}, {100, 110, 950},         {100, 120, 908}, {100, 140, 844}, {60, 200, 456},
      {0, 350, -727},   {320, 0xFFFFFFFF, 1000}, {1, 2, 981},     {90, 180, 716},  {178, 181, 997},
      {119, 121, 992},  {240, 319, 702},         {318, 319, 993}, {319, 320, 998}, {250, 400, 717},
      {40, 77, 631},    {143, 70, 629},          {288, 208, 835}, {293, 68, 336},  {295, 208, 804}};
  for (const auto& [a, b, score] : rows) {
    EXPECT_EQ(score, similarity(a, b)) << a << " " << b;
    EXPECT_EQ(score, similarity(b, a)) << b << " " << a;
  }
  EXPECT_EQ(62u, dsp_primary_tempo_similarity(1, 2, nullptr));
}

void expect_band(const char* text, uint32_t lower, uint32_t upper) {
  const struct {
    uint32_t op;
    std::string_view passing;  // below, at the lower and the upper bound, above
  } rows[] = {{playlist_op_equal, "-++-"},   {playlist_op_not_equal, "+--+"},
              {playlist_op_greater, "---+"}, {playlist_op_greater_equal, "-+++"},
              {playlist_op_less, "+---"},    {playlist_op_less_equal, "+++-"}};
  for (const auto& row : rows) {
    attribute_use use(s_tempo);
    ASSERT_EQ(0u, use.text(row.op, text));
    std::string passing;
    for (uint32_t value : {lower - 1, lower, upper, upper + 1})
      passing += use.score(value) == 1000 ? '+' : '-';
    EXPECT_EQ(row.passing, passing) << text << " " << row.op;
  }
}

using tempo = playlist_test;

// Bands of the built-in list. A number that only lies in a band names none.
TEST_F(tempo, criteria_are_bands_and_set_the_bar_by_level) {
  const struct {
    const char* text;
    int32_t threshold;
    uint32_t lower, upper;
  } rows[] = {{"Fast", 700, 120, 169},    {"allegro", 800, 120, 154},
              {"121 BPM", 900, 121, 121}, {"100108", 800, 120, 154},
              {"121", 900, 121, 121},     {"4000000000", 900, 4000000000, 4000000000}};
  for (const auto& row : rows) {
    expect_band(row.text, row.lower, row.upper);
    attribute_use like(s_tempo);
    EXPECT_EQ(0u, like.text(playlist_op_like, row.text));
    EXPECT_EQ(row.threshold, like.threshold) << row.text;
    EXPECT_EQ(similarity((row.lower + row.upper) >> 1, 77), like.score(77u)) << row.text;
  }
}

TEST_F(tempo, without_a_locale_numbers_stand_for_themselves) {
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  expect_band("120", 120, 120);
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

}  // namespace
