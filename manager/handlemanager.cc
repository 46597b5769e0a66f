// The handlemanager table: modules' handles in the registry, the manager's own in their slots. And
// the application's way to give a module's handle back.

#include "manager/host.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

zvsdk_status handle_register(zvsdk_client* client, void* object, uint32_t magic,
                             zvsdk_handle_delete_fn destroy) {
  return guarded([&] {
    host& h = require_host();
    h.slot<client_slot>(client);
    return h.handles.add(client, require_pointer(object), magic, destroy);
  });
}

zvsdk_status handle_validate(const void* handle, uint32_t magic) {
  const host* h = running_host();
  if (h == nullptr) return error_not_initialized;
  return h->handles.valid(handle, magic) ? status_ok : error_invalid_arg;
}

zvsdk_status handle_addref(void* handle) {
  host* h = running_host();
  return h != nullptr ? h->handles.addref(handle) : error_not_initialized;
}

zvsdk_status handle_release(void* handle) {
  host* h = running_host();
  return h != nullptr ? h->handles.release(handle) : error_not_initialized;
}

template <class Slot>
zvsdk_status validate_slot(const void* handle) {
  const host* h = running_host();
  if (h == nullptr) return error_not_initialized;
  return h->space.live_slot<Slot>(handle) != nullptr ? status_ok : error_invalid_arg;
}

zvsdk_status handle_validate_user(const zvsdk_user* user) {
  return validate_slot<user_slot>(user);
}

zvsdk_status handle_validate_zdo(const zvsdk_zdo* object) {
  return validate_slot<zdo_node>(object);
}

zvsdk_status handle_validate_list_element(const zvsdk_list_element* element) {
  return validate_slot<list_element_slot>(element);
}

}  // namespace

const zvsdk_handlemanager_interface handlemanager_table = {
    .release = table_release,
    .handle_register = handle_register,
    .handle_validate = handle_validate,
    .handle_addref = handle_addref,
    .handle_release = handle_release,
    .handle_validate_user = handle_validate_user,
    .handle_validate_zdo = handle_validate_zdo,
    .handle_validate_list_element = handle_validate_list_element,
};

}  // namespace manager

zvsdk_status zvsdk_manager_handle_release(const void* handle) {
  return manager::guarded(
      __func__, [&] { return manager::require_host().handles.release(const_cast<void*>(handle)); });
}
