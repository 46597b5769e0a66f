/*
 * playlist_collection.h: the record behind a collection handle, and what the rest of the module
 * does with it. A collection owns its idents, its attribute tables and their records, its strings,
 * its options and a reference on every collection that it joins; the manager counts the references
 * on it and runs playlist_coll_handle_delete when the last one goes.
 *
 * One read-write lock guards every field behind it. Not guarded: find_hint, written by generation
 * under the read lock (a hint only, a relaxed atomic), and the options seen through the option
 * calls.
 *
 * Joining looks at the names of several collections whose locks it does not hold, so a name is
 * exchanged and compared under g_playlist_collection_names_lock, which is taken last. Its owner's
 * lock is enough for reading it.
 */
#ifndef PLAYLIST_COLLECTION_H
#define PLAYLIST_COLLECTION_H

#include "support/zcsl_hashtable.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_stringmap.h"
#include "support/zcsl_stringtable.h"
#include "support/zcsl_thread.h"
#include "support/zcsl_vector.h"
#include "support/zcsl_vector2.h"
#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

inline constexpr uint32_t playlist_collection_magic = 0xc011c011u;

/* One value of one media in one attribute. */
struct playlist_attr_data {
  uint32_t value;     /* bit 31 clear: an integer; set: a reference into the collection's strings */
  uint32_t ident_ref; /* the media */
};
static_assert(sizeof(playlist_attr_data) == 8);

inline constexpr uint32_t playlist_string_flag = 0x80000000u;

/* One attribute that a collection carries. */
struct playlist_attribute_info {
  const playlist_attribute* attribute; /* &table, or null when this module lacks the attribute */
  zcsl_vector2* records;               /* playlist_attr_data, sorted by ident_ref */
  uint32_t find_hint;                  /* where generation last found a media; relaxed atomic */
  playlist_attribute table;            /* own copy: the registry moves when a provider is added */
};

/* One for all collections: held for moments, with no other lock of ours taken inside. */
extern zcsl_spinlock g_playlist_collection_names_lock;

struct playlist_collection {
  uint32_t magic;
  zcsl_rwlock* rwlock; /* may be null; guards everything below */
  zcsl_vector* joined; /* playlist_collection; element 0 is this collection, without a reference */
  zcsl_stringmap* options;
  zcsl_hashtable* attributes; /* attribute name to playlist_attribute_info, in insertion order */
  zcsl_stringtable* idents;
  zcsl_stringtable* strings; /* string values of all attributes; only ever grows */
  char* name;
  char* stored_name;
  zcsl_stringtable* sync_new;
  zcsl_vector2* sync_seen; /* ident_refs */
  uint32_t change_count;   /* relaxed atomic: adding counts outside the lock */
  zvsdk_provider_registration* vibegrid_registration;
};

/* A string table. `*table` must be null before. */
zvsdk_status playlist_collection_create_stringtable(zcsl_stringtable** table);
/* A copy of a text of one, whose texts move when it takes in more. The caller holds a lock. */
zvsdk_status playlist_collection_copy_text(zcsl_stringtable* table, zcsl_stringtable_ref ref,
                                           zcsl_string_owner* copy);
/* The bare record: no attributes, options, name or handle. */
zvsdk_status playlist_collection_create(playlist_collection** collection);
/* Frees a record, finished or not. Null is allowed. */
zvsdk_status playlist_collection_delete(playlist_collection* collection);
/* A record on its way: discarded unless released. */
using playlist_collection_owner = zcsl_owner<playlist_collection, playlist_collection_delete>;
zvsdk_status playlist_collection_addref(playlist_collection* collection);
zvsdk_status playlist_collection_release(playlist_collection* collection);
/* One reference. */
using playlist_collection_reference = zcsl_owner<playlist_collection, playlist_collection_release>;
/* Makes a finished record a handle of the application's. */
zvsdk_status playlist_collection_hand_out(playlist_collection_owner* record,
                                          playlist_collection** collection);
/* Adds the four More-Like-This options with their defaults; stops at the first failure. */
zvsdk_status playlist_collection_set_default_options(playlist_collection* collection);
/* The entry of an attribute, ASCII case ignored. `info` may be null: a question of presence. */
zvsdk_status playlist_collection_get_attrinfo(playlist_collection* collection,
                                              const char* attribute_name,
                                              playlist_attribute_info** info);
/* The name, read under the read lock. */
zvsdk_status playlist_collection_get_name_syncronized(playlist_collection* collection,
                                                      const char** name);

/* A new entry for the attribute of that name, or for none when the name is empty or unknown. */
zvsdk_status _playlist_attribute_info_create(const char* name, playlist_attribute_info** info);
/* Gives an entry its attribute, as a copy; null leaves it without one. */
void _playlist_attribute_info_set(playlist_attribute_info* info,
                                  const playlist_attribute* attribute);
/* Null is allowed. */
zvsdk_status _playlist_attribute_info_delete(playlist_attribute_info* info);
/* The same in the shape that a hash table calls. */
void _playlist_attrinfo_hashtable_delete(void* info, uint32_t size);

/* Entries on their way: discarded unless released. */
using playlist_attribute_info_owner =
    zcsl_owner<playlist_attribute_info, _playlist_attribute_info_delete>;
/* The collection takes the entry under that name, in the place of one that has it; a failure leaves
 * it with the owner. */
zvsdk_status playlist_collection_take_attrinfo(playlist_collection* collection, const char* name,
                                               playlist_attribute_info_owner* info);

/* Element `index` of a vector of collections; null past the end and without a vector. */
inline playlist_collection* playlist_collection_at(zcsl_vector* collections, uint32_t index) {
  void* element = nullptr;
  if (collections != nullptr) zcsl_vector_getindex(collections, index, &element);
  return static_cast<playlist_collection*>(element);
}

/* Element `index` of what the collection is made of, itself first; null past the end. */
inline playlist_collection* playlist_collection_joined_at(const playlist_collection* collection,
                                                          uint32_t index) {
  return playlist_collection_at(collection->joined, index);
}

/* Counts a change of the collection's media. */
inline void playlist_collection_count_change(playlist_collection* collection) {
  __atomic_fetch_add(&collection->change_count, 1, __ATOMIC_RELAXED);
}

/* Finds an ident in the collection and its joins: 1-based index over all, the next behind `start`.
 * Outputs are optional. Warns with "not found" past the last. The caller holds the locks of all
 * (playlist_joined_guard.h). */
zvsdk_status playlist_collection_ident_find(playlist_collection* collection, const char* ident,
                                            uint32_t start, uint32_t* index,
                                            playlist_collection** found_in);
/* Removes an ident and all its values. The caller holds the write lock. */
zvsdk_status playlist_collection_remove_ident(playlist_collection* collection, const char* ident);

/*
 * Adds a media with the data of an object or a list element (each may be null). Takes the write
 * lock and holds it while the attributes collect. Adding a media whose ident is higher than all
 * others costs a constant time for each value.
 */
zvsdk_status _playlist_coll_add_media(playlist_collection* collection, const char* ident,
                                      zvsdk_zdo* object, zvsdk_list_element* element);

/* Orders playlist_attr_data by ident_ref alone. */
int32_t playlist_attrdata_compare_ident(const void* a, const void* b);

#endif
