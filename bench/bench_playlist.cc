// What the library costs, through its exported calls alone: collecting, WHERE, ORDER, PER limits,
// the ranking of ties and More-Like-This, at 10^4, 10^5 and 10^6 tracks. Times are per pass; the
// counter per_track divides them by the tracks looked at.
#include <malloc.h>

#include <chrono>
#include <map>

#include "benchmark_program.h"
#include "generated_object.h"

namespace {

using bench_clock = std::chrono::steady_clock;

// Adds every track, with the data objects of a batch made beforehand so that the time handed back,
// in seconds, is that of the adding alone.
double add_all(playlist_collection* collection, const generated_library& library) {
  constexpr size_t batch = 4096;
  std::vector<zvsdk_zdo*> objects;
  double seconds = 0;
  for (size_t begin = 0; begin < library.tracks.size(); begin += batch) {
    const size_t end = std::min(begin + batch, library.tracks.size());
    objects.clear();
    for (size_t i = begin; i < end; ++i) objects.push_back(make_object(library, library.tracks[i]));
    const auto from = bench_clock::now();
    for (size_t i = begin; i < end; ++i)
      must(zvsdk_playlist_collection_add_zdo(collection, library.tracks[i].ident.c_str(),
                                             objects[i - begin]),
           "add");
    seconds += std::chrono::duration<double>(bench_clock::now() - from).count();
    for (zvsdk_zdo* object : objects) zvsdk_manager_zdo_release(object);
  }
  return seconds;
}

playlist_collection* collection_of(uint32_t tracks) {
  static std::map<uint32_t, playlist_collection*> made;
  playlist_collection*& collection = made[tracks];
  if (collection == nullptr) {
    collection = make_collection();
    add_all(collection, generated_library_of(tracks));
  }
  return collection;
}

void collect(benchmark::State& state) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  const generated_library& library = generated_library_of(tracks);
  size_t bytes = 0;
  for (auto _ : state) {
    const size_t before = mallinfo2().uordblks + mallinfo2().hblkhd;
    playlist_collection* collection = make_collection();
    state.SetIterationTime(add_all(collection, library));
    bytes = mallinfo2().uordblks + mallinfo2().hblkhd - before;
    zvsdk_playlist_collection_release(collection);
  }
  count_per_track(state, tracks);
  state.counters["bytes_per_track"] = static_cast<double>(bytes) / tracks;
}

void make_objects(benchmark::State& state) {
  start_library();
  const generated_library& library = generated_library_of(static_cast<uint32_t>(state.range(0)));
  for (auto _ : state)
    for (const generated_track& track : library.tracks)
      zvsdk_manager_zdo_release(make_object(library, track));
  count_per_track(state, static_cast<double>(library.tracks.size()));
}

zvsdk_user* user() {
  static zvsdk_user* const made = [] {
    zvsdk_user* created = nullptr;
    must(zvsdk_manager_user_create("bench", &created), "user");
    return created;
  }();
  return made;
}

// The data object of the library's first track, as the collection holds it.
zvsdk_zdo* seed_of(uint32_t tracks) {
  static std::map<uint32_t, zvsdk_zdo*> made;
  zvsdk_zdo*& seed = made[tracks];
  if (seed == nullptr)
    must(zvsdk_playlist_collection_get_zdo(collection_of(tracks), user(),
                                           generated_library_of(tracks).tracks[0].ident.c_str(),
                                           &seed),
         "seed");
  return seed;
}

void more_like_this(benchmark::State& state) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  playlist_collection* collection = collection_of(tracks);
  zvsdk_zdo* seed = seed_of(tracks);
  for (auto _ : state) {
    playlist_results* results = nullptr;
    must(zvsdk_playlist_generate_morelikethis(user(), collection, seed, &results), "like");
    zvsdk_playlist_results_release(results);
  }
  count_per_track(state, tracks);
}

