// Storage: rows and what finds them, transactions, processes at once, and what is refused.

#include <sys/wait.h>

#include <algorithm>
#include <cstring>
#include <thread>

#include "tests/manager/storage_fixture.h"

namespace {

TEST_F(storage_test, keeps_rows_by_key) {
  table names = created();
  for (const char* name : {"b", "", "\xC3\xA9", "B", "a'\""}) EXPECT_EQ(0u, put(names, name, name));
  EXPECT_EQ(0u, put(names, "b", std::string("\0new", 4)));
  EXPECT_EQ("= B=B a'\"=a'\" b=" + std::string("\0new", 4) + " \xC3\xA9=\xC3\xA9", all(names));

  record row;
  cursor rows;
  ASSERT_EQ(0u, find(names, "b", rows));
  ASSERT_EQ(0u, next(rows, row));  // its data stay unread
  ASSERT_EQ(0u, api->record_set_string(row.get(), "name", "B", ZVSDK_STORAGE_VALUE));
  EXPECT_EQ(0u, api->table_put(names.get(), row.get(), nullptr));
  EXPECT_EQ("B=" + std::string("\0new", 4), all(names, "B"));

  ASSERT_EQ(0u, find(names, nullptr, rows));
  EXPECT_EQ(0u, api->table_delete_record(names.get(), make("").get(), nullptr));
  EXPECT_EQ(3u, low_word(api->table_delete_record(names.get(), make("").get(), nullptr)));
  EXPECT_EQ(0u, put(names, "B", ""));
  names.reset();
  ASSERT_EQ(0u, next(rows, row));
  EXPECT_EQ("B=", text_of(row)) << "a cursor outlives its table and sees what changed behind it";
  ASSERT_EQ(0u, open(names, ZVSDK_STORAGE_READ));
  EXPECT_EQ("B= a'\"=a'\" \xC3\xA9=\xC3\xA9", all(names));

  const record texts = make("short");
  const char* text = nullptr;
  EXPECT_EQ(0u, api->record_get_string(texts.get(), "name", &text));
  for (const char* column : {"a", "b", "c", "d"})
    EXPECT_EQ(0u, api->record_set_string(texts.get(), column, "", ZVSDK_STORAGE_VALUE));
  EXPECT_STREQ("short", text) << "texts handed out stay while other columns are set";
}

TEST_F(storage_test, keeps_the_rows_of_a_file_and_its_copy_apart) {
  const table names = created();
  EXPECT_EQ(0u, put(names, "a", "1"));
  const data_folder backup(folder.path());
  std::filesystem::copy_file(file(), backup.path() + "/t.zdb");
  EXPECT_EQ(0u, put(names, "b", "2"));
  table copies;
  EXPECT_EQ(0u, create(copies, backup.path()));
  EXPECT_EQ(0u, put(copies, "c", "3"));
  cursor rows;
  record row;
  ASSERT_EQ(0u, find(copies, "c", rows));
  ASSERT_EQ(0u, next(rows, row));
  EXPECT_EQ(0u, api->table_put(names.get(), row.get(), nullptr));
  EXPECT_EQ("a=1 b=2 c=3", all(names));
}

TEST_F(storage_test, keeps_a_transaction_whole_or_not_at_all) {
  const table names = created(), others = created("others"), gone = created("gone");
  const auto begin = [&] { return output_of(api->transaction_begin, api); };
  auto* kept = begin();
  for (const table* to : {&names, &others}) EXPECT_EQ(0u, put(*to, "a", "1", kept));
  EXPECT_EQ("", all(names));
  EXPECT_EQ(0u, api->transaction_commit(kept));
  auto* dropped = begin();
  EXPECT_EQ(0u, put(names, "a", std::string(3000000, '2'), dropped));
  EXPECT_EQ("a=1", all(names)) << "however large";
  EXPECT_EQ(0u, api->table_delete_record(others.get(), make("a").get(), dropped));
  EXPECT_EQ(0u, api->transaction_rollback(dropped));
  EXPECT_EQ(0u, api->table_drop(api, "t.zdb", "gone", folder.path().c_str()));
  auto* broken = begin();
  EXPECT_EQ(0u, put(names, "c", "3", broken));
  EXPECT_EQ(0x500u, low_word(put(gone, "c", "3", broken)));
  EXPECT_EQ(0x500u, low_word(api->transaction_commit(broken)));
  EXPECT_EQ("a=1", all(names));
  EXPECT_EQ("a=1", all(others));
}

TEST_F(storage_test, loses_nothing_of_processes_and_threads_at_once) {
  for (int process = 0; process < 3; ++process) {
    if (fork() != 0) continue;
    table names;
    EXPECT_EQ(0u, create(names, folder.path()));
    const auto put_all = [&](const std::string& who) {
      for (int i = 0; i < 20; ++i) EXPECT_EQ(0u, put(names, (who + std::to_string(i)).c_str(), ""));
    };
    std::thread second(put_all, std::to_string(process) + "b");
    put_all(std::to_string(process) + "a");
    second.join();
    _exit(testing::Test::HasFailure());
  }
  for (int status = 0; wait(&status) > 0;) EXPECT_EQ(0, status);
  table names;
  ASSERT_EQ(0u, open(names));
  const std::string found = all(names);
  EXPECT_EQ(120, std::ranges::count(found, '='));
}

TEST_F(storage_test, tells_the_state_of_a_file) {
  const auto validate = [&] {
    zvsdk_storage_info info;
    std::memset(&info, 7, sizeof info);
    info.size = sizeof info;
    const auto status = api->storage_validate(api, "t.zdb", folder.path().c_str(), &info);
    return std::to_string(low_word(status)) + " " + std::to_string(info.exists) +
           std::to_string(info.readable) + std::to_string(info.integrity) + " " +
           std::to_string(info.row_count) + (info.free_size > 90000 ? " free" : "") +
           (info.file_size > 90000 ? " large" : "");
  };
  EXPECT_EQ("1280 000 0", validate());
  folder.write("t.zdb", "");
  EXPECT_EQ("1280 100 0", validate());
  const table names = created(), others = created("others");
  for (const char* name : {"a", "b"}) EXPECT_EQ(0u, put(names, name, std::string(90000, 'x')));
  EXPECT_EQ(0u, put(others, "a", ""));
  EXPECT_EQ("0 111 3 large", validate());
  for (const char* name : {"a", "b"}) EXPECT_EQ(0u, put(names, name, ""));
  EXPECT_EQ("0 111 3 free large", validate());
  EXPECT_EQ(0u, api->storage_compact(api, "t.zdb", folder.path().c_str()));
  EXPECT_EQ("0 111 3", validate());
}

TEST_F(storage_test, reads_what_it_may_not_write) {
  EXPECT_EQ(0u, put(created(), "a", "1"));
  const std::string path = folder.path();
  const char* where = path.c_str();
  const auto use = [&] {
    table names, made;
    EXPECT_EQ(0u, open(names)) << last_error().message;
    EXPECT_EQ("a=1", all(names));
    auto* together = output_of(api->transaction_begin, api);
    for (const zvsdk_status refused :
         {put(names, "a", "2"), api->table_delete_record(names.get(), make("a").get(), nullptr),
          put(names, "b", "2", together), api->transaction_commit(together),
          create(made, where, "others"), api->table_drop(api, "t.zdb", "names", where),
          api->storage_compact(api, "t.zdb", where)}) {
      EXPECT_EQ(0x90080505, refused) << last_error().message;
    }
    EXPECT_TRUE(has(last_error().message, "cannot be written"));
    EXPECT_EQ("a=1", all(names));
  };
  with_rights(0444, 0555, use);
  with_rights(0444, 0777, use);
  with_rights(0666, 0555, use);
}

TEST_F(storage_test, says_what_it_refuses) {
  const table names = created();
  const record unknown = make("n");
  EXPECT_EQ(0u, api->record_set_binary(unknown.get(), "size", "", 0, ZVSDK_STORAGE_VALUE));
  table reading, made;
  EXPECT_EQ(0u, open(reading, ZVSDK_STORAGE_READ));
  zvsdk_storage_table* opened = nullptr;
  const auto open_in = [&](const char* name, const std::string& where, const char* of = "names") {
    return api->table_open(api, name, of, where.c_str(), ZVSDK_STORAGE_READ, &opened);
  };
  const auto try_put = [&](const record& row) {
    return api->table_put(names.get(), row.get(), nullptr);
  };
  std::ofstream(folder.path() + "/text.zdb") << std::string(5000, 'x');
  const auto check = [&](uint32_t status, zvsdk_status given, const char* message) {
    EXPECT_EQ(status, low_word(given)) << message;
    EXPECT_TRUE(has(last_error().message, message));
  };
  check(0x500, open_in("u.zdb", folder.path()), "u.zdb\" does not exist");
  check(0x500, open_in("t.zdb", folder.path(), "none"), "no table \"none\"");
  check(0x501, open_in("t.zdb", file()), "has no folder");
  with_rights(0666, 0, [&] {
    for (const char* below : {"", "/in"})
      check(0x501, open_in("t.zdb", folder.path() + below), "cannot be opened");
  });
  check(0x502, open_in("text.zdb", folder.path()), "not a storage file");
  check(0x502, open_in("fd", "/proc/self"), "is no file");
  check(1, open_in("../t.zdb", folder.path()), "without a slash");
  check(1, open_in("t.zdb-journal", folder.path()), "-journal");
  const data_folder locked(folder.path());
  std::filesystem::permissions(locked.path(), std::filesystem::perms{0555});
  EXPECT_EQ(0, seteuid(geteuid() == 0 ? 65534 : geteuid()));
  check(0x505, create(made, locked.path()), "its folder cannot be written");
  EXPECT_EQ(0, seteuid(getuid()));
  check(0x368, create(made, folder.path(), "NAMES", 0), "other columns");
  check(0x505, put(reading, "n", ""), "to be read");
  check(1, try_put(make(nullptr)), "key column \"Name\"");
  check(1, try_put(unknown), "no column \"size\"");
  // Passed on by a module as its own, a failure keeps its message.
  const auto full = open_in("text.zdb", folder.path());
  EXPECT_EQ(0u, host.errors->errorinfo_set(0x90890502, full, "f", nullptr));
  EXPECT_TRUE(has(last_error().message, "not a storage file"));
}

}  // namespace
