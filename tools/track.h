// track.h: one track as the tool knows it, whatever it was read from. Texts are the library's kind
// of UTF-8 (text.h), except `location`, which holds a path's own bytes.
#ifndef ZVPLAYLIST_TRACK_H
#define ZVPLAYLIST_TRACK_H

#include <cstdint>
#include <string>
#include <vector>

namespace zvplaylist {

struct track {
  std::string ident;
  std::string location;  // what a player opens: a path or a URI
  std::string title;
  std::vector<std::string> artists;  // the main one first
  std::string album;
  std::string genre;
  std::string subgenre;
  uint32_t year = 0;     // 0: unknown, as in the next two
  uint32_t tempo = 0;    // beats a minute
  uint32_t seconds = 0;  // playing time
};

// One place of a playlist. The track belongs to the catalog.
struct ranked_track {
  const track* entry;
  int32_t score;
};

}  // namespace zvplaylist

#endif
