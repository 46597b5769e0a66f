// Generations, an enumeration and a writer on one collection at once. Its worth shows under
// ThreadSanitizer; in any build it checks that nobody is refused and nothing is lost.
//
// Texts that are borrowed from the collection are not read here: they hold until the next change.
#include <atomic>
#include <thread>

#include "tests/common/playlist_fixture.h"
#include "tests/common/use_collection.h"

namespace {

constexpr uint32_t s_tracks = 400;  // always there
constexpr uint32_t s_guests = 50;   // added and removed again by the writer
constexpr uint32_t s_rounds = 60;   // of each thread

class shared_collection : public playlist_test {
 protected:
  void SetUp() override {
    playlist_test::SetUp();
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("shared", &collection));
    for (uint32_t i = 0; i < s_tracks; ++i) ASSERT_EQ(0u, add(i));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    playlist_test::TearDown();
  }

  static std::string ident(uint32_t i) { return "track-" + std::to_string(i); }

  zvsdk_status add(uint32_t i) { return add(i, collection); }
  static zvsdk_status add(uint32_t i, playlist_collection* into) {
    const std::string name = ident(i);
    const std::string artist = "Artist " + std::to_string(i % 17);
    const zdo_ptr object =
        make_track(name.c_str(), {.title = name.c_str(),
                                  .artists = {artist.c_str()},
                                  .tempo = 60 + i % 120,
                                  .year = 1950 + i % 70,
                                  .genre = i % 2 == 0 ? "Rock" : "Europop",
                                  .mood = i % 3 == 0 ? "40101:60,40102:40" : "Furious",
                                  .origin = "Algeria",
                                  .artist_type = "Vocalist"});
    return zvsdk_playlist_collection_add_zdo(into, name.c_str(), object.get());
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
          "ZV_TrackName CONTAINS \"track-1\" ORDER ZV_Mood LIKE \"Furious\" + "
          "ZV_Genre LIKE \"Rock\" + ZV_Era LIKE 1980 + ZV_Origin LIKE \"Africa\" + "
          "ZV_ArtistType LIKE \"Person\" LIMIT 100 RESULTS");
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

// What is joined is changed and joined elsewhere while the whole is generated from, counted,
// searched and written; and collections join one another in a ring, which no order of locks allows.
TEST_F(shared_collection, is_joined_written_and_read_back_beside_writers) {
  playlist_collection* const own = collection;
  const collection_ptr second(output_of(zvsdk_playlist_collection_create, "second"));
  const collection_ptr third(output_of(zvsdk_playlist_collection_create, "third"));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(own, second.get()));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(second.get(), third.get()));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(third.get(), own));
  const auto read = [&](playlist_collection* from) {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      playlist_results* results = nullptr;
      note(zvsdk_playlist_generate_playlist(
               nullptr, "GENERATE PLAYLIST WHERE ZV_Tempo > 80 LIMIT 1 PER ZV_ArtistName", from,
               nullptr, &results) == 0);
      note(zvsdk_playlist_results_release(results) == 0);
      uint32_t count = 0;
      note(zvsdk_playlist_collection_ident_count(from, &count) == 0);
      zvsdk_playlist_collection_ident_find(from, ident(s_tracks).c_str(), 0, nullptr, nullptr);
    }
  };
  const auto copy = [&] {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      playlist_collection* read_back = deserialized(serialized(own));
      uint32_t count = 0;
      note(zvsdk_playlist_collection_ident_count(read_back, &count) == 0 && count >= s_tracks);
      note(zvsdk_playlist_collection_release(read_back) == 0);
    }
  };
  const auto rejoin = [&] {
    for (uint32_t round = 0; round < s_rounds; ++round) {
      const char* name = nullptr;
      note(zvsdk_playlist_collection_update_name(second.get(), ident(round).c_str()) == 0);
      note(zvsdk_playlist_collection_get_name(second.get(), &name) == 0);
      note(zvsdk_playlist_collection_join_remove(own, name) == 0);
      note(zvsdk_playlist_collection_join(own, second.get()) == 0);
      note(zvsdk_playlist_collection_join_remove(own, "third") == 0);
      playlist_collection* got = nullptr;
      note(zvsdk_playlist_collection_join_get(own, name, &got) == 0);
      note(zvsdk_playlist_collection_release(got) == 0);
    }
  };
  const auto change = [&](playlist_collection* into) {
    for (uint32_t i = 0; i < s_rounds; ++i) note(add(s_tracks + i, into) == 0);
  };
  {
    const std::jthread readers[] = {std::jthread(read, own), std::jthread(read, second.get()),
                                    std::jthread(read, third.get()), std::jthread(copy),
                                    std::jthread(copy)};
    const std::jthread writers[] = {std::jthread(change, own), std::jthread(change, second.get()),
                                    std::jthread(change, third.get())};
    rejoin();
  }
  EXPECT_EQ(0u, faults.load());
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(third.get(), "shared"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(second.get(), "third"));
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
