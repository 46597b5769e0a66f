// Media entries: an ident enters the collection, and each attribute collects its values for it.
#include <algorithm>

#include "collections/playlist_collection.h"
#include "module/playlist_services.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_log.h"
#include "support/zcsl_vector2_internal.h"

// What an attribute is handed. Lives on the stack of one addition, registered as a handle so that
// an attribute that keeps it is refused later.
struct playlist_collect_context {
  uint32_t magic;
  playlist_collection* collection;
  playlist_attribute_info* info;  // the attribute being collected
  uint32_t ident_ref;
  const char* ident;
  zvsdk_zdo* zdo;                    // or null
  zvsdk_list_element* list_element;  // or null
};

namespace {

constexpr char s_source[] = "playlist_coll_media";
constexpr uint32_t s_context_magic = 0xa1eea1eeu;

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, s_source);
}

zvsdk_status validate(playlist_collect_context* context) {
  return logged(g_playlist_handlemanager_interface->handle_validate(context, s_context_magic));
}

// The checks of a callback that hands something out.
zvsdk_status check_request(playlist_collect_context* context, const void* output) {
  return output == nullptr ? logged(playlist_error_invalid_arg) : validate(context);
}

zvsdk_status _playlist_coll_get_media_ident(playlist_collect_context* context, const char** ident) {
  if (const zvsdk_status status = check_request(context, ident)) return status;
  *ident = context->ident;
  return 0;
}

zvsdk_status _playlist_coll_get_media_zdo(playlist_collect_context* context, zvsdk_zdo** object) {
  if (const zvsdk_status status = check_request(context, object)) return status;
  if (context->zdo == nullptr) return playlist_warn_not_found;
  const zvsdk_status status = logged(g_playlist_zdo_interface->zdo_addref(context->zdo));
  if (status == 0) *object = context->zdo;
  return status;
}

zvsdk_status _playlist_coll_get_media_list_element(playlist_collect_context* context,
                                                   zvsdk_list_element** element) {
  if (const zvsdk_status status = check_request(context, element)) return status;
  if (context->list_element == nullptr) return playlist_warn_not_found;
  *element = context->list_element;
  return 0;
}

using records_view = zcsl_vector2_view<const playlist_attr_data>;

// The index behind the records of a media and of those before it. In a bulk load that is the end,
// which is looked at first, so that nothing is searched.
uint32_t index_behind(const records_view& records, uint32_t ident_ref) {
  const auto behind = [](uint32_t wanted, const playlist_attr_data& record) {
    return wanted < record.ident_ref;
  };
  if (records.count == 0 || records[records.count - 1].ident_ref <= ident_ref) return records.count;
  const playlist_attr_data* end =
      std::upper_bound(records.begin(), records.end(), ident_ref, behind);
  return static_cast<uint32_t>(end - records.begin());
}

// A media's own records are adjacent; no two of them have the same value. A new one goes behind
// them.
zvsdk_status _playlist_coll_add_data(playlist_attribute_info* info, uint32_t ident_ref,
                                     const playlist_attr_data& record) {
  const records_view records(info->records);
  const uint32_t index = index_behind(records, ident_ref);
  for (uint32_t i = index; i-- > 0 && records[i].ident_ref == ident_ref;)
    if (records[i].value == record.value) return 0;
  // In between it is added and not inserted: insertion looks at the neighbours, and would have
  // records that were read out of order sorted.
  return logged(index == records.count
                    ? zcsl_vector2_insert(info->records, index, &record, sizeof(record))
                    : zcsl_vector2_add(info->records, &record, sizeof(record), nullptr));
}

zvsdk_status add_value(playlist_collect_context* context, uint32_t value) {
  return _playlist_coll_add_data(context->info, context->ident_ref,
                                 {.value = value, .ident_ref = context->ident_ref});
}

zvsdk_status _playlist_coll_set_integer_data(playlist_collect_context* context, int32_t value) {
  if (const zvsdk_status status = validate(context)) return status;
  if (value < 0) return logged(playlist_error_bad_data);  // bit 31 is taken
  return add_value(context, static_cast<uint32_t>(value));
}

zvsdk_status _playlist_coll_set_string_data(playlist_collect_context* context, const char* text) {
  if (const zvsdk_status status = validate(context)) return status;
  zcsl_stringtable_ref ref = 0;
  if (const zvsdk_status status =
          zcsl_stringtable_add_value(context->collection->strings, text, &ref))
    return logged(status);
  return add_value(context, ref | playlist_string_flag);
}

constexpr playlist_collect_api s_collect_api = {
    .get_media_ident = _playlist_coll_get_media_ident,
    .get_media_zdo = _playlist_coll_get_media_zdo,
    .get_media_list_element = _playlist_coll_get_media_list_element,
    .set_integer_data = _playlist_coll_set_integer_data,
    .set_string_data = _playlist_coll_set_string_data,
};

// What a failing attribute has stored stays, and the other attributes go on. The sort costs nothing
// as long as the records are in order, which an insertion keeps.
void collect_attribute(playlist_collect_context* context, playlist_attribute_info* info) {
  if (info->attribute == nullptr) return;  // this module lacks the attribute
  context->info = info;
  info->attribute->collect_attribute_data(context, &s_collect_api);
  zcsl_vector2_sort(info->records, playlist_attrdata_compare_ident, 0);
}

void collect_attributes(playlist_collect_context* context) {
  zcsl_hashtable* attributes = context->collection->attributes;
  uint32_t count = 0;
  zcsl_hashtable_count(attributes, &count);
  for (uint32_t i = 0; i < count; ++i) {
    void* info = nullptr;
    if (zcsl_hashtable_index_get(attributes, i, nullptr, &info, nullptr) == 0)
      collect_attribute(context, static_cast<playlist_attribute_info*>(info));
  }
}

// An ident that cannot be stored is dropped without a word, as the call promises.
void add_under_lock(playlist_collect_context* context) {
  const zcsl_write_guard guard(context->collection->rwlock);
  if (guard.status() != 0) return;
  // Gives the reference of an ident that is there already.
  if (zcsl_stringtable_add_value(context->collection->idents, context->ident,
                                 &context->ident_ref) != 0)
    return;
  if (context->zdo != nullptr || context->list_element != nullptr) collect_attributes(context);
}

}  // namespace

zvsdk_status _playlist_coll_add_media(playlist_collection* collection, const char* ident,
                                      zvsdk_zdo* object, zvsdk_list_element* element) {
  playlist_collect_context context = {.magic = s_context_magic,
                                      .collection = collection,
                                      .info = nullptr,
                                      .ident_ref = 0,
                                      .ident = ident,
                                      .zdo = object,
                                      .list_element = element};
  const zvsdk_status status = g_playlist_handlemanager_interface->handle_register(
      g_playlist_client_ref, &context, s_context_magic, nullptr);
  if (status != 0) return logged(status);
  add_under_lock(&context);
  return logged(g_playlist_handlemanager_interface->handle_release(&context));
}
