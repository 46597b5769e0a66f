// Joined collections: what may be joined, how its members and their media are
// reached, and who keeps them.
#include "tests/collections/collection_fixture.h"

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
  // The main collection holds a and b; the one that is joined b, c and d.
  void join_idents() {
    for (const char* ident : {"a", "b"}) zvsdk_playlist_collection_add_ident(collection, ident);
    for (const char* ident : {"b", "c", "d"})
      zvsdk_playlist_collection_add_ident(made[0].get(), ident);
    join(collection, made[0]);
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

TEST_F(joins, are_listed_as_one_and_removed_from_one) {
  join_idents();
  EXPECT_EQ((texts{"a", "b", "b", "c", "d"}), idents());
  const char *ident = nullptr, *name = nullptr;
  for (const uint32_t past : {5u, ~0u})
    EXPECT_EQ(playlist_error_end_of_list,
              zvsdk_playlist_collection_ident_enum(collection, past, &ident, &name));
  EXPECT_EQ(playlist_warn_not_found, zvsdk_playlist_collection_ident_remove(collection, "c"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_remove(collection, "b"));
  EXPECT_EQ((texts{"a", "b", "c", "d"}), idents());
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_enum(collection, 1, &ident, &name));
  EXPECT_STREQ("Rock", name);
}

TEST_F(joins, are_searched_one_after_the_other) {
  const struct {
    const char* ident;
    uint32_t start;
    uint32_t index;  // 0: not found
  } rows[] = {{"a", 0, 1}, {"a", 1, 0}, {"b", 0, 2}, {"b", 1, 2}, {"b", 2, 3}, {"b", 3, 0},
              {"c", 0, 4}, {"c", 3, 4}, {"d", 4, 5}, {"d", 5, 0}, {"e", 0, 0}, {"d", ~0u, 0}};
  join_idents();
  for (const auto& row : rows) {
    uint32_t index = 0;
    const char* name = nullptr;
    EXPECT_EQ(row.index ? 0 : playlist_warn_not_found,
              zvsdk_playlist_collection_ident_find(collection, row.ident, row.start, &index, &name))
        << row.ident << " from " << row.start;
    EXPECT_EQ(row.index, index);
    EXPECT_STREQ(!index ? nullptr : index < 3 ? "main" : "Rock", name);
  }
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
