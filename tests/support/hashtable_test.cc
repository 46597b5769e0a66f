// The hash table and the string map: against a model, with colliding keys; values that outlive
// their replacement; enumeration by several readers at once.
#include <algorithm>
#include <cstring>
#include <thread>

#include "support/zcsl_string.h"
#include "tests/support/container_fixture.h"

namespace {

void note_freed(void* data, uint32_t size) {
  g_freed.push_back(size == sizeof(uint32_t) ? *static_cast<uint32_t*>(data) : size);
}

/* Keys in insertion order with their values. */
struct table_model {
  auto find(const std::string& key) {
    return std::find_if(keys.begin(), keys.end(), [&](const auto& entry) {
      return zcsl_string_equal(entry.first.c_str(), key.c_str(), !(flags & 0x10));
    });
  }
  zvsdk_status add(const std::string& key, uint32_t value) {
    const auto place = find(key);
    if (place == keys.end()) {
      keys.push_back({key, {value}});
    } else if (flags & zcsl_hashtable_flag_unique_key) {
      return zcsl_error_exists;
    } else if (flags & zcsl_hashtable_flag_multi_value) {
      place->second.push_back(value);
    } else {
      place->second[0] = value;
    }
    return 0;
  }

  uint32_t flags;
  std::vector<std::pair<std::string, std::vector<uint32_t>>> keys;
};

class hashtable_test : public container_test {
 protected:
  zcsl_hashtable_owner make(uint32_t flags, zcsl_hashtable_free_fn free_data = nullptr) {
    zcsl_hashtable_owner table;
    EXPECT_EQ(0u, zcsl_hashtable_create(table.out(), flags, free_data));
    return table;
  }
  zvsdk_status add(const zcsl_hashtable_owner& table, const char* key, uint32_t value) {
    return zcsl_hashtable_value_add(table.get(), key, &value, sizeof value, 1);
  }
  /* "aB" and "b!" have one hash, and so have longer keys with one for the other. */
  std::string random_key() {
    std::string key;
    for (uint32_t i = random(4); i < 4; ++i) key += random(2) ? "aB" : "b!";
    if (random(2)) key[0] = static_cast<char>(std::toupper(key[0]));
    return key;
  }
  static void expect_content(zcsl_hashtable* table, const table_model& model) {
    const char* key = nullptr;
    void* data = nullptr;
    uint32_t index = 0, count = 0;
    for (const auto& [text, values] : model.keys) {
      for (const uint32_t value : values) {
        ASSERT_EQ(0u, zcsl_hashtable_index_get(table, index++, &key, &data, nullptr));
        ASSERT_EQ(text, key);
        ASSERT_EQ(value, *static_cast<uint32_t*>(data));
      }
    }
    ASSERT_EQ(0u, zcsl_hashtable_count(table, &count));
    ASSERT_EQ(index, count);
    ASSERT_EQ(zcsl_warn_end_of_range, zcsl_hashtable_index_get(table, index, &key, &data, nullptr));
  }
};

TEST_F(hashtable_test, behaves_like_its_model) {
  for (const uint32_t flags : {0x000u, 0x001u, 0x010u, 0x021u, 0x040u, 0x051u, 0x081u}) {
    SCOPED_TRACE(flags);
    zcsl_hashtable_owner table = make(flags);
    table_model model{flags, {}};
    for (uint32_t step = 0; step < 2500; ++step) {
      const std::string key = random_key();
      const auto place = model.find(key);
      const bool present = place != model.keys.end();
      switch (random(5)) {
        case 0:
        case 1:
          ASSERT_EQ(model.add(key, step), add(table, key.c_str(), step));
          break;
        case 2:
          ASSERT_EQ(present ? 0 : zcsl_warn_not_found,
                    zcsl_hashtable_value_delete(table.get(), key.c_str()));
          if (present) model.keys.erase(place);
          break;
        default: {
          const uint32_t count = present ? static_cast<uint32_t>(place->second.size()) : 77;
          const uint32_t index = random(present ? count + 1 : 2);
          const bool found = present && index < count;
          uint32_t counted = 77;
          void* data = nullptr;
          ASSERT_EQ(found ? 0 : zcsl_warn_not_found,
                    zcsl_hashtable_value_find_ex(table.get(), key.c_str(), index, &data, nullptr));
          if (found) {
            ASSERT_EQ(place->second[index], *static_cast<uint32_t*>(data));
          }
          ASSERT_EQ(0u, zcsl_hashtable_value_count(table.get(), key.c_str(), &counted));
          ASSERT_EQ(count, counted);
        }
      }
      if (step % 10 == 0) expect_content(table.get(), model);
      if (step % 800 == 799) {
        ASSERT_EQ(0u, zcsl_hashtable_clear(table.get()));
        model.keys.clear();
      }
    }
  }
}

// One allocation a key; the thirteenth key takes one more for the larger table.
TEST_F(hashtable_test, keeps_order_while_it_grows) {
  zcsl_hashtable_owner table = make(0);
  table_model model{0, {}};
  for (uint32_t i = 0; i < 500; ++i) {
    const std::string key = "key" + std::to_string(i * 7919 % 1000);
    const uint64_t before = memory.requests();
    ASSERT_EQ(model.add(key, i), add(table, key.c_str(), i));
    if (i > 0 && i < 12) {
      EXPECT_EQ(1u, memory.requests() - before);
    }
    if (i == 12) {
      EXPECT_EQ(2u, memory.requests() - before);
    }
  }
  expect_content(table.get(), model);
  void* data = nullptr;
  ASSERT_EQ(0u, zcsl_hashtable_index_get(table.get(), 400, nullptr, &data, nullptr));
  ASSERT_EQ(0u, zcsl_hashtable_index_get(table.get(), 3, nullptr, &data, nullptr));
  EXPECT_EQ(3u, *static_cast<uint32_t*>(data)) << "the cursor goes back";
}

TEST_F(hashtable_test, keeps_a_replaced_value_that_a_reader_has) {
  for (const uint32_t flags : {0x01u, 0x81u, 0x00u}) {
    SCOPED_TRACE(flags);
    g_freed.clear();
    zcsl_hashtable_owner table = make(flags, note_freed);
    void* data = nullptr;
    ASSERT_EQ(0u, add(table, "key", 100));
    ASSERT_EQ(0u, zcsl_hashtable_value_find_ex(table.get(), "KEY", 0, &data, nullptr));
    ASSERT_EQ(0u, add(table, "key", 101));
    ASSERT_EQ(0u, add(table, "key", 102));
    if (flags != 0x01) {
      EXPECT_EQ((std::vector<uint64_t>{100, 101}), g_freed);
      continue;
    }
    EXPECT_EQ((std::vector<uint64_t>{101}), g_freed) << "only what nobody has";
    ASSERT_EQ(0u, zcsl_hashtable_value_delete(table.get(), "key"));
    EXPECT_EQ(100u, *static_cast<uint32_t*>(data)) << "also when the key goes";
    ASSERT_EQ(0u, zcsl_hashtable_clear(table.get()));
    EXPECT_EQ((std::vector<uint64_t>{101, 102, 100}), g_freed);

    ASSERT_EQ(0u, add(table, "key", 103));
    ASSERT_EQ(0u, zcsl_hashtable_index_get(table.get(), 0, nullptr, nullptr, nullptr));
    memory.fail_at(2);
    EXPECT_EQ(0u, add(table, "key", 104));
    EXPECT_TRUE(memory.refused());
    EXPECT_EQ(103u, g_freed.back()) << "it could not be kept";
  }
}

TEST_F(hashtable_test, keeps_values_and_keys_by_reference) {
  zcsl_hashtable_owner table = make(zcsl_hashtable_flag_key_by_reference, note_freed);
  uint32_t value = 5;
  const char text[] = "key";
  const char* key = nullptr;
  void* data = nullptr;
  uint32_t size = 9;
  ASSERT_EQ(0u, zcsl_hashtable_value_add(table.get(), text, &value, sizeof value, 0));
  ASSERT_EQ(0u, zcsl_hashtable_index_get(table.get(), 0, &key, &data, nullptr));
  EXPECT_EQ(text, key);
  EXPECT_EQ(&value, data);
  ASSERT_EQ(0u, zcsl_hashtable_value_add(table.get(), text, nullptr, 0, 1));
  EXPECT_EQ((std::vector<uint64_t>{5}), g_freed);
  ASSERT_EQ(0u, zcsl_hashtable_value_find_ex(table.get(), "key", 0, &data, &size));
  EXPECT_EQ(nullptr, data);
  EXPECT_EQ(0u, size);
  table.reset();
  EXPECT_EQ(1u, g_freed.size()) << "no data, no callback";
}

// A table without a lock, under a reader's lock of the caller's: no writes that disturb a reader.
TEST_F(hashtable_test, serves_several_enumerations_at_once) {
  zcsl_hashtable_owner table = make(zcsl_hashtable_flag_multi_value);
  for (uint32_t i = 0; i < 60; ++i) add(table, ("key" + std::to_string(i / 2)).c_str(), i);
  const auto enumerate = [&] {
    for (uint32_t i = 0; i < 60 * 200; ++i) {
      void* data = nullptr;
      ASSERT_EQ(0u, zcsl_hashtable_index_get(table.get(), i % 60, nullptr, &data, nullptr));
      ASSERT_EQ(i % 60, *static_cast<uint32_t*>(data));
    }
  };
  std::thread others[] = {std::thread(enumerate), std::thread(enumerate)};
  enumerate();
  for (std::thread& other : others) other.join();
}

TEST_F(hashtable_test, string_map_holds_texts) {
  for (const uint32_t flags : {0x0001u, 0x1001u}) {
    zcsl_stringmap_owner map;
    ASSERT_EQ(0u, zcsl_stringmap_create(map.out(), flags));
    char value[] = "value";
    const char* key = nullptr;
    const char* text = "unwritten";
    uint32_t count = 0;
    ASSERT_EQ(0u, zcsl_stringmap_value_add(map.get(), "One", value));
    ASSERT_EQ(0u, zcsl_stringmap_value_add(map.get(), "none", nullptr));
    EXPECT_EQ(0u, zcsl_stringmap_count(map.get(), &count));
    EXPECT_EQ(2u, count);
    std::strcpy(value, "other");
    EXPECT_EQ(0u, zcsl_stringmap_value_get(map.get(), 0, &key, &text));
    EXPECT_STREQ("One", key);
    EXPECT_STREQ(flags & 0x1000 ? "other" : "value", text);
    EXPECT_EQ(0u, zcsl_stringmap_value_find_ex(map.get(), "NONE", 0, &text));
    EXPECT_EQ(nullptr, text);
    value[5] = '!';
    EXPECT_EQ(flags & 0x1000 ? 0x900D0360u : 0u,
              zcsl_stringmap_value_find_ex(map.get(), "one", 0, nullptr));
    EXPECT_EQ(0u, zcsl_stringmap_value_delete(map.get(), "ONE"));
    EXPECT_EQ(0x100D0003u, zcsl_stringmap_value_find_ex(map.get(), "one", 0, &text));
    EXPECT_EQ(0u, zcsl_stringmap_clear(map.get()));
    EXPECT_EQ(0x100D0361u, zcsl_stringmap_value_get(map.get(), 0, &key, &text));
  }
}

}  // namespace