void generate(benchmark::State& state, const char* pattern) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  const std::string text = with_popular_artist(pattern, generated_library_of(tracks));
  const char* statement = text.c_str();
  playlist_collection* collection = collection_of(tracks);
  uint32_t count = 0;
  for (auto _ : state) {
    playlist_results* results = nullptr;
    must(zvsdk_playlist_generate_playlist(user(), statement, collection, seed_of(tracks), &results),
         statement);
    zvsdk_playlist_results_count(results, &count);
    zvsdk_playlist_results_release(results);
  }
  count_per_track(state, tracks);
  state.counters["results"] = count;
}

struct question {
  const char* name;
  const char* statement;
};

constexpr question s_questions[] = {
    {"where_tempo_range", "GENPL WHERE ZV_Tempo > 100 AND ZV_Tempo < 140"},
    {"where_tempo_range_top25",
     "GENPL WHERE ZV_Tempo > 100 AND ZV_Tempo < 140 ORDER RAND(0) LIMIT 25 RESULTS"},
    {"where_tempo_none", "GENPL WHERE ZV_Tempo > 250"},
    {"where_tempo_like", "GENPL WHERE ZV_Tempo LIKE 120 > 950"},
    {"where_name_equal", "GENPL WHERE ZV_ArtistName = '@'"},
    {"where_name_begins", "GENPL WHERE ZV_ArtistName BEGINS 'mar' LIMIT 100 RESULTS"},
    {"where_name_contains_common", "GENPL WHERE ZV_ArtistName CONTAINS 'mar' LIMIT 100 RESULTS"},
    {"where_name_contains_rare", "GENPL WHERE ZV_ArtistName CONTAINS 'zqx'"},
    {"where_name_like", "GENPL WHERE ZV_ArtistName LIKE '@' > 700"},
    {"where_genre_root", "GENPL WHERE ZV_Genre = 'Rock'"},
    {"where_genre_like", "GENPL WHERE ZV_Genre LIKE 'Album Rock'"},
    {"where_era_span", "GENPL WHERE ZV_Era = '1980s'"},
    {"where_era_like", "GENPL WHERE ZV_Era LIKE 1987"},
    {"where_origin", "GENPL WHERE ZV_Origin = 'Western Europe'"},
    {"where_mood", "GENPL WHERE ZV_Mood = 'Upbeat'"},
    {"where_mood_profile", "GENPL WHERE ZV_Mood LIKE SEED > 500"},
    {"all_ties", "GENPL"},
    {"random_order", "GENPL ORDER RAND(0)"},
    {"random_order_top25", "GENPL ORDER RAND(0) LIMIT 25 RESULTS"},
    {"random_order_few_values", "GENPL ORDER RAND(10)"},
    {"two_per_artist", "GENPL LIMIT 2 PER ZV_ArtistName, 25 RESULTS"},
    {"two_per_artist_random_order", "GENPL ORDER RAND(0) LIMIT 2 PER ZV_ArtistName, 25 RESULTS"},
    {"similar_tempo_two_per_artist",
     "GENPL ORDER ZV_Tempo LIKE 120 + RAND(100) LIMIT 2 PER ZV_ArtistName, 25 RESULTS"},
};

void register_at(int64_t size) {
  benchmark::RegisterBenchmark("make_objects", make_objects)
      ->Arg(size)
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("collect", collect)
      ->Arg(size)
      ->UseManualTime()
      ->Unit(benchmark::kMillisecond);
  benchmark::RegisterBenchmark("more_like_this", more_like_this)
      ->Arg(size)
      ->Unit(benchmark::kMillisecond);
  for (const question& asked : s_questions)
    benchmark::RegisterBenchmark(asked.name, generate, asked.statement)
        ->Arg(size)
        ->Unit(benchmark::kMillisecond);
}

}  // namespace

int main(int argc, char** argv) {
  return run_benchmarks(argc, argv, register_at);
}
