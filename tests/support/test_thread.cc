// The locks and the atomics: their rules for one thread, and what they promise to several.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

#include "support/zcsl_atomic.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"
#include "tests/support/other_thread.h"

namespace {

class thread_test : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(0u, zcsl_thread_critsec_create(critsec.out()));
    ASSERT_EQ(0u, zcsl_thread_rwlock_create(rwlock.out()));
  }

  failing_memory memory;
  zcsl_owner<zcsl_critsec, zcsl_thread_critsec_delete> critsec;
  zcsl_owner<zcsl_rwlock, zcsl_thread_rwlock_delete> rwlock;
};

TEST_F(thread_test, critsec_is_recursive_and_excludes_others) {
  zcsl_critsec* const lock = critsec.get();
  EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock)) << "a leave without depth changes nothing";
  for (int i = 0; i < 2; ++i) ASSERT_EQ(0u, zcsl_thread_critsec_enter(lock));
  {
    const other_thread other = run([&] {
      zcsl_thread_critsec_leave(lock);  // not the owner: no effect
      EXPECT_EQ(0x90020006u, zcsl_thread_critsec_delete(lock));
      EXPECT_EQ(0u, zcsl_critsec_guard(lock).status());
    });
    EXPECT_TRUE(still_blocked(other));
    EXPECT_EQ(0x90020006u, zcsl_thread_critsec_delete(lock)) << "with a waiter";
    EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock));
    EXPECT_TRUE(still_blocked(other)) << "one leave of two";
    EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock));
  }
  ASSERT_EQ(0u, zcsl_thread_critsec_enter(lock)) << "to be deleted by the thread that holds it";
}

TEST_F(thread_test, rwlock_prefers_writers) {
  zcsl_rwlock* const lock = rwlock.get();
  EXPECT_EQ(0x90020001u, zcsl_thread_rwlock_unlock(lock)) << "nobody holds it";
  ASSERT_EQ(0u, zcsl_thread_rwlock_readlock(lock));
  run([&] { zcsl_read_guard beside(lock); }).wait();
  std::atomic<int> order{0};
  {
    const other_thread writer = run([&] {
      zcsl_write_guard guard(lock);
      EXPECT_EQ(1, ++order);
      std::this_thread::sleep_for(s_shortly);
      EXPECT_EQ(1, order) << "no reader beside a writer";
    });
    EXPECT_TRUE(still_blocked(writer));
    const other_thread late_reader = run([&] {
      zcsl_read_guard guard(lock);
      EXPECT_EQ(2, ++order);
    });
    EXPECT_TRUE(still_blocked(late_reader)) << "a reader lets a waiting writer pass";
    EXPECT_EQ(0u, zcsl_thread_rwlock_unlock(lock));
  }
  EXPECT_EQ(2, order);
  EXPECT_EQ(0x90020001u, zcsl_thread_rwlock_unlock(lock)) << "the guards gave it back";
}

TEST_F(thread_test, locks_hold_under_contention) {
  static zcsl_spinlock spinlock;  // zero-filled, never initialised
  uint32_t by_critsec = 0, by_rwlock = 0, by_spinlock = 0, by_atomic = 0;
  const auto work = [&] {
    for (int i = 0; i < 1000; ++i) {
      zcsl_critsec_guard outer(critsec.get()), inner(critsec.get());
      ++by_critsec;
      inner.unlock();
      outer.unlock();
      zcsl_write_guard writer(rwlock.get());
      ++by_rwlock;
      writer.unlock();
      zcsl_read_guard reader(rwlock.get());
      EXPECT_LE(by_rwlock, 4000u);
      reader.unlock();
      zcsl_spin_guard guard(&spinlock);
      ++by_spinlock;
      zcsl_atomic_inc(&by_atomic, nullptr);
    }
  };
  for (const other_thread& each : {run(work), run(work), run(work), run(work)}) each.wait();
  for (uint32_t count : {by_critsec, by_rwlock, by_spinlock, by_atomic}) EXPECT_EQ(4000u, count);
}

TEST_F(thread_test, events_let_one_go_or_all) {
  for (const uint8_t manual : {0, 1}) {
    zcsl_owner<zcsl_event, zcsl_thread_event_delete> event;
    ASSERT_EQ(0u, zcsl_thread_event_create(event.out(), 0, manual));
    EXPECT_EQ(0x10020084u, zcsl_thread_event_wait(event.get(), 10));
    for (int twice : {1, 2}) EXPECT_EQ(0u, zcsl_thread_event_signal(event.get())) << twice;
    EXPECT_EQ(0u, zcsl_thread_event_wait(event.get(), zcsl_thread_wait_forever));
    EXPECT_EQ(manual ? 0 : 0x10020084u, zcsl_thread_event_wait(event.get(), 0));
    EXPECT_EQ(0u, zcsl_thread_event_reset(event.get()));
    const other_thread other = run([&] { zcsl_thread_event_wait(event.get(), UINT32_MAX); });
    EXPECT_TRUE(still_blocked(other));
    EXPECT_EQ(0u, zcsl_thread_event_signal(event.get()));
  }
}

TEST(atomic, operations_and_their_outputs) {
  uint32_t target = 0xFFFFFFFF, value = 9;
  uint8_t swapped = 9;
  EXPECT_EQ(0u, zcsl_atomic_inc(&target, &value));
  EXPECT_EQ(0u, value) << "wraps";
  EXPECT_EQ(0u, zcsl_atomic_dec(&target, nullptr));
  for (const uint32_t expected : {0u, UINT32_MAX}) {
    EXPECT_EQ(0u, zcsl_atomic_cas(&target, expected, 5, &swapped));
    EXPECT_EQ(expected != 0, swapped);
  }
  EXPECT_EQ(5u, target);
}

}  // namespace
