// ZV_TrackName: the title of a track; of an album, the titles of the tracks that are the media's.
#include "attributes/playlist_attr_titles.h"
#include "attributes/playlist_impl_attributes.h"

namespace {

constexpr playlist_title_kind s_track_name = {
    .source = "playlist_impl_attr_trackname",
    .attribute_name = "ZV_TrackName",
    .own = playlist_attr_context::track,
    .other = playlist_attr_context::album,
    .child_key = playlist_key_matching_track,
    .media_only = true,
};

}  // namespace

zvsdk_status playlist_init_attribute_trackname() {
  return playlist_register_built_in(playlist_title_attribute<s_track_name>);
}
