/*
 * playlist_pdl_walk.h: the walk over a tree for whoever looks at all of its nodes: parents first,
 * left before right. It follows the links between the nodes and does not recurse: a chain may be of
 * any length.
 */
#ifndef PLAYLIST_PDL_WALK_H
#define PLAYLIST_PDL_WALK_H

#include "pdl/playlist_pdl_node.h"

/* The node behind `node`, or null; `depth` goes with it. */
template <class Enters>
playlist_pdl_node* playlist_pdl_walk_next(playlist_pdl_node* node, const playlist_pdl_node* top,
                                          uint32_t* depth, Enters& enters) {
  const auto leads_on = [&](playlist_pdl_node* child) { return child != nullptr && enters(child); };
  ++*depth;
  if (leads_on(node->left)) return node->left;
  if (leads_on(node->right)) return node->right;
  for (--*depth; node != top; --*depth) {
    playlist_pdl_node* const parent = node->parent;
    if (node == parent->left && leads_on(parent->right)) return parent->right;
    node = parent;
  }
  return nullptr;
}

/* Calls visit(node, depth), with depth 0 for `top`, until it fails. Below a visited node the walk
 * takes those children for which enters(child) holds. */
template <class Enters, class Visit>
zvsdk_status playlist_pdl_walk(playlist_pdl_node* top, Enters enters, Visit visit) {
  uint32_t depth = 0;
  for (playlist_pdl_node* node = top; node != nullptr;
       node = playlist_pdl_walk_next(node, top, &depth, enters)) {
    if (const zvsdk_status status = visit(node, depth)) return status;
  }
  return 0;
}

#endif
