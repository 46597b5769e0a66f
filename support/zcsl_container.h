/*
 * zcsl_container.h: what every container operation has in common, written once: the checks of the
 * handle and the required pointers, the magic, the lock around the work, the log line for an error.
 * Also how a container is made and ended. Internal.
 *
 * A container is a record that begins with a zcsl_container_head and has the constant `source`, its
 * name in the log.
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

/* What a container asks of its lock: a critsec knows one kind of holder, a read-write lock two. */
template <class Lock>
struct zcsl_lock_traits;
template <>
struct zcsl_lock_traits<zcsl_critsec> {
  using read_guard = zcsl_critsec_guard;
  using write_guard = zcsl_critsec_guard;
  static constexpr auto create = zcsl_thread_critsec_create;
  static constexpr auto remove = zcsl_thread_critsec_delete;
};
template <>
struct zcsl_lock_traits<zcsl_rwlock> {
  using read_guard = zcsl_read_guard;
  using write_guard = zcsl_write_guard;
  static constexpr auto create = zcsl_thread_rwlock_create;
  static constexpr auto remove = zcsl_thread_rwlock_delete;
};

/* How a container's record begins. `alive` is its magic while it lives. */
template <uint32_t Alive, class Lock>
struct zcsl_container_head {
  static constexpr uint32_t alive = Alive;
  using lock_traits = zcsl_lock_traits<Lock>;

  uint32_t magic = Alive;
  Lock* lock = nullptr; /* null in a container that is not thread-safe */
};

/* Passes a status through and logs it when it is an error. */
template <class Container>
zvsdk_status zcsl_container_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, Container::source);
}

/* The checks before the lock. `arguments` says that every other required pointer is there. */
template <class Container>
zvsdk_status zcsl_container_check(const Container* container, bool arguments,
                                  zvsdk_status bad_magic = zcsl_error_bad_magic) {
  if (!container || !arguments) return zcsl_error_invalid_arg;
  return container->magic == Container::alive ? 0 : bad_magic;
}

/* Runs `work` under the lock, if there is one. A failure of the lock is the result. */
template <zcsl_access Access = zcsl_access::write, class Container, class Work>
zvsdk_status zcsl_container_locked(Container* container, Work&& work) {
  using traits = typename Container::lock_traits;
  std::conditional_t<Access == zcsl_access::read, typename traits::read_guard,
                     typename traits::write_guard>
      guard(container->lock);
  return guard.status() ? guard.status() : work();
}

/* One whole operation: check, lock, work, unlock, log. */
template <zcsl_access Access = zcsl_access::write, class Container, class Work>
zvsdk_status zcsl_container_operate(Container* container, zvsdk_status bad_magic, bool arguments,
                                    Work&& work, uint32_t line = __builtin_LINE()) {
  zvsdk_status status = zcsl_container_check(container, arguments, bad_magic);
  if (!status) status = zcsl_container_locked<Access>(container, work);
  return zcsl_container_logged<Container>(status, line);
}

/* The same with the code that most operations give for a wrong magic. */
template <zcsl_access Access = zcsl_access::write, class Container, class Work>
zvsdk_status zcsl_container_operate(Container* container, bool arguments, Work&& work,
                                    uint32_t line = __builtin_LINE()) {
  return zcsl_container_operate<Access>(container, zcsl_error_bad_magic, arguments, work, line);
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

/* Ends a record whose contents are gone. The magic goes first: a stale handle is refused. */
template <class Container>
void zcsl_container_free(Container* container) {
  container->magic = 0;
  zcsl_memory_free(container);
}

/*
 * The end of a delete: the lock, then the array and the record. A lock that somebody else holds or
 * waits for stops it, and then nothing has gone.
 */
template <class Container>
zvsdk_status zcsl_container_end(Container* container, void* array = nullptr,
                                uint32_t line = __builtin_LINE()) {
  const zvsdk_status status = Container::lock_traits::remove(container->lock);
  if (!status) {
    zcsl_memory_free(array);
    zcsl_container_free(container);
  }
  return zcsl_container_logged<Container>(status, line);
}

/*
 * A whole create. `initialize` fills the fields; when it fails it leaves nothing behind in them.
 * The output is written only on success.
 */
template <class Container, class Initialize>
zvsdk_status zcsl_container_create(Container** output, bool threadsafe, Initialize&& initialize,
                                   uint32_t line = __builtin_LINE()) {
  Container* made = nullptr;
  zvsdk_status status = zcsl_container_make(output ? &made : nullptr);
  if (!status && threadsafe) status = Container::lock_traits::create(&made->lock);
  if (!status) status = initialize(made);
  if (!status) {
    *output = made;
  } else if (made) {
    zcsl_container_end(made);
  }
  return zcsl_container_logged<Container>(status, line);
}

#endif
