/*
 * playlist_handles.h: move-only owners for the manager's objects. Each gives its reference back
 * through the acquired service table when it goes out of scope.
 */
#ifndef PLAYLIST_HANDLES_H
#define PLAYLIST_HANDLES_H

#include "module/playlist_services.h"
#include "support/zcsl_owners.h"

/* Gives an object back through a slot of an acquired table. */
template <auto& Table, auto Slot, class Object>
void playlist_give_back(Object* object) {
  (Table->*Slot)(object);
}

template <class Object, auto& Table, auto Slot>
using playlist_owner = zcsl_owner<Object, playlist_give_back<Table, Slot, Object>>;

using playlist_zdo_owner =
    playlist_owner<zvsdk_zdo, g_playlist_zdo_interface, &zvsdk_zdo_interface::zdo_release>;

template <class Object, auto Slot>
using playlist_list_service_owner = playlist_owner<Object, g_playlist_lists_interface, Slot>;

using playlist_list_owner =
    playlist_list_service_owner<zvsdk_list, &zvsdk_listmanager_interface::list_release>;
using playlist_element_owner =
    playlist_list_service_owner<zvsdk_list_element, &zvsdk_listmanager_interface::element_release>;
using playlist_locale_owner =
    playlist_list_service_owner<zvsdk_locale, &zvsdk_listmanager_interface::locale_release>;
using playlist_correlates_owner =
    playlist_list_service_owner<zvsdk_correlates, &zvsdk_listmanager_interface::correlates_release>;
using playlist_correlates_set_owner =
    playlist_list_service_owner<zvsdk_correlates_set,
                                &zvsdk_listmanager_interface::correlates_set_release>;

#endif
