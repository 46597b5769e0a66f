// What a collection costs as bytes and on disk: writing, reading, and copying as many bytes for
// comparison, at 10^4, 10^5 and 10^6 tracks. The counter bytes_per_second is of the bytes of the
// form. The file is made in the folder for temporary files, which should be on a disk.
#include <cstring>
#include <map>
#include <memory>

#include "benchmark_program.h"
#include "generated_object.h"
#include "temporary_folder.h"

namespace {

void add(playlist_collection* collection, const generated_library& library,
         const generated_track& track) {
  zvsdk_zdo* object = make_object(library, track);
  must(zvsdk_playlist_collection_add_zdo(collection, track.ident.c_str(), object), "add");
  zvsdk_manager_zdo_release(object);
}

struct buffer {
  std::unique_ptr<char[]> data;
  uint32_t size = 0;
};

buffer buffer_for(playlist_collection* collection) {
  buffer made;
  must(zvsdk_playlist_collection_serialize_size(collection, &made.size), "size");
  made.data = std::make_unique<char[]>(made.size);
  return made;
}

// A collection of so many tracks; one that has lost a track must renumber its records.
playlist_collection* collection_of(uint32_t tracks, bool lost_one) {
  static std::map<uint32_t, playlist_collection*> made[2];
  playlist_collection*& collection = made[lost_one][tracks];
  if (collection != nullptr) return collection;
  const generated_library& library = generated_library_of(tracks);
  collection = make_collection();
  for (const generated_track& track : library.tracks) add(collection, library, track);
  if (lost_one)
    must(zvsdk_playlist_collection_ident_remove(collection, library.tracks[0].ident.c_str()),
         "remove");
  return collection;
}

void count_bytes(benchmark::State& state, uint32_t bytes) {
  state.SetBytesProcessed(state.iterations() * int64_t{bytes});
  count_per_track(state, static_cast<double>(state.range(0)));
}

void serialize(benchmark::State& state, bool lost_one) {
  playlist_collection* collection = collection_of(static_cast<uint32_t>(state.range(0)), lost_one);
  const buffer room = buffer_for(collection);
  uint32_t size = 0;
  for (auto _ : state) {
    size = room.size;
    must(zvsdk_playlist_collection_serialize(collection, room.data.get(), &size), "serialize");
  }
  count_bytes(state, size);
}

buffer bytes_of(uint32_t tracks) {
  playlist_collection* collection = collection_of(tracks, false);
  buffer made = buffer_for(collection);
  must(zvsdk_playlist_collection_serialize(collection, made.data.get(), &made.size), "serialize");
  return made;
}

void deserialize(benchmark::State& state) {
  const buffer bytes = bytes_of(static_cast<uint32_t>(state.range(0)));
  for (auto _ : state) {
    playlist_collection* read = nullptr;
    must(zvsdk_playlist_collection_deserialize(bytes.data.get(), bytes.size, &read), "read");
    zvsdk_playlist_collection_release(read);
  }
  count_bytes(state, bytes.size);
}

// Into memory that is new each time, as it is for the others.
void copy(benchmark::State& state) {
  const buffer bytes = bytes_of(static_cast<uint32_t>(state.range(0)));
  for (auto _ : state) {
    const std::unique_ptr<char[]> target(new char[bytes.size]);
    std::memcpy(target.get(), bytes.data.get(), bytes.size);
    benchmark::DoNotOptimize(target.get());
    benchmark::ClobberMemory();
  }
  count_bytes(state, bytes.size);
}

// A store that is empty, and gone with the benchmark.
struct temporary_store {
  temporary_store() {
    must(zvsdk_playlist_storage_location_set(folder.path().c_str()), "location");
  }

  temporary_folder folder;
};

// The second and every later store replaces a row.
void store(benchmark::State& state) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  playlist_collection* collection = collection_of(tracks, false);
  const temporary_store file;
  for (auto _ : state) must(zvsdk_playlist_storage_store_collection(collection), "store");
  count_bytes(state, bytes_of(tracks).size);
}

void load(benchmark::State& state) {
  const auto tracks = static_cast<uint32_t>(state.range(0));
  const temporary_store file;
  must(zvsdk_playlist_storage_store_collection(collection_of(tracks, false)), "store");
  for (auto _ : state) {
    playlist_collection* read = nullptr;
    must(zvsdk_playlist_storage_load_collection("bench", &read), "load");
    zvsdk_playlist_collection_release(read);
  }
  count_bytes(state, bytes_of(tracks).size);
}

void register_at(int64_t size) {
  const auto add_at = [size](auto* made) { made->Arg(size)->Unit(benchmark::kMillisecond); };
  add_at(benchmark::RegisterBenchmark("memcpy", copy));
  add_at(benchmark::RegisterBenchmark("serialize", serialize, false));
  add_at(benchmark::RegisterBenchmark("serialize_after_removal", serialize, true));
  add_at(benchmark::RegisterBenchmark("deserialize", deserialize));
  add_at(benchmark::RegisterBenchmark("store", store)->UseRealTime());
  add_at(benchmark::RegisterBenchmark("load", load)->UseRealTime());
}

}  // namespace

int main(int argc, char** argv) {
  return run_benchmarks(argc, argv, register_at);
}
