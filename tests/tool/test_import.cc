// Catalogs: rows, columns, values, and what is reported about the bad ones.
#include <sstream>

#include "tests/tool/workspace.h"
#include "tools/import.h"
#include "tools/line_source.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct imported {
  std::string tracks;   // "ident/title/artist+artist/year/tempo" a line
  std::string reports;  // as standard error shows them
  size_t usable = 0;
};

imported import_text(const std::string& text, catalog_format format = catalog_format::unknown,
                     const std::vector<std::string>& mappings = {}) {
  imported result;
  std::istringstream in(text);
  std::ostringstream reports;
  console out(reports, {});
  const track_sink sink = [&](track&& entry, const place&) { result.tracks += summary(entry); };
  result.usable = import_stream(in, format, "f", column_map(mappings), sink, out);
  result.reports = reports.str();
  return result;
}

struct import_case {
  std::string text, tracks, reports;
};

void expect_imports(std::initializer_list<import_case> cases) {
  for (const import_case& each : cases) {
    const imported result = import_text(each.text);
    EXPECT_EQ(result.tracks, each.tracks) << each.text;
    EXPECT_EQ(result.reports, each.reports) << each.text;
  }
}

TEST(import_csv, reads_quoted_fields_and_any_line_end) {
  expect_imports({
      {"\xEF\xBB\xBFid,title,artist\r\n1,\"a \"\"b\"\", c\",X\r\n\r\n2,d,Y",
       "1/a \"b\", c/X/0/0\n2/d/Y/0/0\n", ""},
      {"id,title,artist\r1,\"a\rb\",X\r2,c,Y\r", "1/a\rb/X/0/0\n2/c/Y/0/0\n", ""},
      {"id;title;artist\n1;a,b;X\n", "1/a,b/X/0/0\n", ""},
      {"id,title,artist\n1,a,X,,\n", "1/a/X/0/0\n", ""},
  });
}

TEST(import_csv, a_bad_row_costs_no_other_row) {
  const std::string head = "id,title,artist\n";
  expect_imports({
      {head + "1,a\n2,b,Y\n", "2/b/Y/0/0\n",
       "f:2: 2 fields where the header has 3, row left out\n"},
      {head + "1,12\" mix,X\n2,b,Y\n", "2/b/Y/0/0\n", "f:2: unbalanced quote, row left out\n"},
      // A lone quote, with another behind it, and with one that closes it neatly.
      {head + "1,\"a,X\n2,b,Y\n3,\"c\",Z\n", "2/b/Y/0/0\n3/c/Z/0/0\n",
       "f:2: unbalanced quote, row left out\n"},
      {head + "1,\"a,X\n2,b,Y\n3,c,\"Z\n4,d,W\n", "2/b/Y/0/0\n4/d/W/0/0\n",
       "f:2: unbalanced quote, row left out\nf:4: quote is not closed, row left out\n"},
      {head + "1,\"a,X\n2,b,Y\"\n3,c,Z\n", "3/c/Z/0/0\n",
       "f:2: 2 fields where the header has 3, row left out\nf:3: unbalanced quote, row left out\n"},
      {head + "1,a\0b,\xF0\x9F\x8E\xB5\n"s,
       "1/a\xEF\xBF\xBD"
       "b/\xEF\xBF\xBD/0/0\n",
       "f:2: invalid UTF-8 replaced, characters above U+FFFF replaced\n"},
      {"title,artist\na,X\n", "",
       "f:1: no column holds idents; name one with --map ident=COLUMN\n"},
  });
}

