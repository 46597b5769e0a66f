/*
 * zdo_node.h: data objects in memory.
 *
 * A node is one object: a context and, by key, values (texts) and children (nodes), each key
 * holding any number in order. Nodes come in clusters: one node for an object built by calls, a
 * whole tree for a track description. All keys, texts and arrays of a cluster lie in its arena,
 * which grows by blocks and goes as a whole, so a tree costs a handful of allocations and no walk
 * to free.
 *
 * A node is a handle while somebody has a reference. A cluster lives while any of its nodes has one
 * or another cluster links to it as a child: the tree stays as long as any part of it is held.
 * Children within a cluster are not counted. A link is no handle: a handle that was given back is
 * refused even while a parent keeps the object. Clusters must not hold each other in a circle.
 *
 * Reading takes no lock. Changing a node while its cluster is read elsewhere is the caller's fault.
 */
#ifndef ZDO_NODE_H
#define ZDO_NODE_H

#include <cstring>

#include "manager/handle_space.h"
#include "zvsdk_manager.h"

namespace manager {

struct client_slot;
struct user_slot;
struct zdo_cluster;
class users;

enum class zdo_key_kind : uint32_t { value, child };

/* How items are added: in any order, or with those of a key side by side, so that a key is either
 * the very text that was given last or a new one and need not be searched for. */
enum class zdo_key_order { any, grouped };

/* What a node holds under one key. A single item needs no array. */
struct zdo_key {
  const char* name;
  uint32_t count;
  uint32_t capacity : 31;
  uint32_t is_child : 1;
  union {
    const void* single;  // capacity 0
    const void** items;
  };

  const void* at(uint32_t index) const { return capacity == 0 ? single : items[index]; }
};

/* An object whose calls go to a provider. */
struct zdo_served {
  zvsdk_zdo_provider provider;
  void* data;
  client_slot* client;
  users* people;
  user_slot* user;           // may be null
  const char* locale_group;  // may be null
};

struct zdo_node : handle_slot {
  static constexpr handle_kind kind = handle_kind::zdo;

  uint16_t position = 0;   // in its cluster, from 1
  bool is_served = false;  // which of the union's members holds
  const char* context = nullptr;
  union {
    zdo_key* keys = nullptr;
    zdo_served* served;
  };
  uint32_t key_count = 0;
  uint32_t key_capacity = 0;

  zdo_cluster& cluster();
  const zdo_key* find(zdo_key_kind kind, const char* key) const noexcept;
  /* The item of an ordinal from 1, or null. */
  const char* value(const char* key, uint32_t ordinal) const noexcept;
  zdo_node* child(const char* key, uint32_t ordinal) const noexcept;
  /* Calls `visit` with each child. An object that a provider serves has none here. */
  template <class Visit>
  void each_child(Visit visit) const {
    for (uint32_t k = 0; !is_served && k < key_count; ++k) {
      for (uint32_t i = 0; keys[k].is_child && i < keys[k].count; ++i) {
        visit(const_cast<zdo_node*>(static_cast<const zdo_node*>(keys[k].at(i))));
      }
    }
  }

  /* Room for this many keys. The functions that add throw when memory runs out. */
  void reserve(uint32_t keys);
  /* `key` and `text` must live as long as the cluster: constants, or copies in its arena. */
  void add_value(const char* key, const char* text, zdo_key_order order = zdo_key_order::any);
  /* Links to a child; one of another cluster is held by it. */
  void add_child(const char* key, zdo_node* child, zdo_key_order order = zdo_key_order::any);

 private:
  void add(zdo_key_kind kind, const char* key, const void* item, zdo_key_order order);
  zdo_key& key_slot(zdo_key_kind kind, const char* key, zdo_key_order order);
};

/* Stands in front of its nodes, in a place of a node's size; its reference count stays 0, so that
 * it is never taken for a handle. */
struct zdo_cluster : handle_slot {
  struct block {
    block* next;
    uint32_t used;
    uint32_t size;
    char* data() { return reinterpret_cast<char*>(this + 1); }
  };

  std::atomic<uint32_t> live{0};  // nodes with references, and links from other clusters
  block* blocks = nullptr;
  zdo_cluster* next = nullptr;  // in a free list or a list of what is to be destroyed
  uint16_t size_class = 0;
  uint16_t used = 0;                   // nodes that are in use
  std::atomic<uint16_t> is_linked{0};  // another cluster refers to it
  bool has_links = false;              // refers to another one

  zdo_node* nodes() { return reinterpret_cast<zdo_node*>(this + 1); }

  /* Memory of the arena. */
  void* allocate(size_t bytes, size_t alignment = alignof(void*));
  const char* copy(const char* text);
  /* Makes the next block exactly this large. */
  void reserve(size_t bytes);
  void free_blocks() noexcept;

 private:
  void grow(size_t bytes);
};

static_assert(sizeof(zdo_node) == 32 && sizeof(zdo_cluster) == 32);

inline zdo_cluster& zdo_node::cluster() {
  return *reinterpret_cast<zdo_cluster*>(this - position);
}

}  // namespace manager

#endif
