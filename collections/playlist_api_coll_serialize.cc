// The exported calls that turn a collection into bytes and bytes into a collection.
#include <cstring>

#include "collections/playlist_coll_serialize.h"
#include "module/playlist_frame.h"
#include "support/zcsl_guards.h"

namespace {

zvsdk_status calc_size(playlist_collection* collection, uint32_t* size) {
  const zcsl_read_guard guard(collection->rwlock);
  return guard.status() != 0 ? guard.status() : _playlist_coll_calc_size(collection, size);
}

// The caller's room is held against the bound, which a caller has asked for before, and not against
// what comes out.
zvsdk_status serialize(playlist_collection* collection, void* buffer, uint32_t* size) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  uint32_t bound = 0;
  const zvsdk_status status = _playlist_coll_calc_size(collection, &bound);
  if (status != 0) return status;
  if (buffer == nullptr) {
    *size = bound;
    return 0;
  }
  if (*size < bound) return playlist_error_buffer_too_small;

  zcsl_block_owner<void> data;
  uint32_t length = 0;
  _playlist_coll_serialize(collection, data.out(), &length);
  if (length != 0) std::memcpy(buffer, data.get(), length);
  *size = length;
  return 0;
}

zvsdk_status deserialize(const void* buffer, uint32_t size, playlist_collection** collection) {
  playlist_collection_owner record;
  zvsdk_status status = _playlist_coll_deserialize(buffer, size, record.out());
  if (status == 0) status = playlist_collection_set_default_options(record.get());
  if (status == 0) status = playlist_collection_hand_out(&record, collection);
  return status;
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_serialize_size(playlist_collection* collection,
                                                      uint32_t* size) {
  playlist_call call(__func__, "zvsdk_playlist_collection_serialize_size( %p, %p )", collection,
                     size);
  call.handle(collection, playlist_collection_magic).require(size);
  if (call.refused()) return call.refusal();
  return call.finish(calc_size(collection, size));
}

zvsdk_status zvsdk_playlist_collection_serialize(playlist_collection* collection, void* buffer,
                                                 uint32_t* size) {
  playlist_call call(__func__, "zvsdk_playlist_collection_serialize( %p, %p, %p )", collection,
                     buffer, size);
  call.require(size).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(serialize(collection, buffer, size));
}

zvsdk_status zvsdk_playlist_collection_deserialize(const void* buffer, uint32_t size,
                                                   playlist_collection** collection) {
  playlist_call call(__func__, "zvsdk_playlist_collection_deserialize( %p, %u, %p )", buffer, size,
                     collection);
  call.require(buffer).require_that(size != 0);
  if (call.refused()) return call.refusal();
  return call.finish(deserialize(buffer, size, collection));
}
