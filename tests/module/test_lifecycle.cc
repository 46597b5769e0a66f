// Start and stop: what is refused, how starts are counted, what stops the module and what does not.
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
    EXPECT_EQ(row.status, last_error().mapped);
    EXPECT_EQ(row.status, last_error().source);
    EXPECT_STREQ("zvsdk_playlist_initialize", last_error().function);
    EXPECT_STREQ(row.message, last_error().message);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  }
}

TEST_F(lifecycle, is_counted_and_stays_up_while_a_handle_lives) {
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_shutdown());
  for (uint32_t count = 1; count <= 3; ++count) {
    EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
    EXPECT_EQ(count, zvsdk_playlist_initchecks());
  }
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  playlist_collection* collection = nullptr;
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("held", &collection));

  log_capture log(zcsl_log_error);
  EXPECT_EQ(0x90890006u, zvsdk_playlist_shutdown());
  EXPECT_EQ((texts{"1 00890000 : Playlist Shutdown Failed: services still in use",
                   "1 00310000 : Playlist Shutdown Failed: services still in use",
                   "1 90890006 zvsdk_playlist_shutdown: "}),
            log.take());
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, "one"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_shutdown());
}

TEST_F(lifecycle, the_host_stops_the_module_however_often_it_was_started) {
  for (int i = 0; i < 3; ++i) ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_manager_release(manager));
  EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager));
}

TEST_F(lifecycle, logs_its_calls_and_banners) {
  log_capture log(zcsl_log_information | zcsl_log_api_trace | zcsl_log_error);
  EXPECT_STREQ("3.10.5", zvsdk_playlist_get_version());
  const std::string built = zvsdk_playlist_get_build_date();
  EXPECT_NE(std::string::npos, built.find("UTC"));
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());

  char start[64];
  std::snprintf(start, sizeof(start), "zvsdk_playlist_initialize( %p )",
                static_cast<void*>(manager));
  EXPECT_EQ((texts{"8 00890000 [api_trace]: zvsdk_playlist_get_version",
                   "8 00890000 [api_trace]: zvsdk_playlist_get_build_date",
                   std::string("8 00890000 [api_trace]: ") + start,
                   "4 00890000 : Playlist Initialize: Version 3.10.5  Built " + built,
                   "4 00310000 : Playlist Initialize: Version 3.10.5  Built " + built,
                   "8 00890000 [api_trace]: zvsdk_playlist_shutdown",
                   "4 00890000 : Playlist Shutdown", "4 00310000 : Playlist Shutdown"}),
            log.take());
}

TEST_F(lifecycle, a_refusal_before_the_start_leaves_the_error_record_alone) {
  ASSERT_EQ(playlist_error_invalid_arg, zvsdk_playlist_initialize(nullptr));
  log_capture log(zcsl_log_error);
  for (const zvsdk_status status :
       {zvsdk_playlist_collection_create("a", nullptr), zvsdk_playlist_collection_release(nullptr),
        zvsdk_playlist_results_count(nullptr, nullptr), zvsdk_playlist_results_release(nullptr)})
    EXPECT_EQ(playlist_error_not_initialized, status);
  const texts lines = log.take();
  ASSERT_EQ(4u, lines.size());
  EXPECT_EQ("1 90890007 zvsdk_playlist_collection_create: playlist not initialized!", lines[0]);
  EXPECT_STREQ("zvsdk_playlist_initialize", last_error().function);
}

}  // namespace
