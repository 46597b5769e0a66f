/*
 * zcsl_thread_internal.h: from the platform's results to status codes, and the read lock of a
 * thread that holds others. Internal.
 */
#ifndef ZCSL_THREAD_INTERNAL_H
#define ZCSL_THREAD_INTERNAL_H

#include "support/zcsl_error.h"
#include "support/zcsl_log.h"
#include "support/zcsl_thread.h"

/* The status for what a POSIX call returned; 0 for 0. */
zvsdk_status _thread_map_error(int result);

/* Passes a status of the thread family through and logs it when it is an error. */
inline zvsdk_status thread_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_thread");
}

constexpr zvsdk_status thread_error(uint32_t code) {
  return ZCSL_ERROR(zcsl_package_thread, code);
}

/*
 * A read lock for a thread that holds other read locks, perhaps this very one: it passes writers
 * that only wait. So such a thread never waits for anybody but a writer at work, who waits for
 * nobody, and no order among the locks is needed to keep threads from waiting for each other.
 */
zvsdk_status zcsl_thread_rwlock_readlock_nested(zcsl_rwlock* lock);

#endif
