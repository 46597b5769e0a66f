/*
 * module_fixture.h: what the tests of the playlist library's insides start from: a host and a
 * module that is up for the length of one test, log lines and the error record.
 */
#ifndef MODULE_FIXTURE_H
#define MODULE_FIXTURE_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

using texts = std::vector<std::string>;

/* Collects the log lines of the module's packages as "level code source: text" while it lives. */
class log_capture {
 public:
  explicit log_capture(uint32_t levels) { listen(levels, on_line); }
  ~log_capture() { listen(0, nullptr); }

  texts take() { return std::exchange(m_lines, {}); }

 private:
  void listen(uint32_t levels, zvsdk_log_handler handler) {
    zvsdk_manager_log_handler_set(handler, this);
    zvsdk_manager_log_mask_set(zvsdk_package_playlist, levels);
    zvsdk_manager_log_mask_set(zvsdk_package_banner, levels);
  }
  static void on_line(void* self, uint32_t level, uint32_t code, uint32_t, const char* source,
                      const char* text) {
    char head[32];
    std::snprintf(head, sizeof(head), "%u %08X ", level, code);
    static_cast<log_capture*>(self)->m_lines.push_back(head + std::string(source ? source : "") +
                                                       ": " + (text ? text : ""));
  }
  texts m_lines;
};

inline zvsdk_error_info last_error() {
  zvsdk_error_info info = {};
  EXPECT_EQ(0u, zvsdk_manager_errorinfo_get(&info));
  return info;
}

/* A host alone. */
class host_test : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &manager)); }
  void TearDown() override { EXPECT_EQ(0u, zvsdk_manager_release(manager)); }

  zvsdk_sdkmanager* manager = nullptr;
};

/* A host with the module started. */
class module_test : public host_test {
 protected:
  void SetUp() override {
    host_test::SetUp();
    ASSERT_EQ(0u, zvsdk_playlist_initialize(manager));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_shutdown());
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
    host_test::TearDown();
  }
};

#endif
