// Joined collections: what may be joined, how the parts are reached, and what works over them.
#include <algorithm>

#include "tests/collections/collection_fixture.h"
#include "tests/common/results_text.h"

namespace {

class joins : public collection_test {
 protected:
  void SetUp() override {
    collection_test::SetUp();
    for (const char* name : {"Rock", "rock", "jazz"})
      made.emplace_back(output_of(zvsdk_playlist_collection_create, name));
  }
  void TearDown() override {
    made.clear();
    collection_test::TearDown();
  }

  static texts joined(playlist_collection* of) {
    texts names;
    playlist_collection* each = nullptr;
    while (zvsdk_playlist_collection_join_enum(of, static_cast<uint32_t>(names.size()), &each) == 0)
      names.push_back(output_of(zvsdk_playlist_collection_get_name, collection_ptr(each).get()));
    EXPECT_EQ(names.size(), output_of(zvsdk_playlist_collection_join_count, of));
    return names;
  }
  static void join(playlist_collection* to, const collection_ptr& from) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_join(to, from.get()));
  }
  static void refused(playlist_collection* to, playlist_collection* from, const char* name) {
    EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_collection_join(to, from));
    EXPECT_EQ("Destination collection already has collection named " + std::string(name) + " .",
              output_of(zvsdk_manager_errorinfo_get_message).message);
    EXPECT_STREQ("", last_error().message);
  }
  static void add_track(playlist_collection* to, const char* ident, const char* artist,
                        uint32_t tempo) {
    const zdo_ptr track = make_track(ident, {.artists = {artist}, .tempo = tempo});
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(to, ident, track.get()));
  }
  std::string generate(const std::string& rest) {
    const results_ptr results(output_of(zvsdk_playlist_generate_playlist, nullptr,
                                        ("GENERATE PLAYLIST " + rest).c_str(), collection,
                                        nullptr));
    return results_text(results.get());
  }

  std::vector<collection_ptr> made;
};

TEST_F(joins, are_flat_and_never_hold_a_name_twice) {
  EXPECT_EQ(texts{}, joined(collection));
  join(made[0].get(), made[1]);
  join(collection, made[0]);
  EXPECT_EQ((texts{"Rock", "rock"}), joined(collection));
  join(made[0].get(), made[2]);
  EXPECT_EQ((texts{"Rock", "rock"}), joined(collection)) << "a later join does not follow";

  refused(collection, collection, "main");
  refused(collection, made[1].get(), "rock");
  refused(collection, made[0].get(), "Rock");
  const collection_ptr same(output_of(zvsdk_playlist_collection_create, "rock"));
  refused(collection, same.get(), "rock");
  const collection_ptr outer(output_of(zvsdk_playlist_collection_create, "outer"));
  join(outer.get(), made[2]);
  refused(outer.get(), made[0].get(), "Rock");  // for its part "jazz"
  EXPECT_EQ(texts{"jazz"}, joined(outer.get()));
}

TEST_F(joins, are_reached_and_removed_by_name) {
  playlist_collection* found = nullptr;
  join(made[0].get(), made[1]);
  join(collection, made[0]);
  for (const char* name : {"Rock", "rock", "main"}) {
    collection_ptr got(output_of(zvsdk_playlist_collection_join_get, collection, name));
    EXPECT_STREQ(name, output_of(zvsdk_playlist_collection_get_name, got.get()));
  }
  EXPECT_EQ(playlist_error_not_found,
            zvsdk_playlist_collection_join_get(collection, "ROCK", &found));
  for (const uint32_t past : {2u, ~0u})
    EXPECT_EQ(playlist_warn_end_of_list,
              zvsdk_playlist_collection_join_enum(collection, past, &found));
  EXPECT_EQ(playlist_error_not_found, zvsdk_playlist_collection_join_remove(collection, "main"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "Rock"));
  EXPECT_EQ(texts{"rock"}, joined(collection)) << "what came with it stays";

  made.clear();  // the last reference is the join's
  EXPECT_EQ(texts{"rock"}, joined(collection));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "rock"));
  EXPECT_EQ(texts{}, joined(collection));
}

TEST_F(joins, check_their_arguments_in_order) {
  auto* wrong = reinterpret_cast<playlist_collection*>(manager);
  const auto refusal = [](zvsdk_status status, const char* message) {
    EXPECT_TRUE(zvsdk_is_error(status));
    EXPECT_STREQ(message, last_error().message);
    return last_error().source == playlist_error_invalid_arg;
  };
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join(nullptr, wrong), ""));
  EXPECT_FALSE(refusal(zvsdk_playlist_collection_join(wrong, nullptr), ""));
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join(collection, nullptr), ""));
  EXPECT_FALSE(refusal(zvsdk_playlist_collection_join(collection, wrong), ""));
  EXPECT_FALSE(refusal(zvsdk_playlist_collection_join_count(wrong, nullptr), ""));
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join_count(collection, nullptr),
                      "Parameter p_count cannot be null."));
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join_enum(collection, 0, nullptr),
                      "Parameter p_joined_collection cannot be null."));
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join_get(collection, "", nullptr),
                      "Parameter p_joined_collection cannot be null."));
  playlist_collection* found = nullptr;
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join_get(collection, "", &found),
                      "Parameter collection_name cannot be null or empty."));
  EXPECT_TRUE(refusal(zvsdk_playlist_collection_join_remove(collection, nullptr),
                      "Parameter collection_name cannot be null or empty."));
}

// An artist of two collections is two groups of a PER limit, a tempo is one.
TEST_F(joins, are_generated_from_like_one_collection) {
  join(collection, made[0]);
  for (const char* ident : {"a1", "a2", "a3"}) add_track(collection, ident, "Abba", 100);
  for (const char* ident : {"b1", "a1", "b3"}) add_track(made[0].get(), ident, "Abba", 120);
  add_track(made[0].get(), "b4", "Other", 100);
  EXPECT_EQ((texts{"a1", "a2", "a3", "b1", "a1", "b3", "b4"}), idents());
  EXPECT_EQ("a1:1000 b3:1000 b1:1000", generate("WHERE ZV_Tempo = 120"));
  const std::string per_artist = generate("LIMIT 1 PER ZV_ArtistName, 10 RESULTS");
  const std::string per_tempo = generate("LIMIT 1 PER ZV_Tempo, 10 RESULTS");
  EXPECT_EQ(2, std::ranges::count(per_artist, ' ')) << per_artist;
  EXPECT_EQ(1, std::ranges::count(per_tempo, ' ')) << per_tempo;

  const results_ptr results(output_of(zvsdk_playlist_generate_playlist, nullptr,
                                      "GENERATE PLAYLIST WHERE ZV_ArtistName = \"Other\"",
                                      collection, nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "Rock"));
  made.clear();  // the results keep it
  const char *ident = nullptr, *name = nullptr;
  EXPECT_EQ(0u, zvsdk_playlist_results_enum(results.get(), 0, &ident, &name));
  EXPECT_STREQ("b4", ident);
  EXPECT_STREQ("Rock", name);
}

}  // namespace
