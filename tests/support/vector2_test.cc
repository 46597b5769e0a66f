// The record vector: against a model, the hint search, blocks that are attached, bulk operations.
#include <algorithm>
#include <cstring>

#include "support/zcsl_sort.h"
#include "support/zcsl_vector2_internal.h"
#include "tests/support/container_fixture.h"

namespace {

struct record {
  int32_t key;
  uint32_t id;
  bool operator==(const record&) const = default;
};

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

std::vector<record> content(zcsl_vector2* vector) {
  const zcsl_vector2_view<record> view(vector);
  return {view.begin(), view.end()};
}

class vector2_test : public container_test {
 protected:
  zcsl_vector2_owner make(uint32_t flags, zcsl_vector_compare_fn compare = by_key) {
    zcsl_vector2_owner vector;
    EXPECT_EQ(0u, zcsl_vector2_create(vector.out(), sizeof(record), flags, compare, note_freed));
    return vector;
  }
  zcsl_vector2_owner make_with(const std::vector<record>& records) {
    zcsl_vector2_owner vector = make(0);
    for (const record& r : records) add(vector, r);
    return vector;
  }
  uint32_t add(const zcsl_vector2_owner& vector, record r) {
    uint32_t index = UINT32_MAX;
    EXPECT_EQ(0u, zcsl_vector2_add(vector.get(), &r, sizeof r, &index));
    return index;
  }
  std::vector<record> some_records(uint32_t count, uint32_t keys) {
    std::vector<record> records;
    for (uint32_t i = 0; i < count; ++i) records.push_back({int32_t(random(keys)), i});
    return records;
  }
};

/* The rules of add, insert and find on a plain array. */
struct vector2_model {
  std::vector<record> records;
  bool sorted;
  bool unique;

