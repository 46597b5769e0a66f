/*
 * playlist_services.h: the module's state while it is up. The manager, the client reference and the
 * acquired service tables are written only by start and stop under the init lock
 * (module/zvsdk_playlist.cc) and read everywhere without one: an application must not call into the
 * module during its last shutdown. What is known of storage is made and freed there too; in between
 * the calls on storage write it.
 */
#ifndef PLAYLIST_SERVICES_H
#define PLAYLIST_SERVICES_H

#include "support/zcsl_stringmap.h"
#include "zvsdk_manager.h"

extern zvsdk_sdkmanager* g_playlist_sdkmanager_interface;
extern zvsdk_client* g_playlist_client_ref;

extern zvsdk_license_interface* g_playlist_license_interface;
extern zvsdk_errorinfo_interface* g_playlist_errorinfo_interface;
extern zvsdk_handlemanager_interface* g_playlist_handlemanager_interface;
extern zvsdk_userinfo_interface* g_playlist_userinfo_interface;
extern zvsdk_listmanager_interface* g_playlist_lists_interface;
extern zvsdk_zdo_interface* g_playlist_zdo_interface;
extern zvsdk_serialization_interface* g_playlist_serialization_interface;

/* The names of the stored collections, whether they must be read anew, and the storage folder. */
extern zcsl_stringmap* g_playlist_storage_names;
extern uint8_t g_playlist_storage_dirty; /* relaxed atomic accesses only */
extern char* g_playlist_storage_location;

/* Acquires the seven tables in their order; the first failure ends it. */
zvsdk_status playlist_services_acquire();
/* Gives back every table that is held and clears its pointer. */
void playlist_services_release();

#endif
