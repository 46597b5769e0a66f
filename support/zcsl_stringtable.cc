// The string table: its life, adding, finding, removing, enumeration, and bringing references in
// step. Attaching a block is in zcsl_stringtable_attach.cc.

#include "support/zcsl_stringtable.h"

#include <algorithm>
#include <cstring>

#include "support/zcsl_container.h"
#include "support/zcsl_output.h"
#include "support/zcsl_string.h"
#include "support/zcsl_stringtable_internal.h"
#include "support/zcsl_vector2_internal.h"

using string_record = zcsl_stringtable_record;
using table_view = zcsl_stringtable_view;

namespace {

// The end of a walk along the records of one hash.
struct lookup {
  uint32_t record;  // the one that matches, or the last that was visited; 0 without any
  bool found;
};

// A removed record has no text to compare and ends the walk, at its link if it has one.
lookup look_up(zcsl_stringtable* table, const char* string, uint32_t hash) {
  void* entry = nullptr;
  if (zcsl_hashmap_lookup(table->index, hash, &entry)) return {0, false};
  const table_view view(table);
  uint32_t i = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(entry));
  while (i < view.record_count && view.records[i].hash == hash) {
    const char* text = view.text_of(i + 1);
    if (text && std::strcmp(text, string) == 0) return {i, true};
    const uint32_t link = view.records[i].link;
    if (link == 0) break;
    i = link;
    if (!text) break;
  }
  return {i, false};
}

uint32_t length_of(zcsl_stringtable* table) {
  uint32_t size = 0;
  zcsl_string_accum_bytelen(table->text, &size);
  return size ? size - 1 : 0;
}

// Room first and the index next, so that nothing can fail once something has changed.
zvsdk_status append_record(zcsl_stringtable* table, const string_record& record) {
  const uint32_t index = table->records->count;
  void* const entry = reinterpret_cast<void*>(uintptr_t{index});
  zvsdk_status status = zcsl_vector2_reserve(table->records, 1);
  if (!status) status = zcsl_vector2_reserve(table->order, 1);
  if (!status) status = zcsl_hashmap_insert(table->index, record.hash, entry);
  if (!status) status = zcsl_vector2_add(table->records, &record, sizeof(record), nullptr);
  return status ? status : zcsl_vector2_add(table->order, &index, sizeof(index), nullptr);
}

// Appends a 0x00 byte, the text and its record, or nothing.
zvsdk_status add_text(zcsl_stringtable* table, const char* string, uint32_t hash, uint32_t link) {
  const uint32_t length = length_of(table);
  const string_record record{.offset = length + 1, .hash = hash, .link = link};
  zvsdk_status status = zcsl_string_accum_append_bytes(table->text, "", 1, nullptr);
  if (!status) status = zcsl_string_accum_append(table->text, string, nullptr);
  if (!status) status = append_record(table, record);
  if (status) zcsl_string_accum_remove_range(table->text, length, UINT32_MAX - length, nullptr);
  return status;
}

// A text from inside the block would move under the append's feet.
bool lies_within(const table_view& view, const char* string) {
  const uintptr_t start = reinterpret_cast<uintptr_t>(view.text);
  return reinterpret_cast<uintptr_t>(string) - start < view.text_size;
}

zvsdk_status add_outside_text(zcsl_stringtable* table, const char* string, uint32_t hash,
                              uint32_t link) {
  if (!lies_within(table_view(table), string)) return add_text(table, string, hash, link);
  char* copy = zcsl_string_strdup(string);
  if (!copy) return zcsl_error_no_memory;
  const zvsdk_status status = add_text(table, copy, hash, link);
  zcsl_string_free(copy);
  return status;
}

zvsdk_status intern(zcsl_stringtable* table, const char* string, zcsl_stringtable_ref* ref) {
  const uint32_t hash = zcsl_stringtable_hash(string);
  lookup place = look_up(table, string, hash);
  if (!place.found) {
    const uint32_t link = place.record;
    place.record = table->records->count;
    const zvsdk_status failure = add_outside_text(table, string, hash, link);
    if (failure) return failure;
  }
  zcsl_give(ref, place.record + 1);
  return 0;
}

