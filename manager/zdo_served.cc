// Objects that a provider serves.

#include "manager/zdo_served.h"

namespace manager {

zvsdk_status release_object(zvsdk_zdo* object) noexcept {
  host* h = running_host();
  if (h == nullptr) return error_not_initialized;
  zdo_node* node = h->space.live_slot<zdo_node>(object);
  return node != nullptr && h->objects.release(node) ? status_ok : error_invalid_arg;
}

/* What may fail comes first; then the object takes what it gives back when it goes. */
zdo_node* make_served(zdo_pool& pool, const zdo_served& served) {
  zdo_builder builder(pool, 1, sizeof(zdo_served));
  zdo_node* node = builder.add_root(nullptr, 0);
  auto* record = new (builder.cluster().allocate(sizeof(zdo_served))) zdo_served(served);
  if (served.locale_group != nullptr) {
    record->locale_group = builder.cluster().copy(served.locale_group);
  }
  if (record->user != nullptr) require(record->user->addref());
  record->client->objects.fetch_add(1);
  node->served = record;
  node->is_served = true;
  return builder.finish();
}

zvsdk_status served_context(const zdo_node& node, const char** context) noexcept {
  return ask_provider(node, context, &zvsdk_zdo_provider::get_context);
}

zvsdk_status served_value(const zdo_node& node, const char* key, uint32_t ordinal,
                          const char** text) noexcept {
  return ask_provider(node, text, &zvsdk_zdo_provider::get_value, key, ordinal);
}

/* The provider hands out the child's own data; the child is one more object of the same provider.
 */
zvsdk_status served_child(zdo_pool& pool, const zdo_node& node, const char* key, uint32_t ordinal,
                          zvsdk_zdo** child) noexcept {
  void* data = nullptr;
  const zvsdk_status status =
      ask_provider(node, &data, &zvsdk_zdo_provider::get_child, key, ordinal);
  if (status != status_ok) return status;
  zdo_served served = *node.served;
  served.data = data;
  const zvsdk_status made = guarded([&] { *child = as_handle(make_served(pool, served)); });
  if (made != status_ok && served.provider.release != nullptr) served.provider.release(data);
  return made;
}

}  // namespace manager
