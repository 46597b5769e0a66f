// The thread module's own start and stop, the mapping of platform results, and the spinlock.

#include "support/zcsl_thread.h"

#include <cerrno>

#include "support/zcsl_mapped_result.h"
#include "support/zcsl_module_internal.h"
#include "support/zcsl_thread_internal.h"

namespace {

constexpr zcsl_mapped_result s_mapped_results[] = {
    {0, 0},
    {EPERM, thread_error(zcsl_code_not_permitted)},
    {ESRCH, thread_error(zcsl_code_not_found)},
    {EINTR, thread_error(zcsl_code_interrupted)},
    {EAGAIN, thread_error(zcsl_code_try_again)},
    {ENOMEM, thread_error(zcsl_code_no_memory)},
    {EFAULT, thread_error(zcsl_code_invalid_arg)},
    {EINVAL, thread_error(zcsl_code_invalid_arg)},
    {EOPNOTSUPP, thread_error(zcsl_code_invalid_arg)},
    {EBUSY, thread_error(zcsl_code_busy)},
    {EDEADLK, thread_error(zcsl_code_deadlock)},
    {ETIMEDOUT, zcsl_error_timed_out},
};

bool s_store_key_is_ours = false;  // guarded by the thread module's lock

// The variable says "no key" with 0, which is also the first key of the platform: pass that one by.
int make_nonzero_key(pthread_key_t* key) {
  if (const int failure = pthread_key_create(key, nullptr)) return failure;
  if (*key != 0) return 0;
  const int failure = pthread_key_create(key, nullptr);
  pthread_key_delete(0);
  return failure;
}

template <class Work>
zvsdk_status with_spinlock(zcsl_spinlock* lock, Work work) {
  if (!lock) return ZCSL_ERROR(zcsl_package_atomic, zcsl_code_invalid_arg);
  work(&lock->mutex);
  return 0;
}

}  // namespace

zvsdk_status _thread_map_error(int result) {
  return zcsl_mapped_status(s_mapped_results, result, thread_error(zcsl_code_unexpected));
}

zvsdk_status zcsl_thread_store_start() {
  if (__atomic_load_n(&g_zcsl_thread_store_key, __ATOMIC_RELAXED) != 0) return 0;
  pthread_key_t key = 0;
  if (const int failure = make_nonzero_key(&key)) return thread_logged(_thread_map_error(failure));
  s_store_key_is_ours = true;
  __atomic_store_n(&g_zcsl_thread_store_key, key, __ATOMIC_RELAXED);
  return 0;
}

zvsdk_status zcsl_thread_store_stop() {
  if (!s_store_key_is_ours) return 0;
  s_store_key_is_ours = false;
  const pthread_key_t key = __atomic_exchange_n(&g_zcsl_thread_store_key, 0, __ATOMIC_RELAXED);
  return thread_logged(_thread_map_error(pthread_key_delete(key)));
}

zvsdk_status zcsl_spinlock_init(zcsl_spinlock* lock) {
  return with_spinlock(lock, [](pthread_mutex_t* mutex) { pthread_mutex_init(mutex, nullptr); });
}

zvsdk_status zcsl_spinlock_lock(zcsl_spinlock* lock) {
  return with_spinlock(lock, pthread_mutex_lock);
}

zvsdk_status zcsl_spinlock_unlock(zcsl_spinlock* lock) {
  return with_spinlock(lock, pthread_mutex_unlock);
}

zvsdk_status zcsl_spinlock_delete(zcsl_spinlock* lock) {
  return lock ? with_spinlock(lock, pthread_mutex_destroy) : 0;
}
