/*
 * playlist_attr_common.h: what attributes share, so that an attribute's own file says only what is
 * its own. In the order in which an attribute needs it:
 *
 *   scores          of tests that know no degrees
 *   data objects    the kind of an object, its first value or child, walks over children
 *   collecting      the media's object, its track within an album, the list element pass
 *   instances       records with a stamp, and pass thresholds by list level
 *   texts           interning what a comparison never needs but a reader of values does
 *
 * What only list-backed attributes share is in playlist_attr_lists.h.
 *
 * Nothing here logs: a status is logged under the source name of the attribute that passes it on.
 * Nothing here keeps state. All calls on the host go through the acquired service tables.
 */
#ifndef PLAYLIST_ATTR_COMMON_H
#define PLAYLIST_ATTR_COMMON_H

#include "module/playlist_handles.h"
#include "support/zcsl_stringmap.h"
#include "zvsdk_playlist.h"

/* ---- Scores -------------------------------------------------------------------------------- */

/* The score of a test that knows no degrees. */
inline int32_t playlist_attr_verdict(bool holds) {
  return holds ? 1000 : -1000;
}

/* ---- Data objects -------------------------------------------------------------------------- */

/* Child and value keys that more than one attribute reads. */
inline constexpr char playlist_key_matching_track[] = "zvsdk_ctx_track!matching";
inline constexpr char playlist_key_display[] = "zvsdk_val_display";
inline constexpr char playlist_key_artist[] = "zvsdk_ctx_artist!";
inline constexpr char playlist_key_contributor[] = "zvsdk_ctx_contributor!";

/* The contexts that attributes tell apart. "pldata" objects are served by this module itself from a
 * collection and carry an attribute's values directly. */
enum class playlist_attr_context { album, track, artist, contributor, name, pldata, other };

/* Writes the context in any case: `other` when it cannot be read. */
zvsdk_status playlist_attr_context_get(zvsdk_zdo* object, playlist_attr_context* context);
inline playlist_attr_context playlist_attr_context_of(zvsdk_zdo* object) {
  playlist_attr_context context;
  playlist_attr_context_get(object, &context);
  return context;
}

/* The first value under a key; the text lives as long as the object. */
zvsdk_status playlist_attr_value(zvsdk_zdo* object, const char* key, const char** text);
/* The first child under a key. */
zvsdk_status playlist_attr_child(zvsdk_zdo* object, const char* key, playlist_zdo_owner& child);

/* A walk down from an object. */
struct playlist_attr_walk {
  zvsdk_zdo* at; /* where it is: the start, which is the caller's, or `held` */
  playlist_attr_context context = playlist_attr_context::other;
  playlist_zdo_owner held = {};

  /* Reads the context of where the walk is. */
  zvsdk_status look() { return playlist_attr_context_get(at, &context); }
  /* To the first child under a key, with its context; stays where it is when there is none. */
  zvsdk_status descend(const char* key);
};

/*
 * A decimal value of the contributor behind an object: of the artist of a track or album, of an
 * artist, or the object's own if it is a contributor, pldata or an album without an artist. The
 * status is that of the last step, and 0 with the number 0 for an object that has no such steps.
 */
zvsdk_status playlist_attr_contributor_number(zvsdk_zdo* object, const char* key, uint32_t* number);

/* Visits the children under a key in order until `visit(playlist_zdo_owner&)` returns false. */
template <class Visit>
void playlist_attr_each_child(zvsdk_zdo* object, const char* key, Visit visit) {
  for (uint32_t ordinal = 1;; ++ordinal) {
    playlist_zdo_owner child;
    if (g_playlist_zdo_interface->zdo_child_get(object, key, ordinal, nullptr, child.out()) != 0)
      return;
    if (!visit(child)) return;
  }
}

/* ---- Collecting ---------------------------------------------------------------------------- */

