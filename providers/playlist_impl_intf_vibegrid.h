/*
 * playlist_impl_intf_vibegrid.h: each collection as a source for a grid (zvsdk_vibegrid.h says what
 * a grid sees of it). In the order of their use:
 *
 *   playlist_impl_intf_vibegrid.cc   the table; offering a collection to the host, withdrawing it
 *   playlist_vibegrid_transaction.cc a transaction from creation to release
 *   playlist_vibegrid_statement.cc   filters become a statement
 *   playlist_vibegrid_estimate.cc    counting moods without running one
 *
 * The host holds a context for each offered collection, which does not keep the collection alive.
 * A context is a handle: who comes with one pins it, looks whether the collection is still there
 * and takes a reference on it. A transaction has such a reference, so that behind it both stay.
 */
#ifndef PLAYLIST_IMPL_INTF_VIBEGRID_H
#define PLAYLIST_IMPL_INTF_VIBEGRID_H

#include "collections/playlist_collection.h"
#include "collections/playlist_datasource.h"
#include "support/zcsl_accum.h"
#include "support/zcsl_hashmap.h"
#include "zvsdk_vibegrid.h"

inline constexpr uint32_t playlist_vibegrid_context_magic = 0xc0de91d5u;

/* `lock` guards the other fields. A transaction reads `collection` without it: that stays as long
 * as there are references on the collection. */
struct playlist_vibegrid_context {
  playlist_collection* collection; /* without a reference; null once it is withdrawn */
  uint32_t estimate_revision;      /* the collection's change count before the map was built */
  zcsl_hashmap* estimate_map;      /* mood id to the number of its values; null until needed */
  zcsl_spinlock lock;
};

struct zvsdk_vibegrid_transaction {
  playlist_vibegrid_context* context; /* its collection with a reference */
  playlist_results* results;          /* null until it has found */
  zcsl_vector* filters;               /* playlist_vibegrid_filter */
  zvsdk_user* user;
  zvsdk_vibegrid_status_callback status_callback; /* may be null */
  void* status_data;
};

struct playlist_vibegrid_filter {
  const char* list_type; /* the caller's, as is the value */
  const char* value;
  uint8_t include; /* or else exclude */
};

/* What collections are offered with. */
extern const playlist_datasource g_playlist_vibegrid_datasource;
extern const zvsdk_vibegrid_datasource_provider s_playlist_vibegrid_datasource_provider;

/* The collection of a context, which may be any pointer, with a reference. */
zvsdk_status playlist_vibegrid_acquire(void* context, playlist_collection** collection);

/*
 * Writes the statement of the filters. The optional outputs tell whether exactly one of them names
 * a mood, and the last filter's value as a number.
 */
zvsdk_status _playlist_process_filters_to_pdl(zcsl_accum* statement, zcsl_vector* filters,
                                              bool* is_single_mood, uint32_t* last_value);

/* The number of values of a mood or of its sub-moods. Any failure says: find and count instead. */
zvsdk_status playlist_vibegrid_estimate(playlist_vibegrid_context* context, uint32_t mood,
                                        uint32_t* count);

zvsdk_status _playlist_vibegrid_datasource_transaction_create(
    void* provider, void* context, zvsdk_vibegrid_transaction** transaction, zvsdk_user* user,
    zvsdk_vibegrid_status_callback callback, void* callback_data);
zvsdk_status _playlist_vibegrid_datasource_transaction_filter_create(
    zvsdk_vibegrid_transaction* transaction, const char* list_type, const char* value,
    const char* condition, uint32_t flag);
zvsdk_status _playlist_vibegrid_datasource_transaction_find(
    zvsdk_vibegrid_transaction* transaction);
zvsdk_status _playlist_vibegrid_datasource_transaction_find_estimate(
    zvsdk_vibegrid_transaction* transaction, uint32_t* count);
zvsdk_status _playlist_vibegrid_datasource_transaction_result_count(
    zvsdk_vibegrid_transaction* transaction, uint32_t* count);
zvsdk_status _playlist_vibegrid_datasource_transaction_result_enum(
    zvsdk_vibegrid_transaction* transaction, uint32_t index, const char** ident,
    const char** collection_name);
zvsdk_status _playlist_vibegrid_datasource_transaction_release(
    zvsdk_vibegrid_transaction* transaction);

#endif
