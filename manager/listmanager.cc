// The listmanager table, and the application's calls for locales and for walking a list from its
// top.

#include "manager/host.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

zvsdk_list_element* as_handle(list_element_slot* element) {
  return reinterpret_cast<zvsdk_list_element*>(element);
}

/* An element that was found with a new reference, or the outcome "not found". */
zvsdk_status hand_out(list_element_slot* found, zvsdk_list_element** element) {
  if (found == nullptr) return warn_not_found;
  *element = as_handle(found);
  return status_ok;
}

localized_list& list_of(zvsdk_list* list) {
  return *require_host().slot<list_slot>(list)->list;
}

zvsdk_status list_retrieve(const char* list_type, const char* language, const char*, const char*,
                           void*, void*, void*, zvsdk_list** list) {
  return guarded([&] {
    require_pointer(list);
    list_slot* found = require_host().all_lists.retrieve(require_text(list_type),
                                                         language_code(require_text(language)));
    *list = reinterpret_cast<zvsdk_list*>(found);
  });
}

zvsdk_status list_get_element_by_id(zvsdk_list* list, uint32_t id, uint32_t level,
                                    zvsdk_list_element** element) {
  return guarded([&] {
    require_pointer(element);
    return hand_out(list_of(list).by_id(id, level), element);
  });
}

zvsdk_status list_get_element_by_string(zvsdk_list* list, const char* text, void*,
                                        zvsdk_list_element** element) {
  return guarded([&] {
    require_pointer(element);
    return hand_out(list_of(list).by_text(require_pointer(text)), element);
  });
}

/* Hands out one property of an element. */
template <class Result, class Get>
zvsdk_status element_property(zvsdk_list_element* element, Result* result, Get get) {
  return guarded([&] {
    require_pointer(result);
    *result = get(*require_host().slot<list_element_slot>(element));
  });
}

zvsdk_status element_get_list_type(zvsdk_list_element* element, const char** list_type) {
  return element_property(element, list_type, [](const list_element_slot& slot) {
    return slot.list->definition().type().c_str();
  });
}

zvsdk_status element_get_match_id(zvsdk_list_element* element, uint32_t* id) {
  return element_property(element, id,
                          [](const list_element_slot& slot) { return slot.data().match_id; });
}

zvsdk_status element_get_id(zvsdk_list_element* element, uint32_t* id) {
  return element_property(element, id,
                          [](const list_element_slot& slot) { return slot.data().id; });
}

zvsdk_status element_get_display_string(zvsdk_list_element* element, const char** text) {
  return element_property(
      element, text, [](const list_element_slot& slot) { return slot.list->text(slot.data()); });
}

zvsdk_status element_get_level(zvsdk_list_element* element, uint32_t* level) {
  return element_property(element, level,
                          [](const list_element_slot& slot) { return slot.data().level; });
}

zvsdk_status element_get_range(zvsdk_list_element* element, uint32_t* lower, uint32_t* upper) {
  return guarded([&] {
    require_pointer(lower);
    require_pointer(upper);
    const auto& data = require_host().slot<list_element_slot>(element)->data();
    if (!data.has_range) return warn_not_found;
    *lower = data.lower;
    *upper = data.upper;
    return status_ok;
  });
}

zvsdk_status element_get_child_count(zvsdk_list_element* element, uint32_t* count) {
  return element_property(element, count,
                          [](const list_element_slot& slot) { return slot.data().child_count; });
}

zvsdk_status element_get_child(zvsdk_list_element* element, uint32_t index,
                               zvsdk_list_element** child) {
  return guarded([&] {
    require_pointer(child);
    const list_element_slot* slot = require_host().slot<list_element_slot>(element);
    const auto& data = slot->data();
    const bool exists = index < data.child_count;
    return hand_out(exists ? slot->list->at(data.first_child + index) : nullptr, child);
  });
}

zvsdk_status element_get_parent(zvsdk_list_element* element, zvsdk_list_element** parent) {
  return guarded([&] {
    require_pointer(parent);
    const list_element_slot* slot = require_host().slot<list_element_slot>(element);
    const uint32_t index = slot->data().parent;
    return hand_out(index != no_element ? slot->list->at(index) : nullptr, parent);
  });
}

zvsdk_status correlates_retrieve(const char* name, void*, void*, void*,
                                 zvsdk_correlates** correlates) {
  return guarded([&] {
    require_pointer(correlates);
    correlates_slot* found = require_host().all_correlates.retrieve(require_text(name));
    *correlates = reinterpret_cast<zvsdk_correlates*>(found);
  });
}

