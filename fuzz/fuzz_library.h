// What the fuzzers of the library share: a check that ends the run, and the library started once.
#ifndef FUZZ_LIBRARY_H
#define FUZZ_LIBRARY_H

#include <cstdlib>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

// A finding, unless it holds.
inline void require(bool holds) {
  if (!holds) std::abort();
}

// The libraries with a locale and a user, up for the whole run.
struct started_library {
  zvsdk_user* user = nullptr;

  started_library() {
    zvsdk_sdkmanager* manager = nullptr;
    require(zvsdk_manager_create(nullptr, &manager) == 0);
    require(zvsdk_playlist_initialize(manager) == 0);
    zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr);
    require(zvsdk_manager_user_create("fuzzer", &user) == 0);
  }
};

#endif
