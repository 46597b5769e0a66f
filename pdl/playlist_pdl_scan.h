/*
 * playlist_pdl_scan.h: the walk over every media that a generation sees: each collection that the
 * target joins, the target first, and in each the idents in the order of their references, which is
 * the order of the attribute records too.
 */
#ifndef PLAYLIST_PDL_SCAN_H
#define PLAYLIST_PDL_SCAN_H

#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_stringtable_internal.h"

/*
 * Calls visit(collection, ident) for every media but the excluded one. A failing visit does not end
 * the walk: the status is that of the last media visited.
 */
template <class Visit>
zvsdk_status playlist_pdl_scan(playlist_collection* target, const playlist_pdl_context* context,
                               Visit&& visit) {
  zvsdk_status status = 0;
  for (uint32_t i = 0; auto* collection = playlist_collection_joined_at(target, i); ++i) {
    const uint32_t excluded =
        collection == context->excluded_collection ? context->excluded_ident : 0;
    const zcsl_stringtable_view idents(collection->idents);
    for (uint32_t k = 0; k < idents.count; ++k) {
      const zcsl_stringtable_ref ident = idents.ref_at(k);
      if (ident != excluded) status = visit(collection, ident);
    }
  }
  return status;
}

#endif
