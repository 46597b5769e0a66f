/*
 * host_fixture.h: a running host for one test, with its service tables and one client.
 */
#ifndef HOST_FIXTURE_H
#define HOST_FIXTURE_H

#include "tests/common/host_objects.h"

class running_host {
 public:
  explicit running_host(const char* data_path = nullptr) {
    const zvsdk_manager_config config = {.size = sizeof config, .data_path = data_path};
    manager = output_of(zvsdk_manager_create, &config);
    client = output_of(manager->client_register, 0x89u, "test", nullptr, nullptr);
    get(ZVSDK_HANDLEMANAGER_INTERFACE, handles);
    get(ZVSDK_ERRORINFO_INTERFACE, errors);
    get(ZVSDK_LISTMANAGER_INTERFACE, lists);
    get(ZVSDK_ZDO_INTERFACE, objects);
    get(ZVSDK_SERIALIZATION_INTERFACE, serialization);
    get(ZVSDK_STORAGE_INTERFACE, storage);
  }
  ~running_host() {
    EXPECT_EQ(0u, manager->client_release(client));
    EXPECT_EQ(0u, zvsdk_manager_release(manager));
  }
  running_host(const running_host&) = delete;
  running_host& operator=(const running_host&) = delete;

  zvsdk_sdkmanager* manager = nullptr;
  zvsdk_client* client = nullptr;
  const zvsdk_handlemanager_interface* handles = nullptr;
  const zvsdk_errorinfo_interface* errors = nullptr;
  const zvsdk_listmanager_interface* lists = nullptr;
  const zvsdk_zdo_interface* objects = nullptr;
  const zvsdk_serialization_interface* serialization = nullptr;
  const zvsdk_storage_interface* storage = nullptr;

 private:
  template <class Table>
  void get(const char* name, const Table*& table) {
    table = static_cast<const Table*>(output_of(manager->interface_get, name, nullptr, nullptr));
  }
};

class host_test : public testing::Test {
 protected:
  running_host host;
};

inline constexpr auto low_word = zvsdk_low_word;

#endif
