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

TEST(fuzzy, worked_scores) {
  const struct {
    const char *a, *b;
    int split;
    std::tuple<uint32_t, uint32_t, uint32_t> expected;  // the score, and the shares of a and of b
  } table[] = {
      {"aB", "Abc", 0, {57, 66, 50}},
      {"aaa", "a", 0, {66, 50, 100}},
      {" a  b ", "b a", 1, {100, 100, 100}},
      {"a b", "b a", 0, {50, 50, 50}},
      {"É", "é", 0, {0, 0, 0}},
      {"ab\377cd", "ab\377", 0, {100, 100, 100}},
      {"  ", "   ", 1, {85, 100, 75}},
      {" \377", "\376", 1, {100, 100, 100}},
      {"a\300\240 \300\200", "a", 1, {80, 66, 100}},
      {"abc", nullptr, 0, {0, 999, 999}},
      {"", "abc", 0, {0, 999, 999}},
  };
  for (const auto& [a, b, split, expected] : table) {
    uint32_t percent_a = 999, percent_b = 999;
    const uint32_t score = zcsl_string_fuzzycmp_ex(a, b, split, &percent_a, &percent_b);
    EXPECT_EQ(expected, std::tuple(score, percent_a, percent_b)) << a;
  }
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
    const uint32_t longest = round % 3 == 0 ? 420 : 40, letters = 2 + random() % 24;
    std::string texts[2];
    zcsl_block_owner<zcsl_bigram_table> tables[2];
    for (int side : {0, 1}) {
      for (uint32_t i = 0, n = 1 + random() % longest; i < n; ++i) {
        texts[side] += static_cast<char>((random() % 2 ? 'a' : 'A') + random() % letters);
      }
      const char* const text = texts[side].c_str();
      ASSERT_EQ(0u, zcsl_string_create_bigram_table(text, 0, tables[side].out()));
    }
    const char *a = texts[0].c_str(), *b = texts[1].c_str();
    const uint32_t expected = model_score(a, b);
    ASSERT_EQ(expected, zcsl_string_fuzzycmp_ex(a, b, 0, nullptr, nullptr)) << a << " / " << b;
    ASSERT_EQ(expected,
              zcsl_string_bigram_table_cmp_ex(tables[0].get(), tables[1].get(), nullptr, nullptr));
  }
}

TEST(fuzzy, short_texts_allocate_nothing_and_long_ones_may_fail) {
  failing_memory memory;
  for (const uint32_t size : {199, 200}) {
    const std::string text(size, 'x');
    EXPECT_EQ(size == 200 ? 2u : 0u, memory.for_each_failure([&] {
      const uint32_t score =
          zcsl_string_fuzzycmp_ex(text.c_str(), text.c_str(), 0, nullptr, nullptr);
      EXPECT_EQ(memory.refused() ? 0u : 100u, score);
    }));
  }
  zcsl_block_owner<zcsl_bigram_table> table;
  memory.fail_at(1);
  EXPECT_EQ(0x90050002u, zcsl_string_create_bigram_table("abc", 0, table.out()));
}

}  // namespace
