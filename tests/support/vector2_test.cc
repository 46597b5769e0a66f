// The record vector: against a model, the hint search, blocks that are attached, bulk operations.
#include <algorithm>

#include "support/zcsl_vector2_internal.h"
#include "tests/support/container_fixture.h"

namespace {

struct record {
  int32_t key;
  uint32_t id;
  bool operator==(const record&) const = default;
};
using records = std::vector<record>;

int32_t by_key(const void* a, const void* b) {
  return static_cast<const record*>(a)->key - static_cast<const record*>(b)->key;
}

int32_t by_key_falling(const void* a, const void* b) {
  const uint32_t x = static_cast<uint32_t>(static_cast<const record*>(a)->key);
  const uint32_t y = static_cast<uint32_t>(static_cast<const record*>(b)->key);
  return static_cast<int32_t>(y - x);
}

void note_freed(void* item) {
  g_freed.push_back(static_cast<record*>(item)->id);
}

records content(const zcsl_vector2_owner& vector) {
  const zcsl_vector2_view<record> view(vector.get());
  return {view.begin(), view.end()};
}

class vector2_test : public container_test {
 protected:
  zcsl_vector2_owner make(uint32_t flags, const records& start = {}) {
    zcsl_vector2_owner vector;
    EXPECT_EQ(0u, zcsl_vector2_create(vector.out(), sizeof(record), flags, by_key, note_freed));
    for (const record& r : start) add(vector, r);
    return vector;
  }
  uint32_t add(const zcsl_vector2_owner& vector, record r) {
    uint32_t index = UINT32_MAX;
    EXPECT_EQ(0u, zcsl_vector2_add(vector.get(), &r, sizeof r, &index));
    return index;
  }
  records some_records(uint32_t count, uint32_t keys) {
    records made;
    for (uint32_t i = 0; i < count; ++i) made.push_back({int32_t(random(keys)), i});
    return made;
  }
};

/* The rules of add, insert and find on a plain array. */
struct vector2_model {
  records all;
  bool sorted;
  bool unique;

  /* Once round from the hint; in a sorted vector the first, wherever the search starts. */
  size_t find(size_t hint, const record& r) const {
    const size_t start = !sorted && hint < all.size() ? hint : 0;
    for (size_t i = 0; i < all.size(); ++i) {
      const size_t place = (start + i) % all.size();
      if (all[place].key == r.key) return place;
    }
    return all.size();
  }
  size_t add(const record& r) {
    size_t place = find(UINT32_MAX, r);
    if (unique && place < all.size()) {
      all[place] = r;
      return place;
    }
    place = unique ? 0 : all.size();
    if (sorted) {
      const auto less = [](const record& a, const record& b) { return a.key < b.key; };
      place = std::upper_bound(all.begin(), all.end(), r, less) - all.begin();
    }
    all.insert(all.begin() + place, r);
    return place;
  }
  void insert(size_t index, const record& r) {
    const auto place = all.insert(all.begin() + std::min(index, all.size()), r);
    if (place != all.begin() && r.key < place[-1].key) sorted = false;
    if (place + 1 != all.end() && place[1].key < r.key) sorted = false;
  }
};

TEST_F(vector2_test, behaves_like_its_model) {
  for (const uint32_t flags : {0x00u, 0x10u, 0x20u, 0x31u}) {
    SCOPED_TRACE(flags);
    zcsl_vector2_owner vector = make(flags);
    vector2_model model{{}, (flags & 0x10) != 0, (flags & 0x20) != 0};
    for (uint32_t step = 0; step < 3000; ++step) {
      const record r{int32_t(random(60)), step};
      const uint32_t size = static_cast<uint32_t>(model.all.size());
      const uint32_t index = random(size + 2);
      const uint32_t choice = random(100);
      if (choice < 50) {
        ASSERT_EQ(model.add(r), add(vector, r));
      } else if (choice < 51) {
        ASSERT_EQ(0u, zcsl_vector2_insert(vector.get(), index, &r, sizeof r));
        model.insert(index, r);
      } else if (choice < 75) {
        const uint32_t last = step % 16 ? index + random(3) : index - 1;
        ASSERT_EQ(index < size ? 0 : zcsl_warn_end_of_range,
                  zcsl_vector2_deleterange(vector.get(), index, last));
        if (index >= size || last < index) continue;
        const auto end = model.all.begin() + std::min(last, size - 1) + 1;
        model.all.erase(model.all.begin() + index, end);
      } else {
        uint32_t found = size;
        ASSERT_EQ(model.find(index, r) < size ? 0 : zcsl_warn_not_found,
                  zcsl_vector2_hintfind(vector.get(), index, &r, &found));
        ASSERT_EQ(model.find(index, r), found);
      }
      ASSERT_EQ(model.all, content(vector));
    }
  }
}

TEST_F(vector2_test, frees_what_goes) {
  zcsl_vector2_owner vector = make(0x30, {{0, 0}, {1, 1}, {2, 2}, {3, 3}, {4, 4}});
  EXPECT_EQ(2u, add(vector, {2, 77}));
  EXPECT_EQ(0u, zcsl_vector2_deleteindex(vector.get(), 0));
  EXPECT_EQ(0u, zcsl_vector2_deleterange(vector.get(), 2, UINT32_MAX));
  EXPECT_EQ(0x100D0361u, zcsl_vector2_deleterange(vector.get(), 2, 0));
  vector.reset();
  EXPECT_EQ((std::vector<uint64_t>{2, 0, 3, 4, 1, 77}), g_freed);
}

// Growth shows in the allocations; the room that a request sets is exact.
TEST_F(vector2_test, grows_by_its_steps_and_to_order) {
  zcsl_vector2_owner vector = make(0);
  std::vector<uint32_t> grown_at;
  for (uint32_t i = 0; i < 53; ++i) {
    if (i == 50) {
      EXPECT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 51));
    }
    const uint64_t before = memory.requests();
    add(vector, {0, i});
    if (memory.requests() != before) grown_at.push_back(i);
  }
  EXPECT_EQ((std::vector<uint32_t>{0, 16, 27, 42, 51}), grown_at);
  EXPECT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 52)) << "never below the count";
  EXPECT_EQ(53u, content(vector).size());
  EXPECT_EQ(0u, zcsl_vector2_clear(vector.get()));
  for (const uint32_t room : {3, 0}) {
    EXPECT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), room));
  }
  EXPECT_EQ(0u, add(vector, {1, 1}));
  EXPECT_EQ(0x900D0002u, zcsl_vector2_set_min_size(vector.get(), UINT32_MAX / 4));
}

