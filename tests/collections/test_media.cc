// Media and their values: how values merge, what attributes are handed, and whole lives of
// collections against a plain model.
#include <algorithm>
#include <map>
#include <random>

#include "tests/collections/collection_fixture.h"

namespace {

class media : public collection_test {};

TEST_F(media, values_merge) {
  const struct {
    const char* what;
    std::vector<texts> additions;
    texts stored;
  } table[] = {
      {"no values", {{}}, {}},
      {"zero is a value", {{"#0"}}, {"#0"}},
      {"the highest integer", {{"#2147483647"}}, {"#2147483647"}},
      {"in the order of arrival", {{"#9", "b", "#1", "a"}}, {"#9", "b", "#1", "a"}},
      {"a text is not its number", {{"#1", "b"}}, {"#1", "b"}},
      {"no value twice", {{"#5", "x", "#5", "x"}, {"x", "#5"}}, {"#5", "x"}},
      {"old ones stay ahead of new ones", {{"#5"}, {"#4", "#5", "y"}}, {"#5", "#4", "y"}},
      {"negative ones are refused", {{"#-1", "#3", "#-2147483648"}}, {"#3"}},
      {"empty texts are refused", {{"", "z"}}, {"z"}},
  };
  // The second time around every media but one has later ones behind it.
  for (int round = 0; round < 2; ++round)
    for (const auto& row : table) {
      for (const texts& addition : row.additions) EXPECT_EQ(0u, add(row.what, addition));
      EXPECT_EQ(row.stored, values(row.what)) << row.what;
    }
  uint32_t held = 0;
  EXPECT_EQ(0u, zcsl_stringtable_count(collection->strings, &held));
  EXPECT_EQ(5u, held) << "equal texts are one";
  EXPECT_EQ(22u, collection->change_count) << "a merge that changes nothing counts as well";
}

TEST_F(media, an_entry_without_attribute_is_passed_over) {
  playlist_attribute_info* info = nullptr;
  ASSERT_EQ(0u, playlist_collection_get_attrinfo(collection, "test_values", &info));
  info->attribute = nullptr;
  EXPECT_EQ(0u, add("a", {"#1"}));
  EXPECT_TRUE(values("a").empty());
}

playlist_collect_context* s_context;
const playlist_collect_api* s_api;
zvsdk_list_element* s_element;

zvsdk_status curious_collect(playlist_collect_context* context, const playlist_collect_api* api) {
  s_context = context;
  s_api = api;
  const char* ident = nullptr;
  zvsdk_zdo* object = nullptr;
  EXPECT_EQ(0u, api->get_media_ident(context, &ident));
  EXPECT_STREQ("the ident", ident);
  EXPECT_EQ(playlist_error_invalid_arg, api->get_media_ident(context, nullptr));
  EXPECT_EQ(playlist_warn_not_found, api->get_media_zdo(context, &object));
  return api->get_media_list_element(context, &s_element);
}

TEST_F(media, an_attribute_is_handed_the_element_for_the_length_of_the_call) {
  playlist_attribute curious = test_attribute();
  curious.attribute_name = [](const char** name) {
    return *name = "test_curious", zvsdk_status{0};
  };
  curious.collect_attribute_data = curious_collect;
  ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&curious));
  ASSERT_EQ(0u, zvsdk_playlist_collection_release(collection));
  ASSERT_EQ(0u, zvsdk_playlist_collection_create("curious", &collection));

  playlist_list_owner list;
  playlist_element_owner element;
  ASSERT_EQ(0u, g_playlist_lists_interface->list_retrieve("zvsdk_list_type_tempos", "eng", nullptr,
                                                          nullptr, nullptr, nullptr, nullptr,
                                                          list.out()));
  for (uint32_t id = 0; id < 100000 && !element; ++id)
    g_playlist_lists_interface->list_get_element_by_id(list.get(), id, 0, element.out());
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_list_element(collection, "the ident", element.get()));
  EXPECT_EQ(element.get(), s_element);
  EXPECT_TRUE(zvsdk_is_error(s_api->set_integer_data(s_context, 1)));
  EXPECT_TRUE(zvsdk_is_error(s_api->set_string_data(s_context, "a")));
}

// The plain model: idents in the order of their arrival, and the values of each.
class random_media : public media {
 protected:
  void add_something(const std::string& ident) {
    texts made(random() % 4);
    for (std::string& value : made)
      value = (random() % 2 ? "#" : "text ") + std::to_string(random() % 5);
    EXPECT_EQ(0u, made.empty() ? zvsdk_playlist_collection_add_ident(collection, ident.c_str())
                               : add(ident, made));
    if (std::ranges::count(order, ident) == 0) order.push_back(ident);
    for (const std::string& value : made)
      if (std::ranges::count(held[ident], value) == 0) held[ident].push_back(value);
  }

  void remove_something(const std::string& ident) {
    const bool present = std::erase(order, ident) != 0;
    held.erase(ident);
    EXPECT_EQ(present ? 0 : playlist_warn_not_found,
              zvsdk_playlist_collection_ident_remove(collection, ident.c_str()));
  }

  void find_something(const std::string& ident) {
    const auto found = std::ranges::find(order, ident);
    uint32_t index = 0;
    zvsdk_playlist_collection_ident_find(collection, ident.c_str(), 0, &index, nullptr);
    EXPECT_EQ(found == order.end() ? 0 : found - order.begin() + 1, index);
  }

  std::mt19937 random{7};
  texts order;
  std::map<std::string, texts> held;
};

TEST_F(random_media, agrees_with_a_plain_model) {
  for (int step = 0; step < 2000; ++step) {
    const std::string ident = "ident-" + std::to_string(random() % 60);
    const uint32_t choice = random() % 8;
    choice < 4   ? add_something(ident)
    : choice < 6 ? remove_something(ident)
                 : find_something(ident);
    if (step % 50 != 0) continue;
    ASSERT_EQ(order, idents());
    for (const std::string& each : order) ASSERT_EQ(held[each], values(each)) << each;
    ASSERT_TRUE(std::ranges::is_sorted(records(), {}, &playlist_attr_data::ident_ref));
  }
}

}  // namespace
