/*
 * handle_registry.h: the registry of the objects that modules hand out. A handle is the object's
 * own address, which the registry never follows.
 *
 * The table is split into shards by address. A shard is an open hash (linear probing, deletion by
 * moving entries back, so nothing is left behind by the register and release of each media) with a
 * mutex for whoever changes it. Validation, the call that everybody makes all the time, takes no
 * lock: it reads the shard's change counter, probes, and reads the counter again.
 *
 * A destructor runs with no lock held and may use the registry; its handle is already gone then.
 */
#ifndef HANDLE_REGISTRY_H
#define HANDLE_REGISTRY_H

#include <array>
#include <atomic>
#include <memory>
#include <mutex>
#include <vector>

#include "manager/manager_status.h"
#include "zvsdk_manager.h"

namespace manager {

class handle_registry {
 public:
  handle_registry();
  ~handle_registry();

  /* One reference. Refuses an object that is registered already. */
  zvsdk_status add(const void* client, void* object, uint32_t magic,
                   zvsdk_handle_delete_fn destroy);
  bool valid(const void* object, uint32_t magic) const noexcept;
  zvsdk_status addref(const void* object) noexcept;
  /* The last reference removes the handle, then runs the destructor and returns its status. */
  zvsdk_status release(void* object) noexcept;

  /* True while a handle of this client lives. Walks everything: for the client's release. */
  bool has_handles_of(const void* client) noexcept;

 private:
  struct table;
  struct shard;

  static constexpr size_t s_shard_count = 64;

  static uint64_t hash(const void* object) noexcept;
  shard& shard_of(uint64_t hash) const noexcept;

  std::unique_ptr<shard[]> shards_;
};

}  // namespace manager

#endif
