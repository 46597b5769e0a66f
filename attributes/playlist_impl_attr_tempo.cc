// ZV_Tempo: one tempo a media, in beats a minute. A criterion is a band of tempos: that of a list
// element, or a single number. Bounds are inclusive, and comparisons are against the whole band.
#include "attributes/playlist_attr_lists.h"
#include "attributes/playlist_dsp.h"
#include "attributes/playlist_impl_attributes.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr playlist_list_kind s_kind = {
    .source = "playlist_impl_attr_tempo",
    .attribute_name = "ZV_Tempo",
    .name_in_any_case = true,
    .list_type = "zvsdk_list_type_tempos",
    .correlates = nullptr,
    .value_key = "_sdkmgr_val_list_tempo_value",
    .other_value_key = "_sdkmgr_val_list_tempo_data",
    .display_level = 2,
    .no_row_text = nullptr,
    .thresholds = {.from_seed = 900, .by_level = {900, 700, 800, 900}},
};
constexpr uint32_t s_stamp = 0xccddeeff;

struct playlist_tempo_instance {
  uint32_t stamp;
  uint32_t op;
  playlist_attr_range band;
  uint32_t level;            /* of the named element; 0 when the criterion named none */
  playlist_attr_lists lists; /* the list alone */
  zcsl_stringmap* values;
};

playlist_tempo_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_tempo_instance>(instance);
}

zvsdk_status playlist_tempo_attribute_name(const char** name) {
  *name = s_kind.attribute_name;
  return 0;
}

zvsdk_status playlist_tempo_supported_operators(uint32_t index, uint32_t* op) {
  return playlist_attr_operator_at(playlist_range_operators, index, op);
}

zvsdk_status playlist_tempo_collect_attribute_data(playlist_collect_context* context,
                                                   const playlist_collect_api* api) {
  const playlist_attr_media media{context, api};
  playlist_zdo_owner object;
  playlist_zdo_owner held;
  if (media.object(object) == 0)
    if (zvsdk_zdo* track = playlist_attr_track_of_media(object.get(), media, held))
      media.take_number(track, s_kind.value_key);
  media.take_list_element(s_kind.list_type);
  return 0;
}

zvsdk_status playlist_tempo_create_instance(playlist_attribute_instance** instance) {
  const zvsdk_status status = playlist_attr_create<playlist_tempo_instance>(s_stamp, instance);
  if (status != 0) return zcsl_logged(status, __LINE__, s_kind.source);
  playlist_attr_load_lists(s_kind, &record_of(*instance)->lists);
  return 0;
}

// A number inside an element takes the element's whole band but names nothing, so no level.
zvsdk_status band_of_text(playlist_tempo_instance* tempo, const char* text) {
  const uint32_t number = zcsl_string_atou32(text);
  playlist_element_owner element;
  zvsdk_status status = playlist_attr_criterion_element(tempo->lists.list, text, number, element);
  if (status != 0) return status;
  if (!element) {
    tempo->band = {number, number};
    return 0;
  }
  status = playlist_attr_range_of(element.get(), &tempo->band);
  if (status == 0 && playlist_attr_names_element(number, element.get()))
    status = g_playlist_lists_interface->element_get_level(element.get(), &tempo->level);
  return status;
}

zvsdk_status playlist_tempo_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                                const char* text, int32_t* threshold) {
  playlist_tempo_instance* tempo = record_of(instance);
  tempo->op = op;
  const zvsdk_status status = band_of_text(tempo, text);
  if (status != 0) return zcsl_logged(status, __LINE__, s_kind.source);
  playlist_attr_set_threshold(s_kind.thresholds, op, tempo->level, threshold);
  return 0;
}

zvsdk_status band_of_seed(playlist_tempo_instance* tempo, uint32_t number) {
  if (tempo->lists.list == nullptr) {
    tempo->band = {number, number};
    return 0;
  }
  playlist_element_owner element;
  const zvsdk_status status = g_playlist_lists_interface->list_get_element_by_id(
      tempo->lists.list, number, 0, element.out());
  if (status == 0) return playlist_attr_range_of(element.get(), &tempo->band);
  return playlist_attr_seed_outcome(
      s_kind, status, "Failed to find a list element for Tempo. (criteria: %d)", number);
}

// A seed without this data is no fault: the statement goes on without the criterion.
zvsdk_status playlist_tempo_set_seed_criteria(playlist_attribute_instance* instance, uint32_t op,
                                              zvsdk_zdo* seed, int32_t* threshold) {
  playlist_tempo_instance* tempo = record_of(instance);
  tempo->op = op;
  playlist_zdo_owner held;
  zvsdk_zdo* track = playlist_attr_track_of_seed(seed, held);
  const char* text = nullptr;
  if (track == nullptr || playlist_attr_value(track, s_kind.value_key, &text) != 0)
    return playlist_error_no_seed_data;
  const zvsdk_status status = band_of_seed(tempo, zcsl_string_atou32(text));
  playlist_attr_set_seed_threshold(s_kind.thresholds, op, threshold);
  return playlist_attr_seed_logged(s_kind, status);
}

zvsdk_status playlist_tempo_compare_integer_data(playlist_attribute_instance* instance,
                                                 uint32_t value, int32_t* score) {
  const playlist_tempo_instance& tempo = *record_of(instance);
  const playlist_attr_range& band = tempo.band;
  bool holds = false;
  switch (tempo.op) {
    case playlist_op_equal:
      holds = band.has(value);
      break;
    case playlist_op_not_equal:
      holds = !band.has(value);
      break;
    case playlist_op_greater:
      holds = value > band.upper;
      break;
    case playlist_op_greater_equal:
      holds = value >= band.lower;
      break;
    case playlist_op_less:
      holds = value < band.lower;
      break;
    case playlist_op_less_equal:
      holds = value <= band.upper;
      break;
    case playlist_op_like:
      return dsp_primary_tempo_similarity((band.lower + band.upper) >> 1, value, score);
    default:
      return zcsl_logged(playlist_error_internal, __LINE__, s_kind.source);
  }
  *score = playlist_attr_verdict(holds);
  return 0;
}

zvsdk_status playlist_tempo_value_from_integer_data(playlist_attribute_instance* instance,
                                                    uint32_t value, const char* key,
                                                    zvsdk_locale* locale, const char** text) {
  return zcsl_logged(
      playlist_attr_text_of_measure(s_kind, &record_of(instance)->values, value, key, locale, text),
      __LINE__, s_kind.source);
}

zvsdk_status playlist_tempo_release_instance(playlist_attribute_instance* instance) {
  playlist_tempo_instance* tempo = record_of(instance);
  zcsl_stringmap_delete(tempo->values);
  playlist_attr_release_lists(tempo->lists);
  zcsl_memory_free(tempo);
  return 0;
}

constexpr playlist_attribute s_tempo = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = playlist_tempo_attribute_name,
    .supported_operators = playlist_tempo_supported_operators,
    .collect_attribute_data = playlist_tempo_collect_attribute_data,
    .create_instance = playlist_tempo_create_instance,
    .set_string_criteria = playlist_tempo_set_string_criteria,
    .set_seed_criteria = playlist_tempo_set_seed_criteria,
    .compare_integer_data = playlist_tempo_compare_integer_data,
    .compare_string_data = nullptr,
    .value_from_integer_data = playlist_tempo_value_from_integer_data,
    .value_from_string_data = nullptr,
    .release_instance = playlist_tempo_release_instance,
};

}  // namespace

zvsdk_status playlist_init_attribute_tempo() {
  return playlist_register_built_in(s_tempo);
}
