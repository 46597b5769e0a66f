// How good More-Like-This is, on a catalog of real tracks. For several hundred seeds it makes a
// list and measures what a listener would notice: how much of the list has the seed's subgenre and
// genre, how far tempo and valence are from the seed's, how many artists there are. Random and
// nearest-neighbour lists of the same size and limits stand beside it.
//
//     measure_morelikethis tracks.csv [STATEMENT]
//
// The catalog's columns: id, title, artist, album, release date, genre, subgenre, energy, valence,
// tempo. A STATEMENT with SEED in it is measured in the place of More-Like-This.
#include <csv.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "library_session.h"

namespace {

constexpr size_t seeds_measured = 300;
constexpr size_t list_size = 25;
constexpr size_t per_artist = 2;
constexpr size_t per_album = 1;

struct track {
  std::string ident, title, artist, album, genre, subgenre;
  uint32_t year = 0;
  float energy = 0, valence = 0, tempo = 0;
};

using catalog = std::vector<track>;
using picks = std::vector<size_t>;  // indexes into the catalog

// ---- Reading ----------------------------------------------------------------------------------

struct csv_rows {
  std::vector<std::vector<std::string>> rows{1};
  static void on_field(void* text, size_t size, void* self) {
    static_cast<csv_rows*>(self)->rows.back().emplace_back(static_cast<const char*>(text), size);
  }
  static void on_row(int, void* self) { static_cast<csv_rows*>(self)->rows.emplace_back(); }
};

catalog read_catalog(const char* path) {
  std::ifstream file(path, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  csv_rows read;
  csv_parser parser;
  csv_init(&parser, 0);
  csv_parse(&parser, text.data(), text.size(), csv_rows::on_field, csv_rows::on_row, &read);
  csv_fini(&parser, csv_rows::on_field, csv_rows::on_row, &read);
  csv_free(&parser);
  catalog tracks;
  for (size_t i = 1; i < read.rows.size(); ++i) {
    const auto& row = read.rows[i];
    if (row.size() < 10) continue;
    tracks.push_back({.ident = row[0],
                      .title = row[1],
                      .artist = row[2],
                      .album = row[3],
                      .genre = row[5],
                      .subgenre = row[6],
                      .year = static_cast<uint32_t>(std::atoi(row[4].c_str())),
                      .energy = std::strtof(row[7].c_str(), nullptr),
                      .valence = std::strtof(row[8].c_str(), nullptr),
                      .tempo = std::strtof(row[9].c_str(), nullptr)});
  }
  return tracks;
}

// What a seed tells of its track.
enum : unsigned {
  tells_genre = 1,
  tells_mood = 2,
  tells_tempo = 4,
  tells_year = 8,
  tells_artist = 16
};
constexpr unsigned tells_all = 31;

zvsdk_zdo* make_object(const track& each, unsigned told) {
  const char* artist = each.artist.c_str();
  zvsdk_track_description description = {};
  description.size = sizeof description;
  description.ident = each.ident.c_str();
  if (told & tells_artist) {
    description.title = each.title.c_str();
    description.artists = &artist;
    description.artist_count = 1;
    description.album = each.album.c_str();
  }
  if (told & tells_year) description.year = each.year;
  if (told & tells_genre) description.genre = each.subgenre.c_str();
  if (told & tells_tempo) description.tempo = static_cast<uint32_t>(std::lround(each.tempo));
  description.has_mood_point = (told & tells_mood) != 0;
  description.valence = each.valence;
  description.energy = each.energy;
  zvsdk_zdo* object = nullptr;
  must(zvsdk_manager_zdo_from_track(&description, nullptr, &object), each.ident.c_str());
  return object;
}

playlist_collection* collect(const catalog& tracks) {
  playlist_collection* collection = make_collection();
  must(zvsdk_playlist_morelikethis_option_set(collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7"), "7");
  for (const track& each : tracks) {
    zvsdk_zdo* object = make_object(each, tells_all);
    must(zvsdk_playlist_collection_add_zdo(collection, each.ident.c_str(), object), "add");
    zvsdk_manager_zdo_release(object);
  }
  return collection;
}

// ---- Lists ------------------------------------------------------------------------------------

// The first tracks of an order that keep the limits, the seed itself left out.
picks within_limits(const catalog& tracks, size_t seed, const picks& order) {
  std::map<std::string, size_t> artists, albums;
  picks list;
  for (size_t i : order) {
    if (i == seed || list.size() == list_size) continue;
    if (artists[tracks[i].artist] >= per_artist || albums[tracks[i].album] >= per_album) continue;
    ++artists[tracks[i].artist];
    ++albums[tracks[i].album];
    list.push_back(i);
  }
  return list;
}

picks everything(const catalog& tracks) {
  picks all(tracks.size());
  std::iota(all.begin(), all.end(), size_t{0});
  return all;
}

picks random_list(const catalog& tracks, size_t seed, std::mt19937& chance) {
  picks order = everything(tracks);
  std::shuffle(order.begin(), order.end(), chance);
  return within_limits(tracks, seed, order);
}

picks random_of_subgenre(const catalog& tracks, size_t seed, std::mt19937& chance) {
  picks order = everything(tracks);
  std::erase_if(order, [&](size_t i) { return tracks[i].subgenre != tracks[seed].subgenre; });
  std::shuffle(order.begin(), order.end(), chance);
  return within_limits(tracks, seed, order);
}

// By energy, valence and tempo, each scaled to its range.
picks nearest_neighbours(const catalog& tracks, size_t seed) {
  const track& from = tracks[seed];
  const auto distance = [&](size_t i) {
    return std::hypot(tracks[i].energy - from.energy, tracks[i].valence - from.valence,
                      (tracks[i].tempo - from.tempo) / 150);
  };
  picks order = everything(tracks);
  std::sort(order.begin(), order.end(),
            [&](size_t a, size_t b) { return distance(a) < distance(b); });
  return within_limits(tracks, seed, order);
}

class listener {
 public:
  listener(const catalog& tracks, const char* statement)
      : collection_(collect(tracks)), statement_(statement) {
    must(zvsdk_manager_user_create("bench", &user_), "user");
    for (size_t i = 0; i < tracks.size(); ++i) index_[tracks[i].ident] = i;
  }

  // A seed that tells everything is read from the collection, another one is made.
  picks list_like(const track& seed, unsigned told) {
    zvsdk_zdo* object = nullptr;
    if (told == tells_all)
      must(zvsdk_playlist_collection_get_zdo(collection_, user_, seed.ident.c_str(), &object),
           "seed");
    else
      object = make_object(seed, told);
    playlist_results* results = nullptr;
    must(statement_ == nullptr
             ? zvsdk_playlist_generate_morelikethis(user_, collection_, object, &results)
             : zvsdk_playlist_generate_playlist(user_, statement_, collection_, object, &results),
         "list");
    picks list;
    const char* ident = nullptr;
    for (uint32_t i = 0; zvsdk_playlist_results_enum(results, i, &ident, nullptr) == 0; ++i)
      if (index_.at(ident) != index_.at(seed.ident)) list.push_back(index_.at(ident));
    zvsdk_playlist_results_release(results);
    zvsdk_manager_zdo_release(object);
    return list;
  }

 private:
  playlist_collection* collection_;
  const char* statement_;
  zvsdk_user* user_ = nullptr;
  std::map<std::string, size_t> index_;
};

// ---- Measuring --------------------------------------------------------------------------------

struct measures {
  double subgenre = 0, genre = 0, tempo = 0, valence = 0, artists = 0, size = 0;
};

measures measure(const catalog& tracks, size_t seed, const picks& list) {
  const track& from = tracks[seed];
  measures of_list;
  if (list.empty()) return of_list;
  std::set<std::string> artists;
  for (size_t i : list) {
    of_list.subgenre += tracks[i].subgenre == from.subgenre;
    of_list.genre += tracks[i].genre == from.genre;
    of_list.tempo += std::abs(tracks[i].tempo - from.tempo);
    of_list.valence += std::abs(tracks[i].valence - from.valence);
    artists.insert(tracks[i].artist);
  }
  const auto size = static_cast<double>(list.size());
  return {of_list.subgenre / size,
          of_list.genre / size,
          of_list.tempo / size,
          of_list.valence / size,
          static_cast<double>(artists.size()),
          size};
}

// Prints the mean over all seeds as a row of a table.
void report(const char* name, const catalog& tracks, const picks& seeds,
            const std::function<picks(size_t)>& make_list) {
  measures sum;
  double shortest = list_size;
  for (size_t seed : seeds) {
    const measures one = measure(tracks, seed, make_list(seed));
    sum.subgenre += one.subgenre;
    sum.genre += one.genre;
    sum.tempo += one.tempo;
    sum.valence += one.valence;
    sum.artists += one.artists;
    sum.size += one.size;
    shortest = std::min(shortest, one.size);
  }
  const auto n = static_cast<double>(seeds.size());
  std::printf("| %s | %.2f | %.2f | %.1f | %.3f | %.1f | %.1f | %.0f |\n", name, sum.subgenre / n,
              sum.genre / n, sum.tempo / n, sum.valence / n, sum.artists / n, sum.size / n,
              shortest);
}

struct partial_seed {
  const char* name;
  unsigned told;
};

constexpr partial_seed s_partial_seeds[] = {
    {"seed without mood", tells_all & ~tells_mood},
    {"seed without tempo", tells_all & ~tells_tempo},
    {"seed without genre", tells_all & ~tells_genre},
    {"seed with a genre only", tells_genre},
    {"seed with a mood only", tells_mood},
    {"seed with a tempo only", tells_tempo},
    {"seed with a year only", tells_year},
    {"seed with names only", tells_artist},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: measure_morelikethis tracks.csv [STATEMENT]\n");
    return 2;
  }
  const catalog tracks = read_catalog(argv[1]);
  if (tracks.empty()) {
    std::fprintf(stderr, "%s: no tracks\n", argv[1]);
    return 1;
  }
  listener ears(tracks, argc > 2 ? argv[2] : nullptr);
  std::mt19937 chance(1);
  picks seeds = everything(tracks);
  std::shuffle(seeds.begin(), seeds.end(), chance);
  seeds.resize(std::min(seeds.size(), seeds_measured));

  std::printf("| list | subgenre | genre | tempo | valence | artists | size | shortest |\n");
  std::printf("|---|---|---|---|---|---|---|---|\n");
  report("random", tracks, seeds, [&](size_t seed) { return random_list(tracks, seed, chance); });
  report("nearest neighbours", tracks, seeds,
         [&](size_t seed) { return nearest_neighbours(tracks, seed); });
  report("random of the subgenre", tracks, seeds,
         [&](size_t seed) { return random_of_subgenre(tracks, seed, chance); });
  report("More-Like-This", tracks, seeds,
         [&](size_t seed) { return ears.list_like(tracks[seed], tells_all); });
  for (const partial_seed& partial : s_partial_seeds)
    report(partial.name, tracks, seeds,
           [&](size_t seed) { return ears.list_like(tracks[seed], partial.told); });
  return 0;
}
