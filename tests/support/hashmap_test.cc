// The integer map: against a model with colliding keys, key 0, the free callback, sizes.
#include <map>
#include <set>

#include "tests/support/container_fixture.h"

namespace {

void note_freed(uint32_t key, void* value) {
  g_freed.push_back(key * 1000ull + as_number(value));
}

uint32_t home_in_16(uint32_t key) {
  uint32_t h = (key ^ (key >> 16)) * 0x85EBCA6Bu;
  h = (h ^ (h >> 13)) * 0xC2B2AE35u;
  return (h ^ (h >> 16)) & 15;
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

  /* Key 0 and keys whose home in a table of 16 is one of the last two slots, so that runs wrap. */
  std::vector<uint32_t> colliding_keys(size_t count) {
    std::vector<uint32_t> keys = {0};
    for (uint32_t key = 1; keys.size() < count; ++key) {
      if (home_in_16(key) >= 14) keys.push_back(key);
    }
    return keys;
  }
};

TEST_F(hashmap_test, behaves_like_its_model) {
  struct {
    uint32_t flags;
    size_t keys;
  } const cases[] = {{0x00, 9}, {0x20, 9}, {0x01, 12}, {0x21, 200}, {0x00, 3000}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.keys);
    const std::vector<uint32_t> keys = colliding_keys(c.keys);
    zcsl_hashmap_owner map;
    ASSERT_EQ(0u, zcsl_hashmap_create(map.out(), c.flags, nullptr));
    std::map<uint32_t, uint32_t> model;
    for (uint32_t step = 1; step < 20000; ++step) {
      const uint32_t key = keys[random(static_cast<uint32_t>(keys.size()))];
      const bool present = model.count(key) != 0;
      const bool refused = present && (c.flags & 0x20);
      void* value = nullptr;
      switch (random(4)) {
        case 0:
          ASSERT_EQ(refused ? zcsl_error_exists : 0,
                    zcsl_hashmap_insert(map.get(), key, as_pointer(step)));
          if (!refused) model[key] = step;
          break;
        case 1:
          value = as_pointer(99);
          ASSERT_EQ(refused ? zcsl_error_exists : 0,
                    zcsl_hashmap_update(map.get(), key, as_pointer(step), &value));
          if (refused) break;
          ASSERT_EQ(present ? model[key] : 0, as_number(value));
          model[key] = step;
          break;
        case 2:
          ASSERT_EQ(present ? 0 : zcsl_warn_not_found, zcsl_hashmap_remove(map.get(), key, &value));
          if (present) ASSERT_EQ(model[key], as_number(value));
          model.erase(key);
          break;
        default:
          ASSERT_EQ(present ? 0 : zcsl_warn_not_found, zcsl_hashmap_lookup(map.get(), key, &value));
          if (present) ASSERT_EQ(model[key], as_number(value));
      }
      if (step % 997 == 0) ASSERT_EQ(0u, zcsl_hashmap_compact(map.get()));
      if (step % 1009 == 0) ASSERT_EQ(0u, zcsl_hashmap_set_min_size(map.get(), random(300)));
      if (step % 100 == 0) ASSERT_EQ(model, content(map.get()));
    }
    EXPECT_EQ(model, content(map.get()));
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
  EXPECT_EQ(1u, grows_adding(12, 12));
  EXPECT_EQ(0u, grows_adding(13, 23));
  EXPECT_EQ(0u, zcsl_hashmap_set_min_size(map.get(), 100));
  EXPECT_EQ(0u, grows_adding(24, 100));
  EXPECT_EQ(0u, zcsl_hashmap_clear(map.get()));
  EXPECT_EQ(0u, grows_adding(1, 100));
  EXPECT_EQ(0u, zcsl_hashmap_clear(map.get()));
  EXPECT_EQ(0u, zcsl_hashmap_compact(map.get()));
  EXPECT_EQ(0x100D0003u, zcsl_hashmap_lookup(map.get(), 1, nullptr));
  EXPECT_EQ(2u, grows_adding(1, 2)) << "from one slot to two to four";
  EXPECT_EQ(0x900D0002u, zcsl_hashmap_set_min_size(map.get(), UINT32_MAX));
}

TEST_F(hashmap_test, statuses) {
  zcsl_hashmap_owner owner;
  ASSERT_EQ(0u, zcsl_hashmap_create(owner.out(), 0, nullptr));
  zcsl_hashmap* m = owner.get();
  zcsl_hashmap* wrong = not_a(m);
  uint32_t local = 0;
  void* none = nullptr;
  void* foreign = &local;
  expect_statuses({
      {STATUS_OF(0x900D0001, zcsl_hashmap_create(nullptr, 0, nullptr))},
      {STATUS_OF(0, zcsl_hashmap_delete(nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashmap_insert(nullptr, 1, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashmap_count(m, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashmap_enum(m, nullptr, nullptr, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashmap_enum(m, &foreign, nullptr, nullptr))},
      {STATUS_OF(0x100D0003, zcsl_hashmap_enum(m, &none, nullptr, nullptr))},
      {STATUS_OF(0x100D0003, zcsl_hashmap_remove(m, 0, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_delete(wrong))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_insert(wrong, 1, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_update(wrong, 1, nullptr, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_lookup(wrong, 1, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_remove(wrong, 1, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_count(wrong, &local))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_clear(wrong))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_compact(wrong))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_set_min_size(wrong, 1))},
      {STATUS_OF(0x900D0321, zcsl_hashmap_enum(wrong, &none, nullptr, nullptr))},
  });
}

TEST_F(hashmap_test, survives_every_failing_allocation) {
  const uint64_t refusals = memory.for_each_failure([&] {
    zcsl_hashmap_owner map;
    zvsdk_status status = zcsl_hashmap_create(map.out(), 1, nullptr);
    uint32_t key = 0;
    for (; !status && key < 60; ++key) status = zcsl_hashmap_insert(map.get(), key, nullptr);
    if (!status && (status = zcsl_hashmap_compact(map.get()))) ++key;
    if (!status) return;
    EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    if (map) EXPECT_EQ(key - 1, content(map.get()).size());
  });
  EXPECT_LE(6u, refusals);
}

}  // namespace
