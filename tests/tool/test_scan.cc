// Folders of real, if tiny, audio files.
#include <sys/stat.h>

#include <sstream>

#include "tests/tool/workspace.h"
#include "tools/scan.h"

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

class scan : public testing::Test {
 protected:
  size_t run(const std::string& folder) {
    console out(reports_, {});
    return scan_folder(
        folder, [this](track&& entry, const place&) { tracks_.push_back(std::move(entry)); }, out);
  }

  workspace files_;
  std::vector<track> tracks_;
  std::ostringstream reports_;
};

TEST_F(scan, reads_the_tags_of_audio_files) {
  files_.write_audio("b/one.flac", {{"TITLE", {"Ein Stück"}},
                                    {"ARTIST", {"Ada", "Ben"}},
                                    {"ALBUM", {"Alles"}},
                                    {"DATE", {"2011-02-03"}},
                                    {"GENRE", {"Polka"}},
                                    {"BPM", {"127.6"}}});
  files_.write_audio("a/two.wav.FLAC", {{"TITLE", {"Zwei"}}, {"ARTIST", {"椎名"}}});
  files_.write("a/notes.txt", "no music");
  EXPECT_EQ(run(files_.path(".")), 2u);
  ASSERT_EQ(tracks_.size(), 2u);
  EXPECT_EQ(summary(tracks_[0]), files_.path("./a/two.wav.FLAC") + "/Zwei/椎名/0/0\n");
  const track& flac = tracks_[1];
  EXPECT_EQ(summary(flac), files_.path("./b/one.flac") + "/Ein Stück/Ada+Ben/2011/128\n");
  EXPECT_EQ(flac.location, files_.path("b/one.flac"));
  EXPECT_EQ(flac.term_of(field::genre), "Polka");
  EXPECT_EQ(flac.seconds, 10u);
  EXPECT_EQ(reports_.str(), "");
}

TEST_F(scan, reports_what_it_cannot_read_and_goes_on) {
  files_.write_audio("good.flac", {});
  files_.write("broken.wmv.asf", "not audio at all");
  files_.write("empty.flac", "");
  ASSERT_EQ(mkfifo(files_.path("pipe.mp3").c_str(), 0600), 0);
  fs::create_symlink("nowhere", files_.path("dangling.ogg"));
  run(files_.path("."));
  ASSERT_GE(tracks_.size(), 1u);
  EXPECT_TRUE(has(reports_.str(), "dangling.ogg: No such file"));
  EXPECT_TRUE(has(reports_.str(), "good.flac: no title, no artist"));
  EXPECT_FALSE(has(reports_.str(), "pipe.mp3"));
  EXPECT_EQ(run(files_.path("absent")), 0u);
  EXPECT_TRUE(has(reports_.str(), "absent: No such file"));
  EXPECT_FALSE(has(reports_.str(), "no audio files"));
}

TEST_F(scan, links_neither_loop_nor_count_twice) {
  files_.write("z/song.ogg", "");
  files_.write("z/more/b.ogg", "");
  fs::create_directory_symlink("..", files_.path("z/more/up"));
  fs::create_directory_symlink(".", files_.path("self"));
  fs::create_symlink("z/song.ogg", files_.path("a.ogg"));
  console out(reports_, {});
  texts paths;
  for (const found_file& each : find_audio_files(files_.path("."), out).files)
    paths.push_back(each.path);
  EXPECT_EQ(paths, (texts{files_.path("./z/more/b.ogg"), files_.path("./z/song.ogg")}));
}

TEST_F(scan, keeps_the_bytes_of_odd_names) {
  const std::string path = files_.write_audio("\xF0\x9F\x8E\xB5 caf\xE9.flac", {{"TITLE", {"x"}}});
  EXPECT_EQ(run(files_.path(".")), 1u);
  EXPECT_EQ(tracks_.at(0).location, path);
  EXPECT_TRUE(tracks_.at(0).ident.ends_with("/\xEF\xBF\xBD caf\xEF\xBF\xBD.flac"));
}

}  // namespace
}  // namespace zvplaylist
