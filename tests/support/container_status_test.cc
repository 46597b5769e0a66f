// What all containers share: an unchanged container after every allocation that can fail, growth at
// the right moments, and the statuses for missing pointers and handles that are none.
#include "tests/support/container_fixture.h"

namespace {

using numbers = std::vector<uint32_t>;

class container_status_test : public container_test {
 protected:
  /*
   * Makes a container and fills it in 60 steps, with each allocation refused in turn and at last
   * with none. Returns which steps of that took more than their `usual` number of allocations.
   */
  template <class Owner, class Create, class Step, class Count>
  numbers fill(uint64_t usual, Create create, Step step, Count count_items) {
    numbers grown_at;
    memory.for_each_failure([&] {
      Owner owner;
      uint32_t done = 0, count = 0;
      zvsdk_status status = create(owner.out());
      for (grown_at.clear(); owner && !status && done < 60; done += status == 0) {
        const uint64_t before = memory.requests();
        status = step(owner.get(), done);
        if (memory.requests() - before > usual) grown_at.push_back(done);
      }
      EXPECT_EQ(status ? zcsl_code_no_memory : 0, zvsdk_low_word(status));
      if (!status || !owner) return;
      EXPECT_EQ(0u, count_items(owner.get(), &count));
      EXPECT_EQ(done, count);
      EXPECT_EQ(0u, step(owner.get(), done)) << "the same step again";
    });
    return grown_at;
  }
};

std::string name(uint32_t number) {
  return "name " + std::to_string(number);
}

TEST_F(container_status_test, vectors_and_stack_grow_unharmed) {
  const auto make = [](auto v) { return zcsl_vector_create(v, 0x11, nullptr, nullptr); };
  const auto make_for_one = [&](auto v) {
    const zvsdk_status status = make(v);
    return status ? status : zcsl_vector_set_min_size(*v, 1);
  };
  const auto add = [](auto v, uint32_t i) { return zcsl_vector_add(v, as_pointer(i)); };
  EXPECT_EQ((numbers{0, 16, 24, 36, 54}), fill<zcsl_vector_owner>(0, make, add, zcsl_vector_count));
  EXPECT_EQ((numbers{1, 2, 3, 4, 6, 9, 12, 18, 27, 39, 57}),
            fill<zcsl_vector_owner>(0, make_for_one, add, zcsl_vector_count));

  const auto make2 = [](auto v) { return zcsl_vector2_create(v, 4, 0x31, nullptr, nullptr); };
  const auto add2 = [](auto v, uint32_t i) { return zcsl_vector2_add(v, &i, 4, nullptr); };
  EXPECT_EQ((numbers{0, 16, 27, 42}), fill<zcsl_vector2_owner>(0, make2, add2, zcsl_vector2_count));

  const auto make_stack = [](auto s) { return zcsl_stack_create(s, 1, nullptr); };
  const auto push = [](auto s, uint32_t i) { return zcsl_stack_push(s, as_pointer(i)); };
  EXPECT_EQ(60u, fill<zcsl_stack_owner>(0, make_stack, push, zcsl_stack_count).size());
}

// A hash map keeps a quarter free, and key 0 takes no slot. A key with one value is one allocation,
// a further value two.
TEST_F(container_status_test, maps_and_tables_grow_unharmed) {
  const auto make_map = [](auto m) { return zcsl_hashmap_create(m, 1, nullptr); };
  const auto insert = [](auto m, uint32_t i) { return zcsl_hashmap_insert(m, i, nullptr); };
  EXPECT_EQ((numbers{12, 24, 48}),
            fill<zcsl_hashmap_owner>(0, make_map, insert, zcsl_hashmap_count));
  const auto make_map_for_30 = [&](auto m) {
    const zvsdk_status status = make_map(m);
    return status ? status : zcsl_hashmap_set_min_size(*m, 30);
  };
  EXPECT_EQ((numbers{48}),
            fill<zcsl_hashmap_owner>(0, make_map_for_30, insert, zcsl_hashmap_count));

  const auto make = [](auto t) { return zcsl_hashtable_create(t, 0x41, nullptr); };
  const auto add = [](auto t, uint32_t i) {
    return zcsl_hashtable_value_add(t, name(i < 58 ? i : 0).c_str(), &i, sizeof i, 1);
  };
  EXPECT_EQ((numbers{0, 12, 24, 48, 58, 59}),
            fill<zcsl_hashtable_owner>(1, make, add, zcsl_hashtable_count));

  const auto make_named = [](auto m) { return zcsl_stringmap_create(m, 1); };
  const auto put = [](auto m, uint32_t i) {
    return zcsl_stringmap_value_add(m, name(i).c_str(), "");
  };
  fill<zcsl_stringmap_owner>(0, make_named, put, zcsl_stringmap_count);

  const auto make_texts = [](auto t) { return zcsl_stringtable_create(t, 0); };
  const auto intern = [](auto t, uint32_t i) {
    return zcsl_stringtable_add_value(t, name(i).c_str(), nullptr);
  };
  fill<zcsl_stringtable_owner>(0, make_texts, intern, zcsl_stringtable_count);
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

// Which of the two codes an operation gives is part of its contract.
TEST_F(container_status_test, handles_that_are_none) {
  uint64_t bytes[32] = {};
  void* pointer = nullptr;
  const any_handle h{bytes};
  expect_all(0x900D0320,
             {zcsl_vector_add(h, h), zcsl_vector_insert(h, 0, h), zcsl_vector_set_min_size(h, 1),
              zcsl_vector_delete(h), zcsl_stack_push(h, h), zcsl_stack_delete(h),
              zcsl_vector2_get_buffer(h, nullptr, nullptr, nullptr), zcsl_vector2_delete(h),
              zcsl_vector2_set_min_size(h, 1), zcsl_vector2_add(h, h, 8, nullptr),
              zcsl_vector2_insert(h, 0, h, 8), zcsl_vector2_attach(h, h, 7, 8, 0, 0)});
  expect_all(0x900D0321,
             {zcsl_vector_getindex(h, 0, &pointer), zcsl_vector_deleteindex(h, 0),
              zcsl_vector_clear(h), zcsl_vector_find(h, h, nullptr), zcsl_vector_sort(h, 0, 0),
              zcsl_vector2_getindex(h, 0, &pointer), zcsl_vector2_sort(h, nullptr, 0),
              zcsl_vector2_clear(h), zcsl_vector2_swapindex(h, 0, 0),
              zcsl_vector2_find(h, h, nullptr), zcsl_vector2_deleterange(h, 0, 0),
              zcsl_hashmap_delete(h), zcsl_hashmap_insert(h, 1, h), zcsl_hashtable_delete(h),
              zcsl_hashtable_value_add(h, "k", "v", 1, 1), zcsl_stringmap_delete(h),
              zcsl_stringtable_delete(h), zcsl_stringtable_attach_buffer(h, "\0a", 3)});
}

TEST_F(container_status_test, missing_pointers) {
  zcsl_hashtable_owner table;
  zcsl_stringtable_owner texts;
  ASSERT_EQ(0u, zcsl_hashtable_create(table.out(), 0, nullptr));
  ASSERT_EQ(0u, zcsl_stringtable_create(texts.out(), 0));
  uint32_t number = 9;
  zcsl_vector2* vector2 = nullptr;
  const any_handle none{nullptr}, t{table.get()}, s{texts.get()};
  expect_all(0, {zcsl_vector_delete(none), zcsl_stack_delete(none), zcsl_stringtable_clear(none),
                 zcsl_vector_count(none, &number), zcsl_vector2_set_min_size(none, 1)});
  EXPECT_EQ(0u, number);
  EXPECT_EQ(0x100D0003u, zcsl_hashtable_value_find_ex(none, nullptr, 0, nullptr, nullptr));
  expect_all(
      0x900D0001,
      {zcsl_vector_create(none, 0, nullptr, nullptr), zcsl_vector_count(none, nullptr),
       zcsl_vector2_create(&vector2, 0, 0, nullptr, nullptr), zcsl_hashtable_clear(none),
       zcsl_hashtable_value_add(t, nullptr, "x", 1, 1), zcsl_hashtable_value_add(t, "k", "x", 0, 1),
       zcsl_hashtable_value_add(t, "k", nullptr, 1, 1), zcsl_stringtable_remove_value(s, 0),
       zcsl_hashtable_value_find_ex(t, nullptr, 0, nullptr, nullptr),
       zcsl_stringtable_add_value(s, "", nullptr), zcsl_stringtable_attach_buffer(s, nullptr, 3)});
  ASSERT_EQ(0u, zcsl_datatypes_shutdown());
  EXPECT_EQ(0x900D0007u, zcsl_vector2_create(&vector2, 4, 0, nullptr, nullptr));
  ASSERT_EQ(0u, zcsl_datatypes_initialize());
}

}  // namespace