// The text of a record: past the records, removed and damaged each have their code.
zvsdk_status read_text(const table_view& view, uint32_t record, const char** text) {
  if (record >= view.record_count) return zcsl_warn_end_of_range;
  const uint32_t offset = view.records[record].offset;
  if (offset == 0) return zcsl_warn_not_found;
  if (!view.valid(offset)) return zcsl_error_bad_offset;
  *text = view.text + offset;
  return 0;
}

// The position of a record index in the order vector, or its count if it is not there.
uint32_t position_of(const table_view& view, uint32_t record) {
  const uint32_t* end = view.order + view.count;
  const uint32_t* place = std::lower_bound(view.order, end, record);
  return place != end && *place == record ? static_cast<uint32_t>(place - view.order) : view.count;
}

// Cuts a record's text, with the 0x00 byte ahead of it, out of the block. The live texts behind it
// move up; so the last one costs nothing, however many have gone before.
void cut_text(zcsl_stringtable* table, uint32_t record, uint32_t size) {
  const zcsl_vector2_view<string_record> records(table->records);
  const zcsl_vector2_view<const uint32_t> order(table->order);
  zcsl_string_accum_remove_range(table->text, records[record].offset - 1, size, nullptr);
  records[record].offset = 0;
  ++table->removed;
  for (const uint32_t* live = std::upper_bound(order.begin(), order.end(), record);
       live != order.end(); ++live) {
    if (records[*live].offset != 0) records[*live].offset -= size;
  }
}

// The index entry stays when the next record has the same hash. When it goes although it is another
// record's, that one can still be read, but its own removal ends early, with "not found".
zvsdk_status remove_record(zcsl_stringtable* table, uint32_t record) {
  const table_view view(table);
  const char* text = nullptr;
  if (const zvsdk_status failure = read_text(view, record, &text)) return failure;
  cut_text(table, record, zcsl_string_bytelen(text));

  const uint32_t next = record + 1;
  if (next >= view.record_count || view.records[next].hash != view.records[record].hash) {
    const zvsdk_status gone = zcsl_hashmap_remove(table->index, view.records[record].hash, nullptr);
    if (gone) return gone;
  }
  return zcsl_vector2_deleteindex(table->order, position_of(view, record));
}

zvsdk_status make_parts(zcsl_stringtable* table) {
  zvsdk_status status = zcsl_string_accum_create(&table->text, nullptr, 0);
  if (!status) {
    status = zcsl_vector2_create(&table->records, sizeof(string_record), 0, nullptr, nullptr);
  }
  if (!status) status = zcsl_vector2_create(&table->order, sizeof(uint32_t), 0, nullptr, nullptr);
  return status ? status : zcsl_hashmap_create(&table->index, 0, nullptr);
}

void delete_parts(zcsl_stringtable* table) {
  zcsl_string_accum_delete(table->text);
  zcsl_vector2_delete(table->records);
  zcsl_vector2_delete(table->order);
  zcsl_hashmap_delete(table->index);
}

}  // namespace

zcsl_stringtable_view::zcsl_stringtable_view(zcsl_stringtable* table)
    : order(nullptr), count(0), records(nullptr), record_count(0), text(nullptr), text_size(0) {
  if (!table) return;
  const zcsl_vector2_view<const uint32_t> live(table->order);
  const zcsl_vector2_view<const string_record> all(table->records);
  order = live.records;
  count = live.count;
  records = all.records;
  record_count = all.count;
  zcsl_string_accum_get_string(table->text, &text, &text_size);
}

uint32_t zcsl_stringtable_hash(const char* string) {
  uint32_t hash = 5381;
  for (; *string; ++string) hash = hash * 33 + static_cast<uint8_t>(*string);
  return hash;
}

