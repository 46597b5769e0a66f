// The zdo table: data objects as modules see them, those in memory and those that a provider
// serves.

#include "manager/service_tables.h"
#include "manager/zdo_builder.h"
#include "manager/zdo_served.h"

namespace manager {
namespace {

zvsdk_status zdo_create(zvsdk_client* client, void* data, const zvsdk_zdo_provider* provider,
                        zvsdk_user* user, const char* locale_group, void*, void*,
                        zvsdk_zdo** object) {
  return guarded([&] {
    host& h = require_host();
    require_pointer(provider);
    require_pointer(object);
    zdo_served served{*provider,    data,    h.slot<client_slot>(client),
                      &h.all_users, nullptr, locale_group};
    if (user != nullptr) served.user = h.slot<user_slot>(user);
    *object = as_handle(make_served(h.objects, served));
  });
}

zvsdk_status zdo_get_type(zvsdk_zdo* object, const char** context) {
  return with_object(object, context, [&](host&, const zdo_node& node) {
    if (node.is_served) return served_context(node, context);
    *context = node.context;
    return status_ok;
  });
}

zvsdk_status zdo_value_get(zvsdk_zdo* object, const char* key, uint32_t ordinal,
                           const char** text) {
  return with_object(object, text, [&](host&, const zdo_node& node) {
    if (key == nullptr || ordinal == 0) return error_invalid_arg;
    if (node.is_served) return served_value(node, key, ordinal, text);
    const char* found = node.value(key, ordinal);
    if (found == nullptr) return warn_not_found;
    *text = found;
    return status_ok;
  });
}

zvsdk_status zdo_child_get(zvsdk_zdo* object, const char* key, uint32_t ordinal, void*,
                           zvsdk_zdo** child) {
  return with_object(object, child, [&](host& h, const zdo_node& node) {
    if (key == nullptr || ordinal == 0) return error_invalid_arg;
    if (node.is_served) return served_child(h.objects, node, key, ordinal, child);
    zdo_node* found = node.child(key, ordinal);
    if (found == nullptr) return warn_not_found;
    zdo_pool::hold(found);
    *child = as_handle(found);
    return status_ok;
  });
}

}  // namespace

const zvsdk_zdo_interface zdo_table = {
    .release = table_release,
    .zdo_create = zdo_create,
    .zdo_addref = addref_handle<zdo_node>,
    .zdo_release = release_object,
    .zdo_get_type = zdo_get_type,
    .zdo_value_get = zdo_value_get,
    .zdo_child_get = zdo_child_get,
};

}  // namespace manager
