// The exported call that reads a media as a data object, and the building of the view behind it.
#include "collections/playlist_zdo_view.h"
#include "module/playlist_frame.h"
#include "module/playlist_handles.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_vector2_internal.h"

namespace {

constexpr char s_source[] = "playlist_api_coll_zdo";

using view_owner = zcsl_owner<playlist_zdo_view, _playlist_zdo_delete>;

zvsdk_status take_user(playlist_zdo_view* view, zvsdk_user* user) {
  const zvsdk_status status = g_playlist_userinfo_interface->user_addref(user);
  if (status == 0) view->user = user;
  return status;
}

// The locale of the playlist group or else of the music group, or none. Gives the group asked last.
const char* take_locale(playlist_zdo_view* view) {
  const auto take = [view](const char* group) {
    return g_playlist_lists_interface->locale_get_default(group, &view->locale);
  };
  if (take(ZVSDK_LOCALE_PLAYLIST) == 0) return ZVSDK_LOCALE_PLAYLIST;
  take(ZVSDK_LOCALE_MUSIC);
  return ZVSDK_LOCALE_MUSIC;
}

zvsdk_status create_tables(playlist_zdo_view* view) {
  const zvsdk_status status =
      zcsl_hashtable_create(&view->attribute_entries, 0, _playlist_zdo_attrinst_delete);
  if (status != 0) return status;
  return zcsl_hashtable_create(&view->values, zcsl_hashtable_flag_multi_value,
                               playlist_zdo_value_delete);
}

// A view that is served: from here on it goes with the object, whatever becomes of the rest.
zvsdk_status create_object(zvsdk_user* user, playlist_zdo_view** served,
                           playlist_zdo_owner* object) {
  view_owner view(
      static_cast<playlist_zdo_view*>(zcsl_memory_calloc(1, sizeof(playlist_zdo_view))));
  if (!view) return playlist_error_no_memory;
  zvsdk_status status = take_user(view.get(), user);
  if (status != 0) return status;
  const char* group = take_locale(view.get());
  status = create_tables(view.get());
  if (status != 0) return status;
  status = g_playlist_zdo_interface->zdo_create(g_playlist_client_ref, view.get(),
                                                &s_playlist_zdo_provider, user, group, nullptr,
                                                nullptr, object->out());
  if (status == 0) *served = view.release();
  return status;
}

zvsdk_status take_media(playlist_zdo_view* view, playlist_collection* collection,
                        uint32_t ident_ref) {
  const zvsdk_status status = playlist_collection_addref(collection);
  if (status != 0) return status;
  view->collection = collection;
  view->ident_text = zcsl_string_mprintf("%d", ident_ref);
  return view->ident_text != nullptr ? 0 : playlist_error_no_memory;
}

zvsdk_status add_value(playlist_zdo_view* view, const char* name,
                       const playlist_attr_data& record) {
  zcsl_string_owner text;
  if ((record.value & playlist_string_flag) != 0) {
    const zvsdk_status status = playlist_collection_copy_text(
        view->collection->strings, record.value & ~playlist_string_flag, &text);
    if (status != 0) return status;
  }
  const playlist_zdo_value value = {record.value, record.ident_ref, text.get()};
  const zvsdk_status status =
      zcsl_hashtable_value_add(view->values, name, &value, sizeof(value), 1);
  if (status == 0) (void)text.release();
  return status;
}

// One attribute's entry and the media's values there. A warning only ends the values.
zvsdk_status add_attribute(playlist_zdo_view* view, const char* name, playlist_attribute_info* info,
                           uint32_t ident_ref) {
  const playlist_zdo_entry entry = {info, nullptr};
  zvsdk_status status =
      zcsl_hashtable_value_add(view->attribute_entries, name, &entry, sizeof(entry), 1);
  const playlist_attr_data wanted = {.value = 0, .ident_ref = ident_ref};
  uint32_t index = 0;
  if (status == 0) status = zcsl_vector2_find(info->records, &wanted, &index);
  const zcsl_vector2_view<const playlist_attr_data> records(info->records);
  for (; status == 0 && index < records.count && records[index].ident_ref == ident_ref; ++index)
    status = add_value(view, name, records[index]);
  return zvsdk_is_error(status) ? status : 0;
}

zvsdk_status add_attributes(playlist_zdo_view* view, uint32_t ident_ref) {
  zcsl_hashtable* attributes = view->collection->attributes;
  uint32_t count = 0;
  zvsdk_status status = zcsl_hashtable_count(attributes, &count);
  for (uint32_t i = 0; i < count && status == 0; ++i) {
    const char* name = nullptr;
    void* info = nullptr;
    status = zcsl_hashtable_index_get(attributes, i, &name, &info, nullptr);
    if (status == 0)
      status = add_attribute(view, name, static_cast<playlist_attribute_info*>(info), ident_ref);
  }
  return status;
}

// The caller holds the read lock.
zvsdk_status playlist_collection_get_zdo(playlist_collection* collection, zvsdk_user* user,
                                         uint32_t ident_ref, zvsdk_zdo** object) {
  zvsdk_status status = playlist_zdo_initialize();
  playlist_zdo_view* view = nullptr;
  playlist_zdo_owner made;
  if (status == 0) status = create_object(user, &view, &made);
  if (status == 0) status = take_media(view, collection, ident_ref);
  if (status == 0) status = add_attributes(view, ident_ref);
  if (status == 0) *object = made.release();
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status get_zdo(playlist_collection* collection, zvsdk_user* user, const char* ident,
                     zvsdk_zdo** object) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  zcsl_stringtable_ref ident_ref = 0;
  const zvsdk_status status = zcsl_stringtable_get_value_ref(collection->idents, ident, &ident_ref);
  if (status != 0) return status;
  return playlist_collection_get_zdo(collection, user, ident_ref, object);
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_get_zdo(playlist_collection* collection, zvsdk_user* user,
                                               const char* ident, zvsdk_zdo** object) {
  playlist_call call(__func__, "zvsdk_playlist_collection_get_zdo( %p, %p, %s, %p )", collection,
                     user, ident, object);
  call.require_text(ident).require(object).user(user).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(get_zdo(collection, user, ident, object));
}
