// The integer map: open addressing with linear probing, and removal by shifting back, so that there
// are no tombstones. Key 0 marks an empty slot, so the entry of that key has a place of its own
// beside the table.

#include "support/zcsl_hashmap.h"

#include <utility>

#include "support/zcsl_container.h"
#include "support/zcsl_hashmap_internal.h"
#include "support/zcsl_output.h"

namespace {

struct hashmap_slot {
  uint32_t key;
  void* value;
};

}  // namespace

struct zcsl_hashmap : zcsl_container_head<0x6ABCDEF6, zcsl_rwlock> {
  static constexpr const char* source = "zcsl_hashmap";

  uint32_t flags = 0;
  zcsl_hashmap_free_fn free = nullptr;
  hashmap_slot* slots = nullptr;
  uint32_t capacity = 0;
  uint32_t count = 0;  // without key 0
  uint8_t zero_present = 0;
  hashmap_slot zero{};

  bool unique() const { return (flags & zcsl_hashmap_flag_unique_key) != 0; }
  uint32_t next(uint32_t position) const { return (position + 1) & (capacity - 1); }
};

namespace {

constexpr uint32_t s_initial_capacity = 16;
constexpr uint64_t s_capacity_limit = uint64_t{1} << 31;

// The 32-bit finalizer of MurmurHash3.
uint32_t mix(uint32_t key) {
  uint32_t h = (key ^ (key >> 16)) * 0x85EBCA6Bu;
  h = (h ^ (h >> 13)) * 0xC2B2AE35u;
  return h ^ (h >> 16);
}

uint32_t home_of(const zcsl_hashmap* map, uint32_t key) {
  return mix(key) & (map->capacity - 1);
}

// The slot that holds the key, or the empty one where its search ends.
hashmap_slot* probe(const zcsl_hashmap* map, uint32_t key) {
  uint32_t position = home_of(map, key);
  while (map->slots[position].key != 0 && map->slots[position].key != key) {
    position = map->next(position);
  }
  return map->slots + position;
}

// The entry of a key, or null.
hashmap_slot* find(zcsl_hashmap* map, uint32_t key) {
  if (key == 0) return map->zero_present ? &map->zero : nullptr;
  hashmap_slot* slot = probe(map, key);
  return slot->key == key ? slot : nullptr;
}

// Moves the entries to a table of the given size; without memory the present one stays.
zvsdk_status _hashmap_repopulate(zcsl_hashmap* map, uint64_t capacity) {
  if (capacity > s_capacity_limit) return zcsl_error_no_memory;
  void* block = zcsl_memory_calloc(capacity, sizeof(hashmap_slot));
  if (!block) return zcsl_error_no_memory;
  hashmap_slot* old = std::exchange(map->slots, static_cast<hashmap_slot*>(block));
  const uint32_t old_capacity = std::exchange(map->capacity, static_cast<uint32_t>(capacity));
  for (uint32_t i = 0; i < old_capacity; ++i) {
    if (old[i].key != 0) *probe(map, old[i].key) = old[i];
  }
  zcsl_memory_free(old);
  return 0;
}

// The place of key 0, present or new.
zvsdk_status place_of_zero(zcsl_hashmap* map, hashmap_slot** place) {
  if (map->zero_present && map->unique()) return zcsl_error_exists;
  map->zero_present = 1;
  *place = &map->zero;
  return 0;
}

// The place of a key, present or new; a new one has a null value. One walk finds either, unless a
// new key would leave less than a quarter of the table free: then the table grows first.
zvsdk_status place_of(zcsl_hashmap* map, uint32_t key, hashmap_slot** place) {
  if (key == 0) return place_of_zero(map, place);
  *place = probe(map, key);
  if ((*place)->key == key) return map->unique() ? zcsl_error_exists : 0;
  while (uint64_t{map->capacity} * 3 <= (uint64_t{map->count} + 1) * 4) {
    const zvsdk_status failure = _hashmap_repopulate(map, uint64_t{map->capacity} * 2);
    if (failure) return failure;
    *place = probe(map, key);
  }
  (*place)->key = key;
  ++map->count;
  return 0;
}

// Empties a slot. Later entries of the run move back into the hole where that brings them no nearer
// than their home, so that every search still ends where it should.
void close_gap(zcsl_hashmap* map, uint32_t hole) {
  const uint32_t mask = map->capacity - 1;
  for (uint32_t i = map->next(hole); map->slots[i].key != 0; i = map->next(i)) {
    const uint32_t home = home_of(map, map->slots[i].key);
    if (((hole - home) & mask) < ((i - home) & mask)) {
      map->slots[hole] = map->slots[i];
      hole = i;
    }
  }
  map->slots[hole] = {};
  --map->count;
}

void* take_out(zcsl_hashmap* map, hashmap_slot* slot) {
  void* value = slot->value;
  if (slot == &map->zero) {
    map->zero_present = 0;
    map->zero = {};
  } else {
    close_gap(map, static_cast<uint32_t>(slot - map->slots));
  }
  return value;
}

void release_entries(zcsl_hashmap* map) {
  if (!map->free) return;
  for (uint32_t i = 0; i < map->capacity; ++i) {
    if (map->slots[i].key != 0) map->free(map->slots[i].key, map->slots[i].value);
  }
  if (map->zero_present) map->free(0, map->zero.value);
}

// The smallest table that holds so many entries below the limit of three quarters.
uint64_t capacity_for(uint32_t entries) {
  const uint64_t need = (uint64_t{entries} * 4 + 3) / 3;
  uint64_t capacity = 1;
  while (capacity < need) capacity *= 2;
  return capacity;
}

// The entry behind the one that `cursor` names; false for a cursor that names none.
bool entry_after(zcsl_hashmap* map, const void* cursor, uint32_t* position) {
  if (cursor == &map->zero) {
    *position = 0;
    return true;
  }
  const uintptr_t offset =
      reinterpret_cast<uintptr_t>(cursor) - reinterpret_cast<uintptr_t>(map->slots);
  if (offset % sizeof(hashmap_slot) || offset / sizeof(hashmap_slot) >= map->capacity) return false;
  *position = static_cast<uint32_t>(offset / sizeof(hashmap_slot)) + 1;
  return true;
}

zvsdk_status next_entry(zcsl_hashmap* map, const void* cursor, hashmap_slot** entry) {
  *entry = nullptr;
  if (!cursor && map->zero_present) {
    *entry = &map->zero;
    return 0;
  }
  uint32_t position = 0;
  if (cursor && !entry_after(map, cursor, &position)) return zcsl_error_invalid_arg;
  while (position < map->capacity && map->slots[position].key == 0) ++position;
  if (position == map->capacity) return zcsl_warn_not_found;
  *entry = map->slots + position;
  return 0;
}

}  // namespace

