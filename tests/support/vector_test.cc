// The pointer vector against a model, its growth and sorted state; the stack.
#include <algorithm>

#include "support/zcsl_sort.h"
#include "tests/support/container_fixture.h"

namespace {

// Items are numbers; the order looks at the tens only, so that equal items can be told apart.
int32_t by_tens(const void* a, const void* b) {
  return static_cast<int32_t>(as_number(a) / 10) - static_cast<int32_t>(as_number(b) / 10);
}

int32_t by_tens_falling(const void* a, const void* b) {
  return by_tens(b, a);
}

int32_t by_tens_in_slots(const void* a, const void* b, void*) {
  return by_tens(*static_cast<void* const*>(a), *static_cast<void* const*>(b));
}

void note_freed(void* item) {
  g_freed.push_back(as_number(item));
}

int32_t note_visited(void* items, void* item) {
  static_cast<std::vector<void*>*>(items)->push_back(item);
  return as_number(item) != 13;
}

class vector_test : public container_test {
 protected:
  static std::vector<uint32_t> content(zcsl_vector* vector) {
    std::vector<uint32_t> items;
    void* item = nullptr;
    while (!zcsl_vector_getindex(vector, static_cast<uint32_t>(items.size()), &item)) {
      items.push_back(as_number(item));
    }
    return items;
  }
};

struct vector_model {
  std::vector<void*> items;
  bool sorted;

  void add(void* item) {
    const auto less = [](void* a, void* b) { return by_tens(a, b) < 0; };
    items.insert(sorted ? std::upper_bound(items.begin(), items.end(), item, less) : items.end(),
                 item);
  }
  void insert(uint32_t index, void* item) {
    const auto place = items.insert(items.begin() + std::min<size_t>(index, items.size()), item);
    if (place != items.begin() && by_tens(item, place[-1]) < 0) sorted = false;
    if (place + 1 != items.end() && by_tens(place[1], item) < 0) sorted = false;
  }
  uint32_t find(void* item) const {
    const auto equal = [&](void* other) { return by_tens(other, item) == 0; };
    return static_cast<uint32_t>(std::find_if(items.begin(), items.end(), equal) - items.begin());
  }
  void sort() {
    if (!sorted) {
      zcsl_utils_qsort(items.data(), static_cast<uint32_t>(items.size()), sizeof(void*),
                       by_tens_in_slots, nullptr);
    }
    sorted = true;
  }
};

TEST_F(vector_test, behaves_like_its_model) {
  for (const uint32_t flags : {0u, 0x01u, 0x10u, 0x11u}) {
    zcsl_vector_owner vector;
    ASSERT_EQ(0u, zcsl_vector_create(vector.out(), flags, by_tens, note_freed));
    vector_model model{{}, (flags & zcsl_vector_flag_sorted) != 0};
    for (int step = 0; step < 3000; ++step) {
      void* item = as_pointer(random(500) + 1);
      const uint32_t size = static_cast<uint32_t>(model.items.size());
      const uint32_t index = random(size + 2);
      const uint32_t choice = random(100);
      if (choice < 40) {
        ASSERT_EQ(0u, zcsl_vector_add(vector.get(), item));
        model.add(item);
      } else if (choice < 43) {
        ASSERT_EQ(0u, zcsl_vector_insert(vector.get(), index, item));
        model.insert(index, item);
      } else if (choice < 70) {
        ASSERT_EQ(index < size ? 0 : zcsl_warn_end_of_range,
                  step % 2 ? zcsl_vector_deleteindex(vector.get(), index)
                           : zcsl_vector_removeindex(vector.get(), index, &item));
        if (index >= size) continue;
        ASSERT_EQ(model.items[index], step % 2 ? as_pointer(g_freed.back()) : item);
        model.items.erase(model.items.begin() + index);
      } else if (choice < 98) {
        uint32_t found = size;
        ASSERT_EQ(model.find(item) < size ? 0 : zcsl_warn_not_found,
                  zcsl_vector_find(vector.get(), item, &found));
        ASSERT_EQ(model.find(item), found);
      } else {
        ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens, 0));
        model.sort();
      }
    }
    const std::vector<uint32_t> items = content(vector.get());
    ASSERT_TRUE(std::equal(items.begin(), items.end(), model.items.begin(), model.items.end(),
                           [](uint32_t a, void* b) { return a == as_number(b); }));
    g_freed.clear();
    vector.reset();
    EXPECT_EQ(std::vector<uint64_t>(items.begin(), items.end()), g_freed);
  }
}