  size_t lower(const record& r) const {
    const auto less = [](const record& a, const record& b) { return a.key < b.key; };
    return std::lower_bound(records.begin(), records.end(), r, less) - records.begin();
  }
  size_t first_equal(const record& r) const {
    const auto equal = [&](const record& other) { return other.key == r.key; };
    return std::find_if(records.begin(), records.end(), equal) - records.begin();
  }
  /* Once round from the hint; in a sorted vector the first wherever the search starts. */
  size_t find(size_t hint, const record& r) const {
    const size_t start = !sorted && hint < records.size() ? hint : 0;
    for (size_t i = start; i < records.size(); ++i) {
      if (records[i].key == r.key) return i;
    }
    return first_equal(r);
  }
  void erase(size_t first, size_t last) {
    if (last >= first) {
      const auto begin = records.begin();
      records.erase(begin + first, begin + std::min(last + 1, records.size()));
    }
  }
  size_t add(const record& r) {
    size_t place = first_equal(r);
    if (unique && place < records.size()) {
      records[place] = r;
      return place;
    }
    if (sorted) {
      place = lower(r);
      while (place < records.size() && records[place].key == r.key) ++place;
    } else {
      place = unique ? 0 : records.size();
    }
    records.insert(records.begin() + place, r);
    return place;
  }
  void insert(size_t index, const record& r) {
    const auto place = records.insert(records.begin() + std::min(index, records.size()), r);
    if (place != records.begin() && r.key < place[-1].key) sorted = false;
    if (place + 1 != records.end() && place[1].key < r.key) sorted = false;
  }
};

TEST_F(vector2_test, behaves_like_its_model) {
  for (const uint32_t flags : {0x00u, 0x10u, 0x20u, 0x31u}) {
    SCOPED_TRACE(flags);
    zcsl_vector2_owner vector = make(flags);
    vector2_model model{{}, (flags & 0x10) != 0, (flags & 0x20) != 0};
    for (uint32_t step = 0; step < 3000; ++step) {
      const record r{int32_t(random(60)), step};
      const uint32_t size = static_cast<uint32_t>(model.records.size());
      const uint32_t index = random(size + 2);
      switch (random(8)) {
        case 0:
        case 1:
        case 2:
        case 3:
          ASSERT_EQ(model.add(r), add(vector, r));
          break;
        case 4:
          if (random(20)) break;
          ASSERT_EQ(0u, zcsl_vector2_insert(vector.get(), index, &r, sizeof r));
          model.insert(index, r);
          break;
        case 5:
          ASSERT_EQ(index < size ? 0 : zcsl_warn_end_of_range,
                    zcsl_vector2_deleteindex(vector.get(), index));
          if (index < size) model.records.erase(model.records.begin() + index);
          break;
        case 6: {
          const uint32_t last = index + random(4);
          ASSERT_EQ(index < size ? 0 : zcsl_warn_end_of_range,
                    zcsl_vector2_deleterange(vector.get(), index, last));
          if (index < size) model.erase(index, last);
          break;
        }
        default: {
          const uint32_t hint = random(size + 3);
          uint32_t found = UINT32_MAX;
          const size_t expected = model.find(hint, r);
          ASSERT_EQ(expected < size ? 0 : zcsl_warn_not_found,
                    zcsl_vector2_hintfind(vector.get(), hint, &r, &found));
          if (expected < size) ASSERT_EQ(expected, found);
        }
      }
    }
    EXPECT_EQ(model.records, content(vector.get()));
  }
}

TEST_F(vector2_test, deletes_ranges) {
  struct {
    uint32_t first, last;
    zvsdk_status status;
    std::vector<uint64_t> freed;
  } const cases[] = {
      {2, 1, 0, {}},
      {1, 1000, 0, {1, 2, 3, 4}},
      {4, 4, 0, {4}},
      {0, 1, 0, {0, 1}},
      {5, 5, zcsl_warn_end_of_range, {}},
      {5, 0, zcsl_warn_end_of_range, {}},
      {0, UINT32_MAX, 0, {0, 1, 2, 3, 4}},
  };
  for (const auto& c : cases) {
    zcsl_vector2_owner vector = make_with({{0, 0}, {0, 1}, {0, 2}, {0, 3}, {0, 4}});
    g_freed.clear();
    EXPECT_EQ(c.status, zcsl_vector2_deleterange(vector.get(), c.first, c.last));
    EXPECT_EQ(c.freed, g_freed);
    EXPECT_EQ(5 - c.freed.size(), content(vector.get()).size());
  }
}

TEST_F(vector2_test, replaces_a_duplicate_in_a_unique_vector) {
  zcsl_vector2_owner vector = make(0x30);
  for (uint32_t i = 0; i < 5; ++i) EXPECT_EQ(i, add(vector, {int32_t(i), i}));
  EXPECT_EQ(2u, add(vector, {2, 77}));
  EXPECT_EQ((std::vector<uint64_t>{2}), g_freed);
  EXPECT_EQ(5u, content(vector.get()).size());
}

TEST_F(vector2_test, orders_by_bytes_without_a_comparison) {
  zcsl_vector2_owner vector;
  ASSERT_EQ(0u, zcsl_vector2_create(vector.out(), 2, 0x10, nullptr, nullptr));
  for (const char* text : {"b1", "a9", "b0"}) zcsl_vector2_add(vector.get(), text, 2, nullptr);
  void* data = nullptr;
  uint32_t bytes = 0, size = 0;
  ASSERT_EQ(0u, zcsl_vector2_get_buffer(vector.get(), &data, &bytes, &size));
  EXPECT_EQ("a9b0b1", std::string(static_cast<char*>(data), bytes));
  EXPECT_EQ(2u, size);
}

// Growth shows in the allocations; the room that a request sets is exact.
TEST_F(vector2_test, grows_by_its_steps_and_to_order) {
  zcsl_vector2_owner vector = make(0);
  std::vector<uint32_t> grown_at;
  const auto add_noting_growth = [&](uint32_t i) {
    const uint64_t before = memory.requests();
    add(vector, {0, i});
    if (memory.requests() != before) grown_at.push_back(i);
  };
  for (uint32_t i = 0; i < 50; ++i) add_noting_growth(i);
  EXPECT_EQ((std::vector<uint32_t>{0, 16, 27, 42}), grown_at);
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 49)) << "never below the count";
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 51));
  for (uint32_t i = 50; i < 53; ++i) add_noting_growth(i);
  EXPECT_EQ(51u, grown_at.back());
  ASSERT_EQ(0u, zcsl_vector2_clear(vector.get()));
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 3));
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 0));
  EXPECT_EQ(0u, add(vector, {1, 1}));
  EXPECT_EQ(0x900D0002u, zcsl_vector2_set_min_size(vector.get(), UINT32_MAX / 4));
}

