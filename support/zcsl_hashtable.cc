// The hash table: chained buckets for lookup, a list through all items for the order, a cursor that
// makes enumeration by index linear overall.
//
// The cursor is one atomic pointer, and the index that goes with it stands in the item it points
// to. Readers of a table without a lock may thus move it at once: whatever cursor one of them
// meets, the index beside it is right, because every reader computes the same for that item.

#include "support/zcsl_hashtable.h"

#include <atomic>
#include <utility>

#include "support/zcsl_container.h"
#include "support/zcsl_hashtable_item.h"
#include "support/zcsl_links.h"
#include "support/zcsl_output.h"
#include "support/zcsl_string.h"

using table_item = zcsl_hashtable_item;
using table_value = zcsl_hashtable_value;

struct zcsl_hashtable : zcsl_container_head<0x12ABCDEF, zcsl_rwlock> {
  static constexpr const char* source = "zcsl_hashtable";

  uint32_t flags = 0;
  zcsl_hashtable_free_fn free = nullptr;
  table_item* first = nullptr;
  table_item* last = nullptr;
  uint32_t value_count = 0;
  std::atomic<table_item*> cursor{};
  zcsl_hashtable_values retired;
  uint32_t bucket_count = 0;
  uint32_t used_buckets = 0;
  uint32_t collisions = 0;
  table_item** buckets = nullptr;

  bool has(uint32_t flag) const { return (flags & flag) != 0; }
  table_item** bucket_of(uint32_t hash) { return buckets + (hash & (bucket_count - 1)); }
  // Any change of the number of values under a key makes the index beside the cursor stale.
  void reset_cursor() { cursor.store(nullptr, std::memory_order_relaxed); }
};

