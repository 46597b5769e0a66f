// How many values a mood has, without a statement: a count for each mood of the collection itself,
// made when it is first asked for and again when the collection has changed.
#include <utility>

#include "attributes/playlist_attr_lists.h"
#include "providers/playlist_impl_intf_vibegrid.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_vector2_internal.h"

namespace {

constexpr char s_mood_attribute[] = "ZV_Mood";

uint32_t counted(zcsl_hashmap* map, uint32_t mood) {
  void* count = nullptr;
  zcsl_hashmap_lookup(map, mood, &count);
  return static_cast<uint32_t>(reinterpret_cast<uintptr_t>(count));
}

// Moods alone: a profile is a text.
zvsdk_status count_values(zcsl_vector2* records, zcsl_hashmap* map) {
  for (const playlist_attr_data& record : zcsl_vector2_view<const playlist_attr_data>(records)) {
    if ((record.value & playlist_string_flag) != 0) continue;
    const uintptr_t count = uintptr_t{counted(map, record.value)} + 1;
    const zvsdk_status status =
        zcsl_hashmap_insert(map, record.value, reinterpret_cast<void*>(count));
    if (status != 0) return status;
  }
  return 0;
}

zvsdk_status count_moods(playlist_collection* collection, zcsl_hashmap* map) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  playlist_attribute_info* info = nullptr;
  const zvsdk_status status = playlist_collection_get_attrinfo(collection, s_mood_attribute, &info);
  return status != 0 ? status : count_values(info->records, map);
}

zvsdk_status need_empty_map(zcsl_hashmap** map) {
  return *map != nullptr ? zcsl_hashmap_clear(*map) : zcsl_hashmap_create(map, 0, nullptr);
}

// The change count is read first: a change while the map is built makes the next one build anew. A
// map that could not be finished is not kept.
zvsdk_status refresh(playlist_vibegrid_context* context) {
  playlist_collection* collection = context->collection;
  const uint32_t revision = __atomic_load_n(&collection->change_count, __ATOMIC_RELAXED);
  if (context->estimate_map != nullptr && context->estimate_revision == revision) return 0;
  context->estimate_revision = revision;
  zvsdk_status status = need_empty_map(&context->estimate_map);
  if (status == 0) status = count_moods(collection, context->estimate_map);
  if (status != 0) zcsl_hashmap_delete(std::exchange(context->estimate_map, nullptr));
  return status;
}

zvsdk_status find_mood(uint32_t mood, playlist_list_owner& list, playlist_element_owner& element) {
  playlist_locale_owner locale;
  zvsdk_status status = playlist_attr_default_locale(locale);
  if (status == 0)
    status = playlist_attr_retrieve_list(locale.get(), ZVSDK_VIBEGRID_LIST_MOODS, list.out());
  return status != 0 ? status
                     : g_playlist_lists_interface->list_get_element_by_id(list.get(), mood, 0,
                                                                          element.out());
}

zvsdk_status add_count(zcsl_hashmap* map, zvsdk_list_element* element, uint32_t* sum) {
  uint32_t id = 0;
  const zvsdk_status status = g_playlist_lists_interface->element_get_id(element, &id);
  if (status == 0) *sum += counted(map, id);
  return status;
}

zvsdk_status add_child(zcsl_hashmap* map, zvsdk_list_element* parent, uint32_t index,
                       uint32_t* sum) {
  playlist_element_owner child;
  const zvsdk_status status =
      g_playlist_lists_interface->element_get_child(parent, index, child.out());
  return status != 0 ? status : add_count(map, child.get(), sum);
}

// A mood with sub-moods counts as these do together, one without as itself.
zvsdk_status add_counts(zcsl_hashmap* map, zvsdk_list_element* element, uint32_t* sum) {
  uint32_t children = 0;
  zvsdk_status status = g_playlist_lists_interface->element_get_child_count(element, &children);
  if (status == 0 && children == 0) return add_count(map, element, sum);
  for (uint32_t i = 0; status == 0 && i < children; ++i) status = add_child(map, element, i, sum);
  return status;
}

}  // namespace

zvsdk_status playlist_vibegrid_estimate(playlist_vibegrid_context* context, uint32_t mood,
                                        uint32_t* count) {
  if (zvsdk_playlist_initchecks() == 0) return playlist_error_not_initialized;
  const zcsl_spin_guard guard(&context->lock);
  zvsdk_status status = refresh(context);
  if (status != 0) return status;
  playlist_list_owner list;
  playlist_element_owner element;  // behind the list: released before it
  *count = 0;
  status = find_mood(mood, list, element);
  return status != 0 ? status : add_counts(context->estimate_map, element.get(), count);
}
