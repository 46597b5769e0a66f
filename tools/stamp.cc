// Hashes a track field by field.
#include "tools/stamp.h"

#include <bit>

namespace zvplaylist {

uint64_t stamp_of_values(const track& entry) {
  stamp_maker maker;
  maker.add(entry.location).add(entry.title).add(entry.album);
  maker.add(entry.year).add(entry.tempo).add(entry.seconds);
  maker.add(entry.artists.size());
  for (const std::string& artist : entry.artists) maker.add(artist);
  for (const term& each : entry.terms) maker.add(static_cast<uint64_t>(each.source)).add(each.text);
  for (const std::optional<float>& share : {entry.valence, entry.energy})
    maker.add(std::bit_cast<uint32_t>(share.value_or(-1)));
  return maker.stamp();
}

}  // namespace zvplaylist
