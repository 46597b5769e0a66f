// The string table: against a model, its block byte by byte, hostile blocks, colliding texts.
#include <algorithm>
#include <memory>

#include "support/zcsl_stringtable_internal.h"
#include "tests/support/container_fixture.h"

namespace {

using namespace std::string_literals;

class stringtable_test : public container_test {
 protected:
  zcsl_stringtable_owner make(const std::vector<std::string>& texts = {}) {
    zcsl_stringtable_owner table;
    EXPECT_EQ(0u, zcsl_stringtable_create(table.out(), 0));
    for (const std::string& text : texts) add(table, text);
    return table;
  }
  static zcsl_stringtable_ref add(const zcsl_stringtable_owner& table, const std::string& text) {
    zcsl_stringtable_ref ref = 0;
    EXPECT_EQ(0u, zcsl_stringtable_add_value(table.get(), text.c_str(), &ref)) << text;
    return ref;
  }
  static std::string block(const zcsl_stringtable_owner& table) {
    const void* data = nullptr;
    uint32_t size = 0;
    EXPECT_EQ(0u, zcsl_stringtable_get_buffer(table.get(), &data, &size, nullptr));
    return {static_cast<const char*>(data), size};
  }
  static bool has_holes(const zcsl_stringtable_owner& table) {
    uint8_t holes = 9;
    EXPECT_EQ(0u, zcsl_stringtable_get_buffer(table.get(), nullptr, nullptr, &holes));
    return holes != 0;
  }
  /* The block lies at the end of an allocation of its size, so that no read goes past it unseen. */
  static zvsdk_status attach(const zcsl_stringtable_owner& table, const std::string& bytes) {
    std::unique_ptr<char[]> exact(new char[bytes.size()]);
    std::copy(bytes.begin(), bytes.end(), exact.get());
    return zcsl_stringtable_attach_buffer(table.get(), exact.get(),
                                          static_cast<uint32_t>(bytes.size()));
  }
  static std::string text_of(const zcsl_stringtable_owner& table, zcsl_stringtable_ref ref) {
    const char* text = nullptr;
    const zvsdk_status status = zcsl_stringtable_get_value(table.get(), ref, &text, nullptr);
    return status ? "status " + std::to_string(zvsdk_low_word(status)) : text;
  }
  static uint32_t sync_ref(const zcsl_stringtable_owner& table, zcsl_stringtable_ref ref) {
    zcsl_stringtable_ref synced = 0;
    const zvsdk_status status = zcsl_stringtable_get_buffer_sync_ref(table.get(), ref, &synced);
    return status ? zvsdk_low_word(status) * 1000 : synced;
  }
};

TEST_F(stringtable_test, keeps_texts_in_one_block) {
  zcsl_stringtable_owner table = make();
  EXPECT_EQ(""s, block(table));
  EXPECT_EQ(1u, add(table, "a"));
  EXPECT_EQ("\0a\0"s, block(table));
  EXPECT_EQ(2u, add(table, "b"));
  EXPECT_EQ(1u, add(table, "a"));
  EXPECT_EQ("\0a\0b\0"s, block(table));
  EXPECT_FALSE(has_holes(table));

  ASSERT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 1));
  EXPECT_EQ("\0b\0"s, block(table));
  EXPECT_TRUE(has_holes(table));
  EXPECT_EQ("status 3", text_of(table, 1));
  EXPECT_EQ("b", text_of(table, 2));
  EXPECT_EQ("status 865", text_of(table, 3));
  EXPECT_EQ(1u, sync_ref(table, 2));
  EXPECT_EQ(3000u, sync_ref(table, 1));

  ASSERT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 2));
  EXPECT_EQ(""s, block(table));
  EXPECT_EQ(3u, add(table, "b"));
  EXPECT_EQ("\0b\0"s, block(table));
  ASSERT_EQ(0u, zcsl_stringtable_clear(table.get()));
  EXPECT_TRUE(has_holes(table)) << "until the next attach";
  EXPECT_EQ(1u, add(table, "c"));
  EXPECT_EQ(2u, add(table, "d"));
  EXPECT_EQ(2u, sync_ref(table, 2));
  EXPECT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 2)) << "more removed than there are";
  EXPECT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 1));
}

