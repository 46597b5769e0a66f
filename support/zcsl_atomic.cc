// The atomics: every operation is one critical section under a mutex of the whole process.

#include "support/zcsl_atomic.h"

#include <pthread.h>

#include "support/zcsl_error.h"
#include "support/zcsl_module_internal.h"
#include "support/zcsl_output.h"

namespace {

// Works without the atomic module: a zero-filled mutex is an unlocked one.
pthread_mutex_t s_atomic_mutex = PTHREAD_MUTEX_INITIALIZER;

zvsdk_status mutex_status(int result) {
  return result ? ZCSL_ERROR(zcsl_package_atomic, 0x3C) : 0;
}

template <class Work>
zvsdk_status atomically(bool arguments, Work work) {
  if (!arguments) return ZCSL_ERROR(zcsl_package_atomic, zcsl_code_invalid_arg);
  if (const zvsdk_status failure = mutex_status(pthread_mutex_lock(&s_atomic_mutex))) {
    return failure;
  }
  work();
  return mutex_status(pthread_mutex_unlock(&s_atomic_mutex));
}

// Adds, wrapping, and gives the sum.
zvsdk_status step(uint32_t* target, uint32_t addition, uint32_t* sum) {
  return atomically(target, [=] {
    *target += addition;
    zcsl_give(sum, *target);
  });
}

}  // namespace

zvsdk_status zcsl_atomic_mutex_start() {
  return mutex_status(pthread_mutex_init(&s_atomic_mutex, nullptr));
}

// Leaves the mutex as it was before the start, for those who never start the module.
zvsdk_status zcsl_atomic_mutex_stop() {
  const zvsdk_status status = mutex_status(pthread_mutex_destroy(&s_atomic_mutex));
  if (status == 0) s_atomic_mutex = PTHREAD_MUTEX_INITIALIZER;
  return status;
}

zvsdk_status zcsl_atomic_set(uint32_t* target, uint32_t value) {
  return atomically(target, [=] { *target = value; });
}

zvsdk_status zcsl_atomic_add(uint32_t* target, uint32_t value) {
  return step(target, value, nullptr);
}

zvsdk_status zcsl_atomic_read(uint32_t* target, uint32_t* value) {
  return atomically(target, [=] { zcsl_give(value, *target); });
}

zvsdk_status zcsl_atomic_inc(uint32_t* target, uint32_t* new_value) {
  return step(target, 1, new_value);
}

zvsdk_status zcsl_atomic_dec(uint32_t* target, uint32_t* new_value) {
  return step(target, ~uint32_t{0}, new_value);
}

zvsdk_status zcsl_atomic_cas(uint32_t* target, uint32_t expected, uint32_t new_value,
                             uint8_t* swapped) {
  return atomically(target && swapped, [=] {
    *swapped = *target == expected;
    if (*swapped) *target = new_value;
  });
}

zvsdk_status zcsl_atomicPtr_read(void** target, void** value) {
  return atomically(target, [=] { zcsl_give(value, *target); });
}

zvsdk_status zcsl_atomicPtr_exchange(void** target, void* new_value, void** old_value) {
  return atomically(target, [=] {
    zcsl_give(old_value, *target);
    *target = new_value;
  });
}
