// The marks of a storage file and its table of tables.

#include "manager/storage/catalog.h"

#include <sqlite3.h>

#include "manager/storage/storage_status.h"

namespace manager::storage {
namespace {

constexpr int64_t s_application_id = 0x5A564442;
constexpr int64_t s_format = 1;

constexpr const char* s_catalog_sql =
    "CREATE TABLE zvsdk_storage_columns ("
    "table_id INTEGER NOT NULL, table_name TEXT NOT NULL COLLATE NOCASE, "
    "position INTEGER NOT NULL, column_name TEXT NOT NULL COLLATE NOCASE, "
    "type INTEGER NOT NULL, flags INTEGER NOT NULL, "
    "PRIMARY KEY (table_name, position), UNIQUE (table_name, column_name)) STRICT";

[[noreturn]] void fail_changed(const connection& file, const std::string& what) {
  fail(error_damaged, file.path(), what + " was changed by another program",
       "restore the file from a copy, or move it away");
}

[[noreturn]] void fail_absent(const connection& file, std::string_view table,
                              const std::string& advice) {
  fail(warn_missing, file.path(), "has no table \"" + std::string(table) + "\"", advice);
}

/* The file's own text of a table is the one that made it; so it is no view, has no checks, computed
 * columns or other types, and is what every other statement takes it for. */
void require_made_by(connection& file, std::string_view name, std::string_view sql) {
  statement query(file, "SELECT sql FROM sqlite_schema WHERE type = 'table' AND name = ?");
  query.bind_text(1, name);
  if (!query.step() || query.text(0) != sql) {
    fail_changed(file, "(table \"" + std::string(name) + "\")");
  }
}

column read_column(const connection& file, const statement& row) {
  const int64_t type = row.number(3);
  const int64_t flags = row.number(4);
  const bool is_known = type == ZVSDK_STORAGE_STRING || type == ZVSDK_STORAGE_BINARY;
  if (!is_known || flags < 0 || flags > UINT32_MAX) fail_changed(file, "(a column's type)");
  return {std::string(row.text(2)), static_cast<uint32_t>(type), static_cast<uint32_t>(flags)};
}

/* Positive, and never twice for all that matters. */
int64_t new_table_id() {
  uint64_t id = 0;
  sqlite3_randomness(sizeof id, &id);
  return static_cast<int64_t>(id >> 1);
}

}  // namespace

bool is_storage_file(connection& file) {
  if (file.number("PRAGMA application_id") != s_application_id) {
    if (file.is_empty()) return false;
    fail(error_foreign, file.path(), "belongs to another program",
         "it was left alone: move it away or name another folder");
  }
  if (file.number("PRAGMA user_version") != s_format) {
    fail(error_unsupported, file.path(), "was made by a later version", "use that version");
  }
  require_made_by(file, "zvsdk_storage_columns", s_catalog_sql);
  return true;
}

void make_storage_file(connection& file) {
  if (is_storage_file(file)) return;
  file.run(("PRAGMA application_id=" + std::to_string(s_application_id)).c_str());
  file.run(("PRAGMA user_version=" + std::to_string(s_format)).c_str());
  file.run(s_catalog_sql);
}

std::optional<table_definition> find_table(connection& file, std::string_view name) {
  statement query(file,
                  "SELECT table_id, table_name, column_name, type, flags "
                  "FROM zvsdk_storage_columns WHERE table_name = ? ORDER BY position");
  query.bind_text(1, name);
  if (!query.step()) return std::nullopt;
  table_definition found{.id = query.number(0), .name = std::string(query.text(1)), .columns = {}};
  do {
    if (found.columns.size() == ZVSDK_STORAGE_COLUMNS) fail_changed(file, "(the table of tables)");
    found.columns.push_back(read_column(file, query));
  } while (query.step());
  return found;
}

table_definition get_table(connection& file, std::string_view name) {
  std::optional<table_definition> found = find_table(file, name);
  if (!found) fail_absent(file, name, "create it first");
  require_made_by(file, found->name, found->create_sql());
  return *std::move(found);
}

bool has_table(connection& file, const table_definition& table) {
  statement query(file, "SELECT table_id FROM zvsdk_storage_columns WHERE table_name = ? LIMIT 1");
  return query.bind_text(1, table.name).step() && query.number(0) == table.id;
}

std::vector<std::string> table_names(connection& file) {
  std::vector<std::string> names;
  statement query(file, "SELECT DISTINCT table_name FROM zvsdk_storage_columns");
  while (query.step()) names.emplace_back(query.text(0));
  return names;
}

void add_table(connection& file, table_definition& table) {
  table.id = new_table_id();
  file.run(table.create_sql().c_str());
  int64_t position = 0;
  for (const column& each : table.columns) {
    statement(file, "INSERT INTO zvsdk_storage_columns VALUES (?, ?, ?, ?, ?, ?)")
        .bind(1, table.id)
        .bind_text(2, table.name)
        .bind(3, position++)
        .bind_text(4, each.name)
        .bind(5, each.type)
        .bind(6, each.flags)
        .finish();
  }
}

void drop_table(connection& file, std::string_view name) {
  const std::optional<table_definition> found = find_table(file, name);
  if (!found) fail_absent(file, name, "there is nothing to drop");
  file.run(("DROP TABLE " + found->quoted_name()).c_str());
  statement(file, "DELETE FROM zvsdk_storage_columns WHERE table_name = ?")
      .bind_text(1, name)
      .finish();
}

}  // namespace manager::storage
