// Strings and UTF-8: tables of inputs with their results.

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"
#include "support/zcsl_utf8.h"

namespace {

constexpr const char* s_null = nullptr;

TEST(string, comparisons_by_byte_and_by_folded_character) {
  const struct {
    const char *a, *b;
    int equal, equal_folded, strcmp, stricmp;
  } table[] = {
      {s_null, s_null, 1, 1, 0, 0},    {s_null, "", 0, 0, -1, -1},
      {"", s_null, 0, 0, 1, 1},        {"", "", 1, 1, 0, 0},
      {"a", "ab", 0, 0, -1, -1},       {"ab", "a", 0, 0, 1, 1},
      {"", "a", 0, 0, -1, -1},         {"a", "", 0, 0, 1, 1},
      {"Abc", "aBC", 0, 1, -1, 0},     {"a", "B", 0, 0, 1, -1},
      {"@[`{", "@[`{", 1, 1, 0, 0},    {"[", "{", 0, 0, -1, -1},
      {"é", "É", 0, 0, 1, 1},          {"z", "é", 0, 0, -1, -1},
      {"a\xF0", "A", 0, 0, 1, 1},      {"A", "a\xF0", 0, 0, -1, -1},
      {"\xF0", "a", 0, 0, 1, 1},       {"a", "\xF0", 0, 0, -1, -1},
      {"\xF0x", "\xF0y", 0, 0, -1, 1},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(testing::PrintToString(row.a) + " " + testing::PrintToString(row.b));
    EXPECT_EQ(row.equal, zcsl_string_equal(row.a, row.b, 0));
    EXPECT_EQ(row.equal_folded, zcsl_string_equal(row.a, row.b, 1));
    EXPECT_EQ(row.strcmp, zcsl_string_strcmp(row.a, row.b));
    EXPECT_EQ(row.stricmp, zcsl_string_stricmp(row.a, row.b));
  }
}

TEST(string, comparison_core_reports_result_matches_and_ends) {
  constexpr uint32_t all = utf8_no_limit;
  const struct {
    const char *a, *b;
    uint32_t max_chars;
    int32_t result;
    uint32_t matched;
    int end_a, end_b;
    bool bad = false;
  } table[] = {
      {"", "", all, 0, 0, 0, 0},
      {"", "b", 1, -1, 0, 0, 0},
      {"", "b", 0, 0, 0, 0, 0},
      {"a", "", 1, 1, 0, 0, 0},
      {"a", "", 0, 0, 0, 0, 0},
      {"a", "b", 0, 0, 0, 0, 0},
      {"abc", "abd", all, -1, 2, 3, 3},
      {"a", "A", all, 32, 0, 1, 1},
      {"ab", "abc", all, -1, 2, 2, 2},
      {"ab", "abc", 2, 0, 2, 2, 2},
      {"abc", "ab", all, 1, 2, 2, 2},
      {"abX", "abY", 2, 0, 2, 2, 2},
      {"é1", "é2", all, -1, 1, 3, 3},
      {"€", "é", all, 0x20AC - 0xE9, 0, 3, 2},
      {"a\xFF", "ab", all, 1, 1, 1, 1, 1},
      {"ab", "a\xFF", all, -1, 1, 2, 1, 1},
      {"ab", "a\xFF", 2, 0, 1, 2, 1, 1},
      {"abc", "a\xFF", 2, 0, 1, 2, 1, 1},
      {"abc", "a\xFF", 3, 1, 1, 2, 1, 1},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(std::string(row.a) + " " + row.b + " " + std::to_string(row.max_chars));
    int32_t result = 99;
    uint32_t matched = 99;
    const char *end_a, *end_b;
    EXPECT_EQ(row.bad ? zcsl_error_bad_utf8 : 0,
              _zcsl_string_utf8_compare(row.a, row.b, row.max_chars, true, &result, &matched,
                                        &end_a, &end_b));
    EXPECT_EQ(row.result, result);
    EXPECT_EQ(row.matched, matched);
    EXPECT_EQ(row.end_a, end_a - row.a);
    EXPECT_EQ(row.end_b, end_b - row.b);
  }
  EXPECT_EQ(0, zcsl_string_strnicmp("ABx", "aby", 2));
  EXPECT_EQ(-1, zcsl_string_strnicmp("ABx", "aby", 3));
  EXPECT_EQ(0, zcsl_string_strncmp("ÉBx", "ÉBy", 2));
  EXPECT_EQ(-1, zcsl_string_strncmp("ABx", "aBx", 2));
}

TEST(string, common_prefix_of_two_texts) {
  const struct {
    const char *text, *prefix;
    int starts, starts_folded;
  } table[] = {
      {"Abc", "Ab", 1, 1}, {"Abc", "aB", 0, 1}, {"Abc", "Abc", 1, 1}, {"Ab", "Abc", 0, 0},
      {"Été", "é", 0, 0},  {"a", "", 1, 1},     {s_null, "", 0, 0},   {"", s_null, 0, 0},
  };
  for (const auto& row : table) {
    EXPECT_EQ(row.starts, zcsl_string_startswith(row.text, row.prefix, 0)) << row.prefix;
    EXPECT_EQ(row.starts_folded, zcsl_string_startswith(row.text, row.prefix, 1)) << row.prefix;
  }
  const char *text = "Été Müller", *other = "Été MÜ", *end_a = nullptr, *end_b = nullptr;
  EXPECT_EQ(5u, zcsl_string_stricmp_len(text, other, &end_a, &end_b));
  EXPECT_EQ(std::string("ller"), end_a);
  EXPECT_EQ(std::string(""), end_b);
  EXPECT_EQ(10u, zcsl_string_stricmp_len(text, text, &end_a, &end_b));
  EXPECT_EQ(10, end_a - text) << "a text against itself: the count, taken as bytes";
  EXPECT_EQ(end_a, end_b);
}

TEST(string, measures_and_validity) {
  const struct {
    const char* text;
    int empty, valid;
    uint32_t bytelen, charlen, of_two_chars;
  } table[] = {
      {s_null, 1, 1, 0, 0, 0},
      {"", 1, 1, 1, 0, 0},
      {"abc", 0, 1, 4, 3, 2},
      {"é€x", 0, 1, 7, 3, 5},
      {"\xC0\x80z", 1, 1, 4, 2, 3},
      {"\xED\xA0\x80", 0, 1, 4, 1, 3},
      {"\xF0\x9F\x8E\xB5", 1, 0, 5, 1, 0},
      {"a\xF0zz", 0, 0, 5, 2, 1},
      {"\x80", 1, 0, 2, 1, 0},
      {"a\xE2\x82", 0, 0, 4, 2, 1},
      {"a\xC3", 0, 0, 3, 2, 1},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(testing::PrintToString(row.text));
    EXPECT_EQ(row.empty, zcsl_string_isempty(row.text));
    EXPECT_EQ(row.valid, zcsl_string_isvalid(row.text));
    EXPECT_EQ(row.bytelen, zcsl_string_bytelen(row.text));
    EXPECT_EQ(row.bytelen ? row.bytelen - 1 : 0, zcsl_string_bytelen_nonull(row.text));
    EXPECT_EQ(row.charlen, zcsl_string_charlen(row.text));
    EXPECT_EQ(row.of_two_chars, zcsl_string_byteclen(row.text, 2));
  }
}

TEST(string, reading_character_by_character) {
  const char* text = "é\xFF";
  const char* position = text;
  uint32_t size = 9;
  EXPECT_EQ(0xE9u, zcsl_string_charnext(&position, &size));
  EXPECT_EQ(2u, size);
  EXPECT_EQ(0u, zcsl_string_charnext(&position, &size));
  EXPECT_EQ(text + 2, position) << "does not move where nothing decodes";
  position = text + 3;
  EXPECT_EQ(0u, zcsl_string_charnext(&position, nullptr));
  EXPECT_EQ(text + 4, position) << "moves past the terminator";

  const char* words = "naïve\xFFz";
  EXPECT_EQ(words + 2, zcsl_string_strchr(words, 0xEF));
  EXPECT_EQ(nullptr, zcsl_string_strchr(words, 0));
  EXPECT_EQ(nullptr, zcsl_string_strchr(words, 'z'));
}

// Every code point that can be decoded is encoded as it was, and needs room for a terminator.
TEST(string, encoding_is_the_reverse_of_decoding) {
  for (uint32_t code_point = 1; code_point < 0x10000; ++code_point) {
    char buffer[8] = {};
    uint32_t written = 0, decoded = 0;
    ASSERT_EQ(0u, _utf8_set_next_char(buffer, sizeof buffer, code_point, &written));
    ASSERT_EQ(0x90050008u, _utf8_set_next_char(buffer, written, code_point, &decoded));
    const char* position = buffer;
    ASSERT_EQ(0u, _utf8_get_next_char(&position, &decoded));
    ASSERT_EQ(code_point, decoded);
    ASSERT_EQ(buffer + written, position);
  }
}

TEST(string, substring_search) {
  const struct {
    const char *text, *needle;
    int start;  // -1: not found
    int end;
    uint32_t matched;
    int exact_start;
  } table[] = {
      {"Hello", "LL", 2, 4, 2, -1},
      {"Hello", "", 0, -1, 0, 0},
      {"Hello", "hello!", -1, -1, 0, -1},
      {"", "a", -1, -1, 0, -1},
      {"aaab", "AAB", 1, 4, 3, -1},
      {"Café Noir", "é n", 3, 7, 3, -1},
      {"a\xFF"
       "b",
       "b", -1, -1, 0, -1},
      {"ab", "b\xFF", -1, -1, 0, -1},
      {"xab\xFF", "ab", 1, 3, 2, 1},
      {"ab\xFF"
       "abc",
       "abc", -1, -1, 0, -1},
  };
  for (const auto& row : table) {
    SCOPED_TRACE(std::string(row.text) + " / " + row.needle);
    const char* end = row.text;
    uint32_t matched = 99;
    const char* found = zcsl_string_subistring(row.text, row.needle, &end, &matched);
    EXPECT_EQ(row.start, found ? found - row.text : -1);
    EXPECT_EQ(row.end, end ? end - row.text : -1);
    EXPECT_EQ(row.matched, matched);
    found = zcsl_string_substring(row.text, row.needle, nullptr, nullptr);
    EXPECT_EQ(row.exact_start, found ? found - row.text : -1);
  }
}

TEST(string, copies_and_trimming) {
  zcsl_string_owner copy(zcsl_string_strdup("abc"));
  EXPECT_STREQ("abc", copy.get());
  const char unterminated[2] = {'a', 'b'};
  copy.reset(zcsl_string_strdupn(unterminated, 3, 'x'));
  EXPECT_STREQ("ab", copy.get());
  copy.reset(zcsl_string_strdupn("ab", 5, '.'));
  EXPECT_EQ(std::string("ab..\0", 5), std::string(copy.get(), 5));

  for (auto [text, trimmed] :
       {std::pair{" \t a b\n ", "a b"}, {"   ", ""}, {"", ""}, {"é ", "é"}}) {
    std::string block = text;
    EXPECT_STREQ(trimmed, zcsl_string_trim(block.data()));
  }
}

TEST(string, numbers_have_32_bits) {
  const struct {
    const char* text;
    uint32_t as_unsigned;
    int32_t as_signed;
  } table[] = {
      {s_null, 0, 0},
      {" \t+12x", 12, 12},
      {"-1", 0xFFFFFFFF, -1},
      {"2147483648", 0x80000000, INT32_MAX},
      {"-2147483648", 0x80000000, INT32_MIN},
      {"-2147483649", 0x7FFFFFFF, INT32_MIN},
      {"4294967295", 0xFFFFFFFF, INT32_MAX},
      {"-4294967295", 1, INT32_MIN},
      {"4294967296", 0xFFFFFFFF, INT32_MAX},
      {"-4294967297", 0xFFFFFFFF, INT32_MIN},
      {"99999999999999999999999999", 0xFFFFFFFF, INT32_MAX},
  };
  for (const auto& row : table) {
    EXPECT_EQ(row.as_unsigned, zcsl_string_atou32(row.text)) << testing::PrintToString(row.text);
    EXPECT_EQ(row.as_signed, zcsl_string_atoi32(row.text)) << testing::PrintToString(row.text);
  }
  char buffer[12];
  EXPECT_STREQ("4294967295", zcsl_string_u32toa(UINT32_MAX, buffer, sizeof buffer));
  EXPECT_STREQ("789", zcsl_string_u32toa(456789, buffer, 4)) << "the digits of lowest order";
  EXPECT_STREQ("", zcsl_string_u32toa(7, buffer, 1));
}

}  // namespace
