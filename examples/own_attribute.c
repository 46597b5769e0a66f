/*
 * An attribute of an application's own: the stars that a listener has given to a song. Once it is
 * registered, statements name it like any built-in attribute:
 *
 *     cc -std=c99 own_attribute.c $(pkg-config --cflags --libs zvsdk_playlist) -o own_attribute
 *     ./own_attribute
 *     ./own_attribute "GENERATE PLAYLIST WHERE EX_Stars < 3"
 *
 * What an attribute is to the library: it extracts values when a media is added
 * (collect_attribute_data), turns the right-hand side of a comparison into a criterion
 * (set_string_criteria), and scores each stored value against it (compare_integer_data).
 */
#include <stddef.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#include <zvsdk_manager.h>
#include <zvsdk_playlist.h>

typedef struct song {
  const char* ident;
  const char* title;
  int32_t stars; /* 1 to 5; 0: not rated */
} song;

static const song songs[] = {
    {"song-1", "Paper Lanterns", 5}, {"song-2", "Low Tide", 2},  {"song-3", "Signal Fires", 4},
    {"song-4", "Night Ferry", 0},    {"song-5", "Timetable", 4}, {"song-6", "Slag", 1},
    {"song-7", "Copper Wire", 3},    {"song-8", "Mondgrau", 5},
};

static const song* find_song(const char* ident) {
  size_t i;
  for (i = 0; i < sizeof songs / sizeof songs[0]; ++i)
    if (strcmp(songs[i].ident, ident) == 0) return &songs[i];
  return NULL;
}

/* ---- The attribute --------------------------------------------------------------------------- */

static zvsdk_status stars_name(const char** name) {
  *name = "EX_Stars";
  return 0;
}

static const uint32_t stars_operators[] = {playlist_op_equal,   playlist_op_not_equal,
                                           playlist_op_greater, playlist_op_greater_equal,
                                           playlist_op_less,    playlist_op_less_equal};

static zvsdk_status stars_supported_operators(uint32_t index, uint32_t* op) {
  if (index >= sizeof stars_operators / sizeof stars_operators[0]) return playlist_warn_not_found;
  *op = stars_operators[index];
  return 0;
}

/* The collection is locked meanwhile: only the calls of `api` are allowed here. The data object of
 * the media could be asked as well (get_media_zdo); this program knows its songs by ident. */
static zvsdk_status stars_collect(playlist_collect_context* context,
                                  const playlist_collect_api* api) {
  const char* ident = NULL;
  const song* found;
  zvsdk_status status = api->get_media_ident(context, &ident);
  if (status != 0) return status;
  found = find_song(ident);
  if (found == NULL || found->stars == 0) return 0; /* no value: no comparison holds */
  return api->set_integer_data(context, found->stars);
}

/* One comparison of one statement. The library knows no more of it than its address. */
struct playlist_attribute_instance {
  uint32_t op;
  int32_t stars;
};

static zvsdk_status stars_create_instance(playlist_attribute_instance** instance) {
  *instance = calloc(1, sizeof **instance);
  return *instance != NULL ? 0 : playlist_error_no_memory;
}

static zvsdk_status stars_release_instance(playlist_attribute_instance* instance) {
  free(instance);
  return 0;
}

/* playlist_error_unsupported becomes the message "unsupported value '...' for attribute '...'". */
static zvsdk_status stars_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                              const char* text, int32_t* threshold) {
  char* end = NULL;
  const long stars = strtol(text, &end, 10);
  (void)threshold; /* only "like" has a threshold of its own */
  if (end == text || *end != '\0' || stars < 1 || stars > 5) return playlist_error_unsupported;
  instance->op = op;
  instance->stars = (int32_t)stars;
  return 0;
}

static int holds(uint32_t op, int32_t value, int32_t criterion) {
  switch (op) {
    case playlist_op_equal:
      return value == criterion;
    case playlist_op_not_equal:
      return value != criterion;
    case playlist_op_greater:
      return value > criterion;
    case playlist_op_greater_equal:
      return value >= criterion;
    case playlist_op_less:
      return value < criterion;
    default:
      return value <= criterion;
  }
}

