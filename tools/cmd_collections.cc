// zvplaylist collections, show, rename and remove: what is in the store, and putting it in order.
#include <unistd.h>
#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>
#include <unordered_set>

#include "tools/collection.h"
#include "tools/folder_sync.h"
#include "tools/json.h"
#include "tools/music.h"
#include "tools/store.h"
#include "tools/store_lock.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct shelf_options {
  std::string store;
  std::string name, new_name;
  std::vector<std::string> idents, folders;
  std::string format = "text", output;
  bool names_only = false, force = false;
};

// What each of these commands works with.
struct shelf {
  explicit shelf(const shelf_options& options)
      : out(std::cerr, console_style_for(STDERR_FILENO, false)),
        library("eng"),
        kept(options.store) {}

  console out;
  session library;
  store kept;
};

// Names are read behind the lock, so that they are as they are. A store that is not there is not
// made.
store_lock lock_stored(shelf& all, const std::vector<std::string>& names) {
  if (!all.kept.exists()) all.kept.require(names.front());
  return store_lock(all.kept.folder(), names, all.out);
}

// A list in JSON with an item a line.
std::string json_list(const std::vector<std::string>& items) {
  std::string document = "[";
  for (const std::string& item : items)
    document += (document.size() == 1 ? "\n  " : ",\n  ") + item;
  return document + (items.empty() ? "]\n" : "\n]\n");
}

std::string render_idents(const std::vector<std::string>& idents, const std::string& format) {
  std::vector<std::string> items;
  std::string document;
  for (const std::string& ident : idents) {
    if (format == "json")
      items.push_back(json_quote(ident));
    else
      document += printable(ident) + '\n';
  }
  return format == "json" ? json_list(items) : document;
}

std::string counted_text(const std::string& name, size_t tracks, size_t width) {
  return printable(name) + std::string(width - display_width(name) + 2, ' ') +
         std::to_string(tracks) + '\n';
}

std::string counted_json(const std::string& name, size_t tracks) {
  return "{\"name\": " + json_quote(name) + ", \"tracks\": " + std::to_string(tracks) + "}";
}

// A collection that cannot be read is told, and the others are listed.
exit_code list_with_counts(shelf& all, const std::vector<std::string>& names,
                           const shelf_options& options) {
  size_t width = 0;
  for (const std::string& name : names) width = std::max(width, display_width(name));
  exit_code code = exit_fine;
  std::vector<std::string> items;
  std::string document;
  for (const std::string& name : names) try {
      const size_t tracks = size_of(all.kept.load(name).get());
      document += counted_text(name, tracks, width);
      items.push_back(counted_json(name, tracks));
    } catch (const failure& error) {
      all.out.error(error.what());
      code = error.code();
    }
  write_output(options.output, options.format == "json" ? json_list(items) : document);
  return code;
}

exit_code run_collections(const shelf_options& options) {
  shelf all(options);
  const std::vector<std::string> names = all.kept.names();
  if (!options.names_only) return list_with_counts(all, names, options);
  write_output(options.output, render_idents(names, options.format));
  return exit_fine;
}

exit_code run_show(const shelf_options& options) {
  shelf all(options);
  const unique_collection collection = all.kept.load(options.name);
  write_output(options.output, render_idents(idents_of(collection.get()), options.format));
  return exit_fine;
}

exit_code run_rename(const shelf_options& options) {
  check_name(options.new_name);
  shelf all(options);
  const store_lock lock = lock_stored(all, {options.name, options.new_name});
  const unique_collection collection = all.kept.load(options.name);
  if (options.new_name == options.name) return exit_fine;
  all.kept.require_distinct(options.new_name, options.name);
  if (!options.force) all.kept.require_free(options.new_name);
  check(zvsdk_playlist_collection_update_name(collection.get(), options.new_name.c_str()),
        "naming a collection");
  all.kept.put(collection.get());
  return exit_fine;
}

// Those of the idents that the options mean. One that is not there is told.
std::unordered_set<std::string> meant_of(const std::vector<std::string>& idents,
                                         const shelf_options& options, console& out) {
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
  for (const std::string& folder : options.folders)
    std::ranges::copy_if(idents, std::inserter(meant, meant.end()),
                         [whole = absolute_path(folder)](const std::string& ident) {
                           return is_below(ident, whole);
                         });
  return meant;
}

// From the end, where taking out is cheapest.
exit_code remove_tracks(shelf& all, const shelf_options& options) {
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
  write_output("-", options.name + ": " + std::to_string(idents.size() - left) + " removed; " +
                        std::to_string(left) + " tracks\n");
  const bool all_done = left != idents.size() && all.out.count(outcome::skipped) == 0;
  return all_done ? exit_fine : exit_no_match;
}

exit_code run_remove(const shelf_options& options) {
  shelf all(options);
  const store_lock lock = lock_stored(all, {options.name});
  if (!options.idents.empty() || !options.folders.empty()) return remove_tracks(all, options);
  all.kept.require(options.name);
  all.kept.remove(options.name);
  return exit_fine;
}

using shared_options = std::shared_ptr<shelf_options>;

shared_options declare_shelf_options(CLI::App& app) {
  auto options = std::make_shared<shelf_options>();
  declare_store_option(app, options->store);
  return options;
}

}  // namespace

action declare_collections(CLI::App& app) {
  const shared_options options = declare_shelf_options(app);
  app.add_flag("--names", options->names_only, "Names only, which is quicker");
  declare_document_options(app, options->format, options->output);
  app.footer(
      "Example:\n"
      "  zvplaylist collections\n"
      "\n"
      "Each line has a name and how many tracks there are.\n"
      "Exit codes: 0 fine, 2 usage, 4 a collection cannot be read.");
  return [options] { return run_collections(*options); };
}

action declare_show(CLI::App& app) {
  const shared_options options = declare_shelf_options(app);
  app.add_option("NAME", options->name, "The collection")->required();
  declare_document_options(app, options->format, options->output);
  app.footer(
      "Example:\n"
      "  zvplaylist show music\n"
      "\n"
      "Each line is the ident of a track; zvplaylist generate --from NAME GENPL tells more.\n"
      "Exit codes: 0 fine, 1 no such collection, 2 usage, 4 it cannot be read.");
  return [options] { return run_show(*options); };
}

action declare_rename(CLI::App& app) {
  const shared_options options = declare_shelf_options(app);
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
  const shared_options options = declare_shelf_options(app);
  app.add_option("NAME", options->name, "The collection")->required();
  app.add_option("IDENT", options->idents, "Tracks of it; without any, the whole collection");
  app.add_option("--below", options->folders, "The tracks of all files below DIR")
      ->type_name("DIR")
      ->allow_extra_args(false);
  app.footer(
      "Example:\n"
      "  zvplaylist remove music ~/Music/Crossings/03.flac\n"
      "\n"
      "Files are not touched. Exit codes: 0 fine, 1 no such collection or track, 2 usage,\n"
      "4 storage.");
  return [options] { return run_remove(*options); };
}

}  // namespace zvplaylist
