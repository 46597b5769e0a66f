// zvplaylist generate: reads tracks, runs a statement over them, writes the playlist.
#include <unistd.h>

#include <algorithm>
#include <CLI/CLI.hpp>
#include <iostream>
#include <iterator>

#include "tools/catalog.h"
#include "tools/command.h"
#include "tools/import.h"
#include "tools/output.h"
#include "tools/scan.h"
#include "tools/session.h"
#include "tools/statement_fault.h"
#include "tools/statement_seed.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct generate_options {
  std::vector<std::string> folders;
  std::vector<std::string> catalogs;
  std::vector<std::string> mappings;
  std::string seed;
  uint32_t random = 0;
  std::string format = "text";
  std::string output;
  bool quiet = false;
  std::string statement;
};

// What to tell where the library has a code and no message.
struct explained_status {
  zvsdk_status status;
  const char* hint;
};
constexpr explained_status explained_statuses[] = {
    {playlist_error_not_found, "IN wants a list of numbers in brackets: IN [90, 120]"},
    {playlist_error_internal,
     "it can be read but means nothing: a bare number as ORDER, two values or two attributes "
     "compared, or a score asked of AND, OR or IN"}};

// One run of the subcommand.
class generation {
 public:
  explicit generation(const generate_options& options)
      : options_(options),
        columns_(options.mappings),
        out_(std::cerr, console_style_for(STDERR_FILENO, options.quiet)),
        statement_(replace_unusable(options.statement).text) {}

  exit_code run();

 private:
  void check_statement();
  void read_inputs();
  void count_input(const std::string& name, size_t usable);
  void take(track&& entry, const place& where);
  void summarize();
  const track* find_seed() const;
  playlist ranked(const std::vector<ranked_ident>& idents) const;
  std::vector<ranked_ident> generate(const track* seed);
  [[noreturn]] void fail_on_statement(const library_error& error);

  const generate_options& options_;
  column_map columns_;
  console out_;
  std::string statement_;
  catalog catalog_;
  session session_;
  bool input_failed_ = false;
};

void generation::fail_on_statement(const library_error& error) {
  if (error.status() == playlist_error_no_memory) throw error;
  if (error.status() == playlist_error_seed_required)
    throw failure(exit_usage, "the statement uses SEED: name a track with --seed IDENT");
  out_.error(error.what());
  for (const explained_status& each : explained_statuses)
    if (each.status == error.status()) out_.line(std::string("  ") + each.hint);
  const auto offset = locate_fault(statement_, error.what());
  if (offset && !trim(statement_).empty()) {
    const marked_line marked = mark_fault(statement_, *offset);
    out_.line("  " + marked.text);
    out_.line("  " + marked.caret, true);
  }
  throw failure(exit_usage, "");
}

std::vector<ranked_ident> generation::generate(const track* seed) {
  try {
    return session_.generate(statement_, seed);
  } catch (const library_error& error) {
    fail_on_statement(error);
  }
}

// Over the empty collection, so that a slip shows before a long scan. The seed is not known by
// then; that it is asked for tells that the statement was parsed.
void generation::check_statement() {
  try {
    session_.generate(statement_, nullptr);
  } catch (const library_error& error) {
    if (options_.seed.empty() || error.status() != playlist_error_seed_required)
      fail_on_statement(error);
  }
}

void generation::take(track&& entry, const place& where) {
  const std::string ident = entry.ident;
  const track* kept = catalog_.add(std::move(entry));
  if (kept == nullptr)
    return out_.report(outcome::skipped, where, "ident '" + ident + "' is there already, left out");
  try {
    session_.add(*kept);
  } catch (const library_error& error) {
    out_.report(outcome::skipped, where, error.what());
  }
}

void generation::count_input(const std::string& name, size_t usable) {
  if (usable != 0) return;
  out_.error("nothing usable in " + name);
  input_failed_ = true;
}

void generation::read_inputs() {
  const track_sink sink = [this](track&& entry, const place& where) {
    take(std::move(entry), where);
  };
  for (const std::string& folder : options_.folders)
    count_input(folder, scan_folder(folder, sink, out_));
  for (const std::string& path : options_.catalogs)
    count_input(path, import_file(path, columns_, sink, out_));
  summarize();
}