TEST_F(vector_test, sorts_only_when_there_is_cause) {
  zcsl_vector_owner vector;
  ASSERT_EQ(0u, zcsl_vector_create(vector.out(), 0, nullptr, nullptr));
  for (const uint32_t item : {31, 12, 32, 11}) zcsl_vector_add(vector.get(), as_pointer(item));
  struct {
    zcsl_vector_compare_fn compare;
    int force;
    std::vector<uint32_t> outcome;
  } const sorts[] = {{nullptr, 1, {31, 12, 32, 11}},
                     {by_tens, 0, {12, 11, 32, 31}},
                     {by_tens, 0, {12, 11, 32, 31}},
                     {by_tens, 1, {11, 12, 32, 31}},
                     {by_tens_falling, 0, {31, 32, 12, 11}}};
  for (const auto& sort : sorts) {
    ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), sort.compare, sort.force));
    EXPECT_EQ(sort.outcome, content(vector.get()));
  }
  std::vector<void*> visited;
  EXPECT_EQ(0u, zcsl_vector_swapindex(vector.get(), 0, 3));
  EXPECT_EQ(0x100D0361u, zcsl_vector_swapindex(vector.get(), 0, 4));
  EXPECT_EQ(0u, zcsl_vector_insert(vector.get(), 2, as_pointer(13)));
  EXPECT_EQ(0x100D01A0u, zcsl_vector_foreach(vector.get(), note_visited, &visited));
  EXPECT_EQ((std::vector<void*>{as_pointer(11), as_pointer(32), as_pointer(13)}), visited);
}

TEST_F(vector_test, grows_by_its_steps_and_keeps_its_room) {
  const std::pair<uint32_t, std::vector<uint32_t>> cases[] = {
      {0, {0, 16, 24, 36, 54}}, {1, {1, 2, 3, 4, 6, 9, 12, 18, 27, 39, 57}}, {50, {50}}};
  for (const auto& [room, steps] : cases) {
    zcsl_vector_owner vector;
    ASSERT_EQ(0u, zcsl_vector_create(vector.out(), 0, nullptr, nullptr));
    ASSERT_EQ(0u, zcsl_vector_set_min_size(vector.get(), room));
    std::vector<uint32_t> grown_at;
    for (uint32_t i = 0; i < 60; ++i) {
      const uint64_t before = memory.requests();
      ASSERT_EQ(0u, zcsl_vector_add(vector.get(), as_pointer(i)));
      if (memory.requests() != before) grown_at.push_back(i);
    }
    EXPECT_EQ(steps, grown_at);
    ASSERT_EQ(0u, zcsl_vector_clear(vector.get()));
    memory.fail_at(1);
    EXPECT_EQ(0u, zcsl_vector_add(vector.get(), nullptr));
    memory.fail_at(0);
  }
}

TEST_F(vector_test, stack_hands_over_or_frees) {
  zcsl_stack_owner stack;
  ASSERT_EQ(0u, zcsl_stack_create(stack.out(), 1, note_freed));
  void* value = nullptr;
  EXPECT_EQ(0x100D0003u, zcsl_stack_pop(stack.get(), &value));
  EXPECT_EQ(0x100D0003u, zcsl_stack_top(stack.get(), &value));
  for (const uintptr_t item : {1, 0, 3, 4, 5}) zcsl_stack_push(stack.get(), as_pointer(item));
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), &value));
  EXPECT_EQ(5u, as_number(value));
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), nullptr));
  EXPECT_EQ((std::vector<uint64_t>{4}), g_freed);
  memory.fail_at(1);
  EXPECT_EQ(0u, zcsl_stack_push(stack.get(), as_pointer(6))) << "takes the spare node";
  memory.fail_at(0);
  EXPECT_EQ(0u, zcsl_stack_top(stack.get(), &value));
  EXPECT_EQ(6u, as_number(value));
  stack.reset();
  EXPECT_EQ((std::vector<uint64_t>{4, 6, 3, 1}), g_freed) << "top down, empty values skipped";
}

}  // namespace
