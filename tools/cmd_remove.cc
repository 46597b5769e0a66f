// zvplaylist rename and remove: putting the store in order.
#include <algorithm>
#include <CLI/CLI.hpp>
#include <iterator>
#include <unordered_set>

#include "tools/collection.h"
#include "tools/folder_sync.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/shelf.h"
#include "tools/store_lock.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct rename_options {
  std::string store;
  std::string name, new_name;
  bool force = false;
};

struct remove_options {
  std::string store;
  std::string name;
  std::vector<std::string> idents, folders;
};

// Names are read behind the lock, so that they are as they are. A store that is not there is not
// made.
store_lock lock_stored(shelf& all, const std::vector<std::string>& names) {
  if (!all.kept.exists()) all.kept.require(names.front());
  return store_lock(all.kept.folder(), names, all.out);
}

exit_code run_rename(const rename_options& options) {
  check_name(options.new_name);
  shelf all(options.store);
  const store_lock lock = lock_stored(all, {options.name, options.new_name});
  const unique_collection collection = all.kept.load(options.name);
  if (options.new_name == options.name) return exit_fine;
  all.kept.require_distinct(options.new_name, options.name);
  if (!options.force) all.kept.require_free(options.new_name);
  rename_collection(collection.get(), options.new_name);
  all.kept.put(collection.get());
  return exit_fine;
}

// Those of the idents that the options mean. What means none is told.
std::unordered_set<std::string> meant_of(const std::vector<std::string>& idents,
                                         const remove_options& options, console& out) {
  const std::unordered_set<std::string_view> held(idents.begin(), idents.end());
  std::unordered_set<std::string> meant;
  for (const std::string& given : options.idents) {
    std::string ident = repair_text(given).text;
    if (!held.contains(ident)) ident = repair_text(absolute_path(given)).text;
    if (held.contains(ident))
      meant.insert(std::move(ident));
    else
      out.report(outcome::skipped, {options.name}, "no track has the ident " + given);
  }
  for (const std::string& folder : options.folders) {
    const auto below = [whole = absolute_path(folder)](const std::string& ident) {
      return is_below(ident, whole);
    };
    if (std::ranges::none_of(idents, below))
      out.report(outcome::skipped, {options.name}, "no track is below " + folder);
    std::ranges::copy_if(idents, std::inserter(meant, meant.end()), below);
  }
  return meant;
}

// From the end, where taking out is cheapest.
exit_code remove_tracks(shelf& all, const remove_options& options) {
  const unique_collection collection = all.kept.load(options.name);
  const std::vector<std::string> idents = idents_of(collection.get());
  const auto meant = meant_of(idents, options, all.out);
  for (size_t i = idents.size(); i-- > 0;) {
    if (!meant.contains(idents[i])) continue;
    if (holds_ident(collection.get(), idents[i]))
      remove_ident(collection.get(), idents[i]);
    else
      all.out.report(outcome::skipped, {options.name}, hidden_text(idents[i]) + "; it stays");
  }
  const size_t left = size_of(collection.get());
  if (left != idents.size()) all.kept.put(collection.get());
  write_output("-", printable(options.name) + ": " + std::to_string(idents.size() - left) +
                        " removed; " + std::to_string(left) + " tracks\n");
  return all.out.count(outcome::skipped) == 0 ? exit_fine : exit_no_match;
}

exit_code run_remove(const remove_options& options) {
  shelf all(options.store);
  const store_lock lock = lock_stored(all, {options.name});
  if (!options.idents.empty() || !options.folders.empty()) return remove_tracks(all, options);
  all.kept.require(options.name);
  all.kept.remove(options.name);
  return exit_fine;
}

}  // namespace

action declare_rename(CLI::App& app) {
  auto options = std::make_shared<rename_options>();
  declare_store_option(app, options->store);
  app.add_option("OLD", options->name, "The collection")->required();
  app.add_option("NEW", options->new_name, "Its new name")->required();
  app.add_flag("--force", options->force, "Replace a collection that has the new name");
  app.footer(
      "Example:\n"
      "  zvplaylist rename music everything\n"
      "\n"
      "Exit codes: 0 fine, 1 no such collection, 2 usage or the new name is taken, 4 storage.");
  return [options] { return run_rename(*options); };
}

action declare_remove(CLI::App& app) {
  auto options = std::make_shared<remove_options>();
  declare_store_option(app, options->store);
  app.add_option("NAME", options->name, "The collection")->required();
  app.add_option("IDENT", options->idents, "Tracks of it; without any, the whole collection");
  declare_repeatable(app, "--below", options->folders, "DIR", "The tracks of all files below DIR");
  app.footer(
      "Example:\n"
      "  zvplaylist remove music ~/Music/Crossings/03.flac\n"
      "\n"
      "Files are not touched. Exit codes: 0 fine, 1 no such collection or track, 2 usage,\n"
      "4 storage.");
  return [options] { return run_remove(*options); };
}

}  // namespace zvplaylist
