// The licence table and the application's policy behind it.

#include "manager/service_tables.h"

#include "manager/binding.h"
#include "manager/guard.h"
#include "manager/host.h"

namespace manager {
namespace {

binding<zvsdk_license_policy> s_policy;

zvsdk_status license_check(zvsdk_user* user, const char* feature) {
  return guarded([&] {
    require_text(feature);
    if (user != nullptr) require_host().slot<user_slot>(user);
    const auto* policy = s_policy.get();
    return policy != nullptr ? policy->function(policy->context, user, feature) : status_ok;
  });
}

}  // namespace

const zvsdk_license_interface license_table = {
    .release = table_release,
    .license_check = license_check,
};

}  // namespace manager

zvsdk_status zvsdk_manager_license_policy_set(zvsdk_license_policy policy, void* context) {
  return manager::guarded(__func__, [&] { manager::s_policy.set(policy, context); });
}
