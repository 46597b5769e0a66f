/*
 * collection_fixture.h: a module that is up, the tests' own attribute, and a collection that has
 * it and gives values back in the form in which they were added.
 */
#ifndef COLLECTION_FIXTURE_H
#define COLLECTION_FIXTURE_H

#include "tests/common/collection_values.h"
#include "tests/common/test_attribute.h"

class collection_test : public playlist_test {
 protected:
  void SetUp() override {
    playlist_test::SetUp();
    playlist_attribute attribute = test_attribute();
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&attribute));
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("main", &collection));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    playlist_test::TearDown();
  }

  zvsdk_status add(const std::string& ident, const texts& values) {
    const zdo_ptr object = make_object("test");
    for (const std::string& value : values)
      zvsdk_manager_zdo_value_add(object.get(), "test_values", value.c_str());
    return zvsdk_playlist_collection_add_zdo(collection, ident.c_str(), object.get());
  }

  playlist_attribute_info& info() { return info_of(collection, "TEST_values"); }
  texts values(const std::string& ident) {
    return values_of(collection, "test_values", ident.c_str());
  }

  /* What enumeration gives, which must be as many as are counted. */
  texts idents() {
    const texts all = listed([this](uint32_t index, const char** ident) {
      return zvsdk_playlist_collection_ident_enum(collection, index, ident, nullptr);
    });
    uint32_t count = 0;
    EXPECT_EQ(0u, zvsdk_playlist_collection_ident_count(collection, &count));
    EXPECT_EQ(count, all.size());
    return all;
  }

  playlist_collection* collection = nullptr;
};

#endif
