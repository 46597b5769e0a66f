/*
 * module_fixture.h: what the tests of the playlist library's insides start from: a host and a
 * module that is up for the length of one test, log lines and error records as values.
 */
#ifndef MODULE_FIXTURE_H
#define MODULE_FIXTURE_H

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

struct log_line {
  uint32_t level;
  uint32_t code;
  std::string source;
  std::string text;
  bool operator==(const log_line&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const log_line& line) {
  return out << line.level << " " << std::hex << line.code << std::dec << " " << line.source << ": "
             << line.text;
}

/* Collects the log lines of the given packages while it lives. */
class log_capture {
 public:
  explicit log_capture(uint32_t levels) {
    for (uint32_t package : {zvsdk_package_playlist, zvsdk_package_banner})
      zvsdk_manager_log_mask_set(package, levels);
    zvsdk_manager_log_handler_set(on_line, this);
  }
  ~log_capture() {
    zvsdk_manager_log_handler_set(nullptr, nullptr);
    for (uint32_t package : {zvsdk_package_playlist, zvsdk_package_banner})
      zvsdk_manager_log_mask_set(package, 0);
  }
  log_capture(const log_capture&) = delete;
  log_capture& operator=(const log_capture&) = delete;

  std::vector<log_line> take() { return std::exchange(m_lines, {}); }

 private:
  static void on_line(void* self, uint32_t level, uint32_t code, uint32_t, const char* source,
                      const char* text) {
    static_cast<log_capture*>(self)->m_lines.push_back(
        {level, code, source ? source : "", text ? text : ""});
  }
  std::vector<log_line> m_lines;
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
