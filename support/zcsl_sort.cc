// The sort: an iterative quicksort with the middle record as pivot. The order in which records are
// compared and swapped within a range is part of its contract, because it decides how ties fall.
// What is free is the order of the ranges, which are disjoint: the smaller part is taken first, so
// that the pending ones never outnumber the bits of a count. Free is also how a range of distinct
// keys is brought into the one order that it has.

#include "support/zcsl_sort.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <span>
#include <utility>

#include "support/zcsl_error.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_sort_internal.h"

namespace {

// Records of a size that is known when this is compiled, in words. The exchange has no branch,
// which is what a sort of random keys would spend its time on.
template <size_t Words>
struct word_records {
  char* base;

  char* at(uint32_t index) const { return base + index * Words * sizeof(uint64_t); }
  void swap_if(bool wanted, uint32_t a, uint32_t b) const {
    const uint64_t mask = 0 - uint64_t{wanted};
    uint64_t first[Words];
    uint64_t second[Words];
    std::memcpy(first, at(a), sizeof first);
    std::memcpy(second, at(b), sizeof second);
    for (size_t i = 0; i < Words; ++i) {
      const uint64_t difference = (first[i] ^ second[i]) & mask;
      first[i] ^= difference;
      second[i] ^= difference;
    }
    std::memcpy(at(a), first, sizeof first);
    std::memcpy(at(b), second, sizeof second);
  }
};

struct byte_records {
  char* base;
  size_t size;

  char* at(uint32_t index) const { return base + index * size; }
  void swap_if(bool wanted, uint32_t a, uint32_t b) const {
    if (wanted && a != b) std::swap_ranges(at(a), at(a) + size, at(b));
  }
};

struct range {
  uint32_t low;
  uint32_t high;      // inclusive
  uint32_t depth;     // partitions that led to it
  uint32_t patience;  // the depth from which on it is looked at for a shorter way
};

// By the caller's comparison. Nothing is known about it, so every step is taken.
template <class Records>
struct opaque_order {
  Records records;
  zcsl_sort_compare compare;
  void* context;

  struct pivot {
    const void* record;
  };
  pivot pivot_at(uint32_t index) const { return {records.at(index)}; }
  bool less(uint32_t index, pivot than) const {
    return compare(records.at(index), than.record, context) < 0;
  }
  static constexpr bool tied(uint32_t, uint32_t) { return false; }
  static constexpr bool finish(range) { return false; }
};

// Records that are to be ordered by their ranks: where each stands, counted from the first of them,
// in the low half of an entry, and its rank in the high half.
using ranking = std::span<uint64_t>;

constexpr uint32_t rank_of(uint64_t entry) {
  return static_cast<uint32_t>(entry >> 32);
}

// Sorts a ranking. True when the wrapped differences of its ranks leave only this one order: none
// is 0, and the widest does not wrap.
bool sort_ranking(ranking entries) {
  std::sort(entries.begin(), entries.end());
  if (rank_of(entries.back()) - rank_of(entries.front()) > INT32_MAX) return false;
  const auto same = [](uint64_t a, uint64_t b) { return rank_of(a) == rank_of(b); };
  return std::adjacent_find(entries.begin(), entries.end(), same) == entries.end();
}

// Moves every record to its place, cycle by cycle; uses the ranking up.
template <class Records>
void arrange(const Records& records, uint32_t first, ranking entries) {
  for (uint32_t start = 0; start < entries.size(); ++start) {
    uint32_t place = start;
    for (;;) {
      const auto from = static_cast<uint32_t>(std::exchange(entries[place], place));
      if (from == start) break;
      records.swap_if(true, first + place, first + from);
      place = from;
    }
  }
}

// By the wrapped difference of two keys.
template <class Records>
struct key_order {
  Records records;
  uint32_t offset;
  bool descending;

  using pivot = uint32_t;
  uint32_t pivot_at(uint32_t index) const {
    uint32_t key;
    std::memcpy(&key, records.at(index) + offset, sizeof key);
    return key;
  }
  bool less(uint32_t index, uint32_t than) const {
    const uint32_t key = pivot_at(index);
    return static_cast<int32_t>(descending ? than - key : key - than) < 0;
  }
  bool tied(uint32_t a, uint32_t b) const { return pivot_at(a) == pivot_at(b); }

  uint64_t rank_at(uint32_t index) const {
    const uint32_t rank = pivot_at(index) ^ 0x80000000u;
    return descending ? ~rank : rank;
  }

