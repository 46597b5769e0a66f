// The collection as an object: what it carries, its arguments, its name and its life.
#include <functional>

#include "tests/collections/collection_fixture.h"

namespace {

class collection_object : public collection_test {};

TEST_F(collection_object, carries_every_registered_attribute_in_order) {
  uint32_t registered = 0;
  uint32_t carried = 0;
  ASSERT_EQ(0u, zvsdk_playlist_attributes_count(&registered));
  ASSERT_EQ(0u, zvsdk_playlist_collection_attributes_count(collection, &carried));
  EXPECT_EQ(registered, carried);
  for (uint32_t i = 0; i < registered; ++i) {
    const char* expected = nullptr;
    const char* name = nullptr;
    ASSERT_EQ(0u, zvsdk_playlist_attributes_enum(i, &expected));
    ASSERT_EQ(0u, zvsdk_playlist_collection_attributes_enum(collection, i, &name));
    EXPECT_STREQ(expected, name);
  }
  EXPECT_EQ(0u, playlist_collection_get_attrinfo(collection, "TEST_first", nullptr));
  EXPECT_EQ(3u, zvsdk_low_word(playlist_collection_get_attrinfo(collection, "absent", nullptr)));
}

TEST_F(collection_object, starts_with_the_default_options) {
  const char* const expected[][2] = {{ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "25"},
                                     {ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "2"},
                                     {ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "1"},
                                     {ZVSDK_PLAYLIST_OPTION_RANDOM, "0"}};
  for (const auto& option : expected) {
    const char* value = nullptr;
    EXPECT_EQ(0u, zcsl_stringmap_value_find_ex(collection->options, option[0], 0, &value));
    EXPECT_STREQ(option[1], value);
  }
}

// Who refuses shows in the record: this module its arguments, the host a handle.
TEST_F(collection_object, refuses_bad_arguments_in_their_order) {
  const playlist_zdo_owner object = test_object({});
  playlist_collection* none = nullptr;
  auto* wrong = reinterpret_cast<playlist_collection*>(object.get());
  auto* wrong_object = reinterpret_cast<zvsdk_zdo*>(collection);
  auto* wrong_element = reinterpret_cast<zvsdk_list_element*>(object.get());
  const char* text = nullptr;
  uint32_t number = 0;
  const struct {
    bool by_host;
    std::function<zvsdk_status()> call;
  } table[] = {
      {false, [&] { return zvsdk_playlist_collection_create(nullptr, &none); }},
      {false, [&] { return zvsdk_playlist_collection_create("", &none); }},
      {true, [&] { return zvsdk_playlist_collection_release(wrong); }},
      {false, [&] { return zvsdk_playlist_collection_get_name(wrong, nullptr); }},
      {false, [&] { return zvsdk_playlist_collection_get_name(nullptr, &text); }},
      {true, [&] { return zvsdk_playlist_collection_get_name(wrong, &text); }},
      {false, [&] { return zvsdk_playlist_collection_update_name(wrong, ""); }},
      {false, [&] { return zvsdk_playlist_collection_update_name(nullptr, "a"); }},
      {true, [&] { return zvsdk_playlist_collection_update_name(wrong, "a"); }},
      {false, [&] { return zvsdk_playlist_collection_add_ident(wrong, ""); }},
      {false, [&] { return zvsdk_playlist_collection_add_ident(nullptr, "a"); }},
      {true, [&] { return zvsdk_playlist_collection_add_ident(wrong, "a"); }},
      {true, [&] { return zvsdk_playlist_collection_add_zdo(wrong, "a", nullptr); }},
      {false, [&] { return zvsdk_playlist_collection_add_zdo(collection, "a", nullptr); }},
      {true, [&] { return zvsdk_playlist_collection_add_zdo(collection, "a", wrong_object); }},
      {false, [&] { return zvsdk_playlist_collection_add_list_element(collection, "a", nullptr); }},
      {true,
       [&] { return zvsdk_playlist_collection_add_list_element(collection, "a", wrong_element); }},
      {false, [&] { return zvsdk_playlist_collection_ident_count(nullptr, &number); }},
      {false, [&] { return zvsdk_playlist_collection_ident_count(collection, nullptr); }},
      {true, [&] { return zvsdk_playlist_collection_ident_count(wrong, nullptr); }},
      {false, [&] { return zvsdk_playlist_collection_ident_enum(collection, 0, nullptr, &text); }},
      {true, [&] { return zvsdk_playlist_collection_ident_enum(wrong, 0, nullptr, nullptr); }},
      {false,
       [&] { return zvsdk_playlist_collection_ident_find(collection, "", 0, &number, &text); }},
      {false,
       [&] {
         return zvsdk_playlist_collection_ident_find(collection, "a\xF0", 0, &number, &text);
       }},
      {true, [&] { return zvsdk_playlist_collection_ident_find(wrong, "", 0, nullptr, nullptr); }},
      {false, [&] { return zvsdk_playlist_collection_ident_remove(wrong, nullptr); }},
      {false, [&] { return zvsdk_playlist_collection_ident_remove(nullptr, "a"); }},
      {true, [&] { return zvsdk_playlist_collection_ident_remove(wrong, "a"); }},
  };
  for (const auto& row : table) {
    const long at = &row - table;
    EXPECT_TRUE(zvsdk_is_error(row.call())) << at;
    EXPECT_TRUE(zvsdk_is_error(last_error().mapped)) << at;
    EXPECT_EQ(row.by_host, last_error().source != playlist_error_invalid_arg) << at;
    EXPECT_STREQ("", last_error().message);
  }
  EXPECT_EQ(nullptr, none);
  EXPECT_EQ(nullptr, text);
  EXPECT_EQ(0u, count(collection));
}

TEST_F(collection_object, is_renamed_and_keeps_its_stored_name) {
  ASSERT_EQ(nullptr, collection->stored_name);
  for (const char* name : {"other", "other", "l\xC3\xA4nger"}) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(collection, name));
    const char* read = nullptr;
    EXPECT_EQ(0u, zvsdk_playlist_collection_get_name(collection, &read));
    EXPECT_STREQ(name, read);
    EXPECT_EQ(0u, playlist_collection_get_name_syncronized(collection, &read));
    EXPECT_STREQ(name, read);
  }
  EXPECT_EQ(nullptr, collection->stored_name);
}

