// Substring search.

#include <cctype>

#include "support/zcsl_output.h"
#include "support/zcsl_string.h"
#include "support/zcsl_utf8.h"

namespace {

// How the first character of a match is found: as it stands, or by the platform's folding, which
// unlike the comparison's goes by locale. The table is fetched once for a search.
class first_form {
 public:
  explicit first_form(bool case_sensitive)
      : table_(case_sensitive ? nullptr : *__ctype_tolower_loc()) {}
  uint32_t operator()(uint32_t code_point) const {
    const bool folds = table_ && code_point <= zcsl_case_table_last;
    return folds ? static_cast<uint32_t>(table_[code_point]) : code_point;
  }

 private:
  const int32_t* table_;
};

struct search {
  const char* needle;
  uint32_t length;  // of the needle, in code points
  uint32_t first;   // its first code point, in the form for finding
  first_form form;
  bool case_sensitive;
};

struct match {
  const char* start = nullptr;
  const char* end = nullptr;
  uint32_t matched = 0;
};

// Compares at `start`; true when the search is over, with a match or with a failure of the decoder.
bool try_match(const search& what, const char* start, match* found) {
  int32_t result = 0;
  match here{.start = start};
  if (_zcsl_string_utf8_compare(start, what.needle, what.length, what.case_sensitive, &result,
                                &here.matched, &here.end, nullptr)) {
    return true;
  }
  if (result != 0) return false;
  *found = here;
  return true;
}

match find(const search& what, const char* text) {
  match found;
  uint32_t code_point;
  for (const char* start = text; !_utf8_get_next_char(&text, &code_point) && code_point != 0;
       start = text) {
    if (what.form(code_point) != what.first) continue;
    if (try_match(what, start, &found)) break;
  }
  return found;
}

}  // namespace

const char* _zcsl_string_substring(const char* text, const char* needle, const char** end,
                                   uint32_t* matched, bool case_sensitive) {
  zcsl_give(end, nullptr);
  zcsl_give(matched, 0);
  if (!text || !needle) return nullptr;
  if (zcsl_string_isempty(needle)) return text;
  const first_form form(case_sensitive);
  const char* position = needle;
  const uint32_t first = zcsl_string_charnext(&position, nullptr);
  const match found = find({.needle = needle,
                            .length = zcsl_string_charlen(needle),
                            .first = form(first),
                            .form = form,
                            .case_sensitive = case_sensitive},
                           text);
  if (!found.start) return nullptr;
  zcsl_give(end, found.end);
  zcsl_give(matched, found.matched);
  return found.start;
}

const char* zcsl_string_subistring(const char* text, const char* needle, const char** end,
                                   uint32_t* matched) {
  return _zcsl_string_substring(text, needle, end, matched, false);
}

const char* zcsl_string_substring(const char* text, const char* needle, const char** end,
                                  uint32_t* matched) {
  return _zcsl_string_substring(text, needle, end, matched, true);
}
