// The application's call for walking a list from its top. Everything below it is the table's.

#include "manager/host.h"

zvsdk_status zvsdk_manager_list_get_root(zvsdk_list* list, uint32_t index,
                                         zvsdk_list_element** element) {
  return manager::guarded(__func__, [&] {
    manager::require_pointer(element);
    manager::localized_list& of = *manager::require_host().slot<manager::list_slot>(list)->list;
    const auto& all = of.definition().elements();
    // Elements stand level by level, and those for plain values behind all others.
    if (index >= of.definition().named_count() || all[index].level != 1)
      throw manager::status_error(manager::warn_not_found);
    *element = reinterpret_cast<zvsdk_list_element*>(of.at(index));
  });
}
