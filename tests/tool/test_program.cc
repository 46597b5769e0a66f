// The program as a person runs it: arguments in, standard output, standard error and exit code out.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "tests/tool/workspace.h"

namespace zvplaylist {
namespace {

struct run_result {
  int code;
  std::string out, err;
};

std::string quoted(const std::string& argument) {
  std::string text = "'";
  for (char c : argument) text += c == '\'' ? "'\\''" : std::string(1, c);
  return text + "'";
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

class program : public testing::Test {
 protected:
  run_result run(const std::vector<std::string>& arguments, const std::string& input = "") {
    std::string command = ZVPLAYLIST_PROGRAM;
    for (const std::string& each : arguments) command.append(" ").append(quoted(each));
    files_.write("stdin", input);
    command += " <" + quoted(files_.path("stdin")) + " >" + quoted(files_.path("stdout")) + " 2>" +
               quoted(files_.path("stderr"));
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_file(files_.path("stdout")),
            read_file(files_.path("stderr"))};
  }
  // Over the sample library.
  run_result generate(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"generate", "--import", SAMPLE_CATALOG});
    return run(arguments);
  }

  workspace files_;
};

TEST_F(program, help_and_version) {
  for (const auto& arguments : std::vector<std::vector<std::string>>{
           {"--help"}, {"generate", "--help"}, {"attributes", "--help"}}) {
    const run_result help = run(arguments);
    EXPECT_EQ(help.code, 0);
    EXPECT_NE(help.out.find("Example:\n  zvplaylist "), std::string::npos) << help.out;
  }
  EXPECT_EQ(run({"--version"}).out, "zvplaylist 3.10.5\n");
}

TEST_F(program, lists_the_attributes_in_their_order) {
  const run_result listed = run({"attributes"});
  EXPECT_EQ(listed.code, 0);
  EXPECT_TRUE(listed.out.starts_with("ZV_TrackName\nZV_ArtistName\nZV_AlbumName\n")) << listed.out;
  EXPECT_NE(listed.out.find("ZV_Tempo\n"), std::string::npos);
}

TEST_F(program, wrong_usage_is_told_with_code_2) {
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"nonsense"},
      {"generate"},
      {"generate", "GENPL"},
      {"generate", "--import", SAMPLE_CATALOG},
      {"generate", "--import", SAMPLE_CATALOG, "--format", "mp3", "GENPL"},
      {"generate", "--import", SAMPLE_CATALOG, "--random", "0", "GENPL"},
      {"generate", "--import", SAMPLE_CATALOG, "--map", "colour=id", "GENPL"},
      {"generate", "--import", SAMPLE_CATALOG, "GENPL WHERE ZV_Tempo = SEED"}};
  for (const auto& arguments : wrong) {
    const run_result result = run(arguments);
    EXPECT_EQ(result.code, 2) << result.err;
    EXPECT_NE(result.out + result.err, "");
  }
}

TEST_F(program, faults_without_a_message_are_explained) {
  EXPECT_EQ(run({"nonsense"}).err, "zvplaylist: 'nonsense' is no command; see zvplaylist --help\n");
  EXPECT_NE(generate({"GENPL WHERE ZV_Tempo IN 3"}).err.find("IN [90, 120]"), std::string::npos);
  EXPECT_NE(generate({"GENPL ORDER 3"}).err.find("bare number"), std::string::npos);
}

TEST_F(program, chooses_orders_and_limits_the_same_way_each_time) {
  const std::vector<std::string> arguments = {
      "--format", "json",
      "GENERATE PLAYLIST WHERE ZV_Tempo > 118 AND ZV_Tempo < 130 ORDER RAND(100, 7) "
      "LIMIT 2 PER ZV_ArtistName, 10 RESULTS"};
  const run_result first = generate(arguments);
  EXPECT_EQ(first.code, 0) << first.err;
  const std::vector<std::string> lines = lines_of(first.out);
  EXPECT_EQ(lines.size(), 12u) << first.out;
  for (const std::string& line : lines) {
    const size_t tempo = line.find("\"tempo\": ");
    if (tempo == std::string::npos) continue;
    const int value = std::atoi(line.c_str() + tempo + 9);
    EXPECT_TRUE(value > 118 && value < 130) << line;
  }
  EXPECT_EQ(generate(arguments).out, first.out);
  const std::vector<std::string> shuffled = {"--random", "5", "GENPL ORDER RAND(100)"};
  EXPECT_EQ(generate(shuffled).out, generate(shuffled).out);
}

TEST_F(program, finds_names_with_every_operator) {
  struct {
    const char *where, *ident;
    size_t count;
  } const cases[] = {{"ZV_TrackName = 'Krähenlied'", "sample-013", 1},
                     {"ZV_AlbumName BEGINS 'Krähen'", "sample-015", 2},
                     {"ZV_ArtistName CONTAINS '図書'", "sample-025", 5},
                     {"ZV_ArtistName LIKE 'The Quiet Lamp'", "sample-001", 5},
                     {"ZV_ArtistName = 'Integer Sunday'", "sample-019", 4}};
  for (const auto& each : cases) {
    const run_result result = generate({std::string("GENPL WHERE ") + each.where});
    EXPECT_EQ(result.code, 0) << result.err;
    EXPECT_EQ(lines_of(result.out).size(), each.count) << result.out;
    EXPECT_NE(result.out.find(each.ident), std::string::npos) << result.out;
  }
  const run_result all = generate({"GENPL"}),
                   others = generate({"GENPL WHERE ZV_TrackName != 'Hraun'"});
  EXPECT_EQ(lines_of(all.out).size(), 96u);
  EXPECT_EQ(lines_of(others.out).size(), 95u);
  const run_result none = generate({"GENPL WHERE ZV_TrackName = 'nothing'"});
  EXPECT_EQ(none.code, 1);
  EXPECT_EQ(none.out, "");
}

