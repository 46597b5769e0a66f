// The bounded cache: an integer map from keys to nodes, and the nodes in a list from oldest to
// newest.

#include "support/zcsl_lrumap.h"

#include "support/zcsl_container.h"
#include "support/zcsl_links.h"
#include "support/zcsl_output.h"

namespace {

struct lru_node {
  uint32_t key;
  void* value;
  lru_node* next;  // towards newest
  lru_node* previous;
};

}  // namespace

struct zcsl_lrumap : zcsl_container_head<0x7ABCDEF7, zcsl_critsec> {
  static constexpr const char* source = "zcsl_lrumap";

  uint32_t flags = 0;
  zcsl_lrumap_free_fn free = nullptr;
  zcsl_hashmap* map = nullptr;
  uint32_t max_count = 0;  // 0 for no limit
  lru_node* oldest = nullptr;
  lru_node* newest = nullptr;

  bool unique() const { return (flags & zcsl_hashmap_flag_unique_key) != 0; }
};

namespace {

using ages = zcsl_links<&lru_node::next, &lru_node::previous>;

// Nodes that have left the map, in the order in which their entries are freed.
struct departed {
  lru_node* first = nullptr;
  lru_node* last = nullptr;

  void add(zcsl_lrumap* map, lru_node* node) {
    ages::remove(map->oldest, map->newest, node);
    ages::append(first, last, node);
  }
  void free_all(zcsl_lrumap_free_fn free_entry) {
    while (lru_node* node = first) {
      first = node->next;
      if (free_entry) free_entry(node->key, node->value);
      zcsl_memory_free(node);
    }
  }
};

void evict(zcsl_lrumap* map, departed& leaving) {
  uint32_t count = 0;
  zcsl_hashmap_count(map->map, &count);
  for (; map->max_count != 0 && count > map->max_count && map->oldest; --count) {
    zcsl_hashmap_remove(map->map, map->oldest->key, nullptr);
    leaving.add(map, map->oldest);
  }
}

zvsdk_status find(zcsl_lrumap* map, uint32_t key, lru_node** node) {
  void* found = nullptr;
  const zvsdk_status status = zcsl_hashmap_lookup(map->map, key, &found);
  *node = static_cast<lru_node*>(found);
  return status;
}

// Puts a new node into the integer map; gives the node that it replaces, if any.
zvsdk_status enter(zcsl_lrumap* map, lru_node* node, lru_node** replaced) {
  if (map->unique()) return zcsl_hashmap_insert(map->map, node->key, node);
  void* old = nullptr;
  const zvsdk_status status = zcsl_hashmap_update(map->map, node->key, node, &old);
  *replaced = static_cast<lru_node*>(old);
  return status;
}

zvsdk_status insert(zcsl_lrumap* map, uint32_t key, void* value) {
  auto* node = static_cast<lru_node*>(zcsl_memory_alloc(sizeof(lru_node)));
  if (!node) return zcsl_error_no_memory;
  *node = {key, value, nullptr, nullptr};
  lru_node* replaced = nullptr;
  if (const zvsdk_status failure = enter(map, node, &replaced)) {
    zcsl_memory_free(node);
    return failure;
  }
  ages::append(map->oldest, map->newest, node);
  departed leaving;
  if (replaced) leaving.add(map, replaced);
  evict(map, leaving);
  leaving.free_all(map->free);
  return 0;
}

zvsdk_status give_entry(const lru_node* node, uint32_t* key, void** value) {
  if (!node) return zcsl_warn_not_found;
  zcsl_give(key, node->key);
  zcsl_give(value, node->value);
  return 0;
}

// Takes an entry out, if there is one, and hands its value over or frees it.
zvsdk_status remove_entry(zcsl_lrumap* map, lru_node* node, uint32_t* key, void** value) {
  const zvsdk_status status = give_entry(node, key, value);
  if (status) return status;
  zcsl_hashmap_remove(map->map, node->key, nullptr);
  departed leaving;
  leaving.add(map, node);
  leaving.free_all(value ? nullptr : map->free);
  return 0;
}

}  // namespace

zvsdk_status zcsl_lrumap_create(zcsl_lrumap** map, uint32_t flags, zcsl_lrumap_free_fn free_entry) {
  return zcsl_container_create(map, false, [&](zcsl_lrumap* made) {
    made->flags = flags;
    made->free = free_entry;
    return zcsl_hashmap_create(&made->map, flags & zcsl_hashmap_flag_unique_key, nullptr);
  });
}

zvsdk_status zcsl_lrumap_delete(zcsl_lrumap* map) {
  if (!map) return 0;
  const zvsdk_status status = zcsl_container_check(map, true);
  if (status) return zcsl_container_logged<zcsl_lrumap>(status);
  void *cursor = nullptr, *value = nullptr;
  while (!zcsl_hashmap_enum(map->map, &cursor, nullptr, &value)) {
    auto* node = static_cast<lru_node*>(value);
    if (map->free) map->free(node->key, node->value);
    zcsl_memory_free(node);
  }
  zcsl_hashmap_delete(map->map);
  return zcsl_container_end(map);
}

zvsdk_status zcsl_lrumap_insert(zcsl_lrumap* map, uint32_t key, void* value) {
  return zcsl_container_operate(map, true, [&] { return insert(map, key, value); });
}

zvsdk_status zcsl_lrumap_lookup(zcsl_lrumap* map, uint32_t key, void** value) {
  return zcsl_container_operate(map, true, [&] {
    lru_node* node = nullptr;
    if (const zvsdk_status status = find(map, key, &node)) return status;
    ages::remove(map->oldest, map->newest, node);
    ages::append(map->oldest, map->newest, node);
    return give_entry(node, nullptr, value);
  });
}

zvsdk_status zcsl_lrumap_remove(zcsl_lrumap* map, uint32_t key, void** value) {
  return zcsl_container_operate(map, true, [&] {
    lru_node* node = nullptr;
    const zvsdk_status status = find(map, key, &node);
    return status ? status : remove_entry(map, node, nullptr, value);
  });
}

zvsdk_status zcsl_lrumap_set_max_count(zcsl_lrumap* map, uint32_t count) {
  return zcsl_container_operate(map, true, [&] {
    map->max_count = count;
    departed leaving;
    evict(map, leaving);
    leaving.free_all(map->free);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_lrumap_get_max_count(zcsl_lrumap* map, uint32_t* count) {
  return zcsl_container_operate(map, count != nullptr, [&] {
    *count = map->max_count;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_lrumap_count(zcsl_lrumap* map, uint32_t* count) {
  return zcsl_container_operate(map, count != nullptr,
                                [&] { return zcsl_hashmap_count(map->map, count); });
}

zvsdk_status zcsl_lrumap_oldest(zcsl_lrumap* map, uint32_t* key, void** value) {
  return zcsl_container_operate(map, true, [&] { return give_entry(map->oldest, key, value); });
}

zvsdk_status zcsl_lrumap_newest(zcsl_lrumap* map, uint32_t* key, void** value) {
  return zcsl_container_operate(map, true, [&] { return give_entry(map->newest, key, value); });
}

zvsdk_status zcsl_lrumap_remove_oldest(zcsl_lrumap* map, uint32_t* key, void** value) {
  return zcsl_container_operate(map, true,
                                [&] { return remove_entry(map, map->oldest, key, value); });
}

zvsdk_status zcsl_lrumap_remove_newest(zcsl_lrumap* map, uint32_t* key, void** value) {
  return zcsl_container_operate(map, true,
                                [&] { return remove_entry(map, map->newest, key, value); });
}
