// zvplaylist: a folder of music or a catalog in, playlists out.
#include <CLI/CLI.hpp>
#include <sstream>

#include "tools/command.h"
#include "tools/config.h"
#include "tools/console.h"
#include "tools/output.h"
#include "zvsdk_playlist.h"

namespace {

using namespace zvplaylist;

struct declared_command {
  CLI::App* app;
  action run;
};

std::vector<declared_command> declare_commands(CLI::App& app) {
  std::vector<declared_command> declared;
  for (const command& each : commands) {
    CLI::App* sub = app.add_subcommand(each.name, each.summary);
    declared.push_back({sub, each.declare(*sub)});
    declare_config_option(*sub);
  }
  return declared;
}

// What a word is that has no place; the first of those that there are.
std::string stray_text(const std::vector<std::string>& stray, const CLI::App* command) {
  const bool is_behind_dashes = stray.front() == "--";
  const std::string& word = stray[is_behind_dashes && stray.size() > 1 ? 1 : 0];
  const std::string quoted = "'" + word + "'";
  if (word.starts_with('-') && !is_behind_dashes) return quoted + " is no option (-- ends them)";
  if (command == nullptr) return quoted + " is no command";
  const bool takes_statement = command->get_option_no_throw("STATEMENT") != nullptr;
  return quoted + " is one too many" +
         (takes_statement ? ": the statement is one argument, in quotes" : "");
}

// What is wrong with a line, said as everything else is.
std::string told(const CLI::ParseError& error, const CLI::App& app, const CLI::App* command) {
  const std::vector<std::string> stray = app.remaining(true);
  if (!stray.empty()) return stray_text(stray, command);
  if (command == nullptr) return "a command is wanted";
  if (error.get_name() == "ArgumentMismatch")
    for (const CLI::Option* option : command->get_options())
      if (option->get_items_expected_max() == 1 && option->count() > 1)
        return option->get_name() + " is given twice";
  return error.what();
}

// Asking for a help or the version ends the parsing in the same way as a fault.
exit_code end_parsing(const CLI::ParseError& error, const CLI::App& app) {
  if (error.get_exit_code() == 0) {
    std::ostringstream text;
    app.exit(error, text, text);
    write_output("-", text.str());
    return exit_fine;
  }
  const std::vector<CLI::App*> parsed = app.get_subcommands();
  const CLI::App* command = parsed.empty() ? nullptr : parsed.front();
  throw failure(exit_usage, told(error, app, command) + "; see zvplaylist " +
                                (command != nullptr ? command->get_name() + " " : "") + "--help");
}

exit_code run(int argc, char** argv) {
  CLI::App app("Playlists from a folder of music or a catalog of tracks.");
  app.name("zvplaylist");
  app.set_version_flag("--version", std::string("zvplaylist ") + zvsdk_playlist_get_version());
  app.footer(
      "Example:\n"
      "  zvplaylist generate --scan ~/Music 'GENERATE PLAYLIST ORDER RAND(100) LIMIT 25 RESULTS'\n"
      "\n"
      "zvplaylist COMMAND --help tells about a command.");
  app.require_subcommand(1);
  const std::vector<declared_command> declared = declare_commands(app);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return end_parsing(error, app);
  }
  for (const declared_command& each : declared) {
    if (!each.app->parsed()) continue;
    apply_config(*each.app);
    return each.run();
  }
  return exit_usage;
}

}  // namespace

int main(int argc, char** argv) {
  console out = console::standard();
  try {
    return run(argc, argv);
  } catch (const failure& error) {
    if (*error.what() != '\0') out.error(error.what());
    return error.code();
  } catch (const std::exception& error) {
    out.error(error.what());
    return exit_storage;
  }
}