static zvsdk_status stars_compare(playlist_attribute_instance* instance, uint32_t value,
                                  int32_t* score) {
  *score = holds(instance->op, (int32_t)value, instance->stars) ? 1000 : -1000;
  return 0;
}

/* For reading a media back as a data object; unneeded for statements. */
static zvsdk_status stars_text(playlist_attribute_instance* instance, uint32_t value,
                               const char* key, zvsdk_locale* locale, const char** text) {
  static const char* const texts[] = {"", "*", "**", "***", "****", "*****"};
  (void)instance;
  (void)locale;
  if (strcmp(key, "EX_Stars") != 0 || value > 5) return playlist_warn_not_found;
  *text = texts[value];
  return 0;
}

static zvsdk_status register_stars(void) {
  playlist_attribute stars = {0}; /* slots that stay empty are optional ones */
  stars.attribute_name = stars_name;
  stars.supported_operators = stars_supported_operators;
  stars.collect_attribute_data = stars_collect;
  stars.create_instance = stars_create_instance;
  stars.release_instance = stars_release_instance;
  stars.set_string_criteria = stars_set_string_criteria;
  stars.compare_integer_data = stars_compare;
  stars.value_from_integer_data = stars_text;
  return zvsdk_playlist_register_attribute_provider(&stars); /* copies the record */
}

/* ---- A program around it --------------------------------------------------------------------- */

static int failed(zvsdk_status status, const char* doing) {
  zvsdk_error_info info = {0, 0, NULL, NULL};
  if (status == 0) return 0;
  zvsdk_manager_errorinfo_get(&info);
  fprintf(stderr, "%s: status 0x%08X %s\n", doing, (unsigned)status,
          info.message != NULL ? info.message : "");
  return 1;
}

static int add_song(playlist_collection* collection, const song* each) {
  zvsdk_track_description track = {0};
  zvsdk_zdo* object = NULL;
  zvsdk_status status;
  track.size = sizeof track;
  track.ident = each->ident;
  track.title = each->title;
  if (failed(zvsdk_manager_zdo_from_track(&track, NULL, &object), "describing a song")) return 0;
  status = zvsdk_playlist_collection_add_zdo(collection, each->ident, object);
  zvsdk_manager_zdo_release(object);
  return !failed(status, "adding a song");
}

static int run(zvsdk_user* user, playlist_collection* collection, const char* statement) {
  playlist_results* results = NULL;
  const char* ident = NULL;
  uint32_t i;
  size_t s;
  for (s = 0; s < sizeof songs / sizeof songs[0]; ++s)
    if (!add_song(collection, &songs[s])) return 0;
  if (failed(zvsdk_playlist_generate_playlist(user, statement, collection, NULL, &results),
             statement))
    return 0;
  for (i = 0; zvsdk_playlist_results_enum(results, i, &ident, NULL) == 0; ++i) {
    const song* each = find_song(ident);
    printf("%s  %d  %s\n", ident, (int)each->stars, each->title);
  }
  zvsdk_playlist_results_release(results);
  return 1;
}

int main(int argc, char** argv) {
  zvsdk_sdkmanager* manager = NULL;
  zvsdk_user* user = NULL;
  playlist_collection* collection = NULL;
  int fine;
  if (failed(zvsdk_manager_create(NULL, &manager), "starting the manager")) return 1;
  fine = !failed(zvsdk_playlist_initialize(manager), "starting the library");
  if (fine) {
    /* After the start, and before the collections that are to carry the attribute. */
    fine = !failed(register_stars(), "registering the attribute") &&
           !failed(zvsdk_manager_user_create("example", &user), "making a user") &&
           !failed(zvsdk_playlist_collection_create("songs", &collection), "making a collection") &&
           run(user, collection, argc > 1 ? argv[1] : "GENERATE PLAYLIST WHERE EX_Stars >= 4");
    zvsdk_playlist_collection_release(collection);
    zvsdk_playlist_shutdown();
  }
  if (user != NULL) zvsdk_manager_user_release(user);
  zvsdk_manager_release(manager);
  return fine ? 0 : 1;
}
