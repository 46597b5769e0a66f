/*
 * playlist_pdl_node.h: the node of a parse tree. A tree is executable: the parser gives each node
 * the functions that set it up and perform it (playlist_pdl_actions.h).
 *
 * Nodes are pushed on a stack and linked there by playlist_pdl_make_tree; a node owns its children
 * and what hangs on it, and the stack and the action vector own the trees in them. A chain of AND,
 * OR or arithmetic operators hangs on the right and may be of any length, so nothing here or in the
 * actions descends to the right by recursion; to the left a tree is at most twice as deep as
 * parentheses were nested, which the parser bounds.
 */
#ifndef PLAYLIST_PDL_NODE_H
#define PLAYLIST_PDL_NODE_H

#include "pdl/playlist_pdl_symbols.h"
#include "pdl/playlist_pdl_values.h"
#include "support/zcsl_container_owners.h"
#include "zvsdk_playlist.h"

struct playlist_pdl_node;
struct playlist_pdl_context;
struct playlist_result_entry;

typedef zvsdk_status (*playlist_pdl_setup_fn)(playlist_pdl_node* node, zvsdk_zdo* seed);
typedef zvsdk_status (*playlist_pdl_perform_fn)(playlist_pdl_node* node,
                                                playlist_result_entry* entry,
                                                playlist_results* results,
                                                playlist_pdl_context* context);

struct playlist_pdl_node {
  int32_t kind;       /* a playlist_pdl_symbol */
  char* error_text;   /* the message of a failed setup */
  char* text;         /* the symbol's text, or null */
  int32_t number;     /* the text's number once it is known; a RAND's own generator state */
  zcsl_hashmap* list; /* the values of an IN list */
  playlist_pdl_setup_fn setup;
  playlist_pdl_perform_fn perform;
  const playlist_attribute* attribute; /* of an IDENT; the collection's */
  playlist_attribute_instance* instance;
  int32_t score; /* of the last evaluation */
  int32_t threshold;
  uint8_t has_criterion; /* an attribute child: its criterion is usable */
  uint8_t is_defthresh;
  uint8_t number_known;
  playlist_pdl_node* left;
  playlist_pdl_node* right;
  playlist_pdl_node* parent;
  playlist_pdl_values values; /* where the node stands in the collection that it walks */
};

/* A symbol's text within the statement. */
struct playlist_pdl_text {
  const char* start; /* null: no text */
  uint32_t length;
};

/* The most bytes of a symbol's text that are kept; longer ones are cut without a word. */
inline constexpr uint32_t playlist_pdl_max_text = 299;

/* Frees a tree, children first. Null is allowed. */
void playlist_pdl_node_delete(playlist_pdl_node* node);
/* The same in the shape that stacks and vectors call. */
void playlist_pdl_node_free(void* node);

using playlist_pdl_node_owner = zcsl_owner<playlist_pdl_node, playlist_pdl_node_delete>;

/* A node without children, not evaluated, with a copy of the text. */
zvsdk_status playlist_pdl_node_create(int32_t kind, playlist_pdl_text text,
                                      playlist_pdl_node** node);
/* Pushes a node, which is freed when that fails. */
zvsdk_status playlist_pdl_push(zcsl_stack* stack, playlist_pdl_node_owner node);
/* Creates a node and pushes it. */
zvsdk_status _playlist_pdl_push_node(zcsl_stack* stack, int32_t kind, playlist_pdl_text text);
inline zvsdk_status _playlist_pdl_push_node(zcsl_stack* stack, int32_t kind) {
  return _playlist_pdl_push_node(stack, kind, {});
}
/* Pushes the node of an IN list, which takes the map over. */
zvsdk_status playlist_pdl_push_list(zcsl_stack* stack, zcsl_hashmap_owner list);

/* How three nodes lie on the stack, bottom to top. */
enum class playlist_pdl_form {
  left_right_parent, /* ORDER operators */
  left_parent_right, /* infix operators, IN, AND, OR */
  parent_left_right  /* WHERE, ORDER, RAND, LIMIT */
};
/* Pops three nodes, links them and pushes the parent back. */
zvsdk_status _playlist_pdl_make_tree(zcsl_stack* stack, playlist_pdl_form form);

/* The attribute operator of a comparison symbol. With the attribute on the right an inequality
 * turns round. Any other symbol: error_internal. */
zvsdk_status _playlist_pdl_map_symbol_to_attr_op(int32_t symbol, bool attribute_on_right,
                                                 uint32_t* op);

/* The number that a node's text stands for, signed; converted on first use. */
int32_t playlist_pdl_number_of(playlist_pdl_node* node);

#endif
