// The lexer: one function that moves over the statement, symbol by symbol, in place.
#include "pdl/playlist_pdl_parse.h"

namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_letter_or_underscore(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool is_word(char c) {
  return is_letter_or_underscore(c) || is_digit(c);
}

struct keyword {
  const char* text;
  playlist_pdl_symbol symbol;
};
// A word is the first of these that it is a prefix of, so that the order counts.
constexpr keyword s_keywords[] = {
    {"GENPL", playlist_pdl_genpl},
    {"GENERATE", playlist_pdl_generate},
    {"PLAYLIST", playlist_pdl_playlist},
    {"WHERE", playlist_pdl_where},
    {"LIKE", playlist_pdl_like},
    {"BEGINS", playlist_pdl_begins},
    {"CONTAINS", playlist_pdl_contains},
    {"SEED", playlist_pdl_seed},
    {"RAND", playlist_pdl_rand},
    {"AND", playlist_pdl_and},
    {"OR", playlist_pdl_or},
    {"ORDER", playlist_pdl_order},
    {"LIMIT", playlist_pdl_limit},
    {"RESULTS", playlist_pdl_results},
    {"PER", playlist_pdl_per},
    {"BY", playlist_pdl_by},
    {"IN", playlist_pdl_in},
};

struct single {
  char character;
  playlist_pdl_symbol symbol;
  playlist_pdl_symbol followed_by_equals;  // none: a further `=` is no part of the symbol
};
constexpr single s_singles[] = {
    {'"', playlist_pdl_dquote, playlist_pdl_none},
    {'\'', playlist_pdl_squote, playlist_pdl_none},
    {'(', playlist_pdl_lparen, playlist_pdl_none},
    {')', playlist_pdl_rparen, playlist_pdl_none},
    {'*', playlist_pdl_times, playlist_pdl_none},
    {'+', playlist_pdl_plus, playlist_pdl_none},
    {',', playlist_pdl_comma, playlist_pdl_none},
    {'/', playlist_pdl_divide, playlist_pdl_none},
    {'[', playlist_pdl_lbracket, playlist_pdl_none},
    {']', playlist_pdl_rbracket, playlist_pdl_none},
    {'!', playlist_pdl_none, playlist_pdl_ne},
    {'<', playlist_pdl_lt, playlist_pdl_le},
    {'>', playlist_pdl_gt, playlist_pdl_ge},
    {'=', playlist_pdl_eq, playlist_pdl_eq},
};

void take(playlist_pdl_parse_context* context, int32_t symbol, const char* end) {
  context->symbol = symbol;
  context->text_start = context->cursor;
  context->text_end = end;
  context->cursor = end;
}

// The end has no text. Behind a `;` the cursor could go on, but nobody asks it to.
void take_end(playlist_pdl_parse_context* context) {
  take(context, playlist_pdl_end, context->cursor);
  if (*context->cursor == ';') ++context->cursor;
}

// The rest of a string whose opening quote was the last symbol. There is no escape character, and a
// `;` ends the statement even here.
zvsdk_status take_string(playlist_pdl_parse_context* context) {
  const char quote = context->symbol == playlist_pdl_dquote ? '"' : '\'';
  const char* end = context->cursor;
  while (*end != quote && *end != ';' && *end != '\0') ++end;
  if (*end != quote) return playlist_error_pdl_syntax;
  take(context, playlist_pdl_literal, end);
  ++context->cursor;
  return 0;
}

const char* skip_digits(const char* position) {
  while (is_digit(*position)) ++position;
  return position;
}

// A number that runs into a word is neither: the text of the symbol before it stays, for a message.
void take_number(playlist_pdl_parse_context* context) {
  const char* end = skip_digits(context->cursor);
  if (!is_letter_or_underscore(*end)) take(context, playlist_pdl_number, end);
}

// An unusable character makes a word of no length, which is a prefix of every keyword.
void take_word(playlist_pdl_parse_context* context) {
  const char* end = context->cursor;
  while (is_word(*end)) ++end;
  const auto length = static_cast<uint32_t>(end - context->cursor);
  int32_t symbol = playlist_pdl_ident;
  for (const keyword& candidate : s_keywords) {
    if (zcsl_string_strnicmp(candidate.text, context->cursor, length) == 0) {
      symbol = candidate.symbol;
      break;
    }
  }
  take(context, symbol, end);
}

bool take_single(playlist_pdl_parse_context* context) {
  const char* cursor = context->cursor;
  for (const single& candidate : s_singles) {
    if (candidate.character != *cursor) continue;
    if (candidate.followed_by_equals != playlist_pdl_none && cursor[1] == '=')
      take(context, candidate.followed_by_equals, cursor + 2);
    else
      take(context, candidate.symbol, cursor + 1);
    return true;
  }
  return false;
}

}  // namespace

zvsdk_status _playlist_pdl_getsym(playlist_pdl_parse_context* context) {
  if (context->symbol == playlist_pdl_dquote || context->symbol == playlist_pdl_squote)
    return take_string(context);

  while (*context->cursor >= 1 && *context->cursor <= 32) ++context->cursor;
  const char* cursor = context->cursor;
  context->symbol = playlist_pdl_none;
  if (*cursor == '\0' || *cursor == ';')
    take_end(context);
  else if (*cursor == '-' && is_digit(cursor[1]))
    take(context, playlist_pdl_number, skip_digits(cursor + 1));
  else if (*cursor == '-')
    take(context, playlist_pdl_minus, cursor + 1);
  else if (is_digit(*cursor))
    take_number(context);
  else if (!take_single(context))
    take_word(context);
  return 0;
}
