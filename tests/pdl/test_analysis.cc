// Validation, and evaluated trees as text: every kind of line on real statements.
#include <algorithm>

#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_render_parsetree.h"
#include "support/zcsl_container_owners.h"
#include "tests/pdl/pdl_fixture.h"

namespace {

using pdl_analysis = pdl_test;

std::string compact(std::string text) {
  for (size_t at; (at = text.find("  ")) != std::string::npos;) text.replace(at, 2, ">");
  std::ranges::replace(text, '\n', '|');
  return text;
}

// Media a has the T_Value 5 and a name. "|" ends a line and ">" is one level of indent; what has no
// line leaves its indent.
constexpr struct {
  const char *statement, *text;
} s_rendered[] = {
    {"GENPL", "WHERE [FALSE]|"},
    {"GENPL WHERE T_Value LIKE 15",  // holds from 700 on
     "WHERE [FALSE]|>operator: 5 LIKE 15 [900]|>>ident|>>number: 15|"},
    {"GENPL WHERE T_Value > '4' > 7",
     "WHERE [TRUE]|>operator: 1000 > 7 [1000]|>>operator: 5 > 4 [1000]|>>>ident|"
     ">>>literal: \"4\"|>>number: 7|"},
    {"GENPL WHERE T_Value <= 4 OR T_Value < 9 OR (T_Value = 5 AND T_Value IN [])",
     "WHERE [TRUE]|>OR [TRUE]|>>operator: 5 <= 4 [-1000]|>>>ident|>>>number: 4|>>OR [TRUE]|"
     ">>>operator: 5 < 9 [1000]|>>>>ident|>>>>number: 9|>>>AND [IGNORED]|"
     ">>>>operator: = [IGNORED]|>>>>>ident|>>>>>number: 5|>>>>>>>>>ident|>>>>>"},
    {"GENPL WHERE ZV_ArtistName BEGINS 'ab' AND ZV_ArtistName = 'x'",
     "WHERE [FALSE]|>AND [FALSE]|>>>>>ident|>>>literal: \"ab\"|>>operator: -10001 = 0 [-1000]|"
     ">>>ident|>>>literal: \"x\"|"},
    {"GENPL ORDER RAND(9, 0) * 2 + T_Value = 5 / 3 - 1 LIMIT 1 RESULTS, 0 PER T_Value",
     "WHERE [FALSE]|ORDER|>+ [336]|>>* [4]|>>>RAND [2]|>>>>number: 9|>>>>number: 0|>>>number: 2|"
     ">>- [332]|>>>/ [333]|>>>>operator: 5 = 5 [1000]|>>>>>ident|>>>>>number: 5|>>>>number: 3|"
     ">>>number: 1|LIMIT|>number: 0|>ident|LIMIT|>number: 1|>results|"},
};

TEST_F(pdl_analysis, shows_evaluated_statements) {
  const zdo_ptr named = make_object("zvsdk_ctx_pldata", {{"ZV_ArtistName", "Abba"}});
  add("b", {"9"});
  add("a", {"5"});
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), "a", named.get()));
  for (const auto& [statement, text] : s_rendered)
    EXPECT_EQ(text, compact(analyze(statement, "a"))) << statement;
}

