/*
 * storage_status.h: the statuses of the storage service, by the low words of zvsdk_manager.h, and
 * the exception that carries one with a message.
 */
#ifndef STORAGE_STATUS_H
#define STORAGE_STATUS_H

#include "manager/guard.h"

namespace manager::storage {

inline constexpr zvsdk_status warn_missing = make_warning(ZVSDK_STORAGE_MISSING);
inline constexpr zvsdk_status warn_end = make_warning(ZVSDK_STORAGE_END);
inline constexpr zvsdk_status error_not_open = make_error(ZVSDK_STORAGE_NOT_OPEN);
inline constexpr zvsdk_status error_foreign = make_error(ZVSDK_STORAGE_FOREIGN);
inline constexpr zvsdk_status error_damaged = make_error(ZVSDK_STORAGE_DAMAGED);
inline constexpr zvsdk_status error_read_only = make_error(ZVSDK_STORAGE_READ_ONLY);
inline constexpr zvsdk_status error_full = make_error(ZVSDK_STORAGE_FULL);
inline constexpr zvsdk_status error_io = make_error(ZVSDK_STORAGE_IO);
inline constexpr zvsdk_status error_locked = make_error(ZVSDK_STORAGE_BUSY);

/* Says which file, what is wrong with it and what to do. */
[[noreturn]] inline void fail(zvsdk_status status, const std::string& path, const std::string& what,
                              const std::string& advice) {
  throw status_error(status, "storage file \"" + path + "\" " + what + "; " + advice);
}

/* An argument that is refused with a word on why. */
inline void require(bool holds, const std::string& message) {
  if (!holds) throw status_error(error_invalid_arg, message);
}

}  // namespace manager::storage

#endif
