// Start and stop of the host, clients, tables, providers, users and the licence.

#include <cstring>

#include "tests/manager/host_fixture.h"

namespace {

TEST(host, is_counted_and_refuses_calls_while_it_is_down) {
  zvsdk_sdkmanager* first = nullptr;
  zvsdk_sdkmanager* second = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &first));
  ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &second));
  EXPECT_EQ(first, second);
  EXPECT_EQ(ZVSDK_MANAGER_MAGIC, first->magic);
  EXPECT_STREQ("3.10.5", first->version);
  EXPECT_EQ(0u, zvsdk_manager_release(first));
  zvsdk_client* client = nullptr;
  EXPECT_EQ(0u, first->client_register(1, "still up", nullptr, nullptr, &client));
  EXPECT_EQ(0u, first->client_release(client));
  EXPECT_EQ(0u, zvsdk_manager_release(first));

  EXPECT_EQ(7u, low_word(zvsdk_manager_release(first)));
  EXPECT_EQ(7u, low_word(first->client_register(1, "down", nullptr, nullptr, &client)));
  void* table = nullptr;
  EXPECT_EQ(7u, low_word(first->interface_get(ZVSDK_ZDO_INTERFACE, nullptr, nullptr, &table)));
  zvsdk_zdo* object = nullptr;
  EXPECT_EQ(7u, low_word(zvsdk_manager_zdo_create("zvsdk_ctx_track", &object)));
  EXPECT_EQ(1u, low_word(zvsdk_manager_release(nullptr)));
  const zvsdk_manager_config no_folder = {.size = sizeof no_folder, .data_path = "/no/such"};
  EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_create(&no_folder, &first)));
  EXPECT_NE(nullptr, strstr(last_error().message, "/no/such"));
}

TEST_F(host_test, offers_every_table_but_storage) {
  void* table = nullptr;
  EXPECT_EQ(
      3u, low_word(host.manager->interface_get(ZVSDK_STORAGE_INTERFACE, nullptr, nullptr, &table)));
  EXPECT_EQ(3u, low_word(host.manager->interface_get("_no_such", nullptr, nullptr, &table)));
  EXPECT_EQ(1u, low_word(host.manager->interface_get("", nullptr, nullptr, &table)));
  EXPECT_EQ(0u, host.lists->release(host.lists));
  char* buffer = nullptr;
  uint32_t length = 0;
  EXPECT_EQ(0x0Bu, low_word(host.serialization->serialization_decode("text", &buffer, &length)));
}

TEST_F(host_test, a_client_stays_while_it_has_handles) {
  zvsdk_client* other = nullptr;
  ASSERT_EQ(0u, host.manager->client_register(0x77, "other", nullptr, nullptr, &other));
  int object = 0;
  ASSERT_EQ(0u, host.handles->handle_register(other, &object, 5, nullptr));
  EXPECT_EQ(6u, low_word(host.manager->client_release(other)));
  EXPECT_EQ(0u, host.handles->handle_release(&object));
  EXPECT_EQ(0u, host.manager->client_release(other));
  EXPECT_EQ(1u, low_word(host.manager->client_release(other)));
  EXPECT_EQ(1u, low_word(host.handles->handle_register(other, &object, 5, nullptr)));
}

int s_orders = 0;
zvsdk_sdkmanager* s_manager = nullptr;
zvsdk_client* s_client = nullptr;

