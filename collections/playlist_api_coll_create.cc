// The exported calls that make, release and name a collection.
#include <utility>

#include "attributes/playlist_impl_attributes.h"
#include "collections/playlist_collection.h"
#include "module/playlist_frame.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_api_coll_create";

// An entry for the registered attribute at `index`.
zvsdk_status add_attribute(playlist_collection* collection, uint32_t index) {
  void* attribute = nullptr;
  zvsdk_status status = zcsl_vector2_getindex(g_playlist_attribute_mgr, index, &attribute);
  if (status != 0) return status;
  playlist_attribute_info_owner info;
  status = _playlist_attribute_info_create(nullptr, info.out());
  if (status != 0) return status;
  _playlist_attribute_info_set(info.get(), static_cast<const playlist_attribute*>(attribute));
  const char* name = nullptr;
  status = info->attribute->attribute_name(&name);
  return status == 0 ? playlist_collection_take_attrinfo(collection, name, &info) : status;
}

// One failing attribute must not cost the collection: it is then missing, and only the last
// attribute's outcome is the outcome of all.
zvsdk_status add_registered_attributes(playlist_collection* collection) {
  uint32_t count = 0;
  zvsdk_status status = zcsl_vector2_count(g_playlist_attribute_mgr, &count);
  for (uint32_t i = 0; i < count; ++i) status = add_attribute(collection, i);
  return zcsl_logged(status, __LINE__, s_source);
}

// Without memory for its name a collection still is one: it can be renamed.
zvsdk_status create_with_attributes(const char* name, playlist_collection_owner* record) {
  zvsdk_status status = playlist_collection_create(record->out());
  if (status == 0) status = add_registered_attributes(record->get());
  if (status == 0) status = playlist_collection_set_default_options(record->get());
  if (status == 0) (*record)->name = zcsl_string_strdup(name);
  return status;
}

zvsdk_status rename(playlist_collection* collection, const char* name) {
  const zcsl_write_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  zcsl_string_owner copy(zcsl_string_strdup(name));
  if (!copy) return playlist_error_no_memory;
  const zcsl_spin_guard names(&g_playlist_collection_names_lock);
  zcsl_string_free(std::exchange(collection->name, copy.release()));
  return 0;
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_create(const char* name, playlist_collection** collection) {
  playlist_call call(__func__, "zvsdk_playlist_collection_create( %s, %p )", name, collection);
  if (call.require_text(name).refused()) return call.refusal();

  playlist_collection_owner record;
  zvsdk_status status = create_with_attributes(name, &record);
  if (status == 0) status = playlist_collection_hand_out(&record, collection);
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_collection_release(playlist_collection* collection) {
  playlist_call call(__func__, "zvsdk_playlist_collection_release( %p )", collection);
  if (call.refused()) return call.refusal();
  if (collection == nullptr) return 0;  // nothing happened, so nothing is recorded
  if (call.handle(collection, playlist_collection_magic).refused()) return call.refusal();
  return call.finish(playlist_collection_release(collection));
}

zvsdk_status zvsdk_playlist_collection_get_name(playlist_collection* collection,
                                                const char** name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_get_name( %p, %p )", collection, name);
  call.require(name).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(playlist_collection_get_name_syncronized(collection, name));
}

zvsdk_status zvsdk_playlist_collection_update_name(playlist_collection* collection,
                                                   const char* name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_update_name( %p, %s )", collection, name);
  call.require_text(name).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(rename(collection, name));
}
