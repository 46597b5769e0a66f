// Transactions.

#include "manager/storage/transaction.h"

#include "manager/storage/file.h"
#include "manager/storage/storage_status.h"

namespace manager::storage {

void transaction::join(const std::string& path) {
  require(!has_ended_, "the transaction has ended");
  if (failure_) std::rethrow_exception(failure_);
  if (file_ == nullptr) return begin(path);
  require(file_->path() == path, "a transaction belongs to the file of its first change");
}

void transaction::begin(const std::string& path) {
  try {
    file_ = open_file(path, open_mode::write);
    // Changes that go to the file before their end would lock out readers, this thread's too.
    file_->run("PRAGMA cache_spill=OFF");
    changes_.emplace(*file_, unit_of_work::kind::write);
  } catch (...) {
    give_up();
    throw;
  }
}

void transaction::commit() {
  std::lock_guard lock(mutex_);
  require(!has_ended_, "the transaction has ended");
  has_ended_ = true;
  if (failure_) std::rethrow_exception(failure_);
  try {
    if (changes_) changes_->commit();
  } catch (...) {
    end();
    throw;
  }
  end();
}

void transaction::roll_back() noexcept {
  std::lock_guard lock(mutex_);
  has_ended_ = true;
  end();
}

void transaction::give_up() noexcept {
  failure_ = std::current_exception();
  end();
}

void transaction::end() noexcept {
  changes_.reset();
  file_.reset();
}

}  // namespace manager::storage
