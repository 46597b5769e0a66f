// Turns the values of attributes into fields.
#include "tools/stored_track.h"

#include <charconv>

#include "tools/details.h"

namespace zvplaylist {
namespace {

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
