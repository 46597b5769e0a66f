// The recursive lock. Its holder does not hold the mutex, which guards the fields alone.

#include "support/zcsl_monitor.h"
#include "support/zcsl_thread.h"

struct zcsl_critsec {
  int32_t waiters;
  int32_t depth;
  pthread_t owner;  // meaningful while depth is above 0
  pthread_cond_t conditions[1];
  pthread_mutex_t mutex;

  bool held() const { return depth > 0; }
  bool mine() const { return held() && pthread_equal(owner, pthread_self()); }
};

zvsdk_status zcsl_thread_critsec_create(zcsl_critsec** lock) {
  return monitor_create(lock);
}

zvsdk_status zcsl_thread_critsec_enter(zcsl_critsec* lock) {
  return monitor_operate(lock, [lock] {
    const zvsdk_status status = monitor_wait(&lock->conditions[0], &lock->mutex, &lock->waiters,
                                             [lock] { return lock->held() && !lock->mine(); });
    if (status) return status;
    lock->owner = pthread_self();
    ++lock->depth;
    return status;
  });
}

zvsdk_status zcsl_thread_critsec_leave(zcsl_critsec* lock) {
  return monitor_operate(lock, [lock]() -> zvsdk_status {
    if (!lock->mine()) return 0;
    --lock->depth;
    if (!lock->held() && lock->waiters > 0) pthread_cond_broadcast(&lock->conditions[0]);
    return 0;
  });
}

zvsdk_status zcsl_thread_critsec_delete(zcsl_critsec* lock) {
  if (!lock) return 0;
  const zvsdk_status status = monitor_operate(lock, [lock]() -> zvsdk_status {
    const bool busy = lock->waiters > 0 || (lock->held() && !lock->mine());
    return busy ? thread_error(zcsl_code_busy) : 0;
  });
  if (status == 0) monitor_delete(lock);
  return status;
}
