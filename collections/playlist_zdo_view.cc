// What a data object of a media answers: the provider table, the map from value keys to attributes,
// and the end of a view.
#include "collections/playlist_zdo_view.h"

#include <utility>

#include "module/playlist_services.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_zdo_view";
constexpr char s_context[] = "zvsdk_ctx_pldata";
constexpr char s_ident_key[] = "ident_ref";

struct key_attribute {
  const char* key;
  const char* attribute;
};
constexpr key_attribute s_keys[] = {
    {"_sdkmgr_val_list_artist_type_id", "ZV_ArtistType"},
    {"_sdkmgr_val_desc_era_id", "ZV_Era"},
    {"_sdkmgr_val_list_era_id", "ZV_Era"},
    {"_sdkmgr_val_list_genre_id", "ZV_Genre"},
    {"_sdkmgr_val_desc_origin_id", "ZV_Origin"},
    {"_sdkmgr_val_list_origin_id", "ZV_Origin"},
    {"_sdkmgr_val_list_mood_data", "ZV_Mood"},
    {"_sdkmgr_val_list_mood_id", "ZV_Mood"},
    {"_sdkmgr_val_list_tempo_value", "ZV_Tempo"},
};

zcsl_spinlock s_playlist_zdo_key_map_lock;  // guards making and deleting the map
zcsl_stringmap* s_playlist_zdo_key_map = nullptr;

zvsdk_status create_key_map(zcsl_stringmap** map) {
  zcsl_stringmap_owner made;
  zvsdk_status status =
      zcsl_stringmap_create(made.out(), uint32_t{zcsl_hashtable_flag_key_by_reference} |
                                            zcsl_stringmap_flag_value_by_reference);
  for (const key_attribute& row : s_keys)
    if (status == 0) status = zcsl_stringmap_value_add(made.get(), row.key, row.attribute);
  if (status == 0) *map = made.release();
  return status;
}

bool is_ident_key(const char* key) {
  return zcsl_string_equal(key, s_ident_key, 1) != 0;
}

// The attribute that answers a key: a key that is not in the map names its attribute itself.
const char* attribute_of(const char* key) {
  const char* attribute = key;
  zcsl_stringmap_value_find_ex(s_playlist_zdo_key_map, key, 0, &attribute);
  return attribute;
}

// An instance that came up only in part is not kept, so that the next question asks for a new one.
zvsdk_status need_instance(playlist_zdo_entry* entry) {
  if (entry->instance != nullptr) return 0;
  const zvsdk_status status = entry->info->attribute->create_instance(&entry->instance);
  if (status != 0) _playlist_zdo_attrinst_delete(entry, sizeof(*entry));
  return status;
}

// The attribute's answer for one value. "Not found" from an attribute that has no such slot.
zvsdk_status text_of(const playlist_zdo_entry& entry, const playlist_zdo_value& value,
                     const char* key, zvsdk_locale* locale, const char** text) {
  const playlist_attribute& attribute = *entry.info->attribute;
  if ((value.value & playlist_string_flag) != 0)
    return attribute.value_from_string_data != nullptr
               ? attribute.value_from_string_data(entry.instance, value.string, key, locale, text)
               : playlist_warn_not_found;
  return attribute.value_from_integer_data != nullptr
             ? attribute.value_from_integer_data(entry.instance, value.value, key, locale, text)
             : playlist_warn_not_found;
}

// Values from an ordinal on: an attribute may answer only some of them for a given key.
zvsdk_status find_text(playlist_zdo_view* view, const char* key, uint32_t ordinal,
                       const char** text) {
  const char* attribute = attribute_of(key);
  void* entry_data = nullptr;
  zvsdk_status status =
      zcsl_hashtable_value_find_ex(view->attribute_entries, attribute, 0, &entry_data, nullptr);
  auto* entry = static_cast<playlist_zdo_entry*>(entry_data);
  for (; status == 0; ++ordinal) {
    void* value = nullptr;
    status = zcsl_hashtable_value_find_ex(view->values, attribute, ordinal - 1, &value, nullptr);
    if (status != 0) break;
    if (entry->info->attribute == nullptr) return playlist_warn_not_found;  // the module lacks it
    status = need_instance(entry);
    if (status != 0) break;
    if (text_of(*entry, *static_cast<playlist_zdo_value*>(value), key, view->locale, text) == 0)
      return 0;
  }
  return status;
}

playlist_zdo_view* view_of(void* data) {
  return static_cast<playlist_zdo_view*>(data);
}

