// A generated library of music for the benchmarks: the same tracks for the same count, on every
// machine. Artists are as popular as a Zipf law makes them and keep to one country and, for an
// album, to one genre, albums hold a dozen tracks, tempos run evenly from 60 to 200, moods over the
// whole plane. Shared by the benchmarks of this library and of the SQLite baseline.
#ifndef GENERATED_LIBRARY_H
#define GENERATED_LIBRARY_H

#include <cstdint>
#include <string>
#include <vector>

struct generated_track {
  std::string ident;
  std::string title;
  uint32_t artist;  // index into artists
  uint32_t album;   // index into albums
  uint32_t tempo;   // beats a minute
  uint32_t year;
  uint32_t genre;    // index into generated_genres
  uint32_t country;  // of the artist, index into generated_countries
  float valence;     // 0 to 1
  float energy;      // 0 to 1
};

struct generated_genre {
  uint32_t root;  // genres of one root have one number
  const char* name;
};

// Names that the musical data know; `Rock` is root 0.
extern const std::vector<generated_genre> generated_genres;
extern const std::vector<const char*> generated_countries;

struct generated_library {
  std::vector<std::string> artists;
  std::vector<std::string> albums;
  std::vector<generated_track> tracks;
};

// Made once per count and kept for the life of the program.
const generated_library& generated_library_of(uint32_t tracks);

// A statement with `@` replaced by the name of the library's most popular artist.
std::string with_popular_artist(const std::string& statement, const generated_library& library);

#endif
