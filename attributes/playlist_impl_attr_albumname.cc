// ZV_AlbumName: the titles of the albums that a media belongs to.
#include "attributes/playlist_attr_titles.h"
#include "attributes/playlist_impl_attributes.h"

namespace {

constexpr playlist_title_kind s_album_name = {
    .source = "playlist_impl_attr_albumname",
    .attribute_name = "ZV_AlbumName",
    .own = playlist_attr_context::album,
    .other = playlist_attr_context::track,
    .child_key = "zvsdk_ctx_album!",
    .media_only = false,
};

}  // namespace

zvsdk_status playlist_init_attribute_albumname() {
  return playlist_register_built_in(playlist_title_attribute<s_album_name>);
}
