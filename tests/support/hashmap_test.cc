// The integer map: against a model with colliding keys, key 0, the free callback, sizes.
#include <map>

#include "tests/support/container_fixture.h"

namespace {

void note_freed(uint32_t key, void* value) {
  g_freed.push_back(key * 1000ull + as_number(value));
}

class hashmap_test : public container_test {
 protected:
  std::map<uint32_t, uint32_t> content(zcsl_hashmap* map) {
    std::map<uint32_t, uint32_t> entries;
    void* cursor = nullptr;
    void* value = nullptr;
    uint32_t key = 0, count = 0;
    while (!zcsl_hashmap_enum(map, &cursor, &key, &value)) {
      EXPECT_TRUE(key != 0 || entries.empty()) << "key 0 comes first";
      EXPECT_TRUE(entries.emplace(key, as_number(value)).second);
    }
    EXPECT_EQ(nullptr, cursor);
    EXPECT_EQ(0u, zcsl_hashmap_count(map, &count));
    EXPECT_EQ(entries.size(), count);
    return entries;
  }
};

// Few keys in small tables, which the steps compact, make long runs that wrap at the end.
TEST_F(hashmap_test, behaves_like_its_model) {
  for (const auto& [flags, keys] :
       {std::pair{0x00u, 9u}, {0x20u, 12u}, {0x21u, 90u}, {0x01u, 3000u}}) {
    SCOPED_TRACE(keys);
    zcsl_hashmap_owner map;
    ASSERT_EQ(0u, zcsl_hashmap_create(map.out(), flags, nullptr));
    std::map<uint32_t, uint32_t> model;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t key = random(keys) * 0x01000193;
      const bool present = model.count(key) != 0;
      const uint32_t old = present ? model[key] : 0;
      const bool refused = present && (flags & 0x20);
      const uint32_t choice = random(4);
      void* value = nullptr;
      if (choice < 2) {
        ASSERT_EQ(refused ? zcsl_error_exists : 0,
                  choice ? zcsl_hashmap_insert(map.get(), key, as_pointer(step))
                         : zcsl_hashmap_update(map.get(), key, as_pointer(step), &value));
        if (!refused) model[key] = step;
        if (!refused && !choice) {
          ASSERT_EQ(old, as_number(value));
        }
      } else {
        ASSERT_EQ(present ? 0 : zcsl_warn_not_found,
                  choice == 2 ? zcsl_hashmap_remove(map.get(), key, &value)
                              : zcsl_hashmap_lookup(map.get(), key, &value));
        ASSERT_EQ(old, as_number(value));
        if (choice == 2) model.erase(key);
      }
      if (step % 97 == 0) {
        ASSERT_EQ(0u, zcsl_hashmap_compact(map.get()));
      }
      if (step % 1009 == 0) {
        ASSERT_EQ(0u, zcsl_hashmap_set_min_size(map.get(), random(300)));
      }
      if (step % 100 == 0) {
        ASSERT_EQ(model, content(map.get()));
      }
    }
  }
}

TEST_F(hashmap_test, frees_what_it_owns) {
  zcsl_hashmap_owner map;
  ASSERT_EQ(0u, zcsl_hashmap_create(map.out(), 0, note_freed));
  void* value = nullptr;
  zcsl_hashmap_insert(map.get(), 1, nullptr);
  zcsl_hashmap_insert(map.get(), 1, as_pointer(5));
  EXPECT_TRUE(g_freed.empty()) << "an empty value is replaced without the callback";
  zcsl_hashmap_insert(map.get(), 1, as_pointer(6));
  EXPECT_EQ((std::vector<uint64_t>{1005}), g_freed);
  zcsl_hashmap_insert(map.get(), 0, as_pointer(7));
  zcsl_hashmap_update(map.get(), 0, as_pointer(8), nullptr);
  zcsl_hashmap_remove(map.get(), 0, &value);
  EXPECT_EQ(1u, g_freed.size()) << "handed over or dropped, never freed";
  zcsl_hashmap_insert(map.get(), 2, as_pointer(9));
  zcsl_hashmap_remove(map.get(), 2, nullptr);
  EXPECT_EQ(2009u, g_freed.back());
  zcsl_hashmap_insert(map.get(), 0, as_pointer(3));
  zcsl_hashmap_clear(map.get());
  EXPECT_EQ((std::vector<uint64_t>{1005, 2009, 1006, 3}), g_freed) << "key 0 last";
  zcsl_hashmap_insert(map.get(), 4, as_pointer(4));
  map.reset();
  EXPECT_EQ(4004u, g_freed.back());
}

// Eleven keys fit the first table; room shows in the allocations.
TEST_F(hashmap_test, keeps_a_quarter_free) {
  zcsl_hashmap_owner map;
  ASSERT_EQ(0u, zcsl_hashmap_create(map.out(), 0, nullptr));
  const auto grows_adding = [&](uint32_t first, uint32_t last) {
    const uint64_t before = memory.requests();
    for (uint32_t key = first; key <= last; ++key) zcsl_hashmap_insert(map.get(), key, nullptr);
    return memory.requests() - before;
  };
  EXPECT_EQ(0u, grows_adding(0, 11)) << "key 0 takes no slot";
  EXPECT_EQ(1u, grows_adding(12, 23));
  EXPECT_EQ(0u, zcsl_hashmap_set_min_size(map.get(), 100));
  EXPECT_EQ(0u, grows_adding(24, 100));
  EXPECT_EQ(0u, zcsl_hashmap_clear(map.get()));
  EXPECT_EQ(0u, zcsl_hashmap_compact(map.get()));
  EXPECT_EQ(0x100D0003u, zcsl_hashmap_lookup(map.get(), 1, nullptr));
  EXPECT_EQ(2u, grows_adding(1, 2)) << "from one slot to two to four";
  EXPECT_EQ(0x900D0002u, zcsl_hashmap_set_min_size(map.get(), UINT32_MAX));
}

}  // namespace
