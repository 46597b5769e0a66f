// stored_track.h: a track out of what a collection holds for it. Genres and the like come back as
// the lists name them, an era that is a plain year as the year.
#ifndef ZVPLAYLIST_STORED_TRACK_H
#define ZVPLAYLIST_STORED_TRACK_H

#include <string>
#include <vector>

#include "tools/media_values.h"
#include "tools/track.h"

namespace zvplaylist {

track track_of_media(const std::string& ident, const std::vector<attribute_values>& media);

}  // namespace zvplaylist

#endif
