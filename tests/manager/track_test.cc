// What a track description says in names, ids, profiles and points, and what becomes of it.

#include <cmath>
#include <map>
#include <optional>
#include <set>

#include "tests/manager/data_folder.h"
#include "tests/manager/zdo_fixture.h"

namespace {

constexpr char s_mood[] = "_sdkmgr_val_list_mood_data";
constexpr uint32_t s_all_unknown = ZVSDK_TRACK_UNKNOWN_GENRE | ZVSDK_TRACK_UNKNOWN_MOOD |
                                   ZVSDK_TRACK_UNKNOWN_ERA | ZVSDK_TRACK_UNKNOWN_ORIGIN |
                                   ZVSDK_TRACK_UNKNOWN_ARTIST_TYPE;

struct point {
  float valence, energy;
};

struct description {
  const char *genre = nullptr, *mood = nullptr, *era = nullptr, *origin = nullptr, *type = nullptr;
  std::optional<point> at = {};

  zvsdk_track_description record() const {
    zvsdk_track_description track = {};
    track.size = sizeof track;
    track.genre = genre;
    track.mood = mood;
    track.era = era;
    track.origin = origin;
    track.artist_type = type;
    track.has_mood_point = at.has_value();
    if (at) track.valence = at->valence, track.energy = at->energy;
    return track;
  }
};

zdo_ptr make_track(const description& given, uint32_t unknown = 0) {
  const zvsdk_track_description track = given.record();
  uint32_t found = 99;
  zdo_ptr object(output_of(zvsdk_manager_zdo_from_track, &track, &found));
  EXPECT_EQ(unknown, found);
  return object;
}

/* Refused with "bad data" and a message that contains the text. */
void expect_refusal(const description& given, uint32_t* unknown, const std::string& message) {
  const zvsdk_track_description track = given.record();
  zvsdk_zdo* made = nullptr;
  EXPECT_EQ(0x9008000Cu, zvsdk_manager_zdo_from_track(&track, unknown, &made)) << message;
  EXPECT_EQ(nullptr, made);
  EXPECT_NE(std::string::npos, std::string(last_error().message).find(message))
      << last_error().message;
}

/* Genre, mood, profile, era, origin and artist type where the attributes look for them. */
std::string ids_of(object_reader& reader, const zdo_ptr& track) {
  const std::string contributor = "zvsdk_ctx_artist!/zvsdk_ctx_contributor!/";
  std::string all;
  for (const std::string& path :
       {std::string("_sdkmgr_val_list_genre_id"), std::string("_sdkmgr_val_list_mood_id"),
        std::string(s_mood), contributor + "_sdkmgr_val_list_era_id",
        contributor + "_sdkmgr_val_list_origin_id",
        contributor + "_sdkmgr_val_list_artist_type_id"}) {
    const std::string found = reader.value(track, path);
    all += (all.empty() ? "" : " ") + (found == "(none)" ? "-" : found);
  }
  return all;
}

std::string list(const std::string& type, const std::string& elements) {
  return R"({"list_type": "zvsdk_list_type_)" + type + R"(", "languages": ["eng", "ger"],
             "elements": [)" +
         elements + "]}";
}

/* Short lists in place of the built-in ones. */
class own_lists : public data_folder {
 public:
  own_lists() {
    write("genres.json", list("genres", R"({"id": 7, "text": {"eng": "Rock", "ger": "Felsen"},
      "also": ["rawk"], "children": [{"id": 71, "text": "Glam"}]})"));
    write("moods.json", list("moods", R"({"id": 1, "text": "Any", "plane": [0.5, 0.5], "children": [
      {"id": 11, "text": "Low", "plane": [0, 0]}, {"id": 12, "text": "Mid", "plane": [0.5, 0.5]},
      {"id": 13, "text": "Top", "plane": [1, 1]}]})"));
    write("eras.json", list("eras", R"({"id": 5001, "text": "The Eighties", "also": ["1980s"]})"));
    write("origins.json", list("origins", R"({"id": 49, "text": "Germany", "also": ["DE"]})"));
    write("artist_types.json", list("artist_types", R"({"id": 3, "text": "Duo"})"));
  }
};

TEST(track_test, names_ids_profiles_and_points_become_what_the_attributes_read) {
  const own_lists data;
  const running_host host(data.path().c_str());
  object_reader reader{host.objects};
  expect_refusal({"Rock"}, nullptr, "genre \"Rock\": a name needs a locale");
  make_track({"Rock", nullptr, "1980s"}, ZVSDK_TRACK_UNKNOWN_GENRE | ZVSDK_TRACK_UNKNOWN_ERA);
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  const struct {
    description given;
    const char* expected;
  } known[] = {
      {{}, "- - - - - -"},
      {{"rock", "top", "the eighties", "Germany", "DUO"}, "7 13 - 5001 49 3"},
      {{"Rawk", "", "1980s", "de", ""}, "7 - - 5001 49 -"},
      {{"0071", "4294", "1985", "1", "9"}, "71 4294 - 1985 1 9"},
      {{"Glam", "12:30,11:70"}, "71 11 11:70,12:30 - - -"},
      {{nullptr, "8:20,9:20,10:20"}, "- 8 8:20,9:20,10:20 - - -"},
      {{.at = point{0.5, 0.5}}, "- 12 12:98,11:1,13:1 - - -"},
      {{.at = point{0.505F, 0.495F}}, "- 12 12:98,11:1,13:1 - - -"},
      {{.at = point{1, 1}}, "- 13 13:98,12:1,11:1 - - -"},
      {{.mood = "Low", .at = point{1, 1}}, "- 11 13:98,12:1,11:1 - - -"},
      {{.mood = "5:100", .at = point{1, 1}}, "- 5 5:100 - - -"},
  };
  for (const auto& each : known) EXPECT_EQ(each.expected, ids_of(reader, make_track(each.given)));
  // The playlist group goes before the music group, and then only its language counts.
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "ger", nullptr, nullptr));
  EXPECT_EQ("7 - - - - -", ids_of(reader, make_track({"Felsen"})));
  make_track({"Rock"}, ZVSDK_TRACK_UNKNOWN_GENRE);
}

