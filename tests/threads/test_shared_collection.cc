// Generations, an enumeration, syncs and a writer on one collection at once. Its worth shows under
// ThreadSanitizer; in any build it checks that nobody is refused and nothing is lost.
//
// Texts that are borrowed from the collection are not read here: they hold until the next change.
#include <thread>

#include "tests/common/playlist_fixture.h"
#include "tests/common/use_collection.h"

namespace {

constexpr uint32_t s_tracks = 400;  // always there
constexpr uint32_t s_guests = 50;   // added and removed again by the writer
constexpr uint32_t s_rounds = 60;   // of each thread

template <class Body>
void repeat(Body body) {
  for (uint32_t round = 0; round < s_rounds; ++round) body(round);
}

uint32_t ident_count(playlist_collection* of) {
  return output_of(zvsdk_playlist_collection_ident_count, of);
}

class shared_collection : public playlist_test {
 protected:
  void SetUp() override {
    playlist_test::SetUp();
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("shared", &collection));
    for (uint32_t i = 0; i < s_tracks; ++i) add(i, collection);
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    playlist_test::TearDown();
  }

  static void add(uint32_t i, playlist_collection* into) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(into, numbered_ident(i).c_str(),
                                                    make_numbered_track(i).get()));
  }

  static void generate(const char* statement, playlist_collection* from, uint32_t least) {
    repeat([&](uint32_t) {
      const results_ptr results(
          output_of(zvsdk_playlist_generate_playlist, nullptr, statement, from, nullptr));
      EXPECT_LE(least, output_of(zvsdk_playlist_results_count, results.get()));
      EXPECT_LE(least, ident_count(from));
      zvsdk_playlist_collection_ident_find(from, numbered_ident(s_tracks).c_str(), 0, nullptr,
                                           nullptr);
    });
  }

  // Each object is this thread's own; all of them make the map of keys at first use.
  void read_back() {
    repeat([&](uint32_t round) {
      const char *key = nullptr, *text = nullptr;
      const zdo_ptr object(output_of(zvsdk_playlist_collection_get_zdo, collection, user.get(),
                                     numbered_ident(round).c_str()));
      EXPECT_EQ(0u, zvsdk_manager_zdo_render(object.get(), 0, &key, &text));
      EXPECT_EQ(numbered_ident(round), text);
      const results_ptr likes(
          output_of(zvsdk_playlist_generate_morelikethis, user.get(), collection, object.get()));
    });
  }

  void enumerate() {
    repeat([&](uint32_t round) {
      const char* borrowed = nullptr;
      uint32_t index = 0;
      EXPECT_LE(s_tracks, ident_count(collection));
      for (uint32_t i = 0; i < s_tracks; ++i)
        EXPECT_EQ(0u, zvsdk_playlist_collection_ident_enum(collection, i, &borrowed, nullptr));
      EXPECT_EQ(0u, zvsdk_playlist_collection_ident_find(collection, numbered_ident(round).c_str(),
                                                         0, &index, nullptr));
      EXPECT_EQ(round + 1, index);
    });
  }

  void announce() {
    repeat([&](uint32_t round) {
      for (uint32_t i = round; i < s_tracks; ++i)
        EXPECT_EQ(0u,
                  zvsdk_playlist_collection_sync_ident_add(collection, numbered_ident(i).c_str()));
    });
  }

  // There may be nothing to do, and a guest that is told may go before its turn.
  void sync() {
    const auto read = [](void*, playlist_collection*, const char* ident, uint32_t, uint8_t* abort) {
      *abort = std::string(ident) == numbered_ident(s_rounds);
      return zvsdk_status{0};
    };
    repeat([&](uint32_t) {
      const zvsdk_status status = zvsdk_playlist_collection_sync_process(collection, read, nullptr);
      EXPECT_TRUE(status == 0 || status == playlist_error_bad_state ||
                  status == playlist_warn_not_found || status == playlist_warn_aborted);
    });
  }

  void write() {
    repeat([&](uint32_t round) {
      const uint32_t guest = s_tracks + round % s_guests;
      add(guest, collection);
      add(round, collection);  // merges
      if (round % 2 == 0) {
        EXPECT_EQ(
            0u, zvsdk_playlist_collection_ident_remove(collection, numbered_ident(guest).c_str()));
      }
      EXPECT_EQ(0u,
                zvsdk_playlist_collection_update_name(collection, numbered_ident(round).c_str()));
    });
  }

  playlist_collection* collection = nullptr;
};

