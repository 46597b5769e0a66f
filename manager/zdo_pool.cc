// The life of clusters.

#include "manager/zdo_pool.h"

#include "manager/clients.h"
#include "manager/users.h"

namespace manager {

namespace {

uint32_t own_shard(size_t shards) {
  static std::atomic<uint32_t> next{0};
  thread_local const uint32_t index = next.fetch_add(1, std::memory_order_relaxed);
  return static_cast<uint32_t>(index % shards);
}

handle_chunk& chunk_of(zdo_cluster* cluster) {
  return *reinterpret_cast<handle_chunk*>(reinterpret_cast<uintptr_t>(cluster) &
                                          ~(handle_chunk::size - 1));
}

}  // namespace

zdo_cluster* zdo_pool::take(uint32_t nodes) {
  uint16_t size_class = 0;
  while (s_sizes[size_class] < nodes && size_class + 1u < s_size_count) ++size_class;
  shard& home = shards_[own_shard(s_shard_count)];
  std::lock_guard lock(home.mutex);
  if (home.free[size_class] == nullptr) carve(home, size_class);
  zdo_cluster* cluster = home.free[size_class];
  home.free[size_class] = cluster->next;
  ++home.in_use;
  return cluster;
}

void zdo_pool::carve(shard& home, uint16_t size_class) {
  const uint32_t places = s_sizes[size_class] + 1;
  space_.add_chunk(handle_kind::zdo, sizeof(zdo_node), [&](handle_chunk* chunk) {
    chunk->owner = static_cast<uint32_t>(&home - shards_.data());
    const uint32_t clusters = chunk->count / places;
    chunk->count = clusters * places;
    for (uint32_t i = clusters; i-- > 0;) {
      char* place = chunk->first() + size_t{i} * places * sizeof(zdo_node);
      auto* cluster = new (place) zdo_cluster;
      cluster->size_class = size_class;
      for (uint32_t n = 0; n + 1 < places; ++n) {
        new (cluster->nodes() + n) zdo_node;
        cluster->nodes()[n].position = static_cast<uint16_t>(n + 1);
      }
      cluster->next = home.free[size_class];
      home.free[size_class] = cluster;
    }
  });
}

zdo_node* zdo_pool::next_node(zdo_cluster& cluster, const char* context) noexcept {
  if (cluster.used == capacity(cluster)) return nullptr;
  zdo_node* node = cluster.nodes() + cluster.used++;
  node->is_served = false;
  node->context = context;
  node->keys = nullptr;
  node->key_count = node->key_capacity = 0;
  return node;
}

void zdo_pool::hold(zdo_node* node) noexcept {
  if (node->revive()) node->cluster().live.fetch_add(1, std::memory_order_relaxed);
}

bool zdo_pool::release(zdo_node* node) noexcept {
  bool last = false;
  if (!node->release(last)) return false;
  zdo_cluster& cluster = node->cluster();
  if (last && cluster.live.fetch_sub(1, std::memory_order_acq_rel) == 1) destroy(&cluster);
  return true;
}

void zdo_pool::discard(zdo_cluster* cluster) noexcept {
  destroy(cluster);
}

/* Walks a list and not the stack, because chains of objects may be of any length. */
void zdo_pool::destroy(zdo_cluster* first) noexcept {
  first->next = nullptr;
  for (zdo_cluster* pending = first; pending != nullptr;) {
    zdo_cluster* gone = pending;
    pending = gone->next;
    if (gone->has_links) unlink_children(*gone, pending);
    if (gone->used != 0 && gone->nodes()->is_served) end_served(*gone->nodes()->served);
    give_back(gone);
  }
}

void zdo_pool::give_back(zdo_cluster* cluster) noexcept {
  cluster->free_blocks();
  cluster->used = 0;
  cluster->has_links = false;
  cluster->is_linked.store(0, std::memory_order_relaxed);
  shard& home = shards_[chunk_of(cluster).owner];
  std::lock_guard lock(home.mutex);
  cluster->next = home.free[cluster->size_class];
  home.free[cluster->size_class] = cluster;
  --home.in_use;
}

/* Undoes the links to other clusters; those that nobody holds any more are put in front of the list
 * `unheld`. */
void zdo_pool::unlink_children(zdo_cluster& cluster, zdo_cluster*& unheld) noexcept {
  for (uint32_t n = 0; n < cluster.used; ++n) {
    cluster.nodes()[n].each_child([&](zdo_node* child) {
      zdo_cluster& other = child->cluster();
      if (&other == &cluster) return;
      if (other.live.fetch_sub(1, std::memory_order_acq_rel) != 1) return;
      other.next = unheld;
      unheld = &other;
    });
  }
}

void zdo_pool::end_served(zdo_served& served) noexcept {
  if (served.provider.release != nullptr) served.provider.release(served.data);
  if (served.user != nullptr) served.people->release(served.user);
  served.client->objects.fetch_sub(1);
}

size_t zdo_pool::count() noexcept {
  size_t sum = 0;
  for (shard& each : shards_) {
    std::lock_guard lock(each.mutex);
    sum += each.in_use;
  }
  return sum;
}

}  // namespace manager
