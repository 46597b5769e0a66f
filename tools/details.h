// details.h: what the tool knows of a track and the library has no place for: where the track is,
// how long it plays, and the stamp of what it was read from. They are attributes of the tool's own,
// so that they are stored, replaced and removed together with the track and cannot go out of step
// with it. Statements cannot name them.
#ifndef ZVPLAYLIST_DETAILS_H
#define ZVPLAYLIST_DETAILS_H

#include <string>
#include <string_view>

#include "tools/track.h"
#include "zvsdk_manager.h"

namespace zvplaylist {

// After the start of the library and before collections are made. The manager must outlive the
// rest.
void register_details(zvsdk_sdkmanager* manager);

// Puts a track's details into the object that describes it to the library.
void add_details(zvsdk_zdo* object, const track& entry);

bool is_detail(std::string_view attribute);
// Takes a detail, as a media object renders it, over into the track.
void take_detail(track& entry, std::string_view attribute, const std::string& text);

// The stamp that a media object holds; 0: none.
uint64_t stamp_of(zvsdk_zdo* media);

}  // namespace zvplaylist

#endif
