/*
 * playlist_generate.h: the road from a statement to results, below the exported calls.
 */
#ifndef PLAYLIST_GENERATE_H
#define PLAYLIST_GENERATE_H

#include "collections/playlist_collection.h"

/*
 * Parses, sets up and performs a statement over a collection and all that it joins. `seed` may be
 * null. The outcome and its message go to the error record, without a function name, also on
 * success; the status is the raw one. On success the results are the caller's, without a handle.
 * The caller holds the read locks of all these collections (playlist_joined_guard.h).
 */
zvsdk_status _playlist_generate_results(const char* statement, zvsdk_zdo* seed,
                                        playlist_collection* collection,
                                        playlist_results** results);

#endif
