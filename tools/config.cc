// Reads the file line by line.
#include "tools/config.h"

#include <algorithm>
#include <cerrno>
#include <CLI/CLI.hpp>
#include <cstring>
#include <fstream>

#include "tools/text.h"
#include "tools/xdg.h"

namespace zvplaylist {
namespace {

constexpr std::string_view configurable[] = {"store", "language", "quiet"};

void take_line(CLI::App& command, std::string_view line) {
  const size_t equals = line.find('=');
  if (equals == std::string_view::npos) throw failure(exit_usage, "expected OPTION = VALUE");
  const std::string name(trim(line.substr(0, equals)));
  if (std::ranges::count(configurable, name) == 0)
    throw failure(exit_usage, "'" + name + "' is none of store, language and quiet");
  CLI::Option* option = command.get_option_no_throw("--" + name);
  if (option == nullptr || option->count() != 0) return;
  option->add_result(std::string(trim(line.substr(equals + 1))));
  option->run_callback();
}

void read_config(CLI::App& command, std::istream& in, const std::string& path) {
  std::string line;
  for (size_t number = 1; std::getline(in, line); ++number) try {
      const std::string_view text = trim(line);
      if (!text.empty() && !text.starts_with('#')) take_line(command, text);
    } catch (const std::runtime_error& error) {  // CLI11's own included
      throw failure(exit_usage, path + ":" + std::to_string(number) + ": " + error.what());
    }
}

}  // namespace

void declare_config_option(CLI::App& command) {
  command.add_option("--config", "Defaults are in FILE, not in the user's configuration folder")
      ->type_name("FILE")
      ->envname("ZVPLAYLIST_CONFIG");
}

void apply_config(CLI::App& command) {
  const CLI::Option* option = command.get_option("--config");
  const std::string given = option->count() != 0 ? option->as<std::string>() : "";
  const std::string folder = user_folder("XDG_CONFIG_HOME", ".config");
  if (given.empty() && folder.empty()) return;
  const std::string path = given.empty() ? folder + "/config" : given;
  std::ifstream in(path);
  const bool is_absent = !in.is_open() && (errno == ENOENT || errno == ENOTDIR);
  if (is_absent && given.empty()) return;
  if (in.is_open()) read_config(command, in, path);
  if (!in.is_open() || in.bad())
    throw failure(exit_usage, "cannot read " + path + ": " + std::strerror(errno));
}

}  // namespace zvplaylist
