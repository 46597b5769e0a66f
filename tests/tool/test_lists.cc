// like, info and lists, and how the names in catalogs and tags find their place in the lists.
#include "tests/tool/program_fixture.h"

namespace zvplaylist {
namespace {

using like_info_lists = program;

TEST_F(like_info_lists, like_leaves_the_seed_out_and_keeps_its_bounds) {
  const arguments given = {"--max", "4", "--per-artist", "1", "--random", "3", "sample-017"};
  const run_result found = on_sample(0, "like", given);
  EXPECT_EQ(found.lines(), 4) << found.out;
  EXPECT_FALSE(has(found.out, "sample-017"));
  EXPECT_EQ(found.out.find("Integer Sunday"), found.out.rfind("Integer Sunday")) << found.out;
  EXPECT_EQ(on_sample(0, "like", given).out, found.out);
}

TEST_F(like_info_lists, what_is_not_there_is_told_with_its_code) {
  for (const char* command : {"like", "info"}) {
    const std::pair<const char*, const char*> absent[] = {
        {"krähenlied", "; the nearest is sample-013 (Krähenlied)"},
        {"nothing like it", "ident nothing like it; zvplaylist"}};
    for (const auto& [ident, told] : absent)
      EXPECT_TRUE(has(on_sample(1, command, {ident}).err, told));
    run(3, {command, "x", "--import", files_.write("empty.csv", "")});
    on_sample(2, command, {"sample-001", "--language", "xyz"});
    on_sample(4, command, {"sample-001", "-o", "/dev/full"});
  }
  run(1, {"lists", "genres", "--find", "no such thing"});
}

TEST_F(like_info_lists, columns_find_their_elements) {
  struct {
    std::string columns, row, line, report;
  } const cases[] = {
      {"genre,subgenre", "rock,whale song", "ZV_Genre       Rock  (",
       "unknown subgenre 'whale song'"},
      {"genre", "Blues; Delta Blues; Foo", "Delta Blues  (", "unknown genre 'Foo'"},
      {"mood", "hApPy", "ZV_Mood        Happy  (40138)", ""},
      {"mood", "40138:", "ZV_Mood        -\n", "unknown mood '40138:'"},
      {"valence,energy", "0.95,0.65", "  (40138)  [Happy ", ""},
      {"valence,energy", "1.7,0.5", "ZV_Mood        -\n", "valence '1.7' is no number from 0 to 1"},
      {"country,artist type", "XW,band", "ZV_ArtistType  Band  (", ""},
      {"year,decade", "1971,1985", "ZV_Era         1985  (1985)", ""},
  };
  for (const auto& each : cases) {
    const std::string catalog =
        files_.write("c.csv", "id,title,artist," + each.columns + "\n1,a,X," + each.row + "\n");
    const run_result result = run(0, {"info", "1", "--import", catalog});
    EXPECT_TRUE(has(result.out, each.line));
    EXPECT_EQ(result.err.substr(0, result.err.find('\n')),
              each.report.empty() ? "" : catalog + ":2: " + each.report);
  }
}

TEST_F(like_info_lists, an_unknown_name_is_told_once_and_counted) {
  std::string rows = "id,title,artist,genre\n", told;
  const std::string catalog = files_.path("c.csv");
  for (int i = 0; i < 300; ++i) {
    const std::string name = i % 2 == 1 ? "Whale Song" : "odd " + std::to_string(i);
    rows += std::to_string(i) + ",a,X," + name + "\n";
    if (i < 2 || (i % 2 == 0 && i < 198))
      told += catalog + ":" + std::to_string(i + 2) + ": unknown genre '" + name + "'\n";
  }
  files_.write("c.csv", rows);
  EXPECT_EQ(run(0, {"info", "1", "--import", catalog}).err,
            told +
                "unknown genre 'Whale Song': 150 times\n51 more of this kind\n"
                "300 tracks; 0 rows or files left out, 300 mended, 0 noted\n");
}

TEST_F(like_info_lists, tags_find_their_elements) {
  const std::string file = files_.write_audio("m/a.flac", {{"TITLE", {"a"}},
                                                           {"ARTIST", {"X"}},
                                                           {"GENRE", {"Blues", "Delta Blues"}},
                                                           {"MOOD", {"Happy"}},
                                                           {"DATE", {"2011"}},
                                                           {"ORIGINALDATE", {"1936-11-23"}},
                                                           {"RELEASECOUNTRY", {"XE"}},
                                                           {"ARTISTCOUNTRY", {"US"}}});
  const run_result info =
      run(0, {"info", file, "--scan", files_.path("m"), "--language", "ger", "--format", "json"});
  EXPECT_EQ(info.err, "");
  for (const char* part : {"\"Delta Blues\"", "\"Glücklich\"], \"id\": 40138", "[\"1936\"]",
                           "\"Vereinigte Staaten\"", "\"ZV_ArtistType\": {\"texts\": []}"})
    EXPECT_TRUE(has(info.out, part));
}

TEST_F(like_info_lists, lists_are_trees) {
  EXPECT_EQ(run(0, {"lists", "tempos", "--depth", "2", "--find", "allegro"}).out,
            "Fast  100004  120 to 169\n  Allegro  100108  120 to 154\n");
  EXPECT_EQ(
      run(0, {"lists", "moods", "--find", "happy", "--language", "de", "--format", "json"}).out,
      "{\n  \"moods\": [\n    {\"id\": 40010, \"name\": \"Fröhlich\", \"children\": [\n"
      "      {\"id\": 40138, \"name\": \"Glücklich\"}]}]\n}\n");
}

}  // namespace
}  // namespace zvplaylist
