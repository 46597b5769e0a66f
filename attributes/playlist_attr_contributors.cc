// Origin and artist type: reading the contributor, the criterion, the comparison.
#include "attributes/playlist_attr_contributors.h"

#include <iterator>

#include "support/zcsl_log.h"

namespace {

playlist_list_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_list_instance>(instance);
}

zvsdk_status get_id(const playlist_contributor_kind& kind, zvsdk_zdo* object, uint32_t* id) {
  *id = 0;
  playlist_attr_contributor_number(object, kind.list.value_key, id);
  return *id != 0 ? 0 : playlist_warn_not_found;
}

int32_t self_score(const playlist_contributor_kind& kind, uint32_t level) {
  return level < std::size(kind.self_score) ? kind.self_score[level] : 0;
}

zvsdk_status compare(const playlist_contributor_kind& kind, const playlist_list_instance& own,
                     uint32_t value, int32_t* score) {
  zvsdk_status status = playlist_attr_lift(own, &value);
  if (status == 0) status = playlist_attr_compare_id(own, value, score);
  if (status != 0) return zcsl_logged(status, __LINE__, kind.list.source);
  if (own.op == playlist_op_like && *score == 0 && value == own.id)
    *score = self_score(kind, own.level);
  return 0;
}

}  // namespace

zvsdk_status playlist_contributor_collect(const playlist_contributor_kind& kind,
                                          const playlist_attr_media& media) {
  const auto take_id = [&](zvsdk_zdo* holder) {
    uint32_t id = 0;
    const zvsdk_status status = get_id(kind, holder, &id);
    return status != 0 ? status : media.give(id);
  };
  playlist_zdo_owner object;
  if (media.object(object) == 0) playlist_attr_from_track_or_object(object.get(), media, take_id);
  media.take_list_element(kind.list.list_type);
  return 0;
}

zvsdk_status playlist_contributor_create_instance(const playlist_contributor_kind& kind,
                                                  playlist_attribute_instance** instance) {
  const zvsdk_status status = playlist_attr_create<playlist_list_instance>(kind.stamp, instance);
  if (status != 0) return zcsl_logged(status, __LINE__, kind.list.source);
  playlist_attr_load_lists(kind.list, &record_of(*instance)->lists);
  return 0;
}

zvsdk_status playlist_contributor_set_string_criteria(const playlist_contributor_kind& kind,
                                                      playlist_attribute_instance* instance,
                                                      uint32_t op, const char* text,
                                                      int32_t* threshold) {
  playlist_list_instance* own = record_of(instance);
  own->begin_criterion(op);
  const bool own_number_only = kind.own_number_only || op == playlist_op_like;
  zvsdk_status status = playlist_attr_place_of_text(own, text, own_number_only);
  if (status == 0) status = playlist_attr_like_text(kind.list, own, threshold);
  return zcsl_logged(status, __LINE__, kind.list.source);
}

zvsdk_status playlist_contributor_set_seed_criteria(const playlist_contributor_kind& kind,
                                                    playlist_attribute_instance* instance,
                                                    uint32_t op, zvsdk_zdo* seed,
                                                    int32_t* threshold) {
  playlist_list_instance* own = record_of(instance);
  own->begin_criterion(op);
  if (get_id(kind, seed, &own->id) != 0)
    return zcsl_logged(playlist_error_no_seed_data, __LINE__, kind.list.source);
  return playlist_attr_like_seed(kind.list, own, threshold);
}

zvsdk_status playlist_contributor_compare(const playlist_contributor_kind& kind,
                                          playlist_attribute_instance* instance, uint32_t value,
                                          int32_t* score) {
  playlist_list_instance& own = *record_of(instance);
  return own.scores.get(value, score, [&] { return compare(kind, own, value, score); });
}

zvsdk_status playlist_contributor_value(const playlist_contributor_kind& kind,
                                        playlist_attribute_instance* instance, uint32_t value,
                                        const char* key, zvsdk_locale* locale, const char** text) {
  return zcsl_logged(
      playlist_attr_text_of_id(kind.list, &record_of(instance)->values, value, key, locale, text),
      __LINE__, kind.list.source);
}

zvsdk_status playlist_contributor_release_instance(playlist_attribute_instance* instance) {
  playlist_attr_release_instance(record_of(instance));
  return 0;
}
