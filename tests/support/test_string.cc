// Strings, UTF-8 and the similarity of texts: tables of inputs with their results, and a plain
// model of similarity over random texts.

#include <gtest/gtest.h>

#include <algorithm>
#include <climits>
#include <random>
#include <set>
#include <string>
#include <tuple>

#include "support/zcsl_fuzzy.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"
#include "support/zcsl_utf8.h"
#include "tests/common/failing_memory.h"

namespace {

constexpr const char* s_null = nullptr;

TEST(string, comparisons_by_byte_and_by_folded_character) {
  using results = std::tuple<int, int, int, int>;  // equal, equal when folded, and the two orders
  const std::tuple<const char*, const char*, results> table[] = {
      {s_null, s_null, {1, 1, 0, 0}}, {s_null, "", {0, 0, -1, -1}},   {"", "", {1, 1, 0, 0}},
      {"a", "ab", {0, 0, -1, -1}},    {"", "a", {0, 0, -1, -1}},      {"Abc", "aBC", {0, 1, -1, 0}},
      {"a", "B", {0, 0, 1, -1}},      {"@[`{", "@[`{", {1, 1, 0, 0}}, {"[", "{", {0, 0, -1, -1}},
      {"é", "É", {0, 0, 1, 1}},       {"z", "é", {0, 0, -1, -1}},     {"a\xF0", "A", {0, 0, 1, 1}},
      {"\xF0", "a", {0, 0, 1, 1}},
  };
  const auto compare = [](const char* a, const char* b, int sign) {
    return results(zcsl_string_equal(a, b, 0), zcsl_string_equal(a, b, 1),
                   sign * zcsl_string_strcmp(a, b), sign * zcsl_string_stricmp(a, b));
  };
  for (const auto& [a, b, expected] : table) {
    EXPECT_EQ(expected, compare(a, b, 1)) << testing::PrintToString(a) << " " << b;
    EXPECT_EQ(expected, compare(b, a, -1)) << testing::PrintToString(a) << " " << b;
  }
  EXPECT_EQ(results(0, 0, -1, 1), compare("\xF0x", "\xF0y", 1));
}

TEST(string, comparison_core_reports_result_matches_and_ends) {
  constexpr uint32_t all = utf8_no_limit, bad = zcsl_error_bad_utf8;
  using results = std::tuple<uint32_t, int, int, int, int>;  // status, result, matched, the ends
  const std::tuple<const char*, const char*, uint32_t, results> table[] = {
      {"", "b", 0, {0, 0, 0, 0, 0}},           {"abc", "abd", all, {0, -1, 2, 3, 3}},
      {"", "b", 1, {0, -1, 0, 0, 0}},          {"ab", "abc", 2, {0, 0, 2, 2, 2}},
      {"a", "", 1, {0, 1, 0, 0, 0}},           {"Ā", "é", all, {0, 23, 0, 2, 2}},
      {"a\xFF", "ab", all, {bad, 1, 1, 1, 1}}, {"ab", "a\xFF", all, {bad, -1, 1, 2, 1}},
      {"ab", "a\xFF", 2, {bad, 0, 1, 2, 1}},   {"abc", "a\xFF", 3, {bad, 1, 1, 2, 1}},
  };
  for (const auto& [a, b, max_chars, expected] : table) {
    int32_t result = 99;
    uint32_t matched = 99;
    const char *end_a = a + 99, *end_b = b + 99;
    const zvsdk_status status =
        _zcsl_string_utf8_compare(a, b, max_chars, true, &result, &matched, &end_a, &end_b);
    EXPECT_EQ(expected, results(status, result, matched, end_a - a, end_b - b))
        << a << " " << b << " " << max_chars;
  }
}

TEST(string, what_two_texts_begin_with) {
  for (auto [prefix, starts, folded] : {std::tuple("Éb", 1, 1), {"ÉB", 0, 1}, {"Ébcd", 0, 0}}) {
    EXPECT_EQ(starts, zcsl_string_startswith("Ébc", prefix, 0)) << prefix;
    EXPECT_EQ(folded, zcsl_string_startswith("Ébc", prefix, 1)) << prefix;
  }
  const char *text = "Été Müller", *end_a = nullptr, *end_b = nullptr;
  EXPECT_EQ(5u, zcsl_string_stricmp_len(text, "Été MÜ", &end_a, &end_b));
  EXPECT_STREQ("ller", end_a);
  EXPECT_STREQ("", end_b);
  EXPECT_EQ(10u, zcsl_string_stricmp_len(text, text, &end_a, &end_b));
  EXPECT_EQ(10, end_a - text) << "a text against itself: the count, taken as bytes";
}

TEST(string, measures_and_validity) {
  // empty, valid, bytes with and without the terminator, characters, bytes of two characters
  using results = std::tuple<int, int, int, int, int, int>;
  const std::pair<const char*, results> table[] = {
      {s_null, {1, 1, 0, 0, 0, 0}},  {"é€x", {0, 1, 7, 6, 3, 5}},
      {"", {1, 1, 1, 0, 0, 0}},      {"\xC0\x80z", {1, 1, 4, 3, 2, 3}},
      {"abc", {0, 1, 4, 3, 3, 2}},   {"\xED\xA0\x80", {0, 1, 4, 3, 1, 3}},
      {"a\xC3", {0, 0, 3, 2, 2, 1}}, {"a\xF0zz", {0, 0, 5, 4, 2, 1}},
      {"🎵", {1, 0, 5, 4, 1, 0}},     {"a\xE2\x82", {0, 0, 4, 3, 2, 1}},
  };
  for (const auto& [text, expected] : table) {
    EXPECT_EQ(expected, results(zcsl_string_isempty(text), zcsl_string_isvalid(text),
                                zcsl_string_bytelen(text), zcsl_string_bytelen_nonull(text),
                                zcsl_string_charlen(text), zcsl_string_byteclen(text, 2)))
        << testing::PrintToString(text);
  }
}

// Every code point that can be decoded is encoded as it was, and needs room for a terminator.
TEST(string, reading_character_by_character) {
  for (uint32_t code_point = 1; code_point < 0x10000; ++code_point) {
    char buffer[8] = {};
    uint32_t written = 0, size = 9;
    ASSERT_EQ(0u, _utf8_set_next_char(buffer, sizeof buffer, code_point, &written));
    ASSERT_EQ(0x90050008u, _utf8_set_next_char(buffer, written, code_point, &size));
    const char* position = buffer;
    ASSERT_EQ(code_point, zcsl_string_charnext(&position, &size));
    ASSERT_EQ(std::tuple(buffer + written, written), std::tuple(position, size));
    ASSERT_EQ(0u, zcsl_string_charnext(&position, nullptr));
    ASSERT_EQ(buffer + written + 1, position) << "moves past the terminator";
  }
  const char* words = "naïve\xFFz";
  EXPECT_EQ(words + 2, zcsl_string_strchr(words, 0xEF));
  for (char absent : {'\0', 'z'}) EXPECT_EQ(nullptr, zcsl_string_strchr(words, absent));
  const char* position = words + 6;
  EXPECT_EQ(0u, zcsl_string_charnext(&position, nullptr));
  EXPECT_EQ(words + 6, position) << "does not move where nothing decodes";
}

TEST(string, substring_search) {
  using results = std::tuple<int, int, int, int>;  // start, end, matched; start without folding
  const std::tuple<const char*, const char*, results> table[] = {
      {"Hello", "LL", {2, 4, 2, -1}},  {"Hello", "heLlo!", {-1, -1, 0, -1}},
      {"Hello", "", {0, -1, 0, 0}},    {"a\377b", "b", {-1, -1, 0, -1}},
      {"aaab", "AAB", {1, 4, 3, -1}},  {"Café Noir", "é n", {3, 7, 3, -1}},
      {"xab\377", "ab", {1, 3, 2, 1}}, {"ab\377abc", "abc", {-1, -1, 0, -1}},
      {"", "a", {-1, -1, 0, -1}},      {"ab", "b\377", {-1, -1, 0, -1}},
  };
  for (const auto& [text, needle, expected] : table) {
    auto place = [from = text](const char* found) { return found ? found - from : -1; };
    const char* end = text;
    uint32_t matched = 99;
    const char* found = zcsl_string_subistring(text, needle, &end, &matched);
    const char* exact = zcsl_string_substring(text, needle, nullptr, nullptr);
    EXPECT_EQ(expected, results(place(found), place(end), matched, place(exact)))
        << text << " / " << needle;
  }
}

TEST(string, copies_and_trimming) {
  const char unterminated[2] = {'a', 'b'};
  zcsl_string_owner copy(zcsl_string_strdupn(unterminated, 3, 'x'));
  EXPECT_STREQ("ab", copy.get());
  copy.reset(zcsl_string_strdupn("ab", 5, '.'));
  EXPECT_EQ(std::string("ab..\0", 5), std::string(copy.get(), 5));
  for (std::string text : {" \t a b\n ", "a b"}) EXPECT_STREQ("a b", zcsl_string_trim(text.data()));
}

TEST(string, numbers_have_32_bits) {
  const std::tuple<const char*, uint32_t, int32_t> table[] = {
      {s_null, 0, 0},
      {" \t+12x", 12, 12},
      {"-4294967295", 1, INT32_MIN},
      {"2147483648", 0x80000000, INT32_MAX},
      {"99999999999999999999", 0xFFFFFFFF, INT32_MAX},
  };
  for (const auto& [text, as_unsigned, as_signed] : table) {
    EXPECT_EQ(as_unsigned, zcsl_string_atou32(text)) << testing::PrintToString(text);
    EXPECT_EQ(as_signed, zcsl_string_atoi32(text)) << testing::PrintToString(text);
  }
}

TEST(fuzzy, worked_scores) {
  using results = std::tuple<uint32_t, uint32_t, uint32_t>;  // score, shares of a and of b
  const std::tuple<const char*, const char*, int, results> table[] = {
      {"aaa", "a", 0, {66, 50, 100}},
      {" a  b ", "b a", 1, {100, 100, 100}},
      {"  ", "   ", 1, {85, 100, 75}},
      {" \377", "\376", 1, {100, 100, 100}},
      {"a\300\240 \300\200", "a", 1, {80, 66, 100}},
      {"abc", nullptr, 0, {0, 999, 999}},
  };
  for (const auto& [a, b, split, expected] : table) {
    uint32_t percent_a = 999, percent_b = 999;
    const uint32_t score = zcsl_string_fuzzycmp_ex(a, b, split, &percent_a, &percent_b);
    EXPECT_EQ(expected, results(score, percent_a, percent_b)) << a;
  }
}

// Neighbours; either end has none.
std::multiset<std::string> bigrams_of(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(c));
  std::multiset<std::string> bigrams = {text.substr(0, 1)};
  for (size_t i = 0; i < text.size(); ++i) bigrams.insert(text.substr(i, 2));
  return bigrams;
}

uint32_t model_score(const std::string& a, const std::string& b) {
  const std::multiset<std::string> of_a = bigrams_of(a), of_b = bigrams_of(b);
  std::vector<std::string> common;
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
}

}  // namespace
