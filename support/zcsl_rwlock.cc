// The read-write lock, writers preferred: a reader that arrives while a writer waits lets it pass.

#include "support/zcsl_monitor.h"
#include "support/zcsl_thread.h"

namespace {
enum { for_readers, for_writers, condition_count };
}

struct zcsl_rwlock {
  pthread_mutex_t mutex;
  pthread_cond_t conditions[condition_count];
  uint32_t active_readers;
  uint32_t writer_active;
  uint32_t waiting_readers;
  uint32_t waiting_writers;
};

namespace {

void release_writer(zcsl_rwlock* lock) {
  lock->writer_active = 0;
  if (lock->waiting_writers > 0) {
    pthread_cond_signal(&lock->conditions[for_writers]);
  } else if (lock->waiting_readers > 0) {
    pthread_cond_broadcast(&lock->conditions[for_readers]);
  }
}

void release_reader(zcsl_rwlock* lock) {
  --lock->active_readers;
  if (lock->waiting_writers > 0) pthread_cond_signal(&lock->conditions[for_writers]);
}

template <class Blocked>
zvsdk_status take_read_lock(zcsl_rwlock* lock, Blocked blocked) {
  return monitor_operate(lock, [lock, blocked] {
    const zvsdk_status status =
        monitor_wait(&lock->conditions[for_readers], &lock->mutex, &lock->waiting_readers, blocked);
    if (status == 0) ++lock->active_readers;
    return status;
  });
}

}  // namespace

zvsdk_status zcsl_thread_rwlock_create(zcsl_rwlock** lock) {
  return monitor_create(lock);
}

zvsdk_status zcsl_thread_rwlock_readlock(zcsl_rwlock* lock) {
  return take_read_lock(lock, [lock] { return lock->writer_active || lock->waiting_writers > 0; });
}

zvsdk_status zcsl_thread_rwlock_readlock_nested(zcsl_rwlock* lock) {
  return take_read_lock(lock, [lock] { return lock->writer_active != 0; });
}

zvsdk_status zcsl_thread_rwlock_writelock(zcsl_rwlock* lock) {
  return monitor_operate(lock, [lock] {
    const zvsdk_status status =
        monitor_wait(&lock->conditions[for_writers], &lock->mutex, &lock->waiting_writers,
                     [lock] { return lock->active_readers > 0 || lock->writer_active; });
    if (status == 0) lock->writer_active = 1;
    return status;
  });
}

zvsdk_status zcsl_thread_rwlock_unlock(zcsl_rwlock* lock) {
  return monitor_operate(lock, [lock]() -> zvsdk_status {
    if (lock->writer_active) {
      release_writer(lock);
    } else if (lock->active_readers > 0) {
      release_reader(lock);
    } else {
      return thread_error(zcsl_code_invalid_arg);
    }
    return 0;
  });
}

zvsdk_status zcsl_thread_rwlock_delete(zcsl_rwlock* lock) {
  if (lock) monitor_delete(lock);
  return 0;
}