zvsdk_status zcsl_hashmap_create(zcsl_hashmap** map, uint32_t flags,
                                 zcsl_hashmap_free_fn free_entry) {
  const bool threadsafe = (flags & zcsl_hashmap_flag_threadsafe) != 0;
  return zcsl_container_create(map, threadsafe, [&](zcsl_hashmap* made) {
    made->flags = flags;
    made->free = free_entry;
    return _hashmap_repopulate(made, s_initial_capacity);
  });
}

zvsdk_status zcsl_hashmap_delete(zcsl_hashmap* map) {
  if (!map) return 0;
  const zvsdk_status status = zcsl_container_check(map, true);
  if (status) return zcsl_container_logged<zcsl_hashmap>(status);
  release_entries(map);
  return zcsl_container_end(map, map->slots);
}

zvsdk_status zcsl_hashmap_insert(zcsl_hashmap* map, uint32_t key, void* value) {
  return zcsl_container_operate(map, true, [&] {
    hashmap_slot* place = nullptr;
    if (const zvsdk_status failure = place_of(map, key, &place)) return failure;
    if (place->value && map->free) map->free(key, place->value);
    place->value = value;
    return zvsdk_status{0};
  });
}

void zcsl_hashmap_prefetch(const zcsl_hashmap* map, uint32_t key) {
  __builtin_prefetch(map->slots + home_of(map, key), 1);
}

zvsdk_status zcsl_hashmap_update(zcsl_hashmap* map, uint32_t key, void* value, void** old) {
  return zcsl_container_operate(map, true, [&] {
    hashmap_slot* place = nullptr;
    if (const zvsdk_status failure = place_of(map, key, &place)) return failure;
    zcsl_give(old, std::exchange(place->value, value));
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashmap_lookup(zcsl_hashmap* map, uint32_t key, void** value) {
  return zcsl_container_operate<zcsl_access::read>(map, true, [&] {
    const hashmap_slot* entry = find(map, key);
    if (!entry) return zcsl_warn_not_found;
    zcsl_give(value, entry->value);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashmap_remove(zcsl_hashmap* map, uint32_t key, void** value) {
  void* taken = nullptr;
  const zvsdk_status status = zcsl_container_operate(map, true, [&] {
    hashmap_slot* entry = find(map, key);
    if (!entry) return zcsl_warn_not_found;
    taken = take_out(map, entry);
    return zvsdk_status{0};
  });
  if (status) return status;
  if (value) {
    *value = taken;
  } else if (map->free) {
    map->free(key, taken);
  }
  return 0;
}

zvsdk_status zcsl_hashmap_count(zcsl_hashmap* map, uint32_t* count) {
  return zcsl_container_operate<zcsl_access::read>(map, count != nullptr, [&] {
    *count = map->count + map->zero_present;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashmap_clear(zcsl_hashmap* map) {
  return zcsl_container_operate(map, true, [&] {
    release_entries(map);
    zcsl_memory_memset(map->slots, 0, sizeof(hashmap_slot) * size_t{map->capacity});
    map->count = 0;
    map->zero_present = 0;
    map->zero = {};
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashmap_compact(zcsl_hashmap* map) {
  return zcsl_container_operate(map, true,
                                [&] { return _hashmap_repopulate(map, capacity_for(map->count)); });
}

zvsdk_status zcsl_hashmap_set_min_size(zcsl_hashmap* map, uint32_t entries) {
  return zcsl_container_operate(map, true, [&] {
    const uint64_t wanted = capacity_for(entries);
    return wanted > map->capacity ? _hashmap_repopulate(map, wanted) : zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashmap_enum(zcsl_hashmap* map, void** cursor, uint32_t* key, void** value) {
  return zcsl_container_operate<zcsl_access::read>(map, cursor != nullptr, [&] {
    hashmap_slot* entry = nullptr;
    const zvsdk_status status = next_entry(map, *cursor, &entry);
    if (!zvsdk_is_error(status)) *cursor = entry;
    if (status) return status;
    zcsl_give(key, entry->key);
    zcsl_give(value, entry->value);
    return zvsdk_status{0};
  });
}
