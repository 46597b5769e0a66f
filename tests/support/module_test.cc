// The module pattern: counting, the chain beneath each module, and the thread-store key.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "support/zcsl_module.h"
#include "zvsdk_runtime.h"

namespace {

struct module_calls {
  zvsdk_status (*initialize)();
  zvsdk_status (*shutdown)();
  uint32_t (*initchecks)();
  const char* started;  // which modules its start starts at any depth, with itself, in this order
};

#define CALLS(module) \
  zcsl_##module##_initialize, zcsl_##module##_shutdown, zcsl_##module##_initchecks

const module_calls s_modules[] = {
    {CALLS(datatypes), "1111.11."}, {CALLS(random), ".111.11."}, {CALLS(fs), "..11.11."},
    {CALLS(string), "...1...."},    {CALLS(time), "...11..."},   {CALLS(iostream), ".....1.."},
    {CALLS(thread), "......1."},    {CALLS(atomic), ".......1"},
};

std::string started() {
  std::string all;
  for (const module_calls& module : s_modules) all += module.initchecks() ? '1' : '.';
  return all;
}

TEST(module, starts_and_stops_what_is_beneath_it_and_counts) {
  for (const module_calls& module : s_modules) {
    SCOPED_TRACE(module.started);
    EXPECT_EQ(7u, module.shutdown()) << "not started";
    for (const uint32_t count : {1, 2}) {
      ASSERT_EQ(0u, module.initialize());
      EXPECT_EQ(count, module.initchecks());
    }
    for (const uint32_t count : {1, 0}) {
      EXPECT_EQ(module.started, started());
      EXPECT_EQ(0u, module.shutdown());
      EXPECT_EQ(count, module.initchecks());
    }
    EXPECT_EQ("........", started());
  }
}

TEST(module, a_stop_that_fails_keeps_the_count) {
  ASSERT_EQ(0u, zcsl_datatypes_initialize());
  ASSERT_EQ(0u, zcsl_iostream_shutdown());  // takes away what fs holds
  EXPECT_EQ(7u, zcsl_datatypes_shutdown());
  EXPECT_EQ(1u, zcsl_datatypes_initchecks());
  ASSERT_EQ(0u, zcsl_iostream_initialize());
  EXPECT_EQ(0u, zcsl_datatypes_shutdown());
  EXPECT_EQ("........", started());
}

TEST(module, the_thread_store_key_belongs_to_whoever_made_it) {
  pthread_key_t ours = 0;
  while (ours == 0) ASSERT_EQ(0, pthread_key_create(&ours, nullptr));  // 0 stands for no key
  for (const pthread_key_t key : {pthread_key_t{0}, ours}) {
    g_zcsl_thread_store_key = key;
    ASSERT_EQ(0u, zcsl_thread_initialize());
    EXPECT_TRUE(key ? g_zcsl_thread_store_key == key : g_zcsl_thread_store_key != 0);
    EXPECT_EQ(0u, zcsl_thread_shutdown());
    EXPECT_EQ(key, g_zcsl_thread_store_key);
  }
  g_zcsl_thread_store_key = 0;
  EXPECT_EQ(0, pthread_key_delete(ours)) << "somebody else's key stays";
}

TEST(module, a_start_that_fails_undoes_its_part) {
  std::vector<pthread_key_t> taken;
  for (pthread_key_t key; pthread_key_create(&key, nullptr) == 0;) taken.push_back(key);
  EXPECT_EQ(10u, zcsl_datatypes_initialize()) << "no key left for the thread module";
  EXPECT_EQ("........", started());
  for (pthread_key_t key : taken) pthread_key_delete(key);
}

}  // namespace
