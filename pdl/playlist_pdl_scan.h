/*
 * playlist_pdl_scan.h: the walk over every media that a generation sees: each collection that the
 * target joins, the target first, and in each the idents in the order of their references, which is
 * the order of the attribute records too.
 */
#ifndef PLAYLIST_PDL_SCAN_H
#define PLAYLIST_PDL_SCAN_H

#include "pdl/playlist_pdl_actions.h"

/*
 * Calls visit(collection, ident) for every media but the excluded one. A failing visit does not end
 * the walk: its status is that of the last media visited. A collection or ident that cannot be
 * fetched ends its own loop.
 */
template <class Visit>
zvsdk_status playlist_pdl_scan(playlist_collection* target, const playlist_pdl_context* context,
                               Visit&& visit) {
  uint32_t collections = 0;
  zvsdk_status status = zcsl_vector_count(target->joined, &collections);
  for (uint32_t i = 0; i < collections; ++i) {
    void* joined = nullptr;
    status = zcsl_vector_getindex(target->joined, i, &joined);
    if (status != 0) break;
    auto* collection = static_cast<playlist_collection*>(joined);
    const uint32_t excluded =
        collection == context->excluded_collection ? context->excluded_ident : 0;
    uint32_t idents = 0;
    status = zcsl_stringtable_count(collection->idents, &idents);
    for (uint32_t k = 0; k < idents; ++k) {
      zcsl_stringtable_ref ident = 0;
      status = zcsl_stringtable_enum(collection->idents, k, &ident, nullptr);
      if (status != 0) break;
      if (ident != excluded) status = visit(collection, ident);
    }
  }
  return status;
}

#endif
