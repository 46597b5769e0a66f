// Finding an ident in a collection and its joins, and taking one out again.
#include <algorithm>

#include "collections/playlist_collection.h"
#include "module/playlist_status.h"
#include "support/zcsl_log.h"
#include "support/zcsl_vector2_internal.h"

namespace {

constexpr char s_source[] = "playlist_coll_idents";

// The ident's ordinal, from 1, among the live idents of one collection.
zvsdk_status ordinal_of(playlist_collection* collection, const char* ident, uint32_t* ordinal) {
  zcsl_stringtable_ref ref = 0;
  const zvsdk_status status = zcsl_stringtable_get_value_ref(collection->idents, ident, &ref);
  if (status != 0) return status;
  return zcsl_stringtable_get_buffer_sync_ref(collection->idents, ref, ordinal);
}

// The same for an ident behind the first `skip` of a collection that holds `count`, else "not
// found".
zvsdk_status ordinal_behind(playlist_collection* collection, const char* ident, uint32_t skip,
                            uint32_t count, uint32_t* ordinal) {
  if (count <= skip) return playlist_warn_not_found;
  const zvsdk_status status = ordinal_of(collection, ident, ordinal);
  return status == 0 && *ordinal <= skip ? playlist_warn_not_found : status;
}

// The last of the adjacent records of one media. In foreign data that are out of order a search may
// end at the record of another, which then goes alone.
uint32_t last_of_media(zcsl_vector2* vector, uint32_t first, uint32_t ident_ref) {
  const zcsl_vector2_view<const playlist_attr_data> records(vector);
  uint32_t last = first;
  while (records[last].ident_ref == ident_ref && last + 1 < records.count &&
         records[last + 1].ident_ref == ident_ref)
    ++last;
  return last;
}

// Deletes the media's records and ends with "not found". Adjacent ones go at once, since each
// deletion moves the rest.
zvsdk_status remove_records(zcsl_vector2* records, uint32_t ident_ref) {
  const playlist_attr_data wanted = {.value = 0, .ident_ref = ident_ref};
  zvsdk_status status = 0;
  while (status == 0) {
    uint32_t first = 0;
    status = zcsl_vector2_find(records, &wanted, &first);
    if (status == 0)
      status = zcsl_vector2_deleterange(records, first, last_of_media(records, first, ident_ref));
  }
  return status;
}

// The status is that of the last attribute.
zvsdk_status remove_values(playlist_collection* collection, uint32_t ident_ref) {
  uint32_t count = 0;
  zvsdk_status status = zcsl_hashtable_count(collection->attributes, &count);
  for (uint32_t i = 0; i < count; ++i) {
    void* info = nullptr;
    status = zcsl_hashtable_index_get(collection->attributes, i, nullptr, &info, nullptr);
    if (status == 0)
      status = remove_records(static_cast<playlist_attribute_info*>(info)->records, ident_ref);
  }
  return playlist_is_not_found(status) ? 0 : status;
}

}  // namespace

zvsdk_status playlist_collection_ident_find(playlist_collection* collection, const char* ident,
                                            uint32_t start, uint32_t* index,
                                            playlist_collection** found_in) {
  uint32_t base = 0;      // the idents of the elements passed
  uint32_t skip = start;  // how many idents from here on are not wanted
  for (uint32_t i = 0; auto* element = playlist_collection_joined_at(collection, i); ++i) {
    uint32_t count = 0;
    uint32_t ordinal = 0;
    zvsdk_status status = zcsl_stringtable_count(element->idents, &count);
    if (status == 0) status = ordinal_behind(element, ident, skip, count, &ordinal);
    if (status == 0) {
      if (index != nullptr) *index = base + ordinal;
      if (found_in != nullptr) *found_in = element;
      return 0;
    }
    if (!playlist_is_not_found(status)) return zcsl_logged(status, __LINE__, s_source);
    base += count;
    skip -= std::min(skip, count);
  }
  return playlist_warn_not_found;
}

zvsdk_status playlist_collection_remove_ident(playlist_collection* collection, const char* ident) {
  zcsl_stringtable_ref ref = 0;
  const zvsdk_status status = zcsl_stringtable_get_value_ref(collection->idents, ident, &ref);
  if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  zcsl_stringtable_remove_value(collection->idents, ref);
  return zcsl_logged(remove_values(collection, ref), __LINE__, s_source);
}
