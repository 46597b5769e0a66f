/*
 * playlist_results.h: the results of a generation: idents with scores, each with the collection
 * that it came from. Built privately and without a handle by one generation; from its registration
 * on it is read-only, so that reading takes no lock.
 *
 * Lifetime: an entry names a collection, which must outlive it. Instead of one reference for each
 * entry the object holds one for each collection that entries were taken from, for as long as it
 * lives: the same guarantee at the price of a pointer comparison an entry.
 */
#ifndef PLAYLIST_RESULTS_H
#define PLAYLIST_RESULTS_H

#include "collections/playlist_collection.h"

inline constexpr uint32_t playlist_results_magic = 0x65488654u;

struct playlist_result_entry {
  playlist_collection* collection;
  uint32_t ident; /* the reference in that collection's idents */
  uint32_t value; /* working slot of a PER limit: what decides the entry's group */
  int32_t score;
};

struct playlist_results {
  uint32_t magic;                  /* also the handle's */
  playlist_collection* collection; /* the target, with a reference */
  zcsl_vector2* entries;           /* playlist_result_entry */
  zcsl_vector* contributors;       /* the other collections that entries name, a reference each */
  playlist_collection* latest;     /* the collection of the entry added last; referenced */
};

/* Empty results of a generation over a collection. */
zvsdk_status _playlist_results_create(playlist_collection* collection, playlist_results** results);
/* Adds one media of a collection that the target is made of. Its place in `value` starts at 0. */
zvsdk_status _playlist_results_add_result(playlist_results* results,
                                          playlist_collection* collection, uint32_t ident,
                                          int32_t score);
/* Null is allowed. */
zvsdk_status _playlist_results_delete(playlist_results* results);
/* Results on their way: discarded unless released. */
using playlist_results_owner = zcsl_owner<playlist_results, _playlist_results_delete>;
/* The destructor given to the manager. */
zvsdk_status _playlist_result_handle_delete(void* results);
/* Drops a reference on the handle. */
zvsdk_status _playlist_results_release(playlist_results* results);

/* The ranking: higher scores first, by difference, with no further key. */
int32_t _playlist_results_sort_by_score(const void* a, const void* b);
/* Sorts the entries by it, unless they are sorted so already. Only the first `needed` places are
 * brought into order; the others are about to be deleted. */
zvsdk_status playlist_results_rank(playlist_results* results, uint32_t needed);
/* For a caller that brings together the entries of one media: higher idents first, then higher
 * collection addresses. */
int32_t playlist_results_sort_by_ident(const void* a, const void* b);

#endif
