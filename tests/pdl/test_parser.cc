// The parser: statement to trees, statement to fault, and how deep a statement may go.
#include <pthread.h>

#include <functional>

#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_container_owners.h"
#include "tests/pdl/pdl_fixture.h"
#include "tests/pdl/tree_dump.h"

namespace {

class pdl_parser : public pdl_test {
 protected:
  // The trees in vector order, or "status: message".
  std::string parse(const std::string& statement) {
    zcsl_vector_owner actions;
    char* message = nullptr;
    uint8_t uses_seed = 0;
    status = _playlist_pdl_parse(statement.c_str(), collection.get(), &uses_seed, actions.out(),
                                 &message);
    if (status != 0) {
      const std::string told = fault(status, message);
      zcsl_string_free(message);
      return told;
    }
    std::string trees;
    void* tree = nullptr;
    for (uint32_t i = 0; zcsl_vector_getindex(actions.get(), i, &tree) == 0; ++i)
      trees += (i ? " | " : "") + dump_tree(static_cast<playlist_pdl_node*>(tree));
    return trees + (uses_seed ? " !" : "");
  }
};

constexpr struct {
  const char *statement, *outcome;
} s_parsed[] = {
    {"GENERATE PLAYLIST", "*(_ _)"},
    {"genpl;junk ~", "*(_ _)"},
    {"GENPL WHERE ZV_Tempo LIKE SEED > 500 AND T_Value = 1980 ORDER BY RAND(100) "
     "LIMIT 2 PER ZV_ArtistName, 25 RESULTS",
     "LIMIT(25 RESULTS) | LIMIT(2 ZV_ArtistName) | ORDER(_ RAND(100 _)) | "
     "WHERE(_ AND(>(LIKE(ZV_Tempo SEED) 500) =(T_Value 1980))) !"},
    {"GENPL WHERE T_Value = 1 AND T_Value = 2 OR T_Value = 3",
     "WHERE(_ AND(=(T_Value 1) OR(=(T_Value 2) =(T_Value 3))))"},
    {"GENPL WHERE (T_Value = 1 AND T_Value = 2) OR T_Value = 3",
     "WHERE(_ OR(AND(=(T_Value 1) =(T_Value 2)) =(T_Value 3)))"},
    {"GENPL WHERE ZV_Tempo = SEED = 3", "WHERE(_ =(=(ZV_Tempo SEED) 3)) !"},
    {"GENPL WHERE (T_Value = 1 > 3) > T_Value = 2", "WHERE(_ >(>(=(T_Value 1) 3) =(T_Value 2)))"},
    {"GENPL WHERE 100 < ZV_Tempo", "WHERE(_ <(100 ZV_Tempo))"},
    {"GENPL WHERE T_Value IN [1,2,2,3,] AND T_Value I []",
     "WHERE(_ AND(IN(T_Value [3]) I(T_Value [0])))"},
    {"GENPL WHERE zv_artistname BEGINS 'the ' OR ZV_TrackName CONT \"x\"",
     "WHERE(_ OR(BEGINS(zv_artistname \"the \") CONT(ZV_TrackName \"x\")))"},
    {"GENPL ORDER 8 - 4 - 2", "ORDER(_ -(8 -(4 2))) | *(_ _)"},
    {"GENPL ORDER 8 / 4 * 2 + 1 * 3 - 1", "ORDER(_ +(/(8 *(4 2)) -(*(1 3) 1))) | *(_ _)"},
    {"GENPL ORDER T_Value LIKE 5 * 2 + RAND(10, 7)",
     "ORDER(_ +(*(LIKE(T_Value 5) 2) RAND(10 7))) | *(_ _)"},
    {"GENPL ORDER (T_Value = 1)", "ORDER(_ =(T_Value 1)) | *(_ _)"},
    {"GENPL ORDER ( T_Value = 1 + T_Value = 2 ) * 2",
     "ORDER(_ *(+(=(T_Value 1) =(T_Value 2)) 2)) | *(_ _)"},
    {"GENPL ORDER - - RAND(5) - - 3", "ORDER(_ -(RAND(5 _) 3)) | *(_ _)"},
    {"GENPL ORDER 5 LIMIT 5 RESULTS, 2 PER T_Value;",
     "LIMIT(2 T_Value) | LIMIT(5 RESULTS) | ORDER(_ 5) | *(_ _)"},
    // Faults.
    {" ", "90890601: unexpected end of statement"},
    {"GENERATE", "90890601: unexpected end of statement"},
    {"GENERATE LIST now", "90890601: unexpected symbol 'LIST'"},
    {"~", "90890601: unexpected symbol '~'"},
    {"GENPL GENPL", "90890601: unexpected symbol 'GENPL'"},
    {"GENPL )x", "90890601: unbalanced right parens ')x'"},
    {"GENPL WHERE", "90890601: expected ident|number at ''"},
    {"GENPL WHERE T_Value", "90890601: bad operator ''"},
    {"GENPL WHERE T_Value;", "90890601: bad operator ''"},
    {"GENPL WHERE T_Value PER 5", "90890601: bad operator 'PER'"},
    {"GENPL WHERE T_Value = \"open it", "90890601: unexpected symbol '\"open'"},
    {"GENPL WHERE T_Value = 12abc", "90890601: expected ident|number at '= 12abc'"},
    {"GENPL WHERE Mood = 1", "90890601: attribute 'Mood' not supported by collection"},
    {"GENPL WHERE (T_Value = 1", "90890601: unexpected end of statement"},
    {"GENPL WHERE T_Value = 1)", "90890601: unbalanced right parens ')'"},
    {"GENPL WHERE T_Value IN 1", "90890003"},
    {"GENPL WHERE T_Value IN [1 2]", "90890601: unexpected symbol '2]'"},
    {"GENPL WHERE T_Value BEGINS 'x'",
     "90890601: attribute 'T_Value' does not support operator 'BEGINS'"},
    {"GENPL WHERE ZV_TrackName > 5",
     "90890601: attribute 'ZV_TrackName' does not support operator '>'"},
    {"GENPL WHERE 5 < ZV_TrackName",
     "90890601: attribute 'ZV_TrackName' does not support operator '<'"},
    {"GENPL WHERE T_Value = 1 > (T_Value = 2) T_Value = 3", "9089003c"},
    {"GENPL ORDER BY", "90890601: expected ident|number at ''"},
    {"GENPL ORDER T_Value = 1 = 1", "90890601: unexpected symbol '='"},
    {"GENPL ORDER 1 + LIMIT 5 RESULTS", "90890601: expected ident|number at 'LIMIT 5 RESULTS'"},
    {"GENPL ORDER 1 + (2 * ]", "90890601: expected ident|number at ']'"},
    {"GENPL ORDER 1 + T_Value IN", "90890003"},
    {"GENPL ORDER RAND(x)", "90890601: unexpected symbol 'x)'"},
    {"GENPL LIMIT 5", "90890601: expected RESULTS|PER at ''"},
    {"GENPL LIMIT x RESULTS", "90890601: expected number at 'x RESULTS'"},
    {"GENPL LIMIT 5 RESULTS,", "90890601: expected number at ''"},
    {"GENPL LIMIT 5 RESULTS ORDER 1", "90890601: unexpected symbol 'ORDER'"},
};

TEST_F(pdl_parser, builds_trees_and_words_faults) {
  for (const auto& row : s_parsed) EXPECT_EQ(row.outcome, parse(row.statement)) << row.statement;
}

TEST_F(pdl_parser, cuts_long_texts_to_299_bytes) {
  const std::string word(400, 'q');
  EXPECT_EQ("90890601: attribute '" + word.substr(0, 299) + "' not supported by collection",
            parse("GENPL WHERE " + word + " = 1"));
  EXPECT_EQ("90890601: bad operator '" + word.substr(0, 299) + "'",
            parse("GENPL WHERE T_Value " + word));
  EXPECT_EQ("WHERE(_ =(T_Value \"" + word.substr(0, 299) + "\"))",
            parse("GENPL WHERE T_Value = '" + word + "'"));
  // 31 bytes of a list's number: all zeros here.
  EXPECT_EQ("WHERE(_ IN(T_Value [1]))",
            parse("GENPL WHERE T_Value IN [0, " + std::string(31, '0') + "7]"));
}

// An attribute that the collection names and this module lacks.
TEST_F(pdl_parser, refuses_unknown_attribute_types) {
  playlist_attribute_info* info = nullptr;
  ASSERT_EQ(0u, playlist_collection_get_attrinfo(collection.get(), "T_Value", &info));
  info->attribute = nullptr;
  EXPECT_EQ("90890601: Zorvex Playlist module has no support for attribute 'T_Value'",
            parse("GENPL WHERE T_Value = 1"));
}

std::string repeated(const char* text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

// Runs work on a thread with a small stack.
void on_small_stack(std::function<void()> work) {
  pthread_t thread;
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  ASSERT_EQ(0, pthread_attr_setstacksize(&attributes, 256 * 1024));
  const auto start = [](void* given) -> void* {
    (*static_cast<std::function<void()>*>(given))();
    return nullptr;
  };
  ASSERT_EQ(0, pthread_create(&thread, &attributes, start, &work));
  pthread_join(thread, nullptr);
  pthread_attr_destroy(&attributes);
}

TEST_F(pdl_parser, bounds_depth_before_the_stack_does) {
  constexpr const char* too_deep = "90890601: statement is nested too deeply";
  add("a", {"5"});
  const std::string where = "GENPL WHERE ", order = "GENPL ORDER ";
  const std::pair<std::string, const char*> rows[] = {
      {where + repeated("T_Value = 1 OR ", 100000) + "T_Value = 5", "a:1000"},
      {where + repeated("T_Value = 5 AND ", 1000) + "T_Value = 6", ""},
      {order + repeated("1 + ", 10000) + "2", "a:10002"},
      {order + repeated("1 * ", 10000) + "2 + 1", "a:3"},
      {order + repeated("- ", 10000) + "RAND(1)", "a:0"},
      {where + repeated("(", 100) + "T_Value = 5" + repeated(")", 100), "a:1000"},
      {where + repeated("(", 100) + "T_Value = 5" + repeated(" > 3)", 100), "a:1000"},
      {where + repeated("(T_Value = 6 OR ", 100) + "T_Value = 5" + repeated(")", 100), "a:1000"},
      {order + repeated("(1 + ", 100) + "1" + repeated(") * 1", 100), "a:101"},
      {order + repeated("(", 100) + "1" + repeated(") * 1 + 1", 100), "a:101"},
      {where + repeated("(", 10000), too_deep},
      {order + repeated("(", 10000), too_deep},
      {order + repeated("1 + (", 10000), too_deep},
      {where + "T_Value = 1 > " + repeated("(", 10000), too_deep},
  };
  on_small_stack([&] {
    for (const auto& [statement, outcome] : rows) {
      EXPECT_EQ(outcome, run(statement)) << statement.substr(0, 60);
      EXPECT_EQ(outcome == too_deep, analyze(statement, "a") == too_deep);
    }
  });
}

}  // namespace
