// What symbols are called where a tree is shown.
#include "pdl/playlist_pdl_symbols.h"

namespace {

struct symbol_name {
  playlist_pdl_symbol symbol;
  const char* name;
};

constexpr symbol_name s_names[] = {
    {playlist_pdl_generate, "GENERATE"},
    {playlist_pdl_playlist, "PLAYLIST"},
    {playlist_pdl_genpl, "GENERATE PLAYLIST"},
    {playlist_pdl_whereall, "WHERE"},
    {playlist_pdl_where, "WHERE"},
    {playlist_pdl_order, "ORDER"},
    {playlist_pdl_times, "*"},
    {playlist_pdl_divide, "/"},
    {playlist_pdl_plus, "+"},
    {playlist_pdl_minus, "-"},
    {playlist_pdl_ident, "ident"},
    {playlist_pdl_literal, "literal"},
    {playlist_pdl_rand, "RAND"},
    {playlist_pdl_seed, "SEED"},
    {playlist_pdl_dquote, "\""},
    {playlist_pdl_squote, "'"},
    {playlist_pdl_comma, ","},
    {playlist_pdl_lparen, "("},
    {playlist_pdl_rparen, ")"},
    {playlist_pdl_lbracket, "["},
    {playlist_pdl_rbracket, "]"},
    {playlist_pdl_eq, "="},
    {playlist_pdl_ne, "!="},
    {playlist_pdl_lt, "<"},
    {playlist_pdl_le, "<="},
    {playlist_pdl_gt, ">"},
    {playlist_pdl_ge, ">="},
    {playlist_pdl_like, "LIKE"},
    {playlist_pdl_in, "IN"},
    {playlist_pdl_limit, "LIMIT"},
    {playlist_pdl_per, "PER"},
    {playlist_pdl_results, "results"},
    {playlist_pdl_end, "terminator"},
};

}  // namespace

const char* _playlist_pdl_map_symbol_to_string(int32_t symbol) {
  for (const symbol_name& row : s_names)
    if (row.symbol == symbol) return row.name;
  return "";
}
