// What list-backed attributes share: loading a list, naming a criterion, lifting, scores, texts.
#include "attributes/playlist_attr_lists.h"

#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr int32_t s_lowest_score = -1000;  // a row is wanted whole

bool is_value_key(const playlist_list_kind& kind, const char* key) {
  return zcsl_string_equal(key, kind.value_key, 0) ||
         (kind.other_value_key != nullptr && zcsl_string_equal(key, kind.other_value_key, 0));
}

bool is_name_key(const playlist_list_kind& kind, const char* key) {
  return zcsl_string_equal(key, kind.attribute_name, kind.name_in_any_case);
}

// The element around a value in the language of a given locale. Its list lives as long.
struct localized_element {
  playlist_list_owner list;
  playlist_element_owner element; /* behind the list: released before it */

  zvsdk_status find(const playlist_list_kind& kind, zvsdk_locale* locale, uint32_t value) {
    const zvsdk_status status = playlist_attr_retrieve_list(locale, kind.list_type, list.out());
    if (status != 0) return status;
    return g_playlist_lists_interface->list_get_element_by_id(list.get(), value, kind.display_level,
                                                              element.out());
  }
};

zvsdk_status cache_id(zcsl_stringmap** values, const localized_element& found, const char** text) {
  uint32_t id = 0;
  const zvsdk_status status = g_playlist_lists_interface->element_get_id(found.element.get(), &id);
  return status != 0 ? status : playlist_attr_cache_number(values, id, text);
}

zvsdk_status cache_display(zcsl_stringmap** values, const localized_element& found,
                           const char** text) {
  const char* display = nullptr;
  const zvsdk_status status =
      g_playlist_lists_interface->element_get_display_string(found.element.get(), &display);
  return status != 0 ? status : _playlist_attribute_cache_value(values, display, text);
}

zvsdk_status find_row(playlist_list_instance* instance) {
  if (instance->lists.correlates == nullptr) return playlist_error_no_locale;
  return playlist_attr_get_row(instance);
}

}  // namespace

zvsdk_status playlist_attr_operator_at(std::span<const uint32_t> operators, uint32_t index,
                                       uint32_t* op) {
  if (index >= operators.size()) return playlist_warn_not_found;
  *op = operators[index];
  return 0;
}

zvsdk_status playlist_attr_default_locale(playlist_locale_owner& locale) {
  const zvsdk_status status =
      g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_PLAYLIST, locale.out());
  if (status == 0) return 0;
  return g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_MUSIC, locale.out());
}

zvsdk_status playlist_attr_retrieve_list(zvsdk_locale* locale, const char* list_type,
                                         zvsdk_list** list) {
  const char *language = nullptr, *region = nullptr, *descriptor = nullptr;
  const zvsdk_status status = g_playlist_lists_interface->locale_get_info(
      locale, nullptr, &language, &region, &descriptor, nullptr);
  if (status != 0) return status;
  return g_playlist_lists_interface->list_retrieve(list_type, language, region, descriptor, nullptr,
                                                   nullptr, nullptr, list);
}

void playlist_attr_load_lists(const playlist_list_kind& kind, playlist_attr_lists* lists) {
  playlist_locale_owner locale;
  if (playlist_attr_default_locale(locale) != 0) return;
  playlist_attr_retrieve_list(locale.get(), kind.list_type, &lists->list);
  if (kind.correlates != nullptr)
    g_playlist_lists_interface->correlates_retrieve(kind.correlates, nullptr, nullptr, nullptr,
                                                    &lists->correlates);
}

// Owners let go in reverse: the list, the row, the table that the row is of.
void playlist_attr_release_lists(const playlist_attr_lists& lists) {
  const playlist_correlates_owner correlates(lists.correlates);
  const playlist_correlates_set_owner set(lists.set);
  const playlist_list_owner list(lists.list);
}

void playlist_attr_release_instance(playlist_list_instance* instance) {
  zcsl_stringmap_delete(instance->values);
  playlist_attr_release_lists(instance->lists);
  zcsl_memory_free(instance);
}

zvsdk_status playlist_attr_criterion_element(zvsdk_list* list, const char* text, uint32_t number,
                                             playlist_element_owner& element) {
  const zvsdk_listmanager_interface& lists = *g_playlist_lists_interface;
  if (number != 0) {
    if (list != nullptr) lists.list_get_element_by_id(list, number, 0, element.out());
    return 0;
  }
  if (list == nullptr) return playlist_error_no_locale;
  if (lists.list_get_element_by_string(list, text, nullptr, element.out()) != 0)
    return playlist_error_unsupported;
  return 0;
}

bool playlist_attr_names_element(uint32_t number, zvsdk_list_element* element) {
  uint32_t match_id = 0;
  if (number == 0) return true;
  return g_playlist_lists_interface->element_get_match_id(element, &match_id) == 0 &&
         match_id == number;
}

zvsdk_status playlist_attr_range_of(zvsdk_list_element* element, playlist_attr_range* range) {
  return g_playlist_lists_interface->element_get_range(element, &range->lower, &range->upper);
}