namespace {

constexpr uint32_t s_smallest_bucket_count = 16;

// A key on its way through an operation, hashed before the lock is taken.
struct hashed_key {
  const char* text;
  uint32_t hash;
};

uint32_t fold(uint8_t byte) {
  return byte >= 'a' && byte <= 'z' ? byte - 32u : byte;
}

// Bernstein's hash: times 33 and the next byte.
uint32_t _zcsl_hashtable_genhash(const zcsl_hashtable* table, const char* key) {
  const bool exact = table->has(zcsl_hashtable_flag_case_sensitive);
  uint32_t hash = 5381;
  for (; *key; ++key) {
    const uint8_t byte = static_cast<uint8_t>(*key);
    hash = hash * 33 + (exact ? byte : fold(byte));
  }
  return hash;
}

table_item* find_item(zcsl_hashtable* table, const hashed_key& key) {
  if (table->value_count == 0) return nullptr;
  const uint8_t ignore_case = !table->has(zcsl_hashtable_flag_case_sensitive);
  table_item* item = *table->bucket_of(key.hash);
  while (item && (item->hash != key.hash || !zcsl_string_equal(item->key, key.text, ignore_case))) {
    item = item->chain_next;
  }
  return item;
}

void link_chain(zcsl_hashtable* table, table_item* item) {
  table_item** head = table->bucket_of(item->hash);
  item->chain_previous = nullptr;
  item->chain_next = *head;
  if (*head) {
    (*head)->chain_previous = item;
    ++table->collisions;
  } else {
    ++table->used_buckets;
  }
  *head = item;
}

void unlink_chain(zcsl_hashtable* table, table_item* item) {
  table_item** head = table->bucket_of(item->hash);
  if (item->chain_next) item->chain_next->chain_previous = item->chain_previous;
  if (item->chain_previous) {
    item->chain_previous->chain_next = item->chain_next;
  } else {
    *head = item->chain_next;
  }
  if (!*head) --table->used_buckets;
}

using insertion_order = zcsl_links<&table_item::list_next, &table_item::list_previous>;

// Spreads the items, in list order, over a new bucket array. Without memory nothing changes.
zvsdk_status resize(zcsl_hashtable* table, uint64_t bucket_count) {
  void* buckets = zcsl_memory_calloc(bucket_count, sizeof(table_item*));
  if (!buckets) return zcsl_error_no_memory;
  zcsl_memory_free(std::exchange(table->buckets, static_cast<table_item**>(buckets)));
  table->bucket_count = static_cast<uint32_t>(bucket_count);
  table->used_buckets = 0;
  table->collisions = 0;
  for (table_item* item = table->first; item; item = item->list_next) link_chain(table, item);
  return 0;
}

// Collisions are never taken back, so the measure drifts upward and the table grows early.
zvsdk_status make_room(zcsl_hashtable* table) {
  const uint64_t load = (uint64_t{table->used_buckets} + table->collisions) * 4 / 3;
  if (load < table->bucket_count) return 0;
  uint64_t wanted = s_smallest_bucket_count;
  while (wanted <= load) wanted *= 2;
  if (wanted > (uint64_t{1} << 31)) return zcsl_error_no_memory;
  return resize(table, wanted);
}

zvsdk_status add_key(zcsl_hashtable* table, const hashed_key& key,
                     const zcsl_hashtable_input& input) {
  const bool by_reference = table->has(zcsl_hashtable_flag_key_by_reference);
  table_item* item = zcsl_hashtable_item_make(key.text, key.hash, by_reference, input);
  if (!item) return zcsl_error_no_memory;
  if (const zvsdk_status failure = make_room(table)) {
    zcsl_hashtable_item_release(item, nullptr);
    return failure;
  }
  link_chain(table, item);
  insertion_order::append(table->first, table->last, item);
  ++table->value_count;
  table->reset_cursor();
  return 0;
}

zvsdk_status append_value(zcsl_hashtable* table, table_item* item,
                          const zcsl_hashtable_input& input) {
  table_value* value = zcsl_hashtable_value_make(input);
  if (!value) return zcsl_error_no_memory;
  if (!item->values.append(value)) {
    zcsl_hashtable_value_release(value, nullptr);
    return zcsl_error_no_memory;
  }
  ++table->value_count;
  table->reset_cursor();
  return 0;
}

// In a thread-safe table a reader may still look at a value that it received without a lock.
bool must_outlive(const zcsl_hashtable* table, const table_value* value) {
  return table->has(zcsl_hashtable_flag_threadsafe) &&
         !table->has(zcsl_hashtable_flag_free_at_once) &&
         value->handed_out.load(std::memory_order_relaxed);
}

// `displaced` receives the old value if the caller is to free it.
zvsdk_status replace_value(zcsl_hashtable* table, table_item* item,
                           const zcsl_hashtable_input& input, table_value** displaced) {
  table_value* value = zcsl_hashtable_value_make(input);
  if (!value) return zcsl_error_no_memory;
  table_value* old = std::exchange(item->values.values[0], value);
  if (!must_outlive(table, old) || !table->retired.append(old)) *displaced = old;
  return 0;
}

zvsdk_status add_value(zcsl_hashtable* table, const hashed_key& key,
                       const zcsl_hashtable_input& input, table_value** displaced) {
  table_item* item = find_item(table, key);
  if (!item) return add_key(table, key, input);
  if (table->has(zcsl_hashtable_flag_unique_key)) return zcsl_error_exists;
  if (table->has(zcsl_hashtable_flag_multi_value)) return append_value(table, item, input);
  return replace_value(table, item, input, displaced);
}

void hand_out(table_value* value, void** data, uint32_t* size) {
  value->mark_handed_out();
  zcsl_give(data, value->data);
  zcsl_give(size, value->size);
}

// The item that holds value number `index`, which must exist; `base` is its first value's number.
table_item* item_at(zcsl_hashtable* table, uint32_t index, uint32_t* base) {
  table_item* const start = table->cursor.load(std::memory_order_acquire);
  table_item* item = start;
  *base = item ? item->base.load(std::memory_order_relaxed) : 0;
  if (!item || *base > index) {
    item = table->first;
    *base = 0;
  }
  for (; index - *base >= item->values.count; item = item->list_next) {
    *base += item->values.count;
  }
  if (item != start) {
    item->base.store(*base, std::memory_order_relaxed);
    table->cursor.store(item, std::memory_order_release);
  }
  return item;
}

// Takes everything out under the lock; the items go to the caller to be freed after it.
table_item* empty_table(zcsl_hashtable* table) {
  table->retired.release(table->free);
  for (uint32_t i = 0; i < table->bucket_count; ++i) table->buckets[i] = nullptr;
  table->last = nullptr;
  table->value_count = 0;
  table->used_buckets = 0;
  table->reset_cursor();
  return std::exchange(table->first, nullptr);
}

void release_items(table_item* item, zcsl_hashtable_free_fn free_data) {
  while (item) {
    zcsl_hashtable_item_release(std::exchange(item, item->list_next), free_data);
  }
}

// One whole operation on a key, which is hashed before the lock.
template <zcsl_access Access = zcsl_access::write, class Work>
zvsdk_status operate_on_key(zcsl_hashtable* table, const char* key, bool arguments, Work&& work,
                            uint32_t line = __builtin_LINE()) {
  zvsdk_status status = zcsl_container_check(table, key && arguments);
  if (!status) {
    const hashed_key hashed{.text = key, .hash = _zcsl_hashtable_genhash(table, key)};
    status = zcsl_container_locked<Access>(table, [&] { return work(hashed); });
  }
  return zcsl_container_logged<zcsl_hashtable>(status, line);
}

}  // namespace

