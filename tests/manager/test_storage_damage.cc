// Storage files that nobody should have made: damaged ones, and such that other programs changed.

#include <sqlite3.h>
#include <sys/wait.h>

#include "tests/manager/storage_fixture.h"

namespace {

class damaged_storage : public storage_test {
 protected:
  damaged_storage() {
    const table names = created();
    for (const char* name : {"a", "b", "c"}) EXPECT_EQ(0u, put(names, name, "data"));
    EXPECT_EQ(0u, put(names, "big", std::string(9000, 'x')));
    whole = read();
  }

  std::string read() const {
    std::ifstream from(file(), std::ios::binary);
    return {std::istreambuf_iterator<char>(from), {}};
  }
  void write(const std::string& bytes) const {
    std::ofstream(file(), std::ios::binary | std::ios::trunc) << bytes;
  }
  /* Every call has an outcome. Refused files stay as they are. */
  void use(const std::string& bytes) {
    write(bytes);
    zvsdk_storage_info info = {};
    info.size = sizeof info;
    const auto validated = api->storage_validate(api, "t.zdb", folder.path().c_str(), &info);
    EXPECT_EQ(validated == 0, info.integrity == zvsdk_storage_whole);
    table names;
    if (open(names) != 0) {
      EXPECT_TRUE(bytes == read()) << last_error().message;
      return;
    }
    EXPECT_NE("", all(names, "b") + all(names));
    put(names, "b", "new");
    api->table_delete_record(names.get(), make("c").get(), nullptr);
    api->storage_compact(api, "t.zdb", folder.path().c_str());
    api->table_drop(api, "t.zdb", "names", folder.path().c_str());
  }
  std::string run(const char* sql) const {
    sqlite3* database = nullptr;
    EXPECT_EQ(SQLITE_OK, sqlite3_open(file().c_str(), &database));
    sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    EXPECT_EQ(SQLITE_OK, sqlite3_exec(database, sql, nullptr, nullptr, nullptr)) << sql;
    EXPECT_EQ(SQLITE_OK, sqlite3_close(database));
    return read();
  }

