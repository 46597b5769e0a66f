/*
 * zcsl_monitor.h: what critsec, rwlock and event are made of: a mutex that is held only while the
 * state changes, and conditions to wait on. Internal.
 *
 * A lock record has the fields `mutex` and `conditions`, an array; the rest of it is its state.
 */
#ifndef ZCSL_MONITOR_H
#define ZCSL_MONITOR_H

#include <pthread.h>

#include <iterator>

#include "support/zcsl_owners.h"
#include "support/zcsl_thread_internal.h"

/* Ends the first `count` conditions and the mutex; the block stays. */
template <class Lock>
void monitor_end(Lock* lock, size_t count) {
  while (count > 0) pthread_cond_destroy(&lock->conditions[--count]);
  pthread_mutex_destroy(&lock->mutex);
}

/* Starts the mutex and all conditions; a failure leaves nothing started. Returns a POSIX result. */
template <class Lock>
int monitor_start(Lock* lock) {
  if (const int failure = pthread_mutex_init(&lock->mutex, nullptr)) return failure;
  size_t done = 0;
  for (pthread_cond_t& condition : lock->conditions) {
    if (const int failure = pthread_cond_init(&condition, nullptr)) {
      monitor_end(lock, done);
      return failure;
    }
    ++done;
  }
  return 0;
}

template <class Lock>
zvsdk_status monitor_create(Lock** lock) {
  if (!lock) return thread_logged(thread_error(zcsl_code_invalid_arg));
  zcsl_block_owner<Lock> made(static_cast<Lock*>(zcsl_memory_calloc(1, sizeof(Lock))));
  if (!made) return thread_logged(thread_error(zcsl_code_no_memory));
  if (const int failure = monitor_start(made.get())) {
    return thread_logged(_thread_map_error(failure));
  }
  *lock = made.release();
  return 0;
}

template <class Lock>
void monitor_delete(Lock* lock) {
  monitor_end(lock, std::size(lock->conditions));
  zcsl_memory_free(lock);
}

/* One operation: `work` runs under the mutex. Its status is the result, or that of the mutex. */
template <class Lock, class Work>
zvsdk_status monitor_operate(Lock* lock, Work work, uint32_t line = __builtin_LINE()) {
  if (!lock) return thread_logged(thread_error(zcsl_code_invalid_arg), line);
  if (const int failure = pthread_mutex_lock(&lock->mutex)) {
    return thread_logged(_thread_map_error(failure), line);
  }
  const zvsdk_status status = work();
  const zvsdk_status unlocked = _thread_map_error(pthread_mutex_unlock(&lock->mutex));
  return thread_logged(status ? status : unlocked, line);
}

/* Waits on a condition while `blocked()`, counted in `waiting`. The mutex is held. */
template <class Count, class Blocked>
zvsdk_status monitor_wait(pthread_cond_t* condition, pthread_mutex_t* mutex, Count* waiting,
                          Blocked blocked) {
  while (blocked()) {
    ++*waiting;
    const int failure = pthread_cond_wait(condition, mutex);
    --*waiting;
    if (failure) return _thread_map_error(failure);
  }
  return 0;
}

#endif
