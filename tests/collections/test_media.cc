// Media and their values: what attributes are handed, and whole lives of collections against a
// plain model.
#include <algorithm>
#include <map>
#include <random>

#include "tests/collections/collection_fixture.h"
#include "tests/common/use_collection.h"

namespace {

using media = collection_test;

playlist_collect_context* s_context;
const playlist_collect_api* s_api;

TEST_F(media, an_attribute_may_add_values_for_the_length_of_the_call) {
  info().table.collect_attribute_data = [](playlist_collect_context* context,
                                           const playlist_collect_api* api) -> zvsdk_status {
    s_context = context;
    s_api = api;
    EXPECT_STREQ("the ident", output_of(api->get_media_ident, context));
    return 0;
  };
  EXPECT_EQ(0u, add("the ident", {}));
  EXPECT_TRUE(zvsdk_is_error(s_api->set_integer_data(s_context, 1)));
  EXPECT_TRUE(zvsdk_is_error(s_api->set_string_data(s_context, "a")));
}

// Negative numbers and empty texts are refused.
const texts s_values = {"#0",     "#1",  "#2147483647",  "1", "text",
                        "text 2", "#-1", "#-2147483648", ""};

// The plain model: idents in the order of their arrival, and the values of each without repeats.
class random_media : public media {
 protected:
  void add_something(const std::string& ident) {
    texts made(random() % 4);
    for (std::string& value : made) value = s_values[random() % s_values.size()];
    const auto changes = collection->change_count;
    EXPECT_EQ(0u, made.empty() ? zvsdk_playlist_collection_add_ident(collection, ident.c_str())
                               : add(ident, made));
    EXPECT_EQ(changes + 1, collection->change_count) << "also when nothing is new";
    if (std::ranges::count(order, ident) == 0) order.push_back(ident);
    for (const std::string& value : made)
      if (!value.empty() && value[1] != '-' && std::ranges::count(held[ident], value) == 0)
        held[ident].push_back(value);
  }

  void remove_something(const std::string& ident) {
    const bool present = std::erase(order, ident) != 0;
    const auto changes = collection->change_count;
    held.erase(ident);
    EXPECT_EQ(present ? 0 : playlist_warn_not_found,
              zvsdk_playlist_collection_ident_remove(collection, ident.c_str()));
    EXPECT_EQ(changes + present, collection->change_count);
  }

  void compare() {
    ASSERT_EQ(order, idents());
    uint32_t index = 0;
    size_t records = 0;
    for (uint32_t i = 0; i < order.size(); ++i) {
      records += held[order[i]].size();
      ASSERT_EQ(held[order[i]], values(order[i])) << order[i];
      zvsdk_playlist_collection_ident_find(collection, order[i].c_str(), 0, &index, nullptr);
      ASSERT_EQ(i + 1, index);
    }
    ASSERT_EQ(records, records_view(info().records).count) << "none is left of what was removed";
    ASSERT_GE(3u, output_of(zcsl_stringtable_count, collection->strings)) << "equal texts are one";
    ASSERT_TRUE(
        std::ranges::is_sorted(records_view(info().records), {}, &playlist_attr_data::ident_ref));
  }

  // Bytes keep everything, and what is read from them goes on in the place of what was written.
  void store_and_restore() {
    const std::string data = serialized(collection);
    zvsdk_playlist_collection_release(collection);
    ASSERT_NE(nullptr, collection = deserialized(data));
    EXPECT_EQ(data, serialized(collection));
    compare();
  }

  std::mt19937 random{7};
  texts order;
  std::map<std::string, texts> held;
};

TEST_F(random_media, agrees_with_a_plain_model) {
  for (int step = 0; step < 2000 && !HasFatalFailure(); ++step) {
    const std::string ident = "ident-" + std::to_string(random() % 60);
    random() % 3 ? add_something(ident) : remove_something(ident);
    if (step % 50 != 0) continue;
    compare();
    if (step % 100 == 0 && !HasFatalFailure()) store_and_restore();
  }
}

}  // namespace
