// Nodes, their keys and the arena of a cluster.

#include "manager/zdo_node.h"

#include <algorithm>
#include <new>

namespace manager {

namespace {

constexpr size_t s_smallest_block = 192;
constexpr size_t s_largest_block = 65536;

uint32_t grown(uint32_t capacity) {
  return capacity == 0 ? 2 : capacity * 2;
}

}  // namespace

void* zdo_cluster::allocate(size_t bytes, size_t alignment) {
  const auto padded = [&] { return (blocks->used + alignment - 1) & ~(alignment - 1); };
  if (blocks == nullptr || padded() > blocks->size || blocks->size - padded() < bytes) {
    grow(bytes);
  }
  const size_t place = padded();
  blocks->used = static_cast<uint32_t>(place + bytes);
  return blocks->data() + place;
}

void zdo_cluster::grow(size_t bytes) {
  const size_t doubled = blocks != nullptr ? size_t{blocks->size} * 2 : 0;
  const size_t usual = std::min(std::max(doubled, s_smallest_block), s_largest_block);
  reserve(std::max(bytes, usual));
}

void zdo_cluster::reserve(size_t bytes) {
  if (bytes > UINT32_MAX / 2) throw std::bad_alloc();
  void* memory = ::operator new(sizeof(block) + bytes);
  blocks = new (memory) block{blocks, 0, static_cast<uint32_t>(bytes)};
}

const char* zdo_cluster::copy(const char* text) {
  const size_t size = std::strlen(text) + 1;
  return static_cast<const char*>(std::memcpy(allocate(size, 1), text, size));
}

void zdo_cluster::free_blocks() noexcept {
  while (blocks != nullptr) {
    block* gone = blocks;
    blocks = gone->next;
    ::operator delete(gone);
  }
}

const zdo_key* zdo_node::find(zdo_key_kind wanted, const char* key) const noexcept {
  const bool is_child = wanted == zdo_key_kind::child;
  for (uint32_t i = 0; i < key_count; ++i) {
    const zdo_key& each = keys[i];
    if (each.is_child == is_child && std::strcmp(each.name, key) == 0) return &each;
  }
  return nullptr;
}

const char* zdo_node::value(const char* key, uint32_t ordinal) const noexcept {
  const zdo_key* found = find(zdo_key_kind::value, key);
  const bool exists = found != nullptr && ordinal - 1 < found->count;
  return exists ? static_cast<const char*>(found->at(ordinal - 1)) : nullptr;
}

zdo_node* zdo_node::child(const char* key, uint32_t ordinal) const noexcept {
  const zdo_key* found = find(zdo_key_kind::child, key);
  const bool exists = found != nullptr && ordinal - 1 < found->count;
  if (!exists) return nullptr;
  return const_cast<zdo_node*>(static_cast<const zdo_node*>(found->at(ordinal - 1)));
}

void zdo_node::reserve(uint32_t wanted) {
  if (wanted <= key_capacity) return;
  auto* moved = static_cast<zdo_key*>(cluster().allocate(wanted * sizeof(zdo_key)));
  std::copy_n(keys, key_count, moved);
  keys = moved;
  key_capacity = wanted;
}

zdo_key& zdo_node::key_slot(zdo_key_kind wanted, const char* key, zdo_key_order order) {
  if (order == zdo_key_order::grouped) {
    if (key_count != 0 && keys[key_count - 1].name == key) return keys[key_count - 1];
  } else if (const zdo_key* found = find(wanted, key)) {
    return const_cast<zdo_key&>(*found);
  }
  if (key_count == key_capacity) reserve(grown(key_capacity));
  return *new (&keys[key_count]) zdo_key{key, 0, 0, wanted == zdo_key_kind::child, {nullptr}};
}

/* The new item is counted last, so that a failure leaves the node as it was. */
void zdo_node::add(zdo_key_kind wanted, const char* key, const void* item, zdo_key_order order) {
  zdo_key& slot = key_slot(wanted, key, order);
  const uint32_t room = slot.capacity != 0 ? slot.capacity : 1;
  if (slot.count == room) {
    const uint32_t capacity = grown(room);
    auto** items = static_cast<const void**>(cluster().allocate(capacity * sizeof(void*)));
    for (uint32_t i = 0; i < slot.count; ++i) items[i] = slot.at(i);
    slot.items = items;
    slot.capacity = capacity;
  }
  if (slot.capacity == 0) {
    slot.single = item;
  } else {
    slot.items[slot.count] = item;
  }
  if (slot.count++ == 0) ++key_count;
}

void zdo_node::add_value(const char* key, const char* text, zdo_key_order order) {
  add(zdo_key_kind::value, key, text, order);
}

void zdo_node::add_child(const char* key, zdo_node* child, zdo_key_order order) {
  add(zdo_key_kind::child, key, child, order);
  zdo_cluster& own = cluster();
  if (&child->cluster() == &own) return;
  own.has_links = true;
  child->cluster().is_linked.store(1, std::memory_order_relaxed);
  child->cluster().live.fetch_add(1, std::memory_order_relaxed);
}

}  // namespace manager
