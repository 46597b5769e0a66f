// The one user of the library's calls.
#include "tools/session.h"

#include <cstdio>

namespace zvplaylist {
namespace {

std::string status_text(zvsdk_status status) {
  char text[32];
  std::snprintf(text, sizeof text, "status 0x%08X", static_cast<unsigned>(status));
  return text;
}

// The message that the library recorded for the failure, or failing that its code.
void check(zvsdk_status status, const char* what) {
  if (status == 0) return;
  zvsdk_error_info info{};
  zvsdk_manager_errorinfo_get_message(&info);
  std::string message = info.message != nullptr ? info.message : "";
  if (message.empty()) message = std::string(what) + " failed with " + status_text(status);
  // Or the next failure without a message of its own would show this one.
  zvsdk_manager_errorinfo_clear();
  throw library_error(status, message);
}

unique_manager start_manager() {
  zvsdk_manager_config config{.size = sizeof config, .data_path = nullptr};
  zvsdk_sdkmanager* manager = nullptr;
  check(zvsdk_manager_create(&config, &manager), "starting the manager");
  return unique_manager(manager);
}

unique_zdo object_of(const track& entry) {
  std::vector<const char*> artists;
  for (const std::string& artist : entry.artists) artists.push_back(artist.c_str());
  const std::string& genre = entry.subgenre.empty() ? entry.genre : entry.subgenre;
  const auto text = [](const std::string& value) {
    return value.empty() ? nullptr : value.c_str();
  };
  const zvsdk_track_description description{.size = sizeof description,
                                            .ident = entry.ident.c_str(),
                                            .title = text(entry.title),
                                            .artists = artists.data(),
                                            .artist_count = static_cast<uint32_t>(artists.size()),
                                            .album = text(entry.album),
                                            .year = entry.year,
                                            .genre = text(genre),
                                            .tempo = entry.tempo,
                                            .mood = nullptr,
                                            .origin = nullptr,
                                            .artist_type = nullptr,
                                            .era = nullptr,
                                            .has_mood_point = 0,
                                            .valence = 0,
                                            .energy = 0};
  zvsdk_zdo* object = nullptr;
  uint32_t unknown = 0;  // what no list knows is left out
  check(zvsdk_manager_zdo_from_track(&description, &unknown, &object), "describing a track");
  return unique_zdo(object);
}

}  // namespace

session::module::module(zvsdk_sdkmanager* manager) {
  check(zvsdk_playlist_initialize(manager), "starting the library");
}

session::session() : manager_(start_manager()), module_(new module(manager_.get())) {
  for (const char* group : {ZVSDK_LOCALE_PLAYLIST, ZVSDK_LOCALE_MUSIC})
    check(zvsdk_manager_locale_load(group, "eng", nullptr, nullptr), "loading the locale");
  zvsdk_user* user = nullptr;
  check(zvsdk_manager_user_create("zvplaylist", &user), "making a user");
  user_.reset(user);
  playlist_collection* collection = nullptr;
  check(zvsdk_playlist_collection_create("music", &collection), "making a collection");
  collection_.reset(collection);
}

void session::add(const track& entry) {
  check(zvsdk_playlist_collection_add_zdo(collection_.get(), entry.ident.c_str(),
                                          object_of(entry).get()),
        "adding a track");
}

void session::set_random(uint32_t number) {
  check(zvsdk_playlist_morelikethis_option_set(collection_.get(), ZVSDK_PLAYLIST_OPTION_RANDOM,
                                               std::to_string(number).c_str()),
        "setting the random number");
}

std::vector<ranked_ident> session::generate(const std::string& statement, const track* seed) {
  unique_zdo seed_object;
  if (seed != nullptr) seed_object = object_of(*seed);
  playlist_results* handle = nullptr;
  check(zvsdk_playlist_generate_playlist(user_.get(), statement.c_str(), collection_.get(),
                                         seed_object.get(), &handle),
        "the statement");
  const unique_results results(handle);
  std::vector<ranked_ident> playlist;
  const char* ident = nullptr;
  for (uint32_t i = 0; zvsdk_playlist_results_enum(handle, i, &ident, nullptr) == 0; ++i) {
    int32_t score = 0;
    check(zvsdk_playlist_results_get_score(handle, i, &score), "reading a score");
    playlist.push_back({ident, score});
  }
  return playlist;
}

std::vector<std::string> session::attributes() const {
  std::vector<std::string> names;
  const char* name = nullptr;
  for (uint32_t i = 0; zvsdk_playlist_attributes_enum(i, &name) == 0; ++i) names.push_back(name);
  return names;
}

}  // namespace zvplaylist
