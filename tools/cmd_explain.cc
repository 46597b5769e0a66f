// zvplaylist explain: why a statement chooses a track or not.
#include <algorithm>
#include <CLI/CLI.hpp>

#include "tools/bad_statement.h"
#include "tools/music.h"
#include "tools/statement_seed.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct explain_options {
  music_options source;
  std::string output;
  std::string statement;
  std::string ident;
};

// The lines of a tree, fit for a terminal. What has no line may have left its indent at the end.
std::string printable_lines(std::string_view tree) {
  std::string lines;
  for (size_t end; (end = tree.find('\n')) != std::string_view::npos; tree.remove_prefix(end + 1))
    lines += printable(tree.substr(0, end)) + '\n';
  return lines;
}

// Over the empty collection first, so that a slip shows before a long scan.
exit_code run_explain(const explain_options& options) {
  music tracks(options.source);
  const std::string statement = replace_unusable(options.statement).text;
  const auto analyze = [&](const std::string& ident) {
    try {
      return tracks.library().analyze(statement, ident);
    } catch (const library_error& error) {
      fail_on_statement(tracks.out(), statement, error,
                        "the statement uses SEED: only one without it can be explained");
    }
  };
  analyze("");
  if (!tracks.read()) return exit_bad_input;
  const std::string ident = tracks.find(options.ident).ident;
  const std::string lines = printable_lines(analyze(ident));
  const auto chosen = tracks.library().generate(std::string(without_limits(statement)), "");
  const bool is_in = std::ranges::count(chosen, ident, &ranked_ident::ident) != 0;
  return tracks.write(
      printable(ident) + (is_in ? " is in, before limits\n" : " is not in\n") + lines,
      options.output);
}

}  // namespace

action declare_explain(CLI::App& app) {
  auto options = std::make_shared<explain_options>();
  app.add_option("STATEMENT", options->statement, "What to look at")->required();
  app.add_option("IDENT", options->ident, "The track")->required();
  declare_music_options(app, options->source);
  declare_output_option(app, options->output);
  app.footer(
      "Example:\n"
      "  zvplaylist explain 'GENPL WHERE ZV_Tempo > 118' sample-017 \\\n"
      "    --import data/sample/tracks.csv\n"
      "\n"
      "Exit codes: 0 fine, 1 no such track, 2 usage or bad statement,\n"
      "3 an input held nothing usable, 4 the output could not be written.");
  return [options] { return run_explain(*options); };
}

}  // namespace zvplaylist
