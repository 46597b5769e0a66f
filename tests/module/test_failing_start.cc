// A start beside a host that fails at every single place, and a stop that the host orders.
#include <algorithm>
#include <array>

#include "module/playlist_services.h"
#include "tests/module/module_fixture.h"

namespace {

constexpr const char* s_names[] = {
    ZVSDK_LICENSE_INTERFACE,       ZVSDK_ERRORINFO_INTERFACE,   ZVSDK_HANDLEMANAGER_INTERFACE,
    ZVSDK_USERINFO_INTERFACE,      ZVSDK_LISTMANAGER_INTERFACE, ZVSDK_ZDO_INTERFACE,
    ZVSDK_SERIALIZATION_INTERFACE,
};
constexpr size_t s_service_count = std::size(s_names);
constexpr zvsdk_status s_host_failure = 0x90800042;

// The host as its client sees it: each table is a release slot and nothing else.
struct fake_table {
  zvsdk_status (*release)(const fake_table*);
};
fake_table s_tables[s_service_count];
size_t s_fail_at;  // the interface that is refused; beyond the last one: none
zvsdk_status s_register_status;
zvsdk_status s_release_status;
zvsdk_client_shutdown_fn s_order_shutdown;
std::vector<std::string> s_events;

zvsdk_status release_table(const fake_table* table) {
  s_events.push_back(std::string("-") + s_names[table - s_tables]);
  return 0;
}

zvsdk_status get_interface(const char* name, void*, void*, void** table) {
  const size_t index =
      std::find(std::begin(s_names), std::end(s_names), std::string(name)) - s_names;
  if (index >= s_fail_at) return s_host_failure;
  s_events.push_back(std::string("+") + name);
  *table = &s_tables[index];
  return 0;
}

zvsdk_status register_client(uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown,
                             void*, zvsdk_client** client) {
  EXPECT_EQ(0x89u, package);
  EXPECT_STREQ("ZVSDK Playlst", name);
  s_order_shutdown = shutdown;
  if (s_register_status == 0) *client = reinterpret_cast<zvsdk_client*>(&s_order_shutdown);
  return s_register_status;
}

zvsdk_status release_client(zvsdk_client*) {
  s_events.push_back("-client");
  return s_release_status;
}

class failing_start : public host_test {
 protected:
  void SetUp() override {
    host_test::SetUp();
    for (fake_table& table : s_tables) table.release = release_table;
    s_fail_at = s_service_count;
    s_register_status = s_release_status = 0;
    s_events.clear();
    fake.client_register = register_client;
    fake.client_release = release_client;
    fake.interface_get = get_interface;
  }

  void expect_failed_start(zvsdk_status source) {
    EXPECT_EQ(playlist_error_init_failed, zvsdk_playlist_initialize(&fake));
    EXPECT_EQ(playlist_error_init_failed, last_error().mapped);
    EXPECT_EQ(source, last_error().source);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  }

  zvsdk_sdkmanager fake = {.magic = ZVSDK_MANAGER_MAGIC,
                           .version = ZVSDK_MANAGER_VERSION,
                           .client_register = nullptr,
                           .client_release = nullptr,
                           .provider_register = nullptr,
                           .provider_deregister = nullptr,
                           .interface_get = nullptr};
};

// In the order of release, which is not the reverse of the order of acquisition for the last two.
constexpr size_t s_release_order[] = {6, 5, 4, 2, 3, 1, 0};

TEST_F(failing_start, gives_back_what_it_acquired) {
  for (s_fail_at = 0; s_fail_at < s_service_count; ++s_fail_at) {
    std::vector<std::string> expected;
    for (size_t i = 0; i < s_fail_at; ++i) expected.push_back(std::string("+") + s_names[i]);
    expected.push_back("-client");
    for (size_t i : s_release_order)
      if (i < s_fail_at) expected.push_back(std::string("-") + s_names[i]);

    s_events.clear();
    expect_failed_start(s_host_failure);
    EXPECT_EQ(expected, s_events) << s_names[s_fail_at];
  }
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager)) << "a start beside a sound host works";
  EXPECT_EQ(0u, zvsdk_playlist_shutdown());
}

TEST_F(failing_start, stops_when_the_client_is_refused) {
  s_register_status = s_host_failure;
  expect_failed_start(s_host_failure);
  EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_shutdown());
}

TEST_F(failing_start, a_stop_ordered_by_the_host_is_never_refused) {
  ASSERT_EQ(0u, zvsdk_playlist_initialize(&fake));
  ASSERT_EQ(0u, zvsdk_playlist_initialize(&fake));
  ASSERT_EQ(0u, zvsdk_playlist_shutdown());
  s_release_status = 0x90800006;
  EXPECT_EQ(0x90890006u, zvsdk_playlist_shutdown());
  EXPECT_EQ(1u, zvsdk_playlist_initchecks());
  EXPECT_NE(nullptr, g_playlist_handlemanager_interface) << "nothing is torn down";

  s_events.clear();
  EXPECT_EQ(0u, s_order_shutdown());
  EXPECT_EQ(1 + s_service_count, s_events.size());
  EXPECT_EQ(0u, zvsdk_playlist_initchecks());
  EXPECT_EQ(nullptr, g_playlist_handlemanager_interface);
  EXPECT_EQ(7u, s_order_shutdown());
}

}  // namespace