TEST(host, the_last_release_orders_clients_to_shut_down) {
  ASSERT_EQ(0u, zvsdk_manager_create(nullptr, &s_manager));
  zvsdk_client* stubborn = nullptr;
  const auto count = []() -> zvsdk_status { return ++s_orders, 1; };
  const auto leave = []() -> zvsdk_status {
    return ++s_orders, s_manager->client_release(s_client);
  };
  ASSERT_EQ(0u, s_manager->client_register(1, "stubborn", count, nullptr, &stubborn));
  ASSERT_EQ(0u, s_manager->client_register(2, "obedient", leave, nullptr, &s_client));
  int left_behind = 0;
  const auto never = [](void*) -> zvsdk_status { return ADD_FAILURE(), 0; };
  auto* tables = static_cast<void*>(nullptr);
  ASSERT_EQ(0u, s_manager->interface_get(ZVSDK_HANDLEMANAGER_INTERFACE, nullptr, nullptr, &tables));
  const auto* handles = static_cast<const zvsdk_handlemanager_interface*>(tables);
  ASSERT_EQ(0u, handles->handle_register(stubborn, &left_behind, 5, never));

  zvsdk_user* user = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_user_create("u", &user));
  EXPECT_EQ(6u, low_word(zvsdk_manager_release(s_manager)));
  EXPECT_EQ(0, s_orders);
  ASSERT_EQ(0u, zvsdk_manager_user_release(user));
  EXPECT_EQ(0u, zvsdk_manager_release(s_manager));
  EXPECT_EQ(2, s_orders);
  EXPECT_EQ(7u, low_word(handles->handle_validate(&left_behind, 5)));
}

TEST_F(host_test, providers_are_walked_in_order_and_hand_back_their_data) {
  int first_data = 1;
  int second_data = 2;
  uint32_t table = 0xABCD;
  zvsdk_provider_registration* first = nullptr;
  zvsdk_provider_registration* second = nullptr;
  const auto add = [&](void* data, zvsdk_provider_registration** registration) {
    return host.manager->provider_register(host.client, "_grid", nullptr, &table, sizeof table,
                                           data, registration);
  };
  ASSERT_EQ(0u, add(&first_data, &first));
  ASSERT_EQ(0u, add(&second_data, &second));
  table = 0;  // the manager has a copy
  const void* found = nullptr;
  void* data = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_provider_get("_grid", 1, &found, &data));
  EXPECT_EQ(&second_data, data);
  EXPECT_EQ(0xABCDu, *static_cast<const uint32_t*>(found));
  EXPECT_EQ(3u, low_word(zvsdk_manager_provider_get("_grid", 2, &found, &data)));
  EXPECT_EQ(3u, low_word(zvsdk_manager_provider_get("_other", 0, &found, &data)));
  EXPECT_EQ(0u, host.manager->provider_deregister(first, &data));
  EXPECT_EQ(&first_data, data);
  EXPECT_EQ(1u, low_word(host.manager->provider_deregister(first, nullptr)));
  EXPECT_EQ(0u, host.manager->provider_deregister(second, nullptr));
}

TEST_F(host_test, users_and_the_licence_policy) {
  zvsdk_user* user = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_user_create("Ada", &user));
  const char* name = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_user_get_name(user, &name));
  EXPECT_STREQ("Ada", name);
  EXPECT_EQ(0u, host.users->user_addref(user));
  EXPECT_EQ(0u, host.users->user_release(user));
  EXPECT_EQ(0u, host.handles->handle_validate_user(user));

  EXPECT_EQ(0u, host.licence->license_check(nullptr, "playlist"));
  const auto refuse_nobody = [](void* context, zvsdk_user* who,
                                const char* feature) -> zvsdk_status {
    EXPECT_STREQ("playlist", feature);
    return who == context ? 0 : 0x90AA0005;
  };
  ASSERT_EQ(0u, zvsdk_manager_license_policy_set(refuse_nobody, user));
  EXPECT_EQ(0u, host.licence->license_check(user, "playlist"));
  EXPECT_EQ(0x90AA0005u, host.licence->license_check(nullptr, "playlist"));
  ASSERT_EQ(0u, zvsdk_manager_license_policy_set(nullptr, nullptr));

  EXPECT_EQ(0u, zvsdk_manager_user_release(user));
  EXPECT_EQ(1u, low_word(zvsdk_manager_user_release(user)));
  EXPECT_EQ(1u, low_word(host.handles->handle_validate_user(user)));
  EXPECT_EQ(1u, low_word(host.licence->license_check(user, "playlist")));
}

}  // namespace
