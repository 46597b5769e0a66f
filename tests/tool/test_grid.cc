// grid over the sample library, beside statements that ask for the same.
#include "tests/tool/program_fixture.h"

namespace zvplaylist {
namespace {

using grid = program;

// The idents of a playlist in text form.
std::vector<std::string> idents_of(const std::string& playlist) {
  std::vector<std::string> idents;
  for (size_t at = 0; (at = playlist.find("sample-", at)) != std::string::npos; at += 10)
    idents.push_back(playlist.substr(at, 10));
  std::ranges::sort(idents);
  return idents;
}

TEST_F(grid, finds_what_a_statement_finds_and_counts_it) {
  const std::pair<arguments, const char*> cells[] = {
      {{"--mood", "Happy"}, "ZV_Mood = 'Happy'"},
      {{"--mood", "Upbeat", "--era", "2000s", "--origin", "GB", "--genre", "Pop"},
       "ZV_Mood = 'Upbeat' AND (ZV_Era = '2000s' OR ZV_Origin = 'GB' OR ZV_Genre = 'Pop')"},
      {{"--mood", "Upbeat", "--exclude", "genre:Pop", "--exclude", "origin:GB"},
       "ZV_Mood = 'Upbeat' AND ZV_Genre != 'Pop' AND ZV_Origin != 'GB'"},
      {{"--mood", "Upbeat", "--era", "2000s", "--genre", "Rock", "--exclude", "origin:GB"},
       "ZV_Mood = 'Upbeat' AND (ZV_Era = '2000s' OR ZV_Genre = 'Rock') AND ZV_Origin != 'GB'"}};
  for (auto [given, where] : cells) {
    const auto expected = idents_of(generate(0, {"GENPL WHERE (" + std::string(where) + ")"}).out);
    EXPECT_EQ(expected, idents_of(on_sample(0, "grid", given).out)) << where;
    given.push_back("--estimate");
    EXPECT_EQ(std::to_string(expected.size()) + '\n', on_sample(0, "grid", given).out) << where;
  }
}

TEST_F(grid, tells_what_is_wrong) {
  const std::tuple<int, arguments, const char*> faults[] = {
      {2, {}, "--mood"},
      {1, {"--mood", "Purple"}, "no mood is called 'Purple'; zvplaylist lists moods shows them"},
      {2, {"--mood", "Happy", "--exclude", "tempo:90"}, "there are mood, genre, era and origin"},
      {2, {"--mood", "Happy", "--exclude", "era"}, "expected KIND:NAME"},
      {1, {"--mood", "Happy", "--exclude", "mood:Happy"}, "no track matches"}};
  for (const auto& [code, given, told] : faults)
    EXPECT_TRUE(has(on_sample(code, "grid", given).err, told));
}

}  // namespace
}  // namespace zvplaylist
