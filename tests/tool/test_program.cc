// The program as a person runs it: arguments in, standard output, standard error and exit code out.
#include <pty.h>
#include <unistd.h>

#include <sstream>

#include "tests/tool/program_fixture.h"
#include "tools/command.h"

namespace zvplaylist {
namespace {

// Every option of a help is in the man page and in what completes.
void expect_told(const std::string& help) {
  const auto tools = std::filesystem::path(SAMPLE_CATALOG).parent_path() / "../../tools";
  const std::string completion = read_file(tools / "completion/zvplaylist.bash");
  const std::string zsh_completion = read_file(tools / "completion/_zvplaylist");
  const std::string man = read_file(tools / "zvplaylist.1");
  std::istringstream lines(help);
  for (std::string line; std::getline(lines, line);) {
    const size_t dashes = line.find("--");
    if (!line.starts_with("  -") || dashes > 5) continue;  // "  --name" or "  -n,--name"
    const std::string option = line.substr(dashes + 2, line.find(' ', dashes) - dashes - 2);
    EXPECT_TRUE(has(man, "Fl Fl " + option)) << option;
    EXPECT_TRUE(has(completion, "--" + option)) << option;
    EXPECT_TRUE(has(zsh_completion, "--" + option)) << option;
  }
}

TEST_F(program, help_version_and_attributes) {
  for (const command& each : commands) {
    const std::string help = run(0, {each.name, "--help"}).out;
    EXPECT_TRUE(has(help, "Example:\n  zvplaylist "));
    expect_told(help);
  }
  EXPECT_EQ(WEXITSTATUS(std::system(ZVPLAYLIST_PROGRAM " --help >/dev/full 2>&1")), 4);
  EXPECT_EQ(run(0, {"--version"}).out, "zvplaylist 3.10.5\n");
  const std::string listed = run(0, {"attributes"}).out;
  EXPECT_TRUE(listed.starts_with("ZV_TrackName\nZV_ArtistName\nZV_AlbumName\n")) << listed;
}

TEST_F(program, wrong_usage_is_told_with_code_2) {
  const std::pair<arguments, std::string> wrong[] = {
      {{}, "zvplaylist: a command is wanted; see zvplaylist --help\n"},
      {{"nonsense"}, "zvplaylist: 'nonsense' is no command; see zvplaylist --help\n"},
      {{"generate", "GENPL"}, "zvplaylist: "},
      {{"validate", "-GENPL"}, "'-GENPL' is no option"},
      {{"validate", "GENPL", "LIMIT"}, "'LIMIT' is one too many: the statement is one"},
      {{"lists", "--find", "a", "--find", "b"},
       "--find is given twice; see zvplaylist lists --help"}};
  for (const auto& [given, told] : wrong) {
    const run_result result = run(2, given);
    EXPECT_TRUE(has(result.out + result.err, told));
  }
  const std::pair<arguments, std::string> wrong_over_samples[] = {
      {{}, "STATEMENT is required"},
      {{"--format", "mp3", "GENPL"}, "mp3"},
      {{"--map", "colour=id", "GENPL"}, "colour"},
      {{"--map", "title", "GENPL"}, "title"},
      {{"GENPL WHERE ZV_Tempo = SEED"}, "--seed"},
      {{"GENPL WHERE ZV_Tempo IN 3"}, "IN [90, 120]"},
      {{"GENPL ORDER 3"}, "bare number"},
      {{"--quiet", "GENPL WHERE ZV_Colour = 'blue'"},
       "zvplaylist: attribute 'ZV_Colour' not supported by collection\n"
       "  GENPL WHERE ZV_Colour = 'blue'\n"
       "              ^\n"}};
  for (const auto& [given, told] : wrong_over_samples)
    EXPECT_TRUE(has(generate(2, given).err, told));
}

TEST_F(program, takes_defaults_from_a_file) {
  const arguments moods = {"lists", "moods", "--find", "happy"};
  files_.write("zvplaylist/config", "# mine\n\n language = ger \nquiet=true\n");
  EXPECT_TRUE(has(run(0, moods).out, "Glücklich"));
  EXPECT_TRUE(has(run(0, {"lists", "moods", "--language", "eng"}).out, "Happy"));
  EXPECT_EQ(generate(3, {"--import", files_.path("absent"), "GENPL LIMIT 1 RE"}).err,
            "zvplaylist: nothing usable in " + files_.path("absent") + "\n");

  const std::string other = files_.write("other", "store = " + files_.path("kept"));
  run(0, {"import", SAMPLE_CATALOG, "--into", "lib", "--config", other});
  EXPECT_EQ(run(0, {"collections", "--store", files_.path("kept")}).out, "lib  96\n");
  run(2, {"attributes", "--config", files_.path("absent")});
  run(2, {"attributes", "--config", files_.path("")});
  const std::pair<const char*, const char*> faults[] = {
      {"language", ":1: expected OPTION = VALUE"},
      {"\ncolour = red", ":2: 'colour' is none of store, language and quiet"},
      {"quiet = maybe", ":1: "}};
  for (const auto& [text, told] : faults)
    EXPECT_TRUE(has(generate(2, {"--config", files_.write("faulty", text), "GENPL"}).err,
                    files_.path("faulty") + told));
}

TEST_F(program, chooses_orders_and_limits_the_same_way_each_time) {
  const arguments given = {"--random", "5",
                           "GENERATE PLAYLIST WHERE ZV_Tempo > 118 AND ZV_Tempo < 130 ORDER "
                           "RAND(100) LIMIT 2 PER ZV_ArtistName, 10 RESULTS"};
  const run_result first = generate(0, given);
  EXPECT_EQ(first.lines(), 10) << first.out;
  EXPECT_EQ(generate(0, given).out, first.out);
  EXPECT_EQ(generate(0, {"GENPL WHERE ZV_TrackName != 'Krähenlied'"}).lines(), 95);
  EXPECT_EQ(generate(1, {"GENPL WHERE ZV_TrackName = 'nothing'"}).out, "");
}

TEST_F(program, a_seed_stands_for_its_track) {
  const run_result like = generate(0, {"--seed", "sample-001", "GENPL WHERE ZV_ArtistName = SEED"});
  EXPECT_EQ(like.lines(), 4) << like.out;
  EXPECT_FALSE(has(like.out, "sample-001"));
}

TEST_F(program, statements_are_validated_and_explained) {
  EXPECT_TRUE(has(run(0, {"validate", "GENPL WHERE ZV_Mood LIKE SEED"}).out, "needs a seed"));
  EXPECT_TRUE(has(run(0, {"validate", "GENPL LIMIT 3 RESULTS"}).out, "needs no seed"));
  const char* odd = "GENPL WHERE ZV_Tempo = SEED OR ZV_Genre = 'Odd'";
  EXPECT_EQ(run(2, {"validate", odd}).err,
            "zvplaylist: unsupported value 'Odd' for attribute 'ZV_Genre'\n  " + std::string(odd) +
                "\n" + std::string(45, ' ') + "^\n");
  const arguments near = {"GENPL WHERE ZV_Tempo LIKE 120 Lim 1 RESULTS", "sample-017"};
  const std::string told = on_sample(0, "explain", near).out;
  EXPECT_TRUE(told.starts_with("sample-017 is in, before limits\nWHERE [FALSE]\n  operator: 119 "));
  EXPECT_TRUE(told.ends_with("LIMIT\n  number: 1\n  results\n")) << told;
  const arguments empty = {"GENPL WHERE ZV_Tempo IN []", "sample-017"};
  EXPECT_EQ(on_sample(0, "explain", empty).out,
            "sample-017 is not in\nWHERE [FALSE]\n      ident\n");
  on_sample(1, "explain", {"GENPL", "nothing"});
  EXPECT_TRUE(has(on_sample(2, "explain", {odd, "sample-017"}).err, "only one without"));
}

TEST_F(program, bad_rows_are_told_and_the_rest_goes_on) {
  const std::string catalog =
      files_.write("bad.csv", "id,title,artist\n1,a,X\n1,again,X\n2\n3,b\xFF,Y\n4,c,Z\n");
  const run_result result = run(0, {"generate", "--import", catalog, "GENPL"});
  EXPECT_EQ(result.lines(), 3) << result.out;
  EXPECT_EQ(result.err, catalog + ":3: ident '1' is there already, left out\n" + catalog +
                            ":4: 1 fields where the header has 3, row left out\n" + catalog +
                            ":5: invalid UTF-8 replaced\n"
                            "3 tracks; 2 rows or files left out, 1 mended, 0 noted\n");
  EXPECT_EQ(run(0, {"generate", "-q", "--import", catalog, "GENPL"}).err, "");
}

TEST_F(program, an_input_without_tracks_is_told_with_code_3) {
  const std::string empty = files_.write("empty.csv", "");
  run(3, {"generate", "--import", empty, "GENPL"});
  EXPECT_EQ(generate(3, {"--import", empty, "GENPL LIMIT 2 RESULTS"}).lines(), 2);
  const std::pair<const char*, const char*> unreadable[] = {
      {"-", "nothing usable in standard input"},
      {"/proc/self/mem", "/proc/self/mem: cannot be read at all"}};
  for (const auto& [path, told] : unreadable)
    EXPECT_TRUE(has(run(3, {"generate", "--import", path, "GENPL"}).err, told));
}

TEST_F(program, reads_standard_input_and_writes_files) {
  const std::string target = files_.path("out.m3u8");
  const run_result written =
      run(0, {"generate", "--import", "-", "--format", "m3u8", "-o", target, "--", "GENPL"},
          "{\"path\": \"/m/a.ogg\", \"title\": \"a\", \"artist\": \"X\"}\n");
  EXPECT_EQ(written.out + written.err, "");
  EXPECT_EQ(read_file(target), "#EXTM3U\n#EXTINF:-1,X - a\n/m/a.ogg\n");
  generate(4, {"-o", "/dev/full", "GENPL"});
}

TEST_F(program, a_playlist_on_a_terminal_begins_behind_the_progress) {
  int terminal = -1;
  const pid_t child = forkpty(&terminal, nullptr, nullptr, nullptr);
  if (child < 0) GTEST_SKIP() << "no pseudo-terminals are to be had here";
  if (child == 0) {
    execl(ZVPLAYLIST_PROGRAM, "zvplaylist", "generate", "--import", SAMPLE_CATALOG,
          "GENPL LIMIT 1 RE", nullptr);
    _exit(127);
  }
  std::string shown;
  for (char c; read(terminal, &c, 1) == 1;) shown += c;
  waitpid(child, nullptr, 0);
  close(terminal);
  EXPECT_TRUE(has(shown, "reading "));
  EXPECT_TRUE(has(shown, "\r1  sample-"));
}

TEST_F(program, a_folder_of_files_becomes_a_playlist) {
  const std::string file = files_.write_audio(
      "music/1.flac", {{"TITLE", {"Früh"}}, {"ARTIST", {"Ada", "Ben"}}, {"BPM", {"90"}}});
  files_.write_audio("music/2.flac", {{"TITLE", {"Spät"}}, {"ARTIST", {"Cem"}}});
  const std::string found = run(0, {"generate", "--scan", files_.path("music"), "--format", "xspf",
                                    "GENPL WHERE ZV_Tempo < 100 AND ZV_ArtistName = 'Ben'"})
                                .out;
  EXPECT_TRUE(has(found, "<location>file://" + file + "</location>"));
  EXPECT_FALSE(has(found, "2.flac"));
}

}  // namespace
}  // namespace zvplaylist
