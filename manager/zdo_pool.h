/*
 * zdo_pool.h: the clusters of all data objects: where they come from and how they go.
 *
 * Clusters come in a few sizes and are carved from chunks. Free ones wait in lists that are split
 * by thread, each with its mutex; a cluster goes back to the list that it came from, whoever frees
 * it.
 */
#ifndef ZDO_POOL_H
#define ZDO_POOL_H

#include <array>

#include "manager/zdo_node.h"

namespace manager {

class zdo_pool {
 public:
  /* The largest number of nodes that one cluster can have. */
  static constexpr uint32_t most_nodes = 64;

  explicit zdo_pool(handle_space& space) : space_(space) {}
  zdo_pool(const zdo_pool&) = delete;
  zdo_pool& operator=(const zdo_pool&) = delete;

  /* An empty cluster with room for this many nodes, or for the most. Nobody holds it yet. */
  zdo_cluster* take(uint32_t nodes);
  /* Gives back a cluster that was never held. */
  void discard(zdo_cluster* cluster) noexcept;

  /* The next node of a cluster, or null when it is full. */
  static zdo_node* next_node(zdo_cluster& cluster, const char* context) noexcept;

  /* A reference for a node whose cluster lives. */
  static void hold(zdo_node* node) noexcept;
  /* Gives a reference back; false when there was none. */
  bool release(zdo_node* node) noexcept;

  /* Clusters in use. */
  size_t count() noexcept;

 private:
  static constexpr uint32_t s_sizes[] = {1, 8, 16, most_nodes};
  static constexpr size_t s_size_count = std::size(s_sizes);
  static constexpr size_t s_shard_count = 8;

  struct alignas(64) shard {
    std::mutex mutex;  // guards what follows
    std::array<zdo_cluster*, s_size_count> free{};
    size_t in_use = 0;
  };

  static uint32_t capacity(const zdo_cluster& cluster) { return s_sizes[cluster.size_class]; }
  void carve(shard& home, uint16_t size_class);
  void destroy(zdo_cluster* first) noexcept;
  void give_back(zdo_cluster* cluster) noexcept;
  static void unlink_children(zdo_cluster& cluster, zdo_cluster*& unheld) noexcept;
  static void end_served(zdo_served& served) noexcept;

  handle_space& space_;
  std::array<shard, s_shard_count> shards_;
};

}  // namespace manager

#endif
