// Text from strangers: repair, display, and the place of a fault in a statement.
#include <gtest/gtest.h>

#include "tools/statement_fault.h"
#include "tools/statement_seed.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

using namespace std::string_literals;

const std::string fffd = "\xEF\xBF\xBD", note = "\xF0\x9F\x8E\xB5";

TEST(text, repairs_what_the_library_cannot_take) {
  struct {
    std::string in, out;
    bool invalid, wide;
  } const cases[] = {
      {"Björk 椎名", "Björk 椎名", false, false},
      {"a" + note + "b", "a" + fffd + "b", false, true},
      {"a\0b"s, "a" + fffd + "b", true, false},
      {"\xC0\x80", fffd + fffd, true, false},                        // overlong
      {"\xED\xA0\x80", fffd + fffd + fffd, true, false},             // half of a surrogate pair
      {"\xF4\x90\x80\x80", fffd + fffd + fffd + fffd, true, false},  // above U+10FFFF
  };
  for (const auto& each : cases) {
    const repaired_text repaired = repair_text(each.in);
    EXPECT_EQ(repaired.text, each.out) << each.in;
    EXPECT_EQ(repaired.had_invalid, each.invalid) << each.in;
    EXPECT_EQ(repaired.had_wide, each.wide) << each.in;
  }
}

TEST(text, keeps_control_of_the_terminal) {
  EXPECT_EQ(printable("a\x1b[31mb\nc\xC2\x9B"
                      "d\xE2\x80\xAE"
                      "e"),
            "a" + fffd + "[31mb c" + fffd + "d" + fffd + "e");
  EXPECT_EQ(display_width("Zoë"), 3u);
  EXPECT_EQ(display_width("Zoe\xCC\x88"), 3u);
  EXPECT_EQ(display_width("椎名林檎"), 8u);
}

// The statement with "^" put in at the place that the message leads to, or "" without a place.
std::string marked(std::string statement, const std::string& message) {
  const auto offset = locate_fault(statement, message);
  return offset ? statement.insert(*offset, 1, '^') : "";
}

TEST(statement_fault, is_found_by_the_quoted_text) {
  struct {
    const char *statement, *message, *expected;
  } const cases[] = {
      {"GENPL WHERE food = foo", "unexpected symbol 'foo'", "GENPL WHERE food = ^foo"},
      {"GENPL LIMIT 5 'a'", "expected RESULTS|PER at ''a''", "GENPL LIMIT 5 ^'a'"},
      {"GENPL LIMIT 5", "expected RESULTS|PER at ''", "GENPL LIMIT 5^"},
      {"GENPL ORDER RAND( ;", "unexpected end of statement", "GENPL ORDER RAND(^ ;"},
      {"GENPL WHERE a > 1 AND a LIKE 1", "attribute 'a' does not support operator 'LIKE'",
       "GENPL WHERE a > 1 AND a ^LIKE 1"},
      {"GENPL WHERE ZV_Mood = 'Odd'", "unknown value 'Odd' for attribute 'ZV_Mood'",
       "GENPL WHERE ZV_Mood = '^Odd'"},
      {"GENPL", "unexpected symbol 'not there'", ""},
      {"", "unexpected end of statement", "^"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(marked(each.statement, each.message), each.expected) << each.message;
}

TEST(statement_fault, is_marked_below_the_characters_of_its_line) {
  const marked_line line = mark_fault("GENPL\nWHERE a = '椎' é\tfoo\nLIMIT", 25);
  EXPECT_EQ(line.text, "WHERE a = '椎' é foo");
  EXPECT_EQ(line.caret, "                 ^");
}

TEST(statement_seed, is_the_number_of_a_rand) {
  const std::pair<const char*, std::optional<uint32_t>> cases[] = {
      {"GENPL ORDER RAND(100, 7) LIMIT 2 RESULTS", 7},
      {"GENPL ORDER BY ran ( -1 ,-9)*2", 9},
      {"GENPL ORDER RAND(1,99999999999)", UINT32_MAX},
      {"GENPL WHERE a = 'RAND(1,2)'", {}},
      {"GENPL WHERE brand(1,2) = 'x", {}},
      {"RAND(1", {}}};
  for (const auto& [statement, expected] : cases)
    EXPECT_EQ(seed_in_statement(statement), expected) << statement;
  EXPECT_EQ(without_limits("GENPL WHERE a = 'limit' OR a l 1 LIMI 3 re"),
            "GENPL WHERE a = 'limit' OR a l 1 ");
}

}  // namespace
}  // namespace zvplaylist
