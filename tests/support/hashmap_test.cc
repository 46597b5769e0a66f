// The integer map: against a model with colliding keys, key 0 and the free callback.
#include <algorithm>
#include <map>

#include "tests/support/container_fixture.h"

namespace {

using map_entry = std::pair<const uint32_t, uint32_t>;

uint64_t freed_entry(const map_entry& entry) {
  return uint64_t{entry.first} << 32 | entry.second;
}
void note_freed(uint32_t key, void* value) {
  g_freed.push_back(freed_entry({key, as_number(value)}));
}

using hashmap_test = container_test;

/* What the enumeration gives, in its order, which starts with key 0. */
std::vector<std::pair<uint32_t, uint32_t>> content(zcsl_hashmap* map) {
  std::vector<std::pair<uint32_t, uint32_t>> entries;
  void* cursor = nullptr;
  void* value = nullptr;
  uint32_t key = 0, count = 0;
  while (!zcsl_hashmap_enum(map, &cursor, &key, &value)) {
    EXPECT_TRUE(key != 0 || entries.empty());
    entries.emplace_back(key, as_number(value));
  }
  EXPECT_EQ(nullptr, cursor);
  EXPECT_EQ(0u, zcsl_hashmap_count(map, &count));
  EXPECT_EQ(entries.size(), count);
  return entries;
}

// Few keys in small tables, which the steps compact, make long runs that wrap at the end.
TEST_F(hashmap_test, behaves_like_its_model) {
  for (const auto& [flags, keys] :
       {std::pair{0x00u, 9u}, {0x20u, 12u}, {0x21u, 90u}, {0x01u, 3000u}}) {
    SCOPED_TRACE(keys);
    g_freed.clear();
    zcsl_hashmap_owner owner;
    ASSERT_EQ(0u, zcsl_hashmap_create(owner.out(), flags, note_freed));
    zcsl_hashmap* const map = owner.get();
    ASSERT_EQ(0u, zcsl_hashmap_compact(map)) << "an empty one";
    std::map<uint32_t, uint32_t> model;
    std::vector<uint64_t> freed;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t key = random(keys) * 0x01000193, given = random(4) ? step : 0;
      const auto entry = model.find(key);
      const uint32_t old = entry != model.end() ? entry->second : 0;
      const zvsdk_status found = entry != model.end() ? 0 : zcsl_warn_not_found;
      const zvsdk_status added = !found && (flags & 0x20) ? zcsl_error_exists : 0;
      void* value = nullptr;
      switch (random(5)) {
        case 0:
          ASSERT_EQ(added, zcsl_hashmap_insert(map, key, as_pointer(given)));
          if (!added && old) freed.push_back(freed_entry(*entry));
          if (!added) model[key] = given;
          break;
        case 1:
          ASSERT_EQ(added, zcsl_hashmap_update(map, key, as_pointer(given), &value));
          ASSERT_EQ(added ? 0 : old, as_number(value));
          if (!added) model[key] = given;
          break;
        case 2:
          ASSERT_EQ(found, zcsl_hashmap_remove(map, key, nullptr));
          if (!found) freed.push_back(freed_entry(*entry));
          model.erase(key);
          break;
        case 3:
          ASSERT_EQ(found, zcsl_hashmap_remove(map, key, &value));
          ASSERT_EQ(old, as_number(value));
          model.erase(key);
          break;
        default:
          ASSERT_EQ(found, zcsl_hashmap_lookup(map, key, &value));
          ASSERT_EQ(old, as_number(value));
      }
      ASSERT_EQ(0u, step % 97 ? 0 : zcsl_hashmap_compact(map));
      ASSERT_EQ(0u, step % 1009 ? 0 : zcsl_hashmap_set_min_size(map, random(300)));
      if (step % 100) continue;
      const auto entries = content(map);
      ASSERT_EQ(model, decltype(model)(entries.begin(), entries.end()));
    }
    auto entries = content(map);
    if (model.count(0)) std::rotate(entries.begin(), entries.begin() + 1, entries.end());
    for (const auto& entry : entries) freed.push_back(freed_entry(entry));
    ASSERT_EQ(0u, zcsl_hashmap_clear(map));
    ASSERT_EQ(0u, zcsl_hashmap_insert(map, 0, nullptr)) << "as if it had never been there";
    owner.reset();
    freed.push_back(0);
    EXPECT_EQ(freed, g_freed) << "in the order of the table, key 0 last";
  }
}

}  // namespace
