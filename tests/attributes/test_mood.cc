// ZV_Mood: its two kinds of values and the locale that it keeps.
#include <atomic>
#include <thread>

#include "tests/attributes/attribute_fixture.h"

namespace {

constexpr char s_mood[] = "ZV_Mood", s_track_key[] = "zvsdk_ctx_track!matching";
constexpr char s_id_key[] = "_sdkmgr_val_list_mood_id",
               s_profile_key[] = "_sdkmgr_val_list_mood_data";

using mood = small_lists_test;

// The operator decides between profile and mood. Of an album as a seed its first track counts.
TEST_F(mood, has_two_kinds_of_values) {
  const zdo_ptr track =
      make_object("zvsdk_ctx_track", {{s_id_key, "7111"}, {s_profile_key, "7111:60,7112:40"}});
  const zdo_ptr other =
      make_object("zvsdk_ctx_track", {{s_id_key, "7002"}, {s_profile_key, "7002:9"}});
  const zdo_ptr album = make_object("zvsdk_ctx_album", {{s_id_key, "7002"}},
                                    {{s_track_key, track}, {s_track_key, other}});
  const texts values = {"#7111", "#7112", "7111:100", "no profile"};
  EXPECT_EQ("1000: 1000 -1000 none none", judged(s_mood, playlist_op_equal, album, values));
  EXPECT_EQ("700: none none 752 failed", judged(s_mood, playlist_op_like, album, values));
  EXPECT_EQ((texts{"7111:60,7112:40", "#7111"}), collected(s_mood, track));
  attribute_use use(s_mood);
  EXPECT_EQ("7111:90", use.value("7111:90", s_profile_key)) << "given back as it is";
  EXPECT_EQ("3", use.value("7111:90", s_mood));
}

// A row that is missing is found out by the comparison, a table that is missing by the criterion.
TEST_F(mood, needs_correlates_for_likeness) {
  zvsdk_listmanager_interface* const real = g_playlist_lists_interface;
  zvsdk_listmanager_interface without = *real;
  without.correlates_retrieve = [](const char*, void*, void*, void*, zvsdk_correlates**) {
    return playlist_error_not_found;
  };
  g_playlist_lists_interface = &without;
  EXPECT_EQ("1000: 1000", judged(s_mood, playlist_op_equal, "Fine", {"#7111"}));
  EXPECT_EQ("#723 700:", judged(s_mood, playlist_op_like, "Fine", {}));
  g_playlist_lists_interface = real;
}

// The last locale is kept until the module stops; each that was handed out goes back once.
TEST_F(mood, keeps_one_locale_whoever_creates_instances) {
  static std::atomic<int> s_references;
  static zvsdk_listmanager_interface* const s_real = g_playlist_lists_interface;
  zvsdk_listmanager_interface counting = *s_real;
  counting.locale_get_default = [](const char* group, zvsdk_locale** locale) {
    return ++s_references, s_real->locale_get_default(group, locale);
  };
  counting.locale_release = [](zvsdk_locale* locale) {
    return --s_references, s_real->locale_release(locale);
  };
  const auto stop = attribute_of(s_mood).shutdown;
  EXPECT_EQ(0u, stop(nullptr)) << "as if no instance had been made yet";
  g_playlist_lists_interface = &counting;
  const auto create = [] {
    for (int i = 0; i < 200; ++i) attribute_use use(s_mood);
  };
  std::thread other(create);
  create();
  other.join();
  EXPECT_EQ(1, s_references);
  EXPECT_EQ(0u, stop(nullptr));
  EXPECT_EQ(0, s_references);
  g_playlist_lists_interface = s_real;
}

}  // namespace
