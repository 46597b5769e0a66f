/*
 * record.h: a set of values by column name, of the caller's own or from a row of a table. A record
 * from a row knows its table and row, reads binary values when they are asked for, and keeps the
 * table open until it goes.
 *
 * A record is guarded by its mutex, which whoever uses it holds; transactions and connections are
 * locked behind it.
 */
#ifndef STORAGE_RECORD_H
#define STORAGE_RECORD_H

#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

namespace manager::storage {

class table;

enum class value_kind {
  text,
  binary,
  every,  // no value: any will do
  unread  // a binary value that is still in the file
};

struct value {
  std::string column;
  value_kind kind;
  std::string bytes;

  bool is_given() const { return kind == value_kind::text || kind == value_kind::binary; }
};

struct record {
  std::mutex mutex;               // guards what follows
  std::deque<value> values;       // texts handed out stay where they are when others come
  std::shared_ptr<table> origin;  // null for a record of the caller's own
  int64_t row = 0;

  void set(std::string_view column, value_kind kind, std::string bytes);
  /* The bytes of a value of this kind, read now if need be; null when there are none. A value of
   * the other kind is an invalid argument. */
  const std::string* get(std::string_view column, value_kind wanted);
  /* Null when the column is not set. */
  const value* find(std::string_view column) const;
  bool asks_for_every() const;
  /* Reads what is still unread; false when the row is gone. */
  bool read_all();

 private:
  bool read(value& unread);
};

}  // namespace manager::storage

#endif
