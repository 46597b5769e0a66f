// music.h: what the commands over tracks share: the options that say where the tracks come from and
// where the playlist goes, the reading of all sources into a catalog and a session, the finding of
// a track by ident. Stored collections are joined as they are; the catalog gets a track of theirs
// when it is asked for. Order of use: construct, read, then the rest.
#ifndef ZVPLAYLIST_MUSIC_H
#define ZVPLAYLIST_MUSIC_H

#include <string>
#include <vector>

#include "tools/catalog.h"
#include "tools/command.h"
#include "tools/output.h"
#include "tools/record.h"
#include "tools/session.h"

namespace zvplaylist {

struct music_options {
  std::vector<std::string> collections;
  std::string store;
  std::vector<std::string> folders;
  std::vector<std::string> catalogs;
  std::vector<std::string> mappings;
  std::string language = "eng";
  bool quiet = false;
};
// The options may be given in any order with those of the command itself.
void declare_music_options(CLI::App& app, music_options& options);
void declare_language_option(CLI::App& app, std::string& language);
void declare_output_option(CLI::App& app, std::string& output);
void declare_quiet_option(CLI::App& app, bool& quiet);
// --store, or ZVPLAYLIST_STORE.
void declare_store_option(CLI::App& app, std::string& folder);
void declare_map_option(CLI::App& app, std::vector<std::string>& mappings);

struct playlist_options {
  uint32_t random = 0;  // 0: another choice each time
  std::string format = "text";
  std::string output;
};
// Without the help there is no option for repeating random choices.
void declare_playlist_options(CLI::App& app, playlist_options& options,
                              const char* random_help = nullptr);

// For documents other than playlists, in text or json.
void declare_document_options(CLI::App& app, std::string& format, std::string& output);

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
