/*
 * table.h: an open table and the cursors over it. A table has a connection of its own, and every
 * call is a unit of work of its own: it looks whether the table is still the one that was opened,
 * reads or changes, and holds no lock behind that.
 *
 * The connection's mutex guards a table, a cursor has its own; records, cursors and transactions
 * are locked before connections.
 */
#ifndef STORAGE_TABLE_H
#define STORAGE_TABLE_H

#include <atomic>

#include "manager/storage/connection.h"
#include "manager/storage/record.h"
#include "manager/storage/schema.h"
#include "zvsdk_types.h"

namespace manager::storage {

class transaction;

class table {
 public:
  table(std::unique_ptr<connection> file, table_definition definition, open_mode mode);

  static std::shared_ptr<table> open(const std::string& path, std::string_view name,
                                     open_mode mode);
  static std::shared_ptr<table> create(const std::string& path, table_definition definition);
  static void drop(const std::string& path, std::string_view name);

  const table_definition& definition() const { return definition_; }

  /* A handle of its schema, made with the table and kept for who asks first; null from then on. */
  void keep_schema(zvsdk_storage_schema* described) { schema_ = described; }
  zvsdk_storage_schema* take_schema() { return schema_.exchange(nullptr); }

  /* The rows that a key record selects, in order. */
  std::vector<int64_t> select(const record& key);
  /* Fills an empty record from a row; false when the row is gone. */
  bool fetch(int64_t row, record& into);
  /* False when the row is gone or has no such value. */
  bool read_binary(int64_t row, const std::string& column, std::string& bytes);
  /* False when the record lacks values that were in its row, and the row is gone. */
  bool put(record& of, transaction* in);
  /* False when there is no such row. */
  bool remove(const record& of, transaction* in);

 private:
  template <class Work>
  auto look(Work work);
  template <class Work>
  auto change(transaction* in, Work work);
  void require_current(connection& file) const;
  void require_fitting(const record& of) const;
  void require_key(const record& of) const;
  bool owns_row_of(const record& of) const;
  std::vector<const value*> key_of(const record& of) const;
  void make_way(connection& file, const record& of) const;
  bool update_row(connection& file, const record& of) const;
  void insert(connection& file, const record& of) const;
  void bind_columns(statement& to, const record& of) const;

  std::unique_ptr<connection> file_;
  std::atomic<zvsdk_storage_schema*> schema_ = nullptr;
  table_definition definition_;
  open_mode mode_;
};

/* The rows that a find selected, and where the walk over them stands. */
struct cursor {
  std::shared_ptr<table> over;
  std::vector<int64_t> rows;
  std::mutex mutex;
  size_t next = 0;  // guarded by mutex

  /* The next row that is still there, or null at the end. */
  std::shared_ptr<record> advance();
};

}  // namespace manager::storage

#endif
