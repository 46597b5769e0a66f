// Calls and checks.
#include "tools/collection.h"

namespace zvplaylist {

unique_collection new_collection(const std::string& name) {
  playlist_collection* collection = nullptr;
  check(zvsdk_playlist_collection_create(name.c_str(), &collection), "making a collection");
  return unique_collection(collection);
}

std::string name_of(playlist_collection* collection) {
  const char* name = nullptr;
  check(zvsdk_playlist_collection_get_name(collection, &name), "reading a name");
  return name;
}

void rename_collection(playlist_collection* collection, const std::string& name) {
  check(zvsdk_playlist_collection_update_name(collection, name.c_str()), "naming a collection");
}

size_t size_of(playlist_collection* collection) {
  uint32_t count = 0;
  check(zvsdk_playlist_collection_ident_count(collection, &count), "counting tracks");
  return count;
}

std::vector<std::string> idents_of(playlist_collection* collection) {
  std::vector<std::string> idents(size_of(collection));
  for (size_t i = 0; i < idents.size(); ++i) {
    const char* ident = nullptr;
    check(
        zvsdk_playlist_collection_ident_enum(collection, static_cast<uint32_t>(i), &ident, nullptr),
        "listing tracks");
    idents[i] = ident;
  }
  return idents;
}

bool holds_ident(playlist_collection* collection, const std::string& ident) {
  return zvsdk_playlist_collection_ident_find(collection, ident.c_str(), 0, nullptr, nullptr) == 0;
}

std::string hidden_text(const std::string& ident) {
  return "track '" + ident + "' is out of reach while one is there whose ident has the same hash";
}

void remove_ident(playlist_collection* collection, const std::string& ident) {
  check(zvsdk_playlist_collection_ident_remove(collection, ident.c_str()), "removing a track");
}

bool carries_every_attribute(playlist_collection* collection) {
  uint32_t known = 0, carried = 0;
  check(zvsdk_playlist_attributes_count(&known), "counting attributes");
  check(zvsdk_playlist_collection_attributes_count(collection, &carried), "counting attributes");
  return carried >= known;
}

std::string bytes_of(playlist_collection* collection) {
  uint32_t size = 0;
  check(zvsdk_playlist_collection_serialize_size(collection, &size), "serializing");
  std::string bytes(size, '\0');
  check(zvsdk_playlist_collection_serialize(collection, bytes.data(), &size), "serializing");
  if (size == 0) throw library_error(playlist_error_no_memory, "no memory to serialize in");
  bytes.resize(size);
  return bytes;
}

unique_collection collection_of(const std::string& bytes) {
  if (bytes.size() > UINT32_MAX) throw library_error(playlist_error_bad_data, "is too large");
  playlist_collection* collection = nullptr;
  check(zvsdk_playlist_collection_deserialize(bytes.data(), static_cast<uint32_t>(bytes.size()),
                                              &collection),
        "reading a collection");
  return unique_collection(collection);
}

}  // namespace zvplaylist
