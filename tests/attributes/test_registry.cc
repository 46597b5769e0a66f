// The registry of attributes and the exported calls on it.
#include "tests/attributes/attribute_fixture.h"
#include "tests/common/test_attribute.h"

namespace {

using registry = playlist_test;

const texts s_built_in = {"ZV_TrackName", "ZV_ArtistName", "ZV_AlbumName",  "ZV_Genre", "ZV_Mood",
                          "ZV_Origin",    "ZV_Era",        "ZV_ArtistType", "ZV_Tempo"};

TEST_F(registry, enumerates_in_the_fixed_order) {
  EXPECT_EQ(s_built_in, listed(zvsdk_playlist_attributes_enum));
  const char* name = nullptr;
  EXPECT_EQ(playlist_warn_end_of_list,
            zvsdk_playlist_attributes_enum(static_cast<uint32_t>(s_built_in.size()), &name));
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_attributes_enum(0, nullptr));
}

TEST_F(registry, refuses_records_that_are_incomplete_or_do_not_start) {
  const struct {
    void (*spoil)(playlist_attribute&);
    zvsdk_status status;
  } rows[] = {{[](auto& a) { a.attribute_name = nullptr; }, playlist_error_invalid_arg},
              {[](auto& a) { a.supported_operators = nullptr; }, playlist_error_invalid_arg},
              {[](auto& a) { a.collect_attribute_data = nullptr; }, playlist_error_invalid_arg},
              {[](auto& a) { a.create_instance = nullptr; }, playlist_error_invalid_arg},
              {[](auto& a) { a.initialize = [](auto*) -> zvsdk_status { return 0x90AB0042u; }; },
               0x90AB0042u}};
  for (const auto& row : rows) {
    playlist_attribute attribute = test_attribute();
    row.spoil(attribute);
    EXPECT_EQ(row.status, zvsdk_playlist_register_attribute_provider(&attribute));
    EXPECT_EQ(0u, last_error().mapped) << "registering records nothing";
  }
  EXPECT_EQ(s_built_in.size(), output_of(zvsdk_playlist_attributes_count));
}

// The owner's own record is started, what it has become is copied, and the copy is shut down with
// the module.
TEST_F(registry, adds_a_copy) {
  static uint32_t s_shutdowns = 0;
  static playlist_attribute* s_started = nullptr;
  playlist_attribute attribute = test_attribute();
  attribute.initialize = [](playlist_attribute* own) -> zvsdk_status {
    own->shutdown = [](playlist_attribute*) -> zvsdk_status { return ++s_shutdowns, 0; };
    return s_started = own, 0;
  };
  EXPECT_EQ(0u, zvsdk_playlist_register_attribute_provider(&attribute));
  EXPECT_EQ(&attribute, s_started);
  attribute = {};
  EXPECT_EQ("test_values", listed(zvsdk_playlist_attributes_enum).back());

  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  EXPECT_EQ(1u, s_shutdowns);
  ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
}

}  // namespace
