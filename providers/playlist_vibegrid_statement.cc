// Filters as a statement: the first is the cell, the others are one group beside it.
#include <iterator>

#include "module/playlist_status.h"
#include "providers/playlist_impl_intf_vibegrid.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_vibegrid_statement";

struct filter_kind {
  const char* list_type;
  const char* attribute;
};
constexpr filter_kind s_kinds[] = {
    {ZVSDK_VIBEGRID_LIST_MOODS, "ZV_MOOD "},
    {ZVSDK_VIBEGRID_LIST_GENRES, "ZV_GENRE "},
    {ZVSDK_VIBEGRID_LIST_ERAS, "ZV_ERA "},
    {ZVSDK_VIBEGRID_LIST_ORIGINS, "ZV_ORIGIN "},
};
constexpr const filter_kind* s_mood_kind = &s_kinds[0];

const filter_kind* kind_of(const playlist_vibegrid_filter& filter) {
  for (const filter_kind& kind : s_kinds)
    if (zcsl_string_equal(filter.list_type, kind.list_type, 1)) return &kind;
  return nullptr;
}

const char* joiner(uint32_t index, const playlist_vibegrid_filter& filter) {
  if (index == 0) return "";
  if (index == 1) return " AND (";
  return filter.include ? " OR " : " AND ";
}

// A statement that is being written. The first append that fails ends it.
struct statement_writer {
  zcsl_accum* text;
  zvsdk_status status = 0;
  uint32_t moods = 0;
  uint32_t last_value = 0;

  void append(const char* part) {
    if (status == 0) status = zcsl_string_accum_append(text, part, nullptr);
  }

  // Of a filter that no attribute stands for only the joiner is written.
  void add(uint32_t index, const playlist_vibegrid_filter& filter) {
    append(joiner(index, filter));
    const filter_kind* kind = kind_of(filter);
    if (kind == nullptr) return;
    moods += kind == s_mood_kind;
    append(kind->attribute);
    append(filter.include ? "== " : "!= ");
    append(filter.value);
    last_value = zcsl_string_atou32(filter.value);
  }
};

void log_statement(zcsl_accum* statement) {
  const char* text = nullptr;
  zcsl_string_accum_get_string(statement, &text, nullptr);
  zcsl_log(__LINE__, s_source, zcsl_log_api_trace, playlist_package_code, "MOOD PDL %s", text);
}

}  // namespace

zvsdk_status _playlist_process_filters_to_pdl(zcsl_accum* statement, zcsl_vector* filters,
                                              bool* is_single_mood, uint32_t* last_value) {
  uint32_t count = 0;
  zcsl_vector_count(filters, &count);
  if (count == 0) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  statement_writer writer{.text = statement};
  writer.status = zcsl_string_accum_clear(statement);
  writer.append("GENERATE PLAYLIST WHERE ");
  for (uint32_t i = 0; i < count; ++i) {
    void* filter = nullptr;
    zcsl_vector_getindex(filters, i, &filter);
    writer.add(i, *static_cast<playlist_vibegrid_filter*>(filter));
  }
  if (count > 1) writer.append(" )");
  if (writer.status != 0) return zcsl_logged(writer.status, __LINE__, s_source);
  if (is_single_mood != nullptr) *is_single_mood = writer.moods == 1;
  if (last_value != nullptr) *last_value = writer.last_value;
  log_statement(statement);
  return 0;
}
