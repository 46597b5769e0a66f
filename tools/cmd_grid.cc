// zvplaylist grid: the tracks of a cell, a mood that other terms narrow.
#include <CLI/CLI.hpp>
#include <unordered_set>

#include "tools/grid.h"
#include "tools/music.h"

namespace zvplaylist {
namespace {

struct grid_kind {
  const char* name;
  term_list list;
  const char* list_type;
};
constexpr grid_kind grid_kinds[] = {
    {"mood", term_list::moods, ZVSDK_VIBEGRID_LIST_MOODS},
    {"genre", term_list::genres, ZVSDK_VIBEGRID_LIST_GENRES},
    {"era", term_list::eras, ZVSDK_VIBEGRID_LIST_ERAS},
    {"origin", term_list::origins, ZVSDK_VIBEGRID_LIST_ORIGINS},
};

const grid_kind& kind_named(const std::string& name) {
  for (const grid_kind& kind : grid_kinds)
    if (name == kind.name) return kind;
  throw failure(exit_usage, "--exclude " + name + ": there are mood, genre, era and origin");
}

struct grid_options {
  music_options source;
  playlist_options target;
  std::string mood;
  std::vector<std::string> genres, eras, origins;
  std::vector<std::string> exclusions;  // KIND:VALUE
  bool estimate = false;
};

grid_filter filter_of(const term_lists& lists, const grid_kind& kind, const std::string& value,
                      bool include) {
  const auto known = lists.find(kind.list, value);
  if (!known)
    throw failure(exit_no_match, "no " + std::string(kind.name) + " is called '" + value +
                                     "'; zvplaylist lists " + name_of_list(kind.list) +
                                     " shows them");
  return {kind.list_type, std::to_string(known->id), include};
}

grid_question inclusions_of(const grid_options& options, const term_lists& lists) {
  grid_question all;
  const std::pair<const char*, const std::vector<std::string>&> given[] = {
      {"genre", options.genres}, {"era", options.eras}, {"origin", options.origins}};
  for (const auto& [kind, values] : given)
    for (const std::string& value : values)
      all.push_back(filter_of(lists, kind_named(kind), value, true));
  return all;
}

grid_question exclusions_of(const grid_options& options, const term_lists& lists) {
  grid_question all;
  for (const std::string& each : options.exclusions) {
    const size_t colon = each.find(':');
    if (colon == std::string::npos)
      throw failure(exit_usage, "--exclude " + each + ": expected KIND:NAME, such as era:1980s");
    all.push_back(
        filter_of(lists, kind_named(each.substr(0, colon)), each.substr(colon + 1), false));
  }
  return all;
}

// Beside several inclusions an exclusion would hold for the last of them alone. Then each of them
// is a question of its own, with all exclusions.
std::vector<grid_question> questions_of(const grid_options& options, const term_lists& lists) {
  const grid_filter mood = filter_of(lists, kind_named("mood"), options.mood, true);
  const grid_question inclusions = inclusions_of(options, lists);
  const grid_question exclusions = exclusions_of(options, lists);
  std::vector<grid_question> questions(1, {mood});
  for (const grid_filter& each : inclusions) {
    if (questions.back().size() > 1 && !exclusions.empty()) questions.push_back({mood});
    questions.back().push_back(each);
  }
  for (grid_question& each : questions)
    each.insert(each.end(), exclusions.begin(), exclusions.end());
  return questions;
}

// Every test of a cell is one of equality, so all that match do so in full.
std::vector<ranked_ident> find_all(const std::vector<grid_question>& questions) {
  constexpr int32_t full_match = 1000;
  std::vector<ranked_ident> found;
  std::unordered_set<std::string> known;
  for (const grid_question& question : questions)
    for (const std::string& ident : find_in_grid(question))
      if (known.insert(ident).second) found.push_back({ident, full_match});
  return found;
}

uint64_t count_all(const std::vector<grid_question>& questions) {
  return questions.size() == 1 ? estimate_in_grid(questions.front()) : find_all(questions).size();
}

// Names are looked up first, so that a slip shows before a long scan.
exit_code run_grid(const grid_options& options) {
  music tracks(options.source);
  const std::vector<grid_question> questions = questions_of(options, tracks.library().lists());
  if (!tracks.read()) return exit_bad_input;
  if (options.estimate)
    return tracks.write(std::to_string(count_all(questions)) + '\n', options.target.output);
  return tracks.write(find_all(questions), options.target);
}

}  // namespace

action declare_grid(CLI::App& app) {
  auto options = std::make_shared<grid_options>();
  app.add_option("--mood", options->mood, "The mood of the cell, as a name or an id")
      ->type_name("NAME")
      ->required();
  declare_repeatable(app, "--genre", options->genres, "NAME",
                     "Tracks of this genre, or of what else is named");
  declare_repeatable(app, "--era", options->eras, "NAME",
                     "Tracks of this era, or of what else is named");
  declare_repeatable(app, "--origin", options->origins, "NAME",
                     "Tracks from there, or of what else is named");
  declare_repeatable(app, "--exclude", options->exclusions, "KIND:NAME",
                     "No track of this mood, genre, era or origin, such as era:1980s");
  app.add_flag("--estimate", options->estimate,
               "Only about how many there are; of a mood alone without a search");
  declare_music_options(app, options->source);
  declare_playlist_options(app, options->target);
  app.footer(
      "Example:\n"
      "  zvplaylist grid --mood Happy --genre Rock --genre Pop --exclude era:1980s --scan ~/Music\n"
      "\n"
      "Exit codes: 0 fine, 1 no match or no such name, 2 usage, 3 an input held nothing usable,\n"
      "4 the output could not be written.");
  return [options] { return run_grid(*options); };
}

}  // namespace zvplaylist
