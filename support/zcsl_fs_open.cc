// Files: opening, closing, and for the pool reopening.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <initializer_list>
#include <new>
#include <utility>

#include "support/zcsl_fs_mgr.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_mapped_result.h"
#include "support/zcsl_module.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"

namespace {

constexpr zcsl_mapped_result s_mapped_results[] = {
    {0, 0},
    {ENOENT, fs_error(zcsl_code_not_found)},
    {ESTALE, fs_error(zcsl_code_not_found)},
    {ENOMEM, fs_error(zcsl_code_no_memory)},
    {EINVAL, fs_error(zcsl_code_invalid_arg)},
    {EFAULT, fs_error(zcsl_code_invalid_arg)},
    {ENAMETOOLONG, fs_error(zcsl_code_invalid_arg)},
    {ELOOP, fs_error(zcsl_code_invalid_arg)},
    {EBUSY, fs_error(zcsl_code_busy)},
    {ETXTBSY, fs_error(zcsl_code_busy)},
    {EDEADLK, fs_error(zcsl_code_deadlock)},
    {EAGAIN, fs_error(zcsl_code_try_again)},
    {EINTR, fs_error(zcsl_code_interrupted)},
    {EPERM, fs_error(zcsl_code_not_permitted)},
    {EACCES, fs_error(zcsl_code_not_permitted)},
    {EROFS, fs_error(zcsl_code_not_permitted)},
    {EMFILE, fs_error(zcsl_code_too_many_open)},
    {ENFILE, fs_error(zcsl_code_too_many_open)},
    {ENOSPC, fs_error(zcsl_code_no_space)},
    {EDQUOT, fs_error(zcsl_code_no_space)},
    {EIO, fs_error(zcsl_code_io_failed)},
    {EXDEV, fs_error(zcsl_code_other_device)},
    {EISDIR, fs_error(zcsl_code_wrong_type)},
    {ENOTDIR, fs_error(zcsl_code_wrong_type)},
    {ENXIO, fs_error(zcsl_code_wrong_type)},  // a pipe or a socket
    {EFBIG, fs_error(zcsl_code_bad_offset)},
    {EOVERFLOW, fs_error(zcsl_code_bad_offset)},
    {EEXIST, fs_error(zcsl_code_exists)},
    {ENOTEMPTY, fs_error(zcsl_code_exists)},
};

zvsdk_status open_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_fs_open");
}

// The descriptor is gone whatever the platform says, an interruption included.
zvsdk_status close_descriptor(int descriptor) {
  return close(descriptor) == 0 || errno == EINTR ? 0 : _zcsl_fs_last_error();
}

void discard_descriptor(int descriptor) {
  if (descriptor >= 0) (void)close_descriptor(descriptor);
}

void free_file(zcsl_fs_file* file) {
  discard_descriptor(file->descriptor);
  file->magic = 0;
  zcsl_spinlock_delete(&file->lock);
  zcsl_string_free(file->path);
  zcsl_memory_free(file);
}

using file_owner = zcsl_owner<zcsl_fs_file, free_file>;

constexpr uint32_t s_once_flags = zcsl_fs_flag_create | zcsl_fs_flag_truncate;
static_assert(s_once_flags == 0x30);

int platform_access(uint32_t flags) {
  if (!(flags & zcsl_fs_flag_write)) return O_RDONLY;
  return flags & zcsl_fs_flag_read ? O_RDWR : O_WRONLY;
}

// O_NONBLOCK is for the open alone: a pipe at the path must not hold us up.
int platform_flags(uint32_t flags) {
  int all = platform_access(flags) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
  if (flags & zcsl_fs_flag_append) all |= O_APPEND;
  if (flags & zcsl_fs_flag_truncate) all |= O_TRUNC;
  if (flags & zcsl_fs_flag_create) all |= O_CREAT | (flags & zcsl_fs_flag_exclusive ? O_EXCL : 0);
  return all;
}

bool sensible_flags(uint32_t flags) {
  constexpr uint32_t access = zcsl_fs_flag_read | zcsl_fs_flag_write;
  constexpr uint32_t to_write = zcsl_fs_flag_append | zcsl_fs_flag_truncate;
  constexpr uint32_t all = access | to_write | zcsl_fs_flag_exclusive | zcsl_fs_flag_create;
  if ((flags & ~all) != 0 || (flags & access) == 0) return false;
  if ((flags & to_write) && !(flags & zcsl_fs_flag_write)) return false;
  return !(flags & zcsl_fs_flag_exclusive) || (flags & zcsl_fs_flag_create);
}

// A created file must be one that its owner may open again.
bool sensible_mode(uint32_t flags, uint32_t mode) {
  if (!(flags & zcsl_fs_flag_create)) return true;
  const uint32_t needed =
      (flags & zcsl_fs_flag_read ? S_IRUSR : 0u) | (flags & zcsl_fs_flag_write ? S_IWUSR : 0u);
  return (mode & needed) == needed && (mode & ~0777u) == 0;
}

int open_uninterrupted(const char* path, int flags, uint32_t mode) {
  int descriptor;
  do {
    descriptor = open(path, flags, static_cast<mode_t>(mode));
  } while (descriptor < 0 && errno == EINTR);
  return descriptor;
}

// Checks what was opened, and tells when it was made; 0 where the file system does not say.
zvsdk_status look_at(int descriptor, struct statx_timestamp* born) {
  struct statx found {};
  if (statx(descriptor, "", AT_EMPTY_PATH, STATX_TYPE | STATX_BTIME, &found) != 0) {
    return _zcsl_fs_last_error();
  }
  if (!S_ISREG(found.stx_mode)) return fs_error(zcsl_code_wrong_type);
  *born = found.stx_mask & STATX_BTIME ? found.stx_btime : statx_timestamp{};
  return 0;
}

