// stored_track.h: a track on its way into a collection and out of what one holds for it. Genres and
// the like come back as the lists name them, an era that is a plain year as the year.
#ifndef ZVPLAYLIST_STORED_TRACK_H
#define ZVPLAYLIST_STORED_TRACK_H

#include <string>
#include <vector>

#include "tools/library.h"
#include "tools/media_values.h"
#include "tools/term_choice.h"
#include "tools/track.h"

namespace zvplaylist {

// The object that describes a track to the library.
unique_zdo object_of(const track& entry, const chosen_terms& terms);

track track_of_media(const std::string& ident, const std::vector<attribute_values>& media);

}  // namespace zvplaylist

#endif
