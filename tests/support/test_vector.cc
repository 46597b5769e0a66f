// The two kinds of vector against one model, their sorted state and walks; the blocks of the record
// vector; the stack.

#include <deque>

#include "support/zcsl_sort.h"
#include "support/zcsl_vector2_internal.h"
#include "tests/support/container_fixture.h"

namespace {

// Higher keys first. The order looks at the key only, so that equal records can be told apart.
struct record {
  int32_t key;
  uint32_t id;
  bool operator==(const record&) const = default;
};
using records = std::vector<record>;

int32_t by_key(const void* a, const void* b) {
  return static_cast<const record*>(b)->key - static_cast<const record*>(a)->key;
}
void note_freed(void* item) {
  g_freed.push_back(item ? static_cast<record*>(item)->id : UINT64_MAX);
}
int32_t note_visited(void* visited, void* item) {
  static_cast<records*>(visited)->push_back(*static_cast<record*>(item));
  return static_cast<record*>(item)->id != 13;
}

// What the pointer vectors point to.
record* keep(record r) {
  static std::deque<record> kept;
  return &kept.emplace_back(r);
}

struct pointer_kind {
  using owner = zcsl_vector_owner;
  static constexpr uint32_t flag_sets[] = {0x00, 0x01, 0x10, 0x11};
  static constexpr bool has_ranges = false;
  static constexpr auto getindex = zcsl_vector_getindex;
  static constexpr auto swap = zcsl_vector_swapindex;
  static constexpr auto sort = zcsl_vector_sort;
  static constexpr auto walk = zcsl_vector_foreach;
  static auto create(auto v, uint32_t f) { return zcsl_vector_create(v, f, by_key, note_freed); }
  static constexpr auto add = zcsl_vector_add;
  static constexpr auto insert = zcsl_vector_insert;
  static auto remove(auto v, uint32_t i, uint32_t) { return zcsl_vector_deleteindex(v, i); }
  static auto find(auto v, uint32_t, record* r, auto i) { return zcsl_vector_find(v, r, i); }
  static auto sort_by_key(auto v) { return zcsl_vector_sort(v, by_key, 0); }
};

struct record_kind {
  using owner = zcsl_vector2_owner;
  static constexpr uint32_t flag_sets[] = {0x00, 0x10, 0x20, 0x31}, size = sizeof(record);
  static constexpr bool has_ranges = true;
  static constexpr auto getindex = zcsl_vector2_getindex;
  static constexpr auto swap = zcsl_vector2_swapindex;
  static constexpr auto sort = zcsl_vector2_sort;
  static constexpr auto walk = zcsl_vector2_foreach;
  static constexpr auto remove = zcsl_vector2_deleterange;
  static constexpr auto find = zcsl_vector2_hintfind;
  static auto create(auto v, uint32_t f) {
    return zcsl_vector2_create(v, size, f, by_key, note_freed);
  }
  static auto add(auto v, record* r) {
    uint32_t index = UINT32_MAX;
    const zvsdk_status status = zcsl_vector2_add(v, r, size, &index);
    EXPECT_TRUE(status || *r == zcsl_vector2_view<record>(v)[index]);
    return status;
  }
  static auto insert(auto v, uint32_t i, record* r) { return zcsl_vector2_insert(v, i, r, size); }
  static auto sort_by_key(auto v) { return zcsl_vector2_sort_by_key(v, by_key, 0, 0, UINT32_MAX); }
};

template <class Kind>
class vector_test : public container_test {
 protected:
  // A vector that the fixture owns; the next one takes its place.
  auto make(uint32_t flags, const records& start = {}) {
    EXPECT_EQ(0u, Kind::create(vector_.out(), flags));
    for (const record& r : start) EXPECT_EQ(0u, Kind::add(vector_.get(), keep(r)));
    return vector_.get();
  }
  records content() {
    records all;
    void* item = nullptr;
    for (uint32_t i = 0; !Kind::getindex(vector_.get(), i, &item); ++i) {
      all.push_back(*static_cast<record*>(item));
    }
    return all;
  }

