/*
 * A whole embedding application: starts the library, fills a collection with tracks described in
 * this file, runs one statement and prints the playlist.
 *
 *     cc -std=c99 playlist.c $(pkg-config --cflags --libs zvsdk_playlist) -o playlist
 *     ./playlist
 *     ./playlist "GENERATE PLAYLIST WHERE ZV_ArtistName CONTAINS 'lamp'"
 */
#include <stddef.h>
#include <stdio.h>
#include <string.h>

#include <zvsdk_manager.h>
#include <zvsdk_playlist.h>

typedef struct song {
  const char* ident;
  const char* title;
  const char* artist;
  const char* album;
  uint32_t year;
  uint32_t tempo;
} song;

/* Invented, all of them. */
static const song songs[] = {
    {"song-01", "Paper Lanterns", "The Quiet Lamps", "Harbour Lights", 2004, 118},
    {"song-02", "Low Tide", "The Quiet Lamps", "Harbour Lights", 2004, 92},
    {"song-03", "Signal Fires", "The Quiet Lamps", "Second Shift", 2009, 124},
    {"song-04", "Night Ferry", "Mara Venn", "Crossings", 2012, 122},
    {"song-05", "Timetable", "Mara Venn", "Crossings", 2012, 126},
    {"song-06", "Platform Nine and a Bit", "Mara Venn", "Departures", 2016, 135},
    {"song-07", "Copper Wire", "Ostrava Brass Co.", "Furnace", 1998, 120},
    {"song-08", "Slag", "Ostrava Brass Co.", "Furnace", 1998, 84},
    {"song-09", "Kr\xC3\xA4henlied", "Zo\xC3\xAB Lindqvist", "Halbmond", 2019, 121},
    {"song-10", "Mondgrau", "Zo\xC3\xAB Lindqvist", "Halbmond", 2019, 76},
    {"song-11", "Long Division", "Integer Sunday", "Remainders", 2021, 128},
    {"song-12", "Carry the One", "Integer Sunday", "Remainders", 2021, 119},
};

static const char default_statement[] =
    "GENERATE PLAYLIST WHERE ZV_Tempo > 115 AND ZV_Tempo < 130 "
    "ORDER RAND(100) LIMIT 1 PER ZV_ArtistName, 5 RESULTS";

/* Everything that has to be given back, null until it was had. */
typedef struct player {
  zvsdk_sdkmanager* manager;
  zvsdk_user* user;
  playlist_collection* collection;
  playlist_results* results;
  int started;
} player;

/* Tells what went wrong, with the library's own words where it has some. */
static int failed(zvsdk_status status, const char* doing) {
  zvsdk_error_info info = {0, 0, NULL, NULL};
  if (status == 0) return 0;
  fprintf(stderr, "%s: status 0x%08X", doing, (unsigned)status);
  if (zvsdk_manager_errorinfo_get_message(&info) == 0 && info.message != NULL && *info.message)
    fprintf(stderr, ": %s", info.message);
  fputc('\n', stderr);
  return 1;
}

static int start(player* p) {
  if (failed(zvsdk_manager_create(NULL, &p->manager), "starting the manager")) return 0;
  if (failed(zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", NULL, NULL),
             "loading the locale"))
    return 0;
  if (failed(zvsdk_playlist_initialize(p->manager), "starting the library")) return 0;
  p->started = 1;
  if (failed(zvsdk_manager_user_create("example", &p->user), "making a user")) return 0;
  if (failed(zvsdk_playlist_collection_create("songs", &p->collection), "making a collection"))
    return 0;
  /* The same playlist on every run; leave it out for another one each time. */
  return !failed(
      zvsdk_playlist_morelikethis_option_set(p->collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7"),
      "setting an option");
}

static int add(player* p, const song* each) {
  zvsdk_track_description track = {0};
  zvsdk_zdo* object = NULL;
  zvsdk_status status;
  track.size = sizeof track;
  track.ident = each->ident;
  track.title = each->title;
  track.artists = &each->artist;
  track.artist_count = 1;
  track.album = each->album;
  track.year = each->year;
  track.tempo = each->tempo;
  if (failed(zvsdk_manager_zdo_from_track(&track, NULL, &object), "describing a track")) return 0;
  status = zvsdk_playlist_collection_add_zdo(p->collection, each->ident, object);
  zvsdk_manager_zdo_release(object);
  return !failed(status, "adding a track");
}

static const song* find(const char* ident) {
  size_t i;
  for (i = 0; i < sizeof songs / sizeof songs[0]; ++i)
    if (strcmp(songs[i].ident, ident) == 0) return &songs[i];
  return NULL;
}

static int print_playlist(player* p, const char* statement) {
  const char* ident = NULL;
  uint32_t i;
  if (failed(zvsdk_playlist_generate_playlist(p->user, statement, p->collection, NULL, &p->results),
             statement))
    return 0;
  for (i = 0; zvsdk_playlist_results_enum(p->results, i, &ident, NULL) == 0; ++i) {
    const song* each = find(ident);
    if (each != NULL)
      printf("%2u  %s  %s - %s\n", (unsigned)i + 1, ident, each->artist, each->title);
  }
  return 1;
}

/* In the reverse order; releasing null is fine. */
static void stop(player* p) {
  zvsdk_playlist_results_release(p->results);
  zvsdk_playlist_collection_release(p->collection);
  if (p->started) zvsdk_playlist_shutdown();
  if (p->user != NULL) zvsdk_manager_user_release(p->user);
  if (p->manager != NULL) zvsdk_manager_release(p->manager);
}

int main(int argc, char** argv) {
  player p = {NULL, NULL, NULL, NULL, 0};
  size_t i;
  int fine = start(&p);
  for (i = 0; fine && i < sizeof songs / sizeof songs[0]; ++i) fine = add(&p, &songs[i]);
  fine = fine && print_playlist(&p, argc > 1 ? argv[1] : default_statement);
  stop(&p);
  return fine ? 0 : 1;
}
