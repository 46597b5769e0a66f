// Directories, and what is done to files by path.

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/zcsl_fs_mgr.h"
#include "support/zcsl_module.h"
#include "support/zcsl_owners.h"

namespace {

using directory = zcsl_owner<DIR, closedir>;

zvsdk_status dir_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_fs_dir");
}

bool given(const char* path) {
  return path && *path;
}

// One call of the platform that says 0 for success.
template <class Call>
zvsdk_status path_operate(bool arguments, Call call, uint32_t line = __builtin_LINE()) {
  if (!arguments) return dir_logged(fs_error(zcsl_code_invalid_arg), line);
  return dir_logged(call() == 0 ? 0 : _zcsl_fs_last_error(), line);
}

zvsdk_status path_exists(const char* path, bool as_directory, uint8_t* exists) {
  return path_operate(given(path) && exists, [=] {
    struct stat found {};
    const int failure = stat(path, &found) == 0 ? 0 : errno;
    *exists = !failure && S_ISDIR(found.st_mode) == as_directory;
    return failure == ENOENT || failure == ENOTDIR ? 0 : failure;
  });
}

bool is_directory(DIR* parent, const dirent* item) {
  if (item->d_type != DT_UNKNOWN && item->d_type != DT_LNK) return item->d_type == DT_DIR;
  struct stat found {};
  return fstatat(dirfd(parent), item->d_name, &found, 0) == 0 && S_ISDIR(found.st_mode);
}

bool is_itself_or_parent(const char* name) {
  return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0;
}

// A name goes into the accumulator as a byte that says whether it is a directory, its text and a 0.
zvsdk_status add_name(zcsl_accum* names, bool directory_too, const char* name) {
  const char kind = directory_too ? 'd' : 'f';
  zvsdk_status status = zcsl_string_accum_append_bytes(names, &kind, 1, nullptr);
  const auto size = static_cast<uint32_t>(std::strlen(name) + 1);
  if (!status) status = zcsl_string_accum_append_bytes(names, name, size, nullptr);
  return status ? fs_error(zcsl_code_no_memory) : 0;
}

zvsdk_status add_names(DIR* parent, zcsl_accum* names) {
  for (;;) {
    errno = 0;
    const dirent* item = readdir(parent);
    if (!item) return _zcsl_fs_map_error(errno);
    if (is_itself_or_parent(item->d_name)) continue;
    const zvsdk_status status = add_name(names, is_directory(parent, item), item->d_name);
    if (status) return status;
  }
}

// The directory is open, and one of the pool's descriptors, only here.
zvsdk_status read_directory(const char* path, zcsl_accum* names) {
  zcsl_fs_entry entry;
  if (const zvsdk_status status = _zcsl_fs_mgr_new_fd(&entry)) return status;
  directory opened(opendir(path));
  const zvsdk_status status = opened ? add_names(opened.get(), names) : _zcsl_fs_last_error();
  opened.reset();
  _zcsl_fs_mgr_close_fd(&entry);
  return status;
}

zvsdk_status hand_out(zcsl_accum* names, zcsl_fs_dir_fn callback, void* context) {
  const char* text = nullptr;
  uint32_t size = 0;
  (void)zcsl_string_accum_get_string(names, &text, &size);
  for (const char* end = text + (size ? size - 1 : 0); text < end; text += std::strlen(text) + 1) {
    if (!callback(context, text + 1, *text == 'd')) {
      return ZCSL_WARNING(zcsl_package_fs, zcsl_code_aborted);
    }
  }
  return 0;
}

zvsdk_status enumerate(const char* path, zcsl_fs_dir_fn callback, void* context) {
  zcsl_accum_owner names;
  if (!given(path) || !callback) return fs_error(zcsl_code_invalid_arg);
  if (!zcsl_fs_initchecks()) return fs_error(zcsl_code_not_initialized);
  if (zcsl_string_accum_create(names.out(), nullptr, 0)) return fs_error(zcsl_code_no_memory);
  const zvsdk_status status = read_directory(path, names.get());
  return status ? status : hand_out(names.get(), callback, context);
}

}  // namespace

zvsdk_status zcsl_fs_file_exists(const char* path, uint8_t* exists) {
  return path_exists(path, false, exists);
}

zvsdk_status zcsl_fs_file_remove(const char* path) {
  return path_operate(given(path), [=] { return unlink(path); });
}

zvsdk_status zcsl_fs_file_rename(const char* path, const char* new_path) {
  return path_operate(given(path) && given(new_path), [=] { return std::rename(path, new_path); });
}

zvsdk_status zcsl_fs_dir_exists(const char* path, uint8_t* exists) {
  return path_exists(path, true, exists);
}

zvsdk_status zcsl_fs_dir_create(const char* path, uint32_t mode) {
  return path_operate(given(path), [=] { return mkdir(path, static_cast<mode_t>(mode)); });
}

zvsdk_status zcsl_fs_dir_remove(const char* path) {
  return path_operate(given(path), [=] { return rmdir(path); });
}

zvsdk_status zcsl_fs_dir_enumerate(const char* path, zcsl_fs_dir_fn callback, void* context) {
  return dir_logged(enumerate(path, callback, context));
}