void generation::summarize() {
  const size_t skipped = out_.count(outcome::skipped);
  const size_t mended = out_.count(outcome::mended);
  const size_t noted = out_.count(outcome::noted);
  if (skipped + mended + noted == 0) return;
  out_.note(std::to_string(catalog_.size()) + " tracks; " + std::to_string(skipped) +
            " rows or files left out, " + std::to_string(mended) + " mended, " +
            std::to_string(noted) + " noted");
}

const track* generation::find_seed() const {
  if (options_.seed.empty()) return nullptr;
  const track* seed = catalog_.find(repair_text(options_.seed).text);
  if (seed == nullptr) throw failure(exit_no_match, "no track has the ident " + options_.seed);
  return seed;
}

playlist generation::ranked(const std::vector<ranked_ident>& idents) const {
  playlist tracks;
  for (const ranked_ident& each : idents) tracks.push_back({catalog_.find(each.ident), each.score});
  return tracks;
}

exit_code generation::run() {
  const uint32_t random =
      options_.random != 0 ? options_.random : seed_in_statement(statement_).value_or(0);
  if (random != 0) session_.set_random(random);
  check_statement();
  read_inputs();
  if (catalog_.size() == 0) return exit_bad_input;
  const playlist tracks = ranked(generate(find_seed()));
  const auto format =
      std::find_if(std::begin(output_formats), std::end(output_formats),
                   [this](const auto& each) { return each.name == options_.format; });
  write_output(options_.output, format->render(tracks));
  if (tracks.empty()) out_.note("no track matches");
  if (input_failed_) return exit_bad_input;
  return tracks.empty() ? exit_no_match : exit_fine;
}

exit_code run_generate(const generate_options& options) {
  if (options.folders.empty() && options.catalogs.empty())
    throw failure(exit_usage, "name some music with --scan DIR or --import FILE");
  return generation(options).run();
}

std::vector<std::string> format_names() {
  std::vector<std::string> names;
  for (const output_format& format : output_formats) names.push_back(format.name);
  return names;
}

}  // namespace

action declare_generate(CLI::App& app) {
  auto options = std::make_shared<generate_options>();
  const auto repeatable = [&app](const char* name, std::vector<std::string>& target,
                                 const char* type, const char* help) {
    app.add_option(name, target, help)->type_name(type)->allow_extra_args(false);
  };
  repeatable("--scan", options->folders, "DIR", "Read the tags of every audio file below DIR");
  repeatable("--import", options->catalogs, "FILE",
             "Read a catalog in CSV or JSON Lines; - is standard input");
  repeatable(
      "--map", options->mappings, "FIELD=COLUMN",
      "The catalog's COLUMN holds FIELD (ident, location, title, artist, album, date, genre, "
      "subgenre, tempo)");
  app.add_option("--seed", options->seed, "The track that SEED in the statement stands for")
      ->type_name("IDENT");
  app.add_option(
         "--random", options->random,
         "Repeat the random choice that N stands for (or else the number that a RAND of the "
         "statement has)")
      ->type_name("N")
      ->check(CLI::Range(uint32_t{1}, UINT32_MAX));
  app.add_option("--format", options->format, "Output format: text, m3u8, xspf or json")
      ->type_name("NAME")
      ->check(CLI::IsMember(format_names()));
  app.add_option("-o,--output", options->output, "Write to FILE instead of standard output")
      ->type_name("FILE");
  app.add_flag("-q,--quiet", options->quiet, "No progress and no reports on bad rows and files");
  app.add_option("STATEMENT", options->statement, "What to play")->required();
  app.footer(
      "Example:\n"
      "  zvplaylist generate --scan ~/Music --format m3u8 -o run.m3u8 \\\n"
      "    'GENERATE PLAYLIST WHERE ZV_Tempo > 118 LIMIT 2 PER ZV_ArtistName, 25 RESULTS'\n"
      "\n"
      "Exit codes: 0 fine, 1 no match or seed not found, 2 usage or bad statement,\n"
      "3 an input held nothing usable, 4 the output could not be written.");
  return [options] { return run_generate(*options); };
}

}  // namespace zvplaylist
