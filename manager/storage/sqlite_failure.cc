// The table of SQLite's result codes.

#include "manager/storage/sqlite_failure.h"

#include <sqlite3.h>

#include <cerrno>

#include "manager/storage/storage_status.h"

namespace manager::storage {
namespace {

struct failure {
  zvsdk_status status;
  const char* what;
  const char* advice;
};

constexpr failure s_full{error_full, "cannot grow: the disk is full",
                         "free some room or raise the limit; what was stored before is kept"};
constexpr failure s_in_use{error_locked, "is in use by another program or transaction",
                           "try again when that has ended"};
constexpr failure s_changed{error_damaged, "was changed by another program",
                            "restore it from a copy, or move it away"};

// Extended codes before the code that they extend.
constexpr struct {
  int code;
  failure meaning;
} s_failures[] = {
    {SQLITE_READONLY_DBMOVED,
     {warn_missing, "was removed or replaced while it was in use", "open it anew"}},
    {SQLITE_READONLY_ROLLBACK,
     {error_read_only, "must be recovered after an interrupted write, but cannot be written",
      "open it once with the right to write file and folder"}},
    {SQLITE_READONLY,
     {error_read_only, "cannot be written", "check the rights on the file and on its folder"}},
    {SQLITE_FULL, s_full},
    {SQLITE_TOOBIG,
     {error_full, "cannot hold a value of this size", "a value may have up to 10^9 bytes"}},
    {SQLITE_BUSY, s_in_use},
    {SQLITE_LOCKED, s_in_use},
    {SQLITE_PROTOCOL, {error_locked, "is in use by another program", "try again"}},
    {SQLITE_CANTOPEN,
     {error_not_open, "cannot be opened",
      "check that the folder exists and that it may be written"}},
    {SQLITE_PERM, {error_not_open, "cannot be opened", "check the rights on the file"}},
    {SQLITE_NOTADB,
     {error_foreign, "is not a storage file, or its beginning is damaged",
      "it was left alone: move it away or name another folder"}},
    {SQLITE_CORRUPT, {error_damaged, "is damaged", "restore it from a copy, or move it away"}},
    {SQLITE_ERROR, s_changed},
    {SQLITE_SCHEMA, {error_damaged, "was changed by another program", "open it anew"}},
    {SQLITE_CONSTRAINT, s_changed},
    {SQLITE_MISMATCH, s_changed},
    {SQLITE_IOERR_DELETE,
     {error_read_only, "has a journal that cannot be removed", "check the rights on its folder"}},
    {SQLITE_IOERR, {error_io, "cannot be read or written", "check the disk"}},
};

bool is_about_memory(int code) {
  return (code & 0xFF) == SQLITE_NOMEM || code == SQLITE_IOERR_NOMEM;
}

/* A limit on the size of files and a quota look like failures of the disk. */
bool is_about_room(sqlite3* database, int code) {
  if ((code & 0xFF) != SQLITE_IOERR) return false;
  int cause = 0;
  sqlite3_file_control(database, "main", SQLITE_FCNTL_LAST_ERRNO, &cause);
  const auto is_room = [](int error) {
    return error == EFBIG || error == ENOSPC || error == EDQUOT;
  };
  // The file itself, or its journal or a copy of it.
  return is_room(cause) || is_room(sqlite3_system_errno(database));
}

const failure* find_failure(int code) {
  for (const auto& [known, meaning] : s_failures) {
    if (known == code || known == (code & 0xFF)) return &meaning;
  }
  return nullptr;
}

}  // namespace

void throw_sqlite_failure(sqlite3* database, int code, const std::string& path) {
  if (is_about_memory(code)) throw std::bad_alloc();
  const failure* found = is_about_room(database, code) ? &s_full : find_failure(code);
  const bool is_last = sqlite3_extended_errcode(database) == code;
  const char* text = is_last ? sqlite3_errmsg(database) : sqlite3_errstr(code);
  const std::string said = std::string(" (") + text + ")";
  if (found == nullptr) fail(error_internal, path, "failed" + said, "this is a fault of the host");
  fail(found->status, path, found->what + said, found->advice);
}

}  // namespace manager::storage
