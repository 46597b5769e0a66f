/*
 * playlist_pdl_actions.h: what the nodes of a tree do. Setup runs once for each statement and puts
 * the criteria into attribute instances; perform runs for the clause and, inside it, for each
 * media. Nodes call their children through the functions in them.
 *
 * A perform function receives the media in `entry` and leaves its score there and in the node; with
 * a null `entry` it works on the results as a whole. Scores: 1000 is fully true, -1000 fully false,
 * between them only LIKE; playlist_score_ignored is no opinion. A node passes when its score is at
 * or above its threshold.
 *
 * Nodes and results belong to one generation; the read locks of the collection and of all that it
 * joins are held throughout.
 */
#ifndef PLAYLIST_PDL_ACTIONS_H
#define PLAYLIST_PDL_ACTIONS_H

#include "pdl/playlist_pdl_node.h"
#include "pdl/playlist_results.h"
#include "support/zcsl_log.h"
#include "support/zcsl_vector.h"

/* What one generation carries through its evaluation. */
struct playlist_pdl_context {
  uint32_t seed;           /* state of the random generator */
  uint32_t excluded_ident; /* the seed's own, which is kept out; 0: none */
  playlist_collection* excluded_collection;
};

/* Sets up every tree. On failure `message` receives the tree's message, which the caller frees. */
zvsdk_status _playlist_pdl_setup_actions(zcsl_vector* actions, zvsdk_zdo* seed, char** message);
/* Runs WHERE, ORDER, PER limits from the smallest up and RESULTS limits, then ranks the results.
 * The vector is left in that order. With null results the actions work on `entry` alone. */
zvsdk_status _playlist_pdl_perform_actions(zcsl_vector* actions, playlist_result_entry* entry,
                                           playlist_results* results,
                                           playlist_pdl_context* context);

/* Calls visit(action) for each tree of a statement, in the vector's order, until it fails. */
template <class Visit>
zvsdk_status playlist_pdl_each_action(zcsl_vector* actions, Visit visit) {
  uint32_t count = 0;
  zvsdk_status status = zcsl_vector_count(actions, &count);
  for (uint32_t i = 0; i < count && status == 0; ++i) {
    void* action = nullptr;
    status = zcsl_vector_getindex(actions, i, &action);
    if (status == 0) status = visit(static_cast<playlist_pdl_node*>(action));
  }
  return status;
}

/* Of clauses and operators between conditions or scores: both children in turn. */
zvsdk_status _playlist_pdl_setup_children(playlist_pdl_node* node, zvsdk_zdo* seed);
/* Of a comparison of an attribute with a value or the seed: makes the criterion. */
zvsdk_status _playlist_pdl_setup_ident_op_ident(playlist_pdl_node* node, zvsdk_zdo* seed);
/* Of IN, which needs no criterion. */
zvsdk_status _playlist_pdl_setup_id_in_list(playlist_pdl_node* node, zvsdk_zdo* seed);
/* Of a comparison of scores: each side's number is the threshold of the other. */
zvsdk_status _playlist_pdl_setup_expr_op_expr(playlist_pdl_node* node, zvsdk_zdo* seed);

#define PLAYLIST_PDL_PERFORM(name)                                                                 \
  zvsdk_status _playlist_pdl_perform_##name(playlist_pdl_node* node, playlist_result_entry* entry, \
                                            playlist_results* results,                             \
                                            playlist_pdl_context* context)
PLAYLIST_PDL_PERFORM(whereall);
PLAYLIST_PDL_PERFORM(where);
PLAYLIST_PDL_PERFORM(where_op_where);
PLAYLIST_PDL_PERFORM(where_expr_op_expr);
PLAYLIST_PDL_PERFORM(order);
PLAYLIST_PDL_PERFORM(order_op_order);
PLAYLIST_PDL_PERFORM(score_id_op_id);
PLAYLIST_PDL_PERFORM(score_id_in_list);
PLAYLIST_PDL_PERFORM(score_rand);
PLAYLIST_PDL_PERFORM(limit);
#undef PLAYLIST_PDL_PERFORM

/* A status, logged where it arises. A fault of the statement is the caller's and not logged. */
inline zvsdk_status playlist_pdl_logged(zvsdk_status status, const char* source,
                                        uint32_t line = __builtin_LINE()) {
  return status == playlist_error_pdl_syntax ? status : zcsl_logged(status, line, source);
}

/* Performs a child. A bare number has nothing to perform: error_internal. */
inline zvsdk_status playlist_pdl_perform(playlist_pdl_node* node, playlist_result_entry* entry,
                                         playlist_results* results, playlist_pdl_context* context) {
  if (node->perform == nullptr)
    return playlist_pdl_logged(playlist_error_internal, "playlist_pdl_actions");
  return node->perform(node, entry, results, context);
}

#endif
