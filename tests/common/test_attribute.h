/*
 * test_attribute.h: a complete attribute of the tests' own, "test_values". It stores what a data
 * object lists under that name: "#7" is the integer 7, anything else a text.
 */
#ifndef TEST_ATTRIBUTE_H
#define TEST_ATTRIBUTE_H

#include <cstdlib>

#include "module/playlist_handles.h"
#include "tests/common/playlist_fixture.h"

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
  attribute.attribute_name = [](const char** name) -> zvsdk_status {
    return *name = "test_values", 0;
  };
  attribute.supported_operators = [](uint32_t, uint32_t*) { return playlist_warn_not_found; };
  attribute.collect_attribute_data = test_collect;
  attribute.create_instance = [](playlist_attribute_instance**) -> zvsdk_status { return 0; };
  return attribute;
}

#endif
