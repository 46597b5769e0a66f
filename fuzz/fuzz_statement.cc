// Fuzzes statements: any text goes through lexer, parser, setup and evaluation over two small
// collections, one joined to the other, once without a seed and, if it asks for one, once with.
// Every result must be readable, and every refusal must say so.

#include <cstdint>
#include <cstdlib>
#include <string>

#include "collections/playlist_collection.h"
#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

namespace {

void require(bool holds) {
  if (!holds) std::abort();
}

struct media {
  const char* ident;
  const char* tempo;  // or null
  const char* artist;
  const char* title;
};

constexpr media s_first[] = {
    {"a", "90", "Abba", "Road"},        {"b", "120", "Abba feat. Bb", "Abbey Road"},
    {"c", nullptr, "Bb", "road"},       {"d", "120", nullptr, nullptr},
    {"e", "240", "C\xC3\xA9line", "x"}, {"f", nullptr, nullptr, nullptr},
    {"a", "95", "Zz", "Further"},
};
constexpr media s_second[] = {{"a", "120", "Abba", "Road"}, {"g", "0", "Bb", "Other"}};

zvsdk_zdo* make_object(const media& from) {
  zvsdk_zdo* object = nullptr;
  require(zvsdk_manager_zdo_create("zvsdk_ctx_pldata", &object) == 0);
  auto add = [&](const char* key, const char* text) {
    if (text != nullptr) require(zvsdk_manager_zdo_value_add(object, key, text) == 0);
  };
  add("_sdkmgr_val_list_tempo_value", from.tempo);
  add("ZV_ArtistName", from.artist);
  add("ZV_TrackName", from.title);
  add("ident_ref", "2");
  return object;
}

template <size_t Count>
playlist_collection* make_collection(const char* name, const media (&all)[Count]) {
  playlist_collection* collection = nullptr;
  require(zvsdk_playlist_collection_create(name, &collection) == 0);
  for (const media& each : all) {
    zvsdk_zdo* object = make_object(each);
    require(zvsdk_playlist_collection_add_zdo(collection, each.ident, object) == 0);
    zvsdk_manager_zdo_release(object);
  }
  return collection;
}

// The library is up, and its collections are there, for the whole run.
struct world {
  playlist_collection* collection = nullptr;

  world() {
    zvsdk_sdkmanager* manager = nullptr;
    require(zvsdk_manager_create(nullptr, &manager) == 0);
    require(zvsdk_playlist_initialize(manager) == 0);
    zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr);
    collection = make_collection("first", s_first);
    // The reference becomes the joining collection's.
    require(zcsl_vector_add(collection->joined, make_collection("second", s_second)) == 0);
    // A fixed state, so that an input does the same whenever it runs.
    require(zvsdk_playlist_morelikethis_option_set(collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7") ==
            0);
  }
};

zvsdk_status run(const world& in, const std::string& statement, zvsdk_zdo* seed) {
  playlist_results* results = nullptr;
  const zvsdk_status status =
      zvsdk_playlist_generate_playlist(nullptr, statement.c_str(), in.collection, seed, &results);
  if (status != 0) {
    require(results == nullptr);
    return status;
  }
  uint32_t count = 0;
  const char* ident = nullptr;
  require(zvsdk_playlist_results_count(results, &count) == 0);
  require(count <= std::size(s_first) + std::size(s_second));
  for (uint32_t i = 0; i < count; ++i)
    require(zvsdk_playlist_results_enum(results, i, &ident, nullptr) == 0 && *ident != '\0');
  require(zvsdk_playlist_results_release(results) == 0);
  return 0;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const world s_world;
  const std::string statement(reinterpret_cast<const char*>(data), size);
  if (run(s_world, statement, nullptr) != playlist_error_seed_required) return 0;
  zvsdk_zdo* seed = make_object(s_first[1]);
  run(s_world, statement, seed);
  zvsdk_manager_zdo_release(seed);
  return 0;
}
