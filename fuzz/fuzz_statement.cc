// Fuzzes statements: any text goes through lexer, parser, setup and evaluation over two small
// collections, one joined to the other, once without a seed and, if it asks for one, with an object
// and with a media read back as seeds. A text that begins with a number is an option of
// More-Like-This as well. Every result must be readable, and every refusal must say so. Each text
// is also validated and analysed for a media of the joined collection.

#include <cstdint>
#include <string>

#include "collections/playlist_collection.h"
#include "fuzz/fuzz_library.h"

namespace {

// Values of every attribute, by key; the list ids are those of the built-in lists, or of none.
constexpr const char* s_keys[] = {"ZV_ArtistName",
                                  "ZV_TrackName",
                                  "ZV_AlbumName",
                                  "_sdkmgr_val_list_tempo_value",
                                  "_sdkmgr_val_list_genre_id",
                                  "_sdkmgr_val_list_mood_data",
                                  "_sdkmgr_val_list_mood_id",
                                  "_sdkmgr_val_list_origin_id",
                                  "_sdkmgr_val_list_era_id",
                                  "_sdkmgr_val_list_artist_type_id",
                                  "ident_ref"};

struct media {
  const char* ident;
  const char* values[std::size(s_keys)];  // by s_keys, each or null
};

constexpr media s_first[] = {
    {"a", {"Abba", "Road", "Album", "90", "20256", "40101:60,40102:40", "40101", "30112", "5100"}},
    {"b",
     {"Abba feat. Bb", "Abbey Road", "Album", "120", "20273", "40101:9", "40101", "30001", "1985",
      "8177", "2"}},
    {"c", {"Bb", "road", nullptr, nullptr, "20272", "40102", "40102", nullptr, "1000", "8160"}},
    {"d", {nullptr, nullptr, nullptr, "120", "7"}},
    {"e", {"C\xC3\xA9line", "x", "y", "240", "20256", nullptr, "40001", "31826", "5001", "8176"}},
    {"f", {}},
    {"a", {"Zz", "Further", "Album 2", "95", "20277", "1:80,40103:30"}},
};
constexpr media s_second[] = {{"a", {"Abba", "Road", "Album", "120", "20273", "40103:100"}},
                              {"g", {"Bb", "Other", nullptr, "0"}}};

zvsdk_zdo* make_object(const media& from) {
  zvsdk_zdo* object = nullptr;
  require(zvsdk_manager_zdo_create("zvsdk_ctx_pldata", &object) == 0);
  for (size_t i = 0; i < std::size(s_keys); ++i)
    if (from.values[i] != nullptr)
      require(zvsdk_manager_zdo_value_add(object, s_keys[i], from.values[i]) == 0);
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

// The library with its collections, there for the whole run.
struct world : started_library {
  playlist_collection* collection = nullptr;

  world() {
    collection = make_collection("first", s_first);
    // The reference becomes the joining collection's.
    require(zcsl_vector_add(collection->joined, make_collection("second", s_second)) == 0);
    // A fixed state, so that an input does the same whenever it runs.
    require(zvsdk_playlist_morelikethis_option_set(collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7") ==
            0);
  }
};

// Ends the call's outcome: every result must be readable.
zvsdk_status take(zvsdk_status status, playlist_results* results) {
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

zvsdk_status run(const world& in, const std::string& statement, zvsdk_zdo* seed) {
  playlist_results* results = nullptr;
  const zvsdk_status status =
      zvsdk_playlist_generate_playlist(nullptr, statement.c_str(), in.collection, seed, &results);
  return take(status, results);
}

// What runs is valid, and there is a text exactly when the analysis says so.
void look_at(const world& in, const std::string& statement, zvsdk_status run_status) {
  const char* text = nullptr;
  const zvsdk_status status =
      zvsdk_playlist_statement_analyze_ident(statement.c_str(), in.collection, "g", &text);
  require((status == 0) == (text != nullptr));
  require(text == nullptr || zvsdk_manager_handle_release(text) == 0);
  require(run_status != 0 ||
          zvsdk_playlist_statement_validate(statement.c_str(), in.collection, nullptr) == 0);
}

// An option's text goes into the statement of More-Like-This as it is. Of two further values one
// at least differs in its number from what is there, and 25 stands in the end.
void run_as_option(const world& in, const std::string& option, zvsdk_zdo* seed) {
  const auto set = [&](const char* text) {
    return zvsdk_playlist_morelikethis_option_set(in.collection, ZVSDK_PLAYLIST_OPTION_MAX_TRACKS,
                                                  text);
  };
  if (set(option.c_str()) != 0) return;
  playlist_results* results = nullptr;
  const zvsdk_status status =
      zvsdk_playlist_generate_morelikethis(in.user, in.collection, seed, &results);
  take(status, results);
  require(set("26") == 0 && set("25") == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const world s_world;
  const std::string statement(reinterpret_cast<const char*>(data), size);
  const zvsdk_status status = run(s_world, statement, nullptr);
  look_at(s_world, statement, status);
  const bool is_option = !statement.empty() && statement[0] >= '1' && statement[0] <= '9';
  if (status != playlist_error_seed_required && !is_option) return 0;
  zvsdk_zdo* seed = make_object(s_first[1]);
  if (is_option)
    run_as_option(s_world, statement, seed);
  else
    run(s_world, statement, seed);
  zvsdk_manager_zdo_release(seed);
  zvsdk_zdo* view = nullptr;
  require(zvsdk_playlist_collection_get_zdo(s_world.collection, s_world.user, "c", &view) == 0);
  run(s_world, statement, view);
  zvsdk_manager_zdo_release(view);
  return 0;
}
