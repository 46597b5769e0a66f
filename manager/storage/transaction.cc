// Transactions.

#include "manager/storage/transaction.h"

#include "manager/storage/file.h"
#include "manager/storage/storage_status.h"

namespace manager::storage {

void transaction::join(const std::string& path) {
  require(!m_has_ended, "the transaction has ended");
  if (m_failure) std::rethrow_exception(m_failure);
  if (m_file == nullptr) return begin(path);
  require(m_file->path() == path, "a transaction belongs to the file of its first change");
}

void transaction::begin(const std::string& path) {
  try {
    m_file = open_file(path, open_mode::write);
    // Changes that go to the file before their end would lock out readers, this thread's too.
    m_file->run("PRAGMA cache_spill=OFF");
    m_changes.emplace(*m_file, unit_of_work::kind::write);
  } catch (...) {
    give_up();
    throw;
  }
}

void transaction::commit() {
  std::lock_guard lock(m_mutex);
  require(!m_has_ended, "the transaction has ended");
  m_has_ended = true;
  if (m_failure) std::rethrow_exception(m_failure);
  try {
    if (m_changes) m_changes->commit();
  } catch (...) {
    end();
    throw;
  }
  end();
}

void transaction::roll_back() noexcept {
  std::lock_guard lock(m_mutex);
  m_has_ended = true;
  end();
}

void transaction::give_up() noexcept {
  m_failure = std::current_exception();
  end();
}

void transaction::end() noexcept {
  m_changes.reset();
  m_file.reset();
}

}  // namespace manager::storage
