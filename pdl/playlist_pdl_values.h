/*
 * playlist_pdl_values.h: the values of one attribute in one collection, as a node walks them. The
 * attribute is looked up by name once for each collection that the node meets, not for each media.
 *
 * Use: enter a collection, then find one media after the other. Media come in the order of the
 * records nearly always, so that a find looks at the next record or two; any other order is found
 * by a search from there. Entering another collection, or leaving, stores the place as the
 * collection's hint for the next generation.
 *
 * The collection's read lock is held for as long as it is entered.
 */
#ifndef PLAYLIST_PDL_VALUES_H
#define PLAYLIST_PDL_VALUES_H

#include "collections/playlist_collection.h"
#include "support/zcsl_stringtable_internal.h"

struct playlist_pdl_values {
  playlist_collection* collection; /* the one that is entered, or null */
  playlist_attribute_info* info;   /* null: the collection lacks the attribute */
  const playlist_attr_data* records;
  uint32_t count;
  uint32_t position;   /* where the next find starts */
  bool in_order;       /* the records are sorted, as they are unless foreign data say otherwise */
  zvsdk_status status; /* the outcome of the look-up; warn_not_found when the attribute is absent */
  zcsl_stringtable_view strings{nullptr}; /* the texts that string values refer to */
};

/* Enters a collection. An attribute that this module lacks counts as absent. */
zvsdk_status playlist_pdl_values_enter_anew(playlist_pdl_values* values,
                                            playlist_collection* collection, const char* attribute);
inline zvsdk_status playlist_pdl_values_enter(playlist_pdl_values* values,
                                              playlist_collection* collection,
                                              const char* attribute) {
  if (values->collection == collection) return values->status;
  return playlist_pdl_values_enter_anew(values, collection, attribute);
}
/* Stores the hint and forgets the collection. */
void playlist_pdl_values_leave(playlist_pdl_values* values);

/* The text of a string value; a status when the value refers to none. */
inline zvsdk_status playlist_pdl_values_text(const playlist_pdl_values* values, uint32_t value,
                                             const char** text) {
  const zcsl_stringtable_ref ref = value & ~playlist_string_flag;
  *text = values->strings.text_of(ref);
  if (*text != nullptr) return 0;
  return zcsl_stringtable_get_value(values->collection->strings, ref, text, nullptr);
}

/* The first record of a media, or `count` when it has none. The others follow it. */
uint32_t playlist_pdl_values_find(playlist_pdl_values* values, uint32_t ident);
/* Whether the record at `index`, which may be the end, is one of the media's. */
inline bool playlist_pdl_values_belongs(const playlist_pdl_values& values, uint32_t index,
                                        uint32_t ident) {
  return index < values.count && values.records[index].ident_ref == ident;
}

#endif
