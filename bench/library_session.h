// The libraries as a bench program needs them: started once and never stopped, and calls that end
// the program when they fail.
#ifndef LIBRARY_SESSION_H
#define LIBRARY_SESSION_H

#include <cstdio>
#include <cstdlib>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

// Ends the program, telling what failed, unless the status is a success or a warning.
inline void must(zvsdk_status status, const char* what) {
  if (!zvsdk_is_error(status)) return;
  zvsdk_error_info info = {};
  zvsdk_manager_errorinfo_get_message(&info);
  std::fprintf(stderr, "%s: 0x%08X %s\n", what, status, info.message ? info.message : "");
  std::exit(1);
}

// The host with its playlist locale, and the library over it; started by the first call.
inline zvsdk_sdkmanager* start_library() {
  static zvsdk_sdkmanager* const manager = [] {
    zvsdk_sdkmanager* started = nullptr;
    must(zvsdk_manager_create(nullptr, &started), "manager");
    must(zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr), "locale");
    must(zvsdk_playlist_initialize(started), "initialize");
    return started;
  }();
  return manager;
}

// An empty collection; the caller releases it or lets the program's end do so.
inline playlist_collection* make_collection() {
  start_library();
  playlist_collection* collection = nullptr;
  must(zvsdk_playlist_collection_create("bench", &collection), "create");
  return collection;
}

#endif
