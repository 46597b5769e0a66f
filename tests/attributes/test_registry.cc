// The registry of attributes and the exported calls on it.
#include "tests/attributes/attribute_fixture.h"

namespace {

using registry = playlist_test;

zvsdk_status own_name(const char** name) {
  *name = "Own";
  return 0;
}

// A complete record of an application's own; only its name is ever asked.
playlist_attribute own_attribute() {
  playlist_attribute attribute = {};
  attribute.attribute_name = own_name;
  attribute.supported_operators = [](uint32_t, uint32_t*) { return playlist_warn_not_found; };
  attribute.collect_attribute_data = [](playlist_collect_context*,
                                        const playlist_collect_api*) -> zvsdk_status { return 0; };
  attribute.create_instance = [](playlist_attribute_instance**) -> zvsdk_status { return 0; };
  return attribute;
}

texts names() {
  texts names;
  const char* name = nullptr;
  uint32_t count = 0;
  while (zvsdk_playlist_attributes_enum(names.size(), &name) == 0) names.push_back(name);
  EXPECT_EQ(0u, zvsdk_playlist_attributes_count(&count));
  EXPECT_EQ(names.size(), count);
  return names;
}

TEST_F(registry, enumerates_in_the_fixed_order) {
  const texts expected = {"ZV_TrackName", "ZV_ArtistName", "ZV_AlbumName", "ZV_Tempo"};
  EXPECT_EQ(expected, names());
  const char* name = nullptr;
  EXPECT_EQ(playlist_warn_end_of_list, zvsdk_playlist_attributes_enum(expected.size(), &name));
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_attributes_enum(0, nullptr));
  EXPECT_EQ(playlist_error_invalid_arg, last_error().mapped);
}

TEST_F(registry, refuses_records_that_are_incomplete_or_do_not_start) {
  const auto before = names();
  void (*const omissions[])(playlist_attribute&) = {
      [](playlist_attribute& a) { a.attribute_name = nullptr; },
      [](playlist_attribute& a) { a.supported_operators = nullptr; },
      [](playlist_attribute& a) { a.collect_attribute_data = nullptr; },
      [](playlist_attribute& a) { a.create_instance = nullptr; },
  };
  for (auto omit : omissions) {
    playlist_attribute attribute = own_attribute();
    omit(attribute);
    EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_register_attribute_provider(&attribute));
  }
  playlist_attribute failing = own_attribute();
  failing.initialize = [](playlist_attribute*) -> zvsdk_status { return 0x90AB0042u; };
  EXPECT_EQ(0x90AB0042u, zvsdk_playlist_register_attribute_provider(&failing));
  EXPECT_EQ(0u, last_error().mapped);  // still that of the count: registering records nothing
  EXPECT_EQ(before, names());
}

// A collection made before carries what there was then, in the same order.
TEST_F(registry, adds_a_copy_that_is_shut_down_with_the_module) {
  playlist_collection* made = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("before", &made));
  const texts built_in = names();
  static uint32_t s_shutdowns = 0;
  playlist_attribute attribute = own_attribute();
  attribute.shutdown = [](playlist_attribute*) -> zvsdk_status { return ++s_shutdowns, 0; };
  EXPECT_EQ(0u, zvsdk_playlist_register_attribute_provider(&attribute));
  attribute = {};
  EXPECT_EQ("Own", names().back());

  texts carried;
  const char* name = nullptr;
  uint32_t count = 0;
  while (zvsdk_playlist_collection_attributes_enum(made, carried.size(), &name) == 0)
    carried.push_back(name);
  EXPECT_EQ(built_in, carried);
  EXPECT_EQ(0u, zvsdk_playlist_collection_attributes_count(made, &count));
  EXPECT_EQ(built_in.size(), count);

  EXPECT_EQ(0u, zvsdk_playlist_collection_release(made));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  EXPECT_EQ(1u, s_shutdowns);
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_attributes_count(&count));
  ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
}

}  // namespace
