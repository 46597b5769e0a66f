/*
 * clients.h: the modules that registered with the manager, and the providers that they registered.
 *
 * A client is a handle of the manager. It cannot be released while handles or data objects of it
 * live. Providers form one list in order of registration, guarded by a mutex. Their tables stay
 * when they have gone, one copy of each, so that nobody's call goes through a table that was freed.
 */
#ifndef CLIENTS_H
#define CLIENTS_H

#include <list>
#include <set>
#include <string>
#include <vector>

#include "manager/handle_registry.h"
#include "manager/handle_space.h"

namespace manager {

struct client_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::client;

  uint32_t package = 0;
  std::string name;
  zvsdk_client_shutdown_fn shutdown = nullptr;
  std::atomic<uint32_t> objects{0};  // data objects that it serves
};

class clients {
 public:
  explicit clients(handle_space& space) : pool_(space) {}

  client_slot* add(uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown);
  zvsdk_status release(client_slot* client, handle_registry& handles) noexcept;
  /* Calls the shutdown callback of each client, the newest first. */
  void order_shutdown() noexcept;

 private:
  slot_pool<client_slot> pool_;
  std::mutex mutex_;
  std::vector<client_slot*> registered_;  // guarded by mutex_
};

class providers {
 public:
  struct registration {
    std::string interface_name;
    const void* table;
    void* data;
  };

  registration* add(const char* interface_name, const void* table, uint32_t table_size, void* data);
  zvsdk_status remove(const void* handle, void** data) noexcept;
  zvsdk_status get(const char* interface_name, uint32_t index, const void** table,
                   void** data) noexcept;

 private:
  std::mutex mutex_;  // guards what follows
  std::list<registration> registrations_;
  std::set<std::string> tables_;  // their bytes
};

}  // namespace manager

#endif
