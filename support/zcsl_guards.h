/*
 * zcsl_guards.h: scoped locks. A guard locks when it is made and unlocks when it goes, or earlier
 * by unlock(). A null lock is no lock at all, and succeeds. Where taking the lock can fail, look at
 * status() before touching what it guards. Internal.
 */
#ifndef ZCSL_GUARDS_H
#define ZCSL_GUARDS_H

#include <utility>

#include "support/zcsl_thread.h"
#include "support/zcsl_thread_internal.h"

template <class Lock, auto take, auto give>
class zcsl_guard {
 public:
  explicit zcsl_guard(Lock* lock) : status_(lock ? take(lock) : 0) {
    if (status_ == 0) lock_ = lock;
  }
  zcsl_guard(zcsl_guard&& other) noexcept
      : lock_(std::exchange(other.lock_, nullptr)), status_(other.status_) {}
  zcsl_guard(const zcsl_guard&) = delete;
  zcsl_guard& operator=(const zcsl_guard&) = delete;
  ~zcsl_guard() { unlock(); }

  /* 0 when the lock was taken or when there is none. */
  zvsdk_status status() const { return status_; }

  /* Gives the lock back now. The second call does nothing and returns 0. */
  zvsdk_status unlock() {
    Lock* held = std::exchange(lock_, nullptr);
    return held ? give(held) : 0;
  }

 private:
  Lock* lock_ = nullptr;
  zvsdk_status status_;
};

using zcsl_read_guard =
    zcsl_guard<zcsl_rwlock, zcsl_thread_rwlock_readlock, zcsl_thread_rwlock_unlock>;
/* For a thread that holds another read lock. */
using zcsl_nested_read_guard =
    zcsl_guard<zcsl_rwlock, zcsl_thread_rwlock_readlock_nested, zcsl_thread_rwlock_unlock>;
using zcsl_write_guard =
    zcsl_guard<zcsl_rwlock, zcsl_thread_rwlock_writelock, zcsl_thread_rwlock_unlock>;
using zcsl_critsec_guard =
    zcsl_guard<zcsl_critsec, zcsl_thread_critsec_enter, zcsl_thread_critsec_leave>;
using zcsl_spin_guard = zcsl_guard<zcsl_spinlock, zcsl_spinlock_lock, zcsl_spinlock_unlock>;

#endif
