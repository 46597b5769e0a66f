// Every allocation of a whole life of the module fails once, first alone and then with all that
// follow: start, collection, media with data, generation, results, release, stop. Each call must
// end with a proper status, what was made must be sound or absent, nothing may be lost, and the
// module must work again at once.
#include <gtest/gtest.h>

#include <array>
#include <set>
#include <string>
#include <vector>

#include "tests/torture/failing_memory.h"
#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

namespace {

constexpr char s_statement[] =
    "GENERATE PLAYLIST WHERE ZV_Tempo > 90 AND (ZV_ArtistName CONTAINS \"b\" OR "
    "ZV_TrackName LIKE \"Track 4\") ORDER RAND(100, 7) LIMIT 2 PER ZV_ArtistName, 3 RESULTS";
constexpr uint32_t s_track_count = 20;

// What one life came to. Only plain fields are written while memory is short, as the test's own
// bookkeeping must not allocate then.
struct life {
  zvsdk_status initialize = 0;
  zvsdk_status create = 0;
  std::array<zvsdk_status, s_track_count> add = {};
  zvsdk_status generate = 0;
  zvsdk_status enumerate = 0;
  zvsdk_status release_results = 0;
  zvsdk_status release_collection = 0;
  zvsdk_status shutdown = 0;
  zvsdk_error_info init_error = {};
  uint32_t registered_attributes = 0;
  uint32_t carried_attributes = 0;
  uint32_t ident_count = 0;
  uint32_t result_count = 0;
  std::array<const char*, s_track_count> results = {};
};

class torture : public ::testing::TestWithParam<memory_failure> {
 protected:
  static void SetUpTestSuite() { memory_install(); }

  void SetUp() override {
    ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager));
    ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
    for (uint32_t i = 0; i < s_track_count; ++i) make_track(i);
    live_a_life();  // what the host keeps after first use is made here
    blocks_before = memory_live_blocks();
  }
  void TearDown() override {
    for (zvsdk_zdo* object : objects) EXPECT_EQ(0u, zvsdk_manager_zdo_release(object));
    EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_MUSIC));
    EXPECT_EQ(0u, zvsdk_manager_release(manager));
  }

  void make_track(uint32_t i) {
    idents.push_back("ident-" + std::to_string(i));
    const std::string title = "Track " + std::to_string(i);
    const std::string artist = "The Band " + std::to_string(i % 5);
    const char* artists[] = {artist.c_str(), "Guest"};
    zvsdk_track_description track = {};
    track.size = sizeof(track);
    track.ident = idents.back().c_str();
    track.title = title.c_str();
    track.artists = artists;
    track.artist_count = 2;
    track.album = "Album";
    track.tempo = 80 + i * 5;
    objects.push_back(nullptr);
    ASSERT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &objects.back()));
  }

  void live(life& seen) {
    seen.initialize = zvsdk_playlist_initialize(manager);
    zvsdk_manager_errorinfo_get(&seen.init_error);
    if (seen.initialize != 0) return;
    zvsdk_playlist_attributes_count(&seen.registered_attributes);
    playlist_collection* collection = nullptr;
    seen.create = zvsdk_playlist_collection_create("torture", &collection);
    if (seen.create == 0) use(collection, seen);
    seen.release_collection = zvsdk_playlist_collection_release(collection);
    seen.shutdown = zvsdk_playlist_shutdown();
  }

  void use(playlist_collection* collection, life& seen) {
    zvsdk_playlist_collection_attributes_count(collection, &seen.carried_attributes);
    for (uint32_t i = 0; i < s_track_count; ++i)
      seen.add[i] = zvsdk_playlist_collection_add_zdo(collection, idents[i].c_str(), objects[i]);
    zvsdk_playlist_collection_ident_count(collection, &seen.ident_count);
    playlist_results* results = nullptr;
    seen.generate =
        zvsdk_playlist_generate_playlist(nullptr, s_statement, collection, nullptr, &results);
    if (seen.generate == 0) read(results, seen);
    seen.release_results = zvsdk_playlist_results_release(results);
  }

  // Notes which of our own idents came back, as the texts go with the collection.
  void read(playlist_results* results, life& seen) {
    seen.enumerate = zvsdk_playlist_results_count(results, &seen.result_count);
    for (uint32_t i = 0; i < seen.result_count && i < s_track_count; ++i) {
      const char* ident = nullptr;
      seen.enumerate |= zvsdk_playlist_results_enum(results, i, &ident, nullptr);
      for (const std::string& own : idents)
        if (ident != nullptr && own == ident) seen.results[i] = own.c_str();
    }
  }

  // One life with memory enough.
  void live_a_life() {
    life seen;
    live(seen);
    expect_sound(seen);
    EXPECT_EQ(0u, seen.initialize);
    EXPECT_EQ(0u, seen.create);
    EXPECT_EQ(0u, seen.generate);
    EXPECT_EQ(s_track_count, seen.ident_count);
    EXPECT_EQ(3u, seen.result_count);
    EXPECT_EQ(0u, seen.enumerate);
  }

  // The most that want of memory may do.
  void expect_sound(const life& seen) {
    if (seen.initialize != 0) {
      EXPECT_EQ(playlist_error_init_failed, seen.initialize);
      return;
    }
    const std::set<zvsdk_status> fine = {0, playlist_error_no_memory};
    EXPECT_TRUE(fine.contains(seen.create)) << std::hex << seen.create;
    for (const zvsdk_status status : seen.add)
      EXPECT_TRUE(fine.contains(status)) << std::hex << status;
    expect_generation(seen);
    // Giving back never needs memory.
    EXPECT_EQ(0u, seen.release_results);
    EXPECT_EQ(0u, seen.release_collection);
    EXPECT_EQ(0u, seen.shutdown);
    EXPECT_LE(seen.ident_count, s_track_count);
    EXPECT_LE(seen.carried_attributes, seen.registered_attributes);
  }

  // An attribute that could not be made is missing without a word, and a statement that names it
  // then names an unknown attribute.
  void expect_generation(const life& seen) {
    std::set<zvsdk_status> fine = {0, playlist_error_no_memory};
    if (seen.carried_attributes < attribute_count) fine.insert(playlist_error_pdl_syntax);
    EXPECT_TRUE(fine.contains(seen.generate)) << std::hex << seen.generate;
    EXPECT_LE(seen.result_count, 3u);
    std::set<std::string> different;
    for (uint32_t i = 0; i < seen.result_count; ++i)
      if (seen.results[i] != nullptr) different.insert(seen.results[i]);
    EXPECT_EQ(seen.result_count, different.size());
  }

  static constexpr uint32_t attribute_count = 4;
  zvsdk_sdkmanager* manager = nullptr;
  std::vector<std::string> idents;
  std::vector<zvsdk_zdo*> objects;
  int64_t blocks_before = 0;
};

TEST_P(torture, every_allocation_may_fail) {
  uint64_t n = 1;
  for (bool failed = true; failed && !HasFailure(); ++n) {
    life seen;
    memory_fail_at(n, GetParam());
    live(seen);
    failed = memory_restore();
    SCOPED_TRACE("allocation " + std::to_string(n));
    expect_sound(seen);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
    EXPECT_EQ(blocks_before, memory_live_blocks());
    live_a_life();
    ASSERT_LT(n, 1000000u);
  }
  EXPECT_GT(n, 200u) << "the failures must reach into the work";
  RecordProperty("allocations", std::to_string(n));
}

INSTANTIATE_TEST_SUITE_P(memory, torture,
                         ::testing::Values(memory_failure::once, memory_failure::lasting));

}  // namespace
