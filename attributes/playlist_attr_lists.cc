// What list-backed attributes share: loading a list, naming a criterion, reading an element.
#include "attributes/playlist_attr_common.h"
#include "support/zcsl_string.h"

namespace {

zvsdk_status default_locale(playlist_locale_owner& locale) {
  const zvsdk_status status =
      g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_PLAYLIST, locale.out());
  if (status == 0) return 0;
  return g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_MUSIC, locale.out());
}

struct locale_info {
  const char* language = nullptr;
  const char* region = nullptr;
  const char* descriptor = nullptr;

  zvsdk_status read(zvsdk_locale* locale) {
    return g_playlist_lists_interface->locale_get_info(locale, nullptr, &language, &region,
                                                       &descriptor, nullptr);
  }
  zvsdk_status retrieve(const char* list_type, zvsdk_list** list) const {
    return g_playlist_lists_interface->list_retrieve(list_type, language, region, descriptor,
                                                     nullptr, nullptr, nullptr, list);
  }
};

}  // namespace

void playlist_attr_load_list(const char* list_type, const char* correlates_name, zvsdk_list** list,
                             zvsdk_correlates** correlates) {
  playlist_locale_owner locale;
  locale_info info;
  if (default_locale(locale) != 0) return;
  if (info.read(locale.get()) == 0) info.retrieve(list_type, list);
  if (correlates_name != nullptr)
    g_playlist_lists_interface->correlates_retrieve(correlates_name, nullptr, nullptr, nullptr,
                                                    correlates);
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

void playlist_attr_media::take_list_element(const char* list_type) const {
  zvsdk_list_element* element = nullptr;
  if (api->get_media_list_element(context, &element) != 0) return;
  const char* type = nullptr;
  uint32_t id = 0;
  if (g_playlist_lists_interface->element_get_list_type(element, &type) == 0 &&
      zcsl_string_equal(type, list_type, 0) &&
      g_playlist_lists_interface->element_get_id(element, &id) == 0)
    api->set_integer_data(context, static_cast<int32_t>(id));
}

zvsdk_status playlist_attr_localized::find(zvsdk_locale* locale, const char* list_type, uint32_t id,
                                           uint32_t level) {
  locale_info info;
  zvsdk_status status = info.read(locale);
  if (status == 0) status = info.retrieve(list_type, list.out());
  if (status == 0)
    status =
        g_playlist_lists_interface->list_get_element_by_id(list.get(), id, level, element.out());
  return status;
}

zvsdk_status playlist_attr_cache_id(zcsl_stringmap** map, zvsdk_list_element* element,
                                    const char** copy) {
  uint32_t id = 0;
  const zvsdk_status status = g_playlist_lists_interface->element_get_id(element, &id);
  return status != 0 ? status : playlist_attr_cache_number(map, id, copy);
}

zvsdk_status playlist_attr_cache_display(zcsl_stringmap** map, zvsdk_list_element* element,
                                         const char** copy) {
  const char* text = nullptr;
  const zvsdk_status status =
      g_playlist_lists_interface->element_get_display_string(element, &text);
  return status != 0 ? status : _playlist_attribute_cache_value(map, text, copy);
}
