// Columns, names, and the SQL of a table.

#include "manager/storage/schema.h"

#include <algorithm>

#include "manager/storage/storage_status.h"

namespace manager::storage {
namespace {

/* Tables whose names begin so are the service's own. */
constexpr std::string_view s_own_prefix = "zvsdk_storage_";

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

bool begins_with(std::string_view name, std::string_view prefix) {
  return same_name(name.substr(0, prefix.size()), prefix);
}

void require_name(const char* name) {
  const std::string_view text = require_text(name);
  require(text.size() <= ZVSDK_STORAGE_NAME_SIZE, "a storage name is longer than 64 bytes");
  const auto is_control = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  require(std::none_of(text.begin(), text.end(), is_control),
          "a storage name holds a control character");
}

/* "a" SEPARATOR "b": what `write` makes of each column that `wanted` chooses. */
template <class Columns, class Wanted, class Write>
std::string joined(const Columns& columns, Wanted wanted, Write write) {
  std::string all;
  for (const column& each : columns) {
    if (!wanted(each)) continue;
    if (!all.empty()) all += ", ";
    all += write(each);
  }
  return all;
}

bool any(const column&) {
  return true;
}
bool is_key(const column& of) {
  return of.is_key();
}
bool is_no_key(const column& of) {
  return !of.is_key();
}
std::string name_of(const column& of) {
  return quoted(of.name);
}

std::string declaration(const column& of) {
  return quoted(of.name) + (of.is_text() ? " TEXT" : " BLOB") + (of.is_key() ? " NOT NULL" : "");
}

std::string assignment(const column& of) {
  return quoted(of.name) + " = excluded." + quoted(of.name);
}

}  // namespace

bool column::is_key() const {
  return (flags & ZVSDK_STORAGE_COLUMN_KEY) == ZVSDK_STORAGE_COLUMN_KEY;
}

bool column::is_text() const {
  return type == ZVSDK_STORAGE_STRING;
}

bool same_name(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower(x) == lower(y); });
}

void require_column_name(const char* name) {
  require_name(name);
  require(!same_name(name, row_column), "the column name \"zvsdk_row\" is reserved");
}

void require_table_name(const char* name) {
  require_name(name);
  require(!begins_with(name, "sqlite_") && !begins_with(name, s_own_prefix),
          std::string("the table name \"") + name + "\" is reserved");
}

void schema::add(const char* name, uint32_t type, uint32_t flags) {
  require_column_name(name);
  require(type == ZVSDK_STORAGE_STRING || type == ZVSDK_STORAGE_BINARY,
          "a storage column is of type 1 or 3");
  std::lock_guard lock(mutex);
  require(columns.size() < ZVSDK_STORAGE_COLUMNS, "a table has at most 32 columns");
  for (const column& each : columns) {
    require(!same_name(each.name, name), "the column \"" + each.name + "\" is there already");
  }
  columns.push_back({name, type, flags});
}

const column* table_definition::find(std::string_view column_name) const {
  const auto found = std::find_if(columns.begin(), columns.end(), [&](const column& each) {
    return same_name(each.name, column_name);
  });
  return found != columns.end() ? &*found : nullptr;
}

const column& table_definition::get(std::string_view column_name) const {
  const column* found = find(column_name);
  require(found != nullptr,
          "the table \"" + name + "\" has no column \"" + std::string(column_name) + "\"");
  return *found;
}

bool table_definition::has_key() const {
  return std::any_of(columns.begin(), columns.end(), is_key);
}

std::string table_definition::quoted_name() const {
  return quoted(name);
}

std::string table_definition::create_sql() const {
  std::string sql = "CREATE TABLE " + quoted_name() + " (" + row_column +
                    " INTEGER PRIMARY KEY AUTOINCREMENT, " + joined(columns, any, declaration);
  if (has_key()) sql += ", UNIQUE (" + joined(columns, is_key, name_of) + ")";
  return sql + ") STRICT";
}

std::string table_definition::insert_sql() const {
  std::string sql = "INSERT INTO " + quoted_name() + " (" + joined(columns, any, name_of) +
                    ") VALUES (" + joined(columns, any, [](const column&) { return "?"; }) + ")";
  if (!has_key()) return sql;
  sql += " ON CONFLICT (" + joined(columns, is_key, name_of) + ") DO ";
  const std::string replaced = joined(columns, is_no_key, assignment);
  return sql + (replaced.empty() ? "NOTHING" : "UPDATE SET " + replaced);
}

std::string table_definition::order() const {
  return has_key() ? joined(columns, is_key, name_of) : row_column;
}

std::string quoted(std::string_view name) {
  std::string text = "\"";
  for (const char c : name) text.append(c == '"' ? 2 : 1, c);
  return text + "\"";
}

}  // namespace manager::storage
