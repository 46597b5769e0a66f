// Setup: criteria go into attribute instances, thresholds are fixed, numbers are read.
#include <utility>

#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_accum.h"
#include "support/zcsl_string.h"

namespace {

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return playlist_pdl_logged(status, "playlist_pdl_actions_setup", line);
}

// A node without the function has nothing to set up.
zvsdk_status setup(playlist_pdl_node* node, zvsdk_zdo* seed) {
  return node->setup != nullptr ? node->setup(node, seed) : 0;
}

// Moves a failed child's message up.
void take_message(playlist_pdl_node* node, playlist_pdl_node* parent) {
  for (playlist_pdl_node* child : {parent->left, parent->right}) {
    char* text = std::exchange(child->error_text, nullptr);
    if (node->error_text == nullptr)
      node->error_text = text;
    else
      zcsl_string_free(text);
  }
}

// The two sides of a comparison between an attribute and a value.
struct sides {
  playlist_pdl_node* attribute;
  playlist_pdl_node* value;
  uint32_t op;
};

zvsdk_status find_sides(playlist_pdl_node* node, sides* found) {
  if (node->left == nullptr || node->right == nullptr) return playlist_error_internal;
  const bool on_left = node->left->kind == playlist_pdl_ident;
  if (on_left && node->right->kind == playlist_pdl_ident) return playlist_error_internal;
  found->attribute = on_left ? node->left : node->right;
  found->value = on_left ? node->right : node->left;
  if (found->attribute->kind != playlist_pdl_ident || found->attribute->attribute == nullptr)
    return playlist_error_internal;
  return _playlist_pdl_map_symbol_to_attr_op(node->kind, !on_left, &found->op);
}

// An attribute that lacks the slot supports no value at all.
zvsdk_status set_criterion(playlist_pdl_node* node, const sides& side, zvsdk_zdo* seed) {
  const playlist_attribute* attribute = side.attribute->attribute;
  playlist_attribute_instance* instance = side.attribute->instance;
  if (seed != nullptr && side.value->kind == playlist_pdl_seed) {
    if (attribute->set_seed_criteria == nullptr) return playlist_error_unsupported;
    return attribute->set_seed_criteria(instance, side.op, seed, &node->threshold);
  }
  if (attribute->set_string_criteria == nullptr) return playlist_error_unsupported;
  return attribute->set_string_criteria(instance, side.op, side.value->text, &node->threshold);
}

// Words a failed criterion. A seed without data for the attribute is no failure: the comparison
// stays without an opinion.
zvsdk_status criterion_failure(playlist_pdl_node* node, const sides& side, zvsdk_status failure) {
  const char* attribute = side.attribute->text;
  const char* value = side.value->text;
  switch (zvsdk_low_word(failure)) {
    case 420:
      return 0;
    case 11:
      node->error_text =
          zcsl_string_mprintf("unsupported value '%s' for attribute '%s'", value, attribute);
      return failure;
    case 723:
      node->error_text = zcsl_string_mprintf(
          "no locale loaded to support '%s' operator for attribute '%s'", node->text, attribute);
      return failure;
    case 3:
      node->error_text =
          zcsl_string_mprintf("unknown value '%s' for attribute '%s'", value, attribute);
      return playlist_error_pdl_syntax;
    default:
      node->error_text =
          zcsl_string_mprintf("error setting criteria '%s' for attribute '%s'", value, attribute);
      return failure;
  }
}

// One side of a score comparison sets the score at which the other side counts as true.
zvsdk_status set_threshold(playlist_pdl_node* node, playlist_pdl_node* from,
                           playlist_pdl_node* to) {
  if (from->kind == playlist_pdl_number) {
    to->threshold = playlist_pdl_number_of(from);
    return 0;
  }
  if (!node->right->is_defthresh) {
    to->threshold = -1000;
    return 0;
  }
  to->threshold = from->threshold;
  char* text = zcsl_string_mprintf("%d", to->threshold);
  if (text == nullptr) return playlist_error_no_memory;
  zcsl_string_free(std::exchange(to->text, text));
  to->number_known = 0;
  return 0;
}

}  // namespace

zvsdk_status _playlist_pdl_setup_actions(zcsl_vector* actions, zvsdk_zdo* seed, char** message) {
  return playlist_pdl_each_action(actions, [=](playlist_pdl_node* action) {
    const zvsdk_status status = setup(action, seed);
    if (status != 0) *message = std::exchange(action->error_text, nullptr);
    return status;
  });
}

// A chain of operators hangs on the right: it is followed here, not by recursion.
zvsdk_status _playlist_pdl_setup_children(playlist_pdl_node* node, zvsdk_zdo* seed) {
  for (playlist_pdl_node* link = node;; link = link->right) {
    if (link->left == nullptr || link->right == nullptr) return logged(playlist_error_internal);
    zvsdk_status status = setup(link->left, seed);
    const bool goes_on = link->right->setup == _playlist_pdl_setup_children;
    if (status == 0 && !goes_on) status = setup(link->right, seed);
    if (status != 0) take_message(node, link);
    if (status != 0 || !goes_on) return status;
  }
}

zvsdk_status _playlist_pdl_setup_ident_op_ident(playlist_pdl_node* node, zvsdk_zdo* seed) {
  sides side = {};
  zvsdk_status status = find_sides(node, &side);
  if (status != 0) return logged(status);
  playlist_pdl_node* attribute = side.attribute;
  attribute->has_criterion = 0;
  status = attribute->attribute->create_instance(&attribute->instance);
  if (status != 0) return zvsdk_is_error(status) ? logged(status) : 0;

  node->threshold = 1000;
  status = set_criterion(node, side, seed);
  if (status != 0) return logged(criterion_failure(node, side, status));
  side.value->score = playlist_pdl_number_of(side.value);
  attribute->has_criterion = 1;
  return 0;
}

zvsdk_status _playlist_pdl_setup_id_in_list(playlist_pdl_node* node, zvsdk_zdo*) {
  node->threshold = 1000;
  node->score = -1000;
  return 0;
}

zvsdk_status _playlist_pdl_setup_expr_op_expr(playlist_pdl_node* node, zvsdk_zdo* seed) {
  if (node->left == nullptr || node->right == nullptr) return logged(playlist_error_internal);
  zvsdk_status status = setup(node->left, seed);
  if (status == 0) status = setup(node->right, seed);
  if (status != 0) {
    take_message(node, node);
    return status;
  }
  status = set_threshold(node, node->left, node->right);
  if (status == 0) status = set_threshold(node, node->right, node->left);
  return logged(status);
}