// Opens the file's path. On success the file holds the descriptor.
zvsdk_status open_descriptor(zcsl_fs_file* file, uint32_t flags, struct statx_timestamp* born) {
  const int wanted = platform_flags(flags);
  const int descriptor = open_uninterrupted(file->path, wanted, file->mode);
  if (descriptor < 0) return _zcsl_fs_last_error();
  (void)fcntl(descriptor, F_SETFL, wanted & ~O_NONBLOCK);
  const zvsdk_status status = look_at(descriptor, born);
  if (status) {
    discard_descriptor(descriptor);
  } else {
    file->descriptor = descriptor;
  }
  return status;
}

zvsdk_status check_open(const char* path, uint32_t flags, uint32_t mode, zcsl_fs_file** file) {
  if (!path || !*path || !file) return fs_error(zcsl_code_invalid_arg);
  if (!sensible_flags(flags) || !sensible_mode(flags, mode)) return fs_error(zcsl_code_invalid_arg);
  return zcsl_fs_initchecks() ? 0 : fs_error(zcsl_code_not_initialized);
}

// The path, behind the folder of the process if it starts there.
zvsdk_status absolute_path(const char* path, char** absolute) {
  char folder[PATH_MAX] = "";
  const bool relative = *path != '/';
  if (relative && !getcwd(folder, sizeof folder)) return _zcsl_fs_last_error();
  zcsl_accum_owner joined;
  zvsdk_status status = zcsl_string_accum_create(joined.out(), nullptr, 0);
  for (const char* part : {static_cast<const char*>(folder), relative ? "/" : "", path}) {
    if (!status) status = zcsl_string_accum_append(joined.get(), part, nullptr);
  }
  if (!status) status = zcsl_string_accum_detach(joined.get(), absolute, nullptr);
  return status ? fs_error(zcsl_code_no_memory) : 0;
}

zvsdk_status make_file(const char* path, uint32_t flags, uint32_t mode, zcsl_fs_file** file) {
  void* block = zcsl_memory_alloc(sizeof(zcsl_fs_file));
  if (!block) return fs_error(zcsl_code_no_memory);
  file_owner made(::new (block) zcsl_fs_file);
  made->flags = flags;
  made->mode = mode;
  made->entry.file = made.get();
  const zvsdk_status status = absolute_path(path, &made->path);
  if (!status) *file = made.release();
  return status;
}

zvsdk_status open_first(zcsl_fs_file* file) {
  if (const zvsdk_status status = _zcsl_fs_mgr_new_fd(&file->entry)) return status;
  if (const zvsdk_status status = open_descriptor(file, file->flags, &file->born)) {
    _zcsl_fs_mgr_close_fd(&file->entry);
    return status;
  }
  return _zcsl_fs_mgr_release_fd(&file->entry);
}

}  // namespace

zvsdk_status _zcsl_fs_map_error(int result) {
  return zcsl_mapped_status(s_mapped_results, result, fs_error(zcsl_code_unexpected));
}

zvsdk_status _zcsl_fs_last_error() {
  return _zcsl_fs_map_error(errno);
}

zvsdk_status _zcsl_fs_check_file(const zcsl_fs_file* file, bool arguments) {
  if (!file || !arguments) return fs_error(zcsl_code_invalid_arg);
  return file->magic == zcsl_fs_file::alive ? 0 : fs_error(zcsl_code_bad_magic);
}

zvsdk_status _zcsl_fs_close_internal(zcsl_fs_file* file) {
  const int descriptor = std::exchange(file->descriptor, -1);
  const zvsdk_status status = descriptor < 0 ? 0 : close_descriptor(descriptor);
  if (status) file->failed_close = status;
  return open_logged(status);
}

zvsdk_status _zcsl_fs_reopen_internal(zcsl_fs_file* file) {
  struct statx_timestamp born {};
  const zvsdk_status status = open_descriptor(file, file->flags & ~s_once_flags, &born);
  if (status) return open_logged(status);
  if (born.tv_sec == file->born.tv_sec && born.tv_nsec == file->born.tv_nsec) return 0;
  discard_descriptor(std::exchange(file->descriptor, -1));
  return open_logged(fs_error(zcsl_code_not_found));
}

zvsdk_status zcsl_fs_file_open(const char* path, uint32_t flags, uint32_t mode,
                               zcsl_fs_file** file) {
  file_owner made;
  zvsdk_status status = check_open(path, flags, mode, file);
  if (!status) status = make_file(path, flags, mode, made.out());
  if (!status) status = open_first(made.get());
  if (!status) *file = made.release();
  return open_logged(status);
}

// Under the pool's lock as a whole: the descriptor must not be given away between its last use and
// its close, nor counted as free before.
zvsdk_status zcsl_fs_file_close(zcsl_fs_file* file) {
  if (!file) return 0;
  if (const zvsdk_status status = _zcsl_fs_check_file(file, true)) return open_logged(status);
  zcsl_critsec_guard guard(_zcsl_fs_mgr_lock());
  if (file->entry.use_count > 0 || file->entry.waiting > 0) {
    return open_logged(fs_error(zcsl_code_busy));
  }
  (void)_zcsl_fs_close_internal(file);
  _zcsl_fs_mgr_close_fd(&file->entry);
  guard.unlock();
  const zvsdk_status status = file->failed_close;
  free_file(file);
  return open_logged(status);
}
