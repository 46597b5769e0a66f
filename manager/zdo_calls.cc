// The application's calls for data objects.

#include <algorithm>
#include <unordered_set>

#include "manager/zdo_served.h"

namespace manager {
namespace {

/* An object that an application may change. */
zdo_node* changeable(zvsdk_zdo* object) {
  zdo_node* node = require_host().slot<zdo_node>(object);
  if (node->is_served) throw status_error(error_unsupported, "a provider serves this object");
  return node;
}

/* True when `target` can be reached from `from`; `visit_next(each, visit)` calls `visit` with what
 * lies one step behind. */
template <class T, class VisitNext>
bool reaches(T* from, const T* target, VisitNext visit_next) {
  std::unordered_set<const T*> seen{from};
  std::vector<T*> pending{from};
  while (!pending.empty() && pending.back() != target) {
    T* each = pending.back();
    pending.pop_back();
    visit_next(*each, [&](T* next) {
      if (seen.insert(next).second) pending.push_back(next);
    });
  }
  return !pending.empty();
}

/* Neither nodes of a cluster nor clusters may hold each other in a circle. */
bool would_close_circle(zdo_node* parent, zdo_node* child) {
  if (&parent->cluster() == &child->cluster()) {
    return reaches(child, parent, [](const zdo_node& node, auto visit) { node.each_child(visit); });
  }
  if (parent->cluster().is_linked.load(std::memory_order_relaxed) == 0) return false;
  return reaches(&child->cluster(), &parent->cluster(), [](zdo_cluster& cluster, auto visit) {
    for (uint32_t n = 0; cluster.has_links && n < cluster.used; ++n) {
      cluster.nodes()[n].each_child([&](zdo_node* next) { visit(&next->cluster()); });
    }
  });
}

/* The description as this version knows it: what an older caller's record lacks is unknown. */
zvsdk_track_description known_part(const zvsdk_track_description* track) {
  zvsdk_track_description known{};
  require(require_pointer(track)->size >= sizeof track->size);
  std::memcpy(&known, track, std::min<size_t>(track->size, sizeof known));
  require(known.artist_count == 0 || known.artists != nullptr);
  return known;
}

void hand_out(zvsdk_zdo** object, zdo_node* made) {
  *object = as_handle(made);
}

using provider_count = decltype(&zvsdk_zdo_provider::get_value_count);

/* How many items an object has under a key; a provider's object is asked through `slot`. */
zvsdk_status count_items(const char* function, zvsdk_zdo* object, const char* key, uint32_t* count,
                         zdo_key_kind kind, provider_count slot) {
  return guarded(function, [&] {
    const zdo_node* node = require_host().slot<zdo_node>(object);
    require_text(key);
    require_pointer(count);
    if (node->is_served) return ask_provider(*node, count, slot, key);
    const zdo_key* found = node->find(kind, key);
    *count = found != nullptr ? found->count : 0;
    return status_ok;
  });
}

const zdo_node* served_only(const zdo_node* node) {
  if (!node->is_served) throw status_error(error_unsupported, "no provider serves this object");
  return node;
}

}  // namespace
}  // namespace manager

using namespace manager;

zvsdk_status zvsdk_manager_zdo_create(const char* context, zvsdk_zdo** object) {
  return guarded(__func__, [&] {
    require_pointer(object);
    require_text(context);
    zdo_builder builder(require_host().objects, 1, 0);
    builder.add_root(builder.cluster().copy(context), 0);
    hand_out(object, builder.finish());
  });
}

zvsdk_status zvsdk_manager_zdo_value_add(zvsdk_zdo* object, const char* key, const char* text) {
  return guarded(__func__, [&] {
    zdo_node* node = changeable(object);
    require_text(key);
    require_pointer(text);
    const zdo_key* known = node->find(zdo_key_kind::value, key);
    zdo_cluster& arena = node->cluster();
    node->add_value(known != nullptr ? known->name : arena.copy(key), arena.copy(text));
  });
}

