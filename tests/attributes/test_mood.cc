// ZV_Mood: its three routes, criteria and seeds, what it collects, and the locale that it keeps.
#include <atomic>
#include <thread>

#include "tests/attributes/attribute_fixture.h"

namespace {

constexpr char s_mood[] = "ZV_Mood", s_id_key[] = "_sdkmgr_val_list_mood_id",
               s_profile_key[] = "_sdkmgr_val_list_mood_data";

using mood = small_lists_test;

zdo_ptr track_of(const char* id, const char* profile, const char* ident = "any",
                 const char* context = "zvsdk_ctx_track") {
  zdo_ptr track = make_object(context, {{"zvsdk_val_ident", ident}});
  if (id != nullptr) zvsdk_manager_zdo_value_add(track.get(), s_id_key, id);
  if (profile != nullptr) zvsdk_manager_zdo_value_add(track.get(), s_profile_key, profile);
  return track;
}

// Each media is seen through one kind of its values.
TEST_F(mood, a_seed_takes_one_of_three_routes) {
  constexpr int32_t ignored = playlist_score_ignored, failed = attribute_use::s_no_score;
  const struct {
    uint32_t op;
    const char *id, *profile;
    zvsdk_status status;
    int32_t threshold, of_7111, of_7112, of_profile;
  } rows[] = {
      {playlist_op_equal, "7111", "7112:90", 0, 1000, 1000, -1000, ignored},
      {playlist_op_not_equal, "7111", nullptr, 0, 1000, -1000, 1000, ignored},
      {playlist_op_equal, nullptr, "7111:90", playlist_error_no_seed_data, 1000, -1000, -1000,
       ignored},
      {playlist_op_like, "7111", nullptr, 0, 700, 1000, 650, ignored},
      {playlist_op_like, "7111", "7111:60,7112:40", 0, 700, ignored, ignored, 752},
      {playlist_op_like, "7111", "no profile", 62, 700, ignored, ignored, failed},
      {playlist_op_like, "999999", nullptr, playlist_error_no_seed_data, 700, failed, failed,
       ignored},
  };
  for (const auto& row : rows)
    for (const char* context : {"zvsdk_ctx_track", "zvsdk_ctx_pldata", "zvsdk_ctx_album"}) {
      SCOPED_TRACE(testing::Message() << &row - rows << context);
      zdo_ptr seed = track_of(row.id, row.profile, "any", context);
      if (context == std::string("zvsdk_ctx_album"))  // its first track counts alone
        seed = make_object(context, {{s_id_key, "7002"}},
                           {{"zvsdk_ctx_track!matching", track_of(row.id, row.profile)},
                            {"zvsdk_ctx_track!matching", track_of("7002", "7002:9")}});
      attribute_use use(s_mood);
      log_capture log(zcsl_log_error | zcsl_log_warning);
      EXPECT_EQ(row.status, use.seed(row.op, seed));
      texts warnings;
      if (row.threshold == 700 && row.status == playlist_error_no_seed_data)
        warnings = {
            "2 00890000 playlist_impl_attr_mood: Failed to find a correlates set for Mood. "
            "(criteria:999999)"};
      EXPECT_EQ(warnings, log.take());
      EXPECT_EQ(row.threshold, use.threshold);
      EXPECT_EQ(row.of_7111, use.score(7111u));
      EXPECT_EQ(row.of_7112, use.score(7112u));
      EXPECT_EQ(row.of_profile, use.score("7111:100"));
      EXPECT_EQ(row.of_profile == ignored ? ignored : failed, use.score("no profile"));
    }
}

// That there is no row of correlates is found out by the comparison alone.
TEST_F(mood, numbers_need_no_row) {
  attribute_use equal(s_mood), like(s_mood);
  EXPECT_EQ(0u, equal.text(playlist_op_equal, "999999"));
  EXPECT_EQ(1000, equal.score(999999u));
  EXPECT_EQ(0u, like.text(playlist_op_like, "999999"));
  EXPECT_EQ(700, like.threshold);
  EXPECT_EQ(attribute_use::s_no_score, like.score(999999u));
}

TEST_F(mood, collects_both_kinds_from_the_medias_own_track) {
  const zdo_ptr album =
      make_object("zvsdk_ctx_album", {{s_id_key, "7002"}},
                  {{"zvsdk_ctx_track!matching", track_of("7001", nullptr, "first")},
                   {"zvsdk_ctx_track!matching", track_of("7111", "7111:90", "media")}});
  const playlist_element_owner fine = element_of("zvsdk_list_type_moods", 7112);
  EXPECT_EQ((texts{"7111:90", "#7111", "#7112"}), collected(s_mood, album, fine.get()));
  EXPECT_EQ(texts{"#7112"}, collected(s_mood, album, fine.get(), "stranger"));
}

TEST_F(mood, gives_a_profile_back_as_it_is) {
  const char *stored = "7111:90", *text = nullptr;
  attribute_use use(s_mood);
  EXPECT_EQ("3", use.value(7111, s_profile_key));
  const playlist_attribute& table = attribute_of(s_mood);
  EXPECT_EQ(0u,
            table.value_from_string_data(use.instance(), stored, s_profile_key, nullptr, &text));
  EXPECT_EQ(stored, text);
  EXPECT_EQ(playlist_warn_not_found,
            table.value_from_string_data(use.instance(), stored, s_mood, nullptr, &text));
}

// A profile that cannot be compared leaves its media out and nothing else.
TEST_F(mood, generation_passes_over_profiles_without_a_mood) {
  playlist_collection* made = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("moods", &made));
  const collection_ptr collection(made);
  for (const auto& [ident, profile] : {std::pair{"a", "7111:90"}, {"b", "none"}, {"c", "7111:80"}})
    ASSERT_EQ(0u, zvsdk_playlist_collection_add_zdo(made, ident, track_of("7111", profile).get()));
  playlist_results* found = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_generate_playlist(nullptr, "GENPL WHERE ZV_Mood LIKE SEED", made,
                                                 track_of("7111", "7111:90").get(), &found));
  const results_ptr results(found);
  uint32_t count = 0;
  EXPECT_EQ(0u, zvsdk_playlist_results_count(found, &count));
  EXPECT_EQ(2u, count);
}

// The last locale is kept until the module stops; each that was handed out goes back once.
TEST_F(mood, keeps_one_locale_whoever_creates_instances) {
  static std::atomic<int> s_references;
  static zvsdk_listmanager_interface* const s_real = g_playlist_lists_interface;
  zvsdk_listmanager_interface counting = *s_real;
  counting.locale_get_default = [](const char* group, zvsdk_locale** locale) {
    ++s_references;
    return s_real->locale_get_default(group, locale);
  };
  counting.locale_release = [](zvsdk_locale* locale) {
    --s_references;
    return s_real->locale_release(locale);
  };
  const playlist_attribute& table = attribute_of(s_mood);
  EXPECT_EQ(0u, table.shutdown(nullptr)) << "as if no instance had been made yet";
  g_playlist_lists_interface = &counting;
  const auto create = [] {
    for (int i = 0; i < 200; ++i) attribute_use use(s_mood);
  };
  std::thread other(create);
  create();
  other.join();
  EXPECT_EQ(1, s_references);
  EXPECT_EQ(0u, table.shutdown(nullptr));
  EXPECT_EQ(0, s_references);
  g_playlist_lists_interface = s_real;
}

}  // namespace
