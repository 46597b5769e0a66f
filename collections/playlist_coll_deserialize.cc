// The reading of a collection's serialized form.
#include <cstring>
#include <utility>

#include "collections/playlist_coll_serialize.h"
#include "collections/playlist_wire_reader.h"
#include "module/playlist_status.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_coll_deserialize";

using records_owner = zcsl_block_owner<playlist_attr_data>;

bool in_order(const playlist_attr_data* records, uint32_t count) {
  uint32_t descents = 0;  // counted, not stopped at: a plain loop runs at the speed of memory
  for (uint32_t i = 1; i < count; ++i) descents += records[i].ident_ref < records[i - 1].ident_ref;
  return descents == 0;
}

// One pass of a merge sort: runs of `width` become runs of twice that.
void merge_runs(const playlist_attr_data* from, playlist_attr_data* to, size_t count,
                size_t width) {
  for (size_t low = 0; low < count; low += 2 * width) {
    const size_t middle = std::min(low + width, count);
    const size_t high = std::min(low + 2 * width, count);
    std::merge(from + low, from + middle, from + middle, from + high, to + low,
               [](const playlist_attr_data& a, const playlist_attr_data& b) {
                 return a.ident_ref < b.ident_ref;
               });
  }
}

// Single records come in any order. The library's own sort is not for those: some orders make it
// quadratic, and it moves what is equal.
zvsdk_status put_in_order(records_owner* records, uint32_t count) {
  if (in_order(records->get(), count)) return 0;
  records_owner spare(static_cast<playlist_attr_data*>(
      zcsl_memory_alloc(size_t{count} * sizeof(playlist_attr_data))));
  if (!spare) return playlist_error_no_memory;
  for (size_t width = 1; width < count; width *= 2) {
    merge_runs(records->get(), spare.get(), count, width);
    std::swap(*records, spare);
  }
  return 0;
}

// The records become the vector's own, which takes their order on trust.
zvsdk_status attach(playlist_attribute_info* info, records_owner* records, uint64_t count) {
  constexpr uint32_t record_size = sizeof(playlist_attr_data);
  if (count > UINT32_MAX / record_size) return playlist_error_no_memory;
  const zvsdk_status status = zcsl_vector2_attach(
      info->records, records->get(), static_cast<uint32_t>(count) * record_size, record_size, 1, 1);
  if (status == 0) (void)records->release();
  return status;
}

// The leading values of a block.
struct block_head {
  uint64_t tag = 0;
  uint64_t version = 0;
  uint64_t flags = 0;
  uint64_t size = 0;

  bool read(playlist_wire_reader* wire) {
    return wire->number(&tag) && wire->number(&version) && (version <= 1 || wire->number(&flags)) &&
           wire->number(&size);
  }
};

class collection_reader {
 public:
  collection_reader(const void* data, uint32_t length) : wire_(data, length) {}

  zvsdk_status read(playlist_collection** collection) {
    zvsdk_status status = read_blocks();
    if (status == 0) status = check_attributes();
    if (status == 0)
      *collection = collection_.release();
    else if (wire_.left() <= 5)
      status = playlist_error_corrupt_data;  // what fails there is taken for a damaged end
    return status;
  }

 private:
  using block_fn = zvsdk_status (collection_reader::*)(const block_head& head);
  struct block_kind {
    uint64_t tag;
    block_fn read;
  };
  static const block_kind* kind_of(uint64_t tag);

  // Up to the end or to a block of another kind, which is not looked into.
  zvsdk_status read_blocks() {
    zvsdk_status status = playlist_error_bad_data;
    while (wire_.left() != 0) {
      block_head head;
      if (!head.read(&wire_)) return playlist_error_bad_data;
      const block_kind* kind = kind_of(head.tag);
      if (kind == nullptr) break;
      status = read_block(*kind, head);
      if (status != 0) break;
    }
    return status;
  }

  // The header comes first and once.
  zvsdk_status read_block(const block_kind& kind, const block_head& head) {
    const bool is_header = kind.tag == playlist_block_header;
    if (is_header == static_cast<bool>(collection_)) return playlist_error_bad_data;
    if (head.version == 0 || head.version > playlist_block_version)
      return playlist_error_unsupported;
    return (this->*kind.read)(head);
  }

  zvsdk_status read_header(const block_head&) {
    uint64_t record_size = 0;  // nobody's business
    playlist_wire_bytes name;
    if (!wire_.number(&record_size) || !wire_.raw(&name)) return playlist_error_bad_data;
    const zvsdk_status status = playlist_collection_create(collection_.out());
    if (status != 0) return status;
    collection_->name = text_of(name);
    return collection_->name != nullptr ? 0 : playlist_error_no_memory;
  }

  zvsdk_status read_idents(const block_head& head) {
    return read_strings(head, collection_->idents);
  }
  zvsdk_status read_values(const block_head& head) {
    return read_strings(head, collection_->strings);
  }

