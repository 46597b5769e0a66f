// ZV_ArtistType: what kind of artist a media's artist is. An id that has no score with itself still
// passes the threshold of its level.
#include "attributes/playlist_attr_contributors.h"
#include "attributes/playlist_impl_attributes.h"

namespace {

constexpr playlist_contributor_kind s_arttype = {
    .list = {.source = "playlist_impl_attr_arttype",
             .attribute_name = "ZV_ArtistType",
             .name_in_any_case = true,
             .list_type = "zvsdk_list_type_artist_types",
             .correlates = "zvsdk_correlates_arttype",
             .value_key = "_sdkmgr_val_list_artist_type_id",
             .other_value_key = nullptr,
             .display_level = 2,
             .no_row_text = "Failed to find a correlates set for ArtistType. (criteria:%d)",
             .thresholds = {.from_seed = 800, .by_level = {800, 600, 700, 800}}},
    .stamp = 0xbccddeef,
    .own_number_only = false,
    .self_score = {0, 600, 700, 0},
};

}  // namespace

zvsdk_status playlist_init_attribute_arttype() {
  return playlist_register_built_in(playlist_contributor_attribute<s_arttype>);
}
