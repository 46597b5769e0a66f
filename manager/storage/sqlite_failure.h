/*
 * sqlite_failure.h: what a result code of SQLite becomes.
 */
#ifndef STORAGE_SQLITE_FAILURE_H
#define STORAGE_SQLITE_FAILURE_H

#include <string>

struct sqlite3;

namespace manager::storage {

/* Throws the status of a result code, extended or not, with a message about the file. */
[[noreturn]] void throw_sqlite_failure(sqlite3* database, int code, const std::string& path);

}  // namespace manager::storage

#endif
