// Exported calls on the attributes that a collection carries: count and enumeration.
#include "collections/playlist_collection.h"
#include "module/playlist_frame.h"
#include "support/zcsl_guards.h"

namespace {

zvsdk_status count_attributes(playlist_collection* collection, uint32_t* count) {
  const zcsl_read_guard guard(collection->rwlock);
  return guard.status() != 0 ? guard.status() : zcsl_hashtable_count(collection->attributes, count);
}

// A collection that was read from data may name an attribute that this module does not have.
zvsdk_status enum_attribute(playlist_collection* collection, uint32_t index, const char** name) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
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
  return call.finish(count_attributes(collection, count));
}

zvsdk_status zvsdk_playlist_collection_attributes_enum(playlist_collection* collection,
                                                       uint32_t index, const char** name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_attributes_enum( %p, %u, %p )",
                     collection, index, name);
  call.require(name).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  const char* found = nullptr;
  const zvsdk_status status = enum_attribute(collection, index, &found);
  if (status == 0) *name = found;
  return call.finish(status);
}
