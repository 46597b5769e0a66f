// The bounded cache against a model of its order of age, with failing memory.

#include <algorithm>
#include <list>

#include "tests/support/container_fixture.h"

namespace {

using lrumap_test = container_test;
using lru_entry = std::pair<uint32_t, uint32_t>;

uint64_t freed_entry(const lru_entry& entry) {
  return uint64_t{entry.first} << 32 | entry.second;
}
void note_freed(uint32_t key, void* value) {
  g_freed.push_back(freed_entry({key, as_number(value)}));
}

// Every entry is freed once, or handed over with its value.
TEST_F(lrumap_test, behaves_like_its_model) {
  for (const auto& [flags, keys] : {std::pair{0x00u, 6u}, {0x20u, 9u}, {0x21u, 40u}, {1u, 90u}}) {
    SCOPED_TRACE(keys);
    g_freed.clear();
    zcsl_lrumap_owner owner;
    ASSERT_EQ(0u, zcsl_lrumap_create(owner.out(), flags, note_freed));
    zcsl_lrumap* const map = owner.get();
    std::list<lru_entry> model;  // from oldest to newest
    std::vector<uint64_t> freed;
    const auto expect_freed = [&](auto entry) {
      freed.push_back(freed_entry(*entry));
      model.erase(entry);
    };
    uint32_t limit = 0, count = 0;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t choice = step % 100 ? random(60) : 60;
      uint32_t key = random(keys);
      auto entry = std::ranges::find(model, key, &lru_entry::first);
      if (choice < 2 && !model.empty()) entry = choice ? std::prev(model.end()) : model.begin();
      const zvsdk_status absent = entry == model.end() ? zcsl_warn_not_found : 0;
      void *value = nullptr, **const output = random(2) ? &value : nullptr;
      const uint32_t held = absent || !output ? 0 : entry->second;
      if (choice < 2 && !absent) {  // the two ends
        const auto show = choice ? zcsl_lrumap_newest : zcsl_lrumap_oldest;
        const auto remove = choice ? zcsl_lrumap_remove_newest : zcsl_lrumap_remove_oldest;
        ASSERT_EQ(0u, show(map, &key, &value));
        ASSERT_EQ(*entry, lru_entry(key, as_number(std::exchange(value, nullptr))));
        ASSERT_EQ(0u, remove(map, nullptr, output));
        output ? void(model.erase(entry)) : expect_freed(entry);
      } else if (choice < 15) {
        ASSERT_EQ(absent, zcsl_lrumap_remove(map, key, output));
        if (!absent) output ? void(model.erase(entry)) : expect_freed(entry);
      } else if (choice < 30) {
        ASSERT_EQ(absent, zcsl_lrumap_lookup(map, key, output));
        if (!absent) model.splice(model.end(), model, entry);
      } else if (choice < 60) {
        const zvsdk_status added = !absent && (flags & 0x20) ? zcsl_error_exists : 0;
        if (lacks_memory(added, [&] { return zcsl_lrumap_insert(map, key, as_pointer(step)); })) {
          continue;
        }
        if (!absent && !added) expect_freed(entry);
        if (!added) model.emplace_back(key, step);
      } else {
        limit = random(keys);
        ASSERT_EQ(0u, zcsl_lrumap_set_max_count(map, limit));
      }
      ASSERT_EQ(choice < 30 ? held : 0, as_number(value));
      while (limit && model.size() > limit) expect_freed(model.begin());
      ASSERT_EQ(0u, zcsl_lrumap_count(map, &count));
      ASSERT_EQ(model.size(), count);
      ASSERT_EQ(freed, g_freed);
    }
    owner.reset();
    while (!model.empty()) expect_freed(model.begin());
    std::ranges::sort(freed);
    std::ranges::sort(g_freed);
    EXPECT_EQ(freed, g_freed);
  }
}

}  // namespace
