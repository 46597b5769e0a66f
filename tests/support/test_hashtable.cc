// The hash table and the string map: against a model, with colliding keys and failing memory;
// values that outlive their replacement.

#include "support/zcsl_string.h"
#include "tests/support/container_fixture.h"

namespace {

class hashtable_test : public container_test {
 protected:
  // Keys in insertion order with their values.
  using model_keys = std::vector<std::pair<std::string, numbers>>;

  // A table that the fixture owns; the next one takes its place.
  zcsl_hashtable* make(uint32_t flags) {
    EXPECT_EQ(0u, zcsl_hashtable_create(table_.out(), flags, [](void* data, uint32_t) {
                g_freed.push_back(*static_cast<uint32_t*>(data));
              }));
    g_freed.clear();
    return table_.get();
  }
  zvsdk_status add(const std::string& key, uint32_t value) {
    return zcsl_hashtable_value_add(table_.get(), key.c_str(), &value, sizeof value, 1);
  }
  // "aB" and "b!" have one hash, and so have longer keys with one for the other.
  std::string random_key() {
    std::string key = random(2) ? "z" + std::to_string(random(100)) : "";
    for (uint32_t i = random(4); i < 4; ++i) key += random(2) ? "aB" : "b!";
    if (random(2)) key[0] = static_cast<char>(std::toupper(key[0]));
    return key;
  }
  void expect_content(const model_keys& model) {
    zcsl_hashtable* const table = table_.get();
    const char* key = nullptr;
    void* data = nullptr;
    uint32_t index = 0, count = 0;
    zcsl_hashtable_index_get(table, random(99), nullptr, &data, nullptr);  // moves the cursor
    for (const auto& [text, values] : model) {
      for (const uint32_t value : values) {
        ASSERT_EQ(0u, zcsl_hashtable_index_get(table, index++, &key, &data, nullptr));
        ASSERT_EQ(std::pair(text, value),
                  std::pair(std::string(key), *static_cast<uint32_t*>(data)));
      }
    }
    ASSERT_EQ(zcsl_warn_end_of_range, zcsl_hashtable_index_get(table, index, &key, &data, nullptr));
    ASSERT_EQ(0u, zcsl_hashtable_count(table, &count));
    ASSERT_EQ(index, count);
    ASSERT_EQ(0u, zcsl_hashtable_key_count(table, &count));
    ASSERT_EQ(model.size(), count);
  }

  zcsl_hashtable_owner table_;
};

// Every value is freed once, replaced, deleted or left.
TEST_F(hashtable_test, behaves_like_its_model) {
  for (const uint32_t flags : {0x000u, 0x001u, 0x010u, 0x021u, 0x040u, 0x051u, 0x081u}) {
    SCOPED_TRACE(flags);
    zcsl_hashtable* const table = make(flags);
    model_keys model;
    std::vector<uint64_t> given;
    for (uint32_t step = 1; step < 2500; ++step) {
      const std::string text = random_key();
      const char* const key = text.c_str();
      const auto place = std::ranges::find_if(model, [&](const auto& entry) {
        return zcsl_string_equal(entry.first.c_str(), key, !(flags & 0x10));
      });
      const uint32_t count = place == model.end() ? 0 : uint32_t(place->second.size());
      const uint32_t index = random(count + 1), choice = random(5);
      if (choice < 2) {
        const zvsdk_status added = count && (flags & 0x20) ? zcsl_error_exists : 0;
        if (lacks_memory(added, [&] { return add(text, step); }) || added) continue;
        given.push_back(step);
        if (count == 0) model.push_back({text, {}});
        numbers& values = count ? place->second : model.back().second;
        if (!(flags & 0x40)) values.clear();
        values.push_back(step);
      } else if (choice < 3) {
        ASSERT_EQ(count ? 0 : zcsl_warn_not_found, zcsl_hashtable_value_delete(table, key));
        if (count) model.erase(place);
      } else {
        uint32_t counted = 0, size = 0;
        void* data = nullptr;
        ASSERT_EQ(index < count ? 0 : zcsl_warn_not_found,
                  zcsl_hashtable_value_find_ex(table, key, index, &data, &size));
        ASSERT_EQ(index < count ? sizeof step : 0, size);
        ASSERT_TRUE(size == 0 || place->second[index] == *static_cast<uint32_t*>(data));
        ASSERT_EQ(0u, zcsl_hashtable_value_count(table, key, &counted));
        ASSERT_EQ(count, counted);
      }
      if (step % 4 == 0) expect_content(model);
      if (step % 1000) continue;
      ASSERT_EQ(0u, zcsl_hashtable_clear(table));
      model.clear();
    }
    table_.reset();
    std::ranges::sort(g_freed);
    EXPECT_EQ(given, g_freed);
  }
}

TEST_F(hashtable_test, keeps_a_replaced_value_that_a_reader_has) {
  for (const uint32_t flags : {0x00u, 0x81u, 0x01u}) {
    SCOPED_TRACE(flags);
    zcsl_hashtable* const table = make(flags);
    const bool keeps = flags == 0x01;
    void* data = nullptr;
    ASSERT_EQ(0u, zcsl_hashtable_value_add(table, "nothing to free", nullptr, 0, 1));
    ASSERT_EQ(0u, add("key", 100));
    ASSERT_EQ(0u, zcsl_hashtable_value_find_ex(table, "KEY", 0, &data, nullptr));
    for (const uint32_t value : {101, 102}) ASSERT_EQ(0u, add("key", value));
    using freed = std::vector<uint64_t>;
    EXPECT_EQ((keeps ? freed{101} : freed{100, 101}), g_freed);
    ASSERT_EQ(0u, zcsl_hashtable_value_delete(table, "key"));
    EXPECT_TRUE(!keeps || *static_cast<uint32_t*>(data) == 100) << "also when the key goes";
    ASSERT_EQ(0u, zcsl_hashtable_clear(table));
    EXPECT_EQ((keeps ? freed{101, 102, 100} : freed{100, 101, 102}), g_freed);
  }
}

TEST_F(hashtable_test, string_map_holds_texts) {
  for (const bool by_reference : {false, true}) {
    zcsl_stringmap_owner owner;
    ASSERT_EQ(0u, zcsl_stringmap_create(owner.out(), by_reference ? 0x1141 : 0x0041));
    zcsl_stringmap* const map = owner.get();
    char value[] = "value";
    const char *name = "One", *key = nullptr, *text = "unwritten";
    ASSERT_EQ(0u, zcsl_stringmap_value_add(map, name, value));
    ASSERT_EQ(0u, zcsl_stringmap_value_add(map, "ONE", nullptr));
    EXPECT_EQ(0u, zcsl_stringmap_value_find_ex(map, "one", 1, &text));
    EXPECT_EQ(nullptr, text);
    EXPECT_EQ(0u, zcsl_stringmap_value_get(map, 0, &key, &text));
    EXPECT_STREQ("One", key);
    EXPECT_STREQ("value", text);
    EXPECT_EQ(by_reference, key == name && text == value);
    value[5] = '!';
    EXPECT_EQ(by_reference ? 0x900D0360 : 0, zcsl_stringmap_value_find_ex(map, "one", 0, nullptr));
    EXPECT_EQ(0u, zcsl_stringmap_value_delete(map, "ONE"));
    EXPECT_EQ(0x100D0003u, zcsl_stringmap_value_find_ex(map, "one", 0, &text));
  }
}

}  // namespace
