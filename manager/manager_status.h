/*
 * manager_status.h: every status that the manager raises itself. The package is 0x08; the low words
 * are those of the modules above it, so that a status keeps its meaning when a module maps it to
 * its own package. Statuses of an application's callbacks and providers pass through unchanged.
 */
#ifndef MANAGER_STATUS_H
#define MANAGER_STATUS_H

#include "zvsdk_types.h"

namespace manager {

inline constexpr uint32_t status_package = 0x08;

constexpr zvsdk_status make_error(uint32_t code) {
  return 0x90000000u | (status_package << 16) | code;
}
constexpr zvsdk_status make_warning(uint32_t code) {
  return 0x10000000u | (status_package << 16) | code;
}

inline constexpr zvsdk_status status_ok = 0;
/* A null, empty or senseless argument; a handle that is null, stale, foreign or of another kind. */
inline constexpr zvsdk_status error_invalid_arg = make_error(0x01);
inline constexpr zvsdk_status error_no_memory = make_error(0x02);
/* A named thing is absent: a table, list, element, row, key, parent. An ordinary outcome. */
inline constexpr zvsdk_status warn_not_found = make_warning(0x03);
/* The call must wait until handles or blocks that still live are given back. */
inline constexpr zvsdk_status error_busy = make_error(0x06);
/* The host does not run. */
inline constexpr zvsdk_status error_not_initialized = make_error(0x07);
/* The object or this host has no such operation. */
inline constexpr zvsdk_status error_unsupported = make_error(0x0B);
/* A document, data file or description that cannot be used; the error record says why. */
inline constexpr zvsdk_status error_bad_data = make_error(0x0C);
/* A fault inside the manager. */
inline constexpr zvsdk_status error_internal = make_error(0x3C);
/* No locale is loaded for the group, or the data have no such language. */
inline constexpr zvsdk_status error_no_locale = make_error(0x2D3);
/* The object is registered already. */
inline constexpr zvsdk_status error_exists = make_error(0x368);

}  // namespace manager

#endif
