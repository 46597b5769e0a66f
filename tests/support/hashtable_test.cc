// The hash table and the string map: against a model, with colliding keys; values that outlive
// their replacement; enumeration by several readers at once.
#include <algorithm>
#include <cctype>
#include <cstring>
#include <thread>

#include "tests/support/container_fixture.h"

namespace {

void note_freed(void* data, uint32_t size) {
  g_freed.push_back(size == sizeof(uint32_t) ? *static_cast<uint32_t*>(data) : size);
}

std::string folded(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

/* Keys in insertion order with their values. */
struct table_model {
  explicit table_model(uint32_t table_flags) : flags(table_flags) {}

  bool has(uint32_t flag) const { return (flags & flag) != 0; }
  auto find(const std::string& key) {
    const bool exact = has(zcsl_hashtable_flag_case_sensitive);
    return std::find_if(keys.begin(), keys.end(), [&](const auto& entry) {
      return exact ? entry.first == key : folded(entry.first) == folded(key);
    });
  }
  zvsdk_status add(const std::string& key, uint32_t value) {
    const auto place = find(key);
    if (place == keys.end()) {
      keys.push_back({key, {value}});
    } else if (has(zcsl_hashtable_flag_unique_key)) {
      return zcsl_error_exists;
    } else if (has(zcsl_hashtable_flag_multi_value)) {
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
    uint32_t index = 0;
    for (const auto& [text, values] : model.keys) {
      for (const uint32_t value : values) {
        const char* key = nullptr;
        void* data = nullptr;
        uint32_t size = 0;
        ASSERT_EQ(0u, zcsl_hashtable_index_get(table, index++, &key, &data, &size));
        ASSERT_EQ(text, key);
        ASSERT_EQ(value, *static_cast<uint32_t*>(data));
      }
    }
    uint32_t count = 0;
    ASSERT_EQ(0u, zcsl_hashtable_count(table, &count));
    ASSERT_EQ(index, count);
    ASSERT_EQ(zcsl_warn_end_of_range,
              zcsl_hashtable_index_get(table, index, nullptr, nullptr, nullptr));
  }
};

TEST_F(hashtable_test, behaves_like_its_model) {
  for (const uint32_t flags : {0x000u, 0x001u, 0x010u, 0x021u, 0x040u, 0x051u, 0x081u}) {
    SCOPED_TRACE(flags);
    zcsl_hashtable_owner table = make(flags);
    table_model model(flags);
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
          if (found) ASSERT_EQ(place->second[index], *static_cast<uint32_t*>(data));
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
  table_model model(0);
  for (uint32_t i = 0; i < 500; ++i) {
    const std::string key = "key" + std::to_string(i * 7919 % 1000);
    const uint64_t before = memory.requests();
    ASSERT_EQ(model.add(key, i), add(table, key.c_str(), i));
    if (i > 0 && i < 12) EXPECT_EQ(1u, memory.requests() - before);
    if (i == 12) EXPECT_EQ(2u, memory.requests() - before);
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

TEST_F(hashtable_test, statuses) {
  zcsl_hashtable_owner table = make(0);
  zcsl_hashtable* t = table.get();
  zcsl_hashtable* wrong = not_a(t);
  zcsl_stringmap* wrong_map = not_a(wrong_map);
  const char* text = nullptr;
  uint32_t count = 0;
  expect_statuses({
      {STATUS_OF(0x900D0001, zcsl_hashtable_create(nullptr, 0, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_value_add(t, nullptr, "x", 1, 1))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_value_add(t, "k", "x", 0, 1))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_value_add(t, "k", nullptr, 1, 1))},
      {STATUS_OF(0x100D0003, zcsl_hashtable_value_find_ex(nullptr, nullptr, 0, nullptr, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_value_find_ex(t, nullptr, 0, nullptr, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_value_count(t, "k", nullptr))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_count(t, nullptr))},
      {STATUS_OF(0x100D0003, zcsl_hashtable_value_delete(t, "k"))},
      {STATUS_OF(0x900D0001, zcsl_hashtable_clear(nullptr))},
      {STATUS_OF(0, zcsl_hashtable_delete(nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_delete(wrong))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_value_add(wrong, "k", "x", 1, 1))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_value_find_ex(wrong, "k", 0, nullptr, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_index_get(wrong, 0, nullptr, nullptr, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_value_count(wrong, "k", &count))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_count(wrong, &count))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_value_delete(wrong, "k"))},
      {STATUS_OF(0x900D0321, zcsl_hashtable_clear(wrong))},
      {STATUS_OF(0x900D0001, zcsl_stringmap_create(nullptr, 0))},
      {STATUS_OF(0, zcsl_stringmap_delete(nullptr))},
      {STATUS_OF(0x900D0001, zcsl_stringmap_count(nullptr, &count))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_delete(wrong_map))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_value_add(wrong_map, "k", "v"))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_value_find_ex(wrong_map, "k", 0, &text))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_value_get(wrong_map, 0, nullptr, &text))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_value_delete(wrong_map, "k"))},
      {STATUS_OF(0x900D0321, zcsl_stringmap_clear(wrong_map))},
  });
}

TEST_F(hashtable_test, survives_every_failing_allocation) {
  const uint64_t refusals = memory.for_each_failure([&] {
    g_freed.clear();
    zcsl_hashtable_owner table;
    table_model model(0x41);
    zvsdk_status status = zcsl_hashtable_create(table.out(), 0x41, note_freed);
    uint32_t value = 0;
    for (; !status && value < 20; ++value) {
      const std::string key = "key" + std::to_string(value < 14 ? value : 0);
      status = add(table, key.c_str(), value);
      if (!status) model.add(key, value);
    }
    if (!status) return;
    EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    EXPECT_TRUE(g_freed.empty()) << "the caller keeps what could not be added";
    if (table) expect_content(table.get(), model);
  });
  EXPECT_LE(15u, refusals);
}

// Where even the list of retired values cannot grow, the value is freed at once.
TEST_F(hashtable_test, frees_a_replaced_value_that_cannot_be_kept) {
  zcsl_hashtable_owner table = make(0x01, note_freed);
  ASSERT_EQ(0u, add(table, "key", 1));
  ASSERT_EQ(0u, zcsl_hashtable_value_find_ex(table.get(), "key", 0, nullptr, nullptr));
  memory.fail_at(2);
  EXPECT_EQ(0u, add(table, "key", 2));
  EXPECT_TRUE(memory.refused());
  EXPECT_EQ((std::vector<uint64_t>{1}), g_freed);
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

TEST_F(hashtable_test, string_map_survives_every_failing_allocation) {
  memory.for_each_failure([&] {
    zcsl_stringmap_owner map;
    zvsdk_status status = zcsl_stringmap_create(map.out(), 1);
    if (!status) status = zcsl_stringmap_value_add(map.get(), "key", "value");
    if (status) EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    if (status && map)
      EXPECT_EQ(0x100D0361u, zcsl_stringmap_value_get(map.get(), 0, nullptr, nullptr));
  });
}

}  // namespace
