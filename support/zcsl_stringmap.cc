// The string map: forwards to its hash table and checks that what comes out is text.

#include "support/zcsl_stringmap.h"

#include "support/zcsl_container.h"
#include "support/zcsl_output.h"
#include "support/zcsl_string.h"

struct zcsl_stringmap {
  static constexpr uint32_t alive = 0x1ABCDEF2;
  static constexpr const char* source = "zcsl_stringmap";

  uint32_t magic = alive;
  zcsl_hashtable* table = nullptr;
  uint32_t flags = 0;
};

namespace {

// Runs an operation on the table, which has the lock. Its errors are the map's errors.
template <class Work>
zvsdk_status operate(zcsl_stringmap* map, Work&& work, uint32_t line = __builtin_LINE()) {
  zvsdk_status status = zcsl_container_check(map, true);
  if (!status) status = work(map->table);
  return zcsl_container_logged<zcsl_stringmap>(status, line);
}

// Hands out the value that `get` finds, which must be a terminated text or no data at all.
template <class Get>
zvsdk_status get_text(zcsl_stringmap* map, const char** value, Get&& get,
                      uint32_t line = __builtin_LINE()) {
  const auto take = [&](zcsl_hashtable* table) {
    void* data = nullptr;
    uint32_t size = 0;
    if (const zvsdk_status status = get(table, &data, &size)) return status;
    const char* text = static_cast<const char*>(data);
    if (text && (size == 0 || text[size - 1] != 0)) return zcsl_error_wrong_type;
    zcsl_give(value, text);
    return zvsdk_status{0};
  };
  return operate(map, take, line);
}

}  // namespace

zvsdk_status zcsl_stringmap_create(zcsl_stringmap** map, uint32_t flags) {
  zcsl_stringmap* made = nullptr;
  zvsdk_status status = zcsl_container_make(map ? &made : nullptr);
  if (!status) status = zcsl_hashtable_create(&made->table, flags, nullptr);
  if (!status) {
    made->flags = flags;
    *map = made;
  } else if (made) {
    zcsl_container_free(made);
  }
  return zcsl_container_logged<zcsl_stringmap>(status);
}

zvsdk_status zcsl_stringmap_delete(zcsl_stringmap* map) {
  if (!map) return 0;
  const zvsdk_status status = operate(map, zcsl_hashtable_delete);
  if (!status) zcsl_container_free(map);
  return status;
}

zvsdk_status zcsl_stringmap_value_add(zcsl_stringmap* map, const char* key, const char* value) {
  return operate(map, [&](zcsl_hashtable* table) {
    const int copy = (map->flags & zcsl_stringmap_flag_value_by_reference) == 0;
    return zcsl_hashtable_value_add(table, key, value, zcsl_string_bytelen(value), copy);
  });
}

zvsdk_status zcsl_stringmap_value_find_ex(zcsl_stringmap* map, const char* key, uint32_t index,
                                          const char** value) {
  return get_text(map, value, [&](zcsl_hashtable* table, void** data, uint32_t* size) {
    return zcsl_hashtable_value_find_ex(table, key, index, data, size);
  });
}

zvsdk_status zcsl_stringmap_value_get(zcsl_stringmap* map, uint32_t index, const char** key,
                                      const char** value) {
  return get_text(map, value, [&](zcsl_hashtable* table, void** data, uint32_t* size) {
    return zcsl_hashtable_index_get(table, index, key, data, size);
  });
}

zvsdk_status zcsl_stringmap_value_delete(zcsl_stringmap* map, const char* key) {
  return operate(map,
                 [&](zcsl_hashtable* table) { return zcsl_hashtable_value_delete(table, key); });
}

zvsdk_status zcsl_stringmap_count(zcsl_stringmap* map, uint32_t* count) {
  return operate(map, [&](zcsl_hashtable* table) { return zcsl_hashtable_count(table, count); });
}

zvsdk_status zcsl_stringmap_value_count(zcsl_stringmap* map, const char* key, uint32_t* count) {
  return operate(
      map, [&](zcsl_hashtable* table) { return zcsl_hashtable_value_count(table, key, count); });
}

zvsdk_status zcsl_stringmap_clear(zcsl_stringmap* map) {
  return operate(map, zcsl_hashtable_clear);
}
