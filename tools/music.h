// music.h: what the commands over tracks share: the reading of all sources into a catalog and a
// session, the finding of a track by ident, the writing of what comes out. Stored collections are
// joined as they are; the catalog gets a track of theirs when it is asked for. Order of use:
// construct, read, then the rest.
#ifndef ZVPLAYLIST_MUSIC_H
#define ZVPLAYLIST_MUSIC_H

#include <string>
#include <vector>

#include "tools/catalog.h"
#include "tools/command.h"
#include "tools/options.h"
#include "tools/record.h"
#include "tools/session.h"

namespace zvplaylist {

class music {
 public:
  // Fails as wrong usage without a source, on a bad mapping and on an unknown language.
  explicit music(const music_options& options);

  // Reads all sources and reports what is wrong with them. False: there is no track at all.
  bool read();
  // Fails as "no match" with what may have been meant.
  const track& find(const std::string& ident);
  // Writes the playlist and tells how the command ends.
  exit_code write(const std::vector<ranked_ident>& idents, const playlist_options& options);
  // The same for a document that is no playlist.
  exit_code write(const std::string& document, const std::string& output) const;

  session& library() { return session_; }
  console& out() { return out_; }

 private:
  void join_collections();
  const track* look_up(const std::string& ident);
  // Of a hidden track nothing is known but the ident (collection.h).
  const track* listed(const std::string& ident);
  const track* nearest(const std::string& wanted);
  void take(track&& entry, const place& where);
  void count_input(const std::string& name, size_t usable);
  void summarize();

  const music_options& options_;
  column_map columns_;
  console out_;
  catalog catalog_;
  session session_;
  bool input_failed_ = false;
};

}  // namespace zvplaylist

#endif