TEST_F(vector2_test, borrows_a_block_until_it_grows) {
  record block[5] = {{1, 0}, {2, 1}, {2, 2}, {3, 3}, {9, 9}};
  const std::vector<record> before(block, block + 5);
  zcsl_vector2_owner vector = make_with({{5, 50}});
  ASSERT_EQ(0x900D0209u, zcsl_vector2_attach(vector.get(), block, 33, sizeof(record), 0, 1));
  ASSERT_EQ(1u, content(vector.get()).size());
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), block, 32, sizeof(record), 0, 1));
  EXPECT_EQ((std::vector<uint64_t>{50}), g_freed);
  void* first = nullptr;
  ASSERT_EQ(0u, zcsl_vector2_getindex(vector.get(), 0, &first));
  EXPECT_EQ(block, first);
  EXPECT_EQ(3u, add(vector, {2, 4})) << "the order of the block counts";
  ASSERT_EQ(0u, zcsl_vector2_getindex(vector.get(), 0, &first));
  EXPECT_NE(block, first);
  ASSERT_EQ(0u, zcsl_vector2_clear(vector.get()));
  EXPECT_EQ(before, std::vector<record>(block, block + 5));

  // A request for less room than a borrowed block has copies no more than fits.
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), block, 40, sizeof(record), 0, 0));
  ASSERT_EQ(0u, zcsl_vector2_deleterange(vector.get(), 1, 4));
  ASSERT_EQ(0u, zcsl_vector2_set_min_size(vector.get(), 1));
  EXPECT_EQ((std::vector<record>{{1, 0}}), content(vector.get()));

  // An owned block goes with the vector.
  void* owned = zcsl_memory_dup(before.data(), 24);
  ASSERT_EQ(0u, zcsl_vector2_attach(vector.get(), owned, 24, sizeof(record), 1, 1));
  uint32_t index = 0;
  const record key{2, 0};
  EXPECT_EQ(0u, zcsl_vector2_find(vector.get(), &key, &index));
  EXPECT_EQ(1u, index);
}

TEST_F(vector2_test, sort_remembers_its_order) {
  const std::vector<record> records = some_records(200, 20);
  zcsl_vector2_owner vector = make_with(records);
  ASSERT_EQ(0u, zcsl_vector2_sort(vector.get(), by_key_falling, 0));
  const std::vector<record> sorted = content(vector.get());
  EXPECT_TRUE(std::is_sorted(sorted.begin(), sorted.end(),
                             [](const record& a, const record& b) { return a.key > b.key; }));
  ASSERT_EQ(0u, zcsl_vector2_swapindex(vector.get(), 0, 199));
  const std::vector<record> swapped = content(vector.get());
  ASSERT_EQ(0u, zcsl_vector2_sort(vector.get(), by_key_falling, 0));
  EXPECT_EQ(swapped, content(vector.get())) << "swapping does not end the sorted state";
  ASSERT_EQ(0u, zcsl_vector2_sort(vector.get(), by_key_falling, 1));
  EXPECT_EQ(sorted[0].key, content(vector.get())[0].key);
}

// The key sort must leave what the comparison leaves, record for record, and the same state.
TEST_F(vector2_test, sorts_by_key_as_by_comparison) {
  for (const uint32_t keys : {1u, 3u, 50u, 0xFFFFFFFFu}) {
    for (const uint32_t count : {0u, 1u, 2u, 3u, 10u, 100u, 1000u}) {
      const std::vector<record> records = some_records(count, keys);
      zcsl_vector2_owner slow = make_with(records);
      zcsl_vector2_owner fast = make_with(records);
      zcsl_vector2_owner part = make_with(records);
      ASSERT_EQ(0u, zcsl_vector2_sort(slow.get(), by_key_falling, 0));
      ASSERT_EQ(0u, zcsl_vector2_sort_by_key(fast.get(), by_key_falling, 0, 0, count));
      ASSERT_EQ(0u, zcsl_vector2_sort_by_key(part.get(), by_key_falling, 0, 0, count / 3));
      ASSERT_EQ(content(slow.get()), content(fast.get()));
      zcsl_vector2_deleterange(slow.get(), count / 3, UINT32_MAX);
      zcsl_vector2_deleterange(part.get(), count / 3, UINT32_MAX);
      ASSERT_EQ(content(slow.get()), content(part.get()));

      if (count < 10 || keys < 3) continue;
      zcsl_vector2_swapindex(fast.get(), 0, count - 1);
      const std::vector<record> swapped = content(fast.get());
      zcsl_vector2_sort(fast.get(), by_key_falling, 0);
      EXPECT_EQ(swapped, content(fast.get()));
    }
  }
}

