// zvplaylist collections and show: what is in the store.
#include <algorithm>
#include <CLI/CLI.hpp>

#include "tools/collection.h"
#include "tools/json.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/shelf.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct listing_options {
  std::string store;
  std::string name;
  std::string format = "text", output;
  bool names_only = false;
};

std::string render_idents(const std::vector<std::string>& idents, const std::string& format) {
  std::vector<std::string> items;
  std::string document;
  for (const std::string& ident : idents) {
    if (format == "json")
      items.push_back(json_quote(ident));
    else
      document += printable(ident) + '\n';
  }
  return format == "json" ? json_document(items) : document;
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
                           const listing_options& options) {
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
  write_output(options.output, options.format == "json" ? json_document(items) : document);
  return code;
}

exit_code run_collections(const listing_options& options) {
  shelf all(options.store);
  const std::vector<std::string> names = all.kept.names();
  if (names.empty())
    all.out.note("nothing is stored in " + all.kept.folder() +
                 "; zvplaylist scan DIR --into NAME makes a collection");
  if (!options.names_only) return list_with_counts(all, names, options);
  write_output(options.output, render_idents(names, options.format));
  return exit_fine;
}

exit_code run_show(const listing_options& options) {
  const shelf all(options.store);
  const unique_collection collection = all.kept.load(options.name);
  write_output(options.output, render_idents(idents_of(collection.get()), options.format));
  return exit_fine;
}

}  // namespace

action declare_collections(CLI::App& app) {
  auto options = std::make_shared<listing_options>();
  declare_store_option(app, options->store);
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
  auto options = std::make_shared<listing_options>();
  declare_store_option(app, options->store);
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

}  // namespace zvplaylist
