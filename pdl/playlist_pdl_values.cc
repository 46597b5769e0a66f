// The walk over the values of one attribute in one collection.
#include "pdl/playlist_pdl_values.h"

#include "support/zcsl_vector2_internal.h"

namespace {

// How many records a find steps over before it searches: a media has a few values at most.
constexpr uint32_t s_steps = 8;

// The common case: the media's records begin at the present position or a little behind it. False
// when that cannot be told from a few records.
bool find_near(playlist_pdl_values* values, uint32_t ident, bool* found) {
  if (!values->in_order) return false;
  const playlist_attr_data* records = values->records;
  uint32_t position = values->position;
  const uint32_t last = position + s_steps;
  while (position < values->count && records[position].ident_ref < ident) {
    if (++position == last) return false;
  }
  if (position > values->count) return false;
  if (position > 0 && records[position - 1].ident_ref >= ident) return false;
  values->position = position;
  *found = position < values->count && records[position].ident_ref == ident;
  return true;
}

}  // namespace

void playlist_pdl_values_leave(playlist_pdl_values* values) {
  if (values->info != nullptr && values->position < values->count)
    __atomic_store_n(&values->info->find_hint, values->position, __ATOMIC_RELAXED);
  *values = {};
}

zvsdk_status playlist_pdl_values_enter_anew(playlist_pdl_values* values,
                                            playlist_collection* collection,
                                            const char* attribute) {
  playlist_pdl_values_leave(values);
  values->collection = collection;
  playlist_attribute_info* info = nullptr;
  values->status = playlist_collection_get_attrinfo(collection, attribute, &info);
  if (values->status == 0 && info->attribute == nullptr) values->status = playlist_warn_not_found;
  if (values->status != 0) return values->status;

  const zcsl_vector2_view<const playlist_attr_data> records(info->records);
  values->info = info;
  values->records = records.records;
  values->count = records.count;
  values->position = __atomic_load_n(&info->find_hint, __ATOMIC_RELAXED);
  values->in_order = info->records->sorted();
  values->strings = zcsl_stringtable_view(collection->strings);
  return 0;
}

uint32_t playlist_pdl_values_find(playlist_pdl_values* values, uint32_t ident) {
  bool found = false;
  if (!find_near(values, ident, &found)) {
    const playlist_attr_data wanted = {.value = 0, .ident_ref = ident};
    found = zcsl_vector2_hintfind(values->info->records, values->position, &wanted,
                                  &values->position) == 0;
  }
  return found ? values->position : values->count;
}
