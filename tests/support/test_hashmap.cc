// The integer map: against a model with colliding keys, key 0, failing memory and the free
// callback.

#include <map>

#include "tests/support/container_fixture.h"

namespace {

using hashmap_test = container_test;

// What the enumeration gives, which starts with key 0.
std::map<uint32_t, uint32_t> content(zcsl_hashmap* map) {
  std::map<uint32_t, uint32_t> entries;
  void *cursor = nullptr, *value = nullptr;
  uint32_t key = 0, count = 0;
  while (!zcsl_hashmap_enum(map, &cursor, &key, &value)) {
    EXPECT_TRUE(key != 0 || entries.empty());
    EXPECT_TRUE(entries.emplace(key, as_number(value)).second);
  }
  EXPECT_EQ(nullptr, cursor);
  EXPECT_EQ(0u, zcsl_hashmap_count(map, &count));
  EXPECT_EQ(entries.size(), count);
  return entries;
}

// Few keys in small tables, which the steps compact, make long runs that wrap at the end. Every
// value is freed once, or comes back.
TEST_F(hashmap_test, behaves_like_its_model) {
  for (const auto& [flags, keys] :
       {std::pair{0x00u, 9u}, {0x20u, 12u}, {0x21u, 90u}, {0x01u, 3000u}}) {
    SCOPED_TRACE(keys);
    g_freed.clear();
    std::vector<uint64_t> given;
    zcsl_hashmap_owner owner;
    ASSERT_EQ(0u, zcsl_hashmap_create(owner.out(), flags, [](uint32_t, void* value) {
                g_freed.push_back(as_number(value));
              }));
    zcsl_hashmap* const map = owner.get();
    std::map<uint32_t, uint32_t> model;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t key = random(keys) * 0x01000193, choice = random(5);
      const auto entry = model.find(key);
      const uint32_t old = entry != model.end() ? entry->second : 0;
      const zvsdk_status found = old ? 0 : zcsl_warn_not_found;
      void* value = nullptr;
      if (choice < 2) {
        const zvsdk_status added = old && (flags & 0x20) ? zcsl_error_exists : 0;
        if (lacks_memory(added, [&] {
              return choice ? zcsl_hashmap_insert(map, key, as_pointer(step))
                            : zcsl_hashmap_update(map, key, as_pointer(step), &value);
            })) {
          continue;
        }
        ASSERT_EQ(choice || added ? 0 : old, as_number(value));
        if (!added) given.push_back(model[key] = step);
      } else if (choice < 4) {
        ASSERT_EQ(found, zcsl_hashmap_remove(map, key, choice == 2 ? &value : nullptr));
        ASSERT_EQ(choice == 2 ? old : 0, as_number(value));
        model.erase(key);
      } else {
        void* looked_up = nullptr;
        ASSERT_EQ(found, zcsl_hashmap_lookup(map, key, &looked_up));
        ASSERT_EQ(old, as_number(looked_up));
        lacks_memory(0, [&] { return zcsl_hashmap_compact(map); });
      }
      if (value) g_freed.push_back(as_number(value));
      if (step % 100) continue;
      ASSERT_EQ(model, content(map));
      lacks_memory(0, [&] { return zcsl_hashmap_set_min_size(map, random(300)); });
      if (random(70)) continue;
      ASSERT_EQ(0u, zcsl_hashmap_clear(map));
      model.clear();
    }
    owner.reset();
    std::ranges::sort(g_freed);
    EXPECT_EQ(given, g_freed);
  }
}

}  // namespace