zvsdk_status correlates_get_set(zvsdk_correlates* correlates, uint32_t id, int32_t lowest,
                                zvsdk_correlates_set** set) {
  return guarded([&] {
    host& h = require_host();
    require_pointer(set);
    const correlates_slot* table = h.slot<correlates_slot>(correlates);
    *set = reinterpret_cast<zvsdk_correlates_set*>(h.all_correlates.get_set(*table, id, lowest));
  });
}

zvsdk_status correlates_set_get_score(zvsdk_correlates_set* set, uint32_t id, int32_t* score) {
  return guarded([&] {
    require_pointer(score);
    *score = require_host().slot<correlates_set_slot>(set)->score(id);
  });
}

zvsdk_status correlates_set_release(zvsdk_correlates_set* set) {
  return guarded([&] {
    host& h = require_host();
    return h.all_correlates.release(h.slot<correlates_set_slot>(set));
  });
}

zvsdk_status locale_get_default(const char* group, zvsdk_locale** locale) {
  return guarded([&] {
    require_pointer(locale);
    locale_slot* found = require_host().all_locales.get_default(require_text(group));
    if (found == nullptr) return error_no_locale;
    *locale = reinterpret_cast<zvsdk_locale*>(found);
    return status_ok;
  });
}

zvsdk_status locale_get_info(zvsdk_locale* locale, void*, const char** language,
                             const char** region, const char** descriptor, void*) {
  return guarded([&] {
    const locale_slot* slot = require_host().slot<locale_slot>(locale);
    if (language != nullptr) *language = slot->language.c_str();
    if (region != nullptr) *region = slot->region.c_str();
    if (descriptor != nullptr) *descriptor = slot->descriptor.c_str();
  });
}

zvsdk_status locale_release(zvsdk_locale* locale) {
  return guarded([&] {
    host& h = require_host();
    return h.all_locales.release(h.slot<locale_slot>(locale));
  });
}

}  // namespace

const zvsdk_listmanager_interface listmanager_table = {
    .release = table_release,
    .list_retrieve = list_retrieve,
    .list_release = release_handle<list_slot>,
    .list_get_element_by_id = list_get_element_by_id,
    .list_get_element_by_string = list_get_element_by_string,
    .element_release = release_handle<list_element_slot>,
    .element_get_list_type = element_get_list_type,
    .element_get_match_id = element_get_match_id,
    .element_get_id = element_get_id,
    .element_get_display_string = element_get_display_string,
    .element_get_level = element_get_level,
    .element_get_range = element_get_range,
    .element_get_child_count = element_get_child_count,
    .element_get_child = element_get_child,
    .element_get_parent = element_get_parent,
    .element_addref = addref_handle<list_element_slot>,
    .correlates_retrieve = correlates_retrieve,
    .correlates_release = release_handle<correlates_slot>,
    .correlates_get_set = correlates_get_set,
    .correlates_set_get_score = correlates_set_get_score,
    .correlates_set_release = correlates_set_release,
    .locale_get_default = locale_get_default,
    .locale_get_info = locale_get_info,
    .locale_addref = addref_handle<locale_slot>,
    .locale_release = locale_release,
};

}  // namespace manager

zvsdk_status zvsdk_manager_list_get_root(zvsdk_list* list, uint32_t index,
                                         zvsdk_list_element** element) {
  return manager::guarded(__func__, [&] {
    manager::require_pointer(element);
    manager::localized_list& of = manager::list_of(list);
    const auto& all = of.definition().elements();
    // Elements stand level by level, and those for plain values behind all others.
    const bool exists = index < of.definition().named_count() && all[index].level == 1;
    return manager::hand_out(exists ? of.at(index) : nullptr, element);
  });
}

zvsdk_status zvsdk_manager_locale_load(const char* group, const char* language, const char* region,
                                       const char* descriptor) {
  return manager::guarded(__func__, [&] {
    manager::host& h = manager::require_host();
    manager::require_text(group);
    std::string code = manager::language_code(manager::require_text(language));
    h.all_lists.load_all(code);
    h.all_correlates.load_all();
    h.all_locales.load(group, std::move(code), region, descriptor);
  });
}

zvsdk_status zvsdk_manager_locale_unload(const char* group) {
  return manager::guarded(__func__, [&] {
    return manager::require_host().all_locales.unload(manager::require_text(group));
  });
}
