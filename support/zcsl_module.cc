// The module pattern: one counted start and stop for all modules, and the chain of what each of
// them starts. A module is a lock, a count and a list of steps; its exported functions are made
// from the list by a macro, because their names are all that differs.

#include "support/zcsl_module.h"

#include <atomic>
#include <span>

#include "support/zcsl_guards.h"
#include "support/zcsl_module_internal.h"
#include "zvsdk_runtime.h"

namespace {

struct zcsl_module_step {
  zvsdk_status (*start)();
  zvsdk_status (*stop)();
};

using zcsl_module_steps = std::span<const zcsl_module_step>;

struct zcsl_module {
  zcsl_module_steps steps;           // in the order of the start
  zcsl_spinlock& initlock;           // zero-filled: valid before any code has run
  std::atomic<uint32_t>& initcount;  // written under the lock, read without it
};

// Both walks leave things as they were when a step fails.
zvsdk_status start_steps(zcsl_module_steps steps) {
  for (size_t done = 0; done < steps.size(); ++done) {
    if (const zvsdk_status failure = steps[done].start()) {
      while (done-- > 0) steps[done].stop();
      return failure;
    }
  }
  return 0;
}

zvsdk_status stop_steps(zcsl_module_steps steps) {
  for (size_t left = steps.size(); left > 0; --left) {
    if (const zvsdk_status failure = steps[left - 1].stop()) {
      for (; left < steps.size(); ++left) steps[left].start();
      return failure;
    }
  }
  return 0;
}

zvsdk_status module_initialize(const zcsl_module& module) {
  zcsl_spin_guard guard(&module.initlock);
  const uint32_t count = module.initcount.load(std::memory_order_relaxed);
  if (count == 0 && start_steps(module.steps)) return zcsl_module_start_failed;
  module.initcount.store(count + 1, std::memory_order_release);
  return 0;
}

zvsdk_status module_shutdown(const zcsl_module& module) {
  zcsl_spin_guard guard(&module.initlock);
  const uint32_t count = module.initcount.load(std::memory_order_relaxed);
  if (count == 0) return zcsl_module_not_started;
  if (count == 1) {
    if (const zvsdk_status failure = stop_steps(module.steps)) return failure;
  }
  module.initcount.store(count - 1, std::memory_order_relaxed);
  return 0;
}

// A thread that sees a module up also sees what its start has made.
uint32_t module_initchecks(const zcsl_module& module) {
  return module.initcount.load(std::memory_order_acquire);
}

constexpr char s_version[] = ZVSDK_VERSION;
constexpr char s_build_date[] = __DATE__;

}  // namespace

#define STEPS_OF(module) \
  { zcsl_##module##_initialize, zcsl_##module##_shutdown }

#define DEFINE_MODULE(module, ...)                                                       \
  static constexpr zcsl_module_step s_steps_##module[] = {__VA_ARGS__};                  \
  static constinit zcsl_spinlock _g_initlock_##module{};                                 \
  static constinit std::atomic<uint32_t> _g_initcount_##module{0};                       \
  static constexpr zcsl_module s_module_##module{s_steps_##module, _g_initlock_##module, \
                                                 _g_initcount_##module};                 \
  zvsdk_status zcsl_##module##_initialize() {                                            \
    return module_initialize(s_module_##module);                                         \
  }                                                                                      \
  zvsdk_status zcsl_##module##_shutdown() {                                              \
    return module_shutdown(s_module_##module);                                           \
  }                                                                                      \
  uint32_t zcsl_##module##_initchecks() {                                                \
    return module_initchecks(s_module_##module);                                         \
  }                                                                                      \
  const char* zcsl_##module##_get_version() {                                            \
    return s_version;                                                                    \
  }                                                                                      \
  const char* zcsl_##module##_get_build_date() {                                         \
    return s_build_date;                                                                 \
  }

// clang-format off
DEFINE_MODULE(datatypes, STEPS_OF(memory), STEPS_OF(thread), STEPS_OF(string), STEPS_OF(random))
DEFINE_MODULE(random, STEPS_OF(fs))
DEFINE_MODULE(fs, STEPS_OF(memory), STEPS_OF(thread), STEPS_OF(string), STEPS_OF(iostream),
              {zcsl_fs_mgr_start, zcsl_fs_mgr_stop})
DEFINE_MODULE(string, STEPS_OF(memory))
DEFINE_MODULE(time, STEPS_OF(memory), STEPS_OF(string))
DEFINE_MODULE(iostream, STEPS_OF(memory))
DEFINE_MODULE(thread, STEPS_OF(memory), {zcsl_thread_store_start, zcsl_thread_store_stop})
DEFINE_MODULE(atomic, {zcsl_atomic_mutex_start, zcsl_atomic_mutex_stop})
// clang-format on
