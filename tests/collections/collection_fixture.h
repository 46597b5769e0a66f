/*
 * collection_fixture.h: a module that is up, an attribute of the tests' own, and a collection. The
 * attribute stores what a data object lists under its name: "#7" is the integer 7, anything else a
 * text.
 */
#ifndef COLLECTION_FIXTURE_H
#define COLLECTION_FIXTURE_H

#include "collections/playlist_collection.h"
#include "module/playlist_handles.h"
#include "tests/module/module_fixture.h"

inline zvsdk_status test_attribute_name(const char** name) {
  *name = "test_values";
  return 0;
}

inline zvsdk_status test_collect(playlist_collect_context* context,
                                 const playlist_collect_api* api) {
  playlist_zdo_owner object;
  const char* text = nullptr;
  if (const zvsdk_status status = api->get_media_zdo(context, object.out())) return status;
  for (uint32_t i = 1;
       g_playlist_zdo_interface->zdo_value_get(object.get(), "test_values", i, &text) == 0; ++i) {
    if (text[0] == '#')
      EXPECT_EQ(text[1] == '-' ? playlist_error_bad_data : 0,
                api->set_integer_data(context, std::atoi(text + 1)));
    else
      EXPECT_EQ(text[0] == '\0', zvsdk_is_error(api->set_string_data(context, text)));
  }
  return playlist_error_internal;  // nobody looks at it
}

inline playlist_attribute test_attribute() {
  playlist_attribute attribute = {};
  attribute.attribute_name = test_attribute_name;
  attribute.supported_operators = [](uint32_t, uint32_t*) { return playlist_warn_not_found; };
  attribute.collect_attribute_data = test_collect;
  attribute.create_instance = [](playlist_attribute_instance**) { return zvsdk_status{0}; };
  return attribute;
}

class collection_test : public module_test {
 protected:
  void SetUp() override {
    module_test::SetUp();
    playlist_attribute attribute = test_attribute();
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&attribute));
    ASSERT_EQ(0u, zvsdk_playlist_collection_create("main", &collection));
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    module_test::TearDown();
  }

  zvsdk_status add(const std::string& ident, const texts& values) {
    playlist_zdo_owner object;
    EXPECT_EQ(0u, zvsdk_manager_zdo_create("test", object.out()));
    for (const std::string& value : values)
      zvsdk_manager_zdo_value_add(object.get(), "test_values", value.c_str());
    return zvsdk_playlist_collection_add_zdo(collection, ident.c_str(), object.get());
  }

  std::vector<playlist_attr_data> records() {
    playlist_attribute_info* info = nullptr;
    EXPECT_EQ(0u, playlist_collection_get_attrinfo(collection, "TEST_values", &info));
    void* data = nullptr;
    uint32_t bytes = 0;
    zcsl_vector2_get_buffer(info->records, &data, &bytes, nullptr);
    const auto* first = static_cast<const playlist_attr_data*>(data);
    return {first, first + bytes / sizeof(*first)};
  }

  /* The stored values of a media in the form in which they were given. */
  texts values(const std::string& ident) {
    uint32_t ref = 0;
    EXPECT_EQ(0u, zcsl_stringtable_get_value_ref(collection->idents, ident.c_str(), &ref));
    texts found;
    for (const playlist_attr_data& record : records()) {
      const char* text = nullptr;
      if (record.ident_ref != ref) continue;
      if (record.value & playlist_string_flag)
        zcsl_stringtable_get_value(collection->strings, record.value & ~playlist_string_flag, &text,
                                   nullptr);
      found.push_back(text ? text : "#" + std::to_string(record.value));
    }
    return found;
  }

  /* What enumeration gives, which must be as many as are counted. */
  texts idents() {
    texts listed;
    uint32_t count = 0;
    const char* ident = nullptr;
    while (zvsdk_playlist_collection_ident_enum(collection, listed.size(), &ident, nullptr) == 0)
      listed.push_back(ident);
    EXPECT_EQ(0u, zvsdk_playlist_collection_ident_count(collection, &count));
    EXPECT_EQ(count, listed.size());
    return listed;
  }

  playlist_collection* collection = nullptr;
};

#endif
