// Storage files as a whole.

#include "manager/storage/file.h"

#include <fcntl.h>
#include <unistd.h>

#include <filesystem>

#include "manager/storage/catalog.h"
#include "manager/storage/storage_status.h"

namespace manager::storage {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void fail_missing(const std::string& path) {
  fail(warn_missing, path, "does not exist", "store something first, or check the folder");
}

[[noreturn]] void fail_unreachable(const std::string& path) {
  fail(error_not_open, path, "cannot be opened", "check the rights on the folder");
}

void require_folder(const std::string& path) {
  std::error_code error;
  const fs::path folder = fs::path(path).parent_path();
  const fs::file_status status = fs::status(folder, error);
  if (fs::is_directory(status)) return;
  if (!fs::status_known(status)) fail_unreachable(path);
  fail(error_not_open, path, "has no folder: \"" + folder.string() + "\" is none",
       "make the folder or name another one");
}

/* False when there is no file. What is no file, or lies in no folder, is refused. */
bool is_there(const std::string& path) {
  require_folder(path);
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  if (status.type() == fs::file_type::regular) return true;
  if (status.type() == fs::file_type::not_found) return false;
  if (error) fail_unreachable(path);
  fail(error_foreign, path, "is no file", "move it away or name another folder");
}

/* A file is made by whoever may write its folder. */
void require_writable_folder(const std::string& path) {
  const fs::path folder = fs::path(path).parent_path();
  if (faccessat(AT_FDCWD, folder.c_str(), W_OK, AT_EACCESS) == 0) return;
  fail(error_read_only, path, "cannot be made: its folder cannot be written",
       "check the rights on the folder or name another one");
}

/* SQLite's own files beside a storage file; one that is not such a file it would remove. */
bool is_side_file(std::string_view name) {
  return name.ends_with("-journal") || name.ends_with("-wal") || name.ends_with("-shm");
}

bool check_storage_file(connection& file) {
  unit_of_work reading(file, unit_of_work::kind::read);
  return is_storage_file(file);
}

/* The first fault of the file's structure, or an empty text. */
std::string find_fault(connection& file) {
  statement check(file, "PRAGMA integrity_check(1)");
  if (!check.step()) return {};
  const std::string_view found = check.text(0);
  return found == "ok" ? std::string() : std::string(found);
}

void require_whole(connection& file) {
  const std::string fault = find_fault(file);
  if (fault.empty()) return;
  fail(error_damaged, file.path(), "is damaged (" + fault + ")",
       "restore it from a copy, or move it away");
}

/* The file's structure, then every table's declaration. */
void examine(connection& file, zvsdk_storage_info& info) {
  unit_of_work reading(file, unit_of_work::kind::read);
  info.readable = 1;
  const int64_t page_size = file.number("PRAGMA page_size");
  info.free_size = static_cast<uint64_t>(file.number("PRAGMA freelist_count") * page_size);
  require_whole(file);
  for (const std::string& name : table_names(file)) {
    const std::string table = get_table(file, name).quoted_name();
    info.row_count += static_cast<uint64_t>(file.number("SELECT count(*) FROM " + table));
  }
}

}  // namespace

std::string path_of(const char* file_name, const char* location) {
  const std::string name = require_text(file_name);
  require(name.size() <= ZVSDK_STORAGE_NAME_SIZE && name.find('/') == name.npos && name != "." &&
              name != "..",
          "a storage file is named by up to 64 bytes without a slash");
  require(!is_side_file(name), "names that end in -journal, -wal or -shm are SQLite's own");
  std::string folder = location != nullptr ? location : "";
  // Never a bare name at the beginning: SQLite might take "file:..." for an address.
  if (folder.empty() || folder[0] != '/') folder = "./" + folder;
  return (fs::path(folder) / name).string();
}

std::unique_ptr<connection> open_file(const std::string& path, open_mode mode) {
  if (!is_there(path)) fail_missing(path);
  auto file = std::make_unique<connection>(path, mode);
  if (!check_storage_file(*file)) fail_missing(path);
  if (mode != open_mode::read) file->prepare_to_write();
  return file;
}

std::unique_ptr<connection> open_or_create_file(const std::string& path) {
  if (!is_there(path)) require_writable_folder(path);
  auto file = std::make_unique<connection>(path, open_mode::create);
  check_storage_file(*file);
  file->prepare_to_write();
  return file;
}

void validate_file(const std::string& path, zvsdk_storage_info& info) {
  if (!is_there(path)) fail_missing(path);
  std::error_code error;
  info.exists = 1;
  const uintmax_t size = fs::file_size(path, error);
  info.file_size = error ? 0 : size;
  try {
    examine(*open_file(path, open_mode::read), info);
    info.integrity = zvsdk_storage_whole;
  } catch (const status_error& failure) {
    if (failure.status() == error_damaged) info.integrity = zvsdk_storage_damaged;
    throw;
  }
}

void compact_file(const std::string& path) {
  const auto file = open_file(path, open_mode::write);
  file->require_writable();
  zvsdk_storage_info found = {};
  examine(*file, found);
  file->run("VACUUM");
}

}  // namespace manager::storage
