// ZV_Tempo: similarity, bands, criteria by number, name and seed, and values as text.
#include <cmath>

#include "attributes/playlist_attr_common.h"
#include "attributes/playlist_dsp.h"
#include "tests/attributes/attribute_fixture.h"

namespace {

constexpr char s_value_key[] = "_sdkmgr_val_list_tempo_value";

int32_t similarity(uint32_t a, uint32_t b) {
  int32_t score = 0;
  EXPECT_EQ(0u, dsp_primary_tempo_similarity(a, b, &score));
  return score;
}

TEST(tempo_similarity, has_the_known_scores_in_either_order) {
  const int64_t rows[][3] = {{100, 100, 1000},       {100, 110, 950}, {100, 120, 908},
                             {100, 140, 844},        {60, 200, 456},  {0, 350, -727},
                             {320, 0xFFFFFFFF, 1000}};
  for (const auto& [a, b, score] : rows) {
    EXPECT_EQ(score, similarity(a, b)) << a << " " << b;
    EXPECT_EQ(score, similarity(b, a)) << b << " " << a;
  }
  EXPECT_EQ(62u, dsp_primary_tempo_similarity(1, 2, nullptr));
}

// The measure written out, each step rounded and stored at run time.
int32_t plain_similarity(uint32_t a, uint32_t b) {
  const auto curve = [](uint32_t tempo) {
    const volatile double x = tempo / 290.0, xx = x * x, xxx = xx * x;
    const volatile double second = xx * -44.71767914238594, third = xxx * 21.41256661842911;
    const volatile double first = x * 32.696596322861204, sum = second + third;
    return std::fmin(12.0, std::fmax(0.0, (sum + first) + 1.630119227133498));
  };
  const volatile double d = std::fabs(curve(a) - curve(b)), part = d / 12.0 * 2000.0;
  return d <= 0.0 ? 1000 : static_cast<int32_t>((1000.0 - part) + 0.5);
}

TEST(tempo_similarity, agrees_with_the_plain_measure) {
  for (uint32_t a = 0; a < 400; ++a)
    for (uint32_t b = 0; b < 400; b += 7) ASSERT_EQ(plain_similarity(a, b), similarity(a, b));
}

class tempo : public playlist_test {
 protected:
  const playlist_attribute& table() const { return *find_attribute("ZV_Tempo"); }

  void expect_band(const char* text, uint32_t lower, uint32_t upper) const {
    const struct {
      uint32_t op;
      std::string_view passing;  // below, at the lower and the upper bound, above
    } rows[] = {{playlist_op_equal, "-++-"},   {playlist_op_not_equal, "+--+"},
                {playlist_op_greater, "---+"}, {playlist_op_greater_equal, "-+++"},
                {playlist_op_less, "+---"},    {playlist_op_less_equal, "+++-"}};
    for (const auto& row : rows) {
      attribute_use use(table());
      ASSERT_EQ(0u, use.text(row.op, text));
      std::string passing;
      for (uint32_t value : {lower - 1, lower, upper, upper + 1})
        passing += use.score(value) == 1000 ? '+' : '-';
      EXPECT_EQ(row.passing, passing) << text << " " << row.op;
    }
  }
};

// Bands of the built-in list. A number that only lies in a band names none.
TEST_F(tempo, criteria_are_bands_and_set_the_bar_by_level) {
  const struct {
    const char* text;
    int32_t threshold;
    uint32_t lower, upper;
  } rows[] = {{"Fast", 700, 120, 169},
              {"allegro", 800, 120, 154},
              {"121 BPM", 900, 121, 121},
              {"100004", 700, 120, 169},
              {"100108", 800, 120, 154},
              {"121", 900, 121, 121},
              {"4000000000", 900, 4000000000, 4000000000}};
  for (const auto& row : rows) {
    expect_band(row.text, row.lower, row.upper);
    attribute_use like(table());
    EXPECT_EQ(0u, like.text(playlist_op_like, row.text));
    EXPECT_EQ(row.threshold, like.threshold) << row.text;
    EXPECT_EQ(similarity((row.lower + row.upper) >> 1, 77), like.score(77u)) << row.text;
  }
  attribute_use use(table());
  EXPECT_EQ(playlist_error_unsupported, use.text(playlist_op_equal, "no such tempo"));
  EXPECT_EQ(playlist_error_unsupported, use.text(playlist_op_equal, "0"));
}

TEST_F(tempo, without_a_locale_numbers_stand_for_themselves) {
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  expect_band("120", 120, 120);
  attribute_use use(table());
  EXPECT_EQ(playlist_error_no_locale, use.text(playlist_op_equal, "Fast"));
  EXPECT_EQ(0u, use.seed(playlist_op_equal, make_object("zvsdk_ctx_track", {{s_value_key, "97"}})));
  EXPECT_EQ(1000, use.score(97u));
  EXPECT_EQ(-1000, use.score(98u));

  // The music group serves when the playlist group has no locale.
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  expect_band("Allegro", 120, 154);
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_MUSIC));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

TEST_F(tempo, a_seed_the_list_does_not_know_is_warned_about) {
  attribute_use use(table());
  log_capture log(zcsl_log_error | zcsl_log_warning);
  EXPECT_EQ(
      playlist_error_no_seed_data,
      use.seed(playlist_op_like, make_object("zvsdk_ctx_track", {{s_value_key, "2000000000"}})));
  EXPECT_EQ(900, use.threshold);
  EXPECT_EQ(texts{"2 00890000 playlist_impl_attr_tempo: Failed to find a list element for Tempo. "
                  "(criteria: 2000000000)"},
            log.take());
}

TEST_F(tempo, comes_from_the_medias_track_or_the_list_element) {
  const auto track = [](const char* ident, const char* value) {
    return make_object("zvsdk_ctx_track", {{"zvsdk_val_ident", ident}, {s_value_key, value}});
  };
  const zdo_ptr album = make_object("zvsdk_ctx_album", {{s_value_key, "60"}},
                                    {{"zvsdk_ctx_track!matching", track("other", "80")},
                                     {"zvsdk_ctx_track!matching", track("media", "90")}});
  playlist_list_owner list;
  playlist_element_owner allegro;
  playlist_attr_load_list("zvsdk_list_type_tempos", nullptr, list.out(), nullptr);
  g_playlist_lists_interface->list_get_element_by_id(list.get(), 100108, 0, allegro.out());
  recorded_media media{.object = album.get(), .element = allegro.get()};
  media.collect(table());
  EXPECT_EQ((texts{"90", "100108"}), media.values);
  recorded_media stranger{.ident = "stranger", .object = album.get()};
  stranger.collect(table());
  EXPECT_TRUE(stranger.values.empty());
}

TEST_F(tempo, values_as_text_with_and_without_a_locale) {
  attribute_use use(table());
  playlist_locale_owner locale;
  g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_PLAYLIST, locale.out());
  const struct {
    const char* key;
    zvsdk_locale* locale;
    const char* text;
  } rows[] = {{"any key", nullptr, "121"},
              {s_value_key, locale.get(), "121"},
              {"_sdkmgr_val_list_tempo_data", locale.get(), "121"},
              {"zv_tempo", locale.get(), "Allegro"}};
  const char* text = nullptr;
  for (const auto& row : rows) {
    EXPECT_EQ(0u, table().value_from_integer_data(use.instance(), 121, row.key, row.locale, &text));
    EXPECT_STREQ(row.text, text);
  }
  EXPECT_EQ(playlist_warn_not_found,
            table().value_from_integer_data(use.instance(), 121, "other", locale.get(), &text));
}

}  // namespace
