// Similarity of texts: worked scores, and a plain model over random texts.

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "support/zcsl_fuzzy.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"

namespace {

using table_owner = zcsl_block_owner<zcsl_bigram_table>;

TEST(fuzzy, worked_scores) {
  const struct {
    const char *a, *b;
    int split;
    std::tuple<uint32_t, uint32_t, uint32_t> expected;  // the score, and the shares of a and of b
  } table[] = {
      {"abc", "abd", 0, {50, 50, 50}},
      {"aB", "Abc", 0, {57, 66, 50}},
      {"aaa", "a", 0, {66, 50, 100}},
      {"a b", "b a", 1, {100, 100, 100}},
      {"a b", "b a", 0, {50, 50, 50}},
      {" a  b ", "a b", 1, {100, 100, 100}},
      {"É", "é", 0, {0, 0, 0}},
      {"ab\377cd", "ab\377", 0, {100, 100, 100}},
      {"  ", "   ", 1, {85, 100, 75}},
      {"\377", "\376", 0, {100, 100, 100}},
      {" \377", "\377", 1, {100, 100, 100}},
      {" \300\200", "\300\200", 1, {100, 100, 100}},
      {"a\300\240 \300\200", "a", 1, {80, 66, 100}},
  };
  for (const auto& [a, b, split, expected] : table) {
    uint32_t percent_a = 999, percent_b = 999;
    const uint32_t score = zcsl_string_fuzzycmp_ex(a, b, split, &percent_a, &percent_b);
    EXPECT_EQ(expected, std::tuple(score, percent_a, percent_b)) << a << " / " << b;
  }
  uint32_t untouched = 7;
  for (const char* nothing : {static_cast<const char*>(nullptr), ""}) {
    EXPECT_EQ(0u, zcsl_string_fuzzycmp_ex("abc", nothing, 0, &untouched, &untouched));
    EXPECT_EQ(0u, zcsl_string_fuzzycmp_ex(nothing, "abc", 0, &untouched, &untouched));
  }
  EXPECT_EQ(7u, untouched);
}

std::multiset<uint32_t> bigrams_of(const std::string& text) {
  std::multiset<uint32_t> bigrams;
  uint32_t previous = 0;
  for (char c : text) {
    const auto next = static_cast<uint32_t>(std::tolower(c));
    bigrams.insert(previous ? previous | next << 16 : next);
    previous = next;
  }
  bigrams.insert(previous);
  return bigrams;
}

uint32_t model_score(const std::string& a, const std::string& b) {
  const std::multiset<uint32_t> of_a = bigrams_of(a), of_b = bigrams_of(b);
  std::vector<uint32_t> common;
  std::ranges::set_intersection(of_a, of_b, std::back_inserter(common));
  return static_cast<uint32_t>(common.size() * 200 / (of_a.size() + of_b.size()));
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
