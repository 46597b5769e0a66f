// ZV_Era: when a media was made, as an id of the era list or as a year. The list resolves either to
// an element that stands for a span of years, and spans are what is compared.
#include "attributes/playlist_attr_elements.h"
#include "attributes/playlist_impl_attributes.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr playlist_list_kind s_kind = {
    .source = "playlist_impl_attr_era",
    .attribute_name = "ZV_Era",
    .name_in_any_case = true,
    .list_type = "zvsdk_list_type_eras",
    .correlates = "zvsdk_correlates_era",
    .value_key = "_sdkmgr_val_list_era_id",
    .other_value_key = "_sdkmgr_val_desc_era_id",
    .display_level = 3,
    .no_row_text = "Failed to find a correlates set for Era. (criteria:%d)",
    .thresholds = {.from_seed = 850, .by_level = {850, 700, 750, 800}},
};
constexpr uint32_t s_stamp = 0xbbccddee;
constexpr uint32_t s_element_limit = 32;

struct playlist_era_instance : playlist_list_instance {
  playlist_attr_range span; /* the criterion's, in years */
  zcsl_lrumap* elements;
};

playlist_era_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_era_instance>(instance);
}

// The era of the artist's contributor, or else the object's own year. An artist by itself has
// neither: only an artist that is reached from a track or album is asked for its contributor.
zvsdk_status _playlist_era_get_id(zvsdk_zdo* object, uint32_t* id) {
  using kind = playlist_attr_context;
  const kind context = playlist_attr_context_of(object);
  const char* year = nullptr;
  *id = 0;
  if (context == kind::artist) return playlist_warn_not_found;
  if (context == kind::album || context == kind::track)
    playlist_attr_value(object, "zvsdk_val_year", &year);
  if (playlist_attr_contributor_number(object, s_kind.value_key, id) != 0)
    *id = zcsl_string_atou32(year);
  return *id != 0 ? 0 : playlist_warn_not_found;
}

zvsdk_status playlist_era_attribute_name(const char** name) {
  *name = s_kind.attribute_name;
  return 0;
}

zvsdk_status playlist_era_supported_operators(uint32_t index, uint32_t* op) {
  return playlist_attr_operator_at(playlist_range_operators, index, op);
}

zvsdk_status playlist_era_collect_attribute_data(playlist_collect_context* context,
                                                 const playlist_collect_api* api) {
  const playlist_attr_media media{context, api};
  playlist_zdo_owner object;
  if (media.object(object) == 0)
    playlist_attr_from_track_or_object(object.get(), media, [&](zvsdk_zdo* holder) {
      uint32_t id = 0;
      const zvsdk_status status = _playlist_era_get_id(holder, &id);
      return status != 0 ? status : media.give(id);
    });
  media.take_list_element(s_kind.list_type);
  return 0;
}

zvsdk_status playlist_era_create_instance(playlist_attribute_instance** instance) {
  const zvsdk_status status = playlist_attr_create<playlist_era_instance>(s_stamp, instance);
  if (status != 0) return zcsl_logged(status, __LINE__, s_kind.source);
  playlist_era_instance* era = record_of(*instance);
  playlist_attr_create_elements(&era->elements, s_element_limit);
  playlist_attr_load_lists(s_kind, &era->lists);
  return 0;
}

// Digits alone, or nothing at all.
bool is_number(const char* text) {
  while (zcsl_string_isdigit(static_cast<uint8_t>(*text))) ++text;
  return *text == '\0';
}

// LIKE takes the element's place only for a number that is the element's or one of its years.
bool takes_place(const playlist_era_instance& era, uint32_t number, zvsdk_list_element* element) {
  return era.op != playlist_op_like || playlist_attr_names_element(number, element) ||
         era.span.has(number);
}

zvsdk_status span_of_text(playlist_era_instance* era, const char* text) {
  if (is_number(text)) era->id = zcsl_string_atou32(text);
  const uint32_t number = era->id;
  playlist_element_owner element;
  zvsdk_status status = playlist_attr_criterion_element(era->lists.list, text, number, element);
  if (status != 0) return status;
  if (!element) {
    era->span = {number, number};
    return 0;
  }
  if (number != 0) playlist_attr_keep_element(era->elements, number, element.get());
  status = playlist_attr_range_of(element.get(), &era->span);
  if (status == 0 && takes_place(*era, number, element.get()))
    status = playlist_attr_take_place(era, element.get());
  return status;
}

zvsdk_status playlist_era_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                              const char* text, int32_t* threshold) {
  playlist_era_instance* era = record_of(instance);
  era->begin_criterion(op);
  zvsdk_status status = span_of_text(era, text);
  if (status == 0) status = playlist_attr_like_text(s_kind, era, threshold);
  return zcsl_logged(status, __LINE__, s_kind.source);
}

