// session.h: the library for the length of one run: manager, module, user, a collection of the
// session's own, and collections that are joined to it. Order of use: construct, open or join
// stored collections, add tracks, generate or read. Everything is released in reverse by the
// destructor. A call that fails throws library_error with the library's own message.
#ifndef ZVPLAYLIST_SESSION_H
#define ZVPLAYLIST_SESSION_H

#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

#include "tools/details.h"
#include "tools/library.h"
#include "tools/media_values.h"
#include "tools/term_lists.h"
#include "tools/track.h"

namespace zvplaylist {

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

  // Takes a collection in the place of the session's own one, to change it. It will carry every
  // attribute of this program, whoever stored it; one with hidden tracks is kept as it is.
  void open(unique_collection collection);
  // For generating and reading. An ident that is known already is taken out of the collection in
  // memory; returns how many there were.
  size_t join(unique_collection stored);

  playlist_collection* own() const { return collection_.get(); }
  // Adds to the session's own collection. Returns what no list knows of the track, as texts like
  // "unknown genre 'Foo'".
  std::vector<std::string> add(const track& entry);
  // The same in the place of the track with its ident, which stays if the new one is refused. Those
  // who read a track see it at once, the own collection behind settle(): taking many tracks out at
  // once is far cheaper than one by one.
  std::vector<std::string> replace(const track& entry) { return add_to(replaced_.get(), entry); }
  // Returns the idents that an equal hash hid meanwhile: these tracks stay as they were.
  std::vector<std::string> settle();
  void remove(const std::string& ident);

  // These see all collections.
  bool holds(const std::string& ident) const;
  size_t size() const;  // not behind whole(), where joined tracks would count twice
  // The stamp that a track was added with.
  uint64_t stamp(const std::string& ident) const { return stamp_of(media(ident).get()); }
  // With what the collection holds for it.
  track track_of(const std::string& ident) const;
  // Every attribute that the collection carries, also those without a value for this track.
  std::vector<attribute_values> values_of(const std::string& ident) const;

  // The collection to generate from: the one that holds `first`, or else the first that holds any
  // track, with all others joined to it. Settled by the first call behind a join.
  playlist_collection* whole(const std::string& first = "");
  // Options for generating: ZVSDK_PLAYLIST_OPTION_..., to a number that is not 0.
  void set_option(const char* option, uint32_t number) { options_.emplace_back(option, number); }
  // `seed` is the ident of the track that SEED stands for, or empty. It is left out.
  std::vector<ranked_ident> generate(const std::string& statement, const std::string& seed);
  std::vector<ranked_ident> more_like(const std::string& seed);
  // Whether a statement needs a seed. Looks at no track, but at all that the statement says.
  bool validate(const std::string& statement);
  // The tree of a statement as it is evaluated for a track; empty if there is no such track.
  std::string analyze(const std::string& statement, const std::string& ident);

  // Those that a statement can name.
  std::vector<std::string> attributes() const;
  const term_lists& lists() const { return *lists_; }

 private:
  struct module {
    explicit module(zvsdk_sdkmanager* manager);
    ~module() { zvsdk_playlist_shutdown(); }
    module(const module&) = delete;
    module& operator=(const module&) = delete;
  };
  // The object of a track in the first collection that holds it, which is handed out if wanted.
  unique_zdo media(const std::string& ident, playlist_collection** holder = nullptr) const;
  std::vector<playlist_collection*> all() const;
  // In the place of the track there with its ident.
  std::vector<std::string> add_to(playlist_collection* collection, const track& entry);
  void copy(playlist_collection* from, const std::vector<std::string>& idents,
            playlist_collection* into) const;
  unique_collection copy_of(playlist_collection* collection,
                            const std::vector<std::string>& idents) const;
  // The collection, or a copy, without the tracks that are to go. Hidden ones stay but in a copy.
  unique_collection without(unique_collection collection,
                            const std::unordered_set<std::string>& gone) const;
  // The whole with the options.
  playlist_collection* target(const std::string& seed);

  unique_manager manager_;
  unique_user user_;
  std::unique_ptr<term_lists> lists_;
  std::unique_ptr<module> module_;
  unique_collection collection_;
  unique_collection replaced_;  // tracks of the own one with their new values, until settle()
  std::vector<unique_collection> stored_;  // each ident is in one collection only
  std::vector<std::pair<const char*, uint32_t>> options_;
  playlist_collection* whole_ = nullptr;
};

}  // namespace zvplaylist

#endif
