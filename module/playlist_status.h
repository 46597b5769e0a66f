/*
 * playlist_status.h: what this module's floors share about statuses.
 */
#ifndef PLAYLIST_STATUS_H
#define PLAYLIST_STATUS_H

#include "zvsdk_playlist.h"

/* The package where a code has it; alone it is the code of a log line that tells of no failure. */
inline constexpr uint32_t playlist_package_code = uint32_t{zvsdk_package_playlist} << 16;

/* The outcome "no such ident, element, row or collection", whatever the package. */
inline bool playlist_is_not_found(zvsdk_status status) {
  return zvsdk_low_word(status) == zvsdk_low_word(playlist_warn_not_found);
}

#endif
