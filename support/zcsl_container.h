/*
 * zcsl_container.h: what every container operation has in common, written once: the checks of the
 * handle and the required pointers, the magic, the lock around the work, the log line for an error.
 * Also how a container is made and ended. Internal.
 *
 * A container is a record with the constants `alive` (its magic) and `source` (its name in the log)
 * and the fields `magic` and `lock`; the lock is null in a container that is not thread-safe.
 */
#ifndef ZCSL_CONTAINER_H
#define ZCSL_CONTAINER_H

#include <new>
#include <type_traits>

#include "support/zcsl_error.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_log.h"
#include "support/zcsl_module.h"
#include "support/zcsl_thread.h"

enum class zcsl_access { write, read };

/* The guard of a lock for an access: a critsec knows one kind of holder, a read-write lock two. */
template <zcsl_access Access, class Lock>
struct zcsl_container_guard;
template <zcsl_access Access>
struct zcsl_container_guard<Access, zcsl_critsec> {
  using type = zcsl_critsec_guard;
};
template <>
struct zcsl_container_guard<zcsl_access::read, zcsl_rwlock> {
  using type = zcsl_read_guard;
};
template <>
struct zcsl_container_guard<zcsl_access::write, zcsl_rwlock> {
  using type = zcsl_write_guard;
};

inline zvsdk_status zcsl_container_lock_create(zcsl_critsec** lock) {
  return zcsl_thread_critsec_create(lock);
}
inline zvsdk_status zcsl_container_lock_create(zcsl_rwlock** lock) {
  return zcsl_thread_rwlock_create(lock);
}
inline zvsdk_status zcsl_container_lock_delete(zcsl_critsec* lock) {
  return zcsl_thread_critsec_delete(lock);
}
inline zvsdk_status zcsl_container_lock_delete(zcsl_rwlock* lock) {
  return zcsl_thread_rwlock_delete(lock);
}

/* Passes a status through and logs it when it is an error. */
template <class Container>
zvsdk_status zcsl_container_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, Container::source);
}

/* The checks before the lock. `arguments` says that every other required pointer is there. */
template <class Container>
zvsdk_status zcsl_container_check(const Container* container, zvsdk_status bad_magic,
                                  bool arguments) {
  if (!container || !arguments) return zcsl_error_invalid_arg;
  return container->magic == Container::alive ? 0 : bad_magic;
}

/* Runs `work` under the lock, if there is one. A failure of the lock is the result. */
template <zcsl_access Access = zcsl_access::write, class Container, class Work>
zvsdk_status zcsl_container_locked(Container* container, Work&& work) {
  using lock_type = std::remove_pointer_t<decltype(container->lock)>;
  typename zcsl_container_guard<Access, lock_type>::type guard(container->lock);
  return guard.status() ? guard.status() : work();
}

/* One whole operation: check, lock, work, unlock, log. */
template <zcsl_access Access = zcsl_access::write, class Container, class Work>
zvsdk_status zcsl_container_operate(Container* container, zvsdk_status bad_magic, bool arguments,
                                    Work&& work, uint32_t line = __builtin_LINE()) {
  zvsdk_status status = zcsl_container_check(container, bad_magic, arguments);
  if (!status) status = zcsl_container_locked<Access>(container, work);
  return zcsl_container_logged<Container>(status, line);
}

/* The count of a kind of container whose null handle counts 0. */
template <class Container>
zvsdk_status zcsl_container_count(Container* container, uint32_t* count,
                                  uint32_t line = __builtin_LINE()) {
  const auto read_count = [&] {
    *count = container ? container->count : 0;
    return zvsdk_status{0};
  };
  if (!container && count) return read_count();
  return zcsl_container_operate(container, zcsl_error_bad_magic, count != nullptr, read_count,
                                line);
}

/* A new record without a lock, its fields at their initial values. */
template <class Container>
zvsdk_status zcsl_container_make(Container** made) {
  if (!zcsl_datatypes_initchecks()) return zcsl_error_not_initialized;
  if (!made) return zcsl_error_invalid_arg;
  void* block = zcsl_memory_alloc(sizeof(Container));
  if (!block) return zcsl_error_no_memory;
  *made = ::new (block) Container;
  return 0;
}

/* Ends a record whose contents are gone. The magic goes first, so that a stale handle is refused.
 */
template <class Container>
void zcsl_container_free(Container* container) {
  container->magic = 0;
  zcsl_memory_free(container);
}

/* The end of a delete: the lock, then the record. A lock that somebody else holds stops it. */
template <class Container>
zvsdk_status zcsl_container_end(Container* container) {
  if (const zvsdk_status failure = zcsl_container_lock_delete(container->lock)) return failure;
  zcsl_container_free(container);
  return 0;
}

/* A whole create. `initialize` fills the fields; the output is written only on success. */
template <class Container, class Initialize>
zvsdk_status zcsl_container_create(Container** output, bool threadsafe, Initialize&& initialize,
                                   uint32_t line = __builtin_LINE()) {
  Container* made = nullptr;
  zvsdk_status status = zcsl_container_make(output ? &made : nullptr);
  if (!status && threadsafe) {
    status = zcsl_container_lock_create(&made->lock);
    if (status) zcsl_container_free(made);
  }
  if (status) return zcsl_container_logged<Container>(status, line);
  initialize(made);
  *output = made;
  return 0;
}

#endif
