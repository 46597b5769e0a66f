/*
 * zcsl_hashtable_item.h: what a hash table is made of: values, lists of values, and items, which
 * are a key with its values. Internal to the hash table.
 *
 * An item is one block: the record, its first value, that value's bytes if they were copied, and
 * the key if it was copied. Further and replacing values are blocks of their own. A first value
 * that was replaced and retired keeps the item's block alive after the item is gone.
 */
#ifndef ZCSL_HASHTABLE_ITEM_H
#define ZCSL_HASHTABLE_ITEM_H

#include <atomic>

#include "support/zcsl_hashtable.h"

struct zcsl_hashtable_item;

struct zcsl_hashtable_value {
  void* data = nullptr;
  uint32_t size = 0;
  uint8_t copied = 0;                  /* the bytes lie in the value's own block */
  uint8_t separate = 0;                /* that block is the value's alone, not its item's */
  std::atomic<uint8_t> handed_out{};   /* a reader has received the data; only goes from 0 to 1 */
  zcsl_hashtable_item* host = nullptr; /* the item whose block it is, if not separate */

  void mark_handed_out() {
    if (!handed_out.load(std::memory_order_relaxed)) handed_out.store(1, std::memory_order_relaxed);
  }
};

/* An array of values that doubles when it is full. It may start in a place that it does not own. */
struct zcsl_hashtable_values {
  zcsl_hashtable_value** values = nullptr;
  uint32_t capacity = 0;
  uint32_t count = 0;
  uint8_t owned = 0;

  /* False, and nothing changed, without memory. */
  bool append(zcsl_hashtable_value* value);
  /* Releases every value (see below) and the array. */
  void release(zcsl_hashtable_free_fn free_data);
};

struct zcsl_hashtable_item {
  uint32_t hash = 0;
  const char* key = nullptr;
  zcsl_hashtable_item* chain_next = nullptr;
  zcsl_hashtable_item* chain_previous = nullptr;
  zcsl_hashtable_item* list_next = nullptr;
  zcsl_hashtable_item* list_previous = nullptr;
  zcsl_hashtable_values values;
  zcsl_hashtable_value* inline_slot = nullptr;
  zcsl_hashtable_value first;
  std::atomic<uint32_t> base{};  /* index of the first value, valid once the cursor was here */
  std::atomic<uint8_t> users{2}; /* the item and its first value, who share the block */
};

/* What an add brings: bytes to copy, or a pointer to keep. */
struct zcsl_hashtable_input {
  const void* data;
  uint32_t size;
  bool copy;
};

/* A value in a block of its own, or null. */
zcsl_hashtable_value* zcsl_hashtable_value_make(const zcsl_hashtable_input& input);
/* Runs the callback (optional) on data that is not null, then lets the value's memory go. */
void zcsl_hashtable_value_release(zcsl_hashtable_value* value, zcsl_hashtable_free_fn free_data);

/* An item with its first value, or null. The key is copied unless it is kept `by_reference`. */
zcsl_hashtable_item* zcsl_hashtable_item_make(const char* key, uint32_t hash, bool by_reference,
                                              const zcsl_hashtable_input& input);
/* Releases the values, then the item. */
void zcsl_hashtable_item_release(zcsl_hashtable_item* item, zcsl_hashtable_free_fn free_data);

#endif
