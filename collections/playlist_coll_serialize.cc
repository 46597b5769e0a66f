// The writing of a collection's serialized form.
#include "collections/playlist_coll_serialize.h"

#include <cstring>

#include "collections/playlist_wire_writer.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"
#include "support/zcsl_stringtable_internal.h"

namespace {

constexpr char s_source[] = "playlist_coll_serialize";

zvsdk_status buffer_size(zcsl_stringtable* table, uint64_t* total) {
  uint32_t size = 0;
  const zvsdk_status status = zcsl_stringtable_get_buffer(table, nullptr, &size, nullptr);
  *total += size;
  return status;
}

// The bound of one attribute's block. A failing step adds nothing.
zvsdk_status attribute_size(playlist_collection* collection, uint32_t index, uint64_t* total) {
  const char* name = nullptr;
  void* info = nullptr;
  zvsdk_status status =
      zcsl_hashtable_index_get(collection->attributes, index, &name, &info, nullptr);
  if (status != 0) return status;
  uint32_t size = 0;
  uint32_t record_size = 0;
  status = zcsl_vector2_get_buffer(static_cast<playlist_attribute_info*>(info)->records, nullptr,
                                   &size, &record_size);
  if (status == 0) *total += 24 + uint64_t{zcsl_string_bytelen(name)} + size + size / record_size;
  return status;
}

// The ordinals of idents, one media after the other: the next one is looked at before it is
// searched for.
class ident_ordinals {
 public:
  explicit ident_ordinals(zcsl_stringtable* idents) : idents_(idents), view_(idents) {}

  zvsdk_status find(uint32_t ident_ref, uint32_t* ordinal) {
    if (!is_at(ordinal_, ident_ref) && !is_at(++ordinal_, ident_ref)) {
      const zvsdk_status status =
          zcsl_stringtable_get_buffer_sync_ref(idents_, ident_ref, &ordinal_);
      if (status != 0) return status;
    }
    *ordinal = ordinal_;
    return 0;
  }

 private:
  bool is_at(uint32_t ordinal, uint32_t ident_ref) const {
    return ordinal - 1 < view_.count && view_.ref_at(ordinal - 1) == ident_ref &&
           view_.records[ident_ref - 1].offset != 0;
  }

  zcsl_stringtable* idents_;
  zcsl_stringtable_view view_;
  uint32_t ordinal_ = 0;  // of the media found last
};

// The references in memory have gaps where idents were removed; in the data they are ordinals. The
// records are those in the output, which lie anywhere.
zvsdk_status renumber(playlist_collection* collection, uint8_t* records, uint32_t count) {
  ident_ordinals ordinals(collection->idents);
  for (; count != 0; --count, records += sizeof(playlist_attr_data)) {
    playlist_attr_data record;
    std::memcpy(&record, records, sizeof(record));
    const zvsdk_status status = ordinals.find(record.ident_ref, &record.ident_ref);
    if (status != 0) return status;
    std::memcpy(records, &record, sizeof(record));
  }
  return 0;
}

class collection_writer {
 public:
  explicit collection_writer(playlist_collection* collection) : collection_(collection) {}

  // The status is that of the last block: what fails before it is left out.
  zvsdk_status write() {
    write_header();
    write_strings(playlist_block_idents, collection_->idents, &has_holes_);
    zvsdk_status status = write_strings(playlist_block_strings, collection_->strings, nullptr);
    uint32_t count = 0;
    zcsl_hashtable_count(collection_->attributes, &count);
    for (uint32_t i = 0; i < count && wire_.ok(); ++i) status = write_attribute(i);
    if (status != 0) return status;
    return wire_.ok() ? 0 : playlist_error_no_memory;
  }

  void detach(void** data, uint32_t* length) { wire_.detach(data, length); }

 private:
  void write_head(uint32_t tag, uint32_t flags, uint32_t size) {
    wire_.numbers({tag, playlist_block_version, flags, size});
  }

  void write_header() {
    const uint32_t size = zcsl_string_bytelen(collection_->name);
    write_head(playlist_block_header, 0, size);
    wire_.number(sizeof(playlist_attr_data));
    wire_.raw(collection_->name, size);
  }

  zvsdk_status write_strings(uint32_t tag, zcsl_stringtable* table, uint8_t* has_holes) {
    const void* block = nullptr;
    uint32_t size = 0;
    const zvsdk_status status = zcsl_stringtable_get_buffer(table, &block, &size, has_holes);
    write_head(tag, 0, size);
    if (size != 0) wire_.raw(block, size);
    return status;
  }

  zvsdk_status write_attribute(uint32_t index) {
    const char* name = nullptr;
    void* data = nullptr;
    zvsdk_status status =
        zcsl_hashtable_index_get(collection_->attributes, index, &name, &data, nullptr);
    if (status != 0) return status;
    zcsl_vector2* records = static_cast<playlist_attribute_info*>(data)->records;
    uint32_t count = 0;
    status = zcsl_vector2_count(records, &count);
    if (status != 0) return status;

    const uint32_t name_size = zcsl_string_bytelen(name);
    write_head(playlist_block_attribute, playlist_block_flag_raw_records, name_size);
    wire_.number(count);
    wire_.raw(name, name_size);
    return write_records(records, count);
  }

  zvsdk_status write_records(zcsl_vector2* records, uint32_t count) {
    void* block = nullptr;
    uint32_t size = 0;
    const zvsdk_status status = zcsl_vector2_get_buffer(records, &block, &size, nullptr);
    if (status != 0) {
      wire_.spoil();  // half a block is written
      return status;
    }
    uint8_t* written = wire_.raw(block, size);
    if (written == nullptr) return 0;
    const zvsdk_status renumbered = has_holes_ != 0 ? renumber(collection_, written, count) : 0;
    playlist_swap_wire_order(written, size);
    return renumbered;
  }

  playlist_collection* collection_;
  uint8_t has_holes_ = 0;
  playlist_wire_writer wire_;
};

}  // namespace

zvsdk_status _playlist_coll_calc_size(playlist_collection* collection, uint32_t* size) {
  if (size == nullptr) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  uint64_t total = 64 + uint64_t{zcsl_string_bytelen(collection->name)};
  buffer_size(collection->idents, &total);
  buffer_size(collection->strings, &total);
  uint32_t count = 0;
  zvsdk_status status = zcsl_hashtable_count(collection->attributes, &count);
  for (uint32_t i = 0; i < count; ++i) status = attribute_size(collection, i, &total);
  // Sizes have 32 bits, and nothing that large could be made.
  if (status == 0 && total > UINT32_MAX) status = playlist_error_no_memory;
  if (status == 0) *size = static_cast<uint32_t>(total);
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status _playlist_coll_serialize(playlist_collection* collection, void** data,
                                      uint32_t* length) {
  collection_writer writer(collection);
  if (zcsl_logged(writer.write(), __LINE__, s_source) == 0) writer.detach(data, length);
  return 0;
}