zvsdk_status zcsl_hashtable_create(zcsl_hashtable** table, uint32_t flags,
                                   zcsl_hashtable_free_fn free_data) {
  const bool threadsafe = (flags & zcsl_hashtable_flag_threadsafe) != 0;
  return zcsl_container_create(table, threadsafe, [&](zcsl_hashtable* made) {
    made->flags = flags;
    made->free = free_data;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashtable_delete(zcsl_hashtable* table) {
  if (!table) return 0;
  const zvsdk_status status = zcsl_hashtable_clear(table);
  return status ? status : zcsl_container_end(table, table->buckets);
}

zvsdk_status zcsl_hashtable_value_add(zcsl_hashtable* table, const char* key, const void* data,
                                      uint32_t size, int copy) {
  const zcsl_hashtable_input input{.data = data, .size = size, .copy = copy != 0};
  const bool whole = (data != nullptr) == (size != 0);
  table_value* displaced = nullptr;
  const zvsdk_status status = operate_on_key(table, key, whole, [&](const hashed_key& hashed) {
    return add_value(table, hashed, input, &displaced);
  });
  if (displaced) zcsl_hashtable_value_release(displaced, table->free);
  return status;
}

zvsdk_status zcsl_hashtable_value_find_ex(zcsl_hashtable* table, const char* key, uint32_t index,
                                          void** data, uint32_t* size) {
  if (!table) return zcsl_warn_not_found;
  return operate_on_key<zcsl_access::read>(table, key, true, [&](const hashed_key& hashed) {
    const table_item* item = find_item(table, hashed);
    if (!item || index >= item->values.count) return zcsl_warn_not_found;
    hand_out(item->values.values[index], data, size);
    return zvsdk_status{0};
  });
}

// Takes the write lock: the cursor moves.
zvsdk_status zcsl_hashtable_index_get(zcsl_hashtable* table, uint32_t index, const char** key,
                                      void** data, uint32_t* size) {
  return zcsl_container_operate(table, true, [&] {
    if (index >= table->value_count) return zcsl_warn_end_of_range;
    uint32_t base = 0;
    const table_item* item = item_at(table, index, &base);
    hand_out(item->values.values[index - base], data, size);
    zcsl_give(key, item->key);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashtable_value_count(zcsl_hashtable* table, const char* key, uint32_t* count) {
  return operate_on_key<zcsl_access::read>(table, key, count, [&](const hashed_key& hashed) {
    const table_item* item = find_item(table, hashed);
    if (item) *count = item->values.count;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashtable_count(zcsl_hashtable* table, uint32_t* count) {
  return zcsl_container_operate<zcsl_access::read>(table, count != nullptr, [&] {
    *count = table->value_count;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashtable_key_count(zcsl_hashtable* table, uint32_t* count) {
  return zcsl_container_operate<zcsl_access::read>(table, count != nullptr, [&] {
    *count = 0;
    for (const table_item* item = table->first; item; item = item->list_next) ++*count;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_hashtable_value_delete(zcsl_hashtable* table, const char* key) {
  table_item* item = nullptr;
  const zvsdk_status status = operate_on_key(table, key, true, [&](const hashed_key& hashed) {
    item = find_item(table, hashed);
    if (!item) return zcsl_warn_not_found;
    unlink_chain(table, item);
    insertion_order::remove(table->first, table->last, item);
    table->value_count -= item->values.count;
    table->reset_cursor();
    return zvsdk_status{0};
  });
  if (item) zcsl_hashtable_item_release(item, table->free);
  return status;
}

zvsdk_status zcsl_hashtable_clear(zcsl_hashtable* table) {
  table_item* items = nullptr;
  const zvsdk_status status = zcsl_container_operate(table, true, [&] {
    items = empty_table(table);
    return zvsdk_status{0};
  });
  if (items) release_items(items, table->free);
  return status;
}
