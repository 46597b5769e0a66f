// The userinfo table and the application's calls for users.

#include "manager/host.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

zvsdk_status release(zvsdk_user* user) {
  host& h = require_host();
  return h.all_users.release(h.slot<user_slot>(user));
}

zvsdk_status user_release(zvsdk_user* user) {
  return guarded([&] { return release(user); });
}

}  // namespace

const zvsdk_userinfo_interface userinfo_table = {
    .release = table_release,
    .user_addref = addref_handle<user_slot>,
    .user_release = user_release,
};

}  // namespace manager

zvsdk_status zvsdk_manager_user_create(const char* name, zvsdk_user** user) {
  return manager::guarded(__func__, [&] {
    manager::require_pointer(user);
    *user = reinterpret_cast<zvsdk_user*>(manager::require_host().all_users.add(name));
  });
}

zvsdk_status zvsdk_manager_user_get_name(zvsdk_user* user, const char** name) {
  return manager::guarded(__func__, [&] {
    manager::require_pointer(name);
    *name = manager::require_host().slot<manager::user_slot>(user)->name.c_str();
  });
}

zvsdk_status zvsdk_manager_user_release(zvsdk_user* user) {
  return manager::guarded(__func__, [&] { return manager::release(user); });
}
