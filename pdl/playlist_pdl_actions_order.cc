// ORDER: each result's score becomes the value of an integer expression over the leaves.
#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_vector2_internal.h"

namespace {

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return playlist_pdl_logged(status, "playlist_pdl_actions_order", line);
}

// An operand's value. A leaf writes the entry's score, so the value is taken at once.
zvsdk_status operand(playlist_pdl_node* node, playlist_result_entry* entry,
                     playlist_pdl_context* context, int32_t* value) {
  if (node->kind == playlist_pdl_number) {
    *value = playlist_pdl_number_of(node);
    return 0;
  }
  const zvsdk_status status = playlist_pdl_perform(node, entry, nullptr, context);
  *value = entry->score;
  return status;
}

// A division by zero gives 0; what does not fit wraps at 32 bits.
int32_t quotient(int32_t left, int32_t right) {
  if (right == 0) return 0;
  if (right == -1) return static_cast<int32_t>(0u - static_cast<uint32_t>(left));
  return left / right;
}

int32_t calculate(int32_t kind, int32_t left, int32_t right) {
  const auto a = static_cast<uint32_t>(left);
  const auto b = static_cast<uint32_t>(right);
  switch (kind) {
    case playlist_pdl_times:
      return static_cast<int32_t>(a * b);
    case playlist_pdl_plus:
      return static_cast<int32_t>(a + b);
    case playlist_pdl_minus:
      return static_cast<int32_t>(a - b);
    default:
      return quotient(left, right);
  }
}

bool is_operation(const playlist_pdl_node* node) {
  return node->perform == _playlist_pdl_perform_order_op_order;
}

// Evaluates the left operands down a chain, left to right, and keeps each in its node; then the
// last right operand.
zvsdk_status evaluate_operands(playlist_pdl_node* node, playlist_result_entry* entry,
                               playlist_pdl_context* context, playlist_pdl_node** last,
                               int32_t* value) {
  for (playlist_pdl_node* link = node;; link = link->right) {
    if (link->left == nullptr || link->right == nullptr || !playlist_pdl_is_arithmetic(link->kind))
      return logged(playlist_error_internal);
    if (const zvsdk_status status = operand(link->left, entry, context, &link->number))
      return status;
    if (is_operation(link->right)) continue;
    *last = link;
    return operand(link->right, entry, context, value);
  }
}

}  // namespace

zvsdk_status _playlist_pdl_perform_order(playlist_pdl_node* node, playlist_result_entry* entry,
                                         playlist_results* results, playlist_pdl_context* context) {
  playlist_pdl_node* expression = node->right;
  // A bare number is refused even when there is no result to score.
  if (expression == nullptr || expression->perform == nullptr)
    return logged(playlist_error_internal);
  if (entry != nullptr) return playlist_pdl_perform(expression, entry, nullptr, context);

  zvsdk_status status = 0;
  for (playlist_result_entry& result :
       zcsl_vector2_view<playlist_result_entry>(results != nullptr ? results->entries : nullptr)) {
    status = playlist_pdl_perform(expression, &result, nullptr, context);
    if (status == 0) node->score = result.score;
  }
  return status;
}

zvsdk_status _playlist_pdl_perform_order_op_order(playlist_pdl_node* node,
                                                  playlist_result_entry* entry, playlist_results*,
                                                  playlist_pdl_context* context) {
  playlist_pdl_node* last = nullptr;
  int32_t value = 0;
  const zvsdk_status status = evaluate_operands(node, entry, context, &last, &value);
  if (status != 0) return status;
  const playlist_pdl_node* above = node->parent;
  for (playlist_pdl_node* link = last; link != above; link = link->parent)
    value = link->score = calculate(link->kind, link->number, value);
  entry->score = value;
  return 0;
}
