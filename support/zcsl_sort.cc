// The sort: an iterative quicksort with the middle record as pivot. The order in which records are
// compared and swapped within a range is part of its contract, because it decides how ties fall.
// What is free is the order of the ranges, which are disjoint: the smaller part is taken first, so
// that the pending ones never outnumber the bits of a count.

#include "support/zcsl_sort.h"

#include <cstring>

#include "support/zcsl_error.h"
#include "support/zcsl_sort_internal.h"

namespace {

// Records of a size that is known when this is compiled.
template <size_t Size>
struct fixed_records {
  char* base;

  char* at(uint32_t index) const { return base + index * Size; }
  void swap(uint32_t a, uint32_t b) const {
    char first[Size];
    char second[Size];
    std::memcpy(first, at(a), Size);
    std::memcpy(second, at(b), Size);
    std::memcpy(at(a), second, Size);
    std::memcpy(at(b), first, Size);
  }
};

struct sized_records {
  char* base;
  size_t size;

  char* at(uint32_t index) const { return base + index * size; }
  void swap(uint32_t a, uint32_t b) const {
    char* first = at(a);
    char* second = at(b);
    for (size_t i = 0; i < size; ++i) {
      const char byte = first[i];
      first[i] = second[i];
      second[i] = byte;
    }
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
    if (order.less(i, pivot)) records.swap(place++, i);
  }
  records.swap(place, in.high);
  return place;
}

// The record in front of a range, where there is one, is a pivot that found every record of the
// range not less than itself. When the pivot of the range has the same key, no record is less than
// that one either, so the scan would move nothing.
template <class Records, class Order>
uint32_t place_pivot(const Records& records, const Order& order, range in) {
  records.swap(in.low + ((in.high - in.low) >> 1), in.high);
  if (in.low == 0 || !order.tied(in.low - 1, in.high)) return partition(records, order, in);
  records.swap(in.low, in.high);
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
      return sort(fixed_records<8>{bytes});
    case 16:
      return sort(fixed_records<16>{bytes});
    case 24:
      return sort(fixed_records<24>{bytes});
    default:
      return sort(sized_records{bytes, record_size});
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