zvsdk_status _playlist_zdo_get_context(void*, const char** context) {
  *context = s_context;
  return 0;
}

zvsdk_status _playlist_zdo_get_child_count(void*, const char*, uint32_t* count) {
  *count = 0;
  return 0;
}

zvsdk_status _playlist_zdo_get_child(void*, const char*, uint32_t, void**) {
  return playlist_warn_not_found;
}

// By attribute name alone: the other keys count nothing, although they have values.
zvsdk_status _playlist_zdo_get_value_count(void* data, const char* key, uint32_t* count) {
  *count = is_ident_key(key) ? 1 : 0;
  return *count != 0 ? 0 : zcsl_hashtable_value_count(view_of(data)->values, key, count);
}

zvsdk_status _playlist_zdo_get_value(void* data, const char* key, uint32_t ordinal,
                                     const char** text) {
  if (is_ident_key(key)) {
    *text = view_of(data)->ident_text;
    return 0;
  }
  return zcsl_logged(find_text(view_of(data), key, ordinal, text), __LINE__, s_source);
}

// An attribute without a text for its name still shows its name.
zvsdk_status _playlist_zdo_render_value(void* data, uint32_t index, const char** key,
                                        const char** text) {
  const zvsdk_status status =
      zcsl_hashtable_index_get(view_of(data)->attribute_entries, index, key, nullptr, nullptr);
  if (status == 0) _playlist_zdo_get_value(data, *key, 1, text);
  return status;
}

zvsdk_status _playlist_zdo_set_locale(void* data, zvsdk_locale* locale) {
  playlist_zdo_view* view = view_of(data);
  if (zvsdk_locale* old = std::exchange(view->locale, nullptr))
    g_playlist_lists_interface->locale_release(old);
  if (locale == nullptr) return 0;
  const zvsdk_status status = g_playlist_lists_interface->locale_addref(locale);
  if (status == 0) view->locale = locale;
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status _playlist_zdo_get_locale(void* data, zvsdk_locale** locale) {
  *locale = view_of(data)->locale;
  return 0;
}

zvsdk_status _playlist_zdo_release(void* data) {
  _playlist_zdo_delete(view_of(data));
  return 0;
}

}  // namespace

constexpr zvsdk_zdo_provider s_playlist_zdo_provider = {
    .reserved1 = nullptr,
    .get_context = _playlist_zdo_get_context,
    .get_child_count = _playlist_zdo_get_child_count,
    .get_child = _playlist_zdo_get_child,
    .get_value_count = _playlist_zdo_get_value_count,
    .get_value = _playlist_zdo_get_value,
    .reserved2 = nullptr,
    .render_value = _playlist_zdo_render_value,
    .set_locale = _playlist_zdo_set_locale,
    .get_locale = _playlist_zdo_get_locale,
    .release = _playlist_zdo_release,
};

zvsdk_status playlist_zdo_initialize() {
  const zcsl_spin_guard guard(&s_playlist_zdo_key_map_lock);
  if (s_playlist_zdo_key_map != nullptr) return 0;
  return zcsl_logged(create_key_map(&s_playlist_zdo_key_map), __LINE__, s_source);
}

zvsdk_status playlist_zdo_shutdown() {
  const zcsl_spin_guard guard(&s_playlist_zdo_key_map_lock);
  return zcsl_stringmap_delete(std::exchange(s_playlist_zdo_key_map, nullptr));
}

void _playlist_zdo_attrinst_delete(void* data, uint32_t) {
  auto* entry = static_cast<playlist_zdo_entry*>(data);
  playlist_attribute_instance* instance = std::exchange(entry->instance, nullptr);
  if (instance != nullptr && entry->info->attribute->release_instance != nullptr)
    entry->info->attribute->release_instance(instance);
}

void playlist_zdo_value_delete(void* value, uint32_t) {
  zcsl_string_free(static_cast<playlist_zdo_value*>(value)->string);
}

void _playlist_zdo_delete(playlist_zdo_view* view) {
  zcsl_hashtable_delete(view->attribute_entries);
  zcsl_hashtable_delete(view->values);
  if (view->user != nullptr) g_playlist_userinfo_interface->user_release(view->user);
  if (view->locale != nullptr) g_playlist_lists_interface->locale_release(view->locale);
  if (view->collection != nullptr) playlist_collection_release(view->collection);
  zcsl_string_free(view->ident_text);
  zcsl_memory_free(view);
}
