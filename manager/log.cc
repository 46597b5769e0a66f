// The log variables that every module reads, and the callback behind an application's log handler,
// which turns format and arguments into finished text.

#include <cstdarg>
#include <new>

#include "manager/binding.h"
#include "manager/formatted_text.h"
#include "manager/manager_status.h"
#include "zvsdk_manager.h"

zcsl_log_callback g_zcsl_log_callback = nullptr;
uint32_t g_zcsl_log_enabled_pkgs[zcsl_log_package_count] = {};
pthread_key_t g_zcsl_thread_store_key = 0;

namespace {

manager::binding<zvsdk_log_handler> s_handler;

void log_to_handler(uint32_t line, const char* source, uint32_t level, uint32_t code,
                    const char* format, ...) {
  const auto* target = s_handler.get();
  if (target == nullptr) return;
  va_list arguments;
  va_start(arguments, format);
  const manager::formatted_text text(format, arguments);
  va_end(arguments);
  target->function(target->context, level, code, line, source != nullptr ? source : "",
                   text.c_str());
}

void store_callback(zcsl_log_callback callback) {
  __atomic_store_n(&g_zcsl_log_callback, callback, __ATOMIC_RELAXED);
}

}  // namespace

zvsdk_status zvsdk_manager_log_handler_set(zvsdk_log_handler handler, void* context) try {
  if (handler == nullptr) store_callback(nullptr);
  s_handler.set(handler, context);
  if (handler != nullptr) store_callback(log_to_handler);
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
