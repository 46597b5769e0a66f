// The lexer: text to symbols.
#include "tests/pdl/pdl_fixture.h"

#include "pdl/playlist_pdl_parse.h"

namespace {

std::string symbols_of(const char* text) {
  playlist_pdl_parse_context context;
  context.cursor = context.text_start = context.text_end = text;
  std::string symbols;
  zvsdk_status status = 0;
  do {
    status = _playlist_pdl_getsym(&context);
    const playlist_pdl_text symbol = context.text();
    symbols += (symbols.empty() ? "" : " ") + std::to_string(context.symbol) + ":" +
               std::string(symbol.start, symbol.length);
    if (status != 0) symbols += " open";
  } while (status == 0 && context.symbol != playlist_pdl_end &&
           context.symbol != playlist_pdl_none && context.cursor != context.text_start);
  return symbols;
}

// Number:text of each symbol, up to the end or an unusable input.
constexpr std::pair<const char*, const char*> s_lexed[] = {
    {" \t\n\x01 ", "41:"},
    {"genpl GenPl gen GENER play w", "3:genpl 3:GenPl 3:gen 1:GENER 2:play 5:w 41:"},
    {"l b c s r a an o or ord lim re pe by i in",
     "33:l 34:b 35:c 18:s 17:r 6:a 6:an 7:o 7:or 8:ord 37:lim 39:re 38:pe 40:by 36:i 36:in 41:"},
    {"ORDERS INTO ZV_Mood _x9", "13:ORDERS 13:INTO 13:ZV_Mood 13:_x9 41:"},
    {"a==b", "6:a 27:== 34:b 41:"},
    {"<<=>>=!==", "29:< 30:<= 31:> 32:>= 28:!= 27:= 41:"},
    {"x !x", "13:x 0:!"},
    {"5 -3 - 3 -x", "15:5 15:-3 12:- 15:3 12:- 13:x 41:"},
    {"5 12abc", "15:5 0:5"},
    {"-12abc", "15:-12 13:abc 41:"},
    {"'it\"s' \"\"", "21:' 14:it\"s 20:\" 14: 41:"},
    {"\"a;b\"", "20:\" 20:\" open"},
    {"'open", "21:' 21:' open"},
    {"*/+,()[]", "9:* 10:/ 11:+ 22:, 23:( 24:) 25:[ 26:] 41:"},
    {"5;6", "15:5 41:"},
    {"x ~", "13:x 3:"},
    {"x \xC3\xA9", "13:x 3:"},
};

TEST(pdl_lexer, reads_symbols) {
  for (const auto& [text, symbols] : s_lexed) EXPECT_EQ(symbols, symbols_of(text)) << text;
}

}  // namespace
