// Start and stop: what is refused, how starts are counted, what stops the module and what does not.
#include "tests/common/playlist_fixture.h"

namespace {

using lifecycle = host_test;

TEST_F(lifecycle, refuses_what_is_no_manager_of_this_version) {
  zvsdk_sdkmanager wrong_magic = *manager, other_version = *manager;
  wrong_magic.magic = 0x1EEEEEE2;
  other_version.version = "3.10.50";
  const std::tuple<zvsdk_sdkmanager*, zvsdk_status, const char*> rows[] = {
      {nullptr, playlist_error_invalid_arg, "given manager handle was null"},
      {&wrong_magic, playlist_error_bad_manager_handle, ""},
      {&other_version, playlist_error_version_mismatch,
       "given manager handle was from a different version SDK"}};
  for (const auto& [given, status, message] : rows) {
    EXPECT_EQ(status, zvsdk_playlist_initialize(given));
    EXPECT_EQ(status, last_error().mapped);
    EXPECT_STREQ(message, last_error().message);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  }
  // Before the start everything is refused, and the error record is left alone.
  log_capture log(zcsl_log_error);
  for (const zvsdk_status status :
       {zvsdk_playlist_collection_create("a", nullptr), zvsdk_playlist_collection_release(nullptr),
        zvsdk_playlist_attributes_count(nullptr), zvsdk_playlist_results_count(nullptr, nullptr),
        zvsdk_playlist_results_release(nullptr)})
    EXPECT_EQ(playlist_error_not_initialized, status);
  EXPECT_EQ("1 90890007 zvsdk_playlist_collection_create: playlist not initialized!",
            log.take().at(0));
  EXPECT_STREQ("zvsdk_playlist_initialize", last_error().function);
}

TEST_F(lifecycle, is_counted_and_stays_up_while_a_handle_lives) {
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_shutdown());
  for (uint32_t count = 1; count <= 3; ++count) {
    EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
    EXPECT_EQ(count, zvsdk_playlist_initchecks());
  }
  for (int i = 0; i < 2; ++i) EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  playlist_collection* collection = output_of(zvsdk_playlist_collection_create, "held");
  log_capture log(zcsl_log_error);
  EXPECT_EQ(0x90890006u, zvsdk_playlist_shutdown());
  EXPECT_EQ((texts{"1 00890000 : Playlist Shutdown Failed: services still in use",
                   "1 00310000 : Playlist Shutdown Failed: services still in use",
                   "1 90890006 zvsdk_playlist_shutdown: "}),
            log.take());
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
  EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
}

TEST_F(lifecycle, logs_its_calls_and_banners) {
  log_capture log(zcsl_log_information | zcsl_log_api_trace | zcsl_log_error);
  EXPECT_STREQ("3.10.5", zvsdk_playlist_get_version());
  const std::string built = zvsdk_playlist_get_build_date();
  EXPECT_EQ(std::string("0000-00-00 00:00:00 UTC").size(), built.size());
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
  const std::string pointer = "( " + testing::PrintToString(static_cast<void*>(manager)) + " )";
  const std::string trace = "8 00890000 [api_trace]: zvsdk_playlist_";
  const std::string start = ": Playlist Initialize: Version 3.10.5  Built " + built;
  EXPECT_EQ((texts{trace + "get_version", trace + "get_build_date", trace + "initialize" + pointer,
                   "4 00890000 " + start, "4 00310000 " + start, trace + "shutdown",
                   "4 00890000 : Playlist Shutdown", "4 00310000 : Playlist Shutdown"}),
            log.take());
}

}  // namespace
