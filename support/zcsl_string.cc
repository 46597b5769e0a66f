// Comparing, copying and measuring strings, and reading them character by character.

#include "support/zcsl_string.h"

#include <cstring>

#include "support/zcsl_output.h"
#include "support/zcsl_utf8.h"
#include "zvsdk_runtime.h"

namespace {

int32_t sign(int32_t value) {
  return (value > 0) - (value < 0);
}

// The order of two strings of which at least one is null; `decided` says whether that was so.
int32_t compare_nulls(const char* a, const char* b, bool* decided) {
  *decided = a == b || !a || !b;
  if (a == b) return 0;
  return a ? 1 : -1;
}

// Moves past the bytes that are equal when folded, up to the end of the shorter string.
void skip_equal_folded(const char** a, const char** b) {
  for (; **a && **b; ++*a, ++*b) {
    if (_utf8_fold(static_cast<uint8_t>(**a)) != _utf8_fold(static_cast<uint8_t>(**b))) return;
  }
}

bool equal_folded(const char* a, const char* b) {
  skip_equal_folded(&a, &b);
  return *a == *b;
}

bool startswith_folded(const char* string, const char* prefix) {
  skip_equal_folded(&string, &prefix);
  return *prefix == 0;
}

int32_t compare_chars(const char* a, const char* b, uint32_t max_chars, bool case_sensitive) {
  bool decided;
  const int32_t order = compare_nulls(a, b, &decided);
  if (decided) return order;
  int32_t result = 0;
  _zcsl_string_utf8_compare(a, b, max_chars, case_sensitive, &result, nullptr, nullptr, nullptr);
  return sign(result);
}

}  // namespace

uint8_t zcsl_string_equal(const char* a, const char* b, uint8_t ignore_case) {
  if (a == b) return 1;
  if (!a || !b) return 0;
  return ignore_case ? equal_folded(a, b) : std::strcmp(a, b) == 0;
}

int32_t zcsl_string_strcmp(const char* a, const char* b) {
  bool decided;
  const int32_t order = compare_nulls(a, b, &decided);
  return decided ? order : sign(std::strcmp(a, b));
}

int32_t zcsl_string_stricmp(const char* a, const char* b) {
  return compare_chars(a, b, utf8_no_limit, false);
}

int32_t zcsl_string_strnicmp(const char* a, const char* b, uint32_t max_chars) {
  return compare_chars(a, b, max_chars, false);
}

int32_t zcsl_string_strncmp(const char* a, const char* b, uint32_t max_chars) {
  return compare_chars(a, b, max_chars, true);
}

uint8_t zcsl_string_startswith(const char* string, const char* prefix, uint8_t ignore_case) {
  if (!string || !prefix) return 0;
  if (ignore_case) return startswith_folded(string, prefix);
  return std::strncmp(string, prefix, std::strlen(prefix)) == 0;
}

uint32_t zcsl_string_stricmp_len(const char* a, const char* b, const char** end_a,
                                 const char** end_b) {
  if (!a || !b) return 0;
  uint32_t matched = 0;
  if (a == b) {
    // A text against itself is not walked: the ends are the count taken as bytes.
    matched = zcsl_string_charlen(a);
    zcsl_give(end_a, a + matched);
    zcsl_give(end_b, b + matched);
  } else {
    _zcsl_string_utf8_compare(a, b, utf8_no_limit, false, nullptr, &matched, end_a, end_b);
  }
  return matched;
}

uint8_t zcsl_string_isempty(const char* string) {
  uint32_t first = 0;
  return !string || _utf8_get_next_char(&string, &first) || first == 0;
}

uint8_t zcsl_string_isvalid(const char* string) {
  uint32_t code_point;
  while (string && *string) {
    if (_utf8_get_next_char(&string, &code_point)) return 0;
  }
  return 1;
}

char* zcsl_string_strdup(const char* string) {
  if (!string) return nullptr;
  return static_cast<char*>(zcsl_memory_dup(string, std::strlen(string) + 1));
}

char* zcsl_string_strdupn(const char* string, uint32_t size, uint8_t fill) {
  if (!string || size == 0) return nullptr;
  char* copy = static_cast<char*>(zcsl_memory_alloc(size));
  if (!copy) return nullptr;
  const size_t length = strnlen(string, size - 1);
  std::memcpy(copy, string, length);
  std::memset(copy + length, fill, size - length);
  copy[size - 1] = 0;
  return copy;
}

void zcsl_string_free(char* string) {
  zcsl_memory_free(string);
}

uint32_t zcsl_string_bytelen(const char* string) {
  return string ? zcsl_string_bytelen_nonull(string) + 1 : 0;
}

uint32_t zcsl_string_bytelen_nonull(const char* string) {
  return string ? static_cast<uint32_t>(std::strlen(string)) : 0;
}

uint32_t zcsl_string_charlen(const char* string) {
  uint32_t count = 0;
  uint32_t code_point;
  while (string && *string) {
    ++count;
    if (_utf8_get_next_char(&string, &code_point)) break;
  }
  return count;
}

uint32_t zcsl_string_byteclen(const char* string, uint32_t max_chars) {
  const char* position = string;
  uint32_t code_point;
  for (uint32_t i = 0; position && *position && i < max_chars; ++i) {
    if (_utf8_get_next_char(&position, &code_point)) break;
  }
  return static_cast<uint32_t>(position - string);
}

uint32_t zcsl_string_charnext(const char** position, uint32_t* size) {
  zcsl_give(size, 0);
  if (!position || !*position) return 0;
  const char* start = *position;
  uint32_t code_point = 0;
  if (_utf8_get_next_char(position, &code_point)) return 0;
  zcsl_give(size, static_cast<uint32_t>(*position - start));
  return code_point;
}

const char* zcsl_string_strchr(const char* string, uint32_t code_point) {
  const char* position = string;
  for (const char* start = position; uint32_t found = zcsl_string_charnext(&position, nullptr);
       start = position) {
    if (found == code_point) return start;
  }
  return nullptr;
}

char* zcsl_string_trim(char* string) {
  if (!string) return nullptr;
  const char* first = string;
  while (_utf8_is_blank_byte(*first)) ++first;
  size_t length = std::strlen(first);
  while (length > 0 && _utf8_is_blank_byte(first[length - 1])) --length;
  std::memmove(string, first, length);
  string[length] = 0;
  return string;
}
