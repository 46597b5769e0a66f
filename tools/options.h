// options.h: the options that commands share. They may be given in any order with those of the
// command itself.
#ifndef ZVPLAYLIST_OPTIONS_H
#define ZVPLAYLIST_OPTIONS_H

#include <cstdint>
#include <string>
#include <vector>

#include "tools/command.h"

namespace zvplaylist {

// Where tracks come from.
struct music_options {
  std::vector<std::string> collections;
  std::string store;
  std::vector<std::string> folders;
  std::vector<std::string> catalogs;
  std::vector<std::string> mappings;
  std::string language = "eng";
  bool quiet = false;
};
void declare_music_options(CLI::App& app, music_options& options);

// Where a playlist goes.
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

void declare_language_option(CLI::App& app, std::string& language);
void declare_output_option(CLI::App& app, std::string& output);
void declare_quiet_option(CLI::App& app, bool& quiet);
// --store, or ZVPLAYLIST_STORE.
void declare_store_option(CLI::App& app, std::string& folder);
void declare_map_option(CLI::App& app, std::vector<std::string>& mappings);

// An option that may be given any number of times, with one value each time.
void declare_repeatable(CLI::App& app, const char* name, std::vector<std::string>& target,
                        const char* type, const std::string& help);
// An option whose value is a number above 0.
void declare_count(CLI::App& app, const char* name, uint32_t& target, const char* help);

}  // namespace zvplaylist

#endif
