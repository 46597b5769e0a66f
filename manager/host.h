/*
 * host.h: the running host: one object that holds every service's state, made by the first
 * zvsdk_manager_create and destroyed by the last zvsdk_manager_release. What outlives it (memory
 * functions, log, licence policy, error records) lives elsewhere.
 *
 * Members stand in order of construction: what uses another stands behind it. Each guards itself.
 */
#ifndef HOST_H
#define HOST_H

#include "manager/clients.h"
#include "manager/correlates.h"
#include "manager/data_files.h"
#include "manager/guard.h"
#include "manager/handle_registry.h"
#include "manager/handle_space.h"
#include "manager/lists.h"
#include "manager/locales.h"
#include "manager/mood_profile.h"
#include "manager/storage/handles.h"
#include "manager/users.h"
#include "manager/zdo_pool.h"

namespace manager {

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): there is but one
class host {
 public:
  explicit host(const char* data_path) : files_(data_path != nullptr ? data_path : "") {}

  handle_registry handles;

 private:
  data_files files_;

 public:
  handle_space space;
  clients all_clients{space};
  providers all_providers;
  users all_users{space};
  locales all_locales{space};
  lists all_lists{space, files_};
  mood_plane moods{all_lists};
  correlates all_correlates{space, files_, all_lists};
  zdo_pool objects{space};
  storage::handles storage_handles{space};

  /* The live slot behind a handle; anything else is an invalid argument. */
  template <class Slot>
  Slot* slot(const void* handle) const {
    return require_pointer(space.live_slot<Slot>(handle));
  }
  template <class Slot>
  zvsdk_status addref(const void* handle) const noexcept {
    Slot* found = space.live_slot<Slot>(handle);
    return found != nullptr && found->addref() ? status_ok : error_invalid_arg;
  }
  /* For kinds whose slots stay when nobody holds them. */
  template <class Slot>
  zvsdk_status release(const void* handle) const noexcept {
    bool last = false;
    Slot* found = space.live_slot<Slot>(handle);
    return found != nullptr && found->release(last) ? status_ok : error_invalid_arg;
  }
};

/* The running host or null. */
host* running_host() noexcept;
/* The same, but no host is a failure. */
host& require_host();

/* Slots of service tables: a reference is taken on a handle, or given back where that is all. */
template <class Slot, class Handle>
zvsdk_status addref_handle(Handle* handle) {
  const host* h = running_host();
  return h != nullptr ? h->addref<Slot>(handle) : error_not_initialized;
}
template <class Slot, class Handle>
zvsdk_status release_handle(Handle* handle) {
  const host* h = running_host();
  return h != nullptr ? h->release<Slot>(handle) : error_not_initialized;
}

}  // namespace manager

#endif
