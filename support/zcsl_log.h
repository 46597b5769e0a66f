/*
 * zcsl_log.h: the gate in front of the log callback. One mechanism for the support library and for
 * the playlist library: a code is logged when the bit of the level stands in the word of the code's
 * own package. Internal.
 */
#ifndef ZCSL_LOG_H
#define ZCSL_LOG_H

#include "zvsdk_runtime.h"

/* True when a line of this level about this code would reach the callback. */
inline bool zcsl_log_enabled(uint32_t code, uint32_t level) {
  return (__atomic_load_n(&g_zcsl_log_enabled_pkgs[zvsdk_package(code)], __ATOMIC_RELAXED) &
          level) != 0;
}

inline zcsl_log_callback zcsl_log_target() {
  return __atomic_load_n(&g_zcsl_log_callback, __ATOMIC_RELAXED);
}

/* One gated line; `format` is a printf format or null. */
template <class... Args>
void zcsl_log(uint32_t line, const char* source, uint32_t level, uint32_t code, const char* format,
              Args... args) {
  if (!zcsl_log_enabled(code, level)) return;
  if (zcsl_log_callback target = zcsl_log_target())
    target(line, source, level, code, format, args...);
}

/*
 * Passes a status through, logging it when it is an error: `return zcsl_logged(status, __LINE__,
 * "zcsl_vector2");`. Warnings and success are never logged.
 */
inline zvsdk_status zcsl_logged(zvsdk_status status, uint32_t line, const char* source) {
  if (zvsdk_is_error(status)) zcsl_log(line, source, zcsl_log_error, status, nullptr);
  return status;
}

#endif