TEST_F(stringtable_test, behaves_like_its_model) {
  zcsl_stringtable_owner table = make();
  std::vector<std::string> texts;  // by reference; empty for a removed one
  for (uint32_t step = 0; step < 4000; ++step) {
    const std::string text = "text " + std::to_string(random(150));
    const auto place = std::find(texts.begin(), texts.end(), text);
    zcsl_stringtable_ref ref = static_cast<zcsl_stringtable_ref>(place - texts.begin()) + 1;
    const bool present = place != texts.end();
    const uint32_t choice = random(3);
    if (choice == 0) {
      if (!present) texts.push_back(text);
      ASSERT_EQ(ref, add(table, text));
    } else if (choice == 1) {
      zcsl_stringtable_ref found = present ? 0 : ref;
      ASSERT_EQ(present ? 0 : zcsl_warn_not_found,
                zcsl_stringtable_get_value_ref(table.get(), text.c_str(), &found));
      ASSERT_EQ(ref, found);
    } else if (present) {
      ASSERT_EQ(0u, zcsl_stringtable_remove_value(table.get(), ref));
      place->clear();
    }
    if (step % 50) continue;

    const zcsl_stringtable_view view(table.get());
    zcsl_stringtable_owner copy = make({"something", "else"});
    if (!block(table).empty()) {
      ASSERT_EQ(0u, attach(copy, block(table)));
    }
    uint32_t position = 0;
    for (ref = 1; ref <= texts.size(); ++ref) {
      const std::string& expected = texts[ref - 1];
      ASSERT_EQ(expected.empty() ? "status 3" : expected, text_of(table, ref));
      const char* viewed = view.text_of(ref);
      ASSERT_EQ(expected, viewed ? viewed : "");
      if (!viewed) continue;
      ASSERT_EQ(ref, view.ref_at(position));
      zcsl_stringtable_ref at_position = 0;
      const char* found = nullptr;
      ASSERT_EQ(0u, zcsl_stringtable_enum(table.get(), position, &at_position, &found));
      ASSERT_EQ(ref, at_position);
      ASSERT_EQ(expected, found);
      ASSERT_EQ(++position, sync_ref(table, ref));
      ASSERT_EQ(expected, text_of(copy, position)) << "a reference in step names the same text";
    }
    uint32_t count = 0;
    ASSERT_EQ(0u, zcsl_stringtable_count(table.get(), &count));
    ASSERT_EQ(position, count);
    ASSERT_EQ(zcsl_warn_end_of_range, zcsl_stringtable_enum(table.get(), count, nullptr, nullptr));
  }
}

// Texts of one hash: the oldest and the newest of a chain can be found, others are added again.
TEST_F(stringtable_test, texts_of_one_hash) {
  const std::string one = "xaBaB", two = "xaBb!", three = "xb!aB", four = "xb!b!";
  zcsl_stringtable_owner table = make({"first", one});
  EXPECT_EQ(3u, add(table, two));
  EXPECT_EQ(2u, add(table, one)) << "along the link";
  EXPECT_EQ(4u, add(table, three));
  EXPECT_EQ(4u, add(table, three));
  EXPECT_EQ(2u, add(table, one));
  EXPECT_EQ(5u, add(table, two)) << "in the middle, so out of reach";

  // The entry of the hash goes with a text that has no neighbour of its hash behind it.
  table = make({one, "between", two});
  EXPECT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 1));
  zcsl_stringtable_ref ref = 0;
  EXPECT_EQ(0x100D0003u, zcsl_stringtable_get_value_ref(table.get(), two.c_str(), &ref));
  EXPECT_EQ(two, text_of(table, 3));
  EXPECT_EQ(0x100D0003u, zcsl_stringtable_remove_value(table.get(), 3));
  EXPECT_EQ("\0between\0"s, block(table)) << "gone all the same";
  EXPECT_EQ(4u, add(table, four));

  // A neighbour keeps the entry. Its removed text ends the walk there.
  table = make({"first", one, two});
  EXPECT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 2));
  EXPECT_EQ(3u, add(table, two));
  EXPECT_EQ(4u, add(table, one));
}

