/*
 * playlist_attr_elements.h: recent elements of a list by the value that asked for them, so that the
 * few values that a scan meets again and again cost a map lookup. The map holds a reference on each
 * of its elements. A hit allocates nothing, a miss the map's entry. Instances keep such a map and
 * share it with nobody.
 */
#ifndef PLAYLIST_ATTR_ELEMENTS_H
#define PLAYLIST_ATTR_ELEMENTS_H

#include "attributes/playlist_attr_lists.h"
#include "support/zcsl_lrumap.h"

/* A map of at most `limit` elements; stays null when memory runs out. */
void playlist_attr_create_elements(zcsl_lrumap** elements, uint32_t limit);
/* Puts an element in the map, with a reference of the map's own, if it can: the map only saves
 * asking the list. */
void playlist_attr_keep_element(zcsl_lrumap* elements, uint32_t value, zvsdk_list_element* element);
/* The element of a value: from the map, or the list's at a level, which is then kept. Borrowed from
 * the map until the next element is put there. */
zvsdk_status playlist_attr_recent_element(zcsl_lrumap* elements, zvsdk_list* list, uint32_t value,
                                          uint32_t level, zvsdk_list_element** element);

#endif
