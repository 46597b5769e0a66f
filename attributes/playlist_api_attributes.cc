// Exported calls on the registry: count, enumeration, registration of an application's attribute.
#include "attributes/playlist_impl_attributes.h"
#include "module/playlist_frame.h"

zvsdk_status zvsdk_playlist_attributes_count(uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_attributes_count( %p )", count);
  call.require(count);
  if (call.refused()) return call.refusal();
  uint32_t found = 0;
  const zvsdk_status status = zcsl_vector2_count(g_playlist_attribute_mgr, &found);
  if (status == 0) *count = found;
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_attributes_enum(uint32_t index, const char** name) {
  playlist_call call(__func__, "zvsdk_playlist_attributes_enum( %u, %p )", index, name);
  call.require(name);
  if (call.refused()) return call.refusal();
  void* record = nullptr;
  const char* found = nullptr;
  zvsdk_status status = zcsl_vector2_getindex(g_playlist_attribute_mgr, index, &record);
  if (status == 0) status = static_cast<const playlist_attribute*>(record)->attribute_name(&found);
  if (status == 0) *name = found;
  return call.finish(status);
}

// Outside the frame on purpose: no init check, no mapping and no error record, so that the status
// of the record's own initialize reaches its owner as it is.
zvsdk_status zvsdk_playlist_register_attribute_provider(playlist_attribute* attribute) {
  playlist_call::trace("zvsdk_playlist_register_attribute_provider( %p )", attribute);
  return zcsl_logged(playlist_register_attribute(attribute), 0, __func__);
}
