/*
 * zdo_served.h: objects whose calls go to a provider, and the way from any object's handle to its
 * node. A slot that a provider leaves empty answers "not supported". Provider calls run with no
 * lock held and may use the manager.
 */
#ifndef ZDO_SERVED_H
#define ZDO_SERVED_H

#include "manager/zdo_builder.h"

namespace manager {

/* `work(host, node)` for a live object and a result to write to. Everything else is refused. */
template <class Result, class Work>
zvsdk_status with_object(zvsdk_zdo* object, Result* result, Work work) noexcept {
  host* h = running_host();
  if (h == nullptr) return error_not_initialized;
  const zdo_node* node = h->space.live_slot<zdo_node>(object);
  if (node == nullptr || result == nullptr) return error_invalid_arg;
  return work(*h, *node);
}

zvsdk_status release_object(zvsdk_zdo* object) noexcept;

/* An object of a provider with one reference. The user's reference is taken and the name of the
 * locale group copied here; when this throws, the data stay whose they are. */
zdo_node* make_served(zdo_pool& pool, const zdo_served& served);

zvsdk_status served_context(const zdo_node& node, const char** context) noexcept;
zvsdk_status served_value(const zdo_node& node, const char* key, uint32_t ordinal,
                          const char** text) noexcept;
zvsdk_status served_child(zdo_pool& pool, const zdo_node& node, const char* key, uint32_t ordinal,
                          zvsdk_zdo** child) noexcept;

/* Calls a provider's slot with its data. */
template <class Slot, class... Args>
zvsdk_status call_provider(const zdo_node& node, Slot slot, Args... args) noexcept {
  const auto function = node.served->provider.*slot;
  return function != nullptr ? function(node.served->data, args...) : error_unsupported;
}

/* The same for a slot with one result, which is handed out on success only. A success that leaves a
 * pointer null has found nothing. */
template <class Result, class Slot, class... Args>
zvsdk_status ask_provider(const zdo_node& node, Result* result, Slot slot, Args... args) noexcept {
  Result found{};
  const zvsdk_status status = call_provider(node, slot, args..., &found);
  if (status != status_ok) return status;
  if constexpr (std::is_pointer_v<Result>) {
    if (found == nullptr) return warn_not_found;
  }
  *result = found;
  return status_ok;
}

}  // namespace manager

#endif
