// The string table: against a model, its block byte by byte, hostile blocks, colliding texts.

#include "support/zcsl_stringtable_internal.h"
#include "tests/support/container_fixture.h"

namespace {

using namespace std::string_literals;
using strings = std::vector<std::string>;
using stringtable_test = container_test;

// A table, and its operations with their outputs as results.
class interned {
 public:
  explicit interned(const strings& texts = {}) {
    EXPECT_EQ(0u, zcsl_stringtable_create(table_.out(), 0));
    for (const std::string& text : texts) add(text);
  }
  zcsl_stringtable* get() const { return table_.get(); }

  zcsl_stringtable_ref add(const std::string& text) {
    zcsl_stringtable_ref ref = 0;
    EXPECT_EQ(0u, zcsl_stringtable_add_value(get(), text.c_str(), &ref)) << text;
    return ref;
  }
  zvsdk_status remove(zcsl_stringtable_ref ref) {
    return zcsl_stringtable_remove_value(get(), ref);
  }
  // The block, which is marked with a star when there are holes.
  std::string block() {
    const void* data = nullptr;
    uint32_t size = 0;
    uint8_t holes = 9;
    EXPECT_EQ(0u, zcsl_stringtable_get_buffer(get(), &data, &size, &holes));
    return (holes ? "*" : "") + std::string(static_cast<const char*>(data), size);
  }
  // The bytes end with their allocation, so that no read goes past them unseen.
  zvsdk_status attach(const std::string& bytes) {
    const std::vector<char> exact(bytes.begin(), bytes.end());
    return zcsl_stringtable_attach_buffer(get(), exact.data(), static_cast<uint32_t>(exact.size()));
  }
  // What get_value gives, or its status.
  std::string text_of(zcsl_stringtable_ref ref) {
    const char* text = nullptr;
    const zvsdk_status status = zcsl_stringtable_get_value(get(), ref, &text, nullptr);
    return status ? "status " + std::to_string(zvsdk_low_word(status)) : text;
  }
  strings texts() {
    strings all;
    uint32_t count = 0;
    EXPECT_EQ(0u, zcsl_stringtable_count(get(), &count));
    while (all.size() < count) all.push_back(text_of(uint32_t(all.size()) + 1));
    return all;
  }

