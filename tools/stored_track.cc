// Fields to properties, and values of attributes to fields.
#include "tools/stored_track.h"

#include <charconv>

#include "tools/details.h"

namespace zvplaylist {
namespace {

const char* or_null(const std::string& text) {
  return text.empty() ? nullptr : text.c_str();
}

uint32_t number_of(const std::string& text) {
  uint32_t number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

// The text, or what is stored where no list has one.
std::string name_of(const attribute_values& values) {
  return values.texts.empty() ? values.id : values.texts.front();
}

template <field source>
void take_term(track& entry, const attribute_values& values) {
  if (const std::string name = name_of(values); !name.empty())
    entry.terms.push_back({source, name});
}

void take_era(track& entry, const attribute_values& values) {
  if (name_of(values) == values.id)
    entry.year = number_of(values.id);
  else
    take_term<field::era>(entry, values);
}

struct attribute_use {
  std::string_view attribute;
  void (*take)(track& entry, const attribute_values& values);
};
constexpr attribute_use attribute_uses[] = {
    {"ZV_TrackName", [](track& entry, const attribute_values& all) { entry.title = name_of(all); }},
    {"ZV_ArtistName", [](track& entry, const attribute_values& all) { entry.artists = all.texts; }},
    {"ZV_AlbumName", [](track& entry, const attribute_values& all) { entry.album = name_of(all); }},
    {"ZV_Genre", take_term<field::genre>},
    {"ZV_Mood", take_term<field::mood>},
    {"ZV_Origin", take_term<field::origin>},
    {"ZV_Era", take_era},
    {"ZV_ArtistType", take_term<field::artist_type>},
    {"ZV_Tempo",
     [](track& entry, const attribute_values& all) { entry.tempo = number_of(all.id); }}};

}  // namespace

unique_zdo object_of(const track& entry, const chosen_terms& terms) {
  std::vector<const char*> artists;
  for (const std::string& artist : entry.artists) artists.push_back(artist.c_str());
  const bool has_point = entry.valence && entry.energy;
  const zvsdk_track_description description{.size = sizeof description,
                                            .ident = entry.ident.c_str(),
                                            .title = or_null(entry.title),
                                            .artists = artists.data(),
                                            .artist_count = static_cast<uint32_t>(artists.size()),
                                            .album = or_null(entry.album),
                                            .year = entry.year,
                                            .genre = or_null(terms.genre),
                                            .tempo = entry.tempo,
                                            .mood = or_null(terms.mood),
                                            .origin = or_null(terms.origin),
                                            .artist_type = or_null(terms.artist_type),
                                            .era = or_null(terms.era),
                                            .has_mood_point = has_point,
                                            .valence = entry.valence.value_or(0),
                                            .energy = entry.energy.value_or(0)};
  zvsdk_zdo* object = nullptr;
  check(zvsdk_manager_zdo_from_track(&description, nullptr, &object), "describing a track");
  unique_zdo owner(object);
  add_details(object, entry);
  return owner;
}

track track_of_media(const std::string& ident, const std::vector<attribute_values>& media) {
  track entry{.ident = ident, .location = ident, .title = {}, .artists = {}, .album = {}};
  for (const attribute_values& each : media) {
    for (const attribute_use& use : attribute_uses)
      if (use.attribute == each.attribute) use.take(entry, each);
    if (!each.texts.empty()) take_detail(entry, each.attribute, each.texts.front());
  }
  return entry;
}

}  // namespace zvplaylist
