// Generations, an enumeration and a writer on one collection at once. Its worth shows under
// ThreadSanitizer; in any build it checks that nobody is refused and nothing is lost.
//
// Texts that are borrowed from the collection are not read here: they hold until the next change.
#include <atomic>
#include <thread>

#include "tests/common/playlist_fixture.h"

namespace {

constexpr uint32_t s_tracks = 400;  // always there
constexpr uint32_t s_guests = 50;   // added and removed again by the writer
constexpr uint32_t s_rounds = 60;   // of each thread

class shared_collection : public playlist_test {
 protected:
  void SetUp() override {
    playlist_test::SetUp();
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("shared", &collection));
    user.reset(output_of(zvsdk_manager_user_create, "someone"));
    for (uint32_t i = 0; i < s_tracks; ++i) ASSERT_EQ(0u, add(i));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    user.reset();
    playlist_test::TearDown();
  }

  static std::string ident(uint32_t i) { return "track-" + std::to_string(i); }

  zvsdk_status add(uint32_t i) {
    const std::string name = ident(i);
    const std::string artist = "Artist " + std::to_string(i % 17);
    const zdo_ptr object = make_track(
        name.c_str(), {.title = name.c_str(), .artists = {artist.c_str()}, .tempo = 60 + i % 120});
    return zvsdk_playlist_collection_add_zdo(collection, name.c_str(), object.get());
  }

  void note(bool holds) {
    if (!holds) ++faults;
  }

  void generate(const char* statement) {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      playlist_results* results = nullptr;
      uint32_t count = 0;
      note(zvsdk_playlist_generate_playlist(nullptr, statement, collection, nullptr, &results) ==
           0);
      note(zvsdk_playlist_results_count(results, &count) == 0 && count > 0);
      note(zvsdk_playlist_results_release(results) == 0);
    }
  }

  // Each object is this thread's own; all of them make the map of keys at first use.
  void read_back() {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      zvsdk_zdo* object = nullptr;
      playlist_results* results = nullptr;
      const char* key = nullptr;
      const char* text = nullptr;
      note(zvsdk_playlist_collection_get_zdo(collection, user.get(), ident(round).c_str(),
                                             &object) == 0);
      note(zvsdk_manager_zdo_render(object, 0, &key, &text) == 0 && text == ident(round));
      note(zvsdk_playlist_generate_morelikethis(user.get(), collection, object, &results) == 0);
      note(zvsdk_playlist_results_release(results) == 0);
      note(zvsdk_manager_zdo_release(object) == 0);
    }
  }

  void enumerate() {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      uint32_t count = 0;
      uint32_t index = 0;
      const char* borrowed = nullptr;
      note(zvsdk_playlist_collection_ident_count(collection, &count) == 0 && count >= s_tracks);
      for (uint32_t i = 0; i < s_tracks; ++i)
        note(zvsdk_playlist_collection_ident_enum(collection, i, &borrowed, nullptr) == 0);
      note(zvsdk_playlist_collection_ident_find(collection, ident(round).c_str(), 0, &index,
                                                nullptr) == 0);
      note(index == round + 1);
      note(zvsdk_playlist_collection_attributes_enum(collection, round % 4, &borrowed) == 0);
    }
  }

  void write() {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      const uint32_t guest = s_tracks + round % s_guests;
      note(add(guest) == 0);
      note(add(round) == 0);  // merges
      if (round % 2 == 0)
        note(zvsdk_playlist_collection_ident_remove(collection, ident(guest).c_str()) == 0);
      note(zvsdk_playlist_collection_update_name(collection, ident(round).c_str()) == 0);
    }
  }

  playlist_collection* collection = nullptr;
  user_ptr user;
  std::atomic<uint32_t> faults = 0;
};

TEST_F(shared_collection, serves_readers_and_a_writer_at_once) {
  {
    const std::jthread first([&] {
      generate(
          "GENERATE PLAYLIST WHERE ZV_Tempo > 80 AND ZV_Tempo < 150 "
          "ORDER RAND(100, 7) LIMIT 2 PER ZV_ArtistName, 25 RESULTS");
    });
    const std::jthread second([&] {
      generate(
          "GENERATE PLAYLIST WHERE ZV_ArtistName = \"Artist 3\" OR "
          "ZV_TrackName CONTAINS \"track-1\" LIMIT 100 RESULTS");
    });
    const std::jthread third([&] { enumerate(); });
    const std::jthread fourth([&] { write(); });
    const std::jthread fifth([&] { read_back(); });
    const std::jthread sixth([&] { read_back(); });
  }
  EXPECT_EQ(0u, faults.load());
  for (uint32_t i = 0; i < s_tracks; ++i)
    EXPECT_EQ(0u, zvsdk_playlist_collection_ident_find(collection, ident(i).c_str(), 0, nullptr,
                                                       nullptr));
  uint32_t count = 0;
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_count(collection, &count));
  EXPECT_GT(count, s_tracks);
  EXPECT_LE(count, s_tracks + s_guests);
}

TEST_F(shared_collection, lets_threads_start_and_stop_the_module_beside_each_other) {
  const auto cycle = [&] {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      note(zvsdk_playlist_initialize(manager) == 0);
      note(zvsdk_playlist_initchecks() > 1);
      note(zvsdk_playlist_shutdown() == 0);
    }
  };
  {
    const std::jthread first(cycle);
    const std::jthread second(cycle);
  }
  EXPECT_EQ(0u, faults.load());
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
}

// Whoever waits for the module to be up may call it at once.
TEST(module_start, is_seen_whole_by_a_thread_that_waits_for_it) {
  for (uint32_t round = 0; round < s_rounds; ++round) {
    zvsdk_sdkmanager* manager = nullptr;
    ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager));
    {
      const std::jthread waiting([] {
        uint32_t count = 0;
        while (zvsdk_playlist_initchecks() == 0) std::this_thread::yield();
        EXPECT_EQ(0u, zvsdk_playlist_attributes_count(&count));
        EXPECT_EQ(9u, count);
      });
      ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
    }
    EXPECT_EQ(0u, zvsdk_playlist_shutdown());
    EXPECT_EQ(0u, zvsdk_manager_release(manager));
  }
}

}  // namespace
