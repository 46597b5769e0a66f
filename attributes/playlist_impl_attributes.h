/*
 * playlist_impl_attributes.h: the registry of attributes. Each attribute is one table of thirteen
 * slots (zvsdk_playlist.h); nobody else knows what a tempo or a name is.
 *
 * The registry is written at start and by zvsdk_playlist_register_attribute_provider, and has no
 * lock. It holds the tables by value and may move when it grows, so that whoever keeps a table
 * longer than a call keeps a copy.
 */
#ifndef PLAYLIST_IMPL_ATTRIBUTES_H
#define PLAYLIST_IMPL_ATTRIBUTES_H

#include "support/zcsl_vector2.h"
#include "zvsdk_playlist.h"

/* The attribute tables in enumeration order, by value. Deleted by the module's stop. */
extern zcsl_vector2* g_playlist_attribute_mgr;

/* Creates the registry and registers the built-in attributes in their fixed order. The status is
 * that of the last of them alone: one that fails before it is simply missing. */
zvsdk_status playlist_attributes_initialize();
/* Stops what attributes share. The registry itself outlives it. */
zvsdk_status playlist_attributes_shutdown();
/* Copies a table into the registry after its own initialize, which may still change it. */
zvsdk_status playlist_register_attribute(playlist_attribute* attribute);
/* The same for a constant table. */
inline zvsdk_status playlist_register_built_in(playlist_attribute attribute) {
  return playlist_register_attribute(&attribute);
}

/* What the registry does with each record when it is deleted: the record's own shutdown. */
void playlist_attributemgr_delete(void* record);

/* Each registers the table of one built-in attribute. */
zvsdk_status playlist_init_attribute_trackname();
zvsdk_status playlist_init_attribute_artistname();
zvsdk_status playlist_init_attribute_albumname();
zvsdk_status playlist_init_attribute_genre();
zvsdk_status playlist_init_attribute_mood();
zvsdk_status playlist_init_attribute_origin();
zvsdk_status playlist_init_attribute_era();
zvsdk_status playlist_init_attribute_arttype();
zvsdk_status playlist_init_attribute_tempo();
/* Stops what the moods started beyond their table. */
zvsdk_status playlist_shutdown_attribute_mood();

#endif
