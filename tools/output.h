// output.h: a playlist as text for people, as m3u8 and xspf for players, as json for programs. Each
// format is one function from the tracks to the whole document.
#ifndef ZVPLAYLIST_OUTPUT_H
#define ZVPLAYLIST_OUTPUT_H

#include <string>
#include <string_view>
#include <vector>

#include "tools/track.h"

namespace zvplaylist {

using playlist = std::vector<ranked_track>;

// Aligned columns: rank, ident, title, artist, score.
std::string render_text(const playlist& tracks);
std::string render_m3u8(const playlist& tracks);
std::string render_xspf(const playlist& tracks);
// An array of objects; a field that is not known is left out.
std::string render_json(const playlist& tracks);

struct output_format {
  const char* name;
  std::string (*render)(const playlist& tracks);
};

inline constexpr output_format output_formats[] = {
    {"text", render_text}, {"m3u8", render_m3u8}, {"xspf", render_xspf}, {"json", render_json}};

// A path or URI as a URI reference: unsafe bytes are percent-encoded, an absolute path becomes
// file://.
std::string uri_of(std::string_view location);

// Writes to a file, or to standard output for an empty path or "-". Fails as a storage failure.
void write_output(const std::string& path, const std::string& document);

}  // namespace zvplaylist

#endif