  // Brings a range into its order when only one is possible. Without memory it is left as it was.
  // Rare, and kept out of line so that the loops that always run stay small.
  [[gnu::noinline, gnu::cold]] bool finish(range in) const {
    const uint32_t count = in.high - in.low + 1;
    zcsl_block_owner<uint64_t> block(
        static_cast<uint64_t*>(zcsl_memory_alloc(count * sizeof(uint64_t))));
    if (!block) return false;
    const ranking entries(block.get(), count);
    for (uint32_t i = 0; i < count; ++i) entries[i] = rank_at(in.low + i) << 32 | i;
    if (!sort_ranking(entries)) return false;
    arrange(records, in.low, entries);
    return true;
  }
};

// Puts the pivot of a range in its final place, everything less in front of it, and returns it.
template <class Records, class Order>
uint32_t partition(const Records& records, const Order& order, range in) {
  const auto pivot = order.pivot_at(in.high);
  uint32_t place = in.low;
  for (uint32_t i = in.low; i < in.high; ++i) {
    const bool less = order.less(i, pivot);
    records.swap_if(less, place, i);
    place += less;
  }
  records.swap_if(true, place, in.high);
  return place;
}

// The record in front of a range, where there is one, is a pivot that found every record of the
// range not less than itself. When the pivot of the range has the same key, no record is less than
// that one either, so the scan would move nothing.
template <class Records, class Order>
uint32_t place_pivot(const Records& records, const Order& order, range* in) {
  records.swap_if(true, in->low + ((in->high - in->low) >> 1), in->high);
  if (in->low == 0 || !order.tied(in->low - 1, in->high)) {
    ++in->depth;
    return partition(records, order, *in);
  }
  records.swap_if(true, in->low, in->high);
  return in->low;
}

// Keys in an unlucky order, such as rising and then falling, make nearly every pivot an extreme of
// its range, and the steps quadratic. A range that lies deeper than it should is therefore finished
// in another way where its keys allow it. Looking costs about as much as the partitions before it,
// and each further look waits for twice as many, so that ties, which do not allow it, hardly pay.
template <class Order>
bool finish_unlucky(const Order& order, range* in) {
  constexpr uint32_t worth_it = 128;
  if (in->depth < in->patience || in->high - in->low < worth_it) return false;
  in->patience *= 2;
  return order.finish(*in);
}

class pending_ranges {
 public:
  bool empty() const { return count_ == 0; }
  range pop() { return ranges_[--count_]; }
  // A part of a range, if there is something to sort.
  void push(range of, uint32_t low, uint32_t end) {
    if (end - low > 1) ranges_[count_++] = {low, end - 1, of.depth, of.patience};
  }

 private:
  range ranges_[64];  // two for every halving of a 32-bit count
  uint32_t count_ = 0;
};

template <class Records, class Order>
void qsort_iterative(const Records& records, const Order& order, uint32_t count, uint32_t needed) {
  pending_ranges pending;
  const auto halvings = static_cast<uint32_t>(std::bit_width(count));
  pending.push({.low = 0, .high = 0, .depth = 0, .patience = 2 * halvings}, 0, count);
  while (!pending.empty()) {
    range in = pending.pop();
    if (in.low >= needed || finish_unlucky(order, &in)) continue;
    const uint32_t pivot = place_pivot(records, order, &in);
    if (pivot - in.low < in.high - pivot) {
      pending.push(in, pivot + 1, in.high + 1);
      pending.push(in, in.low, pivot);
    } else {
      pending.push(in, in.low, pivot);
      pending.push(in, pivot + 1, in.high + 1);
    }
  }
}

// Calls `sort` with the records, in the form that swaps their size fastest.
template <class Sort>
void with_records(void* base, uint32_t record_size, Sort sort) {
  char* bytes = static_cast<char*>(base);
  switch (record_size) {
    case 8:
      return sort(word_records<1>{bytes});
    case 16:
      return sort(word_records<2>{bytes});
    case 24:
      return sort(word_records<3>{bytes});
    default:
      return sort(byte_records{bytes, record_size});
  }
}

constexpr zvsdk_status s_invalid_arg = ZCSL_ERROR(zcsl_package_utils, zcsl_code_invalid_arg);

}  // namespace

zvsdk_status zcsl_utils_qsort(void* base, uint32_t count, uint32_t record_size,
                              zcsl_sort_compare compare, void* context) {
  if (!base || !compare || record_size == 0) return s_invalid_arg;
  with_records(base, record_size, [&]<class Records>(Records records) {
    qsort_iterative(records, opaque_order<Records>{records, compare, context}, count, count);
  });
  return 0;
}

zvsdk_status zcsl_sort_by_key(void* base, uint32_t count, uint32_t record_size, zcsl_sort_key key,
                              uint32_t needed) {
  const bool key_inside = record_size >= sizeof(int32_t) && key.offset <= record_size - 4;
  if (!base || !key_inside) return s_invalid_arg;
  with_records(base, record_size, [&]<class Records>(Records records) {
    qsort_iterative(records, key_order<Records>{records, key.offset, key.descending}, count,
                    needed);
  });
  return 0;
}
