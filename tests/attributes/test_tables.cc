// What every attribute's table must obey, one row an attribute.
#include "attributes/playlist_attr_common.h"
#include "tests/attributes/attribute_fixture.h"

namespace {

// Operators by their codes, in index order.
const std::vector<uint32_t> s_of_names = {10, 11, 20, 30, 31};
const std::vector<uint32_t> s_of_ranges = {10, 11, 20, 12, 13, 14, 15};

struct attribute_row {
  const char* name;
  std::vector<uint32_t> operators;
  zvsdk_status past_operators;
  const char* value_key; /* where an object served from a collection carries the value */
  const char* value;
  int32_t like_threshold; /* of a seed */
};

const attribute_row s_rows[] = {
    {"ZV_TrackName", s_of_names, playlist_error_unsupported, "ZV_TrackName", "Yellow", 600},
    {"ZV_ArtistName", s_of_names, playlist_error_unsupported, "ZV_ArtistName", "Cher", 600},
    {"ZV_AlbumName", s_of_names, playlist_error_unsupported, "ZV_AlbumName", "Blue", 600},
    {"ZV_Tempo", s_of_ranges, playlist_warn_not_found, "_sdkmgr_val_list_tempo_value", "120", 900},
};

class every_attribute : public playlist_test, public ::testing::WithParamInterface<attribute_row> {
 protected:
  const attribute_row& row() const { return GetParam(); }
  const playlist_attribute& table() const { return attribute_of(row().name); }
  uint32_t number() const { return static_cast<uint32_t>(atoi(row().value)); }
  zdo_ptr served() const {
    return make_object("zvsdk_ctx_pldata", {{row().value_key, row().value}});
  }
  int32_t own_score(attribute_use& use) const {
    return table().compare_integer_data ? use.score(number()) : use.score(row().value);
  }
};

// By text and by seed; only LIKE moves the threshold.
TEST_P(every_attribute, passes_its_own_value_with_each_operator) {
  std::vector<uint32_t> operators;
  uint32_t op = 0;
  zvsdk_status status = 0;
  for (uint32_t i = 0; (status = table().supported_operators(i, &op)) == 0; ++i) {
    operators.push_back(op);
    attribute_use by_text(row().name), by_seed(row().name);
    EXPECT_EQ(0u, by_text.text(op, row().value));
    EXPECT_EQ(0u, by_seed.seed(op, served()));
    EXPECT_EQ(op == playlist_op_like, by_text.threshold != 1000) << op;
    EXPECT_EQ(op == playlist_op_like ? row().like_threshold : 1000, by_seed.threshold) << op;
    const bool passes =
        op != playlist_op_not_equal && op != playlist_op_greater && op != playlist_op_less;
    EXPECT_EQ(passes, own_score(by_text) >= by_text.threshold) << op;
    EXPECT_EQ(passes, own_score(by_seed) >= by_seed.threshold) << op;
  }
  EXPECT_EQ(row().operators, operators);
  EXPECT_EQ(row().past_operators, status);
  attribute_use without_criterion(row().name);
  EXPECT_EQ(attribute_use::s_no_score, own_score(without_criterion));
  for (const char* context : {"zvsdk_ctx_album", "zvsdk_ctx_track", "zvsdk_ctx_pldata"})
    EXPECT_EQ(playlist_error_no_seed_data,
              without_criterion.seed(playlist_op_like, make_object(context)));
  const zdo_ptr stranger = make_object("zvsdk_ctx_pldata2", {{row().value_key, row().value}});
  EXPECT_EQ(playlist_error_no_seed_data, without_criterion.seed(playlist_op_like, stranger));
}

TEST_P(every_attribute, collects_a_served_value_and_gives_it_back) {
  const std::string number_mark = table().compare_integer_data ? "#" : "";
  EXPECT_EQ(texts{number_mark + row().value}, collected(row().name, served()));
  attribute_use use(row().name);
  const std::string name_in_another_case = std::string("zv") + (row().name + 2);
  for (const char* key : {row().name, name_in_another_case.c_str()}) {
    const char* text = nullptr;
    EXPECT_EQ(
        0u, table().value_from_integer_data
                ? table().value_from_integer_data(use.instance(), number(), key, nullptr, &text)
                : table().value_from_string_data(use.instance(), row().value, key, nullptr, &text));
    EXPECT_STREQ(row().value, text);
  }
}

INSTANTIATE_TEST_SUITE_P(attributes, every_attribute, ::testing::ValuesIn(s_rows),
                         [](const auto& row) { return std::string(row.param.name); });

// Two texts that differ in case alone are two texts.
TEST_F(playlist_test, interned_texts_come_back_as_themselves) {
  zcsl_stringmap* map = nullptr;
  const char *first = nullptr, *other = nullptr, *again = nullptr;
  EXPECT_EQ(0u, _playlist_attribute_cache_value(&map, "Rock", &first));
  EXPECT_EQ(0u, _playlist_attribute_cache_value(&map, "ROCK", &other));
  EXPECT_EQ(0u, _playlist_attribute_cache_value(&map, "Rock", &again));
  EXPECT_STREQ("ROCK", other);
  EXPECT_EQ(first, again);
  zcsl_stringmap_delete(map);
}

}  // namespace
