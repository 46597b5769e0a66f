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
      {"no value twice", {{"#5", "x", "#5", "x"}, {"x", "#5"}}, {"#5", "x"}},
      {"old ones stay ahead of new ones", {{"#5"}, {"#4", "#5", "y"}}, {"#5", "#4", "y"}},
      {"negative ones are refused", {{"#-1", "#3", "#-2147483648"}}, {"#3"}},
      {"empty texts are refused", {{"", "z"}}, {"z"}},
  };
  for (const auto& row : table)
    for (const texts& addition : row.additions) EXPECT_EQ(0u, add(row.what, addition));
  for (const auto& row : table) EXPECT_EQ(row.stored, values(row.what)) << row.what;
  // A later media does not change how an earlier one merges.
  for (const auto& row : table) EXPECT_EQ(0u, add(row.what, row.additions.back()));
  for (const auto& row : table) EXPECT_EQ(row.stored, values(row.what)) << row.what;
  const auto refused = [](zvsdk_status status) { return status == playlist_error_bad_data; };
  EXPECT_EQ(4, std::ranges::count_if(s_collect_statuses, refused));
}

TEST_F(media, texts_are_stored_once_and_never_equal_integers) {
  EXPECT_EQ(0u, add("one", {"#1", "text"}, {"text"}));
  EXPECT_EQ(0u, add("two", {"text"}));
  uint32_t texts_held = 0;
  ASSERT_EQ(0u, zcsl_stringtable_count(collection->strings, &texts_held));
  EXPECT_EQ(1u, texts_held);
  const std::vector<playlist_attr_data> stored = records();
  ASSERT_EQ(3u, stored.size());
  EXPECT_EQ(1u, stored[0].value);
  EXPECT_EQ(playlist_string_flag | 1u, stored[1].value);
  EXPECT_EQ(stored[1].value, stored[2].value);
  EXPECT_EQ((texts{"text"}), values("one", s_test_attributes[1]));
}

TEST_F(media, counts_its_changes) {
  const auto changes = [&] { return collection->change_count; };
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, "a"));
  EXPECT_EQ(0u, add("a", {"#1"}));
  EXPECT_EQ(0u, add("a", {"#1"}));
  EXPECT_EQ(3u, changes());
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_collection_add_ident(collection, ""));
  EXPECT_EQ(playlist_warn_not_found, zvsdk_playlist_collection_ident_remove(collection, "b"));
  EXPECT_EQ(3u, changes());
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_remove(collection, "a"));
  EXPECT_EQ(4u, changes());
}

TEST_F(media, a_bare_ident_gains_values_later) {
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, "a"));
  EXPECT_EQ(1u, count(collection));
  EXPECT_TRUE(records().empty());
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, "b"));
  EXPECT_EQ(0u, add("a", {"#7"}));
  ASSERT_EQ(1u, records().size());
  EXPECT_EQ(1u, records()[0].ident_ref);
  EXPECT_EQ(2u, count(collection));
}

TEST_F(media, an_entry_without_attribute_is_passed_over) {
  info_of(collection, s_test_attributes[0])->attribute = nullptr;
  EXPECT_EQ(0u, add("a", {"#1"}, {"#2"}));
  EXPECT_TRUE(values("a").empty());
  EXPECT_EQ((texts{"#2"}), values("a", s_test_attributes[1]));
}

// What an attribute saw of one addition, and the context, kept beyond it.
struct {
  playlist_collect_context* context;
  const playlist_collect_api* api;
  std::string ident;
  zvsdk_status zdo_status;
  zvsdk_status element_status;
  zvsdk_list_element* element;
  zvsdk_status without_output;
} s_seen;

zvsdk_status curious_name(const char** name) {
  *name = "test_curious";
  return 0;
}

zvsdk_status curious_collect(playlist_collect_context* context, const playlist_collect_api* api) {
  s_seen.context = context;
  s_seen.api = api;
  const char* ident = nullptr;
  playlist_zdo_owner object;
  EXPECT_EQ(0u, api->get_media_ident(context, &ident));
  s_seen.ident = ident;
  s_seen.zdo_status = api->get_media_zdo(context, object.out());
  s_seen.element_status = api->get_media_list_element(context, &s_seen.element);
  s_seen.without_output = api->get_media_ident(context, nullptr);
  return 0;
}

class curious_media : public media {
 protected:
  void SetUp() override {
    media::SetUp();
    s_seen = {};
    playlist_attribute curious = test_attribute<0>();
    curious.attribute_name = curious_name;
    curious.collect_attribute_data = curious_collect;
    ASSERT_EQ(0u, zvsdk_playlist_register_attribute_provider(&curious));
    ASSERT_EQ(0u, zvsdk_playlist_collection_release(collection));
    collection = create("curious");
  }
};