zvsdk_status zvsdk_manager_zdo_child_add(zvsdk_zdo* object, const char* key, zvsdk_zdo* child) {
  return guarded(__func__, [&] {
    zdo_node* node = changeable(object);
    zdo_node* added = require_host().slot<zdo_node>(child);
    require_text(key);
    if (would_close_circle(node, added)) {
      throw status_error(error_invalid_arg, "the child already holds the object");
    }
    const zdo_key* known = node->find(zdo_key_kind::child, key);
    node->add_child(known != nullptr ? known->name : node->cluster().copy(key), added);
  });
}

zvsdk_status zvsdk_manager_zdo_release(zvsdk_zdo* object) {
  return guarded(__func__, [&] { return release_object(object); });
}

zvsdk_status zvsdk_manager_zdo_from_json(const char* json, zvsdk_zdo** object) {
  return guarded(__func__, [&] {
    require_pointer(object);
    hand_out(object, zdo_from_json(require_host().objects, require_text(json)));
  });
}

zvsdk_status zvsdk_manager_zdo_from_track(const zvsdk_track_description* track, uint32_t* unknown,
                                          zvsdk_zdo** object) {
  return guarded(__func__, [&] {
    require_pointer(object);
    uint32_t mask = 0;
    hand_out(object, zdo_from_track(require_host(), known_part(track),
                                    unknown != nullptr ? &mask : nullptr));
    if (unknown != nullptr) *unknown = mask;
  });
}

zvsdk_status zvsdk_manager_zdo_value_count(zvsdk_zdo* object, const char* key, uint32_t* count) {
  return count_items(__func__, object, key, count, zdo_key_kind::value,
                     &zvsdk_zdo_provider::get_value_count);
}

zvsdk_status zvsdk_manager_zdo_child_count(zvsdk_zdo* object, const char* key, uint32_t* count) {
  return count_items(__func__, object, key, count, zdo_key_kind::child,
                     &zvsdk_zdo_provider::get_child_count);
}

zvsdk_status zvsdk_manager_zdo_render(zvsdk_zdo* object, uint32_t index, const char** key,
                                      const char** text) {
  return guarded(__func__, [&] {
    const zdo_node* node = served_only(require_host().slot<zdo_node>(object));
    require_pointer(key);
    require_pointer(text);
    const char* entry[2] = {};
    const zvsdk_status status =
        call_provider(*node, &zvsdk_zdo_provider::render_value, index, &entry[0], &entry[1]);
    if (status != status_ok) return status;
    if (entry[0] == nullptr) return warn_not_found;
    *key = entry[0];
    *text = entry[1];
    return status_ok;
  });
}

zvsdk_status zvsdk_manager_zdo_locale_set(zvsdk_zdo* object, const char* group) {
  return guarded(__func__, [&] {
    host& h = require_host();
    const zdo_node* node = served_only(h.slot<zdo_node>(object));
    const char* chosen = group != nullptr ? group : node->served->locale_group;
    locale_slot* locale = chosen != nullptr ? h.all_locales.get_default(chosen) : nullptr;
    if (group != nullptr && locale == nullptr) throw status_error(error_no_locale);
    const zvsdk_status status = call_provider(*node, &zvsdk_zdo_provider::set_locale,
                                              reinterpret_cast<zvsdk_locale*>(locale));
    if (locale != nullptr) h.all_locales.release(locale);
    return status;
  });
}

zvsdk_status zvsdk_manager_zdo_locale_get(zvsdk_zdo* object, const char** language,
                                          const char** region, const char** descriptor) {
  return guarded(__func__, [&] {
    host& h = require_host();
    const zdo_node* node = served_only(h.slot<zdo_node>(object));
    zvsdk_locale* locale = nullptr;
    const zvsdk_status status = ask_provider(*node, &locale, &zvsdk_zdo_provider::get_locale);
    if (status != status_ok) return status;
    const locale_slot* found = h.slot<locale_slot>(locale);
    if (language != nullptr) *language = found->language.c_str();
    if (region != nullptr) *region = found->region.c_str();
    if (descriptor != nullptr) *descriptor = found->descriptor.c_str();
    return status_ok;
  });
}
