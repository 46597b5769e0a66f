// command.h: what the subcommands share with main: the exit codes, the errors that end a run, and
// the table of subcommands. A subcommand is a function of a file cmd_....cc, alone or with its
// like, that declares its options on a CLI11 subcommand and hands back what is to run once the line
// is parsed.
#ifndef ZVPLAYLIST_COMMAND_H
#define ZVPLAYLIST_COMMAND_H

#include <functional>
#include <stdexcept>
#include <string>

namespace CLI {
class App;
}

namespace zvplaylist {

enum exit_code {
  exit_fine = 0,
  exit_no_match = 1,
  exit_usage = 2,
  exit_bad_input = 3,
  exit_storage = 4,
  exit_interrupted = 130,  // as shells have it: 128 and the signal
  exit_terminated = 143,
};

// Ends the run with a message and an exit code.
class failure : public std::runtime_error {
 public:
  failure(exit_code code, const std::string& what) : std::runtime_error(what), code_(code) {}
  exit_code code() const { return code_; }

 private:
  exit_code code_;
};

using action = std::function<exit_code()>;

struct command {
  const char* name;
  const char* summary;
  action (*declare)(CLI::App& app);
};

action declare_generate(CLI::App& app);
action declare_like(CLI::App& app);
action declare_info(CLI::App& app);
action declare_validate(CLI::App& app);
action declare_explain(CLI::App& app);
action declare_scan(CLI::App& app);
action declare_import(CLI::App& app);
action declare_collections(CLI::App& app);
action declare_show(CLI::App& app);
action declare_rename(CLI::App& app);
action declare_remove(CLI::App& app);
action declare_export(CLI::App& app);
action declare_load(CLI::App& app);
action declare_check(CLI::App& app);
action declare_compact(CLI::App& app);
action declare_grid(CLI::App& app);
action declare_lists(CLI::App& app);
action declare_attributes(CLI::App& app);

inline constexpr command commands[] = {
    {"generate", "Make a playlist with a statement", declare_generate},
    {"like", "Make a playlist of tracks that are like one of them", declare_like},
    {"grid", "Make a playlist of the tracks of a mood, by genre, era and origin", declare_grid},
    {"info", "Show what the library knows about one track", declare_info},
    {"scan", "Keep the tracks of folders as a collection, in step with them", declare_scan},
    {"import", "Keep the tracks of catalogs as a collection", declare_import},
    {"collections", "List the collections that are kept", declare_collections},
    {"show", "List the tracks of a collection", declare_show},
    {"rename", "Give a collection another name", declare_rename},
    {"remove", "Remove a collection, or tracks of it", declare_remove},
    {"export", "Write a collection to a file of its own", declare_export},
    {"load", "Keep the collection that such a file holds", declare_load},
    {"check", "Check what is kept", declare_check},
    {"compact", "Give back the room of what was removed", declare_compact},
    {"validate", "Say whether a statement is sound and needs a seed", declare_validate},
    {"explain", "Show why a statement chooses a track or not", declare_explain},
    {"lists", "Show the genres, moods and so on that a statement can name", declare_lists},
    {"attributes", "List the attributes that a statement can name", declare_attributes},
};

}  // namespace zvplaylist

#endif
