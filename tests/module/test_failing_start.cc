// A start beside a host that fails at every single place, and a stop that the host orders.
#include <algorithm>
#include <array>

#include "module/playlist_services.h"
#include "support/zcsl_module.h"
#include "tests/common/playlist_fixture.h"

namespace {

// In the order of acquisition, and the order in which they are given back.
const texts s_names = {ZVSDK_LICENSE_INTERFACE,       ZVSDK_ERRORINFO_INTERFACE,
                       ZVSDK_HANDLEMANAGER_INTERFACE, ZVSDK_USERINFO_INTERFACE,
                       ZVSDK_LISTMANAGER_INTERFACE,   ZVSDK_ZDO_INTERFACE,
                       ZVSDK_SERIALIZATION_INTERFACE};
constexpr size_t s_release_order[] = {6, 5, 4, 2, 3, 1, 0};

// The host as a starting client sees it: each table is a release slot and nothing else.
struct fake_table {
  zvsdk_status (*release)(const fake_table*);
};
std::array<fake_table, std::size(s_release_order)> s_tables;
zvsdk_client_shutdown_fn s_order_shutdown;
zvsdk_status s_release_status;
size_t s_steps_left;  // the step that finds none left fails
texts s_events;

zvsdk_status step(const std::string& event) {
  if (s_steps_left-- == 0) return 0x90800042;
  return s_events.push_back(event), 0;
}

class failing_start : public host_test {
 protected:
  void SetUp() override {
    host_test::SetUp();
    s_release_status = 0;
    s_tables.fill({[](const fake_table* table) -> zvsdk_status {
      return s_events.push_back("-" + s_names[table - s_tables.data()]), 0;
    }});
    fake = *manager;
    fake.client_register = [](uint32_t package, const char* name, zvsdk_client_shutdown_fn shutdown,
                              void*, zvsdk_client** client) {
      s_order_shutdown = shutdown;
      *client = reinterpret_cast<zvsdk_client*>(&s_order_shutdown);
      return step(std::string(name) + " " + std::to_string(package));
    };
    fake.client_release = [](zvsdk_client*) {
      return s_events.push_back("-client"), s_release_status;
    };
    fake.interface_get = [](const char* name, void*, void*, void** table) {
      *table = &s_tables[std::ranges::find(s_names, name) - s_names.begin()];
      return step(std::string("+") + name);
    };
  }
  zvsdk_sdkmanager fake = {};
};

TEST_F(failing_start, gives_back_what_it_acquired) {
  const uint32_t support_users = zcsl_datatypes_initchecks();
  for (size_t steps = 0; steps <= s_names.size(); ++steps) {
    s_steps_left = steps;
    s_events.clear();
    EXPECT_EQ(playlist_error_init_failed, zvsdk_playlist_initialize(&fake));
    EXPECT_EQ(0x90800042u, last_error().source);
    EXPECT_EQ(support_users, zcsl_datatypes_initchecks());
    EXPECT_EQ(playlist_error_not_initialized, zvsdk_playlist_shutdown());

    texts expected = {"ZVSDK Playlst 137"};
    for (const std::string& name : s_names) expected.push_back("+" + name);
    expected.resize(steps);
    expected.push_back("-client");
    for (const size_t i : s_release_order)
      if (i + 1 < steps) expected.push_back("-" + s_names[i]);
    EXPECT_EQ(expected, s_events);
  }
}

TEST_F(failing_start, a_stop_ordered_by_the_host_is_never_refused) {
  s_steps_left = 100;
  ASSERT_EQ(0u, zvsdk_playlist_initialize(&fake));
  s_release_status = 0x90800006;
  EXPECT_EQ(0x90890006u, zvsdk_playlist_shutdown());
  EXPECT_NE(nullptr, g_playlist_handlemanager_interface) << "nothing is torn down";
  EXPECT_EQ(0u, zvsdk_playlist_initialize(&fake));

  EXPECT_EQ(0u, s_order_shutdown());
  EXPECT_EQ(nullptr, g_playlist_handlemanager_interface);
  EXPECT_EQ(7u, s_order_shutdown());
}

}  // namespace