 private:
  zcsl_stringtable_owner table_;
};

// What is expected of a table that has had these texts, of which those removed are empty by now.
void expect_content(interned& table, const strings& texts, bool has_holes) {
  const zcsl_stringtable_view view(table.get());
  std::string block;
  uint32_t position = 0;
  for (uint32_t ref = 1; ref <= texts.size(); ++ref) {
    const std::string& expected = texts[ref - 1];
    ASSERT_EQ(expected.empty() ? "status 3" : expected, table.text_of(ref));
    ASSERT_EQ(expected.empty(), view.text_of(ref) == nullptr);
    if (expected.empty()) continue;
    zcsl_stringtable_ref at_position = 0, synced = 0;
    ASSERT_EQ(0u, zcsl_stringtable_enum(table.get(), position, &at_position, nullptr));
    ASSERT_EQ(0u, zcsl_stringtable_get_buffer_sync_ref(table.get(), ref, &synced));
    ASSERT_EQ((numbers{ref, ref, position + 1}),
              (numbers{at_position, view.ref_at(position), synced}));
    ASSERT_EQ(expected, view.text_of(ref));
    block += "\0"s + expected;
    ++position;
  }
  ASSERT_EQ((has_holes ? "*" : "") + block + "\0"s, table.block());
  ASSERT_EQ("status 865", table.text_of(static_cast<uint32_t>(texts.size()) + 1));
  ASSERT_EQ(zcsl_warn_end_of_range, zcsl_stringtable_enum(table.get(), position, nullptr, nullptr));
}

TEST_F(stringtable_test, behaves_like_its_model) {
  interned table;
  strings texts;           // by reference; empty for a removed one
  bool has_holes = false;  // which also a clear does not change
  for (uint32_t step = 1; step < 4000; ++step) {
    const std::string text = "text " + std::to_string(random(150));
    const auto place = std::ranges::find(texts, text);
    const bool present = place != texts.end();
    const auto ref = static_cast<zcsl_stringtable_ref>(place - texts.begin()) + 1;
    const uint32_t choice = random(3);
    zcsl_stringtable_ref found = ref;
    if (choice == 0) {
      const auto add = [&] {
        return zcsl_stringtable_add_value(table.get(), text.c_str(), &found);
      };
      if (!lacks_memory(0, add) && !present) texts.push_back(text);
      ASSERT_EQ(ref, found);
    } else if (choice == 1) {
      ASSERT_EQ(present ? 0 : zcsl_warn_not_found,
                zcsl_stringtable_get_value_ref(table.get(), text.c_str(), &found));
      ASSERT_EQ(ref, found);
    } else if (present) {
      ASSERT_EQ(0u, table.remove(ref));
      place->clear();
      has_holes = true;
    }
    if (step % 50 == 0) expect_content(table, texts, has_holes);
    if (step % 1000) continue;
    ASSERT_EQ(0u, zcsl_stringtable_clear(table.get()));
    texts.clear();
  }
}

// Texts of one hash: the oldest and the newest of a chain can be found, others are added again.
TEST_F(stringtable_test, texts_of_one_hash) {
  const std::string one = "xaBaB", two = "xaBb!", three = "xb!aB";
  interned table({"first", one, two, three});
  EXPECT_EQ(2u, table.add(one)) << "along the link";
  EXPECT_EQ(4u, table.add(three));
  EXPECT_EQ(5u, table.add(two)) << "in the middle, so out of reach";

  // The entry of the hash goes with a text that has no neighbour of its hash behind it.
  interned apart({one, "between", two});
  EXPECT_EQ(0u, apart.remove(1));
  EXPECT_EQ(0x100D0003u, apart.remove(3));
  EXPECT_EQ("*\0between\0"s, apart.block()) << "gone all the same";
  EXPECT_EQ(4u, apart.add(three));
}

TEST_F(stringtable_test, attaches_blocks_as_they_come) {
  const std::tuple<std::string, std::string, strings> cases[] = {
      {"\0a\0b\0a\0"s, "\0a\0b\0a\0"s, {"a", "b", "a"}},
      {"\0ab"s, "\0ab\0"s, {"ab"}},
      {"\0\0\0a\0\0b\0"s, "\0a\0\0b\0\0"s, {"a", "b"}},
      {"foo\0b\0"s, "foo\0b\0"s, {"status 867", "b"}},
      {"f\0ob\0"s, "\0ob\0\0"s, {"ob"}},
      {"\0a"s, "", {}},
      {"ab\0c"s, "", {}},
  };
  for (const auto& [block, taken, texts] : cases) {
    const bool bad = taken.empty();
    for (uint64_t number = 1; number == 1 || memory.refused(); ++number) {
      SCOPED_TRACE(testing::PrintToString(block));
      interned table({"x", std::string(number % 2 * 99, 'x') + "y"});
      const std::string before = table.block();
      memory.fail_at(number);
      const zvsdk_status status = table.attach(block);
      memory.restore();
      const zvsdk_status usual = bad ? zcsl_error_bad_data : 0;
      ASSERT_EQ(zvsdk_low_word(memory.refused() ? zcsl_error_no_memory : usual),
                zvsdk_low_word(status));
      if (memory.refused()) {
        EXPECT_EQ(std::string::npos, table.block().find('x')) << "no text of before";
        ASSERT_EQ(0u, table.attach(block));
      }
      EXPECT_EQ(bad ? before : taken, table.block());
      if (bad) continue;
      EXPECT_EQ(texts, table.texts());
      EXPECT_EQ(texts.size(), table.add(texts.back())) << "of equal texts the last";
    }
  }
}

TEST_F(stringtable_test, adds_texts_of_its_own_block_while_it_moves) {
  const std::string longer(200, 'y');
  interned table({longer});
  for (uint32_t i = 1; i < 20; ++i) {
    const char* text = zcsl_stringtable_view(table.get()).text_of(1);
    EXPECT_EQ(0u, zcsl_stringtable_add_value(table.get(), text + i, nullptr));
    EXPECT_EQ(longer.substr(i), table.text_of(i + 1));
  }
}

// Every block of up to six bytes over four values: no read outside. Only the first text can be
// damaged.
TEST_F(stringtable_test, no_bytes_do_harm) {
  interned table;
  for (uint32_t code = 0; code < 7u << 12; ++code) {
    std::string bytes;
    for (uint32_t i = 0; i < code >> 12; ++i) bytes += "\0a\xFF\0"[code >> (2 * i) & 3];
    if (table.attach(bytes)) continue;
    const strings texts = table.texts();
    ASSERT_EQ(bytes[0] != 0 && bytes[1] != 0, texts[0] == "status 867");
    ASSERT_EQ(0, std::count(texts.begin() + 1, texts.end(), "status 867"));
    ASSERT_TRUE(code % 16 || table.add("b") == texts.size() + 1);
  }
}

}  // namespace