TEST_F(vector2_test, borrows_a_block_until_it_grows) {
  record block[5] = {{1, 0}, {2, 1}, {2, 2}, {3, 3}, {9, 9}};
  const records before(block, block + 5);
  zcsl_vector2_owner vector = make(0, {{5, 50}});
  ASSERT_EQ(0x900D0209u, zcsl_vector2_attach(vector.get(), block, 33, sizeof(record), 0, 1));
  EXPECT_TRUE(g_freed.empty());
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), block, 32, sizeof(record), 0, 1));
  EXPECT_EQ((std::vector<uint64_t>{50}), g_freed);
  EXPECT_EQ(block, zcsl_vector2_view<record>(vector.get()).records);
  EXPECT_EQ(3u, add(vector, {2, 4})) << "the order of the block counts";
  EXPECT_NE(block, zcsl_vector2_view<record>(vector.get()).records);
  ASSERT_EQ(0u, zcsl_vector2_clear(vector.get()));
  EXPECT_EQ(before, records(block, block + 5));

  // A request for less room than a borrowed block has copies no more than fits.
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), block, 40, sizeof(record), 0, 0));
  ASSERT_EQ(0u, zcsl_vector2_deleterange(vector.get(), 1, 4));
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 1));
  EXPECT_EQ((records{{1, 0}}), content(vector));

  void* owned = zcsl_memory_dup(before.data(), 24);
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), owned, 24, sizeof(record), 1, 1));
  memory.fail_at(1);
  EXPECT_EQ(0x900D0002u, zcsl_vector2_swapindex(vector.get(), 0, 2)) << "needs a slot to swap in";
  memory.fail_at(0);
  EXPECT_EQ(0u, zcsl_vector2_swapindex(vector.get(), 0, 2));
  EXPECT_EQ((records{{2, 2}, {2, 1}, {1, 0}}), content(vector));
}

// The key sort must leave what the comparison leaves, record for record, and the same state.
TEST_F(vector2_test, sorts_by_key_as_by_comparison) {
  for (const uint32_t keys : {1u, 3u, 50u, 0xFFFFFFFFu}) {
    for (const uint32_t count : {0u, 1u, 2u, 3u, 10u, 100u, 1000u}) {
      const records start = some_records(count, keys);
      zcsl_vector2_owner slow = make(0, start), fast = make(0, start), part = make(0, start);
      ASSERT_EQ(0u, zcsl_vector2_sort(slow.get(), by_key_falling, 0));
      ASSERT_EQ(0u, zcsl_vector2_sort_by_key(fast.get(), by_key_falling, 0, 0, count));
      ASSERT_EQ(0u, zcsl_vector2_sort_by_key(part.get(), by_key_falling, 0, 0, count / 3));
      const records sorted = content(slow);
      ASSERT_EQ(sorted, content(fast));
      const zcsl_vector2_view<record> first(part.get());
      ASSERT_TRUE(std::equal(sorted.begin(), sorted.begin() + count / 3, first.begin()));

      if (count < 2) continue;
      zcsl_vector2_swapindex(fast.get(), 0, count - 1);
      const records swapped = content(fast);
      EXPECT_EQ(0u, zcsl_vector2_sort(fast.get(), by_key_falling, 0));
      EXPECT_EQ(swapped, content(fast)) << "swapping does not end the sorted state";
      EXPECT_EQ(0u, zcsl_vector2_sort(fast.get(), by_key_falling, 1));
      if (keys <= 50) {
        EXPECT_EQ(sorted[0].key, content(fast)[0].key);
      }
    }
  }
}

TEST_F(vector2_test, deletes_what_matches_in_one_pass) {
  const records start = some_records(500, 4);
  const auto odd = [](void*, const void* r) { return static_cast<const record*>(r)->key % 2 == 1; };
  zcsl_vector2_owner one_by_one = make(0, start), at_once = make(0, start);
  for (uint32_t i = 0; i < content(one_by_one).size();) {
    const bool matches = content(one_by_one)[i].key % 2 == 1;
    if (matches) zcsl_vector2_deleteindex(one_by_one.get(), i);
    i += !matches;
  }
  const std::vector<uint64_t> freed = std::exchange(g_freed, {});
  ASSERT_EQ(0u, zcsl_vector2_delete_matching(at_once.get(), odd, nullptr));
  EXPECT_EQ(freed, g_freed);
  EXPECT_EQ(content(one_by_one), content(at_once));
}

}  // namespace
