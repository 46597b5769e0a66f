/*
 * playlist_datasource.h: where a floor above learns of collections: it is shown each one that has
 * become a handle, and again when that handle has ended, before the record is freed.
 */
#ifndef PLAYLIST_DATASOURCE_H
#define PLAYLIST_DATASOURCE_H

#include "collections/playlist_collection.h"

struct playlist_datasource {
  /* Sets the collection's vibegrid_registration. Its outcome is nobody's concern. */
  zvsdk_status (*offer)(playlist_collection* collection);
  /* Called for a collection that has one. */
  zvsdk_status (*withdraw)(playlist_collection* collection);
};

/* Installed by the module's start, before there are collections; null while it is down. */
extern const playlist_datasource* g_playlist_datasource;

#endif
