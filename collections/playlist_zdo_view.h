/*
 * playlist_zdo_view.h: a media of a collection as a data object. The manager's data-object service
 * is given a provider table and a view record, and calls back for values.
 *
 * A view is built whole, under the collection's read lock, and is a copy of the media's values at
 * that moment; later reads take no lock. It holds a reference on the user, the collection and the
 * locale, and goes when the last reference on the object goes. Building costs one search in each
 * attribute's records.
 *
 * Reading makes attribute instances when they are first needed, without a lock: one object is for
 * one thread at a time. Objects of their own may be read by any number of threads, also of the same
 * media. Texts handed out live as long as the object.
 */
#ifndef PLAYLIST_ZDO_VIEW_H
#define PLAYLIST_ZDO_VIEW_H

#include "collections/playlist_collection.h"

struct playlist_zdo_view {
  zvsdk_user* user;                  /* with a reference */
  zvsdk_locale* locale;              /* with a reference, or null: what texts are rendered in */
  playlist_collection* collection;   /* with a reference */
  char* ident_text;                  /* the media's ident_ref in decimal; owned */
  zcsl_hashtable* attribute_entries; /* attribute name to playlist_zdo_entry */
  zcsl_hashtable* values;            /* attribute name to each of its playlist_zdo_value */
};

struct playlist_zdo_entry {
  playlist_attribute_info* info;         /* the collection's */
  playlist_attribute_instance* instance; /* null until a value is asked for; owned */
};

struct playlist_zdo_value {
  uint32_t value;
  uint32_t ident_ref;
  char* string; /* of a text value. A copy: the collection's texts move when it takes in more */
};

extern const zvsdk_zdo_provider s_playlist_zdo_provider;

/* Makes the map from value keys to attributes, unless it exists. Any number of threads at once. */
zvsdk_status playlist_zdo_initialize();
/* Deletes it, when the module stops. */
zvsdk_status playlist_zdo_shutdown();

/* Frees a view, finished or not. */
void _playlist_zdo_delete(playlist_zdo_view* view);

/* The destructors of the two tables. */
void _playlist_zdo_attrinst_delete(void* entry, uint32_t size);
void playlist_zdo_value_delete(void* value, uint32_t size);

#endif
