/*
 * file.h: storage files as a whole: where a name lies, opening with every check, and the two calls
 * that look at a file as one piece.
 */
#ifndef STORAGE_FILE_H
#define STORAGE_FILE_H

#include "manager/storage/connection.h"
#include "zvsdk_manager.h"

namespace manager::storage {

/* Checks a file name and puts the folder before it. */
std::string path_of(const char* file_name, const char* location);

/* A file that is there and is a storage file; "missing" when it is not there or empty. */
std::unique_ptr<connection> open_file(const std::string& path, open_mode mode);
/* One to make tables in; it may be empty. */
std::unique_ptr<connection> open_or_create_file(const std::string& path);

/* Writes what is found also when it throws. */
void validate_file(const std::string& path, zvsdk_storage_info& info);
void compact_file(const std::string& path);

}  // namespace manager::storage

#endif
