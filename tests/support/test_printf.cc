// Formatted printing: a table of formats with their results. Accumulators against a plain string.

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>

#include "support/zcsl_accum.h"
#include "support/zcsl_owners.h"
#include "tests/common/failing_memory.h"

namespace {

using namespace std::string_literals;

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

TEST(printf, prints_what_its_formats_say) {
  const char* const null = nullptr;
  const char open[] = {'a', 'b', 'c'};  // without an end
  const double infinite = HUGE_VAL;
  const std::pair<std::string, std::string> table[] = {
      {print("%5%|%-3%|100%|%q %5q|%é|%-08", 1), "    %|%  |100%|%q    %q|%é|%       "},
      {print("a\xFF%d", 1) + print(nullptr), "a"},
      {print("%5.2s|%-5.2s|%.0s|%8s|%2s", "abc", "abc", "abc", "abc", "abc"),
       "   ab|ab   ||     abc|abc"},
      {print("%.3s|%.*s|%.*s|%s", open, 2, "abc", -2, "abc", null), "abc|ab|ab|(null)"},
      {print("%*s|%*s|%*s|%*s", 3, "abcdef", 0, "abc", -2, "abc", -5, "abc"), "abc||ab|abc  "},
      {print("%w|%w|%w %*.5s|", "  foo bar", "   ", null, 3, "abcdef"), "foo||(null) abcde|"},
      {print("%6w|%.2w|%*w|%w", " foo bar", "foo", 5, "  foo bar", "été x"), "   foo|fo|foo b|été"},
      {print("%c%c%c[%c]", 'a', 0xE9, 0x20AC, 0x1F600), "aé€[]"},
      {print("%3c|%-3c|%.3c|%.0c|", 'a', 'b', 'c', 'd'), "  a|b  |ccc||"},
      {print("%c%s|%N|%3N", 0, "a"), "\0a|\0|  \0"s},
      {print("%.400s", std::string(500, 'x').c_str()), std::string(400, 'x')},
      {print("%.400c%500s", 'y', "a"), std::string(310, 'y') + std::string(499, ' ') + "a"},

      {print("%d %i %u %d", -5, 7, -1, INT32_MIN), "-5 7 4294967295 -2147483648"},
      {print("%lld %llu", INT64_MIN, UINT64_MAX), "-9223372036854775808 18446744073709551615"},
      {print("%ld %hd %hhd %hd %hhu", -3, -3, -1, -0x10001, 0x1FF), "-3 -3 -1 -1 255"},
      {print("%zd %lu %.0d", -1, -1, 0), "4294967295 4294967295 0"},
      {print("%x %X %o %b", 0xBEEF, 0xBEEF, 8, 5), "beef BEEF 10 101"},
      {print("%#x %#X %#o %#b %#d", 255, 255, 8, 5, 5), "0xff 0XFF 010 101 5"},
      {print("%#x %#hhx %+d % d %+u %+ d", 0, 0x100, 5, 5, 5, 5), "0 0 +5  5 5 +5"},
      {print("%5d|%-5d|%05d|%-05d|%+05d", 42, 42, 42, 42, 42), "   42|42   |00042|00042|+0042"},
      {print("%.5d|%8.3d|%#06x|%*d", 42, 7, 255, -4, 1), "00042|     007|0x0000ff|1   "},
      {print("%p %#p", reinterpret_cast<void*>(0x123456789ABC), reinterpret_cast<void*>(16)),
       "123456789ABC 0x10"},
      {print("%099999999999d", 1), std::string(339, '0') + "1"},
      {print("%*d", INT32_MIN, 1), "1" + std::string(339, ' ')},
      {print("%.999u", 1), std::string(309, '0') + "1"},

      {print("%f %F %.2f %.3f", 1.5, -2.25, 0.005, 0.0), "1.500000 -2.250000 0.01 0.000"},
      {print("%.0f|%#.0f|%!.0f|%.20f", 2.0, 2.0, 2.0, 0.1), "2|2.|2.|0.10000000000000000000"},
      {print("%f %.10f %.0e", 1e-7, 1.25e-7, 5.0), "0.000000 0.0000001250 5e+00"},
      {print("%e %E %e", 12345.678, 0.00012, 0.0), "1.234568e+04 1.200000E-04 0.000000e+00"},
      {print("%.2e %.1e %.1e", 1e100, 9.96, 5e-324), "1.00e+100 1.0e+01 4.9e-324"},
      {print("%g %g %g %G", 100000.0, 1000000.0, 0.0001, 0.00001), "100000 1e+06 0.0001 1E-05"},
      {print("%g %!g %#g %.3g", 2.0, 2.0, 2.0, 1234.0), "2 2.0 2.00000 1.23e+03"},
      {print("%g %.0g %!g %+f % f", 0.5, 3.0, 1e20, 1.0, 1.0), "0.5 3 1.0e+20 +1.000000  1.000000"},
      {print("%8.1f|%-8.1f|%08.1f|%-08.1f|", -1.5, -1.5, -1.5, -1.5),
       "    -1.5|-1.5    |-00001.5|-1.5    |"},
      {print("%5f|%-5f|%05f", NAN, NAN, -NAN), "  NaN|NaN  |  NaN"},
      {print("%f %+f %f %6f", infinite, infinite, -infinite, infinite), "Inf +Inf -Inf    Inf"},
  };
  for (const auto& [printed, expected] : table) EXPECT_EQ(expected, printed);
  EXPECT_EQ(340u, print("%0400.165e", -1e-300).size());
}

TEST(printf, stores_the_length_so_far) {
  uint8_t byte = 0;
  uint16_t half = 0;
  uint32_t sized[] = {0, 7};
  uint64_t wide = ~uint64_t{0};
  void* null = nullptr;
  EXPECT_EQ("ab  ", print("a%hhnb%hn%2n%lln%zn", &byte, &half, null, &wide, sized));
  EXPECT_EQ("1 2 4 4 7", print("%d %d %lld %d %d", byte, half, wide, sized[0], sized[1]));
}

TEST(printf, new_strings_and_buffers) {
  failing_memory memory;
  memory.for_each_failure([&] {
    zcsl_string_owner printed(zcsl_string_mprintf("%400s%d", "x", 1));
    EXPECT_TRUE(memory.refused() || std::string(399, ' ') + "x1" == printed.get());
  });
  const uint64_t before = memory.requests();
  EXPECT_EQ(4, zcsl_string_snprintf(nullptr, 4, "abc"));
  for (const auto& [format, length, expected] :
       {std::tuple{"abc%s", 7, "abc"}, {"", 1, ""}, {nullptr, -1, ""}, {"%200s", 201, "   "}}) {
    char buffer[4] = "zzz";
    EXPECT_EQ(length, zcsl_string_snprintf(buffer, 4, format, "def"));
    EXPECT_STREQ(expected, buffer);
  }
  EXPECT_EQ(before, memory.requests()) << "a short text needs none";
}

TEST(accum, behaves_like_a_string) {
  failing_memory memory;
  std::mt19937 random(1);
  for (uint32_t round = 0; round < 200; ++round) {
    alignas(8) char block[100];  // which the text outgrows, or which has no room for it
    std::ranges::fill(block, '#');
    zcsl_accum_owner owner;
    ASSERT_EQ(0u, zcsl_string_accum_create(owner.out(), round % 2 ? block + round % 7 : nullptr,
                                           uint32_t(random() % 84)));
    zcsl_accum* const accum = owner.get();
    std::string model;
    for (int i = 0; i < 40; ++i) {
      const std::string piece = "Été\0zéÈ, été"s.substr(random() % 3 * 3), before = model;
      const uint32_t start = random() % 60, count = random() % 9, step = random() % 5;
      zcsl_string_owner text;
      uint32_t size = 9;
      zvsdk_status status = 0;
      memory.fail_at(random() % 4);
      if (step == 0) {
        status = zcsl_string_accum_detach(accum, text.out(), &size);
        model.clear();
        ASSERT_TRUE(status || before == std::string(text ? text.get() : "", size - (size != 0)));
      } else if (step == 1) {
        status = zcsl_string_accum_append_bytes(accum, piece.data(), count, nullptr);
        model += piece.substr(0, count);
      } else if (step == 2) {
        status = zcsl_string_accum_append_chars(accum, count % 3 ? "aéÈx" : nullptr, 2, nullptr);
        model += count % 3 ? "aé" : "";
      } else if (step == 3) {
        status = zcsl_string_accum_remove_range(accum, start, count ? count : UINT32_MAX, &size);
        model.erase(std::min<size_t>(start, model.size()), count ? count : UINT32_MAX);
        ASSERT_EQ(before.size() - model.size(), size);
      } else {
        status = zcsl_string_accum_set(accum, piece.c_str());
        model = piece.c_str();
      }
      ASSERT_TRUE(status == 0 || (status == 0x90050002 && memory.refused()));
      if (status) model = before;
      ASSERT_EQ(model, text_of(accum));
    }
    EXPECT_EQ(std::string(10, '#'), std::string(block + 90, 10));
    memory.restore();
  }
}

}  // namespace
