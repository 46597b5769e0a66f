// Each output format over the same playlist, with texts that try to break out of it.
#include <tinyxml2.h>

#include "tests/tool/workspace.h"
#include "tools/output.h"

namespace zvplaylist {
namespace {

const track plain{.ident = "7",
                  .location = "/music/caf\xC3\xA9 #1.ogg",
                  .title = "Zwei",
                  .artists = {"椎名", "B"},
                  .album = "C",
                  .terms = {{field::genre, "pop"}, {field::genre, "rock"}},
                  .year = 2001,
                  .tempo = 120,
                  .seconds = 61};
const track nasty{
    .ident = "x\n#y", .location = "x\n#y", .title = "<a>&\"]]>\x1b[2J", .artists = {}, .album = ""};
const playlist both = {{&plain, 1000}, {&nasty, -5}};

TEST(output, text_is_aligned_by_what_a_terminal_shows) {
  EXPECT_EQ(render_text(both),
            "1  7     Zwei          椎名, B  1000\n"
            "2  x #y  <a>&\"]]>\xEF\xBF\xBD[2J  -          -5\n");
}

TEST(output, m3u8_holds_one_location_a_line) {
  EXPECT_EQ(render_m3u8(both),
            "#EXTM3U\n"
            "#EXTINF:61,椎名, B - Zwei\n/music/café #1.ogg\n"
            "#EXTINF:-1,<a>&\"]]>\xEF\xBF\xBD[2J\nx%0A%23y\n");
  track hash = plain;
  hash.location = "#1.ogg";
  EXPECT_TRUE(has(render_m3u8({{&hash, 0}}), "\n./#1.ogg\n"));
  hash.location = "/a\x1b[2J";
  EXPECT_TRUE(has(render_m3u8({{&hash, 0}}), "\nfile:///a%1B%5B2J\n"));
}

TEST(output, xspf_is_well_formed) {
  tinyxml2::XMLDocument document;
  ASSERT_EQ(document.Parse(render_xspf(both).c_str()), tinyxml2::XML_SUCCESS);
  const auto* first = document.FirstChildElement("playlist")
                          ->FirstChildElement("trackList")
                          ->FirstChildElement("track");
  const auto text = [](const tinyxml2::XMLElement* track, const char* name) {
    return std::string(track->FirstChildElement(name)->GetText());
  };
  EXPECT_EQ(text(first, "location"), "file:///music/caf%C3%A9%20%231.ogg");
  EXPECT_EQ(text(first, "duration"), "61000");
  EXPECT_EQ(text(first->NextSiblingElement("track"), "title"), "<a>&\"]]>\xEF\xBF\xBD[2J");
  // Valid UTF-8 that XML has no place for; the parser here would not mind.
  track noncharacter = plain;
  noncharacter.title = "a\xEF\xBF\xBF";
  const std::string written = render_xspf({{&noncharacter, 0}});
  EXPECT_TRUE(has(written, "<title>a\xEF\xBF\xBD<"));
  EXPECT_TRUE(written.ends_with("</playlist>\n"));
}

TEST(output, json_is_an_array_of_known_values) {
  EXPECT_EQ(render_json(both),
            "[\n"
            "  {\"rank\": 1, \"ident\": \"7\", \"location\": \"/music/café #1.ogg\", \"title\": "
            "\"Zwei\", \"artists\": [\"椎名\", \"B\"], \"album\": \"C\", \"year\": 2001, "
            "\"genre\": \"pop\", \"tempo\": 120, \"seconds\": 61, \"score\": 1000},\n"
            "  {\"rank\": 2, \"ident\": \"x\\n#y\", \"location\": \"x\\n#y\", \"title\": "
            "\"<a>&\\\"]]>\\u001b[2J\", \"artists\": [], \"score\": -5}\n]\n");
}

TEST(output, locations_become_uris_once) {
  EXPECT_EQ(uri_of("http://host:80/a b?q=%20#f"), "http://host:80/a%20b?q=%20#f");
  EXPECT_EQ(uri_of("a:b/c%d"), "a%3Ab/c%25d");
}

}  // namespace
}  // namespace zvplaylist
