/*
 * schema.h: the columns of a table, what names may look like, and the statements of SQL that a
 * table's columns make. Plain values; a schema handle guards its columns with a mutex.
 */
#ifndef STORAGE_SCHEMA_H
#define STORAGE_SCHEMA_H

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace manager::storage {

struct column {
  std::string name;
  uint32_t type;
  uint32_t flags;

  bool is_key() const;
  bool is_text() const;
};

/* The column that identifies a row, also when its key changes; never used twice in a table. */
inline constexpr const char* row_column = "zvsdk_row";

/* Compared without regard to ASCII case, as SQLite compares names. */
bool same_name(std::string_view a, std::string_view b);
/* Refuse what is null, empty, too long, reserved or holds control characters. */
void require_column_name(const char* name);
void require_table_name(const char* name);

/* What a schema handle stands for. Columns are only ever added, so their texts stay. */
struct schema {
  std::mutex mutex;
  std::deque<column> columns;  // guarded by mutex

  void add(const char* name, uint32_t type, uint32_t flags);
};

/* A table as its file declares it. */
struct table_definition {
  int64_t id;  // random: a table that was dropped and made anew is another one
  std::string name;
  std::vector<column> columns;

  /* Null when there is none of that name. */
  const column* find(std::string_view column_name) const;
  /* Throws an invalid argument then. */
  const column& get(std::string_view column_name) const;
  bool has_key() const;

  std::string quoted_name() const;
  std::string create_sql() const;
  /* Parameters are the columns in their order. */
  std::string insert_sql() const;
  /* "a", "b": the key columns, or what stands for them where there are none. */
  std::string order() const;
};

std::string quoted(std::string_view name);

}  // namespace manager::storage

#endif
