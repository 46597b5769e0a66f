// From the names, ids, profiles and points of a track description to list ids and a profile.

#include "manager/track_properties.h"

#include <cstring>

namespace manager {
namespace {

/* In the order of track_property. */
constexpr struct {
  const char* field;
  const char* list_type;
  const char* zvsdk_track_description::*text;
  uint32_t unknown;
} s_properties[track_property_count] = {
    {"genre", "zvsdk_list_type_genres", &zvsdk_track_description::genre, ZVSDK_TRACK_UNKNOWN_GENRE},
    {"mood", "zvsdk_list_type_moods", &zvsdk_track_description::mood, ZVSDK_TRACK_UNKNOWN_MOOD},
    {"era", "zvsdk_list_type_eras", &zvsdk_track_description::era, ZVSDK_TRACK_UNKNOWN_ERA},
    {"origin", "zvsdk_list_type_origins", &zvsdk_track_description::origin,
     ZVSDK_TRACK_UNKNOWN_ORIGIN},
    {"artist_type", "zvsdk_list_type_artist_types", &zvsdk_track_description::artist_type,
     ZVSDK_TRACK_UNKNOWN_ARTIST_TYPE},
};

constexpr auto& row(track_property which) {
  return s_properties[static_cast<size_t>(which)];
}

bool is_number(const char* text) {
  return text[std::strspn(text, "0123456789")] == '\0';
}

/* 0 when it is no id. */
uint32_t parse_id(const char* digits) {
  uint32_t id = 0;
  const auto result = std::from_chars(digits, digits + std::strlen(digits), id);
  return result.ec == std::errc() && id <= largest_id ? id : 0;
}

[[noreturn]] void refuse(track_property which, const std::string& text, const char* why) {
  throw status_error(error_bad_data, std::string(row(which).field) + " " + text + ": " + why);
}

std::string quoted(const char* text) {
  return '"' + std::string(text) + '"';
}

bool lies_on_plane(float coordinate) {
  return coordinate >= 0 && coordinate <= 1;  // which no NaN is
}

}  // namespace

track_properties::track_properties(host& h, const zvsdk_track_description& track, uint32_t* unknown)
    : host_(h), unknown_(unknown) {
  if (unknown_ != nullptr) *unknown_ = 0;
  for (const track_property each : {track_property::genre, track_property::era,
                                    track_property::origin, track_property::artist_type}) {
    read_id(each, track.*row(each).text);
  }
  read_mood(track);
  if (track.has_mood_point != 0) read_mood_point(track);
  if (*mood_profile_ == '\0' && given(track.mood) && !is_number(track.mood)) stand_for_itself();
}

/* A named mood is a profile of that mood alone, so that it can be compared with a profile. */
void track_properties::stand_for_itself() {
  if (id(track_property::mood) == 0) return;
  own_profile_ = decimal(id(track_property::mood)).c_str() + std::string(":100");
  mood_profile_ = own_profile_.c_str();
}

void track_properties::read_mood(const zvsdk_track_description& track) {
  if (!given(track.mood) || !looks_like_profile(track.mood)) {
    return read_id(track_property::mood, track.mood);
  }
  auto profile = parse_profile(track.mood);
  if (!profile) {
    refuse(track_property::mood, quoted(track.mood),
           "a profile is 1 to 64 pairs ID:WEIGHT with commas between, weights from 1 to 100");
  }
  own_profile_ = std::move(profile->text);
  mood_profile_ = own_profile_.c_str();
  id(track_property::mood) = profile->heaviest;
}

void track_properties::read_mood_point(const zvsdk_track_description& track) {
  const auto spelled = [&] {
    return std::to_string(track.valence) + ", " + std::to_string(track.energy);
  };
  if (!lies_on_plane(track.valence) || !lies_on_plane(track.energy)) {
    refuse(track_property::mood, spelled(), "valence and energy lie from 0 to 1");
  }
  if (*mood_profile_ != '\0') return;
  const auto* profile = host_.moods.at(track.valence, track.energy);
  if (profile == nullptr) {
    return note_unknown(track_property::mood, spelled(), "no mood of the list has a point");
  }
  mood_profile_ = profile->text.c_str();
  if (id(track_property::mood) == 0) id(track_property::mood) = profile->heaviest;
}

void track_properties::read_id(track_property which, const char* text) {
  if (!given(text)) return;
  if (!is_number(text)) return read_name(which, text);
  id(which) = parse_id(text);
  if (id(which) == 0) note_unknown(which, quoted(text), "ids lie from 1 to 2147483646");
}

void track_properties::read_name(track_property which, const char* name) {
  if (language().empty()) return note_unknown(which, quoted(name), "a name needs a locale");
  const localized_list* list = host_.all_lists.lookup(row(which).list_type, language());
  if (list == nullptr) return note_unknown(which, quoted(name), "no list has it in this language");
  id(which) = list->id_by_text(name);
  if (id(which) == 0) note_unknown(which, quoted(name), "the list has no such name");
}

void track_properties::note_unknown(track_property which, const std::string& text,
                                    const char* why) {
  if (unknown_ == nullptr) refuse(which, text, why);
  *unknown_ |= row(which).unknown;
}

/* Of the playlist group or, where that has no locale, of the music group; else "". */
const std::string& track_properties::language() {
  for (const char* group : {ZVSDK_LOCALE_PLAYLIST, ZVSDK_LOCALE_MUSIC}) {
    if (has_language_) break;
    locale_slot* locale = host_.all_locales.get_default(group);
    if (locale == nullptr) continue;
    language_ = locale->language;
    has_language_ = true;
    host_.all_locales.release(locale);
  }
  return language_;
}

}  // namespace manager
