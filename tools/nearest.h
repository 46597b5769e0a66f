// nearest.h: a guess at the track that was meant by an ident that no track has.
#ifndef ZVPLAYLIST_NEAREST_H
#define ZVPLAYLIST_NEAREST_H

#include <string_view>

#include "tools/catalog.h"

namespace zvplaylist {

// The first track with this title, else the one whose ident takes the fewest changes of a byte, up
// to a quarter of the text; null when there is none. Letter case does not count. Linear in the
// number of tracks.
const track* nearest_track(const catalog& tracks, std::string_view text);

}  // namespace zvplaylist

#endif
