// Clients and the providers that they register.

#include "manager/clients.h"

#include <algorithm>
#include <utility>

namespace manager {

client_slot* clients::add(uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown) {
  std::lock_guard lock(m_mutex);
  m_registered.reserve(m_registered.size() + 1);
  std::string own_name = name;
  client_slot* client = m_pool.take();
  client->package = package;
  client->name = std::move(own_name);
  client->shutdown = shutdown;
  client->revive();
  m_registered.push_back(client);
  return client;
}

zvsdk_status clients::release(client_slot* client, handle_registry& handles) noexcept {
  std::lock_guard lock(m_mutex);
  if (client->objects.load() != 0 || handles.has_handles_of(client)) return error_busy;
  bool last = false;
  if (!client->release(last)) return error_invalid_arg;
  std::erase(m_registered, client);
  m_pool.give_back(client);
  return status_ok;
}

void clients::order_shutdown() noexcept {
  for (;;) {
    zvsdk_client_shutdown_fn shutdown = nullptr;
    {
      std::lock_guard lock(m_mutex);
      if (m_registered.empty()) return;
      // Whether or not the client releases itself on the way: it is asked once.
      shutdown = std::exchange(m_registered.back()->shutdown, nullptr);
      if (shutdown == nullptr) m_registered.pop_back();
    }
    if (shutdown != nullptr) shutdown();
  }
}

providers::registration* providers::add(const char* interface_name, const void* table,
                                        uint32_t table_size, void* data) {
  registration made{interface_name, nullptr, data};
  std::string bytes(static_cast<const char*>(table), table_size);
  std::lock_guard lock(m_mutex);
  made.table = m_tables.insert(std::move(bytes)).first->data();
  return &m_registrations.emplace_back(std::move(made));
}

zvsdk_status providers::remove(const void* handle, void** data) noexcept {
  std::lock_guard lock(m_mutex);
  const auto found = std::find_if(m_registrations.begin(), m_registrations.end(),
                                  [&](const registration& r) { return &r == handle; });
  if (found == m_registrations.end()) return error_invalid_arg;
  if (data != nullptr) *data = found->data;
  m_registrations.erase(found);
  return status_ok;
}

zvsdk_status providers::get(const char* interface_name, uint32_t index, const void** table,
                            void** data) noexcept {
  std::lock_guard lock(m_mutex);
  for (const registration& each : m_registrations) {
    if (each.interface_name != interface_name || index-- != 0) continue;
    *table = each.table;
    if (data != nullptr) *data = each.data;
    return status_ok;
  }
  return warn_not_found;
}

}  // namespace manager
