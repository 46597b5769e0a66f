// The module pattern: counting, the chain beneath each module, and a start that fails.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/zcsl_module.h"
#include "zvsdk_runtime.h"

namespace {

// Which modules are started, in the order of their names here.
std::string started() {
  std::string all;
  for (const auto initchecks :
       {zcsl_datatypes_initchecks, zcsl_random_initchecks, zcsl_fs_initchecks,
        zcsl_string_initchecks, zcsl_time_initchecks, zcsl_iostream_initchecks,
        zcsl_thread_initchecks, zcsl_atomic_initchecks}) {
    all += initchecks() ? '1' : '.';
  }
  return all;
}

TEST(module, starts_and_stops_what_is_beneath_it_and_counts) {
  EXPECT_EQ(7u, zcsl_datatypes_shutdown()) << "not started";
  for (const uint32_t count : {1, 2}) {
    ASSERT_EQ(0u, zcsl_datatypes_initialize());
    EXPECT_EQ(count, zcsl_datatypes_initchecks());
  }
  for (const uint32_t count : {1, 0}) {
    EXPECT_EQ("1111.11.", started());
    EXPECT_EQ(0u, zcsl_datatypes_shutdown());
    EXPECT_EQ(count, zcsl_datatypes_initchecks());
  }
  EXPECT_EQ("........", started());
  ASSERT_EQ(0u, zcsl_time_initialize());
  ASSERT_EQ(0u, zcsl_atomic_initialize());
  EXPECT_EQ("...11..1", started());
  EXPECT_EQ(0u, zcsl_atomic_shutdown());
  EXPECT_EQ(0u, zcsl_time_shutdown());
  EXPECT_EQ("........", started());
}

TEST(module, a_start_that_fails_undoes_its_part) {
  std::vector<pthread_key_t> taken;
  for (pthread_key_t key; pthread_key_create(&key, nullptr) == 0;) taken.push_back(key);
  EXPECT_EQ(10u, zcsl_datatypes_initialize()) << "no key left for the thread module";
  EXPECT_EQ("........", started());
  for (pthread_key_t key : taken) pthread_key_delete(key);
}

}  // namespace
