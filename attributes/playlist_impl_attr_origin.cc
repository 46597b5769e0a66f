// ZV_Origin: where a media's artist comes from.
#include "attributes/playlist_attr_contributors.h"
#include "attributes/playlist_impl_attributes.h"

namespace {

constexpr playlist_contributor_kind s_origin = {
    .list = {.source = "playlist_impl_attr_origin",
             .attribute_name = "ZV_Origin",
             .name_in_any_case = true,
             .list_type = "zvsdk_list_type_origins",
             .correlates = "zvsdk_correlates_origin",
             .value_key = "_sdkmgr_val_list_origin_id",
             .other_value_key = "_sdkmgr_val_desc_origin_id",
             .display_level = 4,
             .no_row_text = "Failed to find a correlates set for Origin. (criteria:%d)",
             .thresholds = {.from_seed = 700, .by_level = {700, 500, 600, 700}}},
    .stamp = 0xabbccdde,
    .own_number_only = true,
    .self_score = {},
};

}  // namespace

zvsdk_status playlist_init_attribute_origin() {
  return playlist_register_built_in(playlist_contributor_attribute<s_origin>);
}