  typename Kind::owner vector_;
};

using pointer_vector_test = vector_test<pointer_kind>;
using record_vector_test = vector_test<record_kind>;
using vector_kinds = testing::Types<pointer_kind, record_kind>;
TYPED_TEST_SUITE(vector_test, vector_kinds);

// The rules of both kinds on a plain array.
struct vector_model {
  records all;
  bool sorted;
  bool unique;

  // Once round from the hint; in a sorted vector the first, wherever the search starts.
  size_t find(size_t hint, const record& r) const {
    const size_t start = !sorted && hint < all.size() ? hint : 0;
    for (size_t i = 0; i < all.size(); ++i) {
      const size_t place = (start + i) % all.size();
      if (all[place].key == r.key) return place;
    }
    return all.size();
  }
  void add(const record& r) {
    const auto behind = std::ranges::upper_bound(all, r.key, std::greater(), &record::key);
    const size_t equal = find(0, r);
    if (unique && equal < all.size()) {
      all[equal] = r;
    } else {
      all.insert(sorted ? behind : unique ? all.begin() : all.end(), r);
    }
  }
  void insert(size_t index, const record& r) {
    all.insert(all.begin() + std::min(index, all.size()), r);
    sorted = sorted && std::ranges::is_sorted(all, std::greater(), &record::key);
  }
  void remove(size_t first, size_t last) {
    last = std::min(last + 1, all.size());
    if (first < last) all.erase(all.begin() + first, all.begin() + last);
  }
  void sort() {
    const auto compare = [](const void* a, const void* b, void*) { return by_key(a, b); };
    const uint32_t count = std::exchange(sorted, true) ? 0 : uint32_t(all.size());
    zcsl_utils_qsort(all.data(), count, sizeof(record), compare, nullptr);
  }
};

TYPED_TEST(vector_test, behaves_like_its_model) {
  for (const uint32_t flags : TypeParam::flag_sets) {
    SCOPED_TRACE(flags);
    g_freed.clear();
    auto* const vector = this->make(flags);
    vector_model model{{}, (flags & 0x10) != 0, (flags & 0x20) != 0};
    std::vector<uint64_t> given;
    for (uint32_t step = 0; step < 3000; ++step) {
      record* const r = keep({int32_t(this->random(60)), step});
      const uint32_t size = static_cast<uint32_t>(model.all.size());
      const uint32_t index = this->random(size + 2), choice = this->random(100);
      const uint32_t last = TypeParam::has_ranges ? index + this->random(4) - 1 : index;
      const bool adds = choice < 48;
      const auto put = [&] {
        return adds ? TypeParam::add(vector, r) : TypeParam::insert(vector, index, r);
      };
      uint32_t found = size;
      if (choice < 50) {
        if (this->lacks_memory(0, put)) continue;
        adds ? model.add(*r) : model.insert(index, *r);
        given.push_back(step);
      } else if (choice < 53) {
        ASSERT_EQ(0u, TypeParam::sort_by_key(vector));
        model.sort();
      } else if (choice < 78) {
        ASSERT_EQ(index < size ? 0 : zcsl_warn_end_of_range,
                  TypeParam::remove(vector, index, last));
        model.remove(index, last);
      } else {
        const uint32_t expected = uint32_t(model.find(TypeParam::has_ranges ? index : 0, *r));
        ASSERT_EQ(expected < size ? 0 : zcsl_warn_not_found,
                  TypeParam::find(vector, index, r, &found));
        ASSERT_EQ(expected, found);
      }
    }
    ASSERT_EQ(model.all, this->content());
    this->vector_.reset();
    std::ranges::sort(g_freed);
    EXPECT_EQ(given, g_freed) << "each once";
  }
}

TYPED_TEST(vector_test, sorts_when_there_is_cause_and_walks) {
  const record a{1, 1}, b{2, 2}, c{3, 3}, stop{0, 13};
  auto* const vector = this->make(0, {a, c, b});
  const auto sort = [&](zcsl_vector_compare_fn compare, int force) {
    EXPECT_EQ(0u, TypeParam::sort(vector, compare, force));
    return this->content();
  };
  EXPECT_EQ((records{c, b, a}), sort(by_key, 0));
  EXPECT_EQ(0u, TypeParam::swap(vector, 0, 2));
  EXPECT_EQ(0x100D0361u, TypeParam::swap(vector, 3, 0));
  EXPECT_EQ((records{a, b, c}), sort(by_key, 0)) << "swapping is no cause";
  EXPECT_EQ((records{c, b, a}), sort(by_key, 1));
  EXPECT_EQ((records{a, b, c}), sort([](auto x, auto y) { return by_key(y, x); }, 0));
  EXPECT_EQ(0u, TypeParam::insert(vector, 1, keep(stop)));
  records visited;
  EXPECT_EQ(0x100D01A0u, TypeParam::walk(vector, note_visited, &visited));
  EXPECT_EQ((records{a, stop}), visited);
}

TEST_F(pointer_vector_test, keeps_its_room_and_frees_what_is_deleted) {
  zcsl_vector* const vector = make(0, {{1, 1}, {2, 2}});
  void* item = nullptr;
  EXPECT_EQ(0u, zcsl_vector_removeindex(vector, 0, &item));
  EXPECT_EQ(1u, static_cast<record*>(item)->id);
  EXPECT_EQ(0x100D0003u, zcsl_vector_find(vector, item, nullptr)) << "an item equals itself";
  for (int i = 0; i < 2; ++i) EXPECT_EQ(0u, zcsl_vector_insert(vector, 0, nullptr));
  EXPECT_EQ(0u, zcsl_vector_deleteindex(vector, 0));
  EXPECT_EQ(0u, zcsl_vector_clear(vector));
  EXPECT_EQ((std::vector<uint64_t>{UINT64_MAX, 2}), g_freed) << "a clear skips empty items";
  memory.fail_at(1);
  EXPECT_EQ(0u, zcsl_vector_add(vector, nullptr));
}

TEST_F(record_vector_test, borrows_a_block_until_it_grows) {
  record block[5] = {{9, 0}, {2, 1}, {2, 2}, {1, 3}, {0, 9}};
  const records before(block, block + 5);
  zcsl_vector2* const vector = make(0, {{5, 50}});
  const auto attach = [&](void* data, uint32_t size, bool owned, bool sorted) {
    return zcsl_vector2_attach(vector, data, size, sizeof(record), owned, sorted);
  };
  EXPECT_EQ(0x900D0209u, attach(block, 33, false, true));
  EXPECT_EQ(0x900D0001u, attach(nullptr, 32, false, true));
  EXPECT_TRUE(g_freed.empty());
  ASSERT_EQ(0u, attach(block, 32, false, true));
  EXPECT_EQ((std::vector<uint64_t>{50}), g_freed);
  EXPECT_EQ(block, zcsl_vector2_view<record>(vector).records);
  EXPECT_EQ(0u, record_kind::add(vector, keep({2, 4})));
  EXPECT_EQ((records{{9, 0}, {2, 1}, {2, 2}, {2, 4}, {1, 3}}), content()) << "sorted";
  ASSERT_EQ(0u, attach(block, 40, false, false));
  ASSERT_EQ(0u, zcsl_vector2_deleterange(vector, 2, 4));
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector, 2)) << "copies no more than fits";
  ASSERT_EQ(0u, zcsl_vector2_clear(vector));
  EXPECT_EQ(before, records(block, block + 5)) << "it was left behind";
  ASSERT_EQ(0u, attach(zcsl_memory_dup(before.data(), 24), 24, true, true));
}

using stack_test = container_test;

TEST_F(stack_test, hands_over_or_frees) {
  zcsl_stack_owner stack;
  void* value = nullptr;
  ASSERT_EQ(0u, zcsl_stack_create(stack.out(), 1, note_freed));
  EXPECT_EQ(0x100D0003u, zcsl_stack_pop(stack.get(), &value));
  for (const uint32_t id : {1, 3, 4, 5}) zcsl_stack_push(stack.get(), keep({0, id}));
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), &value));
  EXPECT_EQ(5u, static_cast<record*>(value)->id);
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), nullptr));
  memory.fail_at(1);
  EXPECT_EQ(0u, zcsl_stack_push(stack.get(), nullptr)) << "takes the spare node";
  EXPECT_EQ(0x900D0002u, zcsl_stack_push(stack.get(), keep({0, 6})));
  stack.reset();
  EXPECT_EQ((std::vector<uint64_t>{4, 3, 1}), g_freed) << "top down, empty values skipped";
}

}  // namespace
