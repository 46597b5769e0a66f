// zvplaylist scan and import: what fills the store.
#include <algorithm>
#include <CLI/CLI.hpp>
#include <unordered_set>

#include "tools/collection.h"
#include "tools/folder_sync.h"
#include "tools/import.h"
#include "tools/options.h"
#include "tools/stamp.h"

namespace zvplaylist {
namespace {

struct fill_options {
  update_options target;
  std::vector<std::string> sources;
  std::vector<std::string> mappings;
  bool again = false;
};

void declare_fill_options(CLI::App& app, fill_options& options, const char* source,
                          const char* source_help) {
  app.add_option(source, options.sources, source_help)->required();
  app.add_option("--into", options.target.name, "The collection to fill, or to begin")
      ->type_name("NAME")
      ->required();
  declare_store_option(app, options.target.store);
  app.add_flag("--again", options.again, "Read also what has not changed since it was stored");
  declare_language_option(app, options.target.language);
  declare_quiet_option(app, options.target.quiet);
}

constexpr char fill_exit_codes[] =
    "Exit codes: 0 fine, 2 usage, 3 an input held nothing usable, 4 storage, 130 or 143\n"
    "interrupted, what was read being stored.";

void tell_empty_folder(collection_update& target, const std::string& folder) {
  const std::vector<std::string> idents = idents_of(target.library().own());
  const auto kept = std::ranges::count_if(
      idents, [&](const std::string& ident) { return is_below(ident, absolute_path(folder)); });
  const std::string name = name_of(target.library().own());
  target.out().error("nothing usable in " + folder +
                     (kept == 0 ? ""
                                : "; " + name + " keeps its " + std::to_string(kept) +
                                      " tracks of it (zvplaylist remove " + name + " --below " +
                                      folder + " takes them out)"));
}

exit_code run_scan(const fill_options& options) {
  collection_update target(options.target);
  exit_code code = exit_fine;
  for (const std::string& folder : options.sources) {
    if (folder_sync(target, folder, options.again).run()) continue;
    tell_empty_folder(target, folder);
    code = exit_bad_input;
  }
  target.finish();
  return code;
}

// Takes the rows of all catalogs of a run.
class catalog_intake {
 public:
  catalog_intake(collection_update& target, bool again) : target_(target), again_(again) {}

  void take(track&& entry, const place& where) {
    if (!seen_.insert(entry.ident).second)
      return target_.out().report(outcome::skipped, where,
                                  "ident '" + entry.ident + "' is there already, left out");
    entry.stamp = stamp_of_values(entry);
    if (!again_ && is_unchanged(entry))
      target_.count_unchanged();
    else
      target_.put(std::move(entry), where);
    target_.pause();
  }

 private:
  bool is_unchanged(const track& entry) {
    session& library = target_.library();
    return target_.is_hidden(entry.ident) ||
           (library.holds(entry.ident) && library.stamp(entry.ident) == entry.stamp);
  }

  collection_update& target_;
  const bool again_;
  std::unordered_set<std::string> seen_;
};

exit_code run_import(const fill_options& options) {
  const column_map columns(options.mappings);
  collection_update target(options.target);
  catalog_intake intake(target, options.again);
  const track_sink sink = [&](track&& entry, const place& where) {
    intake.take(std::move(entry), where);
  };
  exit_code code = exit_fine;
  for (const std::string& path : options.sources) {
    if (import_file(path, columns, sink, target.out()) != 0) continue;
    target.out().error("nothing usable in " + catalog_name(path));
    code = exit_bad_input;
  }
  target.finish();
  return code;
}

}  // namespace

action declare_scan(CLI::App& app) {
  auto options = std::make_shared<fill_options>();
  declare_fill_options(app, *options, "DIR", "Folders of audio files");
  app.footer(std::string("Example:\n"
                         "  zvplaylist scan ~/Music --into music\n"
                         "\n"
                         "Run it again whenever files have come, changed or gone. Tracks that are "
                         "not below DIR\n"
                         "stay as they are.\n") +
             fill_exit_codes);
  return [options] { return run_scan(*options); };
}

action declare_import(CLI::App& app) {
  auto options = std::make_shared<fill_options>();
  declare_fill_options(app, *options, "FILE", "Catalogs in CSV or JSON Lines; - is standard input");
  declare_map_option(app, options->mappings);
  app.footer(std::string("Example:\n"
                         "  zvplaylist import data/sample/tracks.csv --into samples\n"
                         "\n"
                         "Tracks with new idents are added, others replaced, none removed.\n") +
             fill_exit_codes);
  return [options] { return run_import(*options); };
}

}  // namespace zvplaylist
