// Collections that stay, as a person uses them: every step is a run of the program of its own.
#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <thread>

#include "tests/tool/program_fixture.h"

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

class stored : public program {
 protected:
  stored() { setenv("ZVPLAYLIST_STORE", files_.path("store").c_str(), 1); }
  ~stored() override { unsetenv("ZVPLAYLIST_STORE"); }

  std::string song(const std::string& name, const std::string& title) {
    return files_.write_audio(name, {{"TITLE", {title}}, {"ARTIST", {"Ada", "Ben"}}});
  }
  void import(const std::string& name, const std::string& rows) {
    run(0, {"import", "-", "--into", name}, "id,title,artist,genre\n" + rows);
  }
  // What a scan of "music" into "lib" tells.
  std::string scan(int code = 0) {
    return run(code, {"scan", files_.path("music"), "--into", "lib"}).out;
  }
  std::string idents(const std::string& name) { return run(0, {"show", name}).out; }

  // Overwrites a text in the store's file, wherever it stands.
  void damage(const std::string& text, const std::string& with) {
    std::string bytes = read_file(files_.path("store/zv_colls.zdb"));
    ASSERT_NE(bytes.find(text), std::string::npos);
    bytes.replace(bytes.find(text), with.size(), with);
    files_.write("store/zv_colls.zdb", bytes);
  }
};

TEST_F(stored, a_scanned_folder_gives_the_playlists_that_its_files_give) {
  files_.write_audio("music/a.flac", {{"TITLE", {"Früh"}},
                                      {"ARTIST", {"Ada", "Ben"}},
                                      {"ALBUM", {"Alles"}},
                                      {"DATE", {"2011"}},
                                      {"GENRE", {"House"}},
                                      {"MOOD", {"Happy"}},
                                      {"BPM", {"128"}}});
  song("music/100%/\xF0\x9F\x8E\xB5 caf\xE9.flac", "Spät");
  EXPECT_EQ(scan(), "lib: 2 added, 0 removed, 0 changed, 0 unchanged; 2 tracks\n");
  EXPECT_EQ(run(0, {"collections"}).out, "lib  2\n");
  for (const char* format : {"text", "m3u8", "xspf", "json"}) {
    const arguments how = {"--format", format, "GENPL WHERE ZV_ArtistName = 'Ben'"};
    arguments from = {"generate", "--from", "lib"},
              direct = {"generate", "--scan", files_.path("music")};
    from.insert(from.end(), how.begin(), how.end());
    direct.insert(direct.end(), how.begin(), how.end());
    EXPECT_EQ(run(0, from).out, run(0, direct).out);
  }
  EXPECT_TRUE(has(run(0, {"info", files_.path("music/a.flac"), "--from", "lib"}).out, "(128)\n"));
  EXPECT_FALSE(has(run(0, {"attributes"}).out, "zvplaylist_"));
}

TEST_F(stored, only_what_changed_is_read_again) {
  const std::string same = song("music/same.flac", "same"), other = song("music/other.flac", "old");
  song("music/gone.flac", "gone");
  song("away/disk/far.flac", "far");
  fs::create_directory_symlink("../away/disk", files_.path("music/link"));
  import("lib", "elsewhere,x,y,\n");
  EXPECT_EQ(scan(), "lib: 4 added, 0 removed, 0 changed, 0 unchanged; 5 tracks\n");

  const auto time = fs::last_write_time(same);
  files_.write("music/same.flac", std::string(fs::file_size(same), 'x'));
  fs::last_write_time(same, time);
  song("music/other.flac", "new");
  fs::remove(files_.path("music/gone.flac"));
  fs::rename(files_.path("away"), files_.path("unplugged"));
  song("music/added.flac", "added");
  EXPECT_EQ(scan(), "lib: 1 added, 1 removed, 1 changed, 1 unchanged; 5 tracks\n");
  EXPECT_EQ(idents("lib"), "elsewhere\n" + files_.path("music/link/far.flac") + "\n" + same + "\n" +
                               files_.path("music/added.flac") + "\n" + other + "\n");
  EXPECT_TRUE(has(run(0, {"info", other, "--from", "lib"}).out, "ZV_TrackName   new\n"));
  // It cannot be read, and stays what it was.
  EXPECT_TRUE(has(run(0, {"scan", files_.path("music"), "--into", "lib", "--again"}).out,
                  "0 added, 0 removed, 2 changed, 0 unchanged; 5 tracks"));

  fs::rename(files_.path("music"), files_.path("unmounted"));
  EXPECT_EQ(scan(3), "lib: 0 added, 0 removed, 0 changed, 0 unchanged; 5 tracks\n");
  fs::create_directory(files_.path("music"));
  EXPECT_TRUE(has(run(3, {"scan", files_.path("music"), "--into", "lib"}).err,
                  "lib keeps its 4 tracks of it"));
  EXPECT_TRUE(has(run(1, {"remove", "lib", "--below", ""}).err, "lib: no track is below \n"));
  run(0, {"remove", "lib", "--below", files_.path("music")});
  EXPECT_EQ(idents("lib"), "elsewhere\n");
}

