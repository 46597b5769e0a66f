// The data object of a generated track, for the benchmarks of the library.
#ifndef GENERATED_OBJECT_H
#define GENERATED_OBJECT_H

#include "generated_library.h"
#include "library_session.h"

// With everything that the library generates; the caller releases it.
inline zvsdk_zdo* make_object(const generated_library& library, const generated_track& track) {
  const char* artist = library.artists[track.artist].c_str();
  zvsdk_track_description description = {};
  description.size = sizeof description;
  description.ident = track.ident.c_str();
  description.title = track.title.c_str();
  description.artists = &artist;
  description.artist_count = 1;
  description.album = library.albums[track.album].c_str();
  description.year = track.year;
  description.tempo = track.tempo;
  description.genre = generated_genres[track.genre].name;
  description.origin = generated_countries[track.country];
  description.has_mood_point = 1;
  description.valence = track.valence;
  description.energy = track.energy;
  zvsdk_zdo* object = nullptr;
  must(zvsdk_manager_zdo_from_track(&description, nullptr, &object), "object");
  return object;
}

#endif
