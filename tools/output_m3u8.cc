// The playlist as extended M3U in UTF-8.
#include "tools/output.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

std::string label(const track& entry) {
  const std::string artists = joined(entry.artists);
  const std::string& title = entry.title.empty() ? entry.ident : entry.title;
  return printable(artists.empty() ? title : artists + " - " + title);
}

// One line that a player reads back as the location, fit for a terminal too.
std::string location_line(const track& entry) {
  const std::string& location = entry.location;
  if (printable(location) != location) return uri_of(location);
  return location.starts_with('#') ? "./" + location : location;
}

}  // namespace

std::string render_m3u8(const playlist& tracks) {
  std::string document = "#EXTM3U\n";
  for (const ranked_track& place : tracks) {
    const track& entry = *place.entry;
    const std::string seconds = entry.seconds == 0 ? "-1" : std::to_string(entry.seconds);
    document += "#EXTINF:" + seconds + "," + label(entry) + "\n" + location_line(entry) + "\n";
  }
  return document;
}

}  // namespace zvplaylist
