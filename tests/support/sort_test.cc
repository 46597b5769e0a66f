// The sort against a plain model of its steps: the permutation of equal records must come out to
// the byte, also where the comparison is no consistent order and where the sort takes short cuts.

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <random>
#include <span>
#include <vector>

#include "support/zcsl_random.h"
#include "support/zcsl_sort.h"
#include "support/zcsl_sort_internal.h"
#include "tests/common/failing_memory.h"

namespace {

using keys = std::vector<int32_t>;

struct narrow {
  int32_t key;
  uint32_t index;  // where it stood before
};

template <size_t Head>
struct wide {
  char head[Head];
  int32_t key;
  uint32_t index;
};

// Where the records stood that a sort of them has brought to each place.
template <class Record>
std::vector<uint32_t> permutation(const keys& from, auto sort) {
  std::vector<Record> records(from.size());
  for (uint32_t i = 0; i < from.size(); ++i) {
    records[i].key = from[i];
    records[i].index = i;
  }
  sort(std::span(records));
  std::vector<uint32_t> indexes;
  for (const Record& record : records) indexes.push_back(record.index);
  return indexes;
}

int32_t difference(int32_t a, int32_t b) {
  return static_cast<int32_t>(static_cast<uint32_t>(a) - static_cast<uint32_t>(b));
}

// The plain steps, recursively.
void model_sort(std::span<narrow> records, bool descending) {
  if (records.size() < 2) return;
  std::swap(records[(records.size() - 1) / 2], records.back());
  const int32_t pivot = records.back().key;
  size_t place = 0;
  for (narrow& each : records.first(records.size() - 1)) {
    const bool less = (descending ? difference(pivot, each.key) : difference(each.key, pivot)) < 0;
    if (less) std::swap(records[place++], each);
  }
  std::swap(records[place], records.back());
  model_sort(records.first(place), descending);
  model_sort(records.subspan(place + 1), descending);
}

std::vector<uint32_t> model_permutation(const keys& from, bool descending) {
  return permutation<narrow>(from, [=](auto records) { model_sort(records, descending); });
}

uint64_t s_calls;

template <class Record>
int32_t compare_records(const void* a, const void* b, void* descending) {
  ++s_calls;
  if (descending) std::swap(a, b);
  return difference(static_cast<const Record*>(a)->key, static_cast<const Record*>(b)->key);
}

template <class Record>
std::vector<uint32_t> sort_permutation(const keys& from, bool descending) {
  return permutation<Record>(from, [&](auto records) {
    EXPECT_EQ(0u, zcsl_utils_qsort(records.data(), records.size(), sizeof(Record),
                                   compare_records<Record>, descending ? &descending : nullptr));
  });
}

template <class Record>
std::vector<uint32_t> key_permutation(const keys& from, bool descending, uint32_t needed) {
  return permutation<Record>(from, [=](auto records) {
    EXPECT_EQ(0u, zcsl_sort_by_key(records.data(), records.size(), sizeof(Record),
                                   {offsetof(Record, key), descending}, needed));
  });
}

int64_t pipe(int64_t i, int64_t n) {
  return i < n / 2 ? 2 * i : 2 * (n - i) - 1;
}

struct shape {
  const char* name;
  int64_t (*key)(int64_t i, int64_t count, uint32_t random);
};

const shape s_shapes[] = {
    {"random", [](int64_t, int64_t, uint32_t r) { return int64_t{r % 5000}; }},
    {"few values", [](int64_t, int64_t, uint32_t r) { return int64_t{r % 4}; }},
    {"equal", [](int64_t, int64_t, uint32_t) { return int64_t{7}; }},
    {"falling", [](int64_t i, int64_t, uint32_t) { return -i; }},
    {"rising ties", [](int64_t i, int64_t, uint32_t) { return i / 9; }},
    {"saw", [](int64_t i, int64_t, uint32_t) { return i % 50 * 50 + i / 50; }},
    {"organ pipe", [](int64_t i, int64_t n, uint32_t) { return pipe(i, n); }},
    {"organ pipe of ties", [](int64_t i, int64_t n, uint32_t) { return std::min(i, n - i); }},
    {"organ pipe that wraps",
     [](int64_t i, int64_t n, uint32_t) { return pipe(i, n) + INT32_MAX - 700; }},
    {"wrapping", [](int64_t, int64_t, uint32_t r) { return int64_t{r}; }},
    {"wrapping ties", [](int64_t, int64_t, uint32_t r) { return int64_t{r % 5} * 0x33333333; }},
};

keys make_keys(const shape& from, uint32_t count) {
  std::mt19937 random(count);
  keys made;
  for (uint32_t i = 0; i < count; ++i) {
    made.push_back(static_cast<int32_t>(from.key(i, count, static_cast<uint32_t>(random()))));
  }
  return made;
}

template <class Record>
void expect_model(const keys& from, bool descending) {
  const std::vector<uint32_t> expected = model_permutation(from, descending);
  EXPECT_EQ(expected, sort_permutation<Record>(from, descending)) << sizeof(Record);
  EXPECT_EQ(expected, key_permutation<Record>(from, descending, UINT32_MAX)) << sizeof(Record);
}

TEST(sort, gives_the_permutation_of_the_plain_steps) {
  for (const shape& each : s_shapes) {
    for (uint32_t count : {1u, 2u, 3u, 4u, 10u, 100u, 1500u}) {
      SCOPED_TRACE(testing::Message() << each.name << ", " << count);
      const keys from = make_keys(each, count);
      for (bool descending : {false, true}) {
        expect_model<narrow>(from, descending);
        expect_model<wide<8>>(from, descending);
        expect_model<wide<16>>(from, descending);
        expect_model<wide<12>>(from, descending);
      }
    }
  }
}

TEST(sort, places_that_are_needed_are_final_and_the_rest_is_kept) {
  for (const shape& each : s_shapes) {
    const keys from = make_keys(each, 700);
    const std::vector<uint32_t> expected = model_permutation(from, true);
    for (uint32_t needed : {0u, 1u, 25u, 350u, 699u}) {
      SCOPED_TRACE(testing::Message() << each.name << ", " << needed << " needed");
      const std::vector<uint32_t> found = key_permutation<wide<16>>(from, true, needed);
      EXPECT_TRUE(std::equal(found.begin(), found.begin() + needed, expected.begin()));
      EXPECT_TRUE(std::is_permutation(found.begin(), found.end(), expected.begin()));
    }
  }
}

// Without their short cuts, each of these would take a million squared steps.
TEST(sort, neither_ties_nor_unlucky_orders_are_slow) {
  constexpr uint32_t count = 1000000;
  for (uint32_t values : {0u, 1u, 2u, 7u}) {
    keys from(count);
    for (uint32_t i = 0; i < count; ++i) {
      from[i] = static_cast<int32_t>(values ? i * 31 % values : pipe(i, count));
    }
    const std::vector<uint32_t> found = key_permutation<narrow>(from, false, UINT32_MAX);
    EXPECT_TRUE(std::is_sorted(found.begin(), found.end(),
                               [&](uint32_t a, uint32_t b) { return from[a] < from[b]; }));
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
  const std::vector<uint32_t> expected = model_permutation(from, false);
  s_calls = 0;
  EXPECT_EQ(expected, sort_permutation<narrow>(from, false));
  EXPECT_EQ(uint64_t{count} * (count - 1) / 2, s_calls);
  failing_memory memory;
  EXPECT_EQ(1u, memory.for_each_failure([&] {
    EXPECT_EQ(expected, key_permutation<wide<12>>(from, false, UINT32_MAX));
  }));
}

TEST(sort, refuses_what_it_cannot_sort) {
  int32_t key = 0;
  EXPECT_EQ(0x900F0001u, zcsl_utils_qsort(&key, 1, 0, compare_records<narrow>, nullptr));
  EXPECT_EQ(0x900F0001u, zcsl_utils_qsort(&key, 1, 4, nullptr, nullptr));
  EXPECT_EQ(0x900F0001u, zcsl_sort_by_key(&key, 1, 4, {1, false}, 1));
}

TEST(random, states_give_fixed_sequences) {
  uint32_t seed = 1;
  for (uint32_t expected : {41, 18467, 6334, 26500, 19169}) {
    EXPECT_EQ(expected, zcsl_random_rand(&seed));
  }
}

}  // namespace