zvsdk_status playlist_attr_take_place(playlist_list_instance* instance,
                                      zvsdk_list_element* element) {
  const zvsdk_listmanager_interface& lists = *g_playlist_lists_interface;
  const zvsdk_status status = lists.element_get_level(element, &instance->level);
  return status != 0 ? status : lists.element_get_id(element, &instance->id);
}

zvsdk_status playlist_attr_place_of_text(playlist_list_instance* instance, const char* text,
                                         bool own_number_only) {
  const uint32_t number = instance->id = zcsl_string_atou32(text);
  playlist_element_owner element;
  const zvsdk_status status =
      playlist_attr_criterion_element(instance->lists.list, text, number, element);
  if (status != 0 || !element) return status;
  if (own_number_only && !playlist_attr_names_element(number, element.get())) return 0;
  return playlist_attr_take_place(instance, element.get());
}

zvsdk_status playlist_attr_get_row(playlist_list_instance* instance) {
  playlist_attr_lists& lists = instance->lists;
  return g_playlist_lists_interface->correlates_get_set(lists.correlates, instance->id,
                                                        s_lowest_score, &lists.set);
}

zvsdk_status playlist_attr_seed_outcome(const playlist_list_kind& kind, zvsdk_status found,
                                        const char* text, uint32_t number) {
  if (!playlist_is_not_found(found)) return found;
  zcsl_log(__LINE__, kind.source, zcsl_log_warning, playlist_package_code, text, number);
  return playlist_error_no_seed_data;
}

zvsdk_status playlist_attr_seed_logged(const playlist_list_kind& kind, zvsdk_status status) {
  if (status == playlist_error_no_seed_data) return status;
  return zcsl_logged(status, __LINE__, kind.source);
}

zvsdk_status playlist_attr_like_seed(const playlist_list_kind& kind,
                                     playlist_list_instance* instance, int32_t* threshold) {
  if (instance->op != playlist_op_like) return 0;
  playlist_attr_set_seed_threshold(kind.thresholds, instance->op, threshold);
  const zvsdk_status found = find_row(instance);
  return playlist_attr_seed_logged(
      kind, playlist_attr_seed_outcome(kind, found, kind.no_row_text, instance->id));
}

zvsdk_status playlist_attr_like_text(const playlist_list_kind& kind,
                                     playlist_list_instance* instance, int32_t* threshold) {
  if (instance->op != playlist_op_like) return 0;
  playlist_attr_set_threshold(kind.thresholds, instance->op, instance->level, threshold);
  return find_row(instance);
}

zvsdk_status playlist_attr_lift(const playlist_list_instance& instance, uint32_t* value) {
  const zvsdk_listmanager_interface& lists = *g_playlist_lists_interface;
  if (instance.lists.list == nullptr || instance.level == 0) return 0;
  playlist_element_owner element;
  const zvsdk_status status =
      lists.list_get_element_by_id(instance.lists.list, *value, instance.level, element.out());
  if (status != 0) return playlist_is_not_found(status) ? 0 : status;
  return lists.element_get_id(element.get(), value);
}

zvsdk_status playlist_attr_row_score(const playlist_list_instance& instance, uint32_t value,
                                     int32_t* score) {
  if (instance.lists.set == nullptr) return playlist_error_no_locale;
  return g_playlist_lists_interface->correlates_set_get_score(instance.lists.set, value, score);
}

zvsdk_status playlist_attr_compare_id(const playlist_list_instance& instance, uint32_t value,
                                      int32_t* score) {
  switch (instance.op) {
    case playlist_op_equal:
      *score = playlist_attr_verdict(value == instance.id);
      return 0;
    case playlist_op_not_equal:
      *score = playlist_attr_verdict(value != instance.id);
      return 0;
    case playlist_op_like:
      return playlist_attr_row_score(instance, value, score);
    default:
      return playlist_error_internal;
  }
}

zvsdk_status playlist_attr_text_of_id(const playlist_list_kind& kind, zcsl_stringmap** values,
                                      uint32_t value, const char* key, zvsdk_locale* locale,
                                      const char** text) {
  if (is_value_key(kind, key)) return playlist_attr_cache_number(values, value, text);
  if (!is_name_key(kind, key)) return playlist_warn_not_found;
  if (locale == nullptr) return playlist_error_no_locale;
  localized_element found;
  const zvsdk_status status = found.find(kind, locale, value);
  return status != 0 ? status : cache_display(values, found, text);
}

zvsdk_status playlist_attr_text_of_measure(const playlist_list_kind& kind, zcsl_stringmap** values,
                                           uint32_t value, const char* key, zvsdk_locale* locale,
                                           const char** text) {
  if (locale == nullptr) return playlist_attr_cache_number(values, value, text);
  localized_element found;
  const zvsdk_status status = found.find(kind, locale, value);
  if (status != 0) return status;
  if (is_value_key(kind, key)) return cache_id(values, found, text);
  if (is_name_key(kind, key)) return cache_display(values, found, text);
  return playlist_warn_not_found;
}
