// The sort against a plain model of its steps: the permutation of equal records must come out to
// the byte, also where the comparison is no consistent order and where the sort takes its short
// cuts.

#include <gtest/gtest.h>

#include <cstring>
#include <functional>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "support/zcsl_random.h"
#include "support/zcsl_sort.h"
#include "support/zcsl_sort_internal.h"
#include "support/zcsl_time.h"

namespace {

using keys = std::vector<int32_t>;

struct entry {
  int32_t key;
  uint32_t index;  // where it stood before
  bool operator==(const entry&) const = default;
};

std::vector<entry> entries_of(const keys& from) {
  std::vector<entry> entries;
  for (int32_t key : from) entries.push_back({key, static_cast<uint32_t>(entries.size())});
  return entries;
}

int32_t wrapped_difference(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

// The plain steps, recursively.
void model_sort(std::vector<entry>& entries, int64_t low, int64_t high, bool descending) {
  if (low >= high) return;
  std::swap(entries[low + ((high - low) >> 1)], entries[high]);
  int64_t place = low - 1;
  for (int64_t j = low; j < high; ++j) {
    const int32_t difference = descending ? wrapped_difference(entries[high].key, entries[j].key)
                                          : wrapped_difference(entries[j].key, entries[high].key);
    if (difference < 0) std::swap(entries[++place], entries[j]);
  }
  std::swap(entries[place + 1], entries[high]);
  model_sort(entries, low, place, descending);
  model_sort(entries, place + 2, high, descending);
}

std::vector<entry> model_sorted(const keys& from, bool descending) {
  std::vector<entry> entries = entries_of(from);
  model_sort(entries, 0, static_cast<int64_t>(entries.size()) - 1, descending);
  return entries;
}

// The same entries as records of another size, with the key at another place.
class records {
 public:
  records(const keys& from, uint32_t size, uint32_t offset)
      : m_bytes(from.size() * size, 0x5A), m_size(size), m_offset(offset) {
    const std::vector<entry> entries = entries_of(from);
    for (size_t i = 0; i < from.size(); ++i) {
      std::memcpy(at(i) + offset, &entries[i].key, 4);
      if (size >= 8) std::memcpy(at(i) + index_offset(), &entries[i].index, 4);
    }
  }
  std::vector<entry> read() const {
    std::vector<entry> entries(m_bytes.size() / m_size);
    for (size_t i = 0; i < entries.size(); ++i) {
      const char* record = m_bytes.data() + i * m_size;
      std::memcpy(&entries[i].key, record + m_offset, 4);
      if (m_size >= 8) std::memcpy(&entries[i].index, record + index_offset(), 4);
    }
    return entries;
  }
  void* data() { return m_bytes.data(); }
  uint32_t count() const { return static_cast<uint32_t>(m_bytes.size() / m_size); }
  uint32_t size() const { return m_size; }
  uint32_t offset() const { return m_offset; }

 private:
  char* at(size_t i) { return m_bytes.data() + i * m_size; }
  size_t index_offset() const { return m_offset >= 4 ? 0 : m_size - 4; }

  std::vector<char> m_bytes;
  uint32_t m_size;
  uint32_t m_offset;
};

struct compare_context {
  uint32_t offset;
  bool descending;
  uint64_t calls = 0;
};

int32_t compare_keys(const void* a, const void* b, void* context) {
  auto& how = *static_cast<compare_context*>(context);
  ++how.calls;
  int32_t key_a, key_b;
  std::memcpy(&key_a, static_cast<const char*>(a) + how.offset, 4);
  std::memcpy(&key_b, static_cast<const char*>(b) + how.offset, 4);
  return how.descending ? wrapped_difference(key_b, key_a) : wrapped_difference(key_a, key_b);
}

struct shape {
  const char* name;
  std::function<int32_t(uint32_t i, uint32_t count, uint32_t random)> key;
};

const shape s_shapes[] = {
    {"random", [](uint32_t, uint32_t, uint32_t r) { return static_cast<int32_t>(r % 5000); }},
    {"few values", [](uint32_t, uint32_t, uint32_t r) { return static_cast<int32_t>(r % 4); }},
    {"equal", [](uint32_t, uint32_t, uint32_t) { return 7; }},
    {"rising", [](uint32_t i, uint32_t, uint32_t) { return static_cast<int32_t>(i); }},
    {"falling", [](uint32_t i, uint32_t, uint32_t) { return -static_cast<int32_t>(i); }},
    {"rising ties", [](uint32_t i, uint32_t, uint32_t) { return static_cast<int32_t>(i / 9); }},
    {"organ pipe",
     [](uint32_t i, uint32_t n, uint32_t) { return static_cast<int32_t>(std::min(i, n - i)); }},
    {"wrapping", [](uint32_t, uint32_t, uint32_t r) { return static_cast<int32_t>(r); }},
    {"wrapping ties",
     [](uint32_t, uint32_t, uint32_t r) { return static_cast<int32_t>(r % 5 * 0x33333333u); }},
    {"outliers",
     [](uint32_t i, uint32_t, uint32_t r) {
       return i % 50 == 3 ? INT32_MIN : r % 40 == 0 ? INT32_MAX : 0;
     }},
};

keys make_keys(const shape& from, uint32_t count, std::mt19937& random) {
  keys made;
  for (uint32_t i = 0; i < count; ++i) {
    made.push_back(from.key(i, count, static_cast<uint32_t>(random())));
  }
  return made;
}

TEST(sort, gives_the_permutation_of_the_plain_steps) {
  std::mt19937 random(1);
  for (const shape& each : s_shapes) {
    for (uint32_t count : {1u, 2u, 3u, 4u, 10u, 100u, 1500u}) {
      const keys from = make_keys(each, count, random);
      for (bool descending : {false, true}) {
        const std::vector<entry> expected = model_sorted(from, descending);
        for (auto [size, offset] : {std::pair{8u, 0u}, {16u, 12u}, {24u, 16u}, {13u, 3u}}) {
          SCOPED_TRACE(testing::Message() << each.name << ", " << count << " of " << size);
          records plain(from, size, offset), keyed = plain;
          compare_context context{offset, descending};
          ASSERT_EQ(0u, zcsl_utils_qsort(plain.data(), count, size, compare_keys, &context));
          ASSERT_EQ(expected, plain.read());
          ASSERT_EQ(0u, zcsl_sort_by_key(keyed.data(), count, size, {offset, descending}, count));
          ASSERT_EQ(expected, keyed.read());
        }
      }
    }
  }
}

TEST(sort, places_that_are_needed_are_final_and_the_rest_is_kept) {
  std::mt19937 random(2);
  for (const shape& each : s_shapes) {
    const keys from = make_keys(each, 700, random);
    std::vector<entry> expected = model_sorted(from, true);
    for (uint32_t needed : {0u, 1u, 25u, 350u, 699u, 5000u}) {
      SCOPED_TRACE(testing::Message() << each.name << ", " << needed << " needed");
      records cut(from, 24, 16);
      ASSERT_EQ(0u, zcsl_sort_by_key(cut.data(), 700, 24, {16, true}, needed));
      std::vector<entry> found = cut.read();
      const size_t exact = std::min<size_t>(needed, found.size());
      ASSERT_TRUE(std::equal(found.begin(), found.begin() + exact, expected.begin()));
      ASSERT_TRUE(std::is_permutation(found.begin(), found.end(), expected.begin()));
    }
  }
}

// A million equal keys would take a million squared steps without the short cut.
TEST(sort, many_ties_are_nearly_free) {
  for (uint32_t values : {1u, 2u, 7u}) {
    keys from(1000000);
    for (size_t i = 0; i < from.size(); ++i) from[i] = static_cast<int32_t>(i * 31 % values);
    records tied(from, 8, 0);
    ASSERT_EQ(0u, zcsl_sort_by_key(tied.data(), tied.count(), 8, {0, false}, tied.count()));
    const std::vector<entry> found = tied.read();
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end(),
                               [](const entry& a, const entry& b) { return a.key < b.key; }));
  }
}

