// Accumulators and formatted printing: tables of formats with their results, and the platform's
// formatter as a model where both agree.

#include <gtest/gtest.h>

#include <cfloat>
#include <cinttypes>
#include <cmath>
#include <random>
#include <string>

#include "support/zcsl_accum.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"

namespace {

using namespace std::string_literals;

// What was printed, and what should have been.
using printed_and_expected = std::pair<std::string, std::string>[];

std::string text_of(zcsl_accum* accum) {
  const char* text = nullptr;
  uint32_t size = 0;
  EXPECT_EQ(0u, zcsl_string_accum_get_string(accum, &text, &size));
  return size ? std::string(text, size - 1) : std::string();
}

template <class... Args>
std::string print(const char* format, Args... args) {
  zcsl_accum_owner accum;
  EXPECT_EQ(0u, zcsl_string_accum_create(accum.out(), nullptr, 0));
  EXPECT_EQ(0u, zcsl_string_accum_append_format(accum.get(), format, args...));
  return text_of(accum.get());
}

TEST(printf, strings_words_and_characters) {
  const char* const null = nullptr;
  const char unterminated[] = {'a', 'b', 'c'};
  const printed_and_expected table = {
      {print("%5%|%-3%|100%"), "    %|%  |100%"},
      {print("%q %5q|%é|%-08", 1), "%q    %q|%é|%       "},
      {print("a\xFF%d", 1), "a"},
      {print("%5.2s|%-5.2s|%.0s|", "abcdef", "abcdef", "abc"), "   ab|ab   ||"},
      {print("%8s|%-8s|%2s|%s", "abc", "abc", "abc", null), "     abc|abc     |abc|(null)"},
      {print("%.3s|%.*s|%.*s", unterminated, 2, "abc", -2, "abc"), "abc|ab|ab"},
      {print("%*s|%*s|%*s|%*s", 3, "abcdef", 0, "abc", -2, "abc", -5, "abc"), "abc||ab|abc  "},
      {print("%w|%w|%w %*.5s|", "  foo bar", "   ", null, 3, "abcdef"), "foo||(null) abcde|"},
      {print("%6w|%.2w|%-6w|", " foo bar", "foo", "foo"), "   foo|fo|foo   |"},
      {print("%*w|%w", 5, "  foo bar", "été x"), "foo b|été"},
      {print("%c%c%c", 'a', 0xE9, 0x20AC), "aé€"},
      {print("%3c|%-3c|%.3c|%.0c|", 'a', 'b', 'c', 'd'), "  a|b  |ccc||"},
      {print("%c%s|%N|%3N", 0, "a"), "\0a|\0|  \0"s},
      {print("[%c]", 0x1F600), "[]"},
  };
  for (const auto& [printed, expected] : table) EXPECT_EQ(expected, printed);
  EXPECT_EQ(std::string(400, 'x'), print("%.400s", std::string(500, 'x').c_str()));
  EXPECT_EQ(std::string(310, 'y'), print("%.400c", 'y')) << "a precision is capped";
  EXPECT_EQ(std::string(499, ' ') + "a", print("%500s", "a"));
}

TEST(printf, integers) {
  const printed_and_expected table = {
      {print("%d %i %u", -5, 7, -1), "-5 7 4294967295"},
      {print("%d %lld", INT32_MIN, INT64_MIN), "-2147483648 -9223372036854775808"},
      {print("%lu %llu", 0xFFFFFFFFu, UINT64_MAX), "4294967295 18446744073709551615"},
      {print("%ld %hd %hhd %hd %hhu", -3, -3, -1, -0x10001, 0x1FF), "-3 -3 -1 -1 255"},
      {print("%zd %zu %.0d", -1, -1, 0), "4294967295 4294967295 0"},
      {print("%x %X %o %b", 0xBEEF, 0xBEEF, 8, 5), "beef BEEF 10 101"},
      {print("%#x %#X %#o %#b %#d", 255, 255, 8, 5, 5), "0xff 0XFF 010 101 5"},
      {print("%#x %#o %#hhx %+d % d %+u %+ d", 0, 0, 0x100, 5, 5, 5, 5), "0 0 0 +5  5 5 +5"},
      {print("%5d|%-5d|%05d|%-05d|%+05d", 42, 42, 42, 42, 42), "   42|42   |00042|00042|+0042"},
      {print("%.5d|%8.3d|%#06x|%*d|%*d", 42, 7, 255, 4, 1, -4, 1),
       "00042|     007|0x0000ff|   1|1   "},
      {print("%p %#p", reinterpret_cast<void*>(0x123456789ABC), reinterpret_cast<void*>(16)),
       "123456789ABC 0x10"},
  };
  for (const auto& [printed, expected] : table) EXPECT_EQ(expected, printed);
  EXPECT_EQ(340u, print("%999d", 1).size());
  EXPECT_EQ(340u, print("%099999999999d", 1).size());
  EXPECT_EQ(340u, print("%*d", INT32_MIN, 1).size());
  EXPECT_EQ(std::string(309, '0') + "1", print("%.999u", 1));
}

TEST(printf, real_numbers) {
  const double infinite = HUGE_VAL;
  const printed_and_expected table = {
      {print("%f %F %.2f %.3f", 1.5, -2.25, 0.005, 0.0), "1.500000 -2.250000 0.01 0.000"},
      {print("%.0f|%#.0f|%!.0f|%.20f", 2.0, 2.0, 2.0, 0.1), "2|2.|2.|0.10000000000000000000"},
      {print("%f %.10f", 1e-7, 1.25e-7), "0.000000 0.0000001250"},
      {print("%e %E %.0e", 12345.678, 0.00012, 5.0), "1.234568e+04 1.200000E-04 5e+00"},
      {print("%.2e %.1e %e", 1e100, 9.96, 0.0), "1.00e+100 1.0e+01 0.000000e+00"},
      {print("%g %g %g %G", 100000.0, 1000000.0, 0.0001, 0.00001), "100000 1e+06 0.0001 1E-05"},
      {print("%g %!g %#g %.3g", 2.0, 2.0, 2.0, 1234.0), "2 2.0 2.00000 1.23e+03"},
      {print("%g %.0g %!g %+f % f %+.1f", 0.5, 3.0, 1e20, 1.0, 1.0, -1.0),
       "0.5 3 1.0e+20 +1.000000  1.000000 -1.0"},
      {print("%8.1f|%-8.1f|%08.1f|%-08.1f|", -1.5, -1.5, -1.5, -1.5),
       "    -1.5|-1.5    |-00001.5|-1.5    |"},
      {print("%5f|%-5f|%05f", NAN, NAN, -NAN), "  NaN|NaN  |  NaN"},
      {print("%f %+f %f %6f|% f", infinite, infinite, -infinite, infinite, infinite),
       "Inf +Inf -Inf    Inf|Inf"},
  };
  for (const auto& [printed, expected] : table) EXPECT_EQ(expected, printed);
  EXPECT_EQ(309u + 1 + 165, print("%.400f", DBL_MAX).size());
  EXPECT_EQ(340u, print("%0400.165e", -1e-300).size());
  EXPECT_EQ("4.94", print("%.2e", 5e-324).substr(0, 4));
}

void expect_as_on_the_platform(const std::string& format, auto value) {
  char buffer[512];
  std::snprintf(buffer, sizeof buffer, format.c_str(), value);
  EXPECT_EQ(buffer, print(format.c_str(), value)) << format;
}

// Where both formatters promise the same: no zero flag to the left, no zero value, and at most
// ten significant digits of a number without exact halves.
TEST(printf, agrees_with_the_platform_on_common_ground) {
  std::mt19937_64 random(3);
  auto below = [&](uint32_t limit) { return static_cast<uint32_t>(random() % limit); };
  for (int round = 0; round < 20000; ++round) {
    const std::string size = below(2) ? std::to_string(1 + below(30)) : "";
    const std::string precision = below(2) ? "." + std::to_string(1 + below(9)) : "";
    const char* const flags[] = {"", "-", "+", " ", "-+"};
    const std::string start = std::string("%") + flags[below(5)] + size + precision;
    const auto value = static_cast<int64_t>(random() >> below(64)) | 1;
    expect_as_on_the_platform(start + "dux"[below(3)], static_cast<int32_t>(value));
    expect_as_on_the_platform(start + "ll" + "dux"[below(3)], value);
    const double number = std::ldexp(static_cast<double>(random() >> 11), -int(below(100)));
    expect_as_on_the_platform(start + "eg"[below(2)], number);
  }
}

TEST(printf, stores_the_length_so_far) {
  uint8_t byte = 0;
  uint16_t half = 0;
  uint32_t plain = 0;
  uint32_t sized[] = {0, 7};
  uint64_t wide = ~uint64_t{0};
  void* null = nullptr;
  EXPECT_EQ("ab  ", print("a%hhnb%hn%n%2n%lln%zn", &byte, &half, &plain, null, &wide, sized));
  EXPECT_EQ("1 2 2 4 4 7",
            print("%d %d %d %lld %d %d", byte, half, plain, wide, sized[0], sized[1]));
}

TEST(printf, new_strings_and_buffers) {
  EXPECT_STREQ("", zcsl_string_owner(zcsl_string_mprintf("%s", "")).get());
  EXPECT_EQ(nullptr, zcsl_string_mprintf(nullptr));
  char buffer[4] = "zzz";
  EXPECT_EQ(7, zcsl_string_snprintf(buffer, 4, "abc%s", "def"));
  EXPECT_STREQ("abc", buffer);
  EXPECT_EQ(1, zcsl_string_snprintf(buffer, 4, ""));
  EXPECT_STREQ("", buffer);
  buffer[0] = 'z';
  EXPECT_EQ(-1, zcsl_string_snprintf(buffer, 4, nullptr));
  EXPECT_STREQ("", buffer);

  failing_memory memory;
  EXPECT_EQ(201, zcsl_string_snprintf(buffer, 4, "%200s", ""));
  EXPECT_EQ(0u, memory.requests()) << "a short text needs none";
  memory.fail_at(1);
  EXPECT_LT(0, zcsl_string_snprintf(buffer, 4, "%400s", "x"));
  EXPECT_STREQ("   ", buffer) << "short, without memory, and ended all the same";
}

TEST(accum, appends_and_reports) {
  zcsl_accum_owner owner;
  ASSERT_EQ(0u, zcsl_string_accum_create(owner.out(), nullptr, 0));
  zcsl_accum* accum = owner.get();
  EXPECT_EQ("", text_of(accum));
  EXPECT_EQ(0u, zcsl_string_accum_append(accum, "Été", nullptr));
  EXPECT_EQ(0u, zcsl_string_accum_append_bytes(accum, "\0z", 2, nullptr));
  EXPECT_EQ(0u, zcsl_string_accum_append_chars(accum, "éÈx", 2, nullptr));
  EXPECT_EQ(0u, zcsl_string_accum_append(accum, nullptr, nullptr));
  EXPECT_EQ(0u, zcsl_string_accum_append_bytes(accum, nullptr, 4, nullptr));
  EXPECT_EQ(0u, zcsl_string_accum_append_format(accum, nullptr));
  EXPECT_EQ("Été\0zéÈ"s, text_of(accum));

  const struct {
    uint32_t start, count, removed;
    const char* left;
  } cuts[] = {{5, 2, 2, "ÉtééÈ"}, {3, UINT32_MAX, 6, "Ét"}, {99, 1, 0, "Ét"}};
  for (const auto& cut : cuts) {
    uint32_t removed = 9;
    EXPECT_EQ(0u, zcsl_string_accum_remove_range(accum, cut.start, cut.count, &removed));
    EXPECT_EQ(cut.removed, removed);
    EXPECT_EQ(cut.left, text_of(accum));
  }
  EXPECT_EQ(0u, zcsl_string_accum_set(accum, "new"));
  EXPECT_EQ("new", text_of(accum));
  EXPECT_EQ(0u, zcsl_string_accum_clear(accum));
  EXPECT_EQ("", text_of(accum));
  EXPECT_EQ(0x90050001u, zcsl_string_accum_append(nullptr, "", nullptr));
  EXPECT_EQ(0x90050001u, zcsl_string_accum_append_format(nullptr, "x"));
}

TEST(accum, a_block_of_the_caller_is_outgrown_and_left_alone) {
  failing_memory memory;
  alignas(8) char block[100];
  std::fill(std::begin(block), std::end(block), '#');
  zcsl_accum_owner accum;
  zcsl_string_owner text;
  ASSERT_EQ(0u, zcsl_string_accum_create(accum.out(), block, 90));
  ASSERT_EQ(0u, zcsl_string_accum_append(accum.get(), "short", nullptr));
  EXPECT_EQ(0, memory.live());
  uint32_t size = 0;
  ASSERT_EQ(0u, zcsl_string_accum_detach(accum.get(), text.out(), &size));
  EXPECT_STREQ("short", text.get());
  EXPECT_EQ(6u, size);
  for (int i = 0; i < 200; ++i) zcsl_string_accum_append(accum.get(), "0123456789", nullptr);
  EXPECT_EQ(2000u, text_of(accum.get()).size());
  EXPECT_EQ(std::string(10, '#'), std::string(block + 90, 10));
  EXPECT_EQ(0u, zcsl_string_accum_create(accum.out(), block + 1, 99)) << "a block out of line";
  EXPECT_EQ(0u, zcsl_string_accum_append(accum.get(), "x", nullptr));
}

TEST(accum, lack_of_memory_leaves_the_text_unchanged) {
  failing_memory memory;
  memory.for_each_failure([] {
    zcsl_accum_owner accum;
    if (zcsl_string_accum_create(accum.out(), nullptr, 4)) return;
    std::string expected;
    for (const char* piece : {"abc", "defghijkl", "mnopqrstuvwxyz"}) {
      const zvsdk_status status = zcsl_string_accum_append(accum.get(), piece, nullptr);
      if (!status) expected += piece;
      EXPECT_TRUE(status == 0 || status == 0x90050002);
      EXPECT_EQ(expected, text_of(accum.get()));
    }
    zcsl_string_owner text;
    EXPECT_EQ(0u, zcsl_string_accum_detach(accum.get(), text.out(), nullptr));
    EXPECT_EQ(expected, text.get()) << "a block that cannot shrink is handed over as it is";
    zcsl_string_owner printed(zcsl_string_mprintf("%400s%d", "x", 1));
  });
}

}  // namespace
