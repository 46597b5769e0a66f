// Clients and the providers that they register.

#include "manager/clients.h"

#include <algorithm>
#include <utility>

namespace manager {

client_slot* clients::add(uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown) {
  std::lock_guard lock(mutex_);
  registered_.reserve(registered_.size() + 1);
  std::string own_name = name;
  client_slot* client = pool_.take();
  client->package = package;
  client->name = std::move(own_name);
  client->shutdown = shutdown;
  client->revive();
  registered_.push_back(client);
  return client;
}

zvsdk_status clients::release(client_slot* client, handle_registry& handles) noexcept {
  std::lock_guard lock(mutex_);
  if (client->objects.load() != 0 || handles.has_handles_of(client)) return error_busy;
  bool last = false;
  if (!client->release(last)) return error_invalid_arg;
  std::erase(registered_, client);
  pool_.give_back(client);
  return status_ok;
}

void clients::order_shutdown() noexcept {
  for (;;) {
    zvsdk_client_shutdown_fn shutdown = nullptr;
    {
      std::lock_guard lock(mutex_);
      if (registered_.empty()) return;
      // Whether or not the client releases itself on the way: it is asked once.
      shutdown = std::exchange(registered_.back()->shutdown, nullptr);
      if (shutdown == nullptr) registered_.pop_back();
    }
    if (shutdown != nullptr) shutdown();
  }
}

providers::registration* providers::add(const char* interface_name, const void* table,
                                        uint32_t table_size, void* data) {
  registration made{interface_name, nullptr, data};
  std::string bytes(static_cast<const char*>(table), table_size);
  std::lock_guard lock(mutex_);
  made.table = tables_.insert(std::move(bytes)).first->data();
  return &registrations_.emplace_back(std::move(made));
}

zvsdk_status providers::remove(const void* handle, void** data) noexcept {
  std::lock_guard lock(mutex_);
  const auto found = std::find_if(registrations_.begin(), registrations_.end(),
                                  [&](const registration& r) { return &r == handle; });
  if (found == registrations_.end()) return error_invalid_arg;
  if (data != nullptr) *data = found->data;
  registrations_.erase(found);
  return status_ok;
}

zvsdk_status providers::get(const char* interface_name, uint32_t index, const void** table,
                            void** data) noexcept {
  std::lock_guard lock(mutex_);
  for (const registration& each : registrations_) {
    if (each.interface_name != interface_name || index-- != 0) continue;
    *table = each.table;
    if (data != nullptr) *data = each.data;
    return status_ok;
  }
  return warn_not_found;
}

}  // namespace manager
