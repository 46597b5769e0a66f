// Storage: rows and what finds them, transactions, processes and kills, and what is refused.

#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <atomic>
#include <thread>

#include "tests/manager/storage_fixture.h"

namespace {

TEST_F(storage_test, keeps_rows_by_key) {
  table names = created();
  EXPECT_EQ("", all(names));
  EXPECT_EQ("#3", get(names, "b"));
  for (const char* name : {"b", "", "\xC3\xA9", "B", "a'\""}) EXPECT_EQ(0u, put(names, name, name));
  EXPECT_EQ(0u, put(names, "b", std::string("\0new", 4)));
  EXPECT_EQ("= B=B a'\"=a'\" b=" + std::string("\0new", 4) + " \xC3\xA9=\xC3\xA9", all(names));

  record row;
  ASSERT_EQ(0u, first(names, "b", row));  // its data stay unread
  ASSERT_EQ(0u, api->record_set_string(row.get(), "name", "B", ZVSDK_STORAGE_VALUE));
  EXPECT_EQ(0u, api->table_put(names.get(), row.get(), nullptr));
  EXPECT_EQ(std::string("\0new", 4), get(names, "B"));
  EXPECT_EQ("#3", get(names, "b"));
  ASSERT_EQ(0u, first(names, "B", row));
  EXPECT_EQ(0u, api->table_delete_record(names.get(), make("B").get(), nullptr));
  EXPECT_EQ(3u, low_word(api->table_delete_record(names.get(), row.get(), nullptr)));
  EXPECT_EQ(3u, low_word(api->table_put(names.get(), row.get(), nullptr)));
  EXPECT_EQ("#3", data_of(row));
  set_data(row, "again");
  EXPECT_EQ(0u, api->table_put(names.get(), row.get(), nullptr));

  cursor rows;
  ASSERT_EQ(0u, find(names, nullptr, rows));
  EXPECT_EQ(0u, put(names, "a'\"", ""));
  EXPECT_EQ(0u, api->table_delete_record(names.get(), make("").get(), nullptr));
  ASSERT_EQ(0u, next(rows, row));
  EXPECT_EQ("B", name_of(row));
  names.reset();
  ASSERT_EQ(0u, next(rows, row));
  EXPECT_EQ("", data_of(row));
  ASSERT_EQ(0u, open(names, ZVSDK_STORAGE_READ));
  EXPECT_EQ("B=again a'\"= \xC3\xA9=\xC3\xA9", all(names));
  const auto schema = own(output_of(api->table_get_schema, names.get()), api->schema_release);
  const char* column = nullptr;
  uint32_t type = 0, flags = 0;
  EXPECT_EQ(2u, output_of(api->schema_column_count, schema.get()));
  EXPECT_EQ(0u, api->schema_get_column(schema.get(), 0, &column, &type, &flags));
  EXPECT_EQ("Name 1 3", column + (" " + std::to_string(type)) + " " + std::to_string(flags));

  table keyless = created("no key", 0);
  for (const char* data : {"2", "1"}) EXPECT_EQ(0u, put(keyless, "x", data));
  EXPECT_EQ("x=2 x=1", all(keyless));
  zvsdk_storage_info info;
  EXPECT_EQ(0u, validate(info));
  EXPECT_TRUE(info.exists == 1 && info.readable == 1 && info.integrity == zvsdk_storage_whole);
  EXPECT_EQ(5u, info.row_count);
  EXPECT_EQ(std::filesystem::file_size(file()), info.file_size);
}

TEST_F(storage_test, keeps_a_transaction_whole_or_not_at_all) {
  const table names = created(), others = created("others");
  const auto begin = [&] { return output_of(api->transaction_begin, api); };
  auto* kept = begin();
  for (const table* to : {&names, &others}) EXPECT_EQ(0u, put(*to, "a", "1", kept));
  EXPECT_EQ("", all(names));
  EXPECT_EQ(0u, api->transaction_commit(kept));
  EXPECT_EQ(1u, low_word(api->transaction_commit(kept)));

  auto* dropped = begin();
  EXPECT_EQ(0u, put(names, "a", "2", dropped));
  EXPECT_EQ(0u, api->table_delete_record(others.get(), make("a").get(), dropped));
  EXPECT_EQ(0u, api->transaction_rollback(dropped));

  table elsewhere, gone = created("gone");
  std::filesystem::create_directory(folder.path() + "/sub");
  ASSERT_EQ(0u, create(elsewhere, folder.path() + "/sub"));
  auto* broken = begin();
  EXPECT_EQ(0u, put(names, "b", "2", broken));
  EXPECT_EQ(1u, low_word(put(elsewhere, "b", "2", broken)));
  EXPECT_EQ(0u, api->transaction_commit(broken));
  EXPECT_EQ(0u, api->table_drop(api, "t.zdb", "gone", folder.path().c_str()));
  broken = begin();
  EXPECT_EQ(0u, put(names, "c", "3", broken));
  EXPECT_EQ(0x500u, low_word(put(gone, "c", "3", broken)));
  EXPECT_EQ(0x500u, low_word(put(names, "c", "3", broken)));
  EXPECT_EQ(0x500u, low_word(api->transaction_commit(broken)));
  EXPECT_EQ("a=1 b=2", all(names));
  EXPECT_EQ("a=1", all(others));
}

/* Runs `work` in processes of their own and waits for them. */
template <class Work>
void in_processes(int count, Work work) {
  for (int i = 0; i < count; ++i) {
    if (fork() == 0) {
      work(i);
      _exit(testing::Test::HasFailure());
    }
  }
  for (int status = 0; count-- > 0;) {
    wait(&status);
    EXPECT_EQ(0, status);
  }
}

TEST_F(storage_test, loses_nothing_of_processes_and_threads_at_once) {
  in_processes(3, [&](int process) {
    table names;
    ASSERT_EQ(0u, create(names, folder.path()));
    const auto put_all = [&](const std::string& who) {
      for (int i = 0; i < 20; ++i) EXPECT_EQ(0u, put(names, (who + std::to_string(i)).c_str(), ""));
    };
    std::thread second(put_all, std::to_string(process) + "b");
    put_all(std::to_string(process) + "a");
    second.join();
  });
  zvsdk_storage_info info;
  EXPECT_EQ(0u, validate(info));
  EXPECT_EQ(120u, info.row_count);
}

std::string version(uint32_t number) {
  return std::to_string(number) +
         std::string(number % 7 * 20000, static_cast<char>('a' + number % 26));
}

TEST_F(storage_test, survives_a_kill_at_any_moment) {
  created().reset();
  auto* kept = new (mmap(nullptr, sizeof(uint32_t), PROT_READ | PROT_WRITE,
                         MAP_SHARED | MAP_ANONYMOUS, -1, 0)) std::atomic<uint32_t>(0);
  srandom(1);
  for (int round = 0; round < 100; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      table names;
      if (open(names) != 0) _exit(1);
      while (put(names, "n", version(*kept + 1)) == 0) ++*kept;
      _exit(1);
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status));
    table names;
    ASSERT_EQ(0u, open(names, ZVSDK_STORAGE_READ)) << last_error().message;
    const std::string found = get(names, "n");
    const uint32_t number = found == "#3" ? 0 : static_cast<uint32_t>(std::stoul(found));
    EXPECT_TRUE(number == *kept || number == *kept + 1) << *kept << " " << number;
    EXPECT_TRUE(number == 0 || found == version(number));
    *kept = number;
  }
  EXPECT_GT(*kept, 20u);
}

