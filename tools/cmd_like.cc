// zvplaylist like: a playlist of the tracks that are like one of them.
#include <CLI/CLI.hpp>

#include "tools/music.h"

namespace zvplaylist {
namespace {

struct like_options {
  music_options source;
  playlist_options target;
  uint32_t max = 0;  // 0, as in the next two: as the library has it
  uint32_t per_artist = 0;
  uint32_t per_album = 0;
  std::string ident;
};

exit_code run_like(const like_options& options) {
  music tracks(options.source);
  const std::pair<const char*, uint32_t> bounds[] = {
      {ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, options.max},
      {ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, options.per_artist},
      {ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, options.per_album},
      {ZVSDK_PLAYLIST_OPTION_RANDOM, options.target.random}};
  for (const auto& [option, number] : bounds)
    if (number != 0) tracks.library().set_option(option, number);
  if (!tracks.read()) return exit_bad_input;
  return tracks.write(tracks.library().more_like(tracks.find(options.ident).ident), options.target);
}

}  // namespace

action declare_like(CLI::App& app) {
  auto options = std::make_shared<like_options>();
  app.add_option("IDENT", options->ident, "The track that the others are to be like")->required();
  declare_count(app, "--max", options->max, "At most N tracks, 25 if not given");
  declare_count(app, "--per-artist", options->per_artist,
                "At most N tracks of an artist, 2 if not given");
  declare_count(app, "--per-album", options->per_album,
                "At most N tracks of an album, 1 if not given");
  declare_music_options(app, options->source);
  declare_playlist_options(app, options->target,
                           "Repeat the choice among equals that N stands for");
  app.footer(
      "Example:\n"
      "  zvplaylist like sample-017 --import data/sample/tracks.csv --max 10\n"
      "\n"
      "Exit codes: 0 fine, 1 no such track or nothing like it, 2 usage,\n"
      "3 an input held nothing usable, 4 the output could not be written.");
  return [options] { return run_like(*options); };
}

}  // namespace zvplaylist
