// What the three name attributes share: one table of operators with the score that each gives.
#include "attributes/playlist_attr_names.h"

#include <iterator>

#include "support/zcsl_fuzzy.h"
#include "support/zcsl_string.h"

namespace {

bool same(const char* stored, const char* criterion) {
  return zcsl_string_equal(stored, criterion, 1) != 0;
}

int32_t score_equal(const char* stored, const char* criterion) {
  return playlist_attr_verdict(same(stored, criterion));
}

int32_t score_not_equal(const char* stored, const char* criterion) {
  return playlist_attr_verdict(!same(stored, criterion));
}

// Similarity counts in hundredths, scores in thousandths.
int32_t score_like(const char* stored, const char* criterion) {
  return static_cast<int32_t>(zcsl_string_fuzzycmp_ex(stored, criterion, 0, nullptr, nullptr)) * 10;
}

// The end also stands behind a character that differs, so a criterion that is wrong in its last
// character alone still matches; one of no characters never does.
int32_t score_begins(const char* stored, const char* criterion) {
  const char* stored_end = nullptr;
  const char* criterion_end = nullptr;
  return playlist_attr_verdict(
      zcsl_string_stricmp_len(stored, criterion, &stored_end, &criterion_end) != 0 &&
      *criterion_end == '\0');
}

int32_t score_contains(const char* stored, const char* criterion) {
  return playlist_attr_verdict(zcsl_string_subistring(stored, criterion, nullptr, nullptr) !=
                               nullptr);
}

struct name_operator {
  uint32_t op;
  playlist_name_scorer score;
};
constexpr name_operator s_operators[] = {
    {playlist_op_equal, score_equal},       {playlist_op_not_equal, score_not_equal},
    {playlist_op_like, score_like},         {playlist_op_begins, score_begins},
    {playlist_op_contains, score_contains},
};

}  // namespace

playlist_name_scorer playlist_name_scorer_of(uint32_t op) {
  for (const name_operator& row : s_operators)
    if (row.op == op) return row.score;
  return nullptr;
}

zvsdk_status playlist_name_operator_at(uint32_t index, uint32_t* op) {
  if (index >= std::size(s_operators)) return playlist_error_unsupported;
  *op = s_operators[index].op;
  return 0;
}

zvsdk_status playlist_name_value(const char* attribute_name, const char* stored, const char* key,
                                 const char** value) {
  if (!zcsl_string_equal(key, playlist_key_display, 0) &&
      !zcsl_string_equal(key, attribute_name, 1))
    return playlist_warn_not_found;
  *value = stored;
  return 0;
}
