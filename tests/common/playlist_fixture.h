/*
 * playlist_fixture.h: what tests of the playlist library start from. Fixtures, each with what the
 * one before it has: a host alone (host_test), the started module (module_test), the module with an
 * English locale for the lists that attributes need and a user (playlist_test); the last step also
 * for a fixture that starts the module itself (with_locale). Beside them log lines, owners of the
 * module's handles and tracks.
 */
#ifndef PLAYLIST_FIXTURE_H
#define PLAYLIST_FIXTURE_H

#include "tests/common/host_objects.h"
#include "zvsdk_playlist.h"

/* Collects the log lines of the module's packages as "level code source: text" while it lives. */
class log_capture {
 public:
  explicit log_capture(uint32_t levels) { listen(levels, on_line); }
  ~log_capture() { listen(0, nullptr); }

  texts take() { return std::exchange(lines_, {}); }

 private:
  void listen(uint32_t levels, zvsdk_log_handler handler) {
    zvsdk_manager_log_handler_set(handler, this);
    zvsdk_manager_log_mask_set(zvsdk_package_playlist, levels);
    zvsdk_manager_log_mask_set(zvsdk_package_banner, levels);
  }
  static void on_line(void* self, uint32_t level, uint32_t code, uint32_t, const char* source,
                      const char* text) {
    char head[32];
    std::snprintf(head, sizeof(head), "%u %08X ", level, code);
    static_cast<log_capture*>(self)->lines_.push_back(head + std::string(source ? source : "") +
                                                      ": " + (text ? text : ""));
  }
  texts lines_;
};

using collection_ptr =
    std::unique_ptr<playlist_collection, handle_release<zvsdk_playlist_collection_release>>;
using results_ptr =
    std::unique_ptr<playlist_results, handle_release<zvsdk_playlist_results_release>>;

/* What a test says of a track; expands to the full tree of a track object. */
struct track_data {
  const char* title = nullptr;
  std::vector<const char*> artists;
  const char* album = nullptr;
  uint32_t tempo = 0;
  uint32_t year = 0;
  const char *genre = nullptr, *mood = nullptr, *origin = nullptr, *artist_type = nullptr;
};

inline zdo_ptr make_track(const char* ident, const track_data& data) {
  zvsdk_track_description track = {};
  track.size = sizeof track;
  track.ident = ident;
  track.title = data.title;
  track.artists = data.artists.data();
  track.artist_count = static_cast<uint32_t>(data.artists.size());
  track.album = data.album;
  track.tempo = data.tempo;
  track.year = data.year;
  track.genre = data.genre;
  track.mood = data.mood;
  track.origin = data.origin;
  track.artist_type = data.artist_type;
  return zdo_ptr(output_of(zvsdk_manager_zdo_from_track, &track, nullptr));
}

inline std::string numbered_ident(uint32_t number) {
  return "Track " + std::to_string(number);
}

/* A track with values of every attribute. Its title is its ident; five bands have all such tracks.
 */
inline zdo_ptr make_numbered_track(uint32_t number) {
  const std::string ident = numbered_ident(number);
  const std::string band = "The Band " + std::to_string(number % 5);
  return make_track(ident.c_str(), {.title = ident.c_str(),
                                    .artists = {band.c_str(), ident.c_str()},
                                    .album = "Album",
                                    .tempo = 80 + number * 5 % 100,
                                    .year = 1950 + number % 70,
                                    .genre = number % 2 == 0 ? "Rock" : "Europop",
                                    .mood = number % 3 == 0 ? "40101:60,40102:40" : "Furious",
                                    .origin = "Algeria",
                                    .artist_type = "Vocalist"});
}

class host_test : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager)); }
  void TearDown() override { EXPECT_EQ(0u, zvsdk_manager_release(manager)); }

  zvsdk_sdkmanager* manager = nullptr;
};

class module_test : public host_test {
 protected:
  void SetUp() override {
    host_test::SetUp();
    ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_shutdown());
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
    host_test::TearDown();
  }
};

template <class Base>
class with_locale : public Base {
 protected:
  void SetUp() override {
    Base::SetUp();
    ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
    user.reset(output_of(zvsdk_manager_user_create, "someone"));
  }
  void TearDown() override {
    user.reset();
    EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
    Base::TearDown();
  }

  user_ptr user;
};

using playlist_test = with_locale<module_test>;

#endif