// An evaluated tree whose root is then shown as each kind in turn: some no statement brings there.
TEST_F(pdl_analysis, has_a_line_for_each_kind) {
  add("a", {"5"});
  zcsl_vector_owner actions;
  char* message = nullptr;
  playlist_result_entry entry = {collection.get(), 1, 0, 0};
  playlist_pdl_context context = {};
  ASSERT_EQ(0u, _playlist_pdl_parse("GENPL WHERE T_Value < 1000", collection.get(), nullptr,
                                    actions.out(), nullptr));
  ASSERT_EQ(0u, _playlist_pdl_setup_actions(actions.get(), nullptr, &message));
  ASSERT_EQ(0u, _playlist_pdl_perform_actions(actions.get(), &entry, nullptr, &context));
  void* tree = output_of(zcsl_vector_getindex, actions.get(), 0u);
  playlist_pdl_node* root = static_cast<playlist_pdl_node*>(tree)->right;
  root->is_defthresh = 1;
  std::string seen;
  for (root->kind = 0; root->kind < 45; ++root->kind) {
    zcsl_accum_owner accum;
    const char* text = nullptr;
    zcsl_string_accum_create(accum.out(), nullptr, 0);
    EXPECT_EQ(0u, _playlist_render_parsetree(accum.get(), 0, root));
    zcsl_string_accum_get_string(accum.get(), &text, nullptr);
    const std::string line = compact(text), rest = ">ident|>number: 1000|";
    ASSERT_TRUE(line.ends_with(rest)) << line;
    if (line != rest)
      seen += std::to_string(root->kind) + " " + line.substr(0, line.size() - rest.size());
  }
  EXPECT_EQ(
      "1 GENERATE|2 PLAYLIST|3 GENERATE PLAYLIST|4 WHERE [TRUE]|5 WHERE [TRUE]|6 AND [TRUE]|"
      "7 OR [TRUE]|8 ORDER|9 * [1000]|10 / [1000]|11 + [1000]|12 - [1000]|13 ident|"
      "14 literal: \"<\"|15 defthresh: <|17 RAND [1000]|18 SEED|20 \"|21 '|22 ,|23 (|24 )|"
      "27 operator: 5 = 1000 [1000]|28 operator: 5 != 1000 [1000]|29 operator: 5 < 1000 [1000]|"
      "30 operator: 5 <= 1000 [1000]|31 operator: 5 > 1000 [1000]|32 operator: 5 >= 1000 [1000]|"
      "33 operator: 5 LIKE 1000 [1000]|37 LIMIT|38 PER|39 results|41 terminator|",
      seen);
}

// In the order of the steps: each row would fail in all later ones as well. Validation ends behind
// the parse and tells whether a seed is needed.
TEST_F(pdl_analysis, ends_where_it_is_refused) {
  add("a", {"9999"});
  const struct {
    const char *statement, *ident, *outcome;
    int valid;  // 2: no
  } rows[] = {{"", "x", "90890001: No PDL statement provided.", 2},
              {"GENPL WHERE SEED", "x", "90890601: bad operator ''", 2},
              {"GENPL WHERE T_Value = SEED", "x", "90890600", 1},
              {"GENPL WHERE T_Value = 'absent'", "x",
               "90890601: unknown value 'absent' for attribute 'T_Value'", 0},
              {"GENPL WHERE T_Value = 1", "x", "10890003", 0},
              {"GENPL WHERE T_Value = 1", nullptr, "90890001", 0},
              {"GENPL WHERE T_Value = 1", "a", "9089003e", 0},
              {"GENPL ORDER 5", "a", "9089003c", 0}};
  for (const auto& [statement, ident, outcome, valid] : rows) {
    EXPECT_EQ(outcome, analyze(statement, ident)) << statement;
    uint8_t uses_seed = 2;
    status = zvsdk_playlist_statement_validate(statement, collection.get(), &uses_seed);
    EXPECT_EQ(valid == 2 ? outcome : "00000000", fault(status, last_error().message));
    EXPECT_EQ(valid, uses_seed) << statement;
  }
  const auto analysis = zvsdk_playlist_statement_analyze_ident;
  EXPECT_EQ(playlist_error_invalid_arg, analysis("GENPL", nullptr, "a", nullptr));
  EXPECT_EQ(playlist_error_invalid_arg, analysis("GENPL", collection.get(), "a", nullptr));
}

// By the values and the reference of the collection that has it first.
TEST_F(pdl_analysis, finds_idents_of_joined_collections) {
  const collection_ptr other = create("other");
  add("a", {"1"});
  add("both", {"2"});
  for (const char* ident : {"c", "both", "d"}) add(other, ident, {"3"});
  join(other);
  EXPECT_TRUE(has(analyze("GENPL WHERE T_Value = 3", "both"), "operator: 2 = 3"));
  EXPECT_TRUE(has(analyze("GENPL WHERE T_Value = 3", "d"), "operator: 3 = 3"));
}

}  // namespace