  std::string whole;
};

TEST_F(damaged_storage, is_refused_or_read_in_part_when_it_is_cut_or_flipped) {
  for (size_t size : {0, 1, 15, 16, 99, 100, 101, 511, 512, 4095, 4096, 4097, 10000})
    use(whole.substr(0, size));
  for (size_t at = 0; at < whole.size(); ++at) {
    if (whole[at] == 0 || whole[at] == 'x') continue;
    std::string flipped = whole;
    flipped[at] = static_cast<char>(flipped[at] ^ (at % 3 == 0 ? 0x01 : at % 3 == 1 ? 0x80 : 0xFF));
    use(flipped);
  }
}

TEST_F(damaged_storage, loses_no_row_to_what_another_program_added) {
  run("DELETE FROM names WHERE name <> 'a'; CREATE UNIQUE INDEX one ON names (data);"
      "CREATE TRIGGER first AFTER UPDATE ON names BEGIN DELETE FROM names; END;"
      "CREATE TRIGGER other AFTER INSERT ON names BEGIN DELETE FROM names; END;"
      "PRAGMA journal_mode=WAL");
  sqlite3* looking = nullptr;  // keeps the log of later writes while it has the file open
  EXPECT_EQ(SQLITE_OK, sqlite3_open(file().c_str(), &looking));
  EXPECT_EQ(SQLITE_OK, sqlite3_exec(looking, "SELECT * FROM names", nullptr, nullptr, nullptr));
  table names;
  for (const char* name : {"b", "c"}) {
    names.reset();
    ASSERT_EQ(0u, open(names)) << last_error().message;
    EXPECT_EQ(0u, put(names, name, name));
    sqlite3_close(std::exchange(looking, nullptr));
  }
  EXPECT_FALSE(std::filesystem::exists(file() + "-wal"));
  cursor rows;
  record row;
  ASSERT_EQ(0u, find(names, "b", rows));
  ASSERT_EQ(0u, next(rows, row));
  EXPECT_EQ(0u, api->record_set_binary(row.get(), "data", "c", 1, ZVSDK_STORAGE_VALUE));
  EXPECT_EQ(0x504u, low_word(api->table_put(names.get(), row.get(), nullptr)));
  EXPECT_EQ("a=data b=b c=c", all(names));
}

TEST_F(damaged_storage, waits_for_somebody_who_may_take_back_what_a_killed_writer_left) {
  std::filesystem::permissions(file(), std::filesystem::perms{0666});  // and of its journal
  if (fork() == 0) {
    sqlite3* killed = nullptr;
    sqlite3_open(file().c_str(), &killed);
    _exit(sqlite3_exec(killed, "PRAGMA cache_size=1; BEGIN; UPDATE names SET data=zeroblob(90000)",
                       nullptr, nullptr, nullptr));
  }
  int status = 0;
  EXPECT_TRUE(wait(&status) > 0 && status == 0);
  table names;
  const auto look = [&] { EXPECT_EQ(0x505u, low_word(open(names))) << last_error().message; };
  with_rights(0444, 0555, look);
  with_rights(0666, 0555, look);
  EXPECT_EQ(0u, open(names)) << last_error().message;
  EXPECT_EQ("a=data", all(names, "a"));
}

TEST_F(damaged_storage, is_refused_when_another_program_changed_it) {
  const struct {
    const char* sql;
    uint32_t status;
  } changes[] = {
      {"PRAGMA application_id=7", 0x502},
      {"PRAGMA application_id=7; PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = ''",
       0x502},
      {"PRAGMA user_version=2", 0x0B},
      {"DROP TABLE zvsdk_storage_columns", 0x504},
      {"DROP TABLE names; CREATE VIEW names AS SELECT 1 zvsdk_row, 'a' Name, x'00' data", 0x504},
      {"UPDATE zvsdk_storage_columns SET table_name = 'sqlite_schema'", 0x500},
      {"PRAGMA writable_schema=ON; UPDATE sqlite_schema SET sql = 'x' WHERE name = 'names'", 0x504},
  };
  for (const auto& [sql, status] : changes) {
    write(whole);
    const std::string changed = run(sql);
    table names;
    EXPECT_EQ(status, low_word(open(names))) << sql << last_error().message;
    EXPECT_TRUE(changed == read()) << sql;
  }
}

sqlite3_mem_methods s_memory;
int s_left = -1;  // allocations until one fails

class storage_short_of_memory : public storage_test {
 protected:
  storage_short_of_memory() {
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_GETMALLOC, &s_memory);
    sqlite3_mem_methods failing = s_memory;
    failing.xMalloc = [](int size) { return s_left-- == 0 ? nullptr : s_memory.xMalloc(size); };
    sqlite3_config(SQLITE_CONFIG_MALLOC, &failing);
  }
  ~storage_short_of_memory() override {
    sqlite3_shutdown();
    sqlite3_config(SQLITE_CONFIG_MALLOC, &s_memory);
  }
};

TEST_F(storage_short_of_memory, goes_on_when_memory_is_back) {
  table names = created();
  bool failed = true;
  for (int n = 0; failed; ++n) {
    s_left = n;
    const auto status = put(names, "a", "1");
    cursor rows;
    const auto found = find(names, "a", rows);
    failed = s_left < 0;
    s_left = -1;
    EXPECT_TRUE(status == 0 || low_word(status) == 2) << n << last_error().message;
    EXPECT_TRUE(found == 0 || low_word(found) == 2 || status != 0) << n << last_error().message;
    ASSERT_EQ(0u, put(names, "a", "2")) << n << last_error().message;
    ASSERT_EQ("a=2", all(names)) << n;
  }
  names.reset();
}

}  // namespace
