// track.h: one track as the tool knows it, whatever it was read from. Texts are the library's kind
// of UTF-8 (text.h), except `location`, which holds a path's own bytes.
#ifndef ZVPLAYLIST_TRACK_H
#define ZVPLAYLIST_TRACK_H

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tools/columns.h"

namespace zvplaylist {

// A text that should name an element of one of the library's lists, such as a genre.
struct term {
  field source;
  std::string text;
};

struct track {
  std::string ident;
  std::string location;  // what a player opens: a path or a URI
  std::string title;
  std::vector<std::string> artists;  // the main one first
  std::string album;
  std::vector<term> terms{};                 // genres, moods and the like, as the source names them
  uint32_t year = 0;                         // 0: unknown, as in the next two
  uint32_t tempo = 0;                        // beats a minute
  uint32_t seconds = 0;                      // playing time
  std::optional<float> valence{}, energy{};  // 0 to 1
  uint64_t stamp = 0;  // tells the state of the file or row that it was read from; 0: unknown

  // The first term of a field, or an empty text.
  std::string term_of(field source) const {
    for (const term& each : terms)
      if (each.source == source) return each.text;
    return {};
  }
};

// One place of a playlist. The track belongs to the catalog.
struct ranked_track {
  const track* entry;
  int32_t score;
};

}  // namespace zvplaylist

#endif
