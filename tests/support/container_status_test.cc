// What all containers share: the statuses for handles that are none and missing pointers, and an
// unchanged container after every allocation that can fail.
#include "tests/support/container_fixture.h"

namespace {

class container_status_test : public container_test {
 protected:
  /* A container is made and filled step by step, each allocation refused in turn. */
  template <class Owner, class Create, class Step, class Count>
  void expect_unharmed(uint64_t least_refusals, Create create, Step step, Count count_items) {
    const uint64_t refusals = memory.for_each_failure([&] {
      Owner owner;
      uint32_t done = 0, count = 0;
      zvsdk_status status = create(owner.out());
      for (; owner && !status && done < 30; done += status == 0) status = step(owner.get(), done);
      if (!status) return;
      EXPECT_EQ(zcsl_code_no_memory, zvsdk_low_word(status));
      if (!owner) return;
      EXPECT_EQ(0u, count_items(owner.get(), &count));
      EXPECT_EQ(done, count);
      EXPECT_EQ(0u, step(owner.get(), done)) << "the same step again";
    });
    EXPECT_LE(least_refusals, refusals);
  }
};

std::string name(uint32_t number) {
  return "name " + std::to_string(number);
}

TEST_F(container_status_test, every_failing_allocation_leaves_what_was_there) {
  expect_unharmed<zcsl_vector_owner>(
      4, [](zcsl_vector** out) { return zcsl_vector_create(out, 0x11, nullptr, nullptr); },
      [](zcsl_vector* v, uint32_t i) { return zcsl_vector_add(v, as_pointer(i)); },
      zcsl_vector_count);
  expect_unharmed<zcsl_vector2_owner>(
      4, [](zcsl_vector2** out) { return zcsl_vector2_create(out, 4, 0x31, nullptr, nullptr); },
      [](zcsl_vector2* v, uint32_t i) { return zcsl_vector2_add(v, &i, 4, nullptr); },
      zcsl_vector2_count);
  expect_unharmed<zcsl_stack_owner>(
      30, [](zcsl_stack** out) { return zcsl_stack_create(out, 1, nullptr); },
      [](zcsl_stack* s, uint32_t i) { return zcsl_stack_push(s, as_pointer(i)); },
      zcsl_stack_count);
  expect_unharmed<zcsl_hashmap_owner>(
      5, [](zcsl_hashmap** out) { return zcsl_hashmap_create(out, 1, nullptr); },
      [](zcsl_hashmap* m, uint32_t i) { return zcsl_hashmap_insert(m, i, nullptr); },
      zcsl_hashmap_count);
  expect_unharmed<zcsl_hashtable_owner>(
      34, [](zcsl_hashtable** out) { return zcsl_hashtable_create(out, 0x41, nullptr); },
      [](zcsl_hashtable* t, uint32_t i) {
        return zcsl_hashtable_value_add(t, name(i % 20).c_str(), &i, sizeof i, 1);
      },
      zcsl_hashtable_count);
  expect_unharmed<zcsl_stringmap_owner>(
      30, [](zcsl_stringmap** out) { return zcsl_stringmap_create(out, 1); },
      [](zcsl_stringmap* m, uint32_t i) {
        return zcsl_stringmap_value_add(m, name(i).c_str(), "");
      },
      zcsl_stringmap_count);
  expect_unharmed<zcsl_stringtable_owner>(
      10, [](zcsl_stringtable** out) { return zcsl_stringtable_create(out, 0); },
      [](zcsl_stringtable* t, uint32_t i) {
        return zcsl_stringtable_add_value(t, name(i).c_str(), nullptr);
      },
      zcsl_stringtable_count);
}

/* Any kind of handle; every call of a list must give the same status. */
struct any_handle {
  void* object;
  template <class Container>
  operator Container*() const {
    return static_cast<Container*>(object);
  }
};

void expect_all(zvsdk_status expected, std::initializer_list<zvsdk_status> actual) {
  EXPECT_EQ(std::vector<zvsdk_status>(actual.size(), expected), std::vector<zvsdk_status>(actual));
}

TEST_F(container_status_test, handles_that_are_none) {
  uint64_t bytes[32] = {};
  uint32_t number = 0;
  void* pointer = nullptr;
  const any_handle h{bytes};
  const auto each = [](void*, void*) { return 1; };
  expect_all(0x900D0320,
             {zcsl_vector_add(h, h), zcsl_vector_insert(h, 0, h), zcsl_vector_set_min_size(h, 1),
              zcsl_vector_delete(h), zcsl_stack_push(h, h), zcsl_stack_pop(h, nullptr),
              zcsl_stack_top(h, &pointer), zcsl_stack_count(h, &number), zcsl_stack_delete(h),
              zcsl_vector2_get_buffer(h, nullptr, nullptr, nullptr), zcsl_vector2_delete(h),
              zcsl_vector2_set_min_size(h, 1), zcsl_vector2_add(h, h, 8, nullptr),
              zcsl_vector2_insert(h, 0, h, 8), zcsl_vector2_attach(h, h, 7, 8, 0, 0)});
  expect_all(
      0x900D0321,
      {zcsl_vector_getindex(h, 0, &pointer), zcsl_vector_removeindex(h, 0, nullptr),
       zcsl_vector_deleteindex(h, 0), zcsl_vector_count(h, &number), zcsl_vector_clear(h),
       zcsl_vector_find(h, h, nullptr), zcsl_vector_sort(h, nullptr, 0),
       zcsl_vector_foreach(h, each, nullptr), zcsl_vector2_getindex(h, 0, &pointer),
       zcsl_vector2_count(h, &number), zcsl_vector2_sort(h, nullptr, 0),
       zcsl_vector2_swapindex(h, 0, 0), zcsl_vector2_find(h, h, nullptr),
       zcsl_vector2_deleteindex(h, 0), zcsl_vector2_deleterange(h, 0, 0), zcsl_vector2_clear(h)});
  expect_all(0x900D0321, {zcsl_hashmap_delete(h), zcsl_hashmap_insert(h, 1, h),
                          zcsl_hashmap_enum(h, &pointer, nullptr, nullptr),
                          zcsl_hashtable_delete(h), zcsl_hashtable_count(h, &number),
                          zcsl_hashtable_value_add(h, "k", "v", 1, 1), zcsl_stringmap_delete(h),
                          zcsl_stringmap_value_add(h, "k", "v"), zcsl_stringmap_clear(h)});
  expect_all(0x900D0321, {zcsl_stringtable_delete(h), zcsl_stringtable_clear(h),
                          zcsl_stringtable_add_value(h, "a", nullptr),
                          zcsl_stringtable_attach_buffer(h, "\0a", 3)});
}

TEST_F(container_status_test, missing_pointers) {
  zcsl_vector2_owner vector2;
  zcsl_hashtable_owner table;
  zcsl_stringtable_owner texts;
  ASSERT_EQ(0u, zcsl_vector2_create(vector2.out(), 8, 0, nullptr, nullptr));
  ASSERT_EQ(0u, zcsl_hashtable_create(table.out(), 0, nullptr));
  ASSERT_EQ(0u, zcsl_stringtable_create(texts.out(), 0));
  uint32_t number = 9;
  const any_handle none{nullptr}, t{table.get()}, s{texts.get()};
  expect_all(0, {zcsl_vector_delete(none), zcsl_stack_delete(none), zcsl_stringtable_clear(none),
                 zcsl_vector_count(none, &number), zcsl_vector2_set_min_size(none, 1)});
  EXPECT_EQ(0u, number);
  EXPECT_EQ(0x100D0003u, zcsl_hashtable_value_find_ex(none, nullptr, 0, nullptr, nullptr));
  EXPECT_EQ(0x900D0209u, zcsl_vector2_insert(vector2.get(), 0, &number, 9));
  expect_all(0x900D0001,
             {zcsl_vector_create(none, 0, nullptr, nullptr), zcsl_vector_count(none, nullptr),
              zcsl_hashtable_clear(none), zcsl_vector2_attach(vector2.get(), &number, 8, 0, 0, 0)});
  expect_all(0x900D0001, {zcsl_hashtable_value_add(t, nullptr, "x", 1, 1),
                          zcsl_hashtable_value_add(t, "k", "x", 0, 1),
                          zcsl_hashtable_value_add(t, "k", nullptr, 1, 1),
                          zcsl_hashtable_value_find_ex(t, nullptr, 0, nullptr, nullptr)});
  expect_all(0x900D0001,
             {zcsl_stringtable_add_value(s, "", nullptr),
              zcsl_stringtable_get_value(s, 0, nullptr, nullptr),
              zcsl_stringtable_get_value_ref(s, "a", nullptr), zcsl_stringtable_remove_value(s, 0),
              zcsl_stringtable_attach_buffer(s, nullptr, 3)});
  zcsl_vector* vector = nullptr;
  ASSERT_EQ(0u, zcsl_datatypes_shutdown());
  EXPECT_EQ(0x900D0007u, zcsl_vector_create(&vector, 0, nullptr, nullptr));
  ASSERT_EQ(0u, zcsl_datatypes_initialize());
}

}  // namespace
