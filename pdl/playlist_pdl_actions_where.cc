// WHERE: which media enter the results, and how conditions combine.
#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_scan.h"

namespace {

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return playlist_pdl_logged(status, "playlist_pdl_actions_where", line);
}

bool passes(const playlist_pdl_node* node) {
  return node->score >= node->threshold;
}

bool compare(int32_t kind, int32_t left, int32_t right) {
  switch (kind) {
    case playlist_pdl_eq:
      return left == right;
    case playlist_pdl_ne:
      return left != right;
    case playlist_pdl_lt:
      return left < right;
    case playlist_pdl_le:
      return left <= right;
    case playlist_pdl_gt:
      return left > right;
    default:
      return left >= right;
  }
}

// Gives one side of a score comparison its score.
zvsdk_status score_side(const playlist_pdl_node* node, playlist_pdl_node* child,
                        playlist_result_entry* entry, playlist_pdl_context* context) {
  if (child->kind == playlist_pdl_number)
    child->score = child->number;
  else if (node->right->kind == playlist_pdl_defthresh)
    child->score = child->threshold;
  else
    return playlist_pdl_perform(child, entry, nullptr, context);
  return 0;
}

// Evaluates the links of a chain of AND and OR until one settles the outcome, which is then that of
// all links above it; `last` is the settling one.
zvsdk_status evaluate_chain(playlist_pdl_node* node, playlist_result_entry* entry,
                            playlist_pdl_context* context, playlist_pdl_node** last,
                            bool* outcome) {
  for (playlist_pdl_node* link = node;; link = link->right) {
    *last = link;
    if (link->left == nullptr || link->right == nullptr) return logged(playlist_error_internal);
    link->score = -1000;
    link->threshold = 1000;
    zvsdk_status status = playlist_pdl_perform(link->left, entry, nullptr, context);
    if (status != 0) return status;
    *outcome = passes(link->left);
    if (*outcome == (link->kind == playlist_pdl_or)) return 0;
    if (link->right->perform == _playlist_pdl_perform_where_op_where) continue;
    status = playlist_pdl_perform(link->right, entry, nullptr, context);
    *outcome = passes(link->right);
    return status;
  }
}

}  // namespace

zvsdk_status _playlist_pdl_perform_where(playlist_pdl_node* node, playlist_result_entry* entry,
                                         playlist_results* results, playlist_pdl_context* context) {
  playlist_pdl_node* condition = node->right;
  if (condition == nullptr) return logged(playlist_error_internal);
  if (entry != nullptr) return playlist_pdl_perform(condition, entry, nullptr, context);
  if (results == nullptr) return logged(playlist_error_internal);

  playlist_result_entry candidate = {};
  return playlist_pdl_scan(
      results->collection, context, [&](playlist_collection* collection, uint32_t ident) {
        candidate.collection = collection;
        candidate.ident = ident;
        const zvsdk_status status = playlist_pdl_perform(condition, &candidate, nullptr, context);
        if (status != 0 || !passes(condition)) return status;
        return _playlist_results_add_result(results, collection, ident, candidate.score);
      });
}

zvsdk_status _playlist_pdl_perform_whereall(playlist_pdl_node* node, playlist_result_entry*,
                                            playlist_results* results,
                                            playlist_pdl_context* context) {
  if (results == nullptr) return 0;
  const zvsdk_status status = playlist_pdl_scan(
      results->collection, context, [&](playlist_collection* collection, uint32_t ident) {
        return _playlist_results_add_result(results, collection, ident, 1000);
      });
  node->score = 1000;
  return status;
}

zvsdk_status _playlist_pdl_perform_where_op_where(playlist_pdl_node* node,
                                                  playlist_result_entry* entry, playlist_results*,
                                                  playlist_pdl_context* context) {
  playlist_pdl_node* last = nullptr;
  bool outcome = false;
  const zvsdk_status status = evaluate_chain(node, entry, context, &last, &outcome);
  if (status != 0 || !outcome) return status;  // every link stands at -1000 already
  for (playlist_pdl_node* link = node;; link = link->right) {
    link->score = 1000;
    if (link == last) return 0;
  }
}

zvsdk_status _playlist_pdl_perform_where_expr_op_expr(playlist_pdl_node* node,
                                                      playlist_result_entry* entry,
                                                      playlist_results*,
                                                      playlist_pdl_context* context) {
  if (node->left == nullptr || node->right == nullptr) return logged(playlist_error_internal);
  zvsdk_status status = score_side(node, node->left, entry, context);
  if (status == 0) status = score_side(node, node->right, entry, context);
  if (status != 0) return status;
  node->score = -1000;
  if (!playlist_pdl_is_comparison(node->kind)) return logged(playlist_error_internal);
  if (compare(node->kind, node->left->score, node->right->score)) node->score = 1000;
  return 0;
}