TEST_F(collection_object, releasing_nothing_records_nothing) {
  ASSERT_EQ(playlist_error_invalid_arg, zvsdk_playlist_collection_create("", nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(nullptr));
  EXPECT_EQ(playlist_error_invalid_arg, last_error().mapped);
}

TEST_F(collection_object, lives_until_its_last_reference_goes) {
  playlist_collection* other = create("other");
  EXPECT_EQ(0u, playlist_collection_addref(other));
  EXPECT_EQ(playlist_error_invalid_arg, playlist_collection_addref(nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(other, "still here"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
  EXPECT_TRUE(zvsdk_is_error(zvsdk_playlist_collection_add_ident(other, "gone")));
}

zvsdk_status s_name_status;

zvsdk_status failing_name(const char** name) {
  *name = "test_failing";
  return s_name_status;
}

TEST_F(collection_object, only_the_last_attribute_can_fail_a_creation) {
  playlist_attribute failing = test_attribute<0>();
  failing.attribute_name = failing_name;
  s_name_status = 0x900D0042;
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&failing));
  playlist_collection* other = nullptr;
  EXPECT_EQ(0x90890042u, zvsdk_playlist_collection_create("last fails", &other));
  EXPECT_EQ(nullptr, other);

  playlist_attribute last = test_attribute<1>();
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&last));
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("another fails", &other));
  s_name_status = 0;
  EXPECT_NE(0u, playlist_collection_get_attrinfo(other, "test_failing", nullptr));
  EXPECT_EQ(0u, playlist_collection_get_attrinfo(other, "test_second", nullptr));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(other));
}

TEST_F(collection_object, an_entry_takes_its_attribute_by_name_or_none) {
  const struct {
    const char* name;
    bool known;
  } table[] = {{"Test_FIRST", true}, {"zv_tempo", true}, {"unheard", false}, {nullptr, false}};
  for (const auto& row : table) {
    playlist_attribute_info_owner info;
    ASSERT_EQ(0u, _playlist_attribute_info_create(row.name, info.out()));
    EXPECT_EQ(row.known, info->attribute != nullptr) << (row.name ? row.name : "none");
    EXPECT_EQ(0u, info->find_hint);
  }
}

}  // namespace
