// A generated library of music for the benchmarks: the same tracks for the same count, on every
// machine. Artists are as popular as a Zipf law makes them, albums hold a dozen tracks, tempos run
// evenly from 60 to 200. Shared by the benchmarks of this library and of the SQLite baseline.
#pragma once

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
};

struct generated_library {
  std::vector<std::string> artists;
  std::vector<std::string> albums;
  std::vector<generated_track> tracks;
};

// Made once per count and kept for the life of the program.
const generated_library& generated_library_of(uint32_t tracks);

// A statement with `@` replaced by the name of the library's most popular artist.
std::string with_popular_artist(const std::string& statement, const generated_library& library);
