// Statement to result: WHERE, ORDER and LIMIT over media with none, one and several values.
#include <span>

#include "pdl/playlist_results.h"
#include "tests/pdl/pdl_fixture.h"

namespace {

struct evaluated {
  const char *statement, *outcome;
};

class pdl_evaluation : public pdl_test {
 protected:
  void check(std::span<const evaluated> rows) {
    for (const evaluated& row : rows) EXPECT_EQ(row.outcome, run(row.statement)) << row.statement;
  }
};

constexpr evaluated s_where[] = {
    // One value is enough, but LT and LE ask for all; values without an opinion are skipped.
    {"GENPL WHERE T_Value > 150", "high:1000 both:1000"},
    {"GENPL WHERE T_Value >= 200", "high:1000 both:1000"},
    {"GENPL WHERE T_Value < 150", "low:1000 silent:1000"},
    {"GENPL WHERE T_Value <= 100", "low:1000 silent:1000"},
    {"GENPL WHERE T_Value = 100", "low:1000 both:1000"},
    {"GENPL WHERE T_Value != 100", "high:1000 both:1000"},
    {"GENPL WHERE T_Value LIKE 105", "low:950 both:950"},
    {"GENPL WHERE T_Value LIKE 105 > 950", ""},
    {"GENPL WHERE T_Value LIKE 105 >= 950", "low:950 both:950"},
    {"GENPL WHERE T_Value LIKE 105 > T_Value LIKE 195", "low:50"},
    {"GENPL WHERE T_Value = 100 <= -1000", "text:-1000 silent:-1000 high:-1000"},
    {"GENPL WHERE T_Value = 5 = 0", "none:0"},
    {"GENPL WHERE T_Value IN [7, 200, 8888]", "both:1000 silent:1000 high:1000"},
    // The attribute belongs on the left: on the right it is not found by the number's text.
    {"GENPL WHERE 150 < T_Value", ""},
    {"GENPL WHERE 'T_Value' < T_Value", ""},
    // A result keeps the score of the leaf that was evaluated last.
    {"GENPL WHERE T_Value = 100 AND T_Value LIKE 110", "low:900 both:900"},
    {"GENPL WHERE T_Value LIKE 110 OR T_Value = 200", "high:1000 both:900 low:900"},
    {"GENPL WHERE T_Value = 7 OR T_Value = 100 AND T_Value LIKE 95", "low:950 both:950"},
    // Criteria that cannot be set.
    {"GENPL WHERE T_Value = 'absent'", "90890601: unknown value 'absent' for attribute 'T_Value'"},
    {"GENPL WHERE T_Value = 1 OR T_Value >= 'locale'",
     "908902d3: no locale loaded to support '>=' operator for attribute 'T_Value'"},
    {"GENPL ORDER T_Value = 'broken' * 2",
     "9089000d: error setting criteria 'broken' for attribute 'T_Value'"},
    {"GENPL WHERE ZV_Tempo = 'no such tempo' > 5",
     "9089000b: unsupported value 'no such tempo' for attribute 'ZV_Tempo'"},
    {"GENPL WHERE T_Value = T_Value", "9089003c"},
    {"GENPL WHERE T_Value = SEED", "90890600"},
};

TEST_F(pdl_evaluation, where_keeps_what_passes) {
  add("low", {"100"});
  add("high", {"200"});
  add("both", {"100", "200"});
  add("none", {});
  add("text", {"abc"});
  add("silent", {"8888"});
  check(s_where);
}

constexpr evaluated s_order[] = {
    {"GENPL ORDER T_Value LIKE 100 + 0", "a:1000 b:900"},
    {"GENPL ORDER T_Value LIKE 100 * -1", "b:-900 a:-1000"},
    {"GENPL ORDER 0 - T_Value LIKE 100", "b:-900 a:-1000"},
    {"GENPL ORDER -T_Value LIKE 100", "a:1000 b:900"},
    {"GENPL ORDER T_Value LIKE 100 - 50 - 10", "a:960 b:860"},
    {"GENPL ORDER T_Value LIKE 100 / 9 * 2", "a:55 b:50"},
    {"GENPL ORDER T_Value LIKE 100 / 7 + 1", "a:143 b:129"},
    {"GENPL ORDER T_Value LIKE 100 / 0", "a:0 b:0"},
    {"GENPL ORDER -2147483648 / (RAND(1) - 1)", "a:-2147483648 b:-2147483648"},
    {"GENPL ORDER (T_Value = 100 + 2147483647) * 1", "a:-2147482649 b:2147482647"},
    {"GENPL ORDER RAND(0, 1)", "b:18467 a:41"},
    {"GENPL ORDER RAND(10, 1)", "b:7 a:1"},
    {"GENPL ORDER RAND(-5, 1)", "b:18467 a:41"},
    {"GENPL ORDER RAND(0, 1) * 0 + RAND(0, 1)", "b:18467 a:41"},
    {"GENPL ORDER 5", "9089003c"},
    {"GENPL WHERE T_Value = 3 ORDER ((5))", "9089003c"},
    {"GENPL WHERE 1980 = 1980", "9089003c"},
    {"GENPL ORDER T_Value IN [100] * 2", "a:2000 b:-2000"},
};

TEST_F(pdl_evaluation, order_scores_with_wrapping_arithmetic) {
  add("a", {"100"});
  add("b", {"110"});
  check(s_order);
}

TEST_F(pdl_evaluation, takes_criteria_from_the_seed) {
  add("a", {"100"});
  add("b", {"130"});
  const zdo_ptr seed = make_object("zvsdk_ctx_track", {{"T_Value", "100"}});
  EXPECT_EQ("a:1000", run("GENPL WHERE T_Value LIKE SEED", seed.get()));
  EXPECT_EQ("b:1000", run("GENPL WHERE T_Value > SEED", seed.get()));
  // A seed without data gives no opinion: 0, which passes no threshold of 1000.
  const zdo_ptr empty = make_object("zvsdk_ctx_track");
  EXPECT_EQ("", run("GENPL WHERE T_Value > SEED", empty.get()));
  EXPECT_EQ("a:0 b:0", run("GENPL ORDER T_Value LIKE SEED", empty.get()));
}

TEST_F(pdl_evaluation, keeps_a_seed_out_of_its_own_playlist) {
  const collection_ptr other = create("other");
  add("a", {});
  add("b", {});
  add(other, "c", {});
  add(other, "d", {});
  join(other);
  const zdo_ptr own = make_object("zvsdk_ctx_pldata", {{"ident_ref", "2"}});
  EXPECT_EQ("c:1000 d:1000 a:1000", run("GENPL", own.get()));
  const zdo_ptr foreign = make_object("zvsdk_ctx_track", {{"ident_ref", "2"}});
  EXPECT_EQ("b:1000 c:1000 a:1000 d:1000", run("GENPL", foreign.get()));
}

// Only the status of the last media visited is told.
TEST_F(pdl_evaluation, goes_on_behind_a_failing_comparison) {
  add("a", {"1"});
  add("b", {"9999"});
  add("c", {"1"});
  EXPECT_EQ("a:1000 c:1000", run("GENPL WHERE T_Value = 1"));
  add("d", {"9999"});
  EXPECT_EQ("9089003e", run("GENPL WHERE T_Value = 1"));
}

// Each collection has values of its own for the attribute, and may lack it altogether: then a
// media scores 0 and the condition stands where the media before it left it.
TEST_F(pdl_evaluation, evaluates_joined_collections) {
  const collection_ptr other = create("other");
  const collection_ptr bare = create("bare");
  add("a", {"1"});
  add("b", {"2"});
  add(other, "b", {"1"});
  add(other, "a", {"2"});
  add(other, "c", {"1"});
  add(bare, "d", {});
  ASSERT_EQ(0u, zcsl_hashtable_value_delete(bare->attributes, "T_Value"));
  join(other);
  join(bare);
  EXPECT_EQ("b:1000 c:1000 a:1000 d:0", run("GENPL WHERE T_Value = 1"));
  EXPECT_EQ("b:1000 a:1000", run("GENPL WHERE T_Value = 2 LIMIT 5 RESULTS"));
  // The collection without the attribute ends the grouping, and what was grouped is cut: of the
  // integers 1 and 2 one media stays each, and the one that was not reached.
  const std::string cut = run("GENPL LIMIT 1 PER T_Value");
  EXPECT_EQ(3u, std::count(cut.begin(), cut.end(), ':')) << cut;
}

constexpr evaluated s_limits[] = {
    {"GENPL ORDER RAND(0, 1) LIMIT 2 RESULTS", "d:26500 b:18467"},
    {"GENPL ORDER RAND(0, 1) LIMIT 9 RESULTS", "d:26500 b:18467 c:6334 a:41"},
    {"GENPL LIMIT 0 RESULTS", ""},
    {"GENPL WHERE T_Value = 3 LIMIT 0 RESULTS", "d:1000"},
    {"GENPL ORDER RAND(0, 1) LIMIT 0 PER T_Value", "d:26500 b:18467 c:6334 a:41"},
    {"GENPL ORDER RAND(0, 1) LIMIT 3 RESULTS, 1 RESULTS", "d:26500"},
    {"GENPL ORDER RAND(0, 1) LIMIT 1 RESULTS, 1 PER SEED", "90890600"},
};

TEST_F(pdl_evaluation, limits_the_results) {
  add("a", {"1"});
  add("b", {"1"});
  add("c", {"1", "2"});
  add("d", {"3"});
  check(s_limits);
  // One of three stays, and the seed decides which.
  ASSERT_EQ(0u, zvsdk_playlist_morelikethis_option_set(collection.get(),
                                                       ZVSDK_PLAYLIST_OPTION_RANDOM, "7"));
  const std::string first = run("GENPL LIMIT 1 PER T_Value");
  EXPECT_EQ(2u, std::count(first.begin(), first.end(), ':')) << first;
  EXPECT_EQ(first, run("GENPL LIMIT 1 PER T_Value"));
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
