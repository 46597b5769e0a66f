// session.h: the library for the length of one run: manager, module, user, one collection. Order of
// use: construct, add tracks, generate. Everything is released in reverse by the destructor. A call
// that fails throws library_error with the library's own message.
#ifndef ZVPLAYLIST_SESSION_H
#define ZVPLAYLIST_SESSION_H

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/track.h"
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

// One place of a playlist.
struct ranked_ident {
  std::string ident;
  int32_t score;
};

class session {
 public:
  session();

  void add(const track& entry);
  // The same order on every run; not 0.
  void set_random(uint32_t number);
  // `seed` is what SEED stands for, or null.
  std::vector<ranked_ident> generate(const std::string& statement, const track* seed);
  std::vector<std::string> attributes() const;

 private:
  struct module {
    explicit module(zvsdk_sdkmanager* manager);
    ~module() { zvsdk_playlist_shutdown(); }
    module(const module&) = delete;
    module& operator=(const module&) = delete;
  };

  unique_manager manager_;
  unique_user user_;
  std::unique_ptr<module> module_;
  unique_collection collection_;
};

}  // namespace zvplaylist

#endif
