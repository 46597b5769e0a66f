// The name attributes: comparison, the split of collaborations, and where names and titles are
// read.
#include "tests/attributes/attribute_fixture.h"

namespace {

using names = playlist_test;

constexpr char s_artist[] = "ZV_ArtistName", s_album[] = "ZV_AlbumName", s_track[] = "ZV_TrackName";
constexpr char s_track_key[] = "zvsdk_ctx_track!matching", s_album_key[] = "zvsdk_ctx_album!";
constexpr char s_artist_key[] = "zvsdk_ctx_artist!", s_member_key[] = "zvsdk_ctx_contributor!";
constexpr char s_name_key[] = "zvsdk_ctx_name!off";

zdo_ptr name(const char* text) {
  return make_object("zvsdk_ctx_name", {{"zvsdk_val_display", text}});
}
// An artist or a contributor.
zdo_ptr person(const char* context, const char* text) {
  return make_object(context, {}, {{s_name_key, name(text)}});
}
// A track or album with an ident, a title and an artist.
zdo_ptr titled(const char* context, const char* ident, const char* text) {
  return make_object(
      context, {{"zvsdk_val_ident", ident}},
      {{"zvsdk_ctx_title!off", name(text)}, {s_artist_key, person("zvsdk_ctx_artist", text)}});
}

// Only ASCII letters fold, nothing begins with nothing.
TEST_F(names, compare_oddities_alike_in_all_three) {
  for (const char* attribute : {s_artist, s_album, s_track}) {
    EXPECT_EQ("1000: -1000", judged(attribute, playlist_op_equal, "\xC3\xA9", {"\xC3\x89"}));
    EXPECT_EQ("1000: -1000", judged(attribute, playlist_op_begins, "", {"Yellow"}));
  }
}

TEST_F(names, artists_of_a_collaboration_are_split) {
  const texts rows[] = {{"A"},
                        {"A feat. B", "A"},
                        {"A FEAT. B", "A"},
                        {"A  vs. B", "A"},
                        {"A vs. B feat. D", "A vs. B"},
                        {"feat. B"},
                        {"Abc(feat. D)", "Abc"},
                        {"Abcfeat. D", "Ab"},
                        {"Afeat. B"},  // an empty name is refused
                        {"A feat.B"},
                        {"A vs\xC0\xAE B", "A"},  // a full stop in more bytes than it needs
                        {"\xE0\xB9\x80 feat\xE0\x80\xAE B", "\xE0\xB9\x80"}};
  log_capture log(zcsl_log_error);
  for (const texts& row : rows) EXPECT_EQ(row, collected(s_artist, name(row[0].c_str())));
  EXPECT_EQ(texts{}, log.take());
}

TEST_F(names, artists_are_found_on_every_level) {
  const zdo_ptr contributor =
      make_object("zvsdk_ctx_contributor", {},
                  {{s_member_key, person("zvsdk_ctx_contributor", "Agnetha")},
                   {s_member_key, make_object("zvsdk_ctx_contributor")},
                   {s_member_key, person("zvsdk_ctx_contributor", "Benny")},
                   {s_name_key, name("ABBA")}});
  const zdo_ptr group = make_object("zvsdk_ctx_artist", {},
                                    {{s_name_key, name("Abba")}, {s_member_key, contributor}});
  const zdo_ptr track = make_object("zvsdk_ctx_track", {}, {{s_artist_key, group}});
  EXPECT_EQ(texts({"Agnetha", "Benny", "ABBA"}), collected(s_artist, contributor));
  EXPECT_EQ(texts({"Abba", "Agnetha", "Benny", "ABBA"}), collected(s_artist, group));
  EXPECT_EQ(texts({"Abba", "Agnetha", "Benny", "ABBA"}), collected(s_artist, track));
}

// The media's own tracks count, by ident; a seed is no media, so its first track does. An album
// without a track that helps has an artist of its own.
TEST_F(names, of_albums_with_their_tracks_and_of_tracks_on_several_albums) {
  const zdo_ptr album = make_object("zvsdk_ctx_album", {},
                                    {{s_track_key, titled("zvsdk_ctx_track", "other", "Carey")},
                                     {s_track_key, titled("zvsdk_ctx_track", "media", "River")},
                                     {s_track_key, titled("zvsdk_ctx_track", "media", "Live")},
                                     {"zvsdk_ctx_title!off", name("Blue")}});
  const zdo_ptr compilation = make_object(
      "zvsdk_ctx_album", {},
      {{s_track_key, titled("zvsdk_ctx_track", "MEDIA", "Cher")},
       {s_track_key, make_object("zvsdk_ctx_track", {}, {{"zvsdk_ctx_title!off", name("Intro")}})},
       {s_artist_key, person("zvsdk_ctx_artist", "Various")}});
  const zdo_ptr track = make_object("zvsdk_ctx_track", {},
                                    {{s_album_key, make_object("zvsdk_ctx_album")},
                                     {s_album_key, titled("zvsdk_ctx_album", "1", "Hits")},
                                     {s_album_key, titled("zvsdk_ctx_album", "2", "Misses")}});
  EXPECT_EQ(texts{"Blue"}, collected(s_album, album));
  EXPECT_EQ(texts({"River", "Live"}), collected(s_track, album));
  EXPECT_EQ(texts{"River"}, collected(s_artist, album));
  EXPECT_EQ(texts{"Various"}, collected(s_artist, compilation));
  EXPECT_EQ(texts{"Intro"}, collected(s_track, compilation)) << "a track without an ident";
  EXPECT_EQ(texts({"Hits", "Misses"}), collected(s_album, track));
  EXPECT_EQ("1000: 1000", judged(s_track, playlist_op_equal, album, {"carey"}));
  EXPECT_EQ("1000: 1000", judged(s_artist, playlist_op_equal, album, {"carey"}));
  EXPECT_EQ("1000: 1000", judged(s_album, playlist_op_equal, track, {"Hits"}));
}

}  // namespace
