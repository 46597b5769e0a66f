/*
 * collection_values.h: what a collection holds of one media in one attribute, read from its
 * records: "#7" is the integer 7, anything else a text.
 */
#ifndef COLLECTION_VALUES_H
#define COLLECTION_VALUES_H

#include "collections/playlist_collection.h"
#include "support/zcsl_vector2_internal.h"
#include "tests/common/playlist_fixture.h"

using records_view = zcsl_vector2_view<const playlist_attr_data>;

inline playlist_attribute_info& info_of(playlist_collection* collection, const char* attribute) {
  return *output_of(playlist_collection_get_attrinfo, collection, attribute);
}

inline texts values_of(playlist_collection* collection, const char* attribute, const char* ident) {
  const uint32_t ref = output_of(zcsl_stringtable_get_value_ref, collection->idents, ident);
  texts found;
  for (const playlist_attr_data& record : records_view(info_of(collection, attribute).records)) {
    const char* text = nullptr;
    if (record.ident_ref != ref) continue;
    if (record.value & playlist_string_flag)
      zcsl_stringtable_get_value(collection->strings, record.value & ~playlist_string_flag, &text,
                                 nullptr);
    found.push_back(text ? text : "#" + std::to_string(record.value));
  }
  return found;
}

#endif
