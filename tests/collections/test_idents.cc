// Counting, listing and finding idents over a collection and what it joins.
#include "tests/collections/collection_fixture.h"

namespace {

// The main collection holds a and b; the joined one b, c and d.
class joined_idents : public collection_test {
 protected:
  void SetUp() override {
    collection_test::SetUp();
    playlist_collection* joined = nullptr;
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("joined", &joined));
    for (const char* ident : {"a", "b"}) zvsdk_playlist_collection_add_ident(collection, ident);
    for (const char* ident : {"b", "c", "d"}) zvsdk_playlist_collection_add_ident(joined, ident);
    ASSERT_EQ(0u, zcsl_vector_add(collection->joined, joined));  // with our reference
  }
};

TEST_F(joined_idents, are_listed_as_one_and_removed_from_one) {
  EXPECT_EQ((texts{"a", "b", "b", "c", "d"}), idents());
  const char *ident = nullptr, *name = nullptr;
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_enum(collection, 2, &ident, &name));
  EXPECT_STREQ("joined", name);
  for (const uint32_t past : {5u, ~0u})
    EXPECT_EQ(playlist_error_end_of_list,
              zvsdk_playlist_collection_ident_enum(collection, past, &ident, &name));
  EXPECT_EQ(playlist_warn_not_found, zvsdk_playlist_collection_ident_remove(collection, "c"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_remove(collection, "b"));
  EXPECT_EQ((texts{"a", "b", "c", "d"}), idents());
}

TEST_F(joined_idents, are_found_one_after_the_other) {
  const struct {
    const char* ident;
    uint32_t start;
    uint32_t index;  // 0: not found
  } rows[] = {{"a", 0, 1}, {"a", 1, 0}, {"b", 0, 2}, {"b", 1, 2}, {"b", 2, 3}, {"b", 3, 0},
              {"c", 0, 4}, {"c", 3, 4}, {"d", 4, 5}, {"d", 5, 0}, {"e", 0, 0}, {"d", ~0u, 0}};
  for (const auto& row : rows) {
    uint32_t index = 0;
    const char* name = nullptr;
    EXPECT_EQ(row.index ? 0 : playlist_warn_not_found,
              zvsdk_playlist_collection_ident_find(collection, row.ident, row.start, &index, &name))
        << row.ident << " from " << row.start;
    EXPECT_EQ(row.index, index);
    EXPECT_STREQ(!index ? nullptr : index < 3 ? "main" : "joined", name);
  }
}

}  // namespace