TEST_F(stringtable_test, attaches_blocks_as_they_come) {
  struct {
    std::string block;
    zvsdk_status status;
    std::string taken;
    std::vector<std::string> texts;
  } const cases[] = {
      {"\0a\0"s, 0, "\0a\0"s, {"a"}},
      {"\0a\0b\0a\0"s, 0, "\0a\0b\0a\0"s, {"a", "b", "a"}},
      {"\0ab"s, 0, "\0ab\0"s, {"ab"}},
      {"\0a\0\0\0b\0"s, 0, "\0a\0\0\0b\0"s, {"a", "b"}},
      {"\0\0\0a\0\0\0"s, 0, "\0a\0\0\0"s, {"a"}},
      {"\0\0\0ab"s, 0, "\0ab\0"s, {"ab"}},
      {"foo\0b\0"s, 0, "foo\0b\0"s, {"status 867", "b"}},
      {"f\0ob\0"s, 0, "\0ob\0\0"s, {"ob"}},
      {""s, zcsl_error_bad_data, "", {}},
      {"\0a"s, zcsl_error_bad_data, "", {}},
      {"\0\0\0\0"s, zcsl_error_bad_data, "", {}},
      {"a\0\0"s, zcsl_error_bad_data, "", {}},
      {"ab\0c"s, zcsl_error_bad_data, "", {}},
  };
  for (const auto& c : cases) {
    for (const char* before : {"x", "something much longer than any of the blocks"}) {
      SCOPED_TRACE(testing::PrintToString(c.block) + " over " + before);
      zcsl_stringtable_owner table = make({before});
      ASSERT_EQ(c.status, attach(table, c.block));
      if (c.status) {
        EXPECT_EQ(before, text_of(table, 1)) << "a bad block changes nothing";
        continue;
      }
      EXPECT_EQ(c.taken, block(table));
      uint32_t count = 0;
      ASSERT_EQ(0u, zcsl_stringtable_count(table.get(), &count));
      ASSERT_EQ(c.texts.size(), count);
      for (uint32_t i = 0; i < count; ++i) EXPECT_EQ(c.texts[i], text_of(table, i + 1));
    }
  }
  zcsl_stringtable_owner table = make();
  ASSERT_EQ(0u, attach(table, "\0a\0b\0a\0"s));
  EXPECT_EQ(3u, add(table, "a")) << "of equal texts the last";
}

TEST_F(stringtable_test, attaches_its_own_block) {
  zcsl_stringtable_owner table = make({"a", "bc", "d"});
  ASSERT_EQ(0u, zcsl_stringtable_remove_value(table.get(), 1));
  const void* data = nullptr;
  uint32_t size = 0;
  ASSERT_EQ(0u, zcsl_stringtable_get_buffer(table.get(), &data, &size, nullptr));
  ASSERT_EQ(0u, zcsl_stringtable_attach_buffer(table.get(), data, size));
  EXPECT_EQ("bc", text_of(table, 1));
  EXPECT_FALSE(has_holes(table));
  const char* inside = static_cast<const char*>(data) + 3;
  ASSERT_EQ(0u, zcsl_stringtable_attach_buffer(table.get(), inside, size - 3));
  EXPECT_EQ("\0d\0"s, block(table));
  EXPECT_EQ(2u, add(table, "longer"));
  const char* longer = nullptr;
  for (uint32_t i = 0; i < 6; ++i) {
    ASSERT_EQ(0u, zcsl_stringtable_get_value(table.get(), 2, &longer, nullptr));
    zcsl_stringtable_add_value(table.get(), longer + i, nullptr);
  }
  EXPECT_EQ("\0d\0longer\0onger\0nger\0ger\0er\0r\0"s, block(table));
}

// Every block of up to six bytes over four values: no read outside, and what was taken holds
// together.
TEST_F(stringtable_test, no_bytes_do_harm) {
  zcsl_stringtable_owner table = make();
  for (uint32_t size = 0; size <= 6; ++size) {
    for (uint32_t code = 0; code < 1u << (2 * size); ++code) {
      std::string bytes;
      for (uint32_t i = 0; i < size; ++i) bytes += "\0a\xFF\0"[code >> (2 * i) & 3];
      if (attach(table, bytes)) continue;
      uint32_t count = 0;
      ASSERT_EQ(0u, zcsl_stringtable_count(table.get(), &count));
      for (uint32_t ref = 1; ref <= count; ++ref) {
        const bool cut_short = ref == 1 && bytes[0] != 0 && bytes[1] != 0;
        ASSERT_EQ(cut_short, text_of(table, ref) == "status 867");
      }
      if (code % 16 == 0) {
        ASSERT_EQ(count + 1, add(table, "b"));
      }
    }
  }
}

}  // namespace