TEST_F(storage_test, keeps_the_old_row_when_the_disk_is_full) {
  ASSERT_EQ(0u, put(created(), "n", "old"));
  signal(SIGXFSZ, SIG_IGN);
  table names;
  in_processes(1, [&](int) {
    ASSERT_EQ(0u, open(names));
    const rlimit small = {.rlim_cur = 100000, .rlim_max = 100000};
    setrlimit(RLIMIT_FSIZE, &small);
    EXPECT_EQ(0x506u, low_word(put(names, "n", std::string(200000, 'x'))));
    EXPECT_TRUE(has(last_error().message, "disk is full"));
    EXPECT_EQ("old", get(names, "n"));
    EXPECT_EQ(0u, put(names, "n", "new"));
  });
  ASSERT_EQ(0u, open(names));
  EXPECT_EQ("n=new", all(names));
}

TEST_F(storage_test, says_what_it_refuses) {
  const table names = created();
  const record nothing = own(output_of(api->record_create, api), api->record_release);
  const record binary = make("n"), unknown = make("n");
  EXPECT_EQ(0u, api->record_set_binary(binary.get(), "name", "", 0, ZVSDK_STORAGE_VALUE));
  EXPECT_EQ(0u, api->record_set_binary(unknown.get(), "size", "", 0, ZVSDK_STORAGE_VALUE));
  table reading, made;
  EXPECT_EQ(0u, open(reading, ZVSDK_STORAGE_READ));
  zvsdk_storage_table* opened = nullptr;
  zvsdk_storage_cursor* found = nullptr;
  const auto open_in = [&](const char* name, const std::string& where, const char* of = "names") {
    return api->table_open(api, name, of, where.c_str(), ZVSDK_STORAGE_READ, &opened);
  };
  const auto try_put = [&](const record& row) {
    return api->table_put(names.get(), row.get(), nullptr);
  };
  std::ofstream(folder.path() + "/empty.zdb");
  std::ofstream(folder.path() + "/text.zdb") << std::string(5000, 'x');
  const auto check = [&](uint32_t status, zvsdk_status given, const char* message) {
    EXPECT_EQ(status, low_word(given)) << message;
    EXPECT_TRUE(has(last_error().message, message));
  };
  check(0x500, open_in("u.zdb", folder.path()), "u.zdb\" does not exist");
  check(0x500, open_in("empty.zdb", folder.path()), "does not exist");
  check(0x500, open_in("t.zdb", folder.path(), "none"), "no table \"none\"");
  check(0x500, api->table_drop(api, "t.zdb", "none", folder.path().c_str()), "no table");
  check(0x501, open_in("t.zdb", file()), "has no folder");
  check(0x501, create(made, "/proc"), "cannot be opened");
  check(0x502, open_in("text.zdb", folder.path()), "not a storage file");
  check(0x502, open_in("fd", "/proc/self"), "is no file");
  check(1, open_in("../t.zdb", folder.path()), "without a slash");
  check(1, open_in("t.zdb", folder.path(), "SQLite_schema"), "reserved");
  check(1, open_in("t.zdb", folder.path(), std::string(65, 'x').c_str()), "64 bytes");
  check(0x368, create(made, folder.path(), "NAMES", 0), "other columns");
  check(0x505, put(reading, "n", ""), "to be read");
  check(1, try_put(nothing), "key column \"Name\"");
  check(1, try_put(make(nullptr)), "key column \"Name\"");
  check(1, try_put(binary), "other type");
  check(1, try_put(unknown), "no column \"size\"");
  check(1, api->table_find(names.get(), nothing.get(), nullptr, &found), "selects nothing");
  zvsdk_storage_table* closed = made.get();
  EXPECT_EQ(nullptr, closed);
  ASSERT_EQ(0u, open(made));
  closed = made.get();
  made.reset();
  check(1, api->table_close(closed), "");
  // Passed on by a module as its own, a failure keeps its message.
  const auto full = open_in("text.zdb", folder.path());
  EXPECT_EQ(0u, host.errors->errorinfo_set(0x90890502, full, "f", nullptr));
  EXPECT_TRUE(has(last_error().message, "not a storage file"));
}

}  // namespace
