// Joined collections: what may be joined, how its members are reached, and who keeps them.
#include <set>

#include "tests/collections/collection_fixture.h"
#include "tests/common/use_collection.h"

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
  EXPECT_EQ(playlist_warn_end_of_list,
            zvsdk_playlist_collection_join_enum(collection, ~0u, &found));
  EXPECT_EQ(playlist_error_not_found, zvsdk_playlist_collection_join_remove(collection, "main"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "Rock"));
  EXPECT_EQ(texts{"rock"}, joined(collection)) << "what came with it stays";

  made.clear();  // the last reference is the join's
  EXPECT_EQ(texts{"rock"}, joined(collection));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "rock"));
  EXPECT_EQ(texts{}, joined(collection));
}

// A text groups the media of each collection by themselves, an integer those of all.
TEST_F(joins, are_listed_and_limited_as_one) {
  for (const auto& [ident, value] : {std::pair("a", "x"), {"b", "x"}, {"c", "#7"}})
    add(ident, {value});
  const collection_ptr twin(deserialized(serialized(collection)));
  EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(twin.get(), "twin"));
  join(collection, twin);
  EXPECT_EQ((texts{"a", "b", "c", "a", "b", "c"}), idents());

  const results_ptr results(output_of(zvsdk_playlist_generate_playlist, nullptr,
                                      "GENERATE PLAYLIST LIMIT 1 PER test_values", collection,
                                      nullptr));
  std::multiset<std::string> groups;
  const char *ident = nullptr, *name = nullptr;
  for (uint32_t i = 0; zvsdk_playlist_results_enum(results.get(), i, &ident, &name) == 0; ++i)
    groups.insert(ident == std::string("c") ? "#7" : name);
  EXPECT_EQ((std::multiset<std::string>{"#7", "main", "twin"}), groups);
}

TEST_F(joins, outlive_their_end_in_results) {
  join(collection, made[0]);
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(made[0].get(), "a"));
  const results_ptr results(output_of(zvsdk_playlist_generate_playlist, nullptr,
                                      "GENERATE PLAYLIST", collection, nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection, "Rock"));
  made.clear();
  const char *ident = nullptr, *name = nullptr;
  EXPECT_EQ(0u, zvsdk_playlist_results_enum(results.get(), 0, &ident, &name));
  EXPECT_STREQ("a", ident);
  EXPECT_STREQ("Rock", name);
}

}  // namespace
