// What a track description says in names, ids, profiles and points, and what becomes of it.

#include <cmath>
#include <map>

#include "tests/common/data_folder.h"
#include "tests/manager/host_fixture.h"
#include "tests/manager/zdo_fixture.h"

namespace {

zvsdk_track_description describe(const char* genre, const char* mood = nullptr,
                                 const char* era = nullptr, const char* origin = nullptr,
                                 const char* type = nullptr) {
  zvsdk_track_description track = {};
  track.size = sizeof track;
  track.genre = genre;
  track.mood = mood;
  track.era = era;
  track.origin = origin;
  track.artist_type = type;
  return track;
}

zvsdk_track_description at_point(float valence, float energy, const char* mood = nullptr) {
  zvsdk_track_description track = describe(nullptr, mood);
  track.has_mood_point = 1;
  track.valence = valence;
  track.energy = energy;
  return track;
}

/* The message of a description that is refused, or "". */
std::string refusal(const zvsdk_track_description& track, uint32_t* unknown) {
  zvsdk_zdo* made = nullptr;
  const zvsdk_status status = zvsdk_manager_zdo_from_track(&track, unknown, &made);
  const zdo_ptr object(made);
  EXPECT_EQ(made != nullptr ? 0u : 0x9008000C, status);
  return made != nullptr ? "" : last_error().message;
}

/* Genre, mood, profile, era, origin and artist type where the attributes look for them. */
std::string ids_of(object_reader reader, const zdo_ptr& track) {
  const std::string list = "_sdkmgr_val_list_";
  const std::string of_all = "zvsdk_ctx_artist!/zvsdk_ctx_contributor!/" + list;
  std::string all;
  for (const std::string& path :
       {list + "genre_id", list + "mood_id", list + "mood_data", of_all + "era_id",
        of_all + "origin_id", of_all + "artist_type_id"}) {
    const std::string found = reader.value(track, path);
    all += (found == "(none)" ? "-" : found) + " ";
  }
  return all;
}

/* The name walk of a track: artist, members of the contributor, contributor. */
TEST_F(zdo_test, artists_behind_the_first_are_members_and_old_callers_know_fewer_fields) {
  std::vector<const char*> artists = {"Ed", "Khalid", nullptr, "Fred"};
  artists.resize(154, "more");
  zvsdk_track_description track = describe(nullptr);
  track.ident = "id";
  track.artists = artists.data();
  track.artist_count = static_cast<uint32_t>(artists.size());
  const std::string name = "zvsdk_ctx_name!off/zvsdk_val_display";
  const zdo_ptr tree(output_of(zvsdk_manager_zdo_from_track, &track, nullptr));
  const zdo_ptr all = child(child(tree, "zvsdk_ctx_artist!"), "zvsdk_ctx_contributor!");
  EXPECT_EQ("Ed", value(all, name));
  for (uint32_t i = 1; i <= 152; ++i)
    EXPECT_EQ(artists[i == 1 ? 1 : i + 1], value(child(all, "zvsdk_ctx_contributor!", i), name));
  track.size = offsetof(zvsdk_track_description, title);
  const zdo_ptr old(output_of(zvsdk_manager_zdo_from_track, &track, nullptr));
  EXPECT_EQ("id", value(old, "zvsdk_val_ident"));
  EXPECT_EQ(nullptr, child(old, "zvsdk_ctx_artist!"));
}

/* With short lists in place of the built-in ones. */
TEST(track_test, names_ids_profiles_and_points_become_what_the_attributes_read) {
  const data_folder data;
  const std::pair<std::string, const char*> lists[] = {
      {"genres", R"({"id": 7, "text": {"eng": "Rock", "ger": "Fels"}, "also": ["rawk"],
                     "children": [{"id": 71, "text": "Glam"}]})"},
      {"moods", R"({"id": 1, "text": "Any", "plane": [0.5, 0.5], "children": [
        {"id": 11, "text": "Low", "plane": [0, 0]}, {"id": 12, "text": "Mid", "plane": [0.5, 0.5]},
        {"id": 13, "text": "Top", "plane": [1, 1]}]})"},
      {"eras", R"({"id": 5001, "text": "The Eighties", "also": ["1980s"]})"},
      {"origins", R"({"id": 49, "text": "Germany", "also": ["DE"]})"},
      {"artist_types", R"({"id": 3, "text": "Duo"})"}};
  for (const auto& [type, elements] : lists)
    data.write((type + ".json").c_str(),
               R"({"list_type": "t", "languages": ["eng", "ger"], "elements": [)" +
                   std::string(elements) + "]}");
  const running_host host(data.path().c_str());
  EXPECT_EQ("genre \"Rock\": a name needs a locale", refusal(describe("Rock"), nullptr));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  const struct {
    zvsdk_track_description given;
    const char* expected;
    uint32_t unknown = 0;
    const char* message = "";
  } cases[] = {
      {describe("rock", "top", "the eighties", "Germany", "DUO"), "7 13 13:100 5001 49 3 "},
      {describe("Rawk", "", "1980s", "de", ""), "7 - - 5001 49 - "},
      {describe("0071", "4294", "1985", "1", "9"), "71 4294 - 1985 1 9 "},
      {describe("Glam", "12:30,11:70"), "71 11 11:70,12:30 - - - "},
      {at_point(0.505F, 0.495F), "- 12 12:98,11:1,13:1 - - - "},
      {at_point(1, 1), "- 13 13:98,12:1,11:1 - - - "},
      {at_point(1, 1, "5:100"), "- 5 5:100 - - - "},
      {describe("Polka", "1:2x", "x", "x", "x"), "- - - - - - ", 31,
       "genre \"Polka\": the list has no such name"},
      {describe("Glam", nullptr, "0"), "71 - - - - - ", ZVSDK_TRACK_UNKNOWN_ERA,
       "era \"0\": ids lie from 1 to 2147483646"},
  };
  for (const auto& each : cases) {
    uint32_t unknown = 99;
    const zdo_ptr track(output_of(zvsdk_manager_zdo_from_track, &each.given, &unknown));
    EXPECT_EQ(each.expected, ids_of({host.objects}, track));
    EXPECT_EQ(each.unknown, unknown) << each.expected;
    EXPECT_EQ(each.message, refusal(each.given, nullptr));
  }
  // The playlist group goes before the music group, and then only its language counts.
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "ger", nullptr, nullptr));
  EXPECT_EQ("", refusal(describe("Fels"), nullptr));
}

