// The parser's rules for identifiers, comparisons and the WHERE clause.
#include <algorithm>
#include <cstring>
#include <utility>

#include "pdl/playlist_pdl_parse.h"

namespace {

// DQUOTE LITERAL | SQUOTE LITERAL
zvsdk_status literal(playlist_pdl_parse_context* context) {
  _playlist_pdl_getsym(context);
  if (context->symbol != playlist_pdl_literal) return playlist_pdl_unexpected(context);
  return playlist_pdl_push_symbol(context);
}

zvsdk_status attribute_ident(playlist_pdl_parse_context* context) {
  playlist_pdl_node_owner node;
  zvsdk_status status = playlist_pdl_node_create(playlist_pdl_ident, context->text(), node.out());
  if (status != 0) return status;
  _playlist_pdl_getsym(context);
  playlist_attribute_info* info = nullptr;
  status = playlist_collection_get_attrinfo(context->collection, node->text, &info);
  if (status != 0)
    return playlist_pdl_fault(context, "attribute '%s' not supported by collection", node->text);
  if (info->attribute == nullptr)
    return playlist_pdl_fault(context, "Zorvex Playlist module has no support for attribute '%s'",
                              node->text);
  return playlist_pdl_push(context->nodes.get(), std::move(node));
}

// As much of a text as the buffer holds.
template <uint32_t size>
void copy_text(const playlist_pdl_text& text, char (&buffer)[size]) {
  const uint32_t length = std::min(text.length, size - 1);
  std::memcpy(buffer, text.start, length);
  buffer[length] = '\0';
}

// The number is cut to 31 bytes, as every number of a list is.
uint32_t list_number(const playlist_pdl_text& text) {
  char digits[32];
  copy_text(text, digits);
  return zcsl_string_atou32(digits);
}

// LBRACKET [ number { COMMA number } ] RBRACKET
zvsdk_status in_list(playlist_pdl_parse_context* context) {
  if (context->symbol != playlist_pdl_lbracket) return playlist_error_not_found;
  _playlist_pdl_getsym(context);
  zcsl_hashmap_owner list;
  if (zcsl_hashmap_create(list.out(), 0, nullptr) != 0) return playlist_error_no_memory;
  while (context->symbol == playlist_pdl_number) {
    const uint32_t value = list_number(context->text());
    _playlist_pdl_getsym(context);
    if (zcsl_hashmap_insert(list.get(), value, nullptr) != 0) return playlist_error_no_memory;
    if (context->symbol != playlist_pdl_comma) break;
    _playlist_pdl_getsym(context);
  }
  const zvsdk_status status = _playlist_pdl_expect(context, playlist_pdl_rbracket);
  return status != 0 ? status : playlist_pdl_push_list(context->nodes.get(), std::move(list));
}

// Apart from the expression, whose own frame is what nesting repeats.
[[gnu::noinline]] zvsdk_status bad_operator(playlist_pdl_parse_context* context) {
  char text[playlist_pdl_max_text + 1];
  copy_text(context->text(), text);
  return playlist_pdl_fault(context, "bad operator '%s'", text);
}

// identifier ( compareop identifier | IN ... )
zvsdk_status comparison(playlist_pdl_parse_context* context) {
  zvsdk_status status = _playlist_pdl_identifier(context);
  if (status != 0) return status;
  const int32_t symbol = context->symbol;
  if (!playlist_pdl_is_attribute_operator(symbol) && symbol != playlist_pdl_in)
    return bad_operator(context);
  status = playlist_pdl_push_symbol(context);
  if (status == 0)
    status = symbol == playlist_pdl_in ? in_list(context) : _playlist_pdl_identifier(context);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(context->nodes.get(), playlist_pdl_form::left_parent_right);
}

// comparison ( number | expression )
zvsdk_status score_comparison(playlist_pdl_parse_context* context) {
  context->has_comparison = 1;
  zvsdk_status status = playlist_pdl_push_symbol(context);
  if (status != 0) return status;
  status = context->symbol == playlist_pdl_number ? playlist_pdl_push_symbol(context)
                                                  : _playlist_pdl_expression(context);
  if (status != 0) return status;
  return _playlist_pdl_make_tree(context->nodes.get(), playlist_pdl_form::left_parent_right);
}

// ( LPAREN whereclause RPAREN | expression ) [ comparison ( number | expression ) ]
zvsdk_status where_term(playlist_pdl_parse_context* context) {
  const zvsdk_status status = context->symbol == playlist_pdl_lparen
                                  ? playlist_pdl_parenthesised(context, _playlist_pdl_whereclause)
                                  : _playlist_pdl_expression(context);
  if (status != 0 || !playlist_pdl_is_comparison(context->symbol)) return status;
  return score_comparison(context);
}

}  // namespace

// identifier := ( DQUOTE LITERAL | SQUOTE LITERAL ) | ident | number | SEED
zvsdk_status _playlist_pdl_identifier(playlist_pdl_parse_context* context) {
  switch (context->symbol) {
    case playlist_pdl_dquote:
    case playlist_pdl_squote:
      return literal(context);
    case playlist_pdl_ident:
      return attribute_ident(context);
    case playlist_pdl_seed:
      _playlist_pdl_getsym(context);
      context->uses_seed = 1;
      return _playlist_pdl_push_node(context->nodes.get(), playlist_pdl_seed);
    case playlist_pdl_number:
      return playlist_pdl_push_symbol(context);
    default:
      return playlist_pdl_fault(context, "expected ident|number at '%s'", context->text_start);
  }
}

// expression := [ LPAREN expression RPAREN ] identifier ( compareop identifier | IN ... )
zvsdk_status _playlist_pdl_expression(playlist_pdl_parse_context* context) {
  if (context->symbol == playlist_pdl_lparen) {
    const zvsdk_status status = playlist_pdl_parenthesised(context, _playlist_pdl_expression);
    if (status != 0) return status;
  }
  return comparison(context);
}

// whereclause := where_term [ ( AND | OR ) whereclause ]
// A chain binds to the right: its terms are read one after the other and linked from the last.
zvsdk_status _playlist_pdl_whereclause(playlist_pdl_parse_context* context) {
  for (uint32_t operators = 0;; ++operators) {
    if (const zvsdk_status status = where_term(context)) return status;
    const int32_t symbol = context->symbol;
    if (symbol != playlist_pdl_and && symbol != playlist_pdl_or) {
      zvsdk_status status = 0;
      for (; operators > 0 && status == 0; --operators)
        status =
            _playlist_pdl_make_tree(context->nodes.get(), playlist_pdl_form::left_parent_right);
      return status;
    }
    _playlist_pdl_getsym(context);
    if (const zvsdk_status status = _playlist_pdl_push_node(context->nodes.get(), symbol))
      return status;
  }
}
