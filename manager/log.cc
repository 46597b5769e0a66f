// The log variables that every module reads, and the callback behind an application's log handler,
// which turns format and arguments into finished text.
//
// A handler and its context are one immutable binding, exchanged as a whole. A binding that was
// replaced is kept until the process ends, because another thread may still be calling it.

#include <atomic>
#include <deque>
#include <mutex>
#include <new>

#include "manager/formatted_text.h"
#include "manager/manager_status.h"
#include "zvsdk_manager.h"

zcsl_log_callback g_zcsl_log_callback = nullptr;
uint32_t g_zcsl_log_enabled_pkgs[zcsl_log_package_count] = {};
pthread_key_t g_zcsl_thread_store_key = 0;

namespace {

struct handler_binding {
  zvsdk_log_handler handler;
  void* context;
};

std::mutex s_bindings_mutex;
std::deque<handler_binding> s_bindings;  // guarded by s_bindings_mutex
std::atomic<const handler_binding*> s_current{nullptr};

void log_to_handler(uint32_t line, const char* source, uint32_t level, uint32_t code,
                    const char* format, ...) {
  const handler_binding* binding = s_current.load(std::memory_order_acquire);
  if (binding == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  const manager::formatted_text text(format, arguments);
  va_end(arguments);
  binding->handler(binding->context, level, code, line, source != nullptr ? source : "",
                   text.c_str());
}

void store_callback(zcsl_log_callback callback) {
  __atomic_store_n(&g_zcsl_log_callback, callback, __ATOMIC_RELAXED);
}

}  // namespace

zvsdk_status zvsdk_manager_log_handler_set(zvsdk_log_handler handler, void* context) try {
  std::lock_guard lock(s_bindings_mutex);
  if (handler == nullptr) {
    store_callback(nullptr);
    s_current.store(nullptr, std::memory_order_release);
    return 0;
  }
  s_current.store(&s_bindings.emplace_back(handler_binding{handler, context}),
                  std::memory_order_release);
  store_callback(log_to_handler);
  return 0;
} catch (const std::bad_alloc&) {
  return manager::error_no_memory;
}

zvsdk_status zvsdk_manager_log_mask_set(uint32_t package, uint32_t levels) {
  if (package > zcsl_log_package_count) return manager::error_invalid_arg;
  const bool all = package == zcsl_log_package_count;
  const uint32_t first = all ? 0 : package;
  const uint32_t last = all ? zcsl_log_package_count - 1 : package;
  for (uint32_t i = first; i <= last; ++i) {
    __atomic_store_n(&g_zcsl_log_enabled_pkgs[i], levels, __ATOMIC_RELAXED);
  }
  return 0;
}