TEST_F(zdo_test, malformed_profiles_and_points_are_refused) {
  uint32_t unknown = 0;
  std::string crowd = "1:1";
  for (int i = 0; i < 63; ++i) crowd += ",1:1";
  EXPECT_EQ("", refusal(describe(nullptr, crowd.c_str()), nullptr));
  crowd += ",1:1";
  for (const char* bad : {"1:", ":1", "1:0", "0:1", "1:101", "1:2,", "1:2,,3:4", "1:2:3", "1: 2",
                          "2147483647:1", "4294967297:1", crowd.c_str()}) {
    EXPECT_TRUE(has(refusal(describe(nullptr, bad), &unknown), "a profile is")) << bad;
  }
  for (const float bad : {NAN, -0.01F, 1.01F})
    for (const auto& track : {at_point(bad, 0), at_point(0, bad), at_point(bad, bad, "1:1")})
      EXPECT_TRUE(has(refusal(track, &unknown), "valence and energy")) << bad;
}

using weights = std::map<uint32_t, int>;

/* Reads a profile and checks what that of a point has to be. */
weights parts_of(const std::string& profile) {
  weights parts;
  int sum = 0, last = 100, weight = 0, size = 0;
  unsigned id = 0;
  for (const char* at = profile.c_str(); std::sscanf(at, "%u:%d%n", &id, &weight, &size) == 2;) {
    EXPECT_TRUE(weight >= 1 && weight <= last && parts.emplace(id, weight).second) << profile;
    sum += last = weight;
    at += size;
    at += *at == ',';
  }
  EXPECT_TRUE(sum == 100 && parts.size() == 5) << profile;
  return parts;
}

int shared(const weights& a, const weights& b) {
  int sum = 0;
  for (const auto& [id, weight] : a) sum += b.contains(id) ? std::min(weight, b.at(id)) : 0;
  return sum;
}

/* Over the built-in moods and the whole plane. */
TEST_F(zdo_test, near_points_have_near_profiles_and_few_different_ones) {
  constexpr int steps = 100;
  std::map<std::string, int> profiles;
  std::vector<std::vector<weights>> plane(steps + 1);
  for (int y = 0; y <= steps; ++y) {
    for (int x = 0; x <= steps; ++x) {
      const auto track = at_point(static_cast<float>(x) / steps, static_cast<float>(y) / steps);
      const zdo_ptr made(output_of(zvsdk_manager_zdo_from_track, &track, nullptr));
      const std::string profile = value(made, "_sdkmgr_val_list_mood_data");
      ++profiles[profile];
      plane[y].push_back(parts_of(profile));
      EXPECT_GE(shared(plane[y][x], plane[y][std::max(x - 1, 0)]), 40) << profile;
      EXPECT_GE(shared(plane[y][x], plane[std::max(y - 1, 0)][x]), 40) << profile;
      EXPECT_TRUE(x < 50 || shared(plane[y][x], plane[y][x - 50]) == 0) << profile;
    }
  }
  EXPECT_TRUE(profiles.size() > 1300 && profiles.size() <= 51 * 51) << profiles.size();
}

}  // namespace