TEST_F(curious_media, an_attribute_is_handed_what_came_with_the_media) {
  EXPECT_EQ(0u, add("with an object", {}));
  EXPECT_EQ("with an object", s_seen.ident);
  EXPECT_EQ(0u, s_seen.zdo_status);
  EXPECT_EQ(playlist_warn_not_found, s_seen.element_status);
  EXPECT_EQ(playlist_error_invalid_arg, s_seen.without_output);

  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  playlist_locale_owner locale;
  playlist_list_owner list;
  playlist_element_owner element;
  const char *language = nullptr, *region = nullptr, *descriptor = nullptr;
  ASSERT_EQ(0u, g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_MUSIC, locale.out()));
  ASSERT_EQ(0u, g_playlist_lists_interface->locale_get_info(locale.get(), nullptr, &language,
                                                            &region, &descriptor, nullptr));
  ASSERT_EQ(0u, g_playlist_lists_interface->list_retrieve("zvsdk_list_type_tempos", language,
                                                          region, descriptor, nullptr, nullptr,
                                                          nullptr, list.out()));
  uint32_t id = 0;
  for (; id < 100000 && !element; ++id)
    g_playlist_lists_interface->list_get_element_by_id(list.get(), id, 0, element.out());
  ASSERT_TRUE(element);
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_list_element(collection, "el", element.get()));
  EXPECT_EQ(playlist_warn_not_found, s_seen.zdo_status);
  EXPECT_EQ(0u, s_seen.element_status);
  EXPECT_EQ(element.get(), s_seen.element);
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_MUSIC));
}

TEST_F(curious_media, a_context_is_refused_after_its_call) {
  EXPECT_EQ(0u, add("a", {}));
  const char* ident = nullptr;
  EXPECT_TRUE(zvsdk_is_error(s_seen.api->get_media_ident(s_seen.context, &ident)));
  EXPECT_TRUE(zvsdk_is_error(s_seen.api->set_integer_data(s_seen.context, 1)));
  EXPECT_TRUE(zvsdk_is_error(s_seen.api->set_string_data(s_seen.context, "a")));
  EXPECT_EQ(nullptr, ident);
}

// The plain model: idents in the order of their arrival, and the values of each.
struct model {
  texts order;
  std::map<std::string, texts> first, second;

  bool holds(const std::string& ident) const { return std::ranges::count(order, ident) != 0; }
  void add(const std::string& ident) {
    if (!holds(ident)) order.push_back(ident);
  }
  static void merge(texts& into, const texts& values) {
    for (const std::string& value : values)
      if (std::ranges::count(into, value) == 0) into.push_back(value);
  }
  void remove(const std::string& ident) {
    std::erase(order, ident);
    first.erase(ident);
    second.erase(ident);
  }
  uint32_t find(const std::string& ident) const {  // from 1, or 0
    const auto found = std::ranges::find(order, ident);
    return found == order.end() ? 0 : static_cast<uint32_t>(found - order.begin() + 1);
  }
};

class random_media : public media {
 protected:
  std::string random_ident() { return "ident-" + std::to_string(random() % 60); }
  texts random_values() {
    texts made(random() % 4);
    for (std::string& value : made)
      value = (random() % 2 ? "#" : "text ") + std::to_string(random() % 5);
    return made;
  }

  void add_something() {
    const std::string ident = random_ident();
    plain.add(ident);
    if (random() % 4 == 0) {
      EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection, ident.c_str()));
      return;
    }
    const texts first = random_values();
    const texts second = random_values();
    EXPECT_EQ(0u, add(ident, first, second));
    model::merge(plain.first[ident], first);
    model::merge(plain.second[ident], second);
  }

  void remove_something() {
    const std::string ident = random_ident();
    const zvsdk_status expected = plain.holds(ident) ? 0 : playlist_warn_not_found;
    EXPECT_EQ(expected, zvsdk_playlist_collection_ident_remove(collection, ident.c_str()));
    plain.remove(ident);
  }

  void find_something() {
    const std::string ident = random_ident();
    const uint32_t start = random() % 8;
    const uint32_t position = plain.find(ident);
    uint32_t index = 0;
    const zvsdk_status status =
        zvsdk_playlist_collection_ident_find(collection, ident.c_str(), start, &index, nullptr);
    EXPECT_EQ(position > start ? 0 : playlist_warn_not_found, status);
    EXPECT_EQ(position > start ? position : 0, index);
  }

  void compare() {
    ASSERT_EQ(plain.order, idents());
    for (const std::string& ident : plain.order) {
      ASSERT_EQ(plain.first[ident], values(ident)) << ident;
      ASSERT_EQ(plain.second[ident], values(ident, s_test_attributes[1])) << ident;
    }
    for (const char* attribute : s_test_attributes) {
      const std::vector<playlist_attr_data> all = records(attribute);
      ASSERT_TRUE(std::ranges::is_sorted(all, {}, &playlist_attr_data::ident_ref));
    }
  }

  std::mt19937 random{7};
  model plain;
};

TEST_F(random_media, agrees_with_a_plain_model) {
  for (int round = 0; round < 40; ++round) {
    for (int step = 0; step < 50; ++step) {
      const uint32_t choice = random() % 8;
      if (choice < 4)
        add_something();
      else if (choice < 6)
        remove_something();
      else
        find_something();
    }
    compare();
    if (HasFatalFailure()) return;
  }
}

}  // namespace
