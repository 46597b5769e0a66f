// zvplaylist check and compact: the care of the store.
#include <CLI/CLI.hpp>

#include "tools/collection.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/shelf.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

// "there is no store in DIR", or its sizes.
std::string described(const store& kept, const zvsdk_storage_info& info) {
  if (info.exists == 0) return kept.folder() + ": nothing is stored there\n";
  return kept.folder() + ": " + std::to_string(info.file_size) + " bytes, " +
         std::to_string(info.free_size) + " of them free\n";
}

// Tells of each collection whether it can be read.
exit_code check_collections(shelf& all) {
  exit_code code = exit_fine;
  std::string document;
  for (const std::string& name : all.kept.names()) try {
      document +=
          printable(name) + ": " + std::to_string(size_of(all.kept.load(name).get())) + " tracks\n";
    } catch (const failure& error) {
      all.out.error(error.what());
      code = error.code();
    }
  write_output("-", document);
  return code;
}

// Collections may be whole in a file that is not, so that all are tried.
exit_code run_check(const std::string& folder) {
  shelf all(folder);
  zvsdk_storage_info info{};
  info.size = sizeof info;
  exit_code code = exit_fine;
  try {
    if (all.kept.exists()) check(zvsdk_playlist_storage_validate(&info), "checking the store");
  } catch (const library_error& error) {
    all.out.error(error.what());
    code = exit_storage;
  }
  write_output("-", described(all.kept, info));
  if (info.readable == 0) return code;
  return std::max(code, check_collections(all));
}

exit_code run_compact(const std::string& folder) {
  const shelf all(folder);
  if (!all.kept.exists())
    throw failure(exit_no_match, all.kept.folder() + ": nothing is stored there");
  check(zvsdk_playlist_storage_compact(), "compacting the store");
  return exit_fine;
}

action declare(CLI::App& app, const char* help, exit_code (*run)(const std::string& folder)) {
  auto folder = std::make_shared<std::string>();
  declare_store_option(app, *folder);
  app.footer(help);
  return [folder, run] { return run(*folder); };
}

}  // namespace

action declare_check(CLI::App& app) {
  return declare(
      app,
      "Example:\n"
      "  zvplaylist check\n"
      "\n"
      "Checks the file, and reads every collection. Exit codes: 0 all is well, 2 usage,\n"
      "4 something is damaged or cannot be read.",
      run_check);
}

action declare_compact(CLI::App& app) {
  return declare(app,
                 "Example:\n"
                 "  zvplaylist compact\n"
                 "\n"
                 "Needs the file's size on the disk once more while it runs. Exit codes: 0 fine,\n"
                 "1 nothing is stored, 2 usage, 4 storage.",
                 run_compact);
}

}  // namespace zvplaylist
