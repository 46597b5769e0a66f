// The parser's top: statement and LIMIT, the faults and the steps that all rules share.
#include "pdl/playlist_pdl_parser.h"

#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_parse.h"
#include "support/zcsl_accum.h"

namespace {

constexpr char s_source[] = "playlist_pdl_parser";

// How deep parentheses may nest. A level costs a few hundred bytes of stack in the descent and, as
// the left operand of two operators, up to two levels of evaluation: that much is safe on a thread
// with a quarter of a megabyte, unoptimized and instrumented.
constexpr uint32_t s_max_depth = 100;

// [ WHERE whereclause ]
zvsdk_status where_part(playlist_pdl_parse_context* context) {
  zcsl_stack* nodes = context->nodes.get();
  const bool present = context->symbol == playlist_pdl_where;
  zvsdk_status status =
      _playlist_pdl_push_node(nodes, present ? playlist_pdl_where : playlist_pdl_whereall);
  if (status == 0) status = _playlist_pdl_push_node(nodes, playlist_pdl_none);
  if (status != 0) return status;
  if (present) {
    _playlist_pdl_getsym(context);
    status = _playlist_pdl_whereclause(context);
  } else {
    status = _playlist_pdl_push_node(nodes, playlist_pdl_none);
  }
  if (status != 0) return status;
  return _playlist_pdl_make_tree(nodes, playlist_pdl_form::parent_left_right);
}

zvsdk_status start_operators(playlist_pdl_parse_context* context) {
  zvsdk_status status = zcsl_stack_create(context->operators.out(), 0, nullptr);
  if (status == 0) status = zcsl_stack_push(context->operators.get(), nullptr);
  return status == 0 ? 0 : playlist_error_no_memory;
}

// [ ORDER [ BY ] orderclause ]
zvsdk_status order_part(playlist_pdl_parse_context* context) {
  if (context->symbol != playlist_pdl_order) return 0;
  _playlist_pdl_getsym(context);
  if (context->symbol == playlist_pdl_by) _playlist_pdl_getsym(context);
  zcsl_stack* nodes = context->nodes.get();
  zvsdk_status status = _playlist_pdl_push_node(nodes, playlist_pdl_order);
  if (status == 0) status = _playlist_pdl_push_node(nodes, playlist_pdl_none);
  if (status == 0) status = start_operators(context);
  if (status == 0) status = _playlist_pdl_orderclause_E(context);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(nodes, playlist_pdl_form::parent_left_right);
}

// limititem := number ( RESULTS | PER identifier )
zvsdk_status limit_item(playlist_pdl_parse_context* context) {
  zcsl_stack* nodes = context->nodes.get();
  zvsdk_status status = _playlist_pdl_push_node(nodes, playlist_pdl_limit);
  if (status != 0) return status;
  if (context->symbol != playlist_pdl_number)
    return playlist_pdl_fault(context, "expected number at '%s'", context->text_start);
  status = playlist_pdl_push_symbol(context);
  if (status != 0) return status;

  const int32_t symbol = context->symbol;
  if (symbol != playlist_pdl_per && symbol != playlist_pdl_results)
    return playlist_pdl_fault(context, "expected RESULTS|PER at '%s'", context->text_start);
  _playlist_pdl_getsym(context);
  status = symbol == playlist_pdl_per ? _playlist_pdl_identifier(context)
                                      : _playlist_pdl_push_node(nodes, playlist_pdl_results);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(nodes, playlist_pdl_form::parent_left_right);
}

// [ LIMIT limititem { COMMA limititem } ]
zvsdk_status limit_part(playlist_pdl_parse_context* context) {
  if (context->symbol != playlist_pdl_limit) return 0;
  do {
    _playlist_pdl_getsym(context);
    if (const zvsdk_status status = limit_item(context)) return status;
  } while (context->symbol == playlist_pdl_comma);
  return 0;
}

// ( GENPL | GENERATE PLAYLIST )
zvsdk_status head(playlist_pdl_parse_context* context) {
  if (context->symbol == playlist_pdl_genpl) {
    _playlist_pdl_getsym(context);
    return 0;
  }
  const zvsdk_status status = _playlist_pdl_expect(context, playlist_pdl_generate);
  return status != 0 ? status : _playlist_pdl_expect(context, playlist_pdl_playlist);
}

// statement := head [ WHERE ... ] [ ORDER ... ] [ LIMIT ... ] END
// A failure that the ORDER clause passed over is made good here.
zvsdk_status statement_rule(playlist_pdl_parse_context* context) {
  constexpr zvsdk_status (*parts[])(playlist_pdl_parse_context*) = {head, where_part, order_part,
                                                                    limit_part};
  for (auto part : parts) {
    if (const zvsdk_status status = part(context)) return status;
  }
  if (context->symbol != playlist_pdl_end) return playlist_pdl_unexpected(context);
  return context->failure;
}

// Moves the trees from the stack to the vector, the last one first.
zvsdk_status collect_trees(playlist_pdl_parse_context* context, zcsl_vector* actions) {
  for (;;) {
    void* popped = nullptr;
    if (zcsl_stack_pop(context->nodes.get(), &popped) != 0) return 0;
    playlist_pdl_node_owner tree(static_cast<playlist_pdl_node*>(popped));
    const zvsdk_status status = _playlist_pdl_assign_actions(context, tree.get(), tree->kind);
    if (status != 0) return status;
    if (zcsl_vector_add(actions, tree.get()) != 0) return playlist_error_no_memory;
    (void)tree.release();
  }
}

zvsdk_status parse(playlist_pdl_parse_context* context, zcsl_vector_owner* actions) {
  if (zcsl_stack_create(context->nodes.out(), 0, playlist_pdl_node_free) != 0)
    return playlist_error_no_memory;
  _playlist_pdl_getsym(context);
  if (const zvsdk_status status = statement_rule(context)) return status;
  if (zcsl_vector_create(actions->out(), 0, nullptr, playlist_pdl_node_free) != 0)
    return playlist_error_no_memory;
  return collect_trees(context, actions->get());
}

}  // namespace

