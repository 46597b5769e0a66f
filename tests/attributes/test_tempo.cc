// ZV_Tempo: similarity, bands, criteria by number, name and seed, and values as text.
#include "attributes/playlist_attr_lists.h"
#include "attributes/playlist_dsp.h"
#include "tests/attributes/attribute_fixture.h"

namespace {

constexpr char s_tempo[] = "ZV_Tempo", s_value_key[] = "_sdkmgr_val_list_tempo_value";

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
  } rows[] = {{"Fast", 700, 120, 169},
              {"allegro", 800, 120, 154},
              {"121 BPM", 900, 121, 121},
              {"100004", 700, 120, 169},
              {"100108", 800, 120, 154},
              {"121", 900, 121, 121},
              {"4000000000", 900, 4000000000, 4000000000}};
  for (const auto& row : rows) {
    expect_band(row.text, row.lower, row.upper);
    attribute_use like(s_tempo);
    EXPECT_EQ(0u, like.text(playlist_op_like, row.text));
    EXPECT_EQ(row.threshold, like.threshold) << row.text;
    EXPECT_EQ(similarity((row.lower + row.upper) >> 1, 77), like.score(77u)) << row.text;
  }
  attribute_use use(s_tempo);
  for (const char* unknown : {"no such tempo", "0"})
    EXPECT_EQ(playlist_error_unsupported, use.text(playlist_op_equal, unknown));
}

TEST_F(tempo, without_a_locale_numbers_stand_for_themselves) {
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  expect_band("120", 120, 120);
  attribute_use use(s_tempo);
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
  attribute_use use(s_tempo);
  log_capture log(zcsl_log_error | zcsl_log_warning);
  const zdo_ptr seed = make_object("zvsdk_ctx_track", {{s_value_key, "2000000000"}});
  EXPECT_EQ(playlist_error_no_seed_data, use.seed(playlist_op_like, seed));
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
  EXPECT_EQ((texts{"#90", "#100108"}), collected(s_tempo, album, allegro.get()));
  EXPECT_EQ(texts{"#100108"}, collected(s_tempo, nullptr, allegro.get()));
  EXPECT_EQ(texts{}, collected(s_tempo, album, nullptr, "stranger"));
}

TEST_F(tempo, values_as_text_with_and_without_a_locale) {
  attribute_use use(s_tempo);
  playlist_locale_owner locale;
  g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_PLAYLIST, locale.out());
  const struct {
    const char* key;
    zvsdk_locale* locale;
    const char* text;  // null: no such key
  } rows[] = {{"any key", nullptr, "121"},
              {s_value_key, locale.get(), "121"},
              {"_sdkmgr_val_list_tempo_data", locale.get(), "121"},
              {"zv_tempo", locale.get(), "Allegro"},
              {"other", locale.get(), nullptr}};
  for (const auto& row : rows) {
    const char* text = nullptr;
    EXPECT_EQ(row.text ? 0 : playlist_warn_not_found,
              attribute_of(s_tempo).value_from_integer_data(use.instance(), 121, row.key,
                                                            row.locale, &text));
    EXPECT_STREQ(row.text, text);
  }
}

}  // namespace