TEST_F(vector2_test, deletes_what_matches_in_one_pass) {
  const std::vector<record> records = some_records(500, 4);
  const auto odd = [](void*, const void* r) { return static_cast<const record*>(r)->key % 2 == 1; };
  zcsl_vector2_owner one_by_one = make_with(records);
  zcsl_vector2_owner at_once = make_with(records);
  for (uint32_t i = 0; i < content(one_by_one.get()).size();) {
    const std::vector<record> present = content(one_by_one.get());
    if (odd(nullptr, &present[i])) {
      zcsl_vector2_deleteindex(one_by_one.get(), i);
    } else {
      ++i;
    }
  }
  const std::vector<uint64_t> freed = std::exchange(g_freed, {});
  ASSERT_EQ(0u, zcsl_vector2_delete_matching(at_once.get(), odd, nullptr));
  EXPECT_EQ(freed, g_freed);
  EXPECT_EQ(content(one_by_one.get()), content(at_once.get()));
}

TEST_F(vector2_test, statuses) {
  zcsl_vector2_owner owner = make(0);
  zcsl_vector2* v = owner.get();
  zcsl_vector2* wrong = not_a(v);
  record r{1, 1};
  void* pointer = nullptr;
  uint32_t count = 5;
  expect_statuses({
      {STATUS_OF(0x900D0001, zcsl_vector2_create(nullptr, 8, 0, nullptr, nullptr))},
      {STATUS_OF(0x900D0209, zcsl_vector2_add(v, &r, 4, nullptr))},
      {STATUS_OF(0x900D0209, zcsl_vector2_insert(v, 0, &r, 9))},
      {STATUS_OF(0x900D0001, zcsl_vector2_add(v, nullptr, 8, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_vector2_attach(v, &r, 8, 0, 0, 0))},
      {STATUS_OF(0x100D0361, zcsl_vector2_getindex(v, 0, &pointer))},
      {STATUS_OF(0x100D0361, zcsl_vector2_swapindex(v, 0, 0))},
      {STATUS_OF(0x100D0361, zcsl_vector2_deleteindex(v, UINT32_MAX))},
      {STATUS_OF(0x100D0003, zcsl_vector2_find(v, &r, nullptr))},
      {STATUS_OF(0, zcsl_vector2_set_min_size(nullptr, 1))},
      {STATUS_OF(0, zcsl_vector2_delete(nullptr))},
      {STATUS_OF(0x900D0001, zcsl_vector2_count(nullptr, nullptr))},
      {STATUS_OF(0, zcsl_vector2_count(nullptr, &count))},
      {STATUS_OF(0x900D0320, zcsl_vector2_get_buffer(wrong, nullptr, nullptr, nullptr))},
      {STATUS_OF(0x900D0320, zcsl_vector2_set_min_size(wrong, 1))},
      {STATUS_OF(0x900D0320, zcsl_vector2_add(wrong, &r, 8, nullptr))},
      {STATUS_OF(0x900D0320, zcsl_vector2_insert(wrong, 0, &r, 8))},
      {STATUS_OF(0x900D0320, zcsl_vector2_delete(wrong))},
      {STATUS_OF(0x900D0320, zcsl_vector2_attach(wrong, &r, 7, 8, 0, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector2_getindex(wrong, 0, &pointer))},
      {STATUS_OF(0x900D0321, zcsl_vector2_count(wrong, &count))},
      {STATUS_OF(0x900D0321, zcsl_vector2_sort(wrong, by_key, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector2_swapindex(wrong, 0, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector2_find(wrong, &r, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_vector2_deleteindex(wrong, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector2_deleterange(wrong, 0, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector2_clear(wrong))},
  });
  EXPECT_EQ(0u, count);
  EXPECT_EQ(nullptr, pointer);
}

TEST_F(vector2_test, survives_every_failing_allocation) {
  record block[2] = {{1, 1}, {2, 2}};
  const uint64_t refusals = memory.for_each_failure([&] {
    zcsl_vector2_owner vector;
    zvsdk_status status = zcsl_vector2_create(vector.out(), sizeof(record), 0x11, by_key, nullptr);
    if (!status) status = zcsl_vector2_attach(vector.get(), block, 16, sizeof(record), 0, 1);
    std::vector<record> before = content(vector.get());
    if (!status) status = zcsl_vector2_swapindex(vector.get(), 0, 1);
    for (int32_t i = 0; !status && i < 12; ++i) {
      before = content(vector.get());
      const record r{i, 0};
      status = zcsl_vector2_add(vector.get(), &r, sizeof r, nullptr);
    }
    if (!status) return;
    EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    if (vector) EXPECT_EQ(before, content(vector.get()));
  });
  EXPECT_LE(4u, refusals);
}

}  // namespace
