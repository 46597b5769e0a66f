/*
 * playlist_fixture.h: what tests of the playlist library start from. Fixtures, each with what the
 * one before it has: a host alone (host_test), the started module (module_test), the module with an
 * English locale for the lists that attributes need (playlist_test). Beside them log lines, the
 * error record, owners of handles and one-line makers of data objects.
 */
#ifndef PLAYLIST_FIXTURE_H
#define PLAYLIST_FIXTURE_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

using texts = std::vector<std::string>;

/* What `next(index, &text)` hands out, from index 0 until it fails. */
template <class Next>
texts listed(Next next) {
  texts all;
  const char* text = nullptr;
  while (next(static_cast<uint32_t>(all.size()), &text) == 0) all.push_back(text);
  return all;
}

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

inline zvsdk_error_info last_error() {
  zvsdk_error_info info = {};
  EXPECT_EQ(0u, zvsdk_manager_errorinfo_get(&info));
  return info;
}

/* Owns a handle and gives it back through the call that releases its kind. */
template <auto Release>
struct handle_release {
  template <class Handle>
  void operator()(Handle* handle) const {
    Release(handle);
  }
};
using zdo_ptr = std::unique_ptr<zvsdk_zdo, handle_release<zvsdk_manager_zdo_release>>;
using user_ptr = std::unique_ptr<zvsdk_user, handle_release<zvsdk_manager_user_release>>;
using collection_ptr =
    std::unique_ptr<playlist_collection, handle_release<zvsdk_playlist_collection_release>>;
using results_ptr =
    std::unique_ptr<playlist_results, handle_release<zvsdk_playlist_results_release>>;

/* A data object of a context with its values and children; it takes references on the children. */
inline zdo_ptr make_object(
    const char* context, std::initializer_list<std::pair<const char*, const char*>> values = {},
    std::initializer_list<std::pair<const char*, const zdo_ptr&>> children = {}) {
  zvsdk_zdo* object = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_zdo_create(context, &object));
  for (const auto& [key, text] : values)
    EXPECT_EQ(0u, zvsdk_manager_zdo_value_add(object, key, text));
  for (const auto& [key, child] : children)
    EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(object, key, child.get()));
  return zdo_ptr(object);
}

/* What a test says of a track; expands to the full tree of a track object. */
struct track_data {
  const char* title = nullptr;
  std::vector<const char*> artists;
  const char* album = nullptr;
  uint32_t tempo = 0;
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
  zvsdk_zdo* object = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &object));
  return zdo_ptr(object);
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

class playlist_test : public module_test {
 protected:
  void SetUp() override {
    module_test::SetUp();
    ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
    module_test::TearDown();
  }
};

#endif