zvsdk_status zcsl_stringtable_create(zcsl_stringtable** table, uint32_t flags) {
  bool complete = true;
  const zvsdk_status status = zcsl_container_create(table, false, [&](zcsl_stringtable* made) {
    made->flags = flags;
    const zvsdk_status failure = make_parts(made);
    complete = !failure;
    if (!complete) delete_parts(made);
    return failure;
  });
  return complete ? status : 0;  // callers look at the output as well
}

zvsdk_status zcsl_stringtable_delete(zcsl_stringtable* table) {
  if (!table) return 0;
  return zcsl_container_operate(table, true, [&] {
    delete_parts(table);
    zcsl_container_free(table);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stringtable_clear(zcsl_stringtable* table) {
  if (!table) return 0;
  return zcsl_container_operate(table, true, [&] {
    zcsl_vector2_clear(table->records);
    zcsl_vector2_clear(table->order);
    zcsl_hashmap_clear(table->index);
    return zcsl_string_accum_clear(table->text);
  });
}

zvsdk_status zcsl_stringtable_add_value(zcsl_stringtable* table, const char* string,
                                        zcsl_stringtable_ref* ref) {
  return zcsl_container_operate(table, !zcsl_string_isempty(string),
                                [&] { return intern(table, string, ref); });
}

zvsdk_status zcsl_stringtable_get_value(zcsl_stringtable* table, zcsl_stringtable_ref ref,
                                        const char** string, uint32_t* hash) {
  return zcsl_container_operate(table, ref != 0, [&] {
    const table_view view(table);
    const char* text = nullptr;
    if (const zvsdk_status failure = read_text(view, ref - 1, &text)) return failure;
    zcsl_give(string, text);
    zcsl_give(hash, view.records[ref - 1].hash);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stringtable_get_value_ref(zcsl_stringtable* table, const char* string,
                                            zcsl_stringtable_ref* ref) {
  return zcsl_container_operate(table, ref && !zcsl_string_isempty(string), [&] {
    const lookup place = look_up(table, string, zcsl_stringtable_hash(string));
    if (!place.found) return zcsl_warn_not_found;
    *ref = place.record + 1;
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stringtable_remove_value(zcsl_stringtable* table, zcsl_stringtable_ref ref) {
  return zcsl_container_operate(table, ref != 0, [&] { return remove_record(table, ref - 1); });
}

zvsdk_status zcsl_stringtable_count(zcsl_stringtable* table, uint32_t* count) {
  return zcsl_container_operate(table, count != nullptr,
                                [&] { return zcsl_vector2_count(table->order, count); });
}

zvsdk_status zcsl_stringtable_enum(zcsl_stringtable* table, uint32_t position,
                                   zcsl_stringtable_ref* ref, const char** string) {
  return zcsl_container_operate(table, true, [&] {
    const table_view view(table);
    if (position >= view.count) return zcsl_warn_end_of_range;
    const char* text = nullptr;
    if (const zvsdk_status failure = read_text(view, view.order[position], &text)) return failure;
    zcsl_give(ref, view.ref_at(position));
    zcsl_give(string, text);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stringtable_get_buffer(zcsl_stringtable* table, const void** data, uint32_t* size,
                                         uint8_t* has_holes) {
  return zcsl_container_operate(table, true, [&] {
    const table_view view(table);
    zcsl_give(data, view.text_size ? view.text : nullptr);
    zcsl_give(size, view.text_size);
    zcsl_give(has_holes, table->removed != 0);
    return zvsdk_status{0};
  });
}

zvsdk_status zcsl_stringtable_get_buffer_sync_ref(zcsl_stringtable* table, zcsl_stringtable_ref ref,
                                                  zcsl_stringtable_ref* sync_ref) {
  return zcsl_container_operate(table, ref && sync_ref, [&] {
    const table_view view(table);
    if (ref - 1 >= view.record_count) return zcsl_warn_end_of_range;
    if (view.records[ref - 1].offset == 0) return zcsl_warn_not_found;
    const uint32_t position = position_of(view, ref - 1);
    if (position == view.count) return zcsl_warn_not_found;
    *sync_ref = position + 1;
    return zvsdk_status{0};
  });
}
