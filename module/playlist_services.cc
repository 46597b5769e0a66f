// The acquired service tables: one list says what is acquired under which name and in which order.
#include "module/playlist_services.h"

#include <type_traits>

zvsdk_sdkmanager* g_playlist_sdkmanager_interface = nullptr;
zvsdk_client* g_playlist_client_ref = nullptr;

zvsdk_license_interface* g_playlist_license_interface = nullptr;
zvsdk_errorinfo_interface* g_playlist_errorinfo_interface = nullptr;
zvsdk_handlemanager_interface* g_playlist_handlemanager_interface = nullptr;
zvsdk_userinfo_interface* g_playlist_userinfo_interface = nullptr;
zvsdk_listmanager_interface* g_playlist_lists_interface = nullptr;
zvsdk_zdo_interface* g_playlist_zdo_interface = nullptr;
zvsdk_serialization_interface* g_playlist_serialization_interface = nullptr;

zcsl_stringmap* g_playlist_storage_names = nullptr;
uint8_t g_playlist_storage_dirty = 0;
char* g_playlist_storage_location = nullptr;

namespace {

template <auto& Table>
zvsdk_status acquire(const char* name) {
  void* table = nullptr;
  const zvsdk_status status =
      g_playlist_sdkmanager_interface->interface_get(name, nullptr, nullptr, &table);
  if (status == 0) Table = static_cast<std::decay_t<decltype(Table)>>(table);
  return status;
}

template <auto& Table>
void give_back() {
  if (Table != nullptr) Table->release(Table);
  Table = nullptr;
}

struct service {
  const char* name;
  zvsdk_status (*acquire)(const char* name);
};

constexpr service s_acquired_in_order[] = {
    {ZVSDK_LICENSE_INTERFACE, acquire<g_playlist_license_interface>},
    {ZVSDK_ERRORINFO_INTERFACE, acquire<g_playlist_errorinfo_interface>},
    {ZVSDK_HANDLEMANAGER_INTERFACE, acquire<g_playlist_handlemanager_interface>},
    {ZVSDK_USERINFO_INTERFACE, acquire<g_playlist_userinfo_interface>},
    {ZVSDK_LISTMANAGER_INTERFACE, acquire<g_playlist_lists_interface>},
    {ZVSDK_ZDO_INTERFACE, acquire<g_playlist_zdo_interface>},
    {ZVSDK_SERIALIZATION_INTERFACE, acquire<g_playlist_serialization_interface>},
};

constexpr void (*s_released_in_order[])() = {
    give_back<g_playlist_serialization_interface>, give_back<g_playlist_zdo_interface>,
    give_back<g_playlist_lists_interface>,         give_back<g_playlist_handlemanager_interface>,
    give_back<g_playlist_userinfo_interface>,      give_back<g_playlist_errorinfo_interface>,
    give_back<g_playlist_license_interface>,
};

}  // namespace

zvsdk_status playlist_services_acquire() {
  for (const service& wanted : s_acquired_in_order) {
    const zvsdk_status status = wanted.acquire(wanted.name);
    if (status != 0) return status;
  }
  return 0;
}

void playlist_services_release() {
  for (auto release : s_released_in_order) release();
}
