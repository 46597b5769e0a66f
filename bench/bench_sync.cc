// What it costs to bring a collection in step with an application's media: announcing every ident,
// and the pass that tells the differences, at 10^4, 10^5 and 10^6 tracks.
#include <algorithm>
#include <map>
#include <random>

#include "benchmark_program.h"
#include "generated_library.h"
#include "library_session.h"

namespace {

using idents = std::vector<const char*>;

idents idents_of(uint32_t tracks) {
  idents all;
  for (const generated_track& track : generated_library_of(tracks).tracks)
    all.push_back(track.ident.c_str());
  return all;
}

playlist_collection* collection_of(uint32_t tracks) {
  static std::map<uint32_t, playlist_collection*> made;
  playlist_collection*& collection = made[tracks];
  if (collection != nullptr) return collection;
  collection = make_collection();
  for (const char* ident : idents_of(tracks))
    must(zvsdk_playlist_collection_add_ident(collection, ident), "add");
  return collection;
}

zvsdk_status count_difference(void* count, playlist_collection*, const char*, uint32_t, uint8_t*) {
  ++*static_cast<uint64_t*>(count);
  return 0;
}

// Announces what `choose` makes of the idents of the collection, and runs the pass.
void sync(benchmark::State& state, void (*choose)(idents*)) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  playlist_collection* collection = collection_of(tracks);
  idents announced = idents_of(tracks);
  choose(&announced);
  uint64_t differences = 0;
  for (auto _ : state) {
    for (const char* ident : announced)
      must(zvsdk_playlist_collection_sync_ident_add(collection, ident), "announce");
    must(zvsdk_playlist_collection_sync_process(collection, count_difference, &differences),
         "process");
  }
  benchmark::DoNotOptimize(differences);
  count_per_track(state, tracks);
}

void in_order(idents*) {}

void shuffled(idents* all) {
  std::shuffle(all->begin(), all->end(), std::mt19937(7));
}

void one_of_two(idents* all) {
  for (size_t i = 0; i < all->size() / 2; ++i) (*all)[i] = (*all)[2 * i];
  all->resize(all->size() / 2);
}

// As when announcing was broken off and began anew.
void twice(idents* all) {
  const idents once = *all;
  all->insert(all->end(), once.begin(), once.end());
}

void register_at(int64_t size) {
  const auto add_at = [size](const char* name, void (*choose)(idents*)) {
    benchmark::RegisterBenchmark(name, sync, choose)->Arg(size)->Unit(benchmark::kMillisecond);
  };
  add_at("sync_unchanged", in_order);
  add_at("sync_unchanged_shuffled", shuffled);
  add_at("sync_half_removed", one_of_two);
  add_at("sync_announced_twice", twice);
}

}  // namespace

int main(int argc, char** argv) {
  return run_benchmarks(argc, argv, register_at);
}
