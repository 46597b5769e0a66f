// Connections, statements and units of work.

#include "manager/storage/connection.h"

#include <sqlite3.h>

#include "manager/storage/sqlite_failure.h"
#include "manager/storage/storage_status.h"

namespace manager::storage {
namespace {

constexpr int s_wait_milliseconds = 10000;

struct setting {
  int option;
  int value;
};

constexpr setting s_switches[] = {
    {SQLITE_DBCONFIG_DEFENSIVE, 1},
    {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
    {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
    {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
    {SQLITE_DBCONFIG_ENABLE_FKEY, 0},
    {SQLITE_DBCONFIG_WRITABLE_SCHEMA, 0},
    {SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, 0},
    {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
    {SQLITE_DBCONFIG_DQS_DDL, 0},
    {SQLITE_DBCONFIG_DQS_DML, 0},
};

constexpr setting s_limits[] = {
    {SQLITE_LIMIT_SQL_LENGTH, 100000}, {SQLITE_LIMIT_COLUMN, 200},
    {SQLITE_LIMIT_EXPR_DEPTH, 100},    {SQLITE_LIMIT_COMPOUND_SELECT, 10},
    {SQLITE_LIMIT_ATTACHED, 1},  // compaction attaches its copy
    {SQLITE_LIMIT_TRIGGER_DEPTH, 1},   {SQLITE_LIMIT_VARIABLE_NUMBER, 200},
    {SQLITE_LIMIT_WORKER_THREADS, 0},
};

int open_flags(open_mode mode) {
  // Also for reading: only a writer can take back what another one left when it was killed. Where
  // that is not allowed, SQLite opens the file read-only by itself.
  const int access = SQLITE_OPEN_READWRITE | (mode == open_mode::create ? SQLITE_OPEN_CREATE : 0);
  return access | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
}

/* A value's bytes. None where there should be some means that memory ran out on the way. */
std::string_view bytes_of(const void* data, int size) {
  if (size == 0) return {};
  if (data == nullptr) throw std::bad_alloc();
  return {static_cast<const char*>(data), static_cast<size_t>(size)};
}

}  // namespace

void connection::closer::operator()(sqlite3* database) const noexcept {
  sqlite3_close(database);
}

connection::connection(const std::string& path, open_mode mode) : path_(path) {
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(path.c_str(), &opened, open_flags(mode), nullptr);
  database_.reset(opened);
  if (opened == nullptr) throw std::bad_alloc();
  if (code != SQLITE_OK) fail(code);
  path_ = sqlite3_db_filename(opened, "main");
  configure(mode);
}

void connection::configure(open_mode mode) {
  for (const setting& each : s_switches) {
    sqlite3_db_config(get(), each.option, each.value, nullptr);
  }
  for (const setting& each : s_limits) sqlite3_limit(get(), each.option, each.value);
  sqlite3_busy_timeout(get(), s_wait_milliseconds);
  run("PRAGMA cell_size_check=ON");
  run("PRAGMA mmap_size=0");        // a file that is cut by others would be a fault of memory
  run("PRAGMA secure_delete=OFF");  // or every deleted value would be written once more
  if (mode == open_mode::read) run("PRAGMA query_only=ON");
}

bool connection::is_read_only() const {
  return sqlite3_db_readonly(get(), "main") == 1;
}

void connection::require_writable() const {
  if (is_read_only()) fail(SQLITE_READONLY);
}

void connection::prepare_to_write() {
  if (is_read_only()) return;
  const int code = sqlite3_exec(get(), "PRAGMA journal_mode=DELETE", nullptr, nullptr, nullptr);
  // A program that switched on a write-ahead log keeps it while it has the file open; as safe.
  if (code != SQLITE_OK && (code & 0xFF) != SQLITE_BUSY) fail(code);
  run("PRAGMA synchronous=EXTRA");
}

void connection::run(const char* sql) {
  const int code = sqlite3_exec(get(), sql, nullptr, nullptr, nullptr);
  if (code != SQLITE_OK) fail(code);
}

int64_t connection::number(const std::string& sql) {
  statement query(*this, sql);
  return query.step() ? query.number(0) : 0;
}

bool connection::is_empty() {
  sqlite3_file* file = nullptr;
  sqlite3_int64 size = 0;
  int code = sqlite3_file_control(get(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
  if (code == SQLITE_OK) code = file->pMethods->xFileSize(file, &size);
  if (code != SQLITE_OK) fail(code);
  return size == 0;
}

int connection::changes() const {
  return sqlite3_changes(get());
}

void connection::read_binary(const std::string& table, const std::string& column, int64_t row,
                             std::string& bytes) {
  sqlite3_blob* opened = nullptr;
  int code = sqlite3_blob_open(get(), "main", table.c_str(), column.c_str(), row, 0, &opened);
  const std::unique_ptr<sqlite3_blob, int (*)(sqlite3_blob*)> blob(opened, sqlite3_blob_close);
  if (code != SQLITE_OK) fail(code);
  const int size = sqlite3_blob_bytes(opened);
  if (size > number("PRAGMA page_count") * number("PRAGMA page_size")) fail_damaged();
  bytes.resize(static_cast<size_t>(size));
  code = sqlite3_blob_read(opened, bytes.data(), size, 0);
  if (code != SQLITE_OK) fail(code);
}

void connection::fail_damaged() const {
  fail(SQLITE_CORRUPT);
}

void connection::fail(int code) const {
  throw_sqlite_failure(get(), code, path_);
}

void statement::finalizer::operator()(sqlite3_stmt* prepared) const noexcept {
  sqlite3_finalize(prepared);
}

statement::statement(connection& on, const std::string& sql) : connection_(on) {
  sqlite3_stmt* prepared = nullptr;
  check(
      sqlite3_prepare_v2(on.get(), sql.c_str(), static_cast<int>(sql.size()), &prepared, nullptr));
  prepared_.reset(prepared);
}

statement& statement::bind(int parameter, int64_t number) {
  check(sqlite3_bind_int64(prepared_.get(), parameter, number));
  return *this;
}

statement& statement::bind_text(int parameter, std::string_view text) {
  check(sqlite3_bind_text64(prepared_.get(), parameter, text.data(), text.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
  return *this;
}

statement& statement::bind_binary(int parameter, std::string_view data) {
  check(sqlite3_bind_blob64(prepared_.get(), parameter, data.data(), data.size(), SQLITE_STATIC));
  return *this;
}

bool statement::step() {
  const int code = sqlite3_step(prepared_.get());
  if (code == SQLITE_ROW) return true;
  check(code == SQLITE_DONE ? SQLITE_OK : code);
  return false;
}

void statement::finish() {
  while (step()) {
  }
}

bool statement::has_value(int column) const {
  return sqlite3_column_type(prepared_.get(), column) != SQLITE_NULL;
}

int64_t statement::number(int column) const {
  check_type(column, SQLITE_INTEGER);
  return sqlite3_column_int64(prepared_.get(), column);
}

std::string_view statement::text(int column) const {
  check_type(column, SQLITE_TEXT);
  const void* data = sqlite3_column_text(prepared_.get(), column);
  const auto text = bytes_of(data, sqlite3_column_bytes(prepared_.get(), column));
  if (text.find('\0') != text.npos) connection_.fail_damaged();
  return text;
}

std::string_view statement::binary(int column) const {
  check_type(column, SQLITE_BLOB);
  const void* data = sqlite3_column_blob(prepared_.get(), column);
  return bytes_of(data, sqlite3_column_bytes(prepared_.get(), column));
}

void statement::check(int code) const {
  if (code != SQLITE_OK) connection_.fail(code);
}

void statement::check_type(int column, int type) const {
  if (sqlite3_column_type(prepared_.get(), column) != type) connection_.fail_damaged();
}

unit_of_work::unit_of_work(connection& on, kind of) : connection_(on), undo_(on, "ROLLBACK") {
  // SQLite would begin to read, and refuse no sooner than at the first change.
  if (of == kind::write) on.require_writable();
  on.run(of == kind::write ? "BEGIN IMMEDIATE" : "BEGIN");
}

unit_of_work::~unit_of_work() {
  // What cannot be rolled back now will be by whoever opens the file next.
  if (sqlite3_get_autocommit(connection_.get()) == 0) sqlite3_step(undo_.get());
}

}  // namespace manager::storage
