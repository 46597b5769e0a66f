// Generation of the benchmark library: names from syllables, popularity by rank.
#include "generated_library.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <random>
#include <unordered_set>

const std::vector<generated_genre> generated_genres = {{0, "Album Rock"},
                                                       {0, "Classic Rock"},
                                                       {0, "Hard Rock"},
                                                       {0, "Indie Rock"},
                                                       {0, "Alternative Rock"},
                                                       {1, "Dance Pop"},
                                                       {1, "Teen Pop"},
                                                       {1, "Indie Pop"},
                                                       {2, "Trap"},
                                                       {2, "Gangster Rap"},
                                                       {2, "Southern Hip Hop"},
                                                       {3, "House"},
                                                       {3, "Techno"},
                                                       {3, "Trance"},
                                                       {3, "Big Room"},
                                                       {4, "Bebop"},
                                                       {4, "Swing"},
                                                       {4, "Jazz Fusion"},
                                                       {5, "Neo Soul"},
                                                       {5, "New Jack Swing"},
                                                       {6, "Baroque"},
                                                       {7, "Bluegrass"},
                                                       {8, "Reggaeton"},
                                                       {9, "Thrash Metal"}};
const std::vector<const char*> generated_countries = {
    "US", "GB", "DE", "FR", "SE", "JP", "BR", "CA", "NG", "IT", "ES", "AU", "KR", "JM", "MX", "PL"};

namespace {

using generator = std::mt19937_64;

float unit(generator& random) {
  return static_cast<float>(random() % 1001) / 1000;
}

uint32_t below(generator& random, uint32_t bound) {
  return static_cast<uint32_t>(random() % bound);
}

std::string make_word(generator& random) {
  static constexpr const char* syllables[] = {"ba",  "den", "fir", "gal", "hem", "iro", "jun",
                                              "kel", "lan", "mar", "nov", "os",  "pra", "ril",
                                              "san", "tuv", "ul",  "ves", "wen", "yar"};
  std::string word;
  for (uint32_t left = 2 + below(random, 2); left > 0; --left)
    word += syllables[below(random, std::size(syllables))];
  word[0] = static_cast<char>(word[0] - 'a' + 'A');
  return word;
}

std::vector<std::string> make_distinct_names(generator& random, uint32_t count) {
  std::unordered_set<std::string> taken;
  std::vector<std::string> names;
  while (names.size() < count) {
    std::string name = make_word(random) + " " + make_word(random);
    if (below(random, 3) == 0) name += " " + make_word(random);
    if (taken.insert(name).second) names.push_back(std::move(name));
  }
  return names;
}

// Draws ranks whose frequency falls with one over the rank.
class zipf_ranks {
 public:
  explicit zipf_ranks(uint32_t count) {
    double sum = 0;
    for (uint32_t rank = 1; rank <= count; ++rank) cumulative_.push_back(sum += 1.0 / rank);
  }
  uint32_t draw(generator& random) const {
    std::uniform_real_distribution<double> place(0, cumulative_.back());
    auto found = std::lower_bound(cumulative_.begin(), cumulative_.end(), place(random));
    return static_cast<uint32_t>(found - cumulative_.begin());
  }

 private:
  std::vector<double> cumulative_;
};

generated_library make(uint32_t count) {
  generator random(20240917);
  generated_library made;
  made.artists = make_distinct_names(random, std::max(1u, count / 20));
  made.albums = make_distinct_names(random, std::max(1u, count / 12));
  const zipf_ranks popularity(static_cast<uint32_t>(made.artists.size()));
  uint32_t artist = 0;
  uint32_t genre = 0;
  for (uint32_t i = 0; i < count; ++i) {
    const uint32_t album =
        std::min<uint32_t>(i / 12, static_cast<uint32_t>(made.albums.size()) - 1);
    if (i % 12 == 0) {
      artist = popularity.draw(random);
      genre = below(random, static_cast<uint32_t>(generated_genres.size()));
    }
    char ident[24];
    std::snprintf(ident, sizeof ident, "%016llx", static_cast<unsigned long long>(random()));
    made.tracks.push_back({.ident = ident,
                           .title = make_word(random) + " " + make_word(random),
                           .artist = artist,
                           .album = album,
                           .tempo = 60 + below(random, 141),
                           .year = 1950 + below(random, 76),
                           .genre = genre,
                           .country = artist % static_cast<uint32_t>(generated_countries.size()),
                           .valence = unit(random),
                           .energy = unit(random)});
  }
  return made;
}

}  // namespace

const generated_library& generated_library_of(uint32_t tracks) {
  static std::map<uint32_t, generated_library> made;
  auto found = made.find(tracks);
  if (found == made.end()) found = made.emplace(tracks, make(tracks)).first;
  return found->second;
}

std::string with_popular_artist(const std::string& statement, const generated_library& library) {
  const size_t at = statement.find('@');
  if (at == std::string::npos) return statement;
  return std::string(statement).replace(at, 1, library.artists.front());
}
