// What all containers share: the statuses for handles that are none, and growth in proportion.

#include "tests/support/container_fixture.h"

namespace {

using container_status_test = container_test;

// Any kind of handle; every call of a list must give the same status.
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
  const any_handle h{bytes}, none{nullptr};
  expect_all(0x900D0320, {zcsl_vector_add(h, h), zcsl_vector_insert(h, 0, h), zcsl_vector_delete(h),
                          zcsl_stack_push(h, h), zcsl_stack_delete(h), zcsl_vector2_delete(h),
                          zcsl_vector2_get_buffer(h, nullptr, nullptr, nullptr),
                          zcsl_vector2_insert(h, 0, h, 8), zcsl_vector2_add(h, h, 8, nullptr),
                          zcsl_vector2_attach(h, h, 7, 8, 0, 0)});
  expect_all(0x900D0321, {zcsl_vector_getindex(h, 0, &pointer), zcsl_vector_deleteindex(h, 0),
                          zcsl_vector_find(h, h, nullptr), zcsl_vector2_getindex(h, 0, &pointer),
                          zcsl_vector2_deleterange(h, 0, 0), zcsl_vector2_find(h, h, nullptr),
                          zcsl_hashmap_delete(h), zcsl_hashtable_delete(h),
                          zcsl_stringmap_delete(h), zcsl_stringtable_delete(h)});
  expect_all(0, {zcsl_vector_delete(none), zcsl_stack_delete(none), zcsl_stringtable_clear(none),
                 zcsl_vector2_set_min_size(none, 1)});
}

TEST_F(container_status_test, all_grow_in_proportion) {
  zcsl_vector_owner vector;
  zcsl_vector2_owner vector2;
  zcsl_hashmap_owner map;
  zcsl_hashtable_owner table;
  zcsl_stringtable_owner texts;
  expect_all(0, {zcsl_vector_create(vector.out(), 0x11, nullptr, nullptr),
                 zcsl_vector_set_min_size(vector.get(), 1),
                 zcsl_vector2_create(vector2.out(), 4, 0x31, nullptr, nullptr),
                 zcsl_hashmap_create(map.out(), 1, nullptr),
                 zcsl_hashtable_create(table.out(), 0x41, nullptr),
                 zcsl_stringtable_create(texts.out(), 0)});
  const uint64_t before = memory.requests();
  for (uint32_t i = 0; i < 300; ++i) {
    zcsl_vector_add(vector.get(), as_pointer(i));
    zcsl_vector2_add(vector2.get(), &i, sizeof i, nullptr);
    zcsl_hashmap_insert(map.get(), i, nullptr);
    zcsl_hashtable_value_add(table.get(), std::to_string(i).c_str(), "x", 1, 1);
    zcsl_stringtable_add_value(texts.get(), std::to_string(i).c_str(), nullptr);
  }
  EXPECT_EQ(300u + 64, memory.requests() - before) << "a block for each key, and steps of growth";
}

}  // namespace