zvsdk_status _playlist_pdl_parse(const char* statement, playlist_collection* collection,
                                 uint8_t* uses_seed, zcsl_vector** actions, char** message) {
  playlist_pdl_parse_context context;
  context.collection = collection;
  context.cursor = context.text_start = context.text_end = statement;
  zcsl_vector_owner trees;
  const zvsdk_status status = parse(&context, &trees);
  if (status == 0) {
    if (uses_seed != nullptr) *uses_seed = context.uses_seed;
    *actions = trees.release();
  }
  if (message != nullptr) *message = context.message.release();
  return playlist_pdl_logged(status, s_source);
}

zvsdk_status playlist_pdl_fault(playlist_pdl_parse_context* context, const char* format,
                                const char* argument, const char* second) {
  if (!context->message) context->message.reset(zcsl_string_mprintf(format, argument, second));
  return playlist_error_pdl_syntax;
}

zvsdk_status playlist_pdl_unexpected(playlist_pdl_parse_context* context) {
  if (context->symbol == playlist_pdl_end)
    return playlist_pdl_fault(context, "unexpected end of statement", nullptr);
  const char* format = context->symbol == playlist_pdl_rparen ? "unbalanced right parens '%s'"
                                                              : "unexpected symbol '%w'";
  return playlist_pdl_fault(context, format, context->text_start);
}

zvsdk_status _playlist_pdl_expect(playlist_pdl_parse_context* context, int32_t symbol) {
  if (context->symbol != symbol) return playlist_pdl_unexpected(context);
  _playlist_pdl_getsym(context);
  return 0;
}

zvsdk_status playlist_pdl_push_symbol(playlist_pdl_parse_context* context) {
  const zvsdk_status status =
      _playlist_pdl_push_node(context->nodes.get(), context->symbol, context->text());
  _playlist_pdl_getsym(context);
  return status;
}

zvsdk_status playlist_pdl_expect_number(playlist_pdl_parse_context* context) {
  if (context->symbol != playlist_pdl_number) return playlist_pdl_unexpected(context);
  return playlist_pdl_push_symbol(context);
}

zvsdk_status playlist_pdl_parenthesised(playlist_pdl_parse_context* context,
                                        zvsdk_status (*rule)(playlist_pdl_parse_context*)) {
  if (context->depth == s_max_depth)
    return playlist_pdl_fault(context, "statement is nested too deeply", nullptr);
  ++context->depth;
  _playlist_pdl_getsym(context);
  zvsdk_status status = rule(context);
  if (status == 0) status = _playlist_pdl_expect(context, playlist_pdl_rparen);
  --context->depth;
  return status;
}
