/*
 * connection.h: owners around the SQLite C interface: a connection to one file, a statement, and a
 * unit of work that is rolled back unless it is committed. Whatever SQLite refuses is thrown as a
 * status with a message.
 *
 * A connection is used by one thread at a time: whoever shares it holds its mutex. Statements end
 * before their connection.
 *
 * The file keeps a rollback journal, not a write-ahead log. A log needs shared memory between its
 * users, which network folders do not have; its file cannot be read from a folder that is
 * read-only; and it writes a large value twice, where a journal writes only what it overwrites. The
 * price, that a writer waits for readers, is small, since nobody reads for longer than a call.
 * Synchronous is "extra": the folder is synced too when the journal goes, else a power loss right
 * after a commit could bring the journal back, and with it the state before.
 *
 * Files come from strangers. A connection does not trust functions in their schemas, runs no
 * triggers and no views of theirs, and lets no statement write the schema.
 *
 * Nobody opens a storage file but SQLite: closing another descriptor of it would drop all locks
 * that this process has on the file.
 */
#ifndef STORAGE_CONNECTION_H
#define STORAGE_CONNECTION_H

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace manager::storage {

enum class open_mode {
  read,   // changes nothing, but takes back what a killed writer left half done, where it may
  write,  // the file must be there; one that may only be read is read, and each change refused
  create  // made when it is not there
};

class connection {
 public:
  connection(const std::string& path, open_mode mode);
  connection(const connection&) = delete;
  connection& operator=(const connection&) = delete;

  sqlite3* get() const { return database_.get(); }
  /* Absolute, with symbolic links resolved: equal for equal files. */
  const std::string& path() const { return path_; }
  /* To be called once the file is known as ours, before it is changed. */
  void prepare_to_write();
  /* Throws where nobody gave us the right to write the file. */
  void require_writable() const;
  /* True for a file of no bytes. Asked in a unit of work, and does not read the file. */
  bool is_empty();
  void run(const char* sql);
  /* The first column of the first row, a whole number. */
  int64_t number(const std::string& sql);
  /* Rows that the last statement changed. */
  int changes() const;
  /* A value of bytes, straight into its place: a statement would hold it a second time. */
  void read_binary(const std::string& table, const std::string& column, int64_t row,
                   std::string& bytes);
  [[noreturn]] void fail_damaged() const;
  /* Throws what a result code of this connection means. */
  [[noreturn]] void fail(int code) const;

  std::mutex mutex;

 private:
  struct closer {
    void operator()(sqlite3* database) const noexcept;
  };

  void configure(open_mode mode);
  bool is_read_only() const;

  std::unique_ptr<sqlite3, closer> database_;
  std::string path_;
};

/* Parameters count from 1, columns from 0. What is bound must outlive the statement. */
class statement {
 public:
  statement(connection& on, const std::string& sql);

  statement& bind(int parameter, int64_t number);
  statement& bind_text(int parameter, std::string_view text);
  statement& bind_binary(int parameter, std::string_view data);

  sqlite3_stmt* get() const { return prepared_.get(); }
  /* False when there are no more rows. */
  bool step();
  void finish();

  bool has_value(int column) const;
  /* Values of another type than the one asked for are damage. Borrowed until the next step. */
  int64_t number(int column) const;
  std::string_view text(int column) const;
  std::string_view binary(int column) const;

 private:
  struct finalizer {
    void operator()(sqlite3_stmt* prepared) const noexcept;
  };

  void check(int code) const;
  void check_type(int column, int type) const;

  connection& connection_;
  std::unique_ptr<sqlite3_stmt, finalizer> prepared_;
};

/* Reads see one state of the file; changes are kept together or not at all. */
class unit_of_work {
 public:
  enum class kind { read, write };

  /* One that writes waits for the file here, so that it cannot get stuck half-way. */
  unit_of_work(connection& on, kind of);
  ~unit_of_work();
  unit_of_work(const unit_of_work&) = delete;
  unit_of_work& operator=(const unit_of_work&) = delete;

  void commit() { connection_.run("COMMIT"); }

 private:
  connection& connection_;
  statement undo_;  // made beforehand: a unit has to end also when memory has run out
};

}  // namespace manager::storage

#endif
