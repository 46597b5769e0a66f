/*
 * playlist_handles.h: move-only owners for the manager's objects. Each gives its reference back
 * through the acquired service table when it goes out of scope.
 */
#ifndef PLAYLIST_HANDLES_H
#define PLAYLIST_HANDLES_H

#include "module/playlist_services.h"
#include "support/zcsl_owners.h"

inline void playlist_release_zdo(zvsdk_zdo* object) {
  g_playlist_zdo_interface->zdo_release(object);
}
inline void playlist_release_list(zvsdk_list* list) {
  g_playlist_lists_interface->list_release(list);
}
inline void playlist_release_element(zvsdk_list_element* element) {
  g_playlist_lists_interface->element_release(element);
}
inline void playlist_release_locale(zvsdk_locale* locale) {
  g_playlist_lists_interface->locale_release(locale);
}
inline void playlist_release_correlates(zvsdk_correlates* correlates) {
  g_playlist_lists_interface->correlates_release(correlates);
}
inline void playlist_release_correlates_set(zvsdk_correlates_set* set) {
  g_playlist_lists_interface->correlates_set_release(set);
}

using playlist_zdo_owner = zcsl_owner<zvsdk_zdo, playlist_release_zdo>;
using playlist_list_owner = zcsl_owner<zvsdk_list, playlist_release_list>;
using playlist_element_owner = zcsl_owner<zvsdk_list_element, playlist_release_element>;
using playlist_locale_owner = zcsl_owner<zvsdk_locale, playlist_release_locale>;
using playlist_correlates_owner = zcsl_owner<zvsdk_correlates, playlist_release_correlates>;
using playlist_correlates_set_owner =
    zcsl_owner<zvsdk_correlates_set, playlist_release_correlates_set>;

#endif