TEST_F(program, marks_the_fault_of_a_statement) {
  const run_result bad = generate({"GENPL WHERE ZV_Tempo > 118 LIMIT x RESULTS"});
  EXPECT_EQ(bad.code, 2);
  EXPECT_EQ(bad.err,
            "zvplaylist: expected number at 'x RESULTS'\n"
            "  GENPL WHERE ZV_Tempo > 118 LIMIT x RESULTS\n"
            "                                   ^\n");
  const run_result unknown = generate({"--quiet", "GENPL WHERE ZV_Colour = 'blue'"});
  EXPECT_EQ(unknown.err,
            "zvplaylist: attribute 'ZV_Colour' not supported by collection\n"
            "  GENPL WHERE ZV_Colour = 'blue'\n"
            "              ^\n");
}

TEST_F(program, a_seed_stands_for_its_track) {
  const run_result like = generate({"--seed", "sample-001", "GENPL WHERE ZV_ArtistName = SEED"});
  EXPECT_EQ(like.code, 0) << like.err;
  EXPECT_EQ(lines_of(like.out).size(), 5u) << like.out;
  const run_result absent = generate({"--seed", "no such", "GENPL WHERE ZV_ArtistName = SEED"});
  EXPECT_EQ(absent.code, 1);
  EXPECT_EQ(absent.err, "zvplaylist: no track has the ident no such\n");
}

TEST_F(program, bad_rows_are_told_and_the_rest_goes_on) {
  const std::string catalog = files_.write(
      "bad.csv", "id,title,artist\n1,a,X\n1,again,X\n2\n3,b\xFF,\xF0\x9F\x8E\xB5\n4,c,Z\n");
  const run_result result = run({"generate", "--import", catalog, "GENPL"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(lines_of(result.out).size(), 3u) << result.out;
  EXPECT_EQ(result.err, catalog + ":3: ident '1' is there already, left out\n" + catalog +
                            ":4: 1 fields where the header has 3, row left out\n" + catalog +
                            ":5: invalid UTF-8 replaced, characters above U+FFFF replaced\n"
                            "3 tracks; 2 rows or files left out, 1 mended, 0 noted\n");
  EXPECT_EQ(run({"generate", "-q", "--import", catalog, "GENPL"}).err, "");
}

TEST_F(program, an_input_without_tracks_is_told_with_code_3) {
  const std::string empty = files_.write("empty.csv", "");
  EXPECT_EQ(run({"generate", "--import", empty, "GENPL"}).code, 3);
  EXPECT_EQ(run({"generate", "--scan", files_.path("absent"), "GENPL"}).code, 3);
  const run_result both = generate({"--import", empty, "GENPL LIMIT 2 RESULTS"});
  EXPECT_EQ(both.code, 3);
  EXPECT_EQ(lines_of(both.out).size(), 2u);
}

TEST_F(program, reads_standard_input_and_writes_files) {
  const std::string target = files_.path("out.m3u8");
  const run_result written =
      run({"generate", "--import", "-", "--format", "m3u8", "-o", target, "--", "GENPL"},
          "{\"path\": \"/m/a.ogg\", \"title\": \"a\", \"artist\": \"X\"}\n");
  EXPECT_EQ(written.code, 0) << written.err;
  EXPECT_EQ(written.out + written.err, "");
  EXPECT_EQ(read_file(target), "#EXTM3U\n#EXTINF:-1,X - a\n/m/a.ogg\n");
  EXPECT_EQ(generate({"-o", "/dev/full", "GENPL"}).code, 4);
}

TEST_F(program, a_folder_of_files_becomes_a_playlist) {
  files_.write_audio("music/1.flac",
                     {{"TITLE", {"Früh"}}, {"ARTIST", {"Ada", "Ben"}}, {"BPM", {"90"}}});
  files_.write_audio("music/2.wav", {{"TITLE", {"Spät"}}, {"ARTIST", {"Cem"}}});
  const run_result found = run({"generate", "--scan", files_.path("music"), "--format", "xspf",
                                "GENPL WHERE ZV_Tempo < 100"});
  EXPECT_EQ(found.code, 0) << found.err;
  EXPECT_NE(found.out.find("<location>file://" + files_.path("music/1.flac") + "</location>"),
            std::string::npos)
      << found.out;
  EXPECT_EQ(found.out.find("2.wav"), std::string::npos);
  const run_result second =
      run({"generate", "--scan", files_.path("music"), "GENPL WHERE ZV_ArtistName = 'Ben'"});
  EXPECT_NE(second.out.find("Früh"), std::string::npos) << second.err;
}

}  // namespace
}  // namespace zvplaylist
