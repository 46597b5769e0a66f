// Similarity of tempos, and how mood profiles are read.
#include "attributes/playlist_dsp.h"
#include "tests/attributes/attribute_fixture.h"

namespace {

TEST(tempo_similarity, has_the_known_scores_in_either_order) {
  const int64_t rows[][3] = {
      {100, 100, 1000}, {100, 110, 950},         {100, 120, 908}, {100, 140, 844}, {60, 200, 456},
      {0, 350, -727},   {320, 0xFFFFFFFF, 1000}, {1, 2, 981},     {90, 180, 716},  {178, 181, 997},
      {119, 121, 992},  {240, 319, 702},         {318, 319, 993}, {319, 320, 998}, {250, 400, 717},
      {40, 77, 631},    {143, 70, 629},          {288, 208, 835}, {293, 68, 336},  {295, 208, 804}};
  for (const auto& [a, b, score] : rows)
    for (const auto& [one, other] : {std::pair{a, b}, {b, a}}) {
      int32_t similarity = 0;
      EXPECT_EQ(0u, dsp_primary_tempo_similarity(one, other, &similarity));
      EXPECT_EQ(score, similarity) << one << " " << other;
    }
}

TEST(mood_profile, is_read_until_it_is_covered_or_full) {
  const struct {
    const char *text, *read;
  } rows[] = {{"1:80,2:20", "1:80,"},
              {"1:79,2:1,3:5", "1:79,2:1,"},
              {"1:0,2:50", "2:50,"},
              {"123", ""},
              {nullptr, ""},
              {"5:,:7,", "0:7,"},
              {"1:40 \xC3\xA4\xE2\x82\xAC,2:9", "1:40,2:9,"},
              {"1:40\xFF,2:9", "1:40,"},
              {"1:30,2:4294967295,3:9", "1:30,2:4294967295,"},
              {"1:4,2:4,3:4,4:4,5:4,6:4,7:4,8:4,9:4,1:4,2:4,3:4,4:4,5:4,6:4,7:4,8:4,9:4",
               "1:4,2:4,3:4,4:4,5:4,6:4,7:4,8:4,9:4,1:4,2:4,3:4,4:4,5:4,6:4,7:4,8:4,"}};
  for (const auto& row : rows) {
    playlist_mood_vector vector;
    EXPECT_EQ(0u, playlist_fill_mood_vector(row.text, &vector));
    std::string read;
    for (uint32_t i = 0; i < vector.count; ++i)
      read += std::to_string(vector.ids[i]) + ":" + std::to_string(vector.weights[i]) + ",";
    EXPECT_EQ(row.read, read) << (row.text ? row.text : "none");
  }
}

}  // namespace
