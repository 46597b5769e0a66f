/*
 * container_fixture.h: what the tests of the containers share: counted memory that may fail, the
 * started module, random numbers, and what free callbacks were given.
 */
#ifndef CONTAINER_FIXTURE_H
#define CONTAINER_FIXTURE_H

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "support/zcsl_container_owners.h"
#include "support/zcsl_error.h"
#include "support/zcsl_module.h"
#include "tests/common/failing_memory.h"

using numbers = std::vector<uint32_t>;

/* What free callbacks were called with, as numbers, in order. */
inline std::vector<uint64_t> g_freed;

inline void* as_pointer(uintptr_t value) {
  return reinterpret_cast<void*>(value);
}
inline uint32_t as_number(const void* pointer) {
  return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(pointer));
}

class container_test : public testing::Test {
 protected:
  void SetUp() override {
    g_freed.clear();
    ASSERT_EQ(0u, zcsl_datatypes_initialize());
  }
  void TearDown() override { EXPECT_EQ(0u, zcsl_datatypes_shutdown()); }

  uint32_t random(size_t limit) { return static_cast<uint32_t>(random_() % limit); }

  /*
   * The status of an operation, which one allocation in a few of which may be refused to. True when
   * it lacked memory, and then nothing may have changed; otherwise its status must be as expected.
   */
  template <class Operation>
  bool lacks_memory(zvsdk_status expected, Operation operation) {
    memory.fail_at(random(9));
    const zvsdk_status status = operation();
    memory.restore();
    if (memory.refused() && zvsdk_low_word(status) == zcsl_code_no_memory) return true;
    EXPECT_EQ(expected, status);
    return false;
  }

  failing_memory memory;

 private:
  std::mt19937 random_{20240229};
};

#endif
