// zvplaylist: a folder of music or a catalog in, playlists out.
#include <CLI/CLI.hpp>

#include "tools/command.h"
#include "tools/console.h"
#include "tools/session.h"

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
  }
  return declared;
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
    const std::vector<std::string> stray = app.remaining();
    if (error.get_exit_code() != 0 && app.get_subcommands().empty() && !stray.empty())
      throw failure(exit_usage, "'" + stray.front() + "' is no command; see zvplaylist --help");
    return app.exit(error) == 0 ? exit_fine : exit_usage;
  }
  for (const declared_command& each : declared)
    if (each.app->parsed()) return each.run();
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
