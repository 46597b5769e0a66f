// The pointer vector and the stack: against models, statuses, memory.
#include <algorithm>

#include "support/zcsl_sort.h"
#include "tests/support/container_fixture.h"

namespace {

// Items are numbers; the order looks at the tens only, so that equal items can be told apart.
int32_t by_tens(const void* a, const void* b) {
  return static_cast<int32_t>(as_number(a) / 10) - static_cast<int32_t>(as_number(b) / 10);
}

int32_t by_tens_in_slots(const void* a, const void* b, void*) {
  return by_tens(*static_cast<void* const*>(a), *static_cast<void* const*>(b));
}

int32_t by_tens_falling(const void* a, const void* b) {
  return by_tens(b, a);
}

void note_freed(void* item) {
  g_freed.push_back(as_number(item));
}

class vector_test : public container_test {
 protected:
  std::vector<uint32_t> content(zcsl_vector* vector) {
    std::vector<uint32_t> items;
    EXPECT_EQ(0u, zcsl_vector_foreach(
                      vector,
                      [](void* context, void* item) {
                        static_cast<std::vector<uint32_t>*>(context)->push_back(as_number(item));
                        return 1;
                      },
                      &items));
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
    if (sorted) return;
    zcsl_utils_qsort(items.data(), static_cast<uint32_t>(items.size()), sizeof(void*),
                     by_tens_in_slots, nullptr);
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
      switch (random(8)) {
        case 0:
        case 1:
        case 2:
          ASSERT_EQ(0u, zcsl_vector_add(vector.get(), item));
          model.add(item);
          break;
        case 3:
          if (random(4)) break;
          ASSERT_EQ(0u, zcsl_vector_insert(vector.get(), index, item));
          model.insert(index, item);
          break;
        case 4:
        case 5: {
          const zvsdk_status expected = index < size ? 0 : zcsl_warn_end_of_range;
          ASSERT_EQ(expected, step % 2 ? zcsl_vector_deleteindex(vector.get(), index)
                                       : zcsl_vector_removeindex(vector.get(), index, &item));
          if (expected) break;
          if (step % 2) EXPECT_EQ(as_number(model.items[index]), g_freed.back());
          if (step % 2 == 0) EXPECT_EQ(model.items[index], item);
          model.items.erase(model.items.begin() + index);
          break;
        }
        case 6: {
          uint32_t found = 0;
          const uint32_t expected = model.find(item);
          ASSERT_EQ(expected < size ? 0 : zcsl_warn_not_found,
                    zcsl_vector_find(vector.get(), item, &found));
          if (expected < size) ASSERT_EQ(expected, found);
          break;
        }
        default:
          if (random(10)) break;
          ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens, 0));
          model.sort();
      }
    }
    std::vector<uint32_t> expected;
    for (void* item : model.items) expected.push_back(as_number(item));
    EXPECT_EQ(expected, content(vector.get()));
    g_freed.clear();
    vector.reset();
    EXPECT_EQ(expected, std::vector<uint32_t>(g_freed.begin(), g_freed.end()));
  }
}

TEST_F(vector_test, sorts_only_when_there_is_cause) {
  zcsl_vector_owner vector;
  ASSERT_EQ(0u, zcsl_vector_create(vector.out(), 0, nullptr, nullptr));
  for (const uint32_t item : {31, 12, 32, 11}) zcsl_vector_add(vector.get(), as_pointer(item));
  ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), nullptr, 1));
  EXPECT_EQ((std::vector<uint32_t>{31, 12, 32, 11}), content(vector.get()));
  ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens, 0));
  EXPECT_EQ((std::vector<uint32_t>{12, 11, 32, 31}), content(vector.get()));
  ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens, 0));
  EXPECT_EQ((std::vector<uint32_t>{12, 11, 32, 31}), content(vector.get()));
  ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens, 1));
  EXPECT_NE((std::vector<uint32_t>{12, 11, 32, 31}), content(vector.get()));
  ASSERT_EQ(0u, zcsl_vector_sort(vector.get(), by_tens_falling, 0));
  EXPECT_EQ(3u, content(vector.get())[0] / 10);
  ASSERT_EQ(0u, zcsl_vector_swapindex(vector.get(), 0, 3));
  EXPECT_EQ(1u, content(vector.get())[0] / 10);
}

