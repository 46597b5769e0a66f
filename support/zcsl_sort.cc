// The sort: an iterative quicksort with the middle record as pivot. The order in which records are
// compared and swapped within a range is part of its contract, because it decides how ties fall.
// What is free is the order of the ranges, which are disjoint: the smaller part is taken first, so
// that the pending ones never outnumber the bits of a count.

#include "support/zcsl_sort.h"

#include <algorithm>
#include <cstring>

#include "support/zcsl_error.h"
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
};

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
};

struct range {
  uint32_t low;
  uint32_t high;  // inclusive
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
uint32_t place_pivot(const Records& records, const Order& order, range in) {
  records.swap_if(true, in.low + ((in.high - in.low) >> 1), in.high);
  if (in.low == 0 || !order.tied(in.low - 1, in.high)) return partition(records, order, in);
  records.swap_if(true, in.low, in.high);
  return in.low;
}

class pending_ranges {
 public:
  bool empty() const { return count_ == 0; }
  range pop() { return ranges_[--count_]; }
  void push(uint32_t low, uint32_t end) {
    if (end - low > 1) ranges_[count_++] = {low, end - 1};
  }

 private:
  range ranges_[64];  // two for every halving of a 32-bit count
  uint32_t count_ = 0;
};

template <class Records, class Order>
void qsort_iterative(const Records& records, const Order& order, uint32_t count, uint32_t needed) {
  pending_ranges pending;
  pending.push(0, count);
  while (!pending.empty()) {
    const range in = pending.pop();
    if (in.low >= needed) continue;
    const uint32_t pivot = place_pivot(records, order, in);
    if (pivot - in.low < in.high - pivot) {
      pending.push(pivot + 1, in.high + 1);
      pending.push(in.low, pivot);
    } else {
      pending.push(in.low, pivot);
      pending.push(pivot + 1, in.high + 1);
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
