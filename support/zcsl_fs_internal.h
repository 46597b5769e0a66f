/*
 * zcsl_fs_internal.h: the record behind a file, its entry in the pool, and what all of the file
 * layer uses: status codes and their log lines. Internal.
 */
#ifndef ZCSL_FS_INTERNAL_H
#define ZCSL_FS_INTERNAL_H

#include <pthread.h>
#include <sys/stat.h>

#include "support/zcsl_error.h"
#include "support/zcsl_fs.h"
#include "support/zcsl_log.h"
#include "support/zcsl_thread.h"

struct zcsl_fs_record; /* metrics of one entry for one marker */

/*
 * One file that is open logically, as the pool sees it. Guarded by the pool's lock. It stands in
 * the live list (has a descriptor, nobody uses it), in the open list (has none) or, in use, in
 * neither.
 */
struct zcsl_fs_entry {
  zcsl_fs_file* file = nullptr; /* null while a directory is read: that is never idle */
  pthread_t owner{};            /* the thread that opened it */
  uint32_t use_count = 0;
  zcsl_fs_record* records = nullptr; /* the global marker's first */
  uint8_t has_descriptor = 0;
  zcsl_fs_entry* next = nullptr;
  zcsl_fs_entry* previous = nullptr;
  uint32_t waiting = 0; /* calls that wait for the descriptor */
};

/* A file. What no lock is named for does not change after the open. */
struct zcsl_fs_file {
  static constexpr uint32_t alive = 0x0F11E0F5;

  uint32_t magic = alive;
  uint32_t flags = 0;
  uint32_t mode = 0;
  char* path = nullptr; /* absolute: the folder of the process may change */
  zcsl_fs_entry entry;

  /* Guarded by the pool's lock, and left alone by the pool while the entry is in use. */
  int descriptor = -1;
  struct statx_timestamp born {}; /* tells the file from another one at its path */
  zvsdk_status failed_close = 0;  /* what the pool's close said, until somebody is told */

  /* Guarded by `lock`, which is taken with the entry in use and before the pool's lock. */
  zcsl_spinlock lock{};
  int64_t position = 0;
};

constexpr zvsdk_status fs_error(uint32_t code) {
  return ZCSL_ERROR(zcsl_package_fs, code);
}

/* The status for an errno value, and for the current one. */
zvsdk_status _zcsl_fs_map_error(int result);
zvsdk_status _zcsl_fs_last_error();

/* The checks that every operation begins with. `arguments` says that what it needs is there. */
zvsdk_status _zcsl_fs_check_file(const zcsl_fs_file* file, bool arguments);

/* For the pool: the file's descriptor. A failed close has closed it all the same. */
zvsdk_status _zcsl_fs_close_internal(zcsl_fs_file* file);
zvsdk_status _zcsl_fs_reopen_internal(zcsl_fs_file* file);

#endif
