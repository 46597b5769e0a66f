// Reads folders and catalogs; finds and writes tracks.
#include "tools/music.h"

#include <algorithm>
#include <iterator>

#include "tools/collection.h"
#include "tools/import.h"
#include "tools/nearest.h"
#include "tools/output.h"
#include "tools/scan.h"
#include "tools/store.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

const music_options& with_a_source(const music_options& options) {
  if (options.collections.empty() && options.folders.empty() && options.catalogs.empty())
    throw failure(exit_usage, "name some music with --from NAME, --scan DIR or --import FILE");
  return options;
}

}  // namespace

music::music(const music_options& options)
    : options_(with_a_source(options)),
      columns_(options.mappings),
      out_(console::standard(options.quiet)),
      session_(options.language) {}

void music::join_collections() {
  if (options_.collections.empty()) return;
  const store kept(options_.store);
  for (auto name = options_.collections.begin(); name != options_.collections.end(); ++name) {
    if (std::find(options_.collections.begin(), name, *name) != name)
      throw failure(exit_usage, "--from " + *name + " is given twice");
    if (const size_t known = session_.join(kept.load(*name)))
      out_.note(*name + ": " + std::to_string(known) + " tracks are there already, left out");
  }
}

void music::take(track&& entry, const place& where) {
  const std::string ident = entry.ident;
  const track* kept = session_.holds(ident) ? nullptr : catalog_.add(std::move(entry));
  if (kept == nullptr)
    return out_.report(outcome::skipped, where, "ident '" + ident + "' is there already, left out");
  try {
    for (const std::string& unknown : session_.add(*kept))
      out_.report_repeated(outcome::mended, where, unknown);
  } catch (const library_error& error) {
    out_.report(outcome::skipped, where, error.what());
  }
}

void music::count_input(const std::string& name, size_t usable) {
  if (usable != 0) return;
  out_.error("nothing usable in " + name);
  input_failed_ = true;
}

bool music::read() {
  join_collections();
  const track_sink sink = [this](track&& entry, const place& where) {
    take(std::move(entry), where);
  };
  for (const std::string& folder : options_.folders)
    count_input(folder, scan_folder(folder, sink, out_));
  for (const std::string& path : options_.catalogs)
    count_input(catalog_name(path), import_file(path, columns_, sink, out_));
  summarize();
  out_.clear();  // what is written to the same terminal begins on a line of its own
  return session_.size() != 0;
}

void music::summarize() {
  out_.summarize_repeated();
  const size_t skipped = out_.count(outcome::skipped);
  const size_t mended = out_.count(outcome::mended);
  const size_t noted = out_.count(outcome::noted);
  if (skipped + mended + noted == 0) return;
  out_.note(std::to_string(catalog_.size()) + " tracks; " + std::to_string(skipped) +
            " rows or files left out, " + std::to_string(mended) + " mended, " +
            std::to_string(noted) + " noted");
}

const track* music::look_up(const std::string& ident) {
  if (const track* found = catalog_.find(ident)) return found;
  return session_.holds(ident) ? catalog_.add(session_.track_of(ident)) : nullptr;
}

const track* music::listed(const std::string& ident) {
  if (const track* found = look_up(ident)) return found;
  return catalog_.add({.ident = ident, .location = ident, .title = {}, .artists = {}, .album = {}});
}

const track* music::nearest(const std::string& wanted) {
  for (const std::string& ident : idents_of(session_.whole())) listed(ident);
  return nearest_track(catalog_, wanted);
}

const track& music::find(const std::string& ident) {
  const std::string wanted = repair_text(ident).text;
  if (const track* found = look_up(wanted)) return *found;
  // Of a file in a stored collection the ident is the whole path.
  if (const track* found = look_up(repair_text(absolute_path(ident)).text)) return *found;
  std::string message = "no track has the ident " + ident;
  const track* near = nearest(wanted);
  if (near != nullptr && near->ident == wanted) throw failure(exit_no_match, hidden_text(wanted));
  if (near != nullptr)
    message +=
        "; the nearest is " + near->ident + (near->title.empty() ? "" : " (" + near->title + ")");
  throw failure(exit_no_match, message + "; zvplaylist generate ... GENPL lists them all");
}

exit_code music::write(const std::vector<ranked_ident>& idents, const playlist_options& options) {
  playlist tracks;
  for (const ranked_ident& each : idents) tracks.push_back({listed(each.ident), each.score});
  const auto format = std::find_if(std::begin(output_formats), std::end(output_formats),
                                   [&](const auto& each) { return each.name == options.format; });
  write_output(options.output, format->render(tracks));
  if (tracks.empty()) out_.note("no track matches");
  if (input_failed_) return exit_bad_input;
  return tracks.empty() ? exit_no_match : exit_fine;
}

exit_code music::write(const std::string& document, const std::string& output) const {
  write_output(output, document);
  return input_failed_ ? exit_bad_input : exit_fine;
}

}  // namespace zvplaylist