// The pivot is the smallest of every range, so that each leaves all but one record on one side.
TEST(sort, lopsided_ranges_do_not_pile_up) {
  constexpr uint32_t count = 6000;
  keys from(count);
  std::vector<uint32_t> places(count);
  std::iota(places.begin(), places.end(), 0);
  for (uint32_t low = 0; low < count; ++low) {
    const uint32_t middle = low + ((count - 1 - low) >> 1);
    from[places[middle]] = static_cast<int32_t>(low);
    std::swap(places[middle], places[count - 1]);
    std::swap(places[low], places[count - 1]);
  }
  records lopsided(from, 8, 0);
  compare_context context{0, false};
  ASSERT_EQ(0u, zcsl_utils_qsort(lopsided.data(), count, 8, compare_keys, &context));
  EXPECT_EQ(uint64_t{count} * (count - 1) / 2, context.calls);
  EXPECT_EQ(model_sorted(from, false), lopsided.read());
}

TEST(sort, refuses_what_it_cannot_sort) {
  int32_t key = 0;
  compare_context context{0, false};
  EXPECT_EQ(0x900F0001u, zcsl_utils_qsort(nullptr, 1, 4, compare_keys, &context));
  EXPECT_EQ(0x900F0001u, zcsl_utils_qsort(&key, 1, 4, nullptr, &context));
  EXPECT_EQ(0x900F0001u, zcsl_utils_qsort(&key, 1, 0, compare_keys, &context));
  EXPECT_EQ(0x900F0001u, zcsl_sort_by_key(nullptr, 1, 4, {0, false}, 1));
  EXPECT_EQ(0x900F0001u, zcsl_sort_by_key(&key, 1, 4, {1, false}, 1));
  EXPECT_EQ(0x900F0001u, zcsl_sort_by_key(&key, 1, 3, {0, false}, 1));
  EXPECT_EQ(0u, zcsl_utils_qsort(&key, 1, 4, compare_keys, &context));
  EXPECT_EQ(0u, context.calls);
}

TEST(random, states_give_fixed_sequences) {
  uint32_t seed = 1;
  std::vector<uint32_t> drawn;
  for (int i = 0; i < 5; ++i) drawn.push_back(zcsl_random_rand(&seed));
  EXPECT_EQ((std::vector<uint32_t>{41, 18467, 6334, 26500, 19169}), drawn);

  // The state of the process steps like any other; where it stands depends on who drew before.
  const uint32_t first = zcsl_random_rand(nullptr);
  const uint32_t second = zcsl_random_rand(nullptr);
  uint32_t state = 0x12345678;
  uint32_t previous = 0;
  bool found = false;
  for (int i = 0; i < 1000 && !found; ++i) {
    const uint32_t next = zcsl_random_rand(&state);
    found = i > 0 && previous == first && next == second;
    previous = next;
  }
  EXPECT_TRUE(found);
}

TEST(time_family, the_clock_runs) {
  const uint64_t first = zcsl_time_get_microseconds();
  EXPECT_GT(first, 1577836800u * uint64_t{1000000});  // 2020
  EXPECT_GE(zcsl_time_get_microseconds() + 1000000, first);
}

}  // namespace