TEST(track_test, unknown_names_are_reported_and_malformed_values_refused) {
  const own_lists data;
  data.write("moods.json", list("moods", R"({"id": 1, "text": "Any", "plane": [0, 0]})"));
  const running_host host(data.path().c_str());
  object_reader reader{host.objects};
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  const struct {
    description given;
    uint32_t unknown;
    const char *expected, *message;
  } cases[] = {
      {{"Polka", "x", "x", "x", "x"},
       s_all_unknown,
       "- - - - - -",
       "genre \"Polka\": the list has"},
      {{"Rock", nullptr, nullptr, "Atlantis"}, ZVSDK_TRACK_UNKNOWN_ORIGIN, "7 - - - - -", "origin"},
      {{nullptr, nullptr, "0"}, ZVSDK_TRACK_UNKNOWN_ERA, "- - - - - -", "era \"0\": ids"},
      {{"2147483647"}, ZVSDK_TRACK_UNKNOWN_GENRE, "- - - - - -", "genre"},
      {{"99999999999999999999"}, ZVSDK_TRACK_UNKNOWN_GENRE, "- - - - - -", "genre"},
      {{nullptr, "1:2x"}, ZVSDK_TRACK_UNKNOWN_MOOD, "- - - - - -", "mood \"1:2x\""},
      {{.at = point{0, 0}}, ZVSDK_TRACK_UNKNOWN_MOOD, "- - - - - -", "no mood of the list"},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(each.expected, ids_of(reader, make_track(each.given, each.unknown)));
    expect_refusal(each.given, nullptr, each.message);
  }
  std::string crowd = "1:1";
  for (int i = 0; i < 64; ++i) crowd += ",1:1";
  uint32_t unknown = 0;
  for (const char* profile : {"1:", ":1", "1:0", "0:1", "1:101", "1:2,", ",1:2", "1:2,,3:4",
                              "1:2:3", "1: 2", "2147483647:1", "4294967297:1", crowd.c_str()}) {
    expect_refusal({nullptr, profile}, &unknown, "a profile is");
  }
  for (const point& bad : {point{NAN, 0}, point{0, NAN}, point{-0.01F, 0}, point{0, 1.01F},
                           point{INFINITY, 0}, point{0, -INFINITY}}) {
    expect_refusal({.at = bad}, &unknown, "valence and energy");
  }
}

using weights = std::map<uint32_t, int>;

/* Checks what every profile of a point has to be. */
weights parse_checked(const std::string& profile) {
  weights parts;
  int sum = 0, last = 100;
  for (size_t at = 0; at < profile.size(); at = profile.find_first_not_of("0123456789:", at) + 1) {
    unsigned id = 0;
    int weight = 0;
    EXPECT_EQ(2, std::sscanf(profile.c_str() + at, "%u:%d", &id, &weight)) << profile;
    EXPECT_TRUE(weight >= 1 && weight <= last) << profile;
    EXPECT_TRUE(parts.emplace(id, weight).second) << profile;
    sum += last = weight;
    if (profile.find(',', at) == std::string::npos) break;
  }
  EXPECT_EQ(100, sum) << profile;
  EXPECT_EQ(5u, parts.size()) << profile;
  return parts;
}

int shared(const weights& a, const weights& b) {
  int sum = 0;
  for (const auto& [id, weight] : a) sum += b.contains(id) ? std::min(weight, b.at(id)) : 0;
  return sum;
}

/* Over the built-in moods and the whole plane. */
TEST_F(zdo_test, near_points_have_near_profiles) {
  constexpr int steps = 50;
  std::set<std::string> texts_seen;
  std::vector<weights> rows[2];
  for (int energy = 0; energy <= 2 * steps; ++energy) {
    std::vector<weights>& row = rows[energy % 2];
    row.clear();
    for (int valence = 0; valence <= 2 * steps; ++valence) {
      const point at{valence / (2.0F * steps), energy / (2.0F * steps)};
      const std::string profile = value(make_track({.at = at}), s_mood);
      texts_seen.insert(profile);
      row.push_back(parse_checked(profile));
      const weights& here = row.back();
      const weights& left = row[valence > 0 ? valence - 1 : 0];
      const weights& below = rows[energy > 0 ? (energy + 1) % 2 : 0][valence];
      EXPECT_GE(shared(here, left), 40) << profile;
      EXPECT_GE(shared(here, below), 40) << profile;
      EXPECT_TRUE(valence < steps || shared(here, row[valence - steps]) == 0) << profile;
    }
  }
  EXPECT_LE(texts_seen.size(), size_t{(steps + 1) * (steps + 1)});
  EXPECT_GT(texts_seen.size(), size_t{steps * steps / 2});
}

}  // namespace
