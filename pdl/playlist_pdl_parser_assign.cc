// The last step of the parser: each node of a tree receives the functions that make it executable,
// and the operators are checked against the attributes that they stand beside.
#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_parse.h"
#include "pdl/playlist_pdl_walk.h"

namespace {

// What a node of a kind receives, and which of its children are visited.
struct role {
  bool legal = true;
  playlist_pdl_setup_fn setup = nullptr;
  playlist_pdl_perform_fn perform = nullptr;
  bool visit_left = false;
  bool visit_right = false;
};

constexpr role s_refused = {.legal = false};
constexpr role s_leaf = {};
constexpr role s_whereall = {.perform = _playlist_pdl_perform_whereall};
constexpr role s_where = {.setup = _playlist_pdl_setup_children,
                          .perform = _playlist_pdl_perform_where,
                          .visit_right = true};
constexpr role s_order = {.setup = _playlist_pdl_setup_children,
                          .perform = _playlist_pdl_perform_order,
                          .visit_right = true};
constexpr role s_logic = {.setup = _playlist_pdl_setup_children,
                          .perform = _playlist_pdl_perform_where_op_where,
                          .visit_left = true,
                          .visit_right = true};
constexpr role s_arithmetic = {.setup = _playlist_pdl_setup_children,
                               .perform = _playlist_pdl_perform_order_op_order,
                               .visit_left = true,
                               .visit_right = true};
constexpr role s_rand = {.perform = _playlist_pdl_perform_score_rand};
constexpr role s_comparison_of_scores = {.setup = _playlist_pdl_setup_expr_op_expr,
                                         .perform = _playlist_pdl_perform_where_expr_op_expr,
                                         .visit_left = true,
                                         .visit_right = true};
constexpr role s_comparison = {.setup = _playlist_pdl_setup_ident_op_ident,
                               .perform = _playlist_pdl_perform_score_id_op_id,
                               .visit_left = true,
                               .visit_right = true};
constexpr role s_in = {.setup = _playlist_pdl_setup_id_in_list,
                       .perform = _playlist_pdl_perform_score_id_in_list};
constexpr role s_limit = {.perform = _playlist_pdl_perform_limit};

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
  if (playlist_pdl_is_arithmetic(node->kind)) return s_arithmetic;
  switch (node->kind) {
    case playlist_pdl_whereall:
      return s_whereall;
    case playlist_pdl_where:
      return s_where;
    case playlist_pdl_order:
      return s_order;
    case playlist_pdl_and:
    case playlist_pdl_or:
      return s_logic;
    case playlist_pdl_rand:
      return s_rand;
    case playlist_pdl_in:
      return s_in;
    case playlist_pdl_limit:
      return s_limit;
    case playlist_pdl_none:
    case playlist_pdl_generate:
    case playlist_pdl_playlist:
    case playlist_pdl_dquote:
    case playlist_pdl_squote:
    case playlist_pdl_comma:
    case playlist_pdl_lparen:
    case playlist_pdl_rparen:
    case playlist_pdl_per:
    case playlist_pdl_results:
    case playlist_pdl_end:
      return s_refused;
    default:
      return s_leaf;
  }
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
  const role& given = role_of(child->parent, top_kind);
  return child == child->parent->left ? given.visit_left : given.visit_right;
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
