// The sort against a plain model of its steps: the permutation of equal records must come out
// exactly, also where the comparison is no consistent order and where the sort takes short cuts.

#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <random>
#include <span>
#include <vector>

#include "support/zcsl_sort.h"
#include "support/zcsl_sort_internal.h"
#include "tests/common/failing_memory.h"

namespace {

using numbers = std::vector<uint32_t>;

// A record is so many words, the last two of which are its key and where it stood before.
struct record_order {
  uint32_t words;
  bool descending = false;
  uint64_t calls = 0;

  int32_t compare(uint32_t a, uint32_t b) {
    ++calls;
    return static_cast<int32_t>(descending ? b - a : a - b);
  }
};

int32_t compare_records(const void* a, const void* b, void* context) {
  auto* const order = static_cast<record_order*>(context);
  const auto key = [&](auto* of) { return static_cast<const uint32_t*>(of)[order->words - 2]; };
  return order->compare(key(a), key(b));
}

numbers counting(size_t count) {
  numbers all(count);
  std::iota(all.begin(), all.end(), 0);
  return all;
}

// Where the records stood that a sort of them has brought to each place.
numbers permutation(const numbers& keys, uint32_t words, auto sort) {
  numbers records, places;
  for (uint32_t i = 0; i < keys.size(); ++i) {
    records.resize(records.size() + words - 2);
    records.insert(records.end(), {keys[i], i});
  }
  EXPECT_EQ(0u, sort(records.data(), static_cast<uint32_t>(keys.size()), words * 4));
  for (size_t i = words - 1; i < records.size(); i += words) places.push_back(records[i]);
  return places;
}

numbers by_key(const numbers& keys, const record_order& order, size_t needed) {
  return permutation(keys, order.words, [&](auto... records) {
    const zcsl_sort_key key{order.words * 4 - 8, order.descending};
    return zcsl_sort_by_key(records..., key, static_cast<uint32_t>(needed));
  });
}

// The plain steps, recursively.
void model_sort(const numbers& keys, record_order* order, std::span<uint32_t> places) {
  if (places.size() < 2) return;
  std::swap(places[(places.size() - 1) / 2], places.back());
  size_t middle = 0;
  for (uint32_t& each : places.first(places.size() - 1)) {
    if (order->compare(keys[each], keys[places.back()]) < 0) std::swap(places[middle++], each);
  }
  std::swap(places[middle], places.back());
  model_sort(keys, order, places.first(middle));
  model_sort(keys, order, places.subspan(middle + 1));
}

void expect_model(const numbers& keys, const record_order& order) {
  const size_t count = keys.size();
  record_order by_model = order, by_comparison = order;
  numbers expected = counting(count);
  model_sort(keys, &by_model, expected);
  EXPECT_EQ(expected, permutation(keys, order.words, [&](auto... records) {
              return zcsl_utils_qsort(records..., compare_records, &by_comparison);
            }));
  EXPECT_EQ(by_model.calls, by_comparison.calls);
  for (size_t needed : {count, count / 60, count / 2, count - 1}) {
    numbers found = by_key(keys, order, needed);
    EXPECT_TRUE(std::equal(found.begin(), found.begin() + needed, expected.begin())) << needed;
    std::ranges::sort(found);
    EXPECT_EQ(counting(count), found);
  }
}

// The ways in which keys lie, and what is multiplied with them to make them fall, tie or wrap.
constexpr uint32_t s_shapes = 7;
constexpr uint32_t s_factors[] = {1, UINT32_MAX, 0x400000, 0x33333333};

numbers make_keys(uint32_t shape, uint32_t count, uint32_t factor) {
  std::mt19937 random(count);
  numbers keys;
  for (uint32_t i = 0; i < count; ++i) {
    const auto r = static_cast<uint32_t>(random());
    const uint32_t organ_pipe = i < count / 2 ? 2 * i : 2 * (count - i) - 1;
    const uint32_t ties = std::min(i, count - i), saw = i % 50 * 50 + i / 50;
    const uint32_t all[s_shapes] = {organ_pipe, r % 4, ties, 7, i / 9, saw, r};
    keys.push_back(all[shape] * factor);
  }
  return keys;
}

TEST(sort, gives_the_permutation_of_the_plain_steps) {
  for (uint32_t shape = 0; shape < s_shapes; ++shape) {
    for (uint32_t factor : s_factors) {
      for (uint32_t count : {1, 2, 3, 4, 10, 100, 700}) {
        SCOPED_TRACE(testing::Message() << shape << " times " << factor << ", " << count);
        const numbers keys = make_keys(shape, count, factor);
        for (uint32_t words : {2, 4, 6, 5})
          expect_model(keys, {words, (words / 2 + shape) % 2 != 0});
      }
    }
  }
}

// Without their short cuts, each of these would take a million squared steps.
TEST(sort, neither_ties_nor_unlucky_orders_are_slow) {
  for (uint32_t shape : {0, 1, 3}) {
    const numbers keys = make_keys(shape, 1000000, 1);
    const numbers found = by_key(keys, {2}, keys.size());
    EXPECT_TRUE(std::ranges::is_sorted(found, {}, [&](uint32_t place) { return keys[place]; }));
  }
}

// The pivot is the smallest of every range, so that each leaves all but one record on one side.
TEST(sort, lopsided_ranges_do_not_pile_up) {
  constexpr uint32_t count = 2000;
  numbers keys(count), places = counting(count);
  for (uint32_t low = 0; low < count; ++low) {
    const uint32_t middle = low + ((count - 1 - low) >> 1);
    keys[places[middle]] = low;
    std::swap(places[middle], places[count - 1]);
    std::swap(places[low], places[count - 1]);
  }
  failing_memory memory;
  EXPECT_EQ(4u, memory.for_each_failure([&] { expect_model(keys, {5}); }));
}

}  // namespace