TEST_F(vector_test, grows_by_its_steps_and_keeps_its_room) {
  for (const uint32_t first : {0u, 1u, 2u, 3u, 5u}) {
    zcsl_vector_owner vector;
    ASSERT_EQ(0u, zcsl_vector_create(vector.out(), 0, nullptr, nullptr));
    ASSERT_EQ(0u, zcsl_vector_set_min_size(vector.get(), first));
    std::vector<uint32_t> grown_at;
    for (uint32_t i = 0; i < 60; ++i) {
      const uint64_t before = memory.requests();
      ASSERT_EQ(0u, zcsl_vector_add(vector.get(), as_pointer(i)));
      if (memory.requests() != before) grown_at.push_back(i);
    }
    if (first == 0) EXPECT_EQ((std::vector<uint32_t>{0, 16, 24, 36, 54}), grown_at);
    if (first == 1)
      EXPECT_EQ((std::vector<uint32_t>{1, 2, 3, 4, 6, 9, 12, 18, 27, 39, 57}), grown_at);
    ASSERT_EQ(0u, zcsl_vector_clear(vector.get()));
    const uint64_t before = memory.requests();
    ASSERT_EQ(0u, zcsl_vector_add(vector.get(), nullptr));
    EXPECT_EQ(before, memory.requests());
  }
}

TEST_F(vector_test, statuses) {
  zcsl_vector_owner owner;
  ASSERT_EQ(0u, zcsl_vector_create(owner.out(), 0, by_tens, nullptr));
  zcsl_vector* v = owner.get();
  zcsl_vector* wrong = not_a(v);
  void* item = as_pointer(7);
  uint32_t count = 9;
  const auto stop = [](void*, void*) { return 0; };
  expect_statuses({
      {STATUS_OF(0x900D0001, zcsl_vector_create(nullptr, 0, nullptr, nullptr))},
      {STATUS_OF(0x900D0001, zcsl_vector_add(nullptr, item))},
      {STATUS_OF(0x900D0320, zcsl_vector_add(wrong, item))},
      {STATUS_OF(0x900D0320, zcsl_vector_insert(wrong, 0, item))},
      {STATUS_OF(0x900D0320, zcsl_vector_set_min_size(wrong, 1))},
      {STATUS_OF(0x900D0320, zcsl_vector_delete(wrong))},
      {STATUS_OF(0x900D0321, zcsl_vector_getindex(wrong, 0, &item))},
      {STATUS_OF(0x900D0321, zcsl_vector_removeindex(wrong, 0, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_vector_deleteindex(wrong, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector_count(wrong, &count))},
      {STATUS_OF(0x900D0321, zcsl_vector_find(wrong, item, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_vector_sort(wrong, by_tens, 0))},
      {STATUS_OF(0x900D0321, zcsl_vector_foreach(wrong, stop, nullptr))},
      {STATUS_OF(0x900D0321, zcsl_vector_clear(wrong))},
      {STATUS_OF(0x900D0001, zcsl_vector_getindex(wrong, 0, nullptr))},
      {STATUS_OF(0x100D0361, zcsl_vector_getindex(v, 0, &item))},
      {STATUS_OF(0x100D0361, zcsl_vector_swapindex(v, 0, 0))},
      {STATUS_OF(0x900D0001, zcsl_vector_count(nullptr, nullptr))},
      {STATUS_OF(0, zcsl_vector_count(nullptr, &count))},
      {STATUS_OF(0x900D0001, zcsl_vector_foreach(v, nullptr, nullptr))},
      {STATUS_OF(0, zcsl_vector_foreach(v, stop, nullptr))},
      {STATUS_OF(0, zcsl_vector_add(v, item))},
      {STATUS_OF(0x100D01A0, zcsl_vector_foreach(v, stop, nullptr))},
      {STATUS_OF(0, zcsl_vector_delete(nullptr))},
  });
  EXPECT_EQ(0u, count);
}

TEST_F(vector_test, survives_every_failing_allocation) {
  const uint64_t refusals = memory.for_each_failure([&] {
    zcsl_vector_owner vector;
    zvsdk_status status = zcsl_vector_create(vector.out(), 0x11, by_tens, nullptr);
    ASSERT_EQ(status == 0, bool(vector));
    uint32_t added = 0;
    for (; !status && added < 30; ++added)
      status = zcsl_vector_add(vector.get(), as_pointer(added));
    if (!status) return;
    EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    if (!vector) return;
    EXPECT_EQ(added - 1, content(vector.get()).size());
    EXPECT_EQ(0u, zcsl_vector_add(vector.get(), nullptr));
  });
  EXPECT_LE(5u, refusals);
}

TEST_F(vector_test, create_needs_the_module) {
  zcsl_vector* vector = nullptr;
  zcsl_stack* stack = nullptr;
  zcsl_stringmap* map = nullptr;
  ASSERT_EQ(0u, zcsl_datatypes_shutdown());
  EXPECT_EQ(0x900D0007u, zcsl_vector_create(&vector, 0, nullptr, nullptr));
  EXPECT_EQ(0x900D0007u, zcsl_stack_create(&stack, 0, nullptr));
  EXPECT_EQ(0x900D0007u, zcsl_stringmap_create(&map, 0));
  ASSERT_EQ(0u, zcsl_datatypes_initialize());
}

TEST_F(vector_test, stack_hands_over_or_frees) {
  zcsl_stack_owner stack;
  ASSERT_EQ(0u, zcsl_stack_create(stack.out(), 1, note_freed));
  void* value = nullptr;
  uint32_t count = 0;
  for (const uintptr_t item : {1, 0, 3, 4, 5}) {
    ASSERT_EQ(0u, zcsl_stack_push(stack.get(), as_pointer(item)));
  }
  const uint64_t before = memory.requests();
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), &value));
  EXPECT_EQ(5u, as_number(value));
  EXPECT_EQ(0u, zcsl_stack_pop(stack.get(), nullptr));
  EXPECT_EQ((std::vector<uint64_t>{4}), g_freed);
  EXPECT_EQ(0u, zcsl_stack_push(stack.get(), as_pointer(6)));
  EXPECT_EQ(before, memory.requests()) << "the push should take the spare node";
  EXPECT_EQ(0u, zcsl_stack_top(stack.get(), &value));
  EXPECT_EQ(6u, as_number(value));
  EXPECT_EQ(0u, zcsl_stack_count(stack.get(), &count));
  EXPECT_EQ(4u, count);
  stack.reset();
  EXPECT_EQ((std::vector<uint64_t>{4, 6, 3, 1}), g_freed) << "top down, empty values skipped";
}

