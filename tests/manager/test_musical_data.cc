// The musical data that is built in: lists, the names that tags use, and correlates; and rules that
// follow a list of an application's own.

#include <algorithm>
#include <functional>
#include <map>

#include "tests/common/data_folder.h"
#include "tests/manager/host_fixture.h"
#include "tests/manager/list_view.h"

namespace {

struct list_expectation {
  const char* name;
  const char* correlates;  // or null
  uint32_t depth;
  size_t size;  // at least
};

constexpr list_expectation s_lists[] = {
    {"genres", "genre", 3, 300},    {"moods", "mood", 2, 125},
    {"eras", "era", 3, 1200},       {"tempos", nullptr, 3, 1015},
    {"origins", "origin", 4, 3000}, {"artist_types", "arttype", 3, 50},
};

std::string type_of(const char* list) {
  return std::string("zvsdk_list_type_") + list;
}

TEST_F(host_test, built_in_lists_nest_and_every_text_finds_an_element_in_three_languages) {
  for (const list_expectation& expected : s_lists) {
    for (const char* language : {"eng", "ger", "fre"}) {
      SCOPED_TRACE(std::string(expected.name) + " " + language);
      const list_view list(host.lists, type_of(expected.name).c_str(), language);
      std::map<uint32_t, element_facts> all;
      std::map<uint32_t, uint32_t> following;  // by level, where the next range begins
      for (const element_facts& each : list.all()) {
        ASSERT_TRUE(all.emplace(each.id, each).second) << each.id;
        const element_facts& parent = all[each.parent];
        ASSERT_EQ(parent.level + 1, each.level);
        ASSERT_TRUE(each.level == 1 || parent == list.by_id(each.id, parent.level));
        ASSERT_TRUE(each.level == 1 || (parent.lower <= each.lower && each.upper <= parent.upper));
        const bool first = following.count(each.level) == 0 || each.upper == 0;
        ASSERT_TRUE(first || following[each.level] == each.lower) << each.text;
        following[each.level] = each.upper + 1;
        const element_facts named = list.by_text(each.text.c_str());
        ASSERT_TRUE(named.id == each.id || (named.text == each.text && named.level <= each.level))
            << each.text;
      }
      EXPECT_GE(all.size(), expected.size);
      EXPECT_EQ(expected.depth, following.rbegin()->first);
    }
  }
}

/* The score of an id in another's row that leaves out what is less than `least`. */
int32_t score(const running_host& host, const std::string& table, uint32_t row, uint32_t id,
              int32_t least = -1000) {
  const zvsdk_listmanager_interface& l = *host.lists;
  zvsdk_correlates* correlates = output_of(
      l.correlates_retrieve, ("zvsdk_correlates_" + table).c_str(), nullptr, nullptr, nullptr);
  zvsdk_correlates_set* set = output_of(l.correlates_get_set, correlates, row, least);
  const int32_t found = output_of(l.correlates_set_get_score, set, id);
  EXPECT_EQ(0u, l.correlates_set_release(set));
  EXPECT_EQ(0u, l.correlates_release(correlates));
  return found;
}

TEST_F(host_test, correlates_rows_are_whole_best_with_themselves_and_of_one_sign_both_ways) {
  for (const list_expectation& expected : s_lists) {
    if (expected.correlates == nullptr) continue;
    SCOPED_TRACE(expected.name);
    const auto all = list_view(host.lists, type_of(expected.name).c_str(), "eng").all();
    const size_t step = all.size() / 40 + 1;
    for (size_t i = 0; i < all.size(); i += step) {
      ASSERT_EQ(1000, score(host, expected.correlates, all[i].id, all[i].id));
      for (size_t j = i % 3; j < i; j += step) {
        const int32_t there = score(host, expected.correlates, all[i].id, all[j].id);
        const int32_t back = score(host, expected.correlates, all[j].id, all[i].id);
        ASSERT_TRUE(-1000 <= there && there < 1000 && (there < 0) == (back < 0)) << there;
      }
    }
  }
}

TEST_F(host_test, what_is_nearer_is_more_alike) {
  const struct {
    const char *list, *correlates;
    texts names;  // the first one's row, ever less alike
  } cases[] = {
      {"genres", "genre", {"trap", "gangster rap", "conscious rap", "r&b", "polka"}},
      {"moods", "mood", {"happy", "playful", "calm", "grieving"}},
      {"eras", "era", {"1987", "1989", "1980s", "1999", "2017"}},
      {"origins", "origin", {"Bavaria", "Germany", "Hamburg", "Austria", "Portugal", "Japan"}},
  };
  for (const auto& each : cases) {
    const list_view list(host.lists, type_of(each.list).c_str(), "eng");
    const uint32_t row = list.by_text(each.names[0].c_str()).id;
    std::vector<int32_t> found;
    for (const std::string& name : each.names)
      found.push_back(score(host, each.correlates, row, list.by_text(name.c_str()).id));
    EXPECT_EQ(found.end(), std::adjacent_find(found.begin(), found.end(), std::less_equal()));
    EXPECT_LT(found.back(), 0) << each.names[0];
  }
}

TEST(own_data, rules_follow_a_list_of_ones_own_and_rows_stand_before_them) {
  const data_folder folder;
  folder.write("moods.json", R"({"list_type": "t", "languages": ["eng"], "elements": [
    {"id": 7, "text": "A", "plane": [0, 0.5]}, {"id": 4000000, "text": "B",
     "plane": [0.5, 0.5]}, {"id": 9, "text": "C", "plane": [1, 1e0]}, {"id": 10, "text": "D"}]})");
  folder.write("correlates_mood.json", R"({"correlates": "c", "list": "moods", "rule": "plane",
    "zero": 0.25, "far": 0.75, "default": 3, "rows": {"9": {"7": 12, "8": 1}, "10": {"7": 1}}})");
  const running_host host(folder.path().c_str());
  const std::pair<uint32_t, std::vector<int32_t>> rows[] = {
      {7, {1000, -500, -1000, 3, 3}}, {9, {12, -914, 1000, 3, 3}}, {10, {1, 3, 3, 3, 3}}};
  for (const auto& [row, expected] : rows) {
    std::vector<int32_t> found;
    for (uint32_t id : {7, 4000000, 9, 10, 8}) found.push_back(score(host, "mood", row, id));
    EXPECT_EQ(expected, found) << row;
  }
  EXPECT_EQ(3, score(host, "mood", 9, 7, 13)) << "left out of the set";
}

}  // namespace
