// The registry of attributes: start, registration, release.
#include "attributes/playlist_impl_attributes.h"

#include "support/zcsl_log.h"

zcsl_vector2* g_playlist_attribute_mgr = nullptr;

namespace {

constexpr char s_source[] = "playlist_impl_attributes";

// Also the order in which applications and collections see the attributes.
constexpr zvsdk_status (*s_registered_in_order[])() = {
    playlist_init_attribute_trackname, playlist_init_attribute_artistname,
    playlist_init_attribute_albumname, playlist_init_attribute_genre,
    playlist_init_attribute_mood,      playlist_init_attribute_origin,
    playlist_init_attribute_era,       playlist_init_attribute_arttype,
    playlist_init_attribute_tempo,
};

bool is_complete(const playlist_attribute* attribute) {
  return attribute != nullptr && attribute->attribute_name != nullptr &&
         attribute->collect_attribute_data != nullptr && attribute->create_instance != nullptr &&
         attribute->supported_operators != nullptr;
}

}  // namespace

zvsdk_status playlist_attributes_initialize() {
  zvsdk_status status = zcsl_vector2_create(&g_playlist_attribute_mgr, sizeof(playlist_attribute),
                                            0, nullptr, playlist_attributemgr_delete);
  if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  for (auto register_attribute : s_registered_in_order) status = register_attribute();
  return status;
}

// The records must stay: the module's stop deletes them later, while the list service is still
// held.
zvsdk_status playlist_attributes_shutdown() {
  return playlist_shutdown_attribute_mood();
}

zvsdk_status playlist_register_attribute(playlist_attribute* attribute) {
  if (!is_complete(attribute)) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  if (attribute->initialize != nullptr) {
    const zvsdk_status status = attribute->initialize(attribute);
    if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  }
  return zcsl_vector2_add(g_playlist_attribute_mgr, attribute, sizeof *attribute, nullptr);
}

void playlist_attributemgr_delete(void* record) {
  auto* attribute = static_cast<playlist_attribute*>(record);
  if (attribute->shutdown != nullptr) attribute->shutdown(attribute);
}