/* What a media is collected from and where its values go. */
struct playlist_attr_media {
  playlist_collect_context* context;
  const playlist_collect_api* api;

  zvsdk_status object(playlist_zdo_owner& object) const {
    return api->get_media_zdo(context, object.out());
  }
  /* The ident, or null. */
  const char* ident() const;
  /* Gives a value to the collection. */
  zvsdk_status give(uint32_t number) const {
    return api->set_integer_data(context, static_cast<int32_t>(number));
  }
  zvsdk_status give(const char* text) const { return api->set_string_data(context, text); }
  /* The same for a decimal value of the object. */
  zvsdk_status take_number(zvsdk_zdo* object, const char* key) const;
  /* The same for the id of the media's list element, if the element is of this list. */
  void take_list_element(const char* list_type) const;
};

/* An album's track stands for the media when it has the media's ident or none at all. */
bool playlist_attr_is_media(zvsdk_zdo* track, const char* ident);
/* The first track of an album that stands for the media, if there is one. */
playlist_zdo_owner playlist_attr_matching_track(zvsdk_zdo* album, const playlist_attr_media& media);

/*
 * The object that holds a track's own values: of an album the track that stands for the media, kept
 * in `held`; a track or pldata itself; null for any other context.
 */
zvsdk_zdo* playlist_attr_track_of_media(zvsdk_zdo* object, const playlist_attr_media& media,
                                        playlist_zdo_owner& held);
/* The same for a seed: of an album, its first track. No media names a track there. */
zvsdk_zdo* playlist_attr_track_of_seed(zvsdk_zdo* seed, playlist_zdo_owner& held);

/* Tries `read(object)` on the media's track within an album first, then, or if that fails, on the
 * object itself, whatever its context. */
template <class Read>
void playlist_attr_from_track_or_object(zvsdk_zdo* object, const playlist_attr_media& media,
                                        Read read) {
  if (playlist_attr_context_of(object) == playlist_attr_context::album) {
    const playlist_zdo_owner track = playlist_attr_matching_track(object, media);
    if (track && read(track.get()) == 0) return;
  }
  read(object);
}

/* ---- Instances ----------------------------------------------------------------------------- */

/* A zero-filled record of the attribute's own type, stamped, in the caller's field. */
template <class Record>
zvsdk_status playlist_attr_create(uint32_t stamp, playlist_attribute_instance** instance) {
  auto* record = static_cast<Record*>(zcsl_memory_calloc(1, sizeof(Record)));
  if (record == nullptr) return playlist_error_no_memory;
  record->stamp = stamp;
  *instance = reinterpret_cast<playlist_attribute_instance*>(record);
  return 0;
}

template <class Record>
Record* playlist_attr_record(playlist_attribute_instance* instance) {
  return reinterpret_cast<Record*>(instance);
}

/* The score at which a LIKE candidate passes: the finer the criterion, the higher. */
struct playlist_attr_thresholds {
  int32_t from_seed;
  int32_t by_level[4]; /* [0] also serves every level that has no entry */
};

/* Writes the threshold of a text criterion. Only LIKE has one of its own. */
void playlist_attr_set_threshold(const playlist_attr_thresholds& thresholds, uint32_t op,
                                 uint32_t level, int32_t* threshold);
/* The same for a criterion from a seed. */
void playlist_attr_set_seed_threshold(const playlist_attr_thresholds& thresholds, uint32_t op,
                                      int32_t* threshold);

/* ---- Texts --------------------------------------------------------------------------------- */

/*
 * A copy of the text that lives as long as the map, which is created on first use. Equal texts give
 * one copy; case counts, so that a text comes back as itself.
 */
zvsdk_status _playlist_attribute_cache_value(zcsl_stringmap** map, const char* text,
                                             const char** copy);
/* The same for the decimal form of a number. */
zvsdk_status playlist_attr_cache_number(zcsl_stringmap** map, uint32_t number, const char** copy);

#endif
