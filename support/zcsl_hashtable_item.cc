// How the values and items of a hash table are laid out, made and released.

#include "support/zcsl_hashtable_item.h"

#include <cstddef>
#include <cstring>
#include <new>

#include "support/zcsl_string.h"
#include "zvsdk_runtime.h"

namespace {

// Copied bytes may be any record of the caller's, so they are aligned for all.
constexpr size_t aligned(size_t size) {
  constexpr size_t unit = alignof(std::max_align_t);
  return (size + unit - 1) / unit * unit;
}

// Fills a value in; `storage` is where copied bytes go.
void fill(zcsl_hashtable_value* value, const zcsl_hashtable_input& input, void* storage) {
  value->size = input.size;
  value->copied = input.copy && input.size;
  if (value->copied) std::memcpy(storage, input.data, input.size);
  value->data = value->copied ? storage : const_cast<void*>(input.data);
}

size_t copied_size(const zcsl_hashtable_input& input) {
  return input.copy ? input.size : 0;
}

// The last of the item and its first value takes the block along.
void drop_block(zcsl_hashtable_item* item) {
  if (item->users.fetch_sub(1, std::memory_order_acq_rel) == 1) zcsl_memory_free(item);
}

}  // namespace

bool zcsl_hashtable_values::append(zcsl_hashtable_value* value) {
  if (count == capacity) {
    if (capacity > UINT32_MAX / 2) return false;
    const uint32_t grown = capacity == 0 ? 1 : capacity * 2;
    void* block = zcsl_memory_realloc(owned ? values : nullptr, sizeof(*values) * size_t{grown});
    if (!block) return false;
    if (!owned && count) std::memcpy(block, values, sizeof(*values) * size_t{count});
    values = static_cast<zcsl_hashtable_value**>(block);
    capacity = grown;
    owned = 1;
  }
  values[count++] = value;
  return true;
}

void zcsl_hashtable_values::release(zcsl_hashtable_free_fn free_data) {
  for (uint32_t i = 0; i < count; ++i) zcsl_hashtable_value_release(values[i], free_data);
  if (owned) zcsl_memory_free(values);
  *this = {};
}

zcsl_hashtable_value* zcsl_hashtable_value_make(const zcsl_hashtable_input& input) {
  constexpr size_t head = aligned(sizeof(zcsl_hashtable_value));
  uint8_t* block = static_cast<uint8_t*>(zcsl_memory_alloc(head + copied_size(input)));
  if (!block) return nullptr;
  auto* value = ::new (block) zcsl_hashtable_value;
  value->separate = 1;
  fill(value, input, block + head);
  return value;
}

void zcsl_hashtable_value_release(zcsl_hashtable_value* value, zcsl_hashtable_free_fn free_data) {
  if (value->data && free_data) free_data(value->data, value->size);
  if (value->separate) {
    zcsl_memory_free(value);
  } else {
    drop_block(value->host);
  }
}

zcsl_hashtable_item* zcsl_hashtable_item_make(const char* key, uint32_t hash, bool by_reference,
                                              const zcsl_hashtable_input& input) {
  constexpr size_t head = aligned(sizeof(zcsl_hashtable_item));
  const size_t key_size = by_reference ? 0 : zcsl_string_bytelen(key);
  uint8_t* block = static_cast<uint8_t*>(zcsl_memory_alloc(head + copied_size(input) + key_size));
  if (!block) return nullptr;
  uint8_t* key_copy = block + head + copied_size(input);
  if (key_size) std::memcpy(key_copy, key, key_size);

  auto* item = ::new (block) zcsl_hashtable_item;
  item->hash = hash;
  item->key = by_reference ? key : reinterpret_cast<const char*>(key_copy);
  fill(&item->first, input, block + head);
  item->first.host = item;
  item->inline_slot = &item->first;
  item->values = {.values = &item->inline_slot, .capacity = 1, .count = 1, .owned = 0};
  return item;
}

void zcsl_hashtable_item_release(zcsl_hashtable_item* item, zcsl_hashtable_free_fn free_data) {
  item->values.release(free_data);
  drop_block(item);
}
