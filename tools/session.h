// session.h: the library for the length of one run: manager, module, user, one collection. Order of
// use: construct, add tracks, generate or read. Everything is released in reverse by the
// destructor. A call that fails throws library_error with the library's own message.
#ifndef ZVPLAYLIST_SESSION_H
#define ZVPLAYLIST_SESSION_H

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tools/media_values.h"
#include "tools/term_lists.h"
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

// One place of a playlist.
struct ranked_ident {
  std::string ident;
  int32_t score;
};

class session {
 public:
  // Names and display texts are in this language ("eng", "de", ...). One that no list has is a
  // usage failure.
  explicit session(const std::string& language);

  // Returns what no list knows of it, as texts like "unknown genre 'Foo'".
  std::vector<std::string> add(const track& entry);
  // Options of the collection: ZVSDK_PLAYLIST_OPTION_..., to a number that is not 0.
  void set_option(const char* option, uint32_t number);
  // `seed` is the ident of the track that SEED stands for, or empty. It is left out.
  std::vector<ranked_ident> generate(const std::string& statement, const std::string& seed);
  std::vector<ranked_ident> more_like(const std::string& seed);
  // Whether a statement needs a seed. Looks at no track, but at all that the statement says.
  bool validate(const std::string& statement);
  // The tree of a statement as it is evaluated for a track; empty if there is no such track.
  std::string analyze(const std::string& statement, const std::string& ident);

  std::vector<std::string> attributes() const;
  // Every attribute that the collection carries, also those without a value for this track.
  std::vector<attribute_values> values_of(const std::string& ident);
  const term_lists& lists() const { return *lists_; }

 private:
  struct module {
    explicit module(zvsdk_sdkmanager* manager);
    ~module() { zvsdk_playlist_shutdown(); }
    module(const module&) = delete;
    module& operator=(const module&) = delete;
  };
  unique_zdo media(const std::string& ident);

  unique_manager manager_;
  unique_user user_;
  std::unique_ptr<term_lists> lists_;
  std::unique_ptr<module> module_;
  unique_collection collection_;
};

}  // namespace zvplaylist

#endif
