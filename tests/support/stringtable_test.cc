// The string table: against a model, its block byte by byte, hostile blocks, colliding texts.
#include <algorithm>
#include <array>
#include <memory>

#include "support/zcsl_stringtable_internal.h"
#include "tests/support/container_fixture.h"

namespace {

using namespace std::string_literals;
using stringtable_test = container_test;

/* A table, and its operations with their outputs as results. */
class interned {
 public:
  explicit interned(const std::vector<std::string>& texts = {}) {
    EXPECT_EQ(0u, zcsl_stringtable_create(m_table.out(), 0));
    for (const std::string& text : texts) add(text);
  }
  zcsl_stringtable* get() const { return m_table.get(); }

  zcsl_stringtable_ref add(const std::string& text) {
    zcsl_stringtable_ref ref = 0;
    EXPECT_EQ(0u, zcsl_stringtable_add_value(get(), text.c_str(), &ref)) << text;
    return ref;
  }
  zvsdk_status remove(zcsl_stringtable_ref ref) {
    return zcsl_stringtable_remove_value(get(), ref);
  }
  /* The block, which is marked with a star when there are holes. */
  std::string block() {
    const void* data = nullptr;
    uint32_t size = 0;
    uint8_t holes = 9;
    EXPECT_EQ(0u, zcsl_stringtable_get_buffer(get(), &data, &size, &holes));
    return (holes ? "*" : "") + std::string(static_cast<const char*>(data), size);
  }
  /* The bytes end with their allocation, so that no read goes past them unseen. */
  zvsdk_status attach(const std::string& bytes) {
    std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return zcsl_stringtable_attach_buffer(get(), exact.get(), static_cast<uint32_t>(bytes.size()));
  }
  /* What get_value gives, or its status. */
  std::string text_of(zcsl_stringtable_ref ref) {
    const char* text = nullptr;
    const zvsdk_status status = zcsl_stringtable_get_value(get(), ref, &text, nullptr);
    return status ? "status " + std::to_string(zvsdk_low_word(status)) : text;
  }
  std::vector<std::string> texts() {
    std::vector<std::string> all;
    uint32_t count = 0;
    EXPECT_EQ(0u, zcsl_stringtable_count(get(), &count));
    for (uint32_t i = 0; i < count; ++i) all.push_back(text_of(i + 1));
    return all;
  }