TEST(import_csv, bounds_what_a_line_can_cost) {
  const std::string head = "id,title,artist\n", tail = "2,b,Y\n";
  const std::string huge(max_line_bytes + 10, 'x');
  EXPECT_EQ(import_text(head + "1," + huge + ",X\n" + tail).tracks, "2/b/Y/0/0\n");
  const imported cut = import_text(head + "1," + std::string(5000, 'x') + ",X\n" +
                                   std::string(5000, 'i') + ",c,Z\n" + tail);
  EXPECT_EQ(cut.usable, 2u);
  EXPECT_EQ(cut.reports, "f:2: text cut to 4096 bytes\nf:3: ident is too long, left out\n");
  // An open quote before more text than a row may have: found out, and nothing behind it lost.
  std::string rows;
  for (int i = 0; i < 6000; ++i) rows += std::to_string(i) + "," + std::string(200, 'b') + ",Y\n";
  const imported open = import_text(head + "a,\"b,Y\n" + rows);
  EXPECT_EQ(open.usable, 6000u);
  EXPECT_EQ(open.reports, "f:2: quote is not closed, row left out\n");
}

TEST(import_json_lines, reads_flat_objects) {
  expect_imports({
      {"{\"id\": 7, \"title\": \"a\", \"artists\": [\"X\", \"Y\"], \"bpm\": 99.5, \"year\": 1999}\n"
       "\n{\"path\": \"b.ogg\", \"name\": \"b\", \"artist\": \"Z\", \"album\": null,"
       " \"explicit\": true, \"links\": {\"web\": []}}",
       "7/a/X+Y/1999/100\nb.ogg/b/Z/0/0\n", ""},
      {"{\"id\":\"1\",\"title\":\"\\ud83c\\udfb5\",\"artist\":\"X\"}\n", "1/\xEF\xBF\xBD/X/0/0\n",
       "f:1: characters above U+FFFF replaced\n"},
      {"{\"id\":\"1\"\n[1]\n{\"id\":{}}\n{\"id\":\"2\",\"title\":\"b\",\"artist\":\"Y\"}\n",
       "2/b/Y/0/0\n",
       "f:1: not valid JSON, line left out\nf:2: not a JSON object, line left out\n"
       "f:3: 'id' is neither text nor number, line left out\n"},
      {"{" + std::string(200000, '[') + "\n", "", "f:1: not valid JSON, line left out\n"},
  });
}

TEST(columns, usual_names_and_mappings) {
  const std::string text =
      "Track ID,Track_Name,ARTIST(S),Release Date,Tempo (BPM)\n1,a,X;Y; X,May 2001,120\n";
  EXPECT_EQ(import_text(text).tracks, "1/a/X+Y/2001/120\n");
  const std::string other = "key,Titel,title,by\n1,a,b,X\n";
  const imported mapped = import_text(other, catalog_format::csv,
                                      {"ident=key", "title=titel", "artist=by", "album=gone"});
  EXPECT_EQ(mapped.tracks, "1/a/X/0/0\n");
  EXPECT_EQ(mapped.reports, "f:1: there is no column 'gone'\n");
}

// What is not understood is told, and the field stays unknown.
TEST(record, numbers_in_their_usual_forms) {
  const std::tuple<const char*, texts, const char*, bool> cases[] = {
      {"bpm", {"99.5", "1e2"}, "0/100", true},
      {"bpm", {"128 BPM"}, "0/128", true},
      {"bpm", {"0"}, "0/0", true},
      {"bpm", {"-3", "nan", "1e300", "120 or so"}, "0/0", false},
      {"date", {"2019-06-14", "14.06.2019"}, "2019/0", true},
      {"date", {"1999", "(1999) 99"}, "1999/0", true},
      {"date", {"2004-05"}, "2004/0", true},
      {"date", {""}, "0/0", true},
      {"date", {"99", "20190614", "0000"}, "0/0", false}};
  for (const auto& [column, values, numbers, understood] : cases)
    for (const std::string& text : values) {
      const imported result = import_text("id;title;artist;"s + column + "\n1;a;X;" + text + "\n");
      EXPECT_EQ(result.tracks, "1/a/X/"s + numbers + "\n") << text;
      EXPECT_EQ(result.reports.empty(), understood) << text;
    }
}

}  // namespace
}  // namespace zvplaylist
