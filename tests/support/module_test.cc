// The module pattern: counting, the chain beneath each module, and the thread-store key.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/zcsl_module.h"
#include "zvsdk_runtime.h"

namespace {

struct module_calls {
  std::string name;
  zvsdk_status (*initialize)();
  zvsdk_status (*shutdown)();
  uint32_t (*initchecks)();
  const char* (*get_version)();
  const char* (*get_build_date)();
  std::set<std::string> beneath;  // every module that its start starts, at any depth
};

#define CALLS(module)                                                                        \
#module, zcsl_##module##_initialize, zcsl_##module##_shutdown, zcsl_##module##_initchecks, \
      zcsl_##module##_get_version, zcsl_##module##_get_build_date

const module_calls s_modules[] = {
    {CALLS(datatypes), {"thread", "string", "random", "fs", "iostream"}},
    {CALLS(random), {"fs", "thread", "string", "iostream"}},
    {CALLS(fs), {"thread", "string", "iostream"}},
    {CALLS(string), {}},
    {CALLS(time), {"string"}},
    {CALLS(iostream), {}},
    {CALLS(thread), {}},
    {CALLS(atomic), {}},
};

void expect_nothing_started() {
  for (const module_calls& module : s_modules) EXPECT_EQ(0u, module.initchecks()) << module.name;
}

TEST(module, starts_and_stops_what_is_beneath_it_and_counts) {
  for (const module_calls& module : s_modules) {
    SCOPED_TRACE(module.name);
    EXPECT_EQ(7u, module.shutdown()) << "not started";
    ASSERT_EQ(0u, module.initialize());
    ASSERT_EQ(0u, module.initialize());
    EXPECT_EQ(2u, module.initchecks());
    for (const module_calls& other : s_modules) {
      const bool started = other.name == module.name || module.beneath.count(other.name);
      EXPECT_EQ(started, other.initchecks() != 0) << other.name;
    }
    EXPECT_EQ(0u, module.shutdown());
    EXPECT_EQ(1u, module.initchecks());
    EXPECT_EQ(0u, module.shutdown());
    expect_nothing_started();
    EXPECT_STRNE("", module.get_version());
    EXPECT_STRNE("", module.get_build_date());
  }
}

TEST(module, a_stop_that_fails_keeps_the_count) {
  ASSERT_EQ(0u, zcsl_datatypes_initialize());
  ASSERT_EQ(0u, zcsl_iostream_shutdown());  // takes away what fs holds
  EXPECT_EQ(7u, zcsl_datatypes_shutdown());
  EXPECT_EQ(1u, zcsl_datatypes_initchecks());
  ASSERT_EQ(0u, zcsl_iostream_initialize());
  EXPECT_EQ(0u, zcsl_datatypes_shutdown());
  expect_nothing_started();
}

TEST(module, the_thread_store_key_belongs_to_whoever_made_it) {
  ASSERT_EQ(0u, g_zcsl_thread_store_key);
  ASSERT_EQ(0u, zcsl_thread_initialize());
  EXPECT_NE(0u, g_zcsl_thread_store_key);
  EXPECT_EQ(0u, zcsl_thread_shutdown());
  EXPECT_EQ(0u, g_zcsl_thread_store_key);

  pthread_key_t key = 0;
  do {  // 0 stands for no key
    ASSERT_EQ(0, pthread_key_create(&key, nullptr));
  } while (key == 0);
  g_zcsl_thread_store_key = key;
  ASSERT_EQ(0u, zcsl_thread_initialize());
  EXPECT_EQ(0u, zcsl_thread_shutdown());
  EXPECT_EQ(key, g_zcsl_thread_store_key) << "somebody else's key stays";
  g_zcsl_thread_store_key = 0;
  EXPECT_EQ(0, pthread_key_delete(key));
}

TEST(module, a_start_that_fails_undoes_its_part) {
  std::vector<pthread_key_t> taken;
  for (pthread_key_t key; pthread_key_create(&key, nullptr) == 0;) taken.push_back(key);
  EXPECT_EQ(10u, zcsl_datatypes_initialize()) << "no key left for the thread module";
  expect_nothing_started();
  for (pthread_key_t key : taken) pthread_key_delete(key);
}

}  // namespace
