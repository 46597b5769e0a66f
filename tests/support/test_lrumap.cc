// The bounded cache: against a model of its order of age, and when memory runs out.
#include <algorithm>
#include <list>

#include "tests/support/container_fixture.h"

namespace {

using lru_entry = std::pair<uint32_t, uint32_t>;

uint64_t freed_entry(const lru_entry& entry) {
  return uint64_t{entry.first} << 32 | entry.second;
}
void note_freed(uint32_t key, void* value) {
  g_freed.push_back(freed_entry({key, as_number(value)}));
}

class lrumap_test : public container_test {
 protected:
  void create(uint32_t flags) {
    map.reset();
    g_freed.clear();
    freed.clear();
    model.clear();
    ASSERT_EQ(0u, zcsl_lrumap_create(map.out(), flags, note_freed));
  }
  void expect_freed(std::list<lru_entry>::iterator entry) {
    freed.push_back(freed_entry(*entry));
    model.erase(entry);
  }
  void expect_evicted(uint32_t limit) {
    while (limit && model.size() > limit) expect_freed(model.begin());
  }

  zcsl_lrumap_owner map;
  std::list<lru_entry> model;  // from oldest to newest
  std::vector<uint64_t> freed;
};

TEST_F(lrumap_test, behaves_like_its_model) {
  for (const auto& [flags, keys] : {std::pair{0x00u, 6u}, {0x20u, 9u}, {0x21u, 40u}, {1u, 90u}}) {
    SCOPED_TRACE(keys);
    create(flags);
    uint32_t limit = 0, count = 0;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t key = random(keys);
      const auto entry = std::ranges::find(model, key, &lru_entry::first);
      const zvsdk_status absent = entry == model.end() ? zcsl_warn_not_found : 0;
      const bool refused = !absent && (flags & 0x20);
      void *value = nullptr, **const output = random(2) ? &value : nullptr;
      const uint32_t held = absent || !output ? 0 : entry->second;
      switch (step % 100 ? random(4) : 4) {
        case 0:
          ASSERT_EQ(absent, zcsl_lrumap_remove(map.get(), key, output));
          ASSERT_EQ(held, as_number(value));
          if (!absent && !output) expect_freed(entry);
          if (!absent && output) model.erase(entry);
          break;
        case 1:
          ASSERT_EQ(absent, zcsl_lrumap_lookup(map.get(), key, output));
          ASSERT_EQ(held, as_number(value));
          if (!absent) model.splice(model.end(), model, entry);
          break;
        case 4:
          limit = random(keys);
          ASSERT_EQ(0u, zcsl_lrumap_set_max_count(map.get(), limit));
          expect_evicted(limit);
          break;
        default:
          ASSERT_EQ(refused ? zcsl_error_exists : 0,
                    zcsl_lrumap_insert(map.get(), key, as_pointer(step)));
          if (!absent && !refused) expect_freed(entry);
          if (!refused) model.emplace_back(key, step);
          expect_evicted(limit);
      }
      ASSERT_EQ(0u, zcsl_lrumap_count(map.get(), &count));
      ASSERT_EQ(model.size(), count);
      ASSERT_EQ(freed, g_freed);
    }
  }
}

TEST_F(lrumap_test, shows_and_gives_up_both_ends) {
  create(0);
  for (uint32_t key = 0; key < 4; ++key)
    ASSERT_EQ(0u, zcsl_lrumap_insert(map.get(), key, as_pointer(key + 10)));
  for (const auto& [call, expected] : {std::pair{&zcsl_lrumap_remove_oldest, 0u},
                                       {&zcsl_lrumap_oldest, 1u},
                                       {&zcsl_lrumap_remove_newest, 3u},
                                       {&zcsl_lrumap_newest, 2u}}) {
    uint32_t key = 9;
    void* value = nullptr;
    EXPECT_EQ(0u, call(map.get(), &key, &value));
    EXPECT_EQ(lru_entry(expected, expected + 10), lru_entry(key, as_number(value)));
  }
  EXPECT_TRUE(g_freed.empty());
  EXPECT_EQ(0u, zcsl_lrumap_remove_newest(map.get(), nullptr, nullptr));
  EXPECT_EQ(0u, zcsl_lrumap_remove_oldest(map.get(), nullptr, nullptr));
  EXPECT_EQ((std::vector{freed_entry({2, 12}), freed_entry({1, 11})}), g_freed);
  EXPECT_EQ(zcsl_warn_not_found, zcsl_lrumap_remove_oldest(map.get(), nullptr, nullptr));
}

// The value of a refused insertion stays the caller's; the others go once with the map.
TEST_F(lrumap_test, frees_each_entry_once_when_memory_runs_out) {
  memory.for_each_failure([&] {
    g_freed.clear();
    freed.clear();
    zvsdk_status status = zcsl_lrumap_create(map.out(), 0, note_freed);
    for (uint32_t key = 0; !status && key < 30; ++key) {
      status = zcsl_lrumap_insert(map.get(), key, as_pointer(key));
      if (!status) freed.push_back(freed_entry({key, key}));
    }
    EXPECT_EQ(status ? zcsl_error_no_memory : 0, status);
    map.reset();
    std::ranges::sort(g_freed);
    EXPECT_EQ(freed, g_freed);
  });
}

}  // namespace
