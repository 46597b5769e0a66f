// Exported calls on the attributes that a collection carries: count and enumeration.
#include "collections/playlist_collection.h"
#include "module/playlist_frame.h"
#include "support/zcsl_guards.h"

namespace {

// A collection that was read from data may name an attribute that this module does not have.
zvsdk_status name_of_entry(playlist_collection* collection, uint32_t index, const char** name) {
  void* data = nullptr;
  const zvsdk_status status =
      zcsl_hashtable_index_get(collection->attributes, index, nullptr, &data, nullptr);
  if (status != 0) return status;
  const auto* info = static_cast<const playlist_attribute_info*>(data);
  return info->attribute != nullptr ? info->attribute->attribute_name(name)
                                    : playlist_error_invalid_arg;
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_attributes_count(playlist_collection* collection,
                                                        uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_collection_attributes_count( %p, %p )", collection,
                     count);
  call.require(count).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  uint32_t found = 0;
  zcsl_read_guard lock(collection->rwlock);
  zvsdk_status status = lock.status();
  if (status == 0) status = zcsl_hashtable_count(collection->attributes, &found);
  if (status == 0) *count = found;
  lock.unlock();
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_collection_attributes_enum(playlist_collection* collection,
                                                       uint32_t index, const char** name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_attributes_enum( %p, %u, %p )",
                     collection, index, name);
  call.require(name).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  const char* found = nullptr;
  zcsl_read_guard lock(collection->rwlock);
  zvsdk_status status = lock.status();
  if (status == 0) status = name_of_entry(collection, index, &found);
  if (status == 0) *name = found;
  lock.unlock();
  return call.finish(status);
}
