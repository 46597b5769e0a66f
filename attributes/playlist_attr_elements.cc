// Recent elements of a list, kept in a bounded map.
#include "attributes/playlist_attr_elements.h"

namespace {

void release_element(uint32_t, void* element) {
  g_playlist_lists_interface->element_release(static_cast<zvsdk_list_element*>(element));
}

}  // namespace

void playlist_attr_create_elements(zcsl_lrumap** elements, uint32_t limit) {
  if (zcsl_lrumap_create(elements, 0, release_element) == 0)
    zcsl_lrumap_set_max_count(*elements, limit);
}

// The map's reference is taken first: from then on no eviction can take the caller's element away.
void playlist_attr_keep_element(zcsl_lrumap* elements, uint32_t value,
                                zvsdk_list_element* element) {
  if (g_playlist_lists_interface->element_addref(element) != 0) return;
  playlist_element_owner for_map(element);
  if (zcsl_lrumap_insert(elements, value, element) == 0) (void)for_map.release();
}

zvsdk_status playlist_attr_recent_element(zcsl_lrumap* elements, zvsdk_list* list, uint32_t value,
                                          uint32_t level, zvsdk_list_element** element) {
  void* kept = nullptr;
  if (zcsl_lrumap_lookup(elements, value, &kept) == 0) {
    *element = static_cast<zvsdk_list_element*>(kept);
    return 0;
  }
  playlist_element_owner found;
  zvsdk_status status =
      g_playlist_lists_interface->list_get_element_by_id(list, value, level, found.out());
  if (status == 0) status = zcsl_lrumap_insert(elements, value, found.get());
  if (status == 0) *element = found.release();
  return status;
}
