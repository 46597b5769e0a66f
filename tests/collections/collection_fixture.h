/*
 * collection_fixture.h: a module that is up, with two attributes of the tests' own, and a
 * collection. The attributes store what a data object of context "test" lists under their names:
 * "#7" is the integer 7, anything else a text.
 */
#ifndef COLLECTION_FIXTURE_H
#define COLLECTION_FIXTURE_H

#include <string>
#include <vector>

#include "collections/playlist_collection.h"
#include "module/playlist_handles.h"
#include "tests/module/module_fixture.h"

using texts = std::vector<std::string>;

inline constexpr const char* s_test_attributes[] = {"test_first", "test_second"};

/* The statuses that the callbacks gave during collection, in order. */
inline std::vector<zvsdk_status> s_collect_statuses;

template <int Which>
zvsdk_status test_attribute_name(const char** name) {
  *name = s_test_attributes[Which];
  return 0;
}

inline zvsdk_status test_operators(uint32_t index, uint32_t* op) {
  if (index != 0) return playlist_warn_not_found;
  *op = playlist_op_equal;
  return 0;
}

inline zvsdk_status test_instance(playlist_attribute_instance**) {
  return 0;
}

inline zvsdk_status store_value(playlist_collect_context* context, const playlist_collect_api* api,
                                const char* text) {
  return text[0] == '#' ? api->set_integer_data(context, std::atoi(text + 1))
                        : api->set_string_data(context, text);
}

template <int Which>
zvsdk_status test_collect(playlist_collect_context* context, const playlist_collect_api* api) {
  zvsdk_zdo* object = nullptr;
  if (const zvsdk_status status = api->get_media_zdo(context, &object)) return status;
  const playlist_zdo_owner owner(object);
  const char* text = nullptr;
  for (uint32_t ordinal = 1; g_playlist_zdo_interface->zdo_value_get(
                                 object, s_test_attributes[Which], ordinal, &text) == 0;
       ++ordinal)
    s_collect_statuses.push_back(store_value(context, api, text));
  return playlist_error_internal;  // not looked at
}

template <int Which>
playlist_attribute test_attribute() {
  playlist_attribute attribute = {};
  attribute.attribute_name = test_attribute_name<Which>;
  attribute.supported_operators = test_operators;
  attribute.collect_attribute_data = test_collect<Which>;
  attribute.create_instance = test_instance;
  return attribute;
}

/* A data object that lists values for the two attributes. */
inline playlist_zdo_owner test_object(const texts& first, const texts& second = {}) {
  playlist_zdo_owner object;
  EXPECT_EQ(0u, zvsdk_manager_zdo_create("test", object.out()));
  for (const std::string& text : first)
    zvsdk_manager_zdo_value_add(object.get(), s_test_attributes[0], text.c_str());
  for (const std::string& text : second)
    zvsdk_manager_zdo_value_add(object.get(), s_test_attributes[1], text.c_str());
  return object;
}

class collection_test : public module_test {
 protected:
  void SetUp() override {
    module_test::SetUp();
    s_collect_statuses.clear();
    const playlist_attribute first = test_attribute<0>();
    const playlist_attribute second = test_attribute<1>();
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&first));
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&second));
    collection = create("main");
  }
  void TearDown() override {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    module_test::TearDown();
  }

  static playlist_collection* create(const char* name) {
    playlist_collection* created = nullptr;
    EXPECT_EQ(0u, zvsdk_playlist_collection_create(name, &created));
    return created;
  }

  static playlist_attribute_info* info_of(playlist_collection* of, const char* attribute) {
    playlist_attribute_info* info = nullptr;
    EXPECT_EQ(0u, playlist_collection_get_attrinfo(of, attribute, &info));
    return info;
  }

  zvsdk_status add(const std::string& ident, const texts& first, const texts& second = {}) {
    return zvsdk_playlist_collection_add_zdo(collection, ident.c_str(),
                                             test_object(first, second).get());
  }

  /* The stored values of a media in the form in which they were given. */
  texts values(const std::string& ident, const char* attribute = s_test_attributes[0]) {
    uint32_t ref = 0;
    if (zcsl_stringtable_get_value_ref(collection->idents, ident.c_str(), &ref) != 0) return {};
    texts found;
    for (const playlist_attr_data& record : records(attribute))
      if (record.ident_ref == ref) found.push_back(text_of(record));
    return found;
  }

  std::vector<playlist_attr_data> records(const char* attribute = s_test_attributes[0]) {
    void* data = nullptr;
    uint32_t bytes = 0;
    zcsl_vector2_get_buffer(info_of(collection, attribute)->records, &data, &bytes, nullptr);
    const auto* first = static_cast<const playlist_attr_data*>(data);
    return {first, first + bytes / sizeof(*first)};
  }

  std::string text_of(const playlist_attr_data& record) {
    if ((record.value & playlist_string_flag) == 0) return "#" + std::to_string(record.value);
    const char* text = nullptr;
    EXPECT_EQ(0u, zcsl_stringtable_get_value(collection->strings,
                                             record.value & ~playlist_string_flag, &text, nullptr));
    return text ? text : "";
  }

  static uint32_t count(playlist_collection* of) {
    uint32_t count = 0;
    EXPECT_EQ(0u, zvsdk_playlist_collection_ident_count(of, &count));
    return count;
  }

  texts idents() {
    texts listed;
    const char* ident = nullptr;
    for (uint32_t i = 0; zvsdk_playlist_collection_ident_enum(collection, i, &ident, nullptr) == 0;
         ++i)
      listed.push_back(ident);
    return listed;
  }

  playlist_collection* collection = nullptr;
};

#endif
