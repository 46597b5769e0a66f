// Start and stop: what is refused, how starts are counted, what stops the module and what does not.
#include <cstring>

#include "tests/module/module_fixture.h"

namespace {

class lifecycle : public host_test {};

TEST_F(lifecycle, refuses_what_is_no_manager_of_this_version) {
  zvsdk_sdkmanager wrong_magic = *manager;
  wrong_magic.magic = 0x1EEEEEE2;
  zvsdk_sdkmanager other_version = *manager;
  other_version.version = "3.10.50";
  const struct {
    zvsdk_sdkmanager* manager;
    zvsdk_status status;
    const char* message;
  } table[] = {
      {nullptr, playlist_error_invalid_arg, "given manager handle was null"},
      {&wrong_magic, playlist_error_bad_manager_handle, ""},
      {&other_version, playlist_error_version_mismatch,
       "given manager handle was from a different version SDK"},
  };
  for (const auto& row : table) {
    EXPECT_EQ(row.status, zvsdk_playlist_initialize(row.manager));
    const zvsdk_error_info error = last_error();
    EXPECT_EQ(row.status, error.mapped);
    EXPECT_EQ(row.status, error.source);
    EXPECT_STREQ("zvsdk_playlist_initialize", error.function);
    EXPECT_STREQ(row.message, error.message);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  }
}

TEST_F(lifecycle, counts_starts_and_stops) {
  EXPECT_EQ(0x90890007u, zvsdk_playlist_shutdown());
  for (uint32_t count = 1; count <= 3; ++count) {
    EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
    EXPECT_EQ(count, zvsdk_playlist_initchecks());
  }
  uint32_t attributes = 0;
  for (uint32_t count = 2; count + 1 > 0; --count) {
    EXPECT_EQ(0u, zvsdk_playlist_attributes_count(&attributes)) << "still up";
    EXPECT_EQ(0u, zvsdk_playlist_shutdown());
    EXPECT_EQ(count, zvsdk_playlist_initchecks());
  }
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_attributes_count(&attributes));
  EXPECT_EQ(0x90890007u, zvsdk_playlist_shutdown());
}

TEST_F(lifecycle, stays_up_while_a_handle_lives) {
  ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  playlist_collection* collection = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("held", &collection));

  log_capture log(zcsl_log_error);
  const zvsdk_status refusal = zvsdk_playlist_shutdown();
  EXPECT_TRUE(zvsdk_is_error(refusal));
  EXPECT_EQ(uint32_t{zvsdk_package_playlist}, zvsdk_package(refusal));
  const std::string busy = "Playlist Shutdown Failed: services still in use";
  EXPECT_EQ((std::vector<log_line>{{zcsl_log_error, 0x00890000, "", busy},
                                   {zcsl_log_error, 0x00310000, "", busy},
                                   {zcsl_log_error, refusal, "zvsdk_playlist_shutdown", ""}}),
            log.take());
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, "one"));

  EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  EXPECT_EQ(0u, zvsdk_playlist_initchecks());
}

TEST_F(lifecycle, the_host_stops_the_module_however_often_it_was_started) {
  for (int i = 0; i < 3; ++i) ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_manager_release(manager));
  EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager));
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
}

TEST_F(lifecycle, logs_its_calls_and_banners) {
  log_capture log(zcsl_log_information | zcsl_log_api_trace | zcsl_log_error);
  const std::string version = zvsdk_playlist_get_version();
  const std::string built = zvsdk_playlist_get_build_date();
  EXPECT_EQ("3.10.5", version);
  EXPECT_NE(std::string::npos, built.find("UTC"));
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());

  char start_trace[64];
  std::snprintf(start_trace, sizeof(start_trace), "zvsdk_playlist_initialize( %p )",
                static_cast<void*>(manager));
  const std::string up = "Playlist Initialize: Version 3.10.5  Built " + built;
  const std::string trace = "[api_trace]";
  EXPECT_EQ((std::vector<log_line>{
                {zcsl_log_api_trace, 0x00890000, trace, "zvsdk_playlist_get_version"},
                {zcsl_log_api_trace, 0x00890000, trace, "zvsdk_playlist_get_build_date"},
                {zcsl_log_api_trace, 0x00890000, trace, start_trace},
                {zcsl_log_information, 0x00890000, "", up},
                {zcsl_log_information, 0x00310000, "", up},
                {zcsl_log_api_trace, 0x00890000, trace, "zvsdk_playlist_shutdown"},
                {zcsl_log_information, 0x00890000, "", "Playlist Shutdown"},
                {zcsl_log_information, 0x00310000, "", "Playlist Shutdown"}}),
            log.take());
}

TEST_F(lifecycle, a_refusal_before_the_start_leaves_the_error_record_alone) {
  ASSERT_EQ(playlist_error_invalid_arg, zvsdk_playlist_initialize(nullptr));
  playlist_collection* collection = nullptr;
  const char* text = nullptr;
  uint32_t number = 0;
  log_capture log(zcsl_log_error);
  const zvsdk_status statuses[] = {
      zvsdk_playlist_collection_create("a", &collection),
      zvsdk_playlist_collection_release(nullptr),
      zvsdk_playlist_collection_get_name(nullptr, nullptr),
      zvsdk_playlist_collection_update_name(nullptr, nullptr),
      zvsdk_playlist_collection_add_ident(nullptr, nullptr),
      zvsdk_playlist_collection_add_zdo(nullptr, nullptr, nullptr),
      zvsdk_playlist_collection_add_list_element(nullptr, nullptr, nullptr),
      zvsdk_playlist_collection_ident_count(nullptr, nullptr),
      zvsdk_playlist_collection_ident_enum(nullptr, 0, nullptr, nullptr),
      zvsdk_playlist_collection_ident_find(nullptr, nullptr, 0, nullptr, nullptr),
      zvsdk_playlist_collection_ident_remove(nullptr, nullptr),
      zvsdk_playlist_attributes_count(&number),
      zvsdk_playlist_attributes_enum(0, &text),
      zvsdk_playlist_generate_playlist(nullptr, nullptr, nullptr, nullptr, nullptr),
      zvsdk_playlist_morelikethis_option_get(nullptr, nullptr, nullptr),
      zvsdk_playlist_results_count(nullptr, nullptr),
      zvsdk_playlist_results_release(nullptr),
  };
  for (const zvsdk_status status : statuses) EXPECT_EQ(playlist_error_not_initialized, status);
  const std::vector<log_line> lines = log.take();
  EXPECT_EQ(std::size(statuses), lines.size());
  for (const log_line& line : lines) EXPECT_EQ("playlist not initialized!", line.text) << line;
  EXPECT_STREQ("zvsdk_playlist_initialize", last_error().function);
}

}  // namespace
