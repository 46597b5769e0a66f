// The attributes that a collection carries: making an entry, adding, finding and freeing one.
#include "attributes/playlist_impl_attributes.h"
#include "collections/playlist_collection.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_coll_attrinfo";

// The registered attribute of that name, ASCII case ignored, or null.
const playlist_attribute* find_registered(const char* name) {
  uint32_t count = 0;
  zcsl_vector2_count(g_playlist_attribute_mgr, &count);
  for (uint32_t i = 0; i < count; ++i) {
    void* item = nullptr;
    if (zcsl_vector2_getindex(g_playlist_attribute_mgr, i, &item) != 0) continue;
    const auto* attribute = static_cast<const playlist_attribute*>(item);
    const char* registered = nullptr;
    if (attribute->attribute_name(&registered) == 0 && zcsl_string_equal(registered, name, 1))
      return attribute;
  }
  return nullptr;
}

}  // namespace

int32_t playlist_attrdata_compare_ident(const void* a, const void* b) {
  const uint32_t left = static_cast<const playlist_attr_data*>(a)->ident_ref;
  const uint32_t right = static_cast<const playlist_attr_data*>(b)->ident_ref;
  return left < right ? -1 : left > right;
}

zvsdk_status _playlist_attribute_info_create(const char* name, playlist_attribute_info** info) {
  const playlist_attribute* attribute = zcsl_string_isempty(name) ? nullptr : find_registered(name);
  playlist_attribute_info_owner made(static_cast<playlist_attribute_info*>(
      zcsl_memory_calloc(1, sizeof(playlist_attribute_info))));
  if (!made) return zcsl_logged(playlist_error_no_memory, __LINE__, s_source);
  _playlist_attribute_info_set(made.get(), attribute);
  const zvsdk_status status =
      zcsl_vector2_create(&made->records, sizeof(playlist_attr_data), zcsl_vector_flag_sorted,
                          playlist_attrdata_compare_ident, nullptr);
  if (status == 0) *info = made.release();
  return zcsl_logged(status, __LINE__, s_source);
}

void _playlist_attribute_info_set(playlist_attribute_info* info,
                                  const playlist_attribute* attribute) {
  info->attribute = nullptr;
  if (attribute == nullptr) return;
  info->table = *attribute;
  info->attribute = &info->table;
}

zvsdk_status _playlist_attribute_info_delete(playlist_attribute_info* info) {
  if (info == nullptr) return 0;
  zcsl_vector2_delete(info->records);
  zcsl_memory_free(info);
  return 0;
}

void _playlist_attrinfo_hashtable_delete(void* info, uint32_t) {
  _playlist_attribute_info_delete(static_cast<playlist_attribute_info*>(info));
}

zvsdk_status playlist_collection_take_attrinfo(playlist_collection* collection, const char* name,
                                               playlist_attribute_info_owner* info) {
  const zvsdk_status status = zcsl_hashtable_value_add(collection->attributes, name, info->get(),
                                                       sizeof(playlist_attribute_info), 0);
  if (status == 0) (void)info->release();  // the table's from here on
  return status;
}

zvsdk_status playlist_collection_get_attrinfo(playlist_collection* collection,
                                              const char* attribute_name,
                                              playlist_attribute_info** info) {
  void* found = nullptr;
  const zvsdk_status status =
      zcsl_hashtable_value_find_ex(collection->attributes, attribute_name, 0, &found, nullptr);
  if (status == 0 && info != nullptr) *info = static_cast<playlist_attribute_info*>(found);
  return zcsl_logged(status, __LINE__, s_source);
}
