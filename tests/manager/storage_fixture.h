/*
 * storage_fixture.h: a host with its storage table, a folder for one test, and a table of names
 * with their data in it. Outcomes are texts: rows, or "#" and the low word of a status.
 */
#ifndef STORAGE_FIXTURE_H
#define STORAGE_FIXTURE_H

#include <functional>

#include "tests/common/data_folder.h"
#include "tests/manager/host_fixture.h"

template <class Handle>
using stored = std::unique_ptr<Handle, std::function<void(Handle*)>>;

class storage_test : public host_test {
 protected:
  template <class Handle>
  static stored<Handle> own(Handle* handle, zvsdk_status (*release)(Handle*)) {
    return {handle, [release](Handle* each) { EXPECT_EQ(0u, release(each)); }};
  }

  using table = stored<zvsdk_storage_table>;
  using record = stored<zvsdk_storage_record>;
  using cursor = stored<zvsdk_storage_cursor>;

  /* Does work as somebody who owns nothing, also where the tests run as root. */
  template <class Work>
  void with_rights(unsigned of_file, unsigned of_folder, Work work) {
    std::filesystem::permissions(file(), std::filesystem::perms{of_file});
    std::filesystem::permissions(folder.path(), std::filesystem::perms{of_folder});
    EXPECT_EQ(0, seteuid(geteuid() == 0 ? 65534 : geteuid()));
    work();
    EXPECT_EQ(0, seteuid(getuid()));
    std::filesystem::permissions(folder.path(), std::filesystem::perms{0777});
  }

  std::string file() const { return folder.path() + "/t.zdb"; }
  zvsdk_status open(table& into, uint32_t mode = ZVSDK_STORAGE_READ_WRITE) {
    zvsdk_storage_table* opened = nullptr;
    const auto status =
        api->table_open(api, "t.zdb", "names", folder.path().c_str(), mode, &opened);
    into = own(opened, api->table_close);
    return status;
  }
  zvsdk_status create(table& into, const std::string& location, const char* name = "names",
                      uint32_t flags = ZVSDK_STORAGE_COLUMN_KEY) {
    const auto schema = own(output_of(api->schema_create, api), api->schema_release);
    EXPECT_EQ(0u, api->schema_add_column(schema.get(), "Name", ZVSDK_STORAGE_STRING, flags));
    EXPECT_EQ(0u, api->schema_add_column(schema.get(), "data", ZVSDK_STORAGE_BINARY, 0));
    zvsdk_storage_table* made = nullptr;
    const auto status =
        api->table_create(api, "t.zdb", name, location.c_str(), nullptr, schema.get(), &made);
    into = own(made, api->table_close);
    return status;
  }
  table created(const char* name = "names", uint32_t flags = ZVSDK_STORAGE_COLUMN_KEY) {
    table made;
    EXPECT_EQ(0u, create(made, folder.path(), name, flags)) << last_error().message;
    return made;
  }

  record make(const char* name) {
    record made = own(output_of(api->record_create, api), api->record_release);
    const uint32_t flags = name != nullptr ? ZVSDK_STORAGE_VALUE : ZVSDK_STORAGE_EVERY;
    EXPECT_EQ(0u, api->record_set_string(made.get(), "name", name, flags));
    return made;
  }
  zvsdk_status put(const table& to, const char* name, const std::string& data,
                   zvsdk_storage_transaction* in = nullptr) {
    const record row = make(name);
    EXPECT_EQ(0u, api->record_set_binary(row.get(), "data", data.data(),
                                         static_cast<uint32_t>(data.size()), ZVSDK_STORAGE_VALUE));
    return api->table_put(to.get(), row.get(), in);
  }
  zvsdk_status find(const table& in, const char* name, cursor& found) {
    zvsdk_storage_cursor* rows = nullptr;
    const auto status = api->table_find(in.get(), make(name).get(), nullptr, &rows);
    found = own(rows, api->cursor_release);
    return status;
  }
  zvsdk_status next(const cursor& of, record& row) {
    zvsdk_storage_record* given = nullptr;
    const auto status = api->cursor_next(of.get(), &given);
    row = own(given, api->record_release);
    return status;
  }
  /* "name=data" */
  std::string text_of(const record& row) {
    const char* name = nullptr;
    const void* data = nullptr;
    uint32_t size = 0;
    zvsdk_status status = api->record_get_string(row.get(), "NAME", &name);
    if (status == 0) status = api->record_get_binary(row.get(), "data", &data, &size);
    if (status != 0) return "#" + std::to_string(low_word(status));
    return name + std::string("=") + std::string(static_cast<const char*>(data), size);
  }
  /* The rows of a name (null: all) in the order of a cursor, then the status at its end unless
   * ordinary. */
  std::string all(const table& of, const char* name = nullptr) {
    cursor rows;
    zvsdk_status status = find(of, name, rows);
    std::string text;
    for (record row; status == 0 && (status = next(rows, row)) == 0;)
      text += (text.empty() ? "" : " ") + text_of(row);
    return low_word(status) == ZVSDK_STORAGE_END ? text
                                                 : text + "#" + std::to_string(low_word(status));
  }
  data_folder folder{quick_folder()};
  const zvsdk_storage_interface* api = host.storage;
};

#endif
