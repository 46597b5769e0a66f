// library.h: the library's C interface as C++ has it: owners that release what they hold, and
// failures as exceptions.
#ifndef ZVPLAYLIST_LIBRARY_H
#define ZVPLAYLIST_LIBRARY_H

#include <memory>
#include <stdexcept>
#include <string>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

namespace zvplaylist {

class library_error : public std::runtime_error {
 public:
  library_error(zvsdk_status status, const std::string& what)
      : std::runtime_error(what), status_(status) {}
  zvsdk_status status() const { return status_; }

 private:
  zvsdk_status status_;
};

// Throws unless the status is a success: the message that the library recorded for the failure, or
// failing that `what` with the code.
void check(zvsdk_status status, const char* what);

// Releases a handle with its own call.
template <auto release>
struct handle_release {
  template <typename T>
  void operator()(T* handle) const {
    release(handle);
  }
};
template <typename T, auto release>
using unique_handle = std::unique_ptr<T, handle_release<release>>;

using unique_manager = unique_handle<zvsdk_sdkmanager, zvsdk_manager_release>;
using unique_user = unique_handle<zvsdk_user, zvsdk_manager_user_release>;
using unique_zdo = unique_handle<zvsdk_zdo, zvsdk_manager_zdo_release>;
using unique_collection = unique_handle<playlist_collection, zvsdk_playlist_collection_release>;
using unique_results = unique_handle<playlist_results, zvsdk_playlist_results_release>;
using unique_text = unique_handle<const char, zvsdk_manager_handle_release>;

}  // namespace zvplaylist

#endif
