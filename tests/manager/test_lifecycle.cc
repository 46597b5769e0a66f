// Start and stop of the host, clients, tables and providers.

#include "tests/manager/host_fixture.h"

namespace {

TEST(host, is_counted_and_refuses_calls_while_it_is_down) {
  zvsdk_sdkmanager* first = output_of(zvsdk_manager_create, nullptr);
  EXPECT_EQ(first, output_of(zvsdk_manager_create, nullptr));
  EXPECT_EQ(0u, zvsdk_manager_release(first));
  void* table = output_of(first->interface_get, ZVSDK_ZDO_INTERFACE, nullptr, nullptr);
  EXPECT_EQ(3u, low_word(first->interface_get("_no_such", nullptr, nullptr, &table)));
  EXPECT_EQ(0u, zvsdk_manager_release(first));

  zvsdk_client* client = nullptr;
  zvsdk_zdo* object = nullptr;
  EXPECT_EQ(7u, low_word(zvsdk_manager_release(first)));
  EXPECT_EQ(7u, low_word(first->client_register(1, "down", nullptr, nullptr, &client)));
  EXPECT_EQ(7u, low_word(zvsdk_manager_zdo_create("zvsdk_ctx_track", &object)));
  const zvsdk_manager_config no_folder = {.size = sizeof no_folder, .data_path = "/no/such"};
  EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_create(&no_folder, &first)));
}

int s_orders = 0;
zvsdk_sdkmanager* s_manager = nullptr;
zvsdk_client* s_client = nullptr;

TEST(host, the_last_release_orders_clients_to_shut_down) {
  const auto count = []() -> zvsdk_status { return ++s_orders, 1; };
  const auto leave = []() -> zvsdk_status {
    return ++s_orders, s_manager->client_release(s_client);
  };
  const auto never = [](void*) -> zvsdk_status { return ADD_FAILURE(), 0; };
  int left_behind = 0;
  s_manager = output_of(zvsdk_manager_create, nullptr);
  zvsdk_client* stubborn = output_of(s_manager->client_register, 1, "stubborn", +count, nullptr);
  s_client = output_of(s_manager->client_register, 2, "obedient", +leave, nullptr);
  const auto* handles = static_cast<const zvsdk_handlemanager_interface*>(
      output_of(s_manager->interface_get, ZVSDK_HANDLEMANAGER_INTERFACE, nullptr, nullptr));
  ASSERT_EQ(0u, handles->handle_register(stubborn, &left_behind, 5, never));
  {
    const user_ptr user(output_of(zvsdk_manager_user_create, "u"));
    EXPECT_EQ(6u, low_word(zvsdk_manager_release(s_manager)));
    EXPECT_EQ(0, s_orders);
  }
  EXPECT_EQ(0u, zvsdk_manager_release(s_manager));
  EXPECT_EQ(2, s_orders);
  EXPECT_EQ(7u, low_word(handles->handle_validate(&left_behind, 5)));
}

TEST_F(host_test, providers_are_walked_in_order_and_hand_back_their_data) {
  zvsdk_provider_registration* added[2] = {};
  for (auto& each : added)
    each = output_of(host.manager->provider_register, host.client, "_grid", nullptr, "table", 6,
                     &each);
  const void* found = nullptr;
  void* data = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_provider_get("_grid", 1, &found, &data));
  EXPECT_EQ(&added[1], data);
  EXPECT_STREQ("table", static_cast<const char*>(found));
  EXPECT_EQ(3u, low_word(zvsdk_manager_provider_get("_grid", 2, &found, &data)));
  for (auto& each : added) EXPECT_EQ(0u, host.manager->provider_deregister(each, nullptr));
  EXPECT_EQ(1u, low_word(host.manager->provider_deregister(added[0], nullptr)));
  EXPECT_STREQ("table", static_cast<const char*>(found)) << "stays for who is calling through it";
}

}  // namespace
