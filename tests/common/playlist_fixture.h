/*
 * module_fixture.h: what tests of the playlist library start from: the embedded host with an
 * English locale, the started module, and owners and one-line makers of data objects.
 */
#ifndef PLAYLIST_FIXTURE_H
#define PLAYLIST_FIXTURE_H

#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

#include "tests/module/module_fixture.h"

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

/* The started module, with the lists that attributes need. */
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
