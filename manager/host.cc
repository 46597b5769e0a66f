// The host's life: counted start and stop, and the manager handle with its operations.

#include "manager/host.h"

#include <cstring>

#include "manager/service_tables.h"

namespace manager {
namespace {

std::mutex s_life_mutex;         // serialises start and stop
uint32_t s_reference_count = 0;  // guarded by s_life_mutex
// Written under s_life_mutex. An application that ends without stopping the host leaves it as it
// is: exit handlers and other threads may still use it.
std::atomic<host*> s_running{nullptr};

struct named_table {
  const char* name;
  const void* table;
};

const named_table s_tables[] = {
    {ZVSDK_LICENSE_INTERFACE, &license_table},
    {ZVSDK_ERRORINFO_INTERFACE, &errorinfo_table},
    {ZVSDK_HANDLEMANAGER_INTERFACE, &handlemanager_table},
    {ZVSDK_USERINFO_INTERFACE, &userinfo_table},
    {ZVSDK_LISTMANAGER_INTERFACE, &listmanager_table},
    {ZVSDK_ZDO_INTERFACE, &zdo_table},
    {ZVSDK_SERIALIZATION_INTERFACE, &serialization_table},
    {ZVSDK_STORAGE_INTERFACE, &storage_table},
};

zvsdk_status client_register(uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown,
                             void*, zvsdk_client** client) {
  return guarded([&] {
    require_pointer(client);
    client_slot* made = require_host().all_clients.add(package, require_text(name), shutdown);
    *client = reinterpret_cast<zvsdk_client*>(made);
  });
}

zvsdk_status client_release(zvsdk_client* client) {
  return guarded([&] {
    host& h = require_host();
    return h.all_clients.release(h.slot<client_slot>(client), h.handles);
  });
}

zvsdk_status provider_register(zvsdk_client* client, const char* interface_name, void*,
                               const void* table, uint32_t table_size, void* data,
                               zvsdk_provider_registration** registration) {
  return guarded([&] {
    host& h = require_host();
    h.slot<client_slot>(client);
    require_pointer(table);
    require_pointer(registration);
    require(table_size != 0);
    auto* made = h.all_providers.add(require_text(interface_name), table, table_size, data);
    *registration = reinterpret_cast<zvsdk_provider_registration*>(made);
  });
}

zvsdk_status provider_deregister(zvsdk_provider_registration* registration, void** data) {
  return guarded([&] { return require_host().all_providers.remove(registration, data); });
}

zvsdk_status interface_get(const char* interface_name, void*, void*, void** table) {
  return guarded([&] {
    require_host();
    require_text(interface_name);
    require_pointer(table);
    for (const named_table& each : s_tables) {
      if (std::strcmp(each.name, interface_name) != 0) continue;
      *table = const_cast<void*>(each.table);
      return status_ok;
    }
    return warn_not_found;
  });
}

zvsdk_sdkmanager s_manager = {
    .magic = ZVSDK_MANAGER_MAGIC,
    .version = ZVSDK_MANAGER_VERSION,
    .client_register = client_register,
    .client_release = client_release,
    .provider_register = provider_register,
    .provider_deregister = provider_deregister,
    .interface_get = interface_get,
};

const char* data_path_of(const zvsdk_manager_config* config) {
  if (config == nullptr) return nullptr;
  require(config->size >= sizeof(zvsdk_manager_config));
  return config->data_path;
}

void start(const zvsdk_manager_config* config) {
  std::lock_guard lock(s_life_mutex);
  if (s_reference_count == 0) {
    s_running.store(new host(data_path_of(config)), std::memory_order_release);
  }
  ++s_reference_count;
}

void stop_one() {
  std::lock_guard lock(s_life_mutex);
  if (s_reference_count == 0) throw status_error(error_not_initialized);
  if (s_reference_count > 1) {
    --s_reference_count;
    return;
  }
  host* ending = running_host();
  if (ending->all_users.count() != 0 || ending->objects.count() != 0) {
    throw status_error(error_busy, "users or data objects are still in use");
  }
  ending->all_clients.order_shutdown();
  s_reference_count = 0;
  s_running.store(nullptr, std::memory_order_release);
  delete ending;
}

}  // namespace

host* running_host() noexcept {
  return s_running.load(std::memory_order_acquire);
}

host& require_host() {
  host* running = running_host();
  if (running == nullptr) throw status_error(error_not_initialized);
  return *running;
}

}  // namespace manager

zvsdk_status zvsdk_manager_create(const zvsdk_manager_config* config, zvsdk_sdkmanager** manager) {
  return manager::guarded(__func__, [&] {
    manager::require_pointer(manager);
    manager::start(config);
    *manager = &manager::s_manager;
  });
}

zvsdk_status zvsdk_manager_release(zvsdk_sdkmanager* manager) {
  return manager::guarded(__func__, [&] {
    manager::require(manager == &manager::s_manager);
    manager::stop_one();
  });
}

zvsdk_status zvsdk_manager_provider_get(const char* interface_name, uint32_t index,
                                        const void** table, void** data) {
  return manager::guarded(__func__, [&] {
    manager::require_text(interface_name);
    manager::require_pointer(table);
    return manager::require_host().all_providers.get(interface_name, index, table, data);
  });
}