// So many that what stays is copied instead.
TEST_F(stored, exchanging_nearly_all_tracks_leaves_what_a_fresh_import_gives) {
  const auto rows = [](int first, int end, const std::string& title) {
    std::string text;
    for (int i = first; i < end; ++i)
      text += "id" + std::to_string(i) + "," + title + std::to_string(i) + ",Ada" +
              std::to_string(i % 7) + (i % 2 == 0 ? ",House\n" : ",Jazz\n");
    return text;
  };
  const auto all = [&](const std::string& name) {
    return run(0, {"generate", "--from", name, "--format", "json", "GENPL"}).out;
  };
  import("lib", rows(0, 1010, "old "));
  EXPECT_EQ(
      run(0, {"import", "-", "--into", "lib"}, "id,title,artist,genre\n" + rows(0, 1008, "new "))
          .out,
      "lib: 0 added, 0 removed, 1008 changed, 0 unchanged; 1010 tracks\n");
  import("fresh", rows(1008, 1010, "old ") + rows(0, 1008, "new "));
  EXPECT_EQ(all("lib"), all("fresh"));
}

// Feeds a run through a pipe, so that it can be ended in the middle.
class fed_import {
 public:
  explicit fed_import(const std::string& messages) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0 || (child_ = fork()) < 0) throw std::runtime_error("no child");
    if (child_ == 0) {
      dup2(ends[0], STDIN_FILENO);
      dup2(open(messages.c_str(), O_CREAT | O_WRONLY, 0600), STDERR_FILENO);
      execl(ZVPLAYLIST_PROGRAM, "zvplaylist", "import", "-", "--into", "lib", nullptr);
      _exit(127);
    }
    close(ends[0]);
    feed_ = ends[1];
  }
  // Back when the program has read it.
  void feed(const std::string& text) const {
    EXPECT_EQ(write(feed_, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    int left = 1;
    for (int i = 0; i < 5000 && ioctl(feed_, FIONREAD, &left) == 0 && left != 0; ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(2));
    EXPECT_EQ(left, 0);
  }
  int end(int signal) {
    kill(child_, signal);
    int status = 0;
    waitpid(child_, &status, 0);
    close(feed_);
    return status;
  }

 private:
  pid_t child_ = -1;
  int feed_ = -1;
};

TEST_F(stored, idents_with_one_hash_do_no_harm) {
  const std::string first = song("music/ab.flac", "1"), second = song("music/bA.flac", "2");
  const arguments again = {"scan", files_.path("music"), "--into", "lib", "--again"};
  scan();
  EXPECT_EQ(scan(), "lib: 0 added, 0 removed, 0 changed, 2 unchanged; 2 tracks\n");
  EXPECT_TRUE(has(run(0, again).err, first + "' is out of reach"));
  EXPECT_EQ(run(0, {"generate", "--from", "lib", "GENPL"}).lines(), 2);
  EXPECT_TRUE(has(run(1, {"info", first, "--from", "lib"}).err, "' is out of reach"));
  fs::remove(first);
  song("music/c.flac", "3");
  EXPECT_EQ(scan(), "lib: 1 added, 0 removed, 0 changed, 1 unchanged; 3 tracks\n");
  fs::remove(second);
  EXPECT_EQ(scan(), "lib: 0 added, 1 removed, 0 changed, 1 unchanged; 2 tracks\n");
  EXPECT_EQ(scan(), "lib: 0 added, 1 removed, 0 changed, 1 unchanged; 1 tracks\n");

  // The second hides the first, whose new values wait.
  import("met", "xab,t,x,\nq,t,x,\n");
  EXPECT_EQ(run(0, {"import", "-", "--into", "met"}, "id,title,artist\nxab,u,x\nxbA,t,x\n").out,
            "met: 1 added, 0 removed, 0 changed, 1 unchanged; 3 tracks\n");

  import("rows", "ab,t,x,\nbA,t,x,\n");
  import("rows", "ab,u,x,\nbA,u,x,\n");
  run(0, {"generate", "--from", "rows", "--from", "lib", "GENPL"});
  EXPECT_EQ(run(1, {"remove", "rows", "ab", "bA"}).out, "rows: 1 removed; 1 tracks\n");
  EXPECT_EQ(run(0, {"remove", "rows", "ab"}).out, "rows: 1 removed; 0 tracks\n");
}

TEST_F(stored, interrupted_work_goes_on_where_it_was) {
  const std::string messages = files_.path("messages");
  fed_import first(messages);
  first.feed("id,title,artist\n1,a,x\n");
  for (int row = 2; run(0, {"collections", "--names"}).out.empty(); ++row)
    first.feed(std::to_string(row) + ",a,x\n");
  EXPECT_TRUE(WIFSIGNALED(first.end(SIGKILL)));
  const auto saved = std::ranges::count(idents("lib"), '\n');
  EXPECT_GT(saved, 0);

  fed_import second(messages);
  second.feed("id,title,artist\nnew,b,x\n");
  const int status = second.end(SIGTERM);
  EXPECT_EQ(WEXITSTATUS(status), 143);
  EXPECT_TRUE(has(read_file(messages), "zvplaylist: interrupted; 'lib' is stored with "));
  EXPECT_EQ(run(0, {"import", "-", "--into", "lib"}, "id,title,artist\n1,a,x\nnew,b,y\n").out,
            "lib: 0 added, 0 removed, 1 changed, 1 unchanged; " + std::to_string(saved + 1) +
                " tracks\n");
}

TEST_F(stored, two_runs_at_once_lose_nothing) {
  std::string both;
  for (const std::string name : {"a", "b"}) {
    std::string rows = "id,title,artist\n";
    for (int i = 0; i < 500; ++i) rows += name + std::to_string(i) + ",t,x\n";
    both += ZVPLAYLIST_PROGRAM " import --into lib "s + quoted(files_.write(name + ".csv", rows)) +
            " >/dev/null 2>&1 & ";
  }
  EXPECT_EQ(std::system((both + "wait").c_str()), 0);
  EXPECT_EQ(run(0, {"collections", "--format", "json"}).out,
            "[\n  {\"name\": \"lib\", \"tracks\": 1000}\n]\n");
}

TEST_F(stored, several_collections_make_one_playlist) {
  import("one", "a,A,X,House\nb,B,Y,House\n");
  import("two", "b,other,Y,House\nc,C,Z,House\n");
  const arguments both = {"generate", "--from", "one", "--from", "two", "GENPL"};
  const run_result joined = run(0, both);
  EXPECT_EQ(joined.lines(), 3);
  EXPECT_TRUE(has(joined.out, "  b  B  Y  ")) << joined.out;
  EXPECT_EQ(joined.err, "two: 1 tracks are there already, left out\n");
  EXPECT_EQ(run(0, {"like", "c", "--from", "one", "--from", "two", "--random", "1"}).lines(), 2);
  EXPECT_EQ(run(0, {"generate", "--from", "two", "--import", "-", "GENPL"}, "id,title\nb,B\nd,D\n")
                .lines(),
            3);
  EXPECT_TRUE(
      has(run(1, {"info", "C", "--from", "one", "--from", "two"}).err, "the nearest is c (C)"));
  EXPECT_TRUE(has(run(1, {"generate", "--from", "three", "GENPL"}).err, "there is one, two"));
  run(2, {"generate", "--from", "one", "--from", "one", "GENPL"});
}

TEST_F(stored, collections_are_kept_in_order) {
  const std::string file = files_.path("one.zvpl");
  import("one", "a,A,X,\nb,B,Y,\n");
  import("two", "c,C,Z,\n");
  run(2, {"rename", "one", "two"});
  run(1, {"rename", "three", "four"});
  run(0, {"rename", "one", "first"});
  EXPECT_EQ(run(0, {"collections"}).out, "first  2\ntwo    1\n");
  run(0, {"export", "first", file});
  run(2, {"export", "first", file});
  ASSERT_EQ(mkfifo(files_.path("pipe").c_str(), 0600), 0);
  EXPECT_TRUE(
      has(run(4, {"export", "first", files_.path("pipe"), "--force"}).err, "pipe is there"));
  EXPECT_EQ(run(1, {"remove", "first", "b", "absent", ""}).out, "first: 1 removed; 1 tracks\n");
  run(2, {"load", file});
  run(0, {"load", file, "--as", "again"});
  EXPECT_EQ(idents("again"), "a\nb\n");
  EXPECT_EQ(idents("first"), "a\n");
  run(0, {"rename", "again", "two", "--force"});
  EXPECT_EQ(idents("two"), "a\nb\n");
  run(0, {"remove", "first"});
  run(0, {"compact"});
  EXPECT_TRUE(has(run(0, {"check"}).out, "two: 2 tracks\n"));
  run(3, {"load", files_.write("no", "no collection")});
  EXPECT_TRUE(has(run(3, {"load", files_.path("absent")}).err, "absent: No such file"));
  EXPECT_TRUE(has(run(3, {"load", files_.path("")}).err, ": Is a directory"));
  for (const std::string name : {"a\nb", " a", "TWO", ""})
    run(2, {"load", file, "--force", "--as=" + name});
  run(2, {"import", SAMPLE_CATALOG, "--into", "Two"});
  run(0, {"rename", "two", "Two"});
  EXPECT_EQ(run(0, {"collections"}).out, "Two  2\n");
}

TEST_F(stored, damage_is_told_with_code_4) {
  EXPECT_EQ(run(0, {"check"}).out, files_.path("store") + ": nothing is stored there\n");
  EXPECT_TRUE(has(run(0, {"collections"}).err, "nothing is stored in " + files_.path("store")));
  import("good", "a,A,X,\n");
  import("bad", "b,B,Y,\n");
  damage("\xA4\x62\x61\x64", "\xC0");  // what says that the name is a text
  const run_result checked = run(4, {"check"});
  EXPECT_TRUE(has(checked.out, "good: 1 tracks\n"));
  EXPECT_TRUE(has(checked.err, "cannot load collection 'bad' from " + files_.path("store")))
      << checked.err;
  EXPECT_EQ(run(4, {"collections"}).out, "good  1\n");
  run(4, {"generate", "--from", "bad", "GENPL"});
  run(0, {"remove", "bad"});
  run(0, {"check"});

  files_.write("store/zv_colls.zdb", "something else");
  EXPECT_TRUE(has(run(4, {"collections"}).err, "not a storage file"));
  run(4, {"import", "-", "--into", "lib"}, "id\na\n");
  EXPECT_EQ(read_file(files_.path("store/zv_colls.zdb")), "something else");
  run(4,
      {"import", SAMPLE_CATALOG, "--into", "lib", "--store", files_.write("file", "") + "/store"});
}

// The bound is the database's, and where it lies shows in that the longest path serves.
TEST_F(stored, a_path_may_be_too_long_for_a_store) {
  const std::string name(200, 'd');
  std::string folder = files_.path(name + "/" + name + "/");
  folder += std::string(504 - std::string("/zv_colls.zdb").size() - folder.size(), 'd');
  run(0, {"import", SAMPLE_CATALOG, "--into", "lib", "--store", folder});
  EXPECT_TRUE(has(run(4, {"collections", "--store", folder + "d"}).err, "with a shorter path"));
}

}  // namespace
}  // namespace zvplaylist
