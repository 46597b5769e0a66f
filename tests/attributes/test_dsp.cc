// Similarity of tempos; mood profiles, how they are read and their similarity against a plain
// model.
#include <algorithm>
#include <cmath>
#include <random>

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

int32_t correlation(uint32_t a, uint32_t b) {
  return static_cast<int32_t>((a * 7919 + b * 104729) % 2001) - 1000;
}

/* Correlates by a function: moods below 5 have no set, and sets do not know multiples of 9. */
class mood_similarity : public ::testing::Test {
 protected:
  mood_similarity() {
    table_.correlates_get_set = [](zvsdk_correlates*, uint32_t id, int32_t lowest,
                                   zvsdk_correlates_set** set) -> zvsdk_status {
      if (id < 5 || lowest != -1000) return 0x10800003;
      *set = reinterpret_cast<zvsdk_correlates_set*>(uintptr_t{id});
      return ++s_sets, 0;
    };
    table_.correlates_set_get_score = [](zvsdk_correlates_set* set, uint32_t id, int32_t* score) {
      *score = s_correlation(static_cast<uint32_t>(reinterpret_cast<uintptr_t>(set)), id);
      return zvsdk_status{id % 9 ? 0u : 0x10800003u};
    };
    table_.correlates_set_release = [](zvsdk_correlates_set*) -> zvsdk_status {
      return --s_sets, 0;
    };
    s_correlation = correlation;
    g_playlist_lists_interface = &table_;
  }
  ~mood_similarity() override {
    EXPECT_EQ(0, s_sets);
    g_playlist_lists_interface = nullptr;
  }

  static zvsdk_status compare(const playlist_mood_vector& seed, const playlist_mood_vector& other,
                              int32_t* score) {
    playlist_normalized_mood_vector* axes = nullptr;
    EXPECT_EQ(0u, playlist_create_normalized_mood_vector(&axes));
    EXPECT_EQ(0u, dsp_mood_normalize_vector(&seed, axes, nullptr));
    const zvsdk_status status = dsp_mood_similarity(nullptr, axes, &other, score);
    playlist_delete_normalized_mood_vector(axes);
    return status;
  }

  static inline int32_t (*s_correlation)(uint32_t, uint32_t);

 private:
  static inline int s_sets = 0;
  zvsdk_listmanager_interface table_ = {};
};

// One mood of the candidate in full puts it at its correlations with the seed's moods.
TEST_F(mood_similarity, has_the_known_scores) {
  static std::vector<int32_t> s_places;
  s_correlation = [](uint32_t axis, uint32_t) { return s_places[axis - 10] * 10; };
  const std::pair<std::vector<int32_t>, int32_t> rows[] = {
      {{100}, 1000},        {{80}, 800},          {{0}, 0}, {{-100}, -1000}, {{100, 40}, 575},
      {{60, 30, -20}, 165}, {{-100, -100}, -1000}};
  int32_t score = 0;
  for (const auto& [places, expected] : rows) {
    s_places = places;
    const auto count = static_cast<uint32_t>(places.size());
    EXPECT_EQ(0u, compare({count, {10, 11, 12}, {1, 1, 1}}, {1, {1}, {100}}, &score));
    EXPECT_EQ(expected, score);
  }
}

TEST_F(mood_similarity, agrees_with_a_plain_model) {
  std::mt19937 random(20240611);
  const auto profile = [&](uint32_t count, uint32_t heaviest) {
    playlist_mood_vector vector = {count, {}, {}};
    for (uint32_t i = 0; i < count; ++i) vector.ids[i] = random() % 60;
    for (uint32_t i = 0; i < count; ++i) vector.weights[i] = random() % heaviest + 1;
    return vector;
  };
  for (uint32_t step = 0; step < 20000; ++step) {
    const auto seed = profile(random() % 17 + 1, 100);
    const auto other = profile(random() % 17 + 1, step % 4 ? 40 : 0xFFFFFFFF);
    double squared = 0;
    for (uint32_t i = 0; i < seed.count; ++i) {
      int64_t sum = 0;
      for (uint32_t j = 0; j < other.count; ++j)
        if (other.ids[j] % 9)
          sum += int64_t{correlation(seed.ids[i], other.ids[j])} * other.weights[j];
      const int32_t place = std::clamp(static_cast<int32_t>(sum) / 1000, -100, 100);
      if (seed.ids[i] >= 5) squared += std::pow(1 - place / 100.0, 2);
    }
    int32_t score = 0;
    ASSERT_EQ(0u, compare(seed, other, &score));
    ASSERT_NEAR(1000 - std::sqrt(squared / (4 * seed.count)) * 2000, score, 1.001);
  }
}

}  // namespace
