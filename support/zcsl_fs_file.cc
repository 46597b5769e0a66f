// Files: the operations, each of which holds the file's descriptor for its length. The position is
// kept in the file and not in the descriptor, which comes and goes.

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "support/zcsl_fs_mgr.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_output.h"

namespace {

zvsdk_status file_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_fs_file");
}

// One operation: the checks, the work with the descriptor at hand, the log line. `needed` are the
// flags that the file must have been opened with.
template <class Work>
zvsdk_status file_operate(zcsl_fs_file* file, bool arguments, uint32_t needed, Work work,
                          uint32_t line = __builtin_LINE()) {
  zvsdk_status status = _zcsl_fs_check_file(file, arguments);
  if (!status && (file->flags & needed) != needed) status = fs_error(zcsl_code_not_permitted);
  if (!status) status = _zcsl_fs_mgr_acquire_fd(&file->entry);
  if (!status) {
    status = work();
    _zcsl_fs_mgr_release_fd(&file->entry);
  }
  return file_logged(status, line);
}

// Repeats `step(done)`, which moves some of the bytes that are left, until all are moved, there are
// no more, or it fails.
template <class Step>
zvsdk_status transfer(uint32_t size, uint32_t* done, Step step) {
  while (*done < size) {
    const ssize_t moved = step(*done);
    if (moved == 0) break;
    if (moved > 0) {
      *done += static_cast<uint32_t>(moved);
    } else if (errno != EINTR) {
      return _zcsl_fs_last_error();
    }
  }
  return 0;
}

// How many bytes can lie from the position on. The platform refuses a transfer beyond, as a whole.
uint64_t bytes_ahead(const zcsl_fs_file* file) {
  return static_cast<uint64_t>(INT64_MAX - file->position);
}

zvsdk_status read_bytes(zcsl_fs_file* file, uint8_t* buffer, uint32_t size, uint32_t* done) {
  zcsl_spin_guard guard(&file->lock);
  const auto wanted = static_cast<uint32_t>(std::min<uint64_t>(size, bytes_ahead(file)));
  const zvsdk_status status = transfer(wanted, done, [=](uint32_t at) {
    return pread(file->descriptor, buffer + at, wanted - at, file->position + at);
  });
  file->position += *done;
  _zcsl_fs_mgr_update_metrics(&file->entry, *done, 0, 0);
  const bool at_end = status == 0 && *done == 0 && size > 0;
  return at_end ? ZCSL_WARNING(zcsl_package_fs, zcsl_code_end_of_range) : status;
}

// Where a file is appended to the platform chooses the place, and its own position tells it.
zvsdk_status write_bytes(zcsl_fs_file* file, const uint8_t* bytes, uint32_t size, uint32_t* done) {
  const bool append = (file->flags & zcsl_fs_flag_append) != 0;
  zcsl_spin_guard guard(&file->lock);
  if (!append && size > bytes_ahead(file)) return fs_error(zcsl_code_bad_offset);
  zvsdk_status status = transfer(size, done, [=](uint32_t at) {
    return append ? write(file->descriptor, bytes + at, size - at)
                  : pwrite(file->descriptor, bytes + at, size - at, file->position + at);
  });
  if (!status && *done < size) status = fs_error(zcsl_code_no_space);
  if (*done > 0) {
    file->position = append ? lseek(file->descriptor, 0, SEEK_CUR) : file->position + *done;
  }
  _zcsl_fs_mgr_update_metrics(&file->entry, 0, *done, 0);
  return status;
}

zvsdk_status size_of(const zcsl_fs_file* file, int64_t* size) {
  struct stat found {};
  if (fstat(file->descriptor, &found) != 0) return _zcsl_fs_last_error();
  *size = found.st_size;
  return 0;
}

zvsdk_status base_of_seek(const zcsl_fs_file* file, uint32_t origin, int64_t* base) {
  *base = origin == zcsl_fs_from_position ? file->position : 0;
  return origin == zcsl_fs_from_end ? size_of(file, base) : 0;
}

zvsdk_status seek_to(zcsl_fs_file* file, int64_t offset, uint32_t origin, uint64_t* position) {
  zcsl_spin_guard guard(&file->lock);
  int64_t target = 0;
  if (const zvsdk_status status = base_of_seek(file, origin, &target)) return status;
  if (__builtin_add_overflow(target, offset, &target) || target < 0) {
    return fs_error(zcsl_code_bad_offset);
  }
  file->position = target;
  _zcsl_fs_mgr_update_metrics(&file->entry, 0, 0, 1);
  zcsl_give(position, static_cast<uint64_t>(target));
  return 0;
}

// What the pool's close of this file said; told once.
zvsdk_status take_failed_close(zcsl_fs_file* file) {
  zcsl_spin_guard guard(&file->lock);
  return std::exchange(file->failed_close, 0);
}

}  // namespace

zvsdk_status zcsl_fs_file_read(zcsl_fs_file* file, void* buffer, uint32_t size,
                               uint32_t* bytes_read) {
  zcsl_give(bytes_read, 0);
  return file_operate(file, bytes_read && (buffer || size == 0), zcsl_fs_flag_read, [=] {
    return read_bytes(file, static_cast<uint8_t*>(buffer), size, bytes_read);
  });
}

zvsdk_status zcsl_fs_file_write(zcsl_fs_file* file, const void* bytes, uint32_t size,
                                uint32_t* bytes_written) {
  uint32_t done = 0;
  const zvsdk_status status = file_operate(
      file, bytes || size == 0, zcsl_fs_flag_write,
      [=, &done] { return write_bytes(file, static_cast<const uint8_t*>(bytes), size, &done); });
  zcsl_give(bytes_written, done);
  return status;
}

zvsdk_status zcsl_fs_file_seek(zcsl_fs_file* file, int64_t offset, uint32_t origin,
                               uint64_t* position) {
  return file_operate(file, origin <= zcsl_fs_from_end, 0,
                      [=] { return seek_to(file, offset, origin, position); });
}

zvsdk_status zcsl_fs_file_tell(zcsl_fs_file* file, uint64_t* position) {
  return file_operate(file, position, 0, [=]() -> zvsdk_status {
    zcsl_spin_guard guard(&file->lock);
    *position = static_cast<uint64_t>(file->position);
    return 0;
  });
}

zvsdk_status zcsl_fs_file_size(zcsl_fs_file* file, uint64_t* size) {
  return file_operate(file, size, 0, [=] {
    int64_t found = 0;
    const zvsdk_status status = size_of(file, &found);
    if (!status) *size = static_cast<uint64_t>(found);
    return status;
  });
}

zvsdk_status zcsl_fs_file_truncate(zcsl_fs_file* file, uint64_t size) {
  return file_operate(file, true, zcsl_fs_flag_write, [=] {
    if (size > INT64_MAX) return fs_error(zcsl_code_bad_offset);
    const bool done = ftruncate(file->descriptor, static_cast<off_t>(size)) == 0;
    return done ? 0 : _zcsl_fs_last_error();
  });
}

zvsdk_status zcsl_fs_file_flush(zcsl_fs_file* file) {
  return file_operate(file, true, 0, [=] {
    const zvsdk_status failed_close = take_failed_close(file);
    if (fsync(file->descriptor) != 0) return _zcsl_fs_last_error();
    return failed_close;
  });
}
