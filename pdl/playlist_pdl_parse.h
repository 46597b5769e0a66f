/*
 * playlist_pdl_parse.h: what the parser's own files share: the state of one parse, the lexer, and
 * the recursive descent. Each function of the descent stands below its grammar rule, reads the
 * symbols of that rule and leaves one tree on the node stack.
 *
 * A fault is reported once: the first message stays, also when the wrecked parse meets more faults
 * while it winds down.
 */
#ifndef PLAYLIST_PDL_PARSE_H
#define PLAYLIST_PDL_PARSE_H

#include "pdl/playlist_pdl_node.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_string.h"

/* The state of one parse. */
struct playlist_pdl_parse_context {
  playlist_collection* collection = nullptr;
  const char* cursor = nullptr; /* the next unread byte */
  zcsl_stack_owner nodes;
  zcsl_stack_owner operators; /* of the ORDER clause */
  int32_t symbol = playlist_pdl_none;
  const char* text_start = nullptr; /* the current symbol's text */
  const char* text_end = nullptr;
  uint8_t uses_seed = 0;
  uint8_t has_comparison = 0; /* WHERE compares a score */
  zcsl_string_owner message;
  uint32_t depth = 0;       /* of parentheses */
  zvsdk_status failure = 0; /* the first one that a rule passed over */

  playlist_pdl_text text() const {
    return {text_start, static_cast<uint32_t>(text_end - text_start)};
  }
};

/*
 * Moves to the next symbol. A string is read by a second call, made while the symbol is the opening
 * quote; one that does not close gives error_pdl_syntax and leaves the context as it was.
 */
zvsdk_status _playlist_pdl_getsym(playlist_pdl_parse_context* context);

/* Reports a syntax fault in the words of `format`, which shows the arguments that it asks for. */
zvsdk_status playlist_pdl_fault(playlist_pdl_parse_context* context, const char* format,
                                const char* argument, const char* second = nullptr);
/* The fault of a symbol that is not the one expected. */
zvsdk_status playlist_pdl_unexpected(playlist_pdl_parse_context* context);
/* Reads on when the symbol is the one expected. */
zvsdk_status _playlist_pdl_expect(playlist_pdl_parse_context* context, int32_t symbol);
/* Pushes a node of the current symbol with its text, and reads on. */
zvsdk_status playlist_pdl_push_symbol(playlist_pdl_parse_context* context);
/* The same for a symbol that must be a number. */
zvsdk_status playlist_pdl_expect_number(playlist_pdl_parse_context* context);

/*
 * What stands in parentheses, at the left one: `rule`, then RPAREN. A fault when they nest too
 * deep: they are what recursion follows, in the descent and in the trees that come of it, and the
 * thread's stack is not ours to measure.
 */
zvsdk_status playlist_pdl_parenthesised(playlist_pdl_parse_context* context,
                                        zvsdk_status (*rule)(playlist_pdl_parse_context*));

zvsdk_status _playlist_pdl_identifier(playlist_pdl_parse_context* context);
zvsdk_status _playlist_pdl_expression(playlist_pdl_parse_context* context);
zvsdk_status _playlist_pdl_whereclause(playlist_pdl_parse_context* context);
zvsdk_status _playlist_pdl_orderclause_E(playlist_pdl_parse_context* context);

/* Gives each node of a finished tree its functions and checks its operators. */
zvsdk_status _playlist_pdl_assign_actions(playlist_pdl_parse_context* context,
                                          playlist_pdl_node* tree, int32_t top_kind);

#endif
