// Takes over a block of texts. The bytes come from anywhere, so nothing in them is trusted: the
// checks look for the texts within the block, and the walk runs over the table's own terminated
// copy.

#include <algorithm>
#include <cstring>
#include <utility>

#include "support/zcsl_container.h"
#include "support/zcsl_hashmap_internal.h"
#include "support/zcsl_stringtable_internal.h"
#include "support/zcsl_vector2_internal.h"

namespace {

// What is taken of a block: `size` bytes from `start`, where a 0x00 byte ahead of the texts is.
struct block_part {
  uint32_t start;
  uint32_t size;
};

// The length that is taken runs to the last byte that is not 0x00, counted from the front of the
// block; 0x00 bytes skipped at the front shift the part, which then ends with the block at the
// latest.
bool find_texts(const uint8_t* block, uint32_t size, block_part* part) {
  if (size < 3 || (block[0] != 0 && block[size - 1] != 0)) return false;
  uint32_t length = size;
  while (length > 0 && block[length - 1] == 0) --length;
  if (length == 0) return false;
  uint32_t first = 1;
  while (first <= length && block[first] == 0) ++first;
  if (first > length) return false;
  *part = {.start = first - 1, .size = std::min(length, size - (first - 1))};
  return true;
}

void forget_records(zcsl_stringtable* table) {
  zcsl_vector2_clear(table->records);
  zcsl_vector2_clear(table->order);
  zcsl_hashmap_clear(table->index);
  table->removed = 0;
}

// Empties the text; one that is larger than what comes gives way to one of the right size. Without
// memory for that it is empty all the same, as texts without records are not to be handed out.
zvsdk_status empty_text(zcsl_stringtable* table, uint32_t size) {
  uint32_t present = 0;
  zcsl_string_accum_bytelen(table->text, &present);
  zvsdk_status status = zcsl_string_accum_clear(table->text);
  if (status || size >= present) return status;
  zcsl_accum* smaller = nullptr;
  status = zcsl_string_accum_create(&smaller, nullptr, size + 1);
  if (!status) zcsl_string_accum_delete(std::exchange(table->text, smaller));
  return status;
}

zvsdk_status take_text(zcsl_stringtable* table, const uint8_t* block, uint32_t size,
                       const block_part& part) {
  const zcsl_stringtable_view view(table);
  const uintptr_t ahead =
      reinterpret_cast<uintptr_t>(block) - reinterpret_cast<uintptr_t>(view.text);
  if (ahead < view.text_size) {
    return zcsl_string_accum_remove_range(table->text, 0, static_cast<uint32_t>(ahead), nullptr);
  }
  if (const zvsdk_status failure = empty_text(table, size)) return failure;
  return zcsl_string_accum_append_bytes(table->text, block + part.start, part.size, nullptr);
}

// One record a text. Byte 0 of the block is never part of one, whatever it holds.
zvsdk_status record_texts(zcsl_stringtable* table) {
  const zcsl_stringtable_view view(table);
  for (uint32_t position = 1; position < view.text_size;) {
    if (view.text[position] == 0) {
      ++position;
      continue;
    }
    const char* text = view.text + position;
    const zcsl_stringtable_record record{
        .offset = position, .hash = zcsl_stringtable_hash(text), .link = 0};
    const zvsdk_status failure = zcsl_vector2_add(table->records, &record, sizeof(record), nullptr);
    if (failure) return failure;
    position += static_cast<uint32_t>(std::strlen(text)) + 1;
  }
  return 0;
}

// Of equal texts the last is the one that lookups find.
zvsdk_status index_records(zcsl_stringtable* table) {
  constexpr uint32_t ahead = 16;
  const zcsl_vector2_view<zcsl_stringtable_record> records(table->records);
  zvsdk_status status = zcsl_vector2_set_min_size(table->order, records.count);
  if (!status) status = zcsl_hashmap_set_min_size(table->index, records.count);
  for (uint32_t i = 0; !status && i < records.count; ++i) {
    if (records.count - i > ahead) zcsl_hashmap_prefetch(table->index, records[i + ahead].hash);
    status =
        zcsl_hashmap_insert(table->index, records[i].hash, reinterpret_cast<void*>(uintptr_t{i}));
    if (!status) status = zcsl_vector2_add(table->order, &i, sizeof(i), nullptr);
  }
  return status;
}

}  // namespace

zvsdk_status zcsl_stringtable_attach_buffer(zcsl_stringtable* table, const void* buffer,
                                            uint32_t size) {
  return zcsl_container_operate(table, buffer != nullptr, [&] {
    const uint8_t* block = static_cast<const uint8_t*>(buffer);
    block_part part{};
    if (!find_texts(block, size, &part)) return zcsl_error_bad_data;
    forget_records(table);
    zvsdk_status status = take_text(table, block, size, part);
    if (!status) status = record_texts(table);
    return status ? status : index_records(table);
  });
}