 private:
  zcsl_stringtable_owner m_table;
};

TEST_F(stringtable_test, behaves_like_its_model) {
  interned table;
  std::vector<std::string> texts;  // by reference; empty for a removed one
  bool has_holes = false;          // which also a clear does not change
  for (uint32_t step = 1; step < 4000; ++step) {
    const std::string text = "text " + std::to_string(random(150));
    const auto place = std::find(texts.begin(), texts.end(), text);
    const bool present = place != texts.end();
    const auto ref = static_cast<zcsl_stringtable_ref>(place - texts.begin()) + 1;
    const uint32_t choice = random(3);
    if (choice == 0) {
      if (!present) texts.push_back(text);
      memory.fail_at(random(3) + 1);
      zcsl_stringtable_add_value(table.get(), text.c_str(), nullptr);
      memory.restore();
      ASSERT_EQ(ref, table.add(text));
    } else if (choice == 1) {
      zcsl_stringtable_ref found = present ? 0 : ref;
      ASSERT_EQ(present ? 0 : zcsl_warn_not_found,
                zcsl_stringtable_get_value_ref(table.get(), text.c_str(), &found));
      ASSERT_EQ(ref, found);
    } else if (present) {
      ASSERT_EQ(0u, table.remove(ref));
      place->clear();
      has_holes = true;
    }
    if (step % 50) continue;

    // A reference that is brought in step is the number of its text in the block.
    const zcsl_stringtable_view view(table.get());
    std::string block;
    uint32_t position = 0;
    for (uint32_t i = 1; i <= texts.size(); ++i) {
      const std::string& expected = texts[i - 1];
      ASSERT_EQ(expected.empty() ? "status 3" : expected, table.text_of(i));
      ASSERT_EQ(expected.empty(), view.text_of(i) == nullptr);
      if (expected.empty()) continue;
      zcsl_stringtable_ref at_position = 0, synced = 0;
      ASSERT_EQ(0u, zcsl_stringtable_enum(table.get(), position, &at_position, nullptr));
      ASSERT_EQ(0u, zcsl_stringtable_get_buffer_sync_ref(table.get(), i, &synced));
      ASSERT_EQ((std::array{i, i, position + 1}),
                (std::array{at_position, view.ref_at(position), synced}));
      ASSERT_EQ(expected, view.text_of(i));
      block += "\0"s + expected;
      ++position;
    }
    ASSERT_EQ((has_holes ? "*" : "") + block + "\0"s, table.block());
    ASSERT_EQ("status 865", table.text_of(static_cast<uint32_t>(texts.size()) + 1));
    ASSERT_EQ(zcsl_warn_end_of_range,
              zcsl_stringtable_enum(table.get(), position, nullptr, nullptr));
    if (step % 1000) continue;
    ASSERT_EQ(0u, zcsl_stringtable_clear(table.get()));
    texts.clear();
  }
}

// Texts of one hash: the oldest and the newest of a chain can be found, others are added again.
TEST_F(stringtable_test, texts_of_one_hash) {
  const std::string one = "xaBaB", two = "xaBb!", three = "xb!aB", four = "xb!b!";
  interned table({"first", one});
  EXPECT_EQ(3u, table.add(two));
  EXPECT_EQ(2u, table.add(one)) << "along the link";
  for (int i = 0; i < 2; ++i) EXPECT_EQ(4u, table.add(three));
  EXPECT_EQ(2u, table.add(one));
  EXPECT_EQ(5u, table.add(two)) << "in the middle, so out of reach";

  // The entry of the hash goes with a text that has no neighbour of its hash behind it.
  interned apart({one, "between", two});
  EXPECT_EQ(0u, apart.remove(1));
  EXPECT_EQ(0x100D0003u, apart.remove(3));
  EXPECT_EQ("*\0between\0"s, apart.block()) << "gone all the same";
  EXPECT_EQ(4u, apart.add(four));

  // A neighbour keeps the entry. Its removed text ends the walk there.
  interned neighbours({"first", one, two});
  EXPECT_EQ(0u, neighbours.remove(2));
  EXPECT_EQ(3u, neighbours.add(two));
  EXPECT_EQ(4u, neighbours.add(one));
}

TEST_F(stringtable_test, attaches_blocks_as_they_come) {
  struct {
    std::string block, taken;
    std::vector<std::string> texts;
  } const cases[] = {
      {"\0a\0b\0a\0"s, "\0a\0b\0a\0"s, {"a", "b", "a"}},
      {"\0ab"s, "\0ab\0"s, {"ab"}},
      {"\0a\0\0\0b\0"s, "\0a\0\0\0b\0"s, {"a", "b"}},
      {"\0\0\0a\0\0\0"s, "\0a\0\0\0"s, {"a"}},
      {"\0\0\0ab"s, "\0ab\0"s, {"ab"}},
      {"foo\0b\0"s, "foo\0b\0"s, {"status 867", "b"}},
      {"f\0ob\0"s, "\0ob\0\0"s, {"ob"}},
      {""s, "", {}},
      {"\0a"s, "", {}},
      {"\0\0\0\0"s, "", {}},
      {"a\0\0"s, "", {}},
      {"ab\0c"s, "", {}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::PrintToString(c.block));
    interned table({"x"});
    const bool bad = c.taken.empty();
    ASSERT_EQ(bad ? zcsl_error_bad_data : 0, table.attach(c.block));
    EXPECT_EQ(bad ? "\0x\0"s : c.taken, table.block());
    EXPECT_EQ(bad ? std::vector<std::string>{"x"} : c.texts, table.texts());
  }
  interned table;
  ASSERT_EQ(0u, table.attach("\0a\0b\0a\0"s));
  EXPECT_EQ(3u, table.add("a")) << "of equal texts the last";
}

TEST_F(stringtable_test, attaches_its_own_block) {
  interned table({"a", "bc", "d"});
  ASSERT_EQ(0u, table.remove(1));
  const void* data = nullptr;
  uint32_t size = 0;
  ASSERT_EQ(0u, zcsl_stringtable_get_buffer(table.get(), &data, &size, nullptr));
  ASSERT_EQ(0u, zcsl_stringtable_attach_buffer(table.get(), data, size));
  EXPECT_EQ("\0bc\0d\0"s, table.block());
  const std::string longer(200, 'y');
  const char* inside = static_cast<const char*>(data) + 3;
  ASSERT_EQ(0u, zcsl_stringtable_attach_buffer(table.get(), inside, size - 3));
  EXPECT_EQ(2u, table.add(longer));
  for (uint32_t i = 1; i < 20; ++i) {
    const char* text = nullptr;
    ASSERT_EQ(0u, zcsl_stringtable_get_value(table.get(), 2, &text, nullptr));
    EXPECT_EQ(0u, zcsl_stringtable_add_value(table.get(), text + i, nullptr)) << "while it moves";
    EXPECT_EQ(longer.substr(i), table.text_of(i + 2));
  }
}

TEST_F(stringtable_test, an_attach_that_fails_leaves_no_text_of_before) {
  for (const std::string& before : {"x"s, std::string(100, 'x')}) {
    for (uint64_t number = 1; number == 1 || memory.refused(); ++number) {
      interned table({before});
      memory.fail_at(number);
      const zvsdk_status status = table.attach("\0some\0words\0"s);
      memory.restore();
      EXPECT_EQ(memory.refused() ? zcsl_code_no_memory : 0, zvsdk_low_word(status));
      EXPECT_EQ(std::string::npos, table.block().find('x'));
      EXPECT_EQ(0u, table.attach("\0some\0words\0"s));
      EXPECT_EQ((std::vector<std::string>{"some", "words"}), table.texts());
    }
  }
}

// Every block of up to six bytes over four values: no read outside. Only the first text can be
// damaged.
TEST_F(stringtable_test, no_bytes_do_harm) {
  interned table;
  for (uint32_t size = 0; size <= 6; ++size) {
    for (uint32_t code = 0; code < 1u << (2 * size); ++code) {
      std::string bytes;
      for (uint32_t i = 0; i < size; ++i) bytes += "\0a\xFF\0"[code >> (2 * i) & 3];
      if (table.attach(bytes)) continue;
      const auto texts = table.texts();
      ASSERT_EQ(bytes[0] != 0 && bytes[1] != 0, texts[0] == "status 867");
      ASSERT_EQ(0, std::count(texts.begin() + 1, texts.end(), "status 867"));
      ASSERT_TRUE(code % 16 || table.add("b") == texts.size() + 1);
    }
  }
}

}  // namespace
