// Open tables: find, put, delete, and the walk of cursors.

#include "manager/storage/table.h"

#include <algorithm>

#include "manager/storage/catalog.h"
#include "manager/storage/file.h"
#include "manager/storage/storage_status.h"
#include "manager/storage/transaction.h"

namespace manager::storage {
namespace {

const std::string s_row_is = std::string(row_column) + " = ?";

/* What a walk leaves in the file until it is asked for. */
bool is_read_late(const column& of) {
  return !of.is_text() && !of.is_key();
}

void bind_value(statement& to, int parameter, const value& given) {
  if (given.kind == value_kind::text) {
    to.bind_text(parameter, given.bytes);
  } else {
    to.bind_binary(parameter, given.bytes);
  }
}

/* " WHERE "a" = ? AND "b" = ?" for values that are given. */
std::string where(const std::vector<const value*>& given) {
  std::string sql;
  for (const value* each : given) {
    sql += (sql.empty() ? " WHERE " : " AND ") + quoted(each->column) + " = ?";
  }
  return sql;
}

void bind_all(statement& to, const std::vector<const value*>& given) {
  int parameter = 0;
  for (const value* each : given) bind_value(to, ++parameter, *each);
}

std::vector<const value*> given_values(const record& of) {
  std::vector<const value*> given;
  for (const value& each : of.values) {
    if (each.is_given()) given.push_back(&each);
  }
  return given;
}

bool has_unread(const record& of) {
  return std::any_of(of.values.begin(), of.values.end(),
                     [](const value& each) { return each.kind == value_kind::unread; });
}

/* A table that is there and has the columns that it was to be made with. */
table_definition get_same_table(connection& file, const table_definition& wanted) {
  table_definition present = get_table(file, wanted.name);
  const bool is_same =
      std::equal(present.columns.begin(), present.columns.end(), wanted.columns.begin(),
                 wanted.columns.end(), [](const column& a, const column& b) {
                   return same_name(a.name, b.name) && a.type == b.type && a.flags == b.flags;
                 });
  if (is_same) return present;
  fail(error_exists, file.path(), "has a table \"" + wanted.name + "\" with other columns",
       "open or drop it");
}

/* What a walk reads of each column: the value, or whether there is one. */
std::string fetch_sql(const table_definition& definition) {
  std::string sql;
  for (const column& each : definition.columns) {
    sql += sql.empty() ? "SELECT " : ", ";
    // The type is read without the value, which "IS NOT NULL" would read.
    sql += is_read_late(each) ? "typeof(" + quoted(each.name) + ")" : quoted(each.name);
  }
  return sql + " FROM " + definition.quoted_name() + " WHERE " + s_row_is;
}

value read_value(const statement& row, int index, const column& of) {
  if (is_read_late(of)) return {of.name, value_kind::unread, {}};
  if (of.is_text()) return {of.name, value_kind::text, std::string(row.text(index))};
  return {of.name, value_kind::binary, std::string(row.binary(index))};
}

bool is_there(const statement& row, int index, const column& of) {
  return is_read_late(of) ? row.text(index) != "null" : row.has_value(index);
}

}  // namespace

table::table(std::unique_ptr<connection> file, table_definition definition, open_mode mode)
    : file_(std::move(file)), definition_(std::move(definition)), mode_(mode) {}

std::shared_ptr<table> table::open(const std::string& path, std::string_view name, open_mode mode) {
  auto file = open_file(path, mode);
  unit_of_work reading(*file, unit_of_work::kind::read);
  table_definition definition = get_table(*file, name);
  reading.commit();
  return std::make_shared<table>(std::move(file), std::move(definition), mode);
}

std::shared_ptr<table> table::create(const std::string& path, table_definition definition) {
  auto file = open_or_create_file(path);
  unit_of_work making(*file, unit_of_work::kind::write);
  make_storage_file(*file);
  if (find_table(*file, definition.name)) {
    definition = get_same_table(*file, definition);
  } else {
    add_table(*file, definition);
  }
  making.commit();
  return std::make_shared<table>(std::move(file), std::move(definition), open_mode::write);
}

void table::drop(const std::string& path, std::string_view name) {
  const auto file = open_file(path, open_mode::write);
  unit_of_work dropping(*file, unit_of_work::kind::write);
  drop_table(*file, name);
  dropping.commit();
}

template <class Work>
auto table::look(Work work) {
  std::lock_guard lock(file_->mutex);
  unit_of_work reading(*file_, unit_of_work::kind::read);
  require_current(*file_);
  return work(*file_);
}

template <class Work>
auto table::change(transaction* in, Work work) {
  if (mode_ == open_mode::read) {
    fail(error_read_only, file_->path(), "was opened to be read", "open the table in mode 2");
  }
  const auto checked_work = [&](connection& file) {
    require_current(file);
    return work(file);
  };
  if (in != nullptr) return in->change(file_->path(), checked_work);
  std::lock_guard lock(file_->mutex);
  unit_of_work changing(*file_, unit_of_work::kind::write);
  const auto result = checked_work(*file_);
  changing.commit();
  return result;
}

void table::require_current(connection& file) const {
  if (has_table(file, definition_)) return;
  fail(warn_missing, file.path(), "has no table \"" + definition_.name + "\" any more",
       "open or create it anew");
}

void table::require_fitting(const record& of) const {
  for (const value& each : of.values) {
    const column& column = definition_.get(each.column);
    if (each.kind == value_kind::every) continue;
    require(column.is_text() == (each.kind == value_kind::text),
            "the column \"" + column.name + "\" is of the other type");
  }
}

void table::require_key(const record& of) const {
  for (const column& each : definition_.columns) {
    if (!each.is_key()) continue;
    const value* given = of.find(each.name);
    require(given != nullptr && given->is_given(), "the key column \"" + each.name + "\" is unset");
  }
}

/* A copy of the file has the same table, but soon other rows. */
bool table::owns_row_of(const record& of) const {
  return of.origin != nullptr && of.origin->definition_.id == definition_.id &&
         of.origin->file_->path() == file_->path();
}

std::vector<const value*> table::key_of(const record& of) const {
  std::vector<const value*> key;
  for (const column& each : definition_.columns) {
    if (each.is_key()) key.push_back(of.find(each.name));
  }
  return key;
}

std::vector<int64_t> table::select(const record& key) {
  require(!key.values.empty(), "the key record selects nothing");
  require_fitting(key);
  const auto given = given_values(key);
  return look([&](connection& file) {
    statement query(file, "SELECT " + std::string(row_column) + " FROM " +
                              definition_.quoted_name() + where(given) + " ORDER BY " +
                              definition_.order());
    bind_all(query, given);
    std::vector<int64_t> rows;
    while (query.step()) rows.push_back(query.number(0));
    return rows;
  });
}

bool table::fetch(int64_t row, record& into) {
  return look([&](connection& file) {
    statement query(file, fetch_sql(definition_));
    if (!query.bind(1, row).step()) return false;
    int index = 0;
    for (const column& each : definition_.columns) {
      if (is_there(query, index, each)) into.values.push_back(read_value(query, index, each));
      ++index;
    }
    return true;
  });
}

bool table::read_binary(int64_t row, const std::string& column, std::string& bytes) {
  return look([&](connection& file) {
    // The type is read without the value; see fetch_sql.
    statement query(file, "SELECT typeof(" + quoted(column) + ") FROM " +
                              definition_.quoted_name() + " WHERE " + s_row_is);
    if (!query.bind(1, row).step() || query.text(0) == "null") return false;
    if (query.text(0) != "blob") file.fail_damaged();
    file.read_binary(definition_.name, column, row, bytes);
    return true;
  });
}

bool table::put(record& of, transaction* in) {
  require_fitting(of);
  require_key(of);
  const bool has_row = owns_row_of(of);
  if (!has_row && !of.read_all()) return false;
  return change(in, [&](connection& file) {
    if (has_row && update_row(file, of)) return true;
    if (has_unread(of)) return false;
    insert(file, of);
    return true;
  });
}

/* Removes another row that has the key of a record from a row, if that row is still there. Not left
 * to "OR REPLACE": that would also remove what an index of another program's making forbids. */
void table::make_way(connection& file, const record& of) const {
  const auto key = key_of(of);
  if (key.empty()) return;
  const std::string row = std::to_string(of.row);
  statement removal(file, "DELETE FROM " + definition_.quoted_name() + where(key) + " AND " +
                              row_column + " <> " + row + " AND EXISTS (SELECT 1 FROM " +
                              definition_.quoted_name() + " WHERE " + row_column + " = " + row +
                              ")");
  bind_all(removal, key);
  removal.finish();
}

/* A record's row keeps its number when its key changes, so that cursors elsewhere still find it. */
bool table::update_row(connection& file, const record& of) const {
  make_way(file, of);
  std::string assignments;
  int parameter = 0;
  for (const column& each : definition_.columns) {
    const value* given = of.find(each.name);
    const bool stays = given != nullptr && given->kind == value_kind::unread;
    ++parameter;
    assignments += (parameter == 1 ? "" : ", ") + quoted(each.name) + " = " +
                   (stays ? quoted(each.name) : "?" + std::to_string(parameter));
  }
  const std::string row = std::to_string(of.row);
  statement update(file, "UPDATE " + definition_.quoted_name() + " SET " + assignments + " WHERE " +
                             row_column + " = " + row);
  bind_columns(update, of);
  update.finish();
  return file.changes() != 0;
}

void table::insert(connection& file, const record& of) const {
  statement insertion(file, definition_.insert_sql());
  bind_columns(insertion, of);
  insertion.finish();
}

/* Binds the values that are given to the parameters of their columns; others stay empty. */
void table::bind_columns(statement& to, const record& of) const {
  int parameter = 0;
  for (const column& each : definition_.columns) {
    const value* given = of.find(each.name);
    ++parameter;
    if (given != nullptr && given->is_given()) bind_value(to, parameter, *given);
  }
}

bool table::remove(const record& of, transaction* in) {
  require_fitting(of);
  const bool has_row = owns_row_of(of);
  if (!has_row) {
    require(definition_.has_key(), "the record came from no row of this table");
    require_key(of);
  }
  const auto key = has_row ? std::vector<const value*>() : key_of(of);
  const std::string rows = has_row ? " WHERE " + s_row_is : where(key);
  return change(in, [&](connection& file) {
    statement deletion(file, "DELETE FROM " + definition_.quoted_name() + rows);
    if (has_row) deletion.bind(1, of.row);
    bind_all(deletion, key);
    deletion.finish();
    return file.changes() != 0;
  });
}

std::shared_ptr<record> cursor::advance() {
  std::lock_guard lock(mutex);
  auto found = std::make_shared<record>();
  while (next < rows.size()) {
    found->row = rows[next];
    const bool is_still_there = over->fetch(found->row, *found);
    ++next;
    if (!is_still_there) continue;
    found->origin = over;
    return found;
  }
  return nullptr;
}

}  // namespace manager::storage
