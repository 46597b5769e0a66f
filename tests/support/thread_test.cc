// The locks and the atomics: their rules for one thread, and what they promise to several.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <thread>
#include <vector>

#include "support/zcsl_atomic.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_module.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"

namespace {

using critsec_owner = zcsl_owner<zcsl_critsec, zcsl_thread_critsec_delete>;
using rwlock_owner = zcsl_owner<zcsl_rwlock, zcsl_thread_rwlock_delete>;

void pause_shortly() {
  std::this_thread::sleep_for(std::chrono::milliseconds(30));
}

// Runs `work` on another thread and tells whether it has ended.
class other_thread {
 public:
  explicit other_thread(std::function<void()> work)
      : m_thread([this, work] {
          work();
          m_ended = true;
        }) {}
  ~other_thread() { m_thread.join(); }
  bool still_blocked() const {
    pause_shortly();
    return !m_ended;
  }

 private:
  std::atomic<bool> m_ended{false};
  std::thread m_thread;
};

void run_in_threads(int count, const std::function<void()>& work) {
  std::vector<std::thread> threads;
  for (int i = 0; i < count; ++i) threads.emplace_back(work);
  for (std::thread& each : threads) each.join();
}

TEST(thread, critsec_is_recursive_and_excludes_others) {
  critsec_owner lock;
  ASSERT_EQ(0u, zcsl_thread_critsec_create(lock.out()));
  EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock.get())) << "a leave without depth changes nothing";
  ASSERT_EQ(0u, zcsl_thread_critsec_enter(lock.get()));
  ASSERT_EQ(0u, zcsl_thread_critsec_enter(lock.get()));
  {
    other_thread other([&] {
      zcsl_thread_critsec_leave(lock.get());  // not the owner: no effect
      EXPECT_EQ(0x90020006u, zcsl_thread_critsec_delete(lock.get()));
      zcsl_critsec_guard guard(lock.get());
      EXPECT_EQ(0u, guard.status());
    });
    EXPECT_TRUE(other.still_blocked());
    EXPECT_EQ(0x90020006u, zcsl_thread_critsec_delete(lock.get())) << "with a waiter";
    EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock.get()));
    EXPECT_TRUE(other.still_blocked()) << "one leave of two";
    EXPECT_EQ(0u, zcsl_thread_critsec_leave(lock.get()));
  }
  ASSERT_EQ(0u, zcsl_thread_critsec_enter(lock.get()));
  EXPECT_EQ(0u, zcsl_thread_critsec_delete(lock.release())) << "held by the deleting thread";
}

TEST(thread, rwlock_prefers_writers) {
  rwlock_owner lock;
  ASSERT_EQ(0u, zcsl_thread_rwlock_create(lock.out()));
  EXPECT_EQ(0x90020001u, zcsl_thread_rwlock_unlock(lock.get())) << "nobody holds it";
  ASSERT_EQ(0u, zcsl_thread_rwlock_readlock(lock.get()));
  std::thread([&] { zcsl_read_guard beside(lock.get()); }).join();
  std::atomic<int> order{0};
  {
    other_thread writer([&] {
      zcsl_write_guard guard(lock.get());
      EXPECT_EQ(1, ++order);
      pause_shortly();
    });
    EXPECT_TRUE(writer.still_blocked());
    other_thread late_reader([&] {
      zcsl_read_guard guard(lock.get());
      EXPECT_EQ(2, ++order);
    });
    EXPECT_TRUE(late_reader.still_blocked()) << "a reader lets a waiting writer pass";
    EXPECT_EQ(0u, zcsl_thread_rwlock_unlock(lock.get()));
  }
  EXPECT_EQ(2, order);
  EXPECT_EQ(0x90020001u, zcsl_thread_rwlock_unlock(lock.get())) << "the guards gave it back";
}

TEST(thread, locks_hold_under_contention) {
  critsec_owner critsec;
  rwlock_owner rwlock;
  static zcsl_spinlock spinlock;  // zero-filled, never initialised
  ASSERT_EQ(0u, zcsl_thread_critsec_create(critsec.out()));
  ASSERT_EQ(0u, zcsl_thread_rwlock_create(rwlock.out()));
  uint32_t by_critsec = 0, by_rwlock = 0, by_spinlock = 0, by_atomic = 0;
  run_in_threads(4, [&] {
    for (int i = 0; i < 1000; ++i) {
      {
        zcsl_critsec_guard outer(critsec.get()), inner(critsec.get());
        ++by_critsec;
      }
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
  });
  for (uint32_t count : {by_critsec, by_rwlock, by_spinlock, by_atomic}) EXPECT_EQ(4000u, count);
}

TEST(thread, null_and_exhaustion) {
  EXPECT_EQ(0x90020001u, zcsl_thread_rwlock_readlock(nullptr));
  EXPECT_EQ(0x901F0001u, zcsl_spinlock_lock(nullptr));
  EXPECT_EQ(0u, zcsl_thread_critsec_delete(nullptr));
  EXPECT_EQ(0u, zcsl_read_guard(nullptr).status());

  failing_memory memory;
  memory.fail_at(1);
  critsec_owner critsec;
  EXPECT_EQ(0x90020002u, zcsl_thread_critsec_create(critsec.out()));
  memory.fail_at(1);
  rwlock_owner rwlock;
  EXPECT_EQ(0x90020002u, zcsl_thread_rwlock_create(rwlock.out()));
}

TEST(atomic, operations_and_their_outputs) {
  uint32_t target = 0xFFFFFFFF, value = 0;
  uint8_t swapped = 9;
  EXPECT_EQ(0u, zcsl_atomic_inc(&target, &value));
  EXPECT_EQ(0u, value) << "wraps";
  EXPECT_EQ(0u, zcsl_atomic_dec(&target, &value));
  EXPECT_EQ(0xFFFFFFFFu, value);
  EXPECT_EQ(0u, zcsl_atomic_add(&target, 11));
  EXPECT_EQ(0u, zcsl_atomic_cas(&target, 11, 5, &swapped));
  EXPECT_EQ(0, swapped);
  EXPECT_EQ(0u, zcsl_atomic_cas(&target, 10, 5, &swapped));
  EXPECT_EQ(1, swapped);
  void *pointer = &target, *old = nullptr;
  EXPECT_EQ(0u, zcsl_atomicPtr_exchange(&pointer, &value, &old));
  EXPECT_EQ(&target, old);
  EXPECT_EQ(&value, pointer);
  EXPECT_EQ(0x901F0001u, zcsl_atomic_cas(&target, 5, 6, nullptr));

  // The module is not needed, and its start and stop leave the atomics as they were.
  ASSERT_EQ(0u, zcsl_atomic_initialize());
  ASSERT_EQ(0u, zcsl_atomic_shutdown());
  EXPECT_EQ(0u, zcsl_atomic_read(&target, &value));
  EXPECT_EQ(5u, value);
}

}  // namespace
