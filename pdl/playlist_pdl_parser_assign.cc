// The last step of the parser: each node of a tree receives the functions that make it executable,
// and the operators are checked against the attributes that they stand beside.
#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_parse.h"
#include "pdl/playlist_pdl_walk.h"

namespace {

enum class children { none, right, both };

// What a node of a kind receives, and which of its children are visited.
struct role {
  playlist_pdl_setup_fn setup = nullptr;
  playlist_pdl_perform_fn perform = nullptr;
  children visited = children::none;
  bool legal = true;
};

constexpr role s_leaf = {};
constexpr role s_refused = {.legal = false};
constexpr role s_comparison = {_playlist_pdl_setup_ident_op_ident,
                               _playlist_pdl_perform_score_id_op_id, children::both};
constexpr role s_comparison_of_scores = {_playlist_pdl_setup_expr_op_expr,
                                         _playlist_pdl_perform_where_expr_op_expr, children::both};

// The other kinds, from one to another. What no row names is a leaf.
struct role_of_kinds {
  playlist_pdl_symbol first;
  playlist_pdl_symbol last;
  role given;
};
constexpr role_of_kinds s_roles[] = {
    {playlist_pdl_none, playlist_pdl_playlist, s_refused},
    {playlist_pdl_whereall, playlist_pdl_whereall, {nullptr, _playlist_pdl_perform_whereall}},
    {playlist_pdl_where,
     playlist_pdl_where,
     {_playlist_pdl_setup_children, _playlist_pdl_perform_where, children::right}},
    {playlist_pdl_and,
     playlist_pdl_or,
     {_playlist_pdl_setup_children, _playlist_pdl_perform_where_op_where, children::both}},
    {playlist_pdl_order,
     playlist_pdl_order,
     {_playlist_pdl_setup_children, _playlist_pdl_perform_order, children::right}},
    {playlist_pdl_times,
     playlist_pdl_minus,
     {_playlist_pdl_setup_children, _playlist_pdl_perform_order_op_order, children::both}},
    {playlist_pdl_rand, playlist_pdl_rand, {nullptr, _playlist_pdl_perform_score_rand}},
    {playlist_pdl_dquote, playlist_pdl_rparen, s_refused},
    {playlist_pdl_in,
     playlist_pdl_in,
     {_playlist_pdl_setup_id_in_list, _playlist_pdl_perform_score_id_in_list}},
    {playlist_pdl_limit, playlist_pdl_limit, {nullptr, _playlist_pdl_perform_limit}},
    {playlist_pdl_per, playlist_pdl_results, s_refused},
    {playlist_pdl_end, playlist_pdl_end, s_refused},
};

bool is_comparison_node(const playlist_pdl_node* node) {
  return node != nullptr && playlist_pdl_is_attribute_operator(node->kind);
}

// Scores are compared in a WHERE clause only.
const role& comparison_role(const playlist_pdl_node* node, int32_t top_kind) {
  if (!is_comparison_node(node->left) && !is_comparison_node(node->right)) return s_comparison;
  return top_kind == playlist_pdl_where ? s_comparison_of_scores : s_refused;
}

const role& role_of(const playlist_pdl_node* node, int32_t top_kind) {
  if (is_comparison_node(node)) return comparison_role(node, top_kind);
  for (const role_of_kinds& row : s_roles)
    if (node->kind >= row.first && node->kind <= row.last) return row.given;
  return s_leaf;
}

zvsdk_status assign_attribute(playlist_pdl_parse_context* context, playlist_pdl_node* node) {
  playlist_attribute_info* info = nullptr;
  const zvsdk_status status =
      playlist_collection_get_attrinfo(context->collection, node->text, &info);
  if (status == 0) node->attribute = info->attribute;
  return status;
}

bool supports(const playlist_attribute* attribute, uint32_t op) {
  uint32_t supported = 0;
  for (uint32_t i = 0; attribute->supported_operators(i, &supported) == 0; ++i) {
    if (supported == op) return true;
  }
  return false;
}

// Checks the operator above a child that is an attribute.
zvsdk_status _playlist_pdl_attr_op_check(playlist_pdl_parse_context* context,
                                         const playlist_pdl_node* child) {
  const playlist_pdl_node* node = child->parent;
  uint32_t op = 0;
  const zvsdk_status status =
      _playlist_pdl_map_symbol_to_attr_op(node->kind, child == node->right, &op);
  if (status != 0) return status;
  if (supports(child->attribute, op)) return 0;
  return playlist_pdl_fault(context, "attribute '%s' does not support operator '%s'", child->text,
                            node->text);
}

zvsdk_status assign_node(playlist_pdl_parse_context* context, playlist_pdl_node* node,
                         const role& given) {
  if (!given.legal) return playlist_error_internal;
  node->setup = given.setup;
  node->perform = given.perform;
  if (node->kind == playlist_pdl_ident) {
    if (const zvsdk_status status = assign_attribute(context, node)) return status;
  } else if (node->kind == playlist_pdl_defthresh) {
    node->is_defthresh = 1;
    node->kind = playlist_pdl_number;
  }
  if (node->attribute == nullptr || !is_comparison_node(node->parent)) return 0;
  return _playlist_pdl_attr_op_check(context, node);
}

// Whether the walk goes on to a child.
bool is_visited(const playlist_pdl_node* child, int32_t top_kind) {
  const children visited = role_of(child->parent, top_kind).visited;
  return visited == children::both || (visited == children::right && child == child->parent->right);
}

}  // namespace

zvsdk_status _playlist_pdl_assign_actions(playlist_pdl_parse_context* context,
                                          playlist_pdl_node* tree, int32_t top_kind) {
  return playlist_pdl_walk(
      tree, [=](const playlist_pdl_node* child) { return is_visited(child, top_kind); },
      [=](playlist_pdl_node* node, uint32_t) {
        return assign_node(context, node, role_of(node, top_kind));
      });
}