// A year becomes the era that it lies in.
zvsdk_status span_of_seed(playlist_era_instance* era) {
  if (era->lists.list == nullptr) return 0;
  playlist_element_owner element;
  zvsdk_status status = g_playlist_lists_interface->list_get_element_by_id(era->lists.list, era->id,
                                                                           0, element.out());
  if (status != 0)
    return playlist_attr_seed_outcome(
        s_kind, status, "Failed to find a list element for Era. (criteria:%d)", era->id);
  status = playlist_attr_range_of(element.get(), &era->span);
  if (status == 0 && era->span.has(era->id))
    status = g_playlist_lists_interface->element_get_id(element.get(), &era->id);
  return status;
}

// LIKE needs no span: only the row of correlates decides whether the seed will do.
zvsdk_status playlist_era_set_seed_criteria(playlist_attribute_instance* instance, uint32_t op,
                                            zvsdk_zdo* seed, int32_t* threshold) {
  playlist_era_instance* era = record_of(instance);
  era->begin_criterion(op);
  if (_playlist_era_get_id(seed, &era->id) != 0)
    return zcsl_logged(playlist_error_no_seed_data, __LINE__, s_kind.source);
  const zvsdk_status status = span_of_seed(era);
  if (op != playlist_op_like) return zcsl_logged(status, __LINE__, s_kind.source);
  return playlist_attr_like_seed(s_kind, era, threshold);
}

// A value that the list does not know has the span 0 to 0 and so comes before everything. At the
// criterion's level the value, too, becomes the element's.
zvsdk_status span_of_candidate(const playlist_era_instance& era, uint32_t* value,
                               playlist_attr_range* span) {
  if (era.lists.list == nullptr) return 0;
  zvsdk_list_element* element = nullptr;
  zvsdk_status status =
      playlist_attr_recent_element(era.elements, era.lists.list, *value, era.level, &element);
  if (status != 0) return playlist_is_not_found(status) ? 0 : status;
  status = playlist_attr_range_of(element, span);
  if (era.level != 0) status = g_playlist_lists_interface->element_get_id(element, value);
  return status;
}

zvsdk_status compare(const playlist_era_instance& era, uint32_t value, int32_t* score) {
  const playlist_attr_range& criterion = era.span;
  playlist_attr_range candidate = {};
  const zvsdk_status status = span_of_candidate(era, &value, &candidate);
  if (status != 0) return status;
  bool holds = false;
  switch (era.op) {
    case playlist_op_equal:
      holds = criterion.lower <= candidate.lower && criterion.upper >= candidate.upper;
      break;
    case playlist_op_not_equal:
      holds = criterion.lower > candidate.lower || criterion.upper < candidate.upper;
      break;
    case playlist_op_greater:
      holds = criterion.lower < candidate.lower;
      break;
    case playlist_op_greater_equal:
      holds = criterion.lower <= candidate.upper;
      break;
    case playlist_op_less:
      holds = criterion.lower > candidate.upper;
      break;
    case playlist_op_less_equal:
      holds = criterion.upper >= candidate.upper;
      break;
    case playlist_op_like:
      return playlist_attr_row_score(era, value, score);
    default:
      return playlist_error_internal;
  }
  *score = playlist_attr_verdict(holds);
  return 0;
}

zvsdk_status playlist_era_compare_integer_data(playlist_attribute_instance* instance,
                                               uint32_t value, int32_t* score) {
  playlist_era_instance& era = *record_of(instance);
  const zvsdk_status status =
      era.scores.get(value, score, [&] { return compare(era, value, score); });
  return zcsl_logged(status, __LINE__, s_kind.source);
}

zvsdk_status playlist_era_value_from_integer_data(playlist_attribute_instance* instance,
                                                  uint32_t value, const char* key,
                                                  zvsdk_locale* locale, const char** text) {
  return zcsl_logged(
      playlist_attr_text_of_measure(s_kind, &record_of(instance)->values, value, key, locale, text),
      __LINE__, s_kind.source);
}

zvsdk_status playlist_era_release_instance(playlist_attribute_instance* instance) {
  playlist_era_instance* era = record_of(instance);
  zcsl_lrumap_delete(era->elements);
  playlist_attr_release_instance(era);
  return 0;
}

constexpr playlist_attribute s_era = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = playlist_era_attribute_name,
    .supported_operators = playlist_era_supported_operators,
    .collect_attribute_data = playlist_era_collect_attribute_data,
    .create_instance = playlist_era_create_instance,
    .set_string_criteria = playlist_era_set_string_criteria,
    .set_seed_criteria = playlist_era_set_seed_criteria,
    .compare_integer_data = playlist_era_compare_integer_data,
    .compare_string_data = nullptr,
    .value_from_integer_data = playlist_era_value_from_integer_data,
    .value_from_string_data = nullptr,
    .release_instance = playlist_era_release_instance,
};

}  // namespace

zvsdk_status playlist_init_attribute_era() {
  return playlist_register_built_in(s_era);
}
