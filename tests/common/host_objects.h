/*
 * host_objects.h: what every test of this system says often: calls with one output, texts that are
 * enumerated, the error record, owners of the host's handles and one-line makers of data objects.
 */
#ifndef HOST_OBJECTS_H
#define HOST_OBJECTS_H

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "zvsdk_manager.h"

using texts = std::vector<std::string>;

/* What a call puts into its last parameter, given the others; it has to succeed. */
template <class... Parameters, class... Arguments>
auto output_of(zvsdk_status (*call)(Parameters...), Arguments... arguments) {
  using last = std::tuple_element_t<sizeof...(Arguments), std::tuple<Parameters...>>;
  std::remove_pointer_t<last> output = {};
  EXPECT_EQ(0u, call(arguments..., &output));
  return output;
}

/* What `next(index, &text)` hands out, from index 0 until it fails. */
template <class Next>
texts listed(Next next) {
  texts all;
  const char* text = nullptr;
  while (next(static_cast<uint32_t>(all.size()), &text) == 0) all.push_back(text);
  return all;
}

/* Whether a text has a part in it; says the text when that was not as expected. */
inline testing::AssertionResult has(const std::string& text, const std::string& part) {
  const bool found = text.find(part) != std::string::npos;
  return testing::AssertionResult(found) << '"' << part << "\" in:\n" << text;
}

inline zvsdk_error_info last_error() {
  return output_of(zvsdk_manager_errorinfo_get);
}

/* Owns a handle and gives it back through the call that releases its kind. */
template <auto Release>
struct handle_release {
  template <class Handle>
  void operator()(Handle* handle) const {
    EXPECT_EQ(0u, Release(handle));
  }
};
using zdo_ptr = std::unique_ptr<zvsdk_zdo, handle_release<zvsdk_manager_zdo_release>>;
using user_ptr = std::unique_ptr<zvsdk_user, handle_release<zvsdk_manager_user_release>>;

/* A data object of a context with its values and children; it takes references on the children. */
inline zdo_ptr make_object(
    const std::string& context,
    std::initializer_list<std::pair<const char*, const char*>> values = {},
    std::initializer_list<std::pair<const char*, const zdo_ptr&>> children = {}) {
  zdo_ptr object(output_of(zvsdk_manager_zdo_create, context.c_str()));
  for (const auto& [key, text] : values)
    EXPECT_EQ(0u, zvsdk_manager_zdo_value_add(object.get(), key, text));
  for (const auto& [key, child] : children)
    EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(object.get(), key, child.get()));
  return object;
}

#endif
