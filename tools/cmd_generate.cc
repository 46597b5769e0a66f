// zvplaylist generate: reads tracks, runs a statement over them, writes the playlist.
#include <CLI/CLI.hpp>

#include "tools/bad_statement.h"
#include "tools/music.h"
#include "tools/statement_seed.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct generate_options {
  music_options source;
  playlist_options target;
  std::string seed;
  std::string statement;
};

// One run of the subcommand.
class generation {
 public:
  explicit generation(const generate_options& options)
      : options_(options),
        music_(options.source),
        statement_(replace_unusable(options.statement).text) {}

  exit_code run();

 private:
  void check_statement();
  std::vector<ranked_ident> generate();
  [[noreturn]] void fail(const library_error& error);

  const generate_options& options_;
  music music_;
  std::string statement_;
};

void generation::fail(const library_error& error) {
  fail_on_statement(music_.out(), statement_, error,
                    "the statement uses SEED: name a track with --seed IDENT");
}

std::vector<ranked_ident> generation::generate() {
  const std::string seed = options_.seed.empty() ? "" : music_.find(options_.seed).ident;
  try {
    return music_.library().generate(statement_, seed);
  } catch (const library_error& error) {
    fail(error);
  }
}

// Over the empty collection, so that a slip shows before a long scan. The seed is not known by
// then; that it is asked for tells that the statement was parsed.
void generation::check_statement() {
  try {
    music_.library().generate(statement_, "");
  } catch (const library_error& error) {
    if (options_.seed.empty() || error.status() != playlist_error_seed_required) fail(error);
  }
}

exit_code generation::run() {
  const uint32_t random = options_.target.random != 0 ? options_.target.random
                                                      : seed_in_statement(statement_).value_or(0);
  if (random != 0) music_.library().set_option(ZVSDK_PLAYLIST_OPTION_RANDOM, random);
  check_statement();
  if (!music_.read()) return exit_bad_input;
  return music_.write(generate(), options_.target);
}

}  // namespace

action declare_generate(CLI::App& app) {
  auto options = std::make_shared<generate_options>();
  declare_music_options(app, options->source);
  app.add_option("--seed", options->seed,
                 "The track that SEED in the statement stands for; it is left out")
      ->type_name("IDENT");
  declare_playlist_options(app, options->target,
                           "Repeat the random choice that N stands for (or else the number that a "
                           "RAND of the statement has)");
  app.add_option("STATEMENT", options->statement, "What to play")->required();
  app.footer(
      "Example:\n"
      "  zvplaylist generate --scan ~/Music --format m3u8 -o run.m3u8 \\\n"
      "    'GENERATE PLAYLIST WHERE ZV_Tempo > 118 LIMIT 2 PER ZV_ArtistName, 25 RESULTS'\n"
      "\n"
      "Exit codes: 0 fine, 1 no match or seed not found, 2 usage or bad statement,\n"
      "3 an input held nothing usable, 4 the output could not be written.");
  return [options] { return generation(*options).run(); };
}

}  // namespace zvplaylist
