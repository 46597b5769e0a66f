// zvplaylist lists: the genres, moods and so on that a statement can name.
#include <algorithm>
#include <CLI/CLI.hpp>

#include "tools/json.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/session.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct lists_options {
  std::string which;  // empty: all of them
  std::string find;
  uint32_t depth = 0;  // 0: one level of all lists, or the whole of one
  std::string language = "eng";
  std::string format = "text";
  std::string output;
};

constexpr uint32_t every_level = UINT32_MAX;

// What --find asks for.
struct wanted_terms {
  std::string text;                // in lower case; empty asks for everything
  std::optional<known_term> also;  // what the text finds by a name that is not shown
};

// Leaves the elements that are wanted and what they stand below.
void keep_wanted(std::vector<term_node>& nodes, const wanted_terms& wanted) {
  for (term_node& each : nodes) keep_wanted(each.children, wanted);
  std::erase_if(nodes, [&](const term_node& each) {
    return each.children.empty() && !(wanted.also && wanted.also->id == each.id) &&
           ascii_lower(each.name).find(wanted.text) == std::string::npos;
  });
}

std::vector<term_node> tree_of(const term_lists& lists, term_list which,
                               const lists_options& options) {
  const bool whole = !options.which.empty() || !options.find.empty();
  const uint32_t depth = options.depth != 0 ? options.depth : whole ? every_level : 1;
  std::vector<term_node> tree = lists.tree(which, depth);
  if (!options.find.empty())
    keep_wanted(tree, {ascii_lower(options.find), lists.find(which, options.find)});
  return tree;
}

void add_text(std::string& document, const std::vector<term_node>& nodes, size_t indent) {
  for (const term_node& each : nodes) {
    document += std::string(indent, ' ') + printable(each.name) + "  " + std::to_string(each.id);
    if (each.range)
      document +=
          "  " + std::to_string(each.range->lower) + " to " + std::to_string(each.range->upper);
    document += '\n';
    add_text(document, each.children, indent + 2);
  }
}

void add_json(std::string& document, const std::vector<term_node>& nodes, size_t indent) {
  const std::string start = "\n" + std::string(indent, ' ');
  document += "[";
  for (const term_node& each : nodes) {
    document += (&each == nodes.data() ? "" : ",") + start + "{\"id\": " + std::to_string(each.id) +
                ", \"name\": " + json_quote(each.name);
    if (each.range)
      document += ", \"range\": [" + std::to_string(each.range->lower) + ", " +
                  std::to_string(each.range->upper) + "]";
    if (!each.children.empty()) {
      document += ", \"children\": ";
      add_json(document, each.children, indent + 2);
    }
    document += "}";
  }
  document += "]";
}

using forest = std::vector<std::pair<const char*, std::vector<term_node>>>;

std::string render_lists_text(const forest& lists) {
  std::string document;
  for (const auto& [name, tree] : lists) {
    if (lists.size() > 1) document += (document.empty() ? "" : "\n") + std::string(name) + '\n';
    add_text(document, tree, lists.size() > 1 ? 2 : 0);
  }
  return document;
}

std::string render_lists_json(const forest& lists) {
  std::string document = "{";
  for (const auto& [name, tree] : lists) {
    document += (document.size() == 1 ? "\n  " : ",\n  ") + json_quote(name) + ": ";
    add_json(document, tree, 4);
  }
  return document + "\n}\n";
}

exit_code run_lists(const lists_options& options) {
  const session library(options.language);
  forest lists;
  for (const term_list_kind& kind : term_list_kinds) {
    if (!options.which.empty() && options.which != kind.name) continue;
    auto tree = tree_of(library.lists(), kind.list, options);
    if (!tree.empty()) lists.emplace_back(kind.name, std::move(tree));
  }
  if (lists.empty()) throw failure(exit_no_match, "no list has '" + options.find + "'");
  write_output(options.output,
               options.format == "json" ? render_lists_json(lists) : render_lists_text(lists));
  return exit_fine;
}

}  // namespace

action declare_lists(CLI::App& app) {
  auto options = std::make_shared<lists_options>();
  std::vector<std::string> names;
  for (const term_list_kind& kind : term_list_kinds) names.push_back(kind.name);
  app.add_option(
         "LIST", options->which,
         "genres, moods, eras, tempos, origins or artist-types; the top of all, if not given")
      ->check(CLI::IsMember(names));
  app.add_option("--find", options->find, "What has TEXT in its name, or goes by it")
      ->type_name("TEXT");
  app.add_option("--depth", options->depth, "No more than N levels")
      ->type_name("N")
      ->check(CLI::Range(1, 16));
  declare_language_option(app, options->language);
  declare_document_options(app, options->format, options->output);
  app.footer(
      "Example:\n"
      "  zvplaylist lists genres --find house\n"
      "\n"
      "Each line has a name, its id, and for bands of tempos and years what they span. A\n"
      "statement may use either: ZV_Genre = 'House'. Exit codes: 0 fine, 1 nothing found, 2 "
      "usage,\n"
      "4 the output could not be written.");
  return [options] { return run_lists(*options); };
}

}  // namespace zvplaylist