TEST_F(vector_test, stack_statuses_and_failing_allocations) {
  zcsl_stack* wrong = not_a(wrong);
  void* value = nullptr;
  uint32_t count = 0;
  zcsl_stack_owner owner;
  ASSERT_EQ(0u, zcsl_stack_create(owner.out(), 0, nullptr));
  expect_statuses({
      {STATUS_OF(0x900D0001, zcsl_stack_create(nullptr, 0, nullptr))},
      {STATUS_OF(0x900D0320, zcsl_stack_push(wrong, value))},
      {STATUS_OF(0x900D0320, zcsl_stack_pop(wrong, &value))},
      {STATUS_OF(0x900D0320, zcsl_stack_top(wrong, &value))},
      {STATUS_OF(0x900D0320, zcsl_stack_count(wrong, &count))},
      {STATUS_OF(0x900D0320, zcsl_stack_delete(wrong))},
      {STATUS_OF(0x100D0003, zcsl_stack_pop(owner.get(), nullptr))},
      {STATUS_OF(0x100D0003, zcsl_stack_top(owner.get(), &value))},
      {STATUS_OF(0x900D0001, zcsl_stack_top(owner.get(), nullptr))},
      {STATUS_OF(0, zcsl_stack_delete(nullptr))},
  });
  memory.for_each_failure([&] {
    zcsl_stack_owner stack;
    zvsdk_status status = zcsl_stack_create(stack.out(), 1, note_freed);
    if (!status) status = zcsl_stack_push(stack.get(), as_pointer(1));
    if (status) EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
    if (status && stack) EXPECT_EQ(0x100D0003u, zcsl_stack_pop(stack.get(), nullptr));
  });
}

}  // namespace
