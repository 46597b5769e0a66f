// Statement to result, as far as the plain model does not tell it: faults, extremes, collections
// that lack an attribute.
#include <algorithm>

#include "pdl/playlist_results.h"
#include "tests/pdl/pdl_fixture.h"

namespace {

using pdl_evaluation = pdl_test;

// Criteria that cannot be set, a name in the place of a value, and the quotient that does not fit.
// Media a has the T_Value 100, and b 110.
constexpr std::pair<const char*, const char*> s_evaluated[] = {
    {"GENPL WHERE T_Value = 'absent'", "90890601: unknown value 'absent' for attribute 'T_Value'"},
    {"GENPL WHERE T_Value = 1 OR T_Value >= 'locale'",
     "908902d3: no locale loaded to support '>=' operator for attribute 'T_Value'"},
    {"GENPL ORDER T_Value = 'broken' * 2",
     "9089000d: error setting criteria 'broken' for attribute 'T_Value'"},
    {"GENPL WHERE ZV_Tempo = 'no such tempo' > 5",
     "9089000b: unsupported value 'no such tempo' for attribute 'ZV_Tempo'"},
    {"GENPL WHERE T_Value = T_Value", "9089003c"},
    {"GENPL WHERE T_Value = SEED", "90890600"},
    {"GENPL ORDER RAND(0, 1) LIMIT 1 RESULTS, 1 PER SEED", "90890600"},
    {"GENPL ORDER 5", "9089003c"},
    {"GENPL WHERE T_Value = 3 ORDER ((5))", "9089003c"},
    {"GENPL WHERE 1980 = 1980", "9089003c"},
    {"GENPL WHERE 'T_Value' < T_Value", ""},
    {"GENPL ORDER -2147483648 / (RAND(1) - 1)", "a:-2147483648 b:-2147483648"}};

TEST_F(pdl_evaluation, takes_statements_at_their_word) {
  add("a", {"100"});
  add("b", {"110"});
  for (const auto& [statement, outcome] : s_evaluated)
    EXPECT_EQ(outcome, run(statement)) << statement;
}

// Then a media has the score that no value could better.
TEST_F(pdl_evaluation, skips_values_without_an_opinion) {
  add("a", {"8888"});
  add("b", {"8888", "100"});
  EXPECT_EQ("b:900 a:-1000", run("GENPL ORDER T_Value LIKE 110"));
  EXPECT_EQ("a:1000 b:1000", run("GENPL WHERE T_Value < 150"));
}

// Only a seed that was read back from a collection is left out.
TEST_F(pdl_evaluation, keeps_an_item_for_a_seed_of_another_kind) {
  add("a", {});
  const zdo_ptr foreign = make_object("zvsdk_ctx_track", {{"ident_ref", "1"}});
  EXPECT_EQ("a:1000", run("GENPL", foreign.get()));
}

// In a collection that lacks the attribute altogether a media scores 0, and the condition stands
// where the media before it left it.
TEST_F(pdl_evaluation, evaluates_collections_without_an_attribute) {
  const collection_ptr bare = create("bare"), last = create("last");
  add("a", {"2"});
  add("b", {"2"});
  add("c", {"1"});
  add(bare, "d", {});
  add(last, "e", {"2"});
  ASSERT_EQ(0u, zcsl_hashtable_value_delete(bare->attributes, "T_Value"));
  join(bare);
  join(last);
  EXPECT_EQ("c:1000 d:0", run("GENPL WHERE T_Value = 1"));
  EXPECT_EQ("b:1000 e:1000 a:1000", run("GENPL WHERE T_Value = 2"));
  // The collection without the attribute ends the grouping, and what was grouped is cut: of the
  // integers 1 and 2 one media stays each, and those that were not reached.
  const std::string cut = run("GENPL LIMIT 1 PER T_Value");
  EXPECT_EQ(4, std::ranges::count(cut, ':')) << cut;
}

TEST(pdl_results, sorts_by_ident_and_collection) {
  auto* low = reinterpret_cast<playlist_collection*>(8);
  auto* high = reinterpret_cast<playlist_collection*>(16);
  const playlist_result_entry entries[] = {{low, 5, 0, 0}, {high, 5, 0, 0}, {low, 6, 0, 0}};
  EXPECT_EQ(0, playlist_results_sort_by_ident(&entries[0], &entries[0]));
  EXPECT_EQ(1, playlist_results_sort_by_ident(&entries[0], &entries[1]));
  EXPECT_EQ(-1, playlist_results_sort_by_ident(&entries[2], &entries[1]));
}

}  // namespace
