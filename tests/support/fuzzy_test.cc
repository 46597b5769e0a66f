// Similarity of texts: worked scores, and a plain model over random texts.

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/zcsl_fuzzy.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"

namespace {

using table_owner = zcsl_block_owner<zcsl_bigram_table>;

TEST(fuzzy, worked_scores) {
  const struct {
    const char *a, *b;
    bool split;
    uint32_t score, percent_a, percent_b;
  } table[] = {
      {"abc", "abc", false, 100, 100, 100},
      {"ABC", "abc", false, 100, 100, 100},
      {"abc", "abd", false, 50, 50, 50},
      {"a", "a", false, 100, 100, 100},
      {"ab", "abc", false, 57, 66, 50},
      {"ab", "ba", false, 66, 66, 66},
      {"aaa", "a", false, 66, 50, 100},
      {"abc", "xyz", false, 0, 0, 0},
      {"a b", "b a", false, 50, 50, 50},
      {"a b", "b a", true, 100, 100, 100},
      {" a  b ", "a b", true, 100, 100, 100},
      {"\xFF", "\xFE", false, 100, 100, 100},
      {"É", "é", false, 0, 0, 0},
      {"ab\xFF"
       "cd",
       "ab\xFF", false, 100, 100, 100},
      {"  ", "   ", true, 85, 100, 75},
      {" \xFF", "\xFF", true, 100, 100, 100},
      {" \xC0\x80", "\xC0\x80", true, 100, 100, 100},
      {"a\xC0\xA0 \xC0\x80", "a", true, 80, 66, 100},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(std::string(row.a) + " / " + row.b);
    uint32_t percent_a = 999, percent_b = 999;
    EXPECT_EQ(row.score, zcsl_string_fuzzycmp_ex(row.a, row.b, row.split, &percent_a, &percent_b));
    EXPECT_EQ(row.percent_a, percent_a);
    EXPECT_EQ(row.percent_b, percent_b);
  }
  uint32_t untouched = 7;
  for (const char* nothing : {static_cast<const char*>(nullptr), ""}) {
    EXPECT_EQ(0u, zcsl_string_fuzzycmp_ex("abc", nothing, 0, &untouched, &untouched));
    EXPECT_EQ(0u, zcsl_string_fuzzycmp_ex(nothing, "abc", 0, &untouched, &untouched));
  }
  EXPECT_EQ(7u, untouched);
}

std::multimap<uint32_t, bool> bigrams_of(const std::string& text) {
  std::multimap<uint32_t, bool> bigrams;
  uint32_t previous = 0;
  for (char c : text) {
    const auto next = static_cast<uint32_t>(std::tolower(c));
    bigrams.emplace(previous ? previous | next << 16 : next, true);
    previous = next;
  }
  bigrams.emplace(previous, true);
  return bigrams;
}

uint32_t model_score(const std::string& a, const std::string& b) {
  const auto of_a = bigrams_of(a);
  auto of_b = bigrams_of(b);
  const size_t total = of_a.size() + of_b.size();
  uint32_t matches = 0;
  for (const auto& [bigram, _] : of_a) {
    const auto hit = of_b.find(bigram);
    if (hit == of_b.end()) continue;
    of_b.erase(hit);
    ++matches;
  }
  return static_cast<uint32_t>(matches * 200 / total);
}

TEST(fuzzy, is_the_share_of_common_bigrams_at_every_length) {
  std::mt19937 random(5);
  for (int round = 0; round < 2000; ++round) {
    const uint32_t longest = round % 3 == 0 ? 420 : 40;
    const uint32_t letters = 2 + random() % 24;
    std::string texts[2];
    for (std::string& text : texts) {
      for (uint32_t i = 0, n = 1 + random() % longest; i < n; ++i) {
        text += static_cast<char>((random() % 2 ? 'a' : 'A') + random() % letters);
      }
    }
    const uint32_t expected = model_score(texts[0], texts[1]);
    const char *a = texts[0].c_str(), *b = texts[1].c_str();
    ASSERT_EQ(expected, zcsl_string_fuzzycmp_ex(a, b, 0, nullptr, nullptr)) << a << " / " << b;
    table_owner table_a, table_b;
    ASSERT_EQ(0u, zcsl_string_create_bigram_table(a, 0, table_a.out()));
    ASSERT_EQ(0u, zcsl_string_create_bigram_table(b, 0, table_b.out()));
    ASSERT_EQ(expected,
              zcsl_string_bigram_table_cmp_ex(table_a.get(), table_b.get(), nullptr, nullptr));
  }
}

TEST(fuzzy, short_texts_allocate_nothing_and_long_ones_may_fail) {
  failing_memory memory;
  const std::string shorter(199, 'x'), longer(200, 'x');
  EXPECT_EQ(100u, zcsl_string_fuzzycmp_ex(shorter.c_str(), shorter.c_str(), 0, nullptr, nullptr));
  EXPECT_EQ(0u, memory.requests());
  EXPECT_EQ(2u, memory.for_each_failure([&] {
    const uint32_t score =
        zcsl_string_fuzzycmp_ex(longer.c_str(), longer.c_str(), 0, nullptr, nullptr);
    EXPECT_EQ(memory.refused() ? 0u : 100u, score);
  }));
  table_owner table;
  memory.fail_at(1);
  EXPECT_EQ(0x90050002u, zcsl_string_create_bigram_table("abc", 0, table.out()));
}

}  // namespace