TEST_F(shared_collection, serves_readers_and_a_writer_at_once) {
  {
    const std::jthread threads[] = {
        std::jthread(generate,
                     "GENERATE PLAYLIST WHERE ZV_Tempo > 80 AND ZV_Tempo < 150 "
                     "ORDER RAND(100, 7) LIMIT 2 PER ZV_ArtistName, 25 RESULTS",
                     collection, 1),
        std::jthread(generate,
                     "GENERATE PLAYLIST WHERE ZV_ArtistName = \"The Band 3\" OR "
                     "ZV_TrackName CONTAINS \"Track 1\" ORDER ZV_Mood LIKE \"Furious\" + "
                     "ZV_Genre LIKE \"Rock\" + ZV_Era LIKE 1980 + ZV_Origin LIKE \"Africa\" + "
                     "ZV_ArtistType LIKE \"Person\" LIMIT 100 RESULTS",
                     collection, 1),
        std::jthread([&] { enumerate(); }),
        std::jthread([&] { write(); }),
        std::jthread([&] { announce(); }),
        std::jthread([&] { sync(); }),
        std::jthread([&] { sync(); }),
        std::jthread([&] { read_back(); }),
        std::jthread([&] { read_back(); }),
    };
  }
  EXPECT_EQ(s_tracks + s_guests / 2, ident_count(collection)) << "every other guest was removed";
}

// What is joined is changed and joined elsewhere while the whole is generated from, counted,
// searched and written; and collections join one another in a ring, which no order of locks allows.
TEST_F(shared_collection, is_joined_written_and_read_back_beside_writers) {
  const collection_ptr second(output_of(zvsdk_playlist_collection_create, "second"));
  const collection_ptr third(output_of(zvsdk_playlist_collection_create, "third"));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(collection, second.get()));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(second.get(), third.get()));
  ASSERT_EQ(0u, zvsdk_playlist_collection_join(third.get(), collection));
  const auto copy = [&] {
    repeat([&](uint32_t) {
      const collection_ptr made(deserialized(serialized(collection)));
      EXPECT_LE(s_tracks, ident_count(made.get()));
    });
  };
  const auto rejoin = [&](uint32_t round) {
    EXPECT_EQ(0u,
              zvsdk_playlist_collection_update_name(second.get(), numbered_ident(round).c_str()));
    const char* name = output_of(zvsdk_playlist_collection_get_name, second.get());
    EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, name));
    EXPECT_EQ(0u, zvsdk_playlist_collection_join(collection, second.get()));
    EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "third"));
    const collection_ptr got(output_of(zvsdk_playlist_collection_join_get, collection, name));
  };
  {
    std::vector<std::jthread> threads;
    for (playlist_collection* each : {collection, second.get(), third.get()}) {
      threads.emplace_back(
          generate, "GENERATE PLAYLIST WHERE ZV_Tempo > 80 LIMIT 1 PER ZV_ArtistName", each, 0);
      threads.emplace_back(
          [each] { repeat([&](uint32_t round) { add(s_tracks + round, each); }); });
    }
    threads.emplace_back(copy);
    threads.emplace_back(copy);
    repeat(rejoin);
  }
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(third.get(), "shared"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(second.get(), "third"));
}

TEST_F(shared_collection, lets_threads_start_and_stop_the_module_beside_each_other) {
  {
    const auto cycle = [&](uint32_t) {
      EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
      EXPECT_LT(1u, zvsdk_playlist_initchecks());
      EXPECT_EQ(0u, zvsdk_playlist_shutdown());
    };
    const std::jthread beside([&] { repeat(cycle); });
    repeat(cycle);
  }
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
}

// Whoever waits for the module to be up may call it at once.
TEST_F(host_test, starts_a_module_that_is_seen_whole_by_a_thread_that_waits_for_it) {
  repeat([&](uint32_t) {
    {
      const std::jthread waiting([] {
        while (zvsdk_playlist_initchecks() == 0) std::this_thread::yield();
        EXPECT_EQ(9u, output_of(zvsdk_playlist_attributes_count));
      });
      ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
    }
    EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  });
}

}  // namespace
