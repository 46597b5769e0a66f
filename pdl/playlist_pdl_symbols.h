/*
 * playlist_pdl_symbols.h: the symbols of the statement language. The numbers are also the node
 * kinds of a parse tree, so they are fixed; the comparisons run without a gap from EQ to CONTAINS.
 */
#ifndef PLAYLIST_PDL_SYMBOLS_H
#define PLAYLIST_PDL_SYMBOLS_H

#include <cstdint>

enum playlist_pdl_symbol : int32_t {
  playlist_pdl_none = 0, /* an unusable input; also the placeholder node */
  playlist_pdl_generate = 1,
  playlist_pdl_playlist = 2,
  playlist_pdl_genpl = 3,
  playlist_pdl_whereall = 4, /* node of an absent WHERE clause; never read */
  playlist_pdl_where = 5,
  playlist_pdl_and = 6,
  playlist_pdl_or = 7,
  playlist_pdl_order = 8,
  playlist_pdl_times = 9,
  playlist_pdl_divide = 10,
  playlist_pdl_plus = 11,
  playlist_pdl_minus = 12,
  playlist_pdl_ident = 13,
  playlist_pdl_literal = 14,
  playlist_pdl_number = 15,
  playlist_pdl_defthresh = 16, /* never read: kept for a default threshold in a tree */
  playlist_pdl_rand = 17,
  playlist_pdl_seed = 18,
  playlist_pdl_list = 19, /* node of an IN list; never read */
  playlist_pdl_dquote = 20,
  playlist_pdl_squote = 21,
  playlist_pdl_comma = 22,
  playlist_pdl_lparen = 23,
  playlist_pdl_rparen = 24,
  playlist_pdl_lbracket = 25,
  playlist_pdl_rbracket = 26,
  playlist_pdl_eq = 27,
  playlist_pdl_ne = 28,
  playlist_pdl_lt = 29,
  playlist_pdl_le = 30,
  playlist_pdl_gt = 31,
  playlist_pdl_ge = 32,
  playlist_pdl_like = 33,
  playlist_pdl_begins = 34,
  playlist_pdl_contains = 35,
  playlist_pdl_in = 36,
  playlist_pdl_limit = 37,
  playlist_pdl_per = 38,
  playlist_pdl_results = 39,
  playlist_pdl_by = 40,
  playlist_pdl_end = 41
};

/* What a symbol is called where a tree is shown; empty for one that is shown some other way. */
const char* _playlist_pdl_map_symbol_to_string(int32_t symbol);

/* EQ, NE, LT, LE, GT, GE: what compares two scores. */
inline bool playlist_pdl_is_comparison(int32_t symbol) {
  return symbol >= playlist_pdl_eq && symbol <= playlist_pdl_ge;
}
/* Those, LIKE, BEGINS and CONTAINS: what compares an attribute with a value. */
inline bool playlist_pdl_is_attribute_operator(int32_t symbol) {
  return symbol >= playlist_pdl_eq && symbol <= playlist_pdl_contains;
}
inline bool playlist_pdl_is_arithmetic(int32_t symbol) {
  return symbol >= playlist_pdl_times && symbol <= playlist_pdl_minus;
}

#endif
