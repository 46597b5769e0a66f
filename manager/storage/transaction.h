/*
 * transaction.h: changes of one file that are kept together. The transaction has a connection of
 * its own, opened for its first change, so that calls outside of it stay outside. After a failure
 * it holds nothing any more, and its commit fails with the same failure.
 *
 * A mutex guards it; records are locked before it.
 */
#ifndef STORAGE_TRANSACTION_H
#define STORAGE_TRANSACTION_H

#include <exception>
#include <optional>

#include "manager/storage/connection.h"

namespace manager::storage {

class transaction {
 public:
  /* Does `work` on the connection as part of the transaction. */
  template <class Work>
  auto change(const std::string& path, Work work) {
    std::lock_guard lock(mutex_);
    join(path);
    try {
      return work(*file_);
    } catch (...) {
      give_up();
      throw;
    }
  }
  /* Ends it. */
  void commit();
  void roll_back() noexcept;

 private:
  void join(const std::string& path);
  void begin(const std::string& path);
  void give_up() noexcept;
  void end() noexcept;

  std::mutex mutex_;  // guards what follows
  std::unique_ptr<connection> file_;
  std::optional<unit_of_work> changes_;
  std::exception_ptr failure_;
  bool has_ended_ = false;
};

}  // namespace manager::storage

#endif
