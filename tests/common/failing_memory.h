/*
 * failing_memory.h: memory functions that count blocks and can refuse one allocation, for tests of
 * what happens when memory runs out.
 *
 *   failing_memory memory;                        // while no block of the product lives
 *   memory.for_each_failure([&] { ... });         // the scenario once for N = 1, 2, 3, ...
 */
#ifndef FAILING_MEMORY_H
#define FAILING_MEMORY_H

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>

#include "zvsdk_manager.h"

class failing_memory {
 public:
  failing_memory() {
    zvsdk_memory_functions functions = {};
    functions.alloc = [](void* self, size_t size) { return of(self).alloc(size); };
    functions.calloc = [](void* self, size_t count, size_t size) {
      return of(self).refuse() ? nullptr : of(self).counted(std::calloc(count, size));
    };
    functions.realloc = [](void* self, void* block, size_t size) -> void* {
      if (!block) return of(self).alloc(size);
      return of(self).refuse() ? nullptr : std::realloc(block, size);
    };
    functions.free = [](void* self, void* block) { of(self).free(block); };
    functions.context = this;
    EXPECT_EQ(0u, zvsdk_manager_memory_functions_set(&functions));
  }
  ~failing_memory() {
    EXPECT_EQ(0, live()) << "blocks were not released";
    EXPECT_EQ(0u, zvsdk_manager_memory_functions_set(nullptr));
  }
  failing_memory(const failing_memory&) = delete;
  failing_memory& operator=(const failing_memory&) = delete;

  /* Refuses allocation number `number` from here on; 1 is the next one, 0 refuses none. */
  void fail_at(uint64_t number) {
    refused_ = false;
    fail_at_ = number ? requests_ + number : 0;
  }
  /* Refuses none from here on. */
  void restore() { fail_at_ = 0; }
  /* Counts one more allocation, of this or another family; true if it is to fail. */
  bool refuse() {
    const uint64_t number = ++requests_;
    const uint64_t fail_at = fail_at_;
    if (fail_at == 0 || (lasting_ ? number < fail_at : number != fail_at)) return false;
    refused_ = true;
    return true;
  }
  /* Whether the allocation that was to fail has failed. */
  bool refused() const { return refused_; }
  /* Allocations and resizes asked for so far. */
  uint64_t requests() const { return requests_; }
  int64_t live() const { return live_; }

  /*
   * Runs the scenario with its first, second, ... allocation refused, until a run needs no further
   * one; nothing of a run may stay allocated. With `lasting` all that follow are refused too, until
   * the scenario calls restore. Returns the number of refusals.
   */
  template <class Scenario>
  uint64_t for_each_failure(Scenario&& scenario, bool lasting = false) {
    const int64_t before = live();
    for (uint64_t number = 1;; ++number) {
      SCOPED_TRACE(testing::Message() << "allocation " << number << " refused");
      lasting_ = lasting;
      fail_at(number);
      scenario();
      restore();
      EXPECT_EQ(before, live());
      if (!refused() || testing::Test::HasFailure()) return number - 1;
    }
  }

 private:
  static failing_memory& of(void* self) { return *static_cast<failing_memory*>(self); }

  void* counted(void* block) {
    if (block) ++live_;
    return block;
  }
  void* alloc(size_t size) { return refuse() ? nullptr : counted(std::malloc(size)); }
  void free(void* block) {
    if (block) --live_;
    std::free(block);
  }

  std::atomic<uint64_t> requests_{0};
  std::atomic<uint64_t> fail_at_{0};
  std::atomic<int64_t> live_{0};
  std::atomic<bool> refused_{false};
  std::atomic<bool> lasting_{false};
};

#endif