  zvsdk_status read_strings(const block_head& head, zcsl_stringtable* table) {
    playlist_wire_bytes block;
    if (head.size == 0) return 0;
    if (!read_sized(head, &block)) return playlist_error_bad_data;
    return zcsl_stringtable_attach_buffer(table, block.data(), static_cast<uint32_t>(block.size()));
  }

  zvsdk_status read_attribute(const block_head& head) {
    uint64_t count = 0;
    playlist_wire_bytes raw_name;
    if (!wire_.number(&count) || !read_sized(head, &raw_name)) return playlist_error_bad_data;
    const zcsl_string_owner name(text_of(raw_name));
    if (!name) return playlist_error_no_memory;

    playlist_attribute_info_owner info;
    zvsdk_status status = _playlist_attribute_info_create(name.get(), info.out());
    if (status != 0) return status;
    if (info->attribute == nullptr) warn_of(name.get());
    status = (head.flags & playlist_block_flag_raw_records) != 0
                 ? read_raw_records(info.get(), count)
                 : read_single_records(info.get(), count);
    if (status != 0) return status;
    return playlist_collection_take_attrinfo(collection_.get(), name.get(), &info);
  }

  zvsdk_status read_raw_records(playlist_attribute_info* info, uint64_t count) {
    playlist_wire_bytes block;
    if (!wire_.raw(&block) || block.size() % sizeof(playlist_attr_data) != 0 ||
        block.size() / sizeof(playlist_attr_data) != count)
      return playlist_error_bad_data;
    if (count == 0) return 0;
    // A copy of its own: the block lies anywhere, and the data go.
    records_owner records(
        static_cast<playlist_attr_data*>(zcsl_memory_dup(block.data(), block.size())));
    if (!records) return playlist_error_no_memory;
    playlist_swap_wire_order(reinterpret_cast<uint8_t*>(records.get()),
                             static_cast<uint32_t>(block.size()));
    return attach(info, &records, count);
  }

  // Room is made for what the data can hold, whatever they claim.
  zvsdk_status read_single_records(playlist_attribute_info* info, uint64_t count) {
    constexpr size_t least_size = 3;
    const size_t possible = std::min<uint64_t>(count, wire_.left() / least_size);
    records_owner records(
        static_cast<playlist_attr_data*>(zcsl_memory_alloc(possible * sizeof(playlist_attr_data))));
    if (!records) return playlist_error_no_memory;
    for (uint64_t i = 0; i < count; ++i) {
      playlist_attr_data record;
      if (!read_record(&record)) return playlist_error_bad_data;
      records.get()[i] = record;
    }
    if (count == 0) return 0;
    const zvsdk_status status = put_in_order(&records, static_cast<uint32_t>(count));
    return status != 0 ? status : attach(info, &records, count);
  }

  bool read_record(playlist_attr_data* record) {
    bool is_string = false;
    uint64_t ident_ref = 0;
    uint64_t value = 0;
    if (!wire_.boolean(&is_string) || !wire_.number(&ident_ref) || !wire_.number(&value) ||
        ident_ref > UINT32_MAX || value > UINT32_MAX)
      return false;
    *record = {.value = static_cast<uint32_t>(value) | (is_string ? playlist_string_flag : 0),
               .ident_ref = static_cast<uint32_t>(ident_ref)};
    return true;
  }

  // A raw that has bytes, no more than the block's size.
  bool read_sized(const block_head& head, playlist_wire_bytes* bytes) {
    return wire_.raw(bytes) && !bytes->empty() && bytes->size() <= head.size;
  }

  // A copy of what is ahead of the first NUL.
  static char* text_of(playlist_wire_bytes bytes) {
    return zcsl_string_strdupn(reinterpret_cast<const char*>(bytes.data()),
                               static_cast<uint32_t>(bytes.size()) + 1, 0);
  }

  void warn_of(const char* attribute) const {
    zcsl_log(__LINE__, s_source, zcsl_log_warning, playlist_package_code,
             "Collection '%s' has Attribute '%s' which is not supported by this Zorvex Playlist "
             "module.",
             collection_->name, attribute);
  }

  zvsdk_status check_attributes() const {
    uint32_t count = 0;
    const zvsdk_status status = zcsl_hashtable_count(collection_->attributes, &count);
    return status == 0 && count == 0 ? playlist_error_bad_data : status;
  }

  playlist_wire_reader wire_;
  playlist_collection_owner collection_;  // from the header on
};

const collection_reader::block_kind* collection_reader::kind_of(uint64_t tag) {
  static constexpr block_kind s_kinds[] = {
      {playlist_block_header, &collection_reader::read_header},
      {playlist_block_idents, &collection_reader::read_idents},
      {playlist_block_strings, &collection_reader::read_values},
      {playlist_block_attribute, &collection_reader::read_attribute},
  };
  for (const block_kind& kind : s_kinds)
    if (kind.tag == tag) return &kind;
  return nullptr;
}

}  // namespace

zvsdk_status _playlist_coll_deserialize(const void* data, uint32_t length,
                                        playlist_collection** collection) {
  return zcsl_logged(collection_reader(data, length).read(collection), __LINE__, s_source);
}
