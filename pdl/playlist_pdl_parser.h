/*
 * playlist_pdl_parser.h: from a statement to its actions. The whole language, with every message,
 * is described in docs/pdl.md.
 */
#ifndef PLAYLIST_PDL_PARSER_H
#define PLAYLIST_PDL_PARSER_H

#include "collections/playlist_collection.h"
#include "support/zcsl_vector.h"

/*
 * Parses a statement and checks it against the attributes of a collection. The caller holds the
 * collection's read lock.
 *
 * On success `actions` receives the trees, one for each clause, the last clause first; the caller
 * deletes the vector. `uses_seed` (optional) tells whether SEED occurs. Neither is written on
 * failure. `message` (optional) receives the message of a fault or null; the caller frees it.
 */
zvsdk_status _playlist_pdl_parse(const char* statement, playlist_collection* collection,
                                 uint8_t* uses_seed, zcsl_vector** actions, char** message);

#endif
