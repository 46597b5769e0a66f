// The parser's rules for the ORDER clause: a shunting-yard over the operator stack.
#include "pdl/playlist_pdl_parse.h"

namespace {

zvsdk_status push_operator(playlist_pdl_parse_context* context, int32_t symbol) {
  void* value = reinterpret_cast<void*>(static_cast<intptr_t>(symbol));
  return zcsl_stack_push(context->operators.get(), value) == 0 ? 0 : playlist_error_no_memory;
}

int32_t top_operator(playlist_pdl_parse_context* context) {
  void* value = nullptr;
  zcsl_stack_top(context->operators.get(), &value);
  return static_cast<int32_t>(reinterpret_cast<intptr_t>(value));
}

bool is_product(int32_t symbol) {
  return symbol == playlist_pdl_times || symbol == playlist_pdl_divide;
}

// Takes the top operator to the node stack, over its two operands.
zvsdk_status reduce(playlist_pdl_parse_context* context) {
  const int32_t symbol = top_operator(context);
  void* popped = nullptr;
  zcsl_stack_pop(context->operators.get(), &popped);
  const zvsdk_status status = _playlist_pdl_push_node(context->nodes.get(), symbol);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(context->nodes.get(), playlist_pdl_form::left_right_parent);
}

// A sum that arrives behind products closes them. Operators of one strength stay pending, which
// makes them bind to the right.
zvsdk_status close_products(playlist_pdl_parse_context* context, int32_t arriving) {
  if (is_product(arriving)) return 0;
  while (is_product(top_operator(context))) {
    if (const zvsdk_status status = reduce(context)) return status;
  }
  return 0;
}

// RAND LPAREN number [ COMMA number ] RPAREN
zvsdk_status rand_term(playlist_pdl_parse_context* context) {
  zcsl_stack* nodes = context->nodes.get();
  _playlist_pdl_getsym(context);
  zvsdk_status status = _playlist_pdl_push_node(nodes, playlist_pdl_rand);
  if (status == 0) status = _playlist_pdl_expect(context, playlist_pdl_lparen);
  if (status == 0) status = playlist_pdl_expect_number(context);
  if (status != 0) return status;
  if (context->symbol == playlist_pdl_comma) {
    _playlist_pdl_getsym(context);
    status = playlist_pdl_expect_number(context);
  } else {
    status = _playlist_pdl_push_node(nodes, playlist_pdl_none);
  }
  if (status == 0) status = _playlist_pdl_expect(context, playlist_pdl_rparen);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(nodes, playlist_pdl_form::parent_left_right);
}

// LPAREN orderclause RPAREN: the sentinel keeps what is pending outside out of it.
zvsdk_status group(playlist_pdl_parse_context* context) {
  zvsdk_status status = push_operator(context, playlist_pdl_none);
  if (status != 0) return status;
  status = playlist_pdl_parenthesised(context, _playlist_pdl_orderclause_E);
  void* sentinel = nullptr;
  zcsl_stack_pop(context->operators.get(), &sentinel);
  return status;
}

// orderterm := number | LPAREN orderclause RPAREN | RAND ... | MINUS orderterm | expression
// A MINUS is read and thrown away.
zvsdk_status _playlist_pdl_orderclause_P(playlist_pdl_parse_context* context) {
  while (context->symbol == playlist_pdl_minus) _playlist_pdl_getsym(context);
  switch (context->symbol) {
    case playlist_pdl_number:
      return playlist_pdl_push_symbol(context);
    case playlist_pdl_lparen:
      return group(context);
    case playlist_pdl_rand:
      return rand_term(context);
    default:
      return _playlist_pdl_expression(context);
  }
}

// An operator and the term behind it.
zvsdk_status operation(playlist_pdl_parse_context* context) {
  const int32_t symbol = context->symbol;
  _playlist_pdl_getsym(context);
  zvsdk_status status = close_products(context, symbol);
  if (status == 0) status = push_operator(context, symbol);
  return status != 0 ? status : _playlist_pdl_orderclause_P(context);
}

}  // namespace

// orderclause := orderterm { ( TIMES | DIVIDE | PLUS | MINUS ) orderterm }
// A term that fails behind an operator ends the clause but not the parse: what is pending is
// reduced, and the statement is refused at its end at the latest. Lack of memory ends all.
zvsdk_status _playlist_pdl_orderclause_E(playlist_pdl_parse_context* context) {
  zvsdk_status status = _playlist_pdl_orderclause_P(context);
  if (status != 0) return status;
  while (status == 0 && playlist_pdl_is_arithmetic(context->symbol)) status = operation(context);
  if (status == playlist_error_no_memory) return status;
  if (context->failure == 0) context->failure = status;
  while (top_operator(context) != playlist_pdl_none) {
    if (const zvsdk_status failure = reduce(context)) return failure;
  }
  return 0;
}
