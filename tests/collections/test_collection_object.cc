// The collection as an object: its arguments, its name, its life and what it starts with.
#include "tests/collections/collection_fixture.h"

namespace {

using collection_object = collection_test;

// Who refuses tells which check came first: this module its arguments, the host a handle.
TEST_F(collection_object, refuses_bad_arguments_in_their_order) {
  auto* wrong = reinterpret_cast<playlist_collection*>(manager);
  auto* wrong_object = reinterpret_cast<zvsdk_zdo*>(collection);
  auto* wrong_element = reinterpret_cast<zvsdk_list_element*>(collection);
  const char* text = nullptr;
  const auto refused = [](zvsdk_status status, bool by_host) {
    EXPECT_TRUE(zvsdk_is_error(status));
    EXPECT_EQ(by_host, last_error().source != playlist_error_invalid_arg) << last_error().function;
  };
  refused(zvsdk_playlist_collection_create("", nullptr), false);
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(nullptr));
  EXPECT_STREQ("zvsdk_playlist_collection_create", last_error().function) << "nothing recorded";
  refused(zvsdk_playlist_collection_release(wrong), true);
  refused(zvsdk_playlist_collection_get_name(wrong, nullptr), false);
  refused(zvsdk_playlist_collection_get_name(nullptr, &text), false);
  refused(zvsdk_playlist_collection_update_name(wrong, ""), false);
  refused(zvsdk_playlist_collection_add_ident(wrong, ""), false);
  refused(zvsdk_playlist_collection_add_zdo(wrong, "a", nullptr), true);
  refused(zvsdk_playlist_collection_add_zdo(collection, "a", nullptr), false);
  refused(zvsdk_playlist_collection_add_zdo(collection, "a", wrong_object), true);
  refused(zvsdk_playlist_collection_add_list_element(collection, "a", wrong_element), true);
  refused(zvsdk_playlist_collection_ident_count(wrong, nullptr), true);
  refused(zvsdk_playlist_collection_ident_enum(collection, 0, nullptr, &text), false);
  refused(zvsdk_playlist_collection_ident_find(wrong, "", 0, nullptr, nullptr), true);
  refused(zvsdk_playlist_collection_ident_find(collection, "a\xF0", 0, nullptr, nullptr), false);
  refused(zvsdk_playlist_collection_ident_remove(wrong, ""), false);
  EXPECT_TRUE(idents().empty());
}

TEST_F(collection_object, is_renamed_and_lives_until_its_last_reference_goes) {
  const char* text = nullptr;
  for (const char* name : {"other", "other", "l\xC3\xA4nger"}) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(collection, name));
    EXPECT_EQ(0u, zvsdk_playlist_collection_get_name(collection, &text));
    EXPECT_STREQ(name, text);
  }
  playlist_collection* other = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("other", &other));
  EXPECT_EQ(0u, playlist_collection_addref(other));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(other, "still here"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
  EXPECT_TRUE(zvsdk_is_error(zvsdk_playlist_collection_add_ident(other, "gone")));
}

TEST_F(collection_object, starts_with_its_options_and_all_attributes_but_those_that_fail) {
  const char* text = nullptr;
  for (const auto& [key, value] : {std::pair{ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "25"},
                                   {ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "2"},
                                   {ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "1"},
                                   {ZVSDK_PLAYLIST_OPTION_RANDOM, "0"}}) {
    EXPECT_EQ(0u, zcsl_stringmap_value_find_ex(collection->options, key, 0, &text));
    EXPECT_STREQ(value, text);
  }
  playlist_attribute failing = test_attribute(), last = test_attribute();
  failing.attribute_name = [](const char**) { return zvsdk_status{0x900D0042}; };
  playlist_collection* other = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&failing));
  EXPECT_EQ(0x90890042u, zvsdk_playlist_collection_create("the last one fails", &other));
  EXPECT_EQ(nullptr, other);
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&last));
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("another one fails", &other));
  EXPECT_EQ(0u, playlist_collection_get_attrinfo(other, "test_values", nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
}

}  // namespace
