/*
 * use_collection.h: everything that can be done with a collection whose bytes came from anywhere.
 * Nothing here may crash or be refused for another reason than a value that points nowhere.
 */
#ifndef USE_COLLECTION_H
#define USE_COLLECTION_H

#include <string>

#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

/* Asks again when another thread has added media between the two calls. */
inline std::string serialized(playlist_collection* collection) {
  uint32_t size = 0;
  std::string bytes;
  zvsdk_status status = playlist_error_buffer_too_small;
  while (status == playlist_error_buffer_too_small) {
    if (zvsdk_playlist_collection_serialize_size(collection, &size) != 0) return {};
    bytes.resize(size);
    status = zvsdk_playlist_collection_serialize(collection, bytes.data(), &size);
  }
  bytes.resize(status == 0 ? size : 0);
  return bytes;
}

/* Null with the status for bytes that are refused. */
inline playlist_collection* deserialized(const std::string& bytes, zvsdk_status* status = nullptr) {
  playlist_collection* collection = nullptr;
  const zvsdk_status read = zvsdk_playlist_collection_deserialize(
      bytes.data(), static_cast<uint32_t>(bytes.size()), &collection);
  if (status != nullptr) *status = read;
  return collection;
}

inline void use_media(playlist_collection* collection, zvsdk_user* user, const char* ident) {
  zvsdk_zdo* object = nullptr;
  playlist_results* results = nullptr;
  const char* key = nullptr;
  const char* text = nullptr;
  zvsdk_playlist_collection_ident_find(collection, ident, 0, nullptr, nullptr);
  if (zvsdk_playlist_collection_get_zdo(collection, user, ident, &object) != 0) return;
  for (uint32_t i = 0; zvsdk_manager_zdo_render(object, i, &key, &text) == 0;) ++i;
  zvsdk_playlist_generate_morelikethis(user, collection, object, &results);
  zvsdk_playlist_collection_add_zdo(collection, "another", object);
  zvsdk_playlist_results_release(results);
  zvsdk_manager_zdo_release(object);
}

inline void use_collection(playlist_collection* collection, zvsdk_user* user) {
  playlist_results* results = nullptr;
  const char* text = nullptr;
  std::string ident;
  zvsdk_playlist_collection_get_name(collection, &text);
  for (uint32_t i = 0;
       i < 4 && zvsdk_playlist_collection_attributes_enum(collection, i, &text) == 0;)
    ++i;
  for (uint32_t i = 0;
       i < 8 && zvsdk_playlist_collection_ident_enum(collection, i, &text, nullptr) == 0; ++i) {
    ident = text;
    use_media(collection, user, ident.c_str());
  }
  zvsdk_playlist_generate_playlist(
      user,
      "GENERATE PLAYLIST WHERE ZV_Tempo > 60 OR ZV_ArtistName CONTAINS 'a' OR ZV_Mood LIKE 1 "
      "ORDER ZV_TrackName LIKE 'a' LIMIT 1 PER ZV_ArtistName, 1 PER ZV_Tempo, 3 RESULTS",
      collection, nullptr, &results);
  zvsdk_playlist_results_enum(results, 0, &text, nullptr);
  zvsdk_playlist_results_release(results);
  serialized(collection);
  zvsdk_playlist_collection_ident_remove(collection, ident.c_str());
  serialized(collection);
}

#endif
