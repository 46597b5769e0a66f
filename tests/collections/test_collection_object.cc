// The collection as an object: the arguments of its calls and what it starts with.
#include "tests/collections/collection_fixture.h"
#include "tests/common/use_collection.h"

namespace {

using collection_object = collection_test;

void by_module(zvsdk_status status, const char* message = "") {
  EXPECT_TRUE(zvsdk_is_error(status));
  EXPECT_EQ(playlist_error_invalid_arg, last_error().source) << last_error().function;
  EXPECT_STREQ(message, last_error().message) << last_error().function;
}
void by_host(zvsdk_status status) {
  EXPECT_TRUE(zvsdk_is_error(status));
  EXPECT_NE(playlist_error_invalid_arg, last_error().source) << last_error().function;
}

// Each call is wrong in one place and in all that are looked at later. Who refuses tells which
// check came first: this module its arguments, the host a handle.
TEST_F(collection_object, checks_arguments_in_their_order) {
  playlist_collection* const gone = output_of(zvsdk_playlist_collection_create, "given back");
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(gone));
  auto* wrong_object = reinterpret_cast<zvsdk_zdo*>(collection);
  auto* wrong_element = reinterpret_cast<zvsdk_list_element*>(collection);
  auto* nobody = reinterpret_cast<zvsdk_user*>(collection);
  playlist_collection* other = nullptr;
  zvsdk_zdo* object = nullptr;
  uint32_t size = 9;
  by_module(zvsdk_playlist_collection_create("", nullptr));
  by_host(zvsdk_playlist_collection_release(gone));
  by_module(zvsdk_playlist_collection_get_name(gone, nullptr));
  by_module(zvsdk_playlist_collection_update_name(gone, ""));

  by_module(zvsdk_playlist_collection_add_ident(gone, ""));
  by_host(zvsdk_playlist_collection_add_zdo(gone, "a", nullptr));
  by_module(zvsdk_playlist_collection_add_zdo(collection, "a", nullptr));
  by_host(zvsdk_playlist_collection_add_zdo(collection, "a", wrong_object));
  by_host(zvsdk_playlist_collection_add_list_element(collection, "a", wrong_element));
  EXPECT_TRUE(idents().empty());
  by_host(zvsdk_playlist_collection_ident_count(gone, nullptr));
  by_host(zvsdk_playlist_collection_ident_find(gone, "", 0, nullptr, nullptr));
  by_module(zvsdk_playlist_collection_ident_find(collection, "a\xF0", 0, nullptr, nullptr));
  by_module(zvsdk_playlist_collection_ident_remove(gone, ""));

  by_module(zvsdk_playlist_collection_sync_ident_add(gone, ""));
  by_host(zvsdk_playlist_collection_sync_ident_add(gone, "a"));
  by_host(zvsdk_playlist_collection_sync_process(gone, nullptr, nullptr));
  by_module(zvsdk_playlist_collection_sync_process(collection, nullptr, nullptr));

  by_host(zvsdk_playlist_collection_join(gone, nullptr));
  by_module(zvsdk_playlist_collection_join(collection, nullptr));
  by_host(zvsdk_playlist_collection_join_count(gone, nullptr));
  by_module(zvsdk_playlist_collection_join_count(collection, nullptr),
            "Parameter p_count cannot be null.");
  by_module(zvsdk_playlist_collection_join_get(collection, "", nullptr),
            "Parameter p_joined_collection cannot be null.");
  by_module(zvsdk_playlist_collection_join_get(collection, "", &other),
            "Parameter collection_name cannot be null or empty.");

  by_module(zvsdk_playlist_collection_get_zdo(collection, nobody, "", &object));
  by_module(zvsdk_playlist_collection_get_zdo(gone, nullptr, "a", &object));
  by_host(zvsdk_playlist_collection_get_zdo(collection, nobody, "a", &object));
  by_host(zvsdk_playlist_collection_get_zdo(gone, user.get(), "a", &object));

  by_module(zvsdk_playlist_collection_deserialize(nullptr, 9, nullptr));
  by_module(zvsdk_playlist_collection_deserialize("", 0, nullptr));
  by_module(zvsdk_playlist_collection_serialize(gone, nullptr, nullptr));
  by_host(zvsdk_playlist_collection_serialize(gone, nullptr, &size));
  by_host(zvsdk_playlist_collection_serialize_size(gone, nullptr));
}

TEST_F(collection_object, starts_with_all_attributes_but_those_that_fail) {
  playlist_attribute failing = test_attribute(), last = test_attribute();
  failing.attribute_name = [](const char**) { return zvsdk_status{0x900D0042}; };
  playlist_collection* other = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&failing));
  EXPECT_EQ(0x90890042u, zvsdk_playlist_collection_create("the last one fails", &other));
  EXPECT_EQ(nullptr, other);
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&last));
  const collection_ptr made(output_of(zvsdk_playlist_collection_create, "another one fails"));
  EXPECT_EQ(0u, playlist_collection_get_attrinfo(made.get(), "test_values", nullptr));
}

}  // namespace
