/*
 * zcsl_fs.h: files and directories. Any number of files can be open at once on a bounded number of
 * descriptors: when the limit is reached, the file that was idle longest gives its descriptor up
 * without its owner noticing, and is opened again when it is used next.
 *
 * Use: zcsl_fs_initialize (or anything that starts it), open, read, write, close; the module cannot
 * be shut down (0x90030006) while a file or a marker is left. The limit is the option
 * "zcsl_fs_max_handles"; each start of the module begins without one.
 *
 * What follows from reopening. A file comes back by its path, made absolute at the open, and with
 * its position; it is neither created nor truncated a second time. A file that was removed or
 * renamed while it had no descriptor gives 0x90030003 from its next use on, as does another file
 * that took its place, where the file system keeps times of creation; closing it still succeeds.
 * Only regular files can be opened (0x90030360): others would not come back the same. Without a
 * limit nothing of this happens.
 *
 * Status: 0, or an error of package 0x03 by its low word:
 *
 *   1      a null or empty required argument, flags that make no sense, an unknown option
 *   2      no memory
 *   3      no such file or directory, or no longer
 *   6      busy: in use by another thread, or by the system
 *   7      the module is not started
 *   0x3E   any other failure of the system
 *   0x282  try again     0x283  interrupted     0x284  not permitted, or not by the open's flags
 *   0x285  too many files are open in the process or the system
 *   0x286  no space      0x287  the device failed     0x288  on another file system
 *   0x321  the handle is no live file or marker
 *   0x360  a directory where a file is expected, or a file where a directory is, or neither
 *   0x363  a position or size out of range
 *   0x368  exists already, or is not empty
 *
 * Outcomes that are no errors: 0x10030361 at the end of a file, 0x100301A0 for a walk that was
 * stopped. A close that failed while the pool took a descriptor away ends the call that needed the
 * descriptor, and is told once more by the next flush or close of the file that lost it.
 *
 * Threads: all functions may be called from several threads at once, also with one file, whose
 * reads and writes then go one after the other. Closing a file that another call is using or
 * waiting for gives 0x90030006 and leaves it open. A close that succeeds ends the handle: no other
 * call may begin with it at the same time or later. No call may be running at the shutdown. A call
 * waits while every descriptor is in use.
 */
#ifndef ZCSL_FS_H
#define ZCSL_FS_H

#include "support/zcsl_module.h" /* zcsl_fs_initialize and its like */
#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_fs_file zcsl_fs_file;

/* How to open a file: read, write or both, and what else. Create and truncate happen once. */
enum {
  zcsl_fs_flag_read = 0x01,
  zcsl_fs_flag_write = 0x02,
  zcsl_fs_flag_append = 0x04,    /* every write goes to the end; needs write */
  zcsl_fs_flag_exclusive = 0x08, /* the file must not exist (0x90030368); needs create */
  zcsl_fs_flag_create = 0x10,    /* made if there is none */
  zcsl_fs_flag_truncate = 0x20   /* emptied; needs write */
};

/* What the offset of a seek is added to. */
enum { zcsl_fs_from_start = 0, zcsl_fs_from_position = 1, zcsl_fs_from_end = 2 };

/*
 * Opens a file; the caller owns it and closes it. The position is 0. `mode` has the permission bits
 * of a file that is created, less those of the process's mask; they must allow its owner what the
 * flags ask for, since the file may have to be opened again. Without create it is not used.
 */
ZVSDK_API zvsdk_status zcsl_fs_file_open(const char* path, uint32_t flags, uint32_t mode,
                                         zcsl_fs_file** file);
/*
 * Reads at the position and moves it. Fewer bytes than asked for come only at the end of the file
 * or with an error; none at all at the end is 0x10030361. `bytes_read` is required.
 */
ZVSDK_API zvsdk_status zcsl_fs_file_read(zcsl_fs_file* file, void* buffer, uint32_t size,
                                         uint32_t* bytes_read);
/*
 * Writes at the position, or at the end with zcsl_fs_flag_append, and moves the position behind
 * what was written. `bytes_written`, optional, is less than `size` only with an error.
 */
ZVSDK_API zvsdk_status zcsl_fs_file_write(zcsl_fs_file* file, const void* bytes, uint32_t size,
                                          uint32_t* bytes_written);
/*
 * Moves the position, which may lie behind the end of the file; a write there fills the gap with 0
 * bytes. `position`, optional, receives it. 0x90030363, not moving, when it would be negative.
 */
ZVSDK_API zvsdk_status zcsl_fs_file_seek(zcsl_fs_file* file, int64_t offset, uint32_t origin,
                                         uint64_t* position);
/* The position. */
ZVSDK_API zvsdk_status zcsl_fs_file_tell(zcsl_fs_file* file, uint64_t* position);
/* The size of the file in bytes. */
ZVSDK_API zvsdk_status zcsl_fs_file_size(zcsl_fs_file* file, uint64_t* size);
/* Cuts the file, or lengthens it with 0 bytes. The position stays. Needs zcsl_fs_flag_write. */
ZVSDK_API zvsdk_status zcsl_fs_file_truncate(zcsl_fs_file* file, uint64_t size);
/* Returns when the device has everything that was written. */
ZVSDK_API zvsdk_status zcsl_fs_file_flush(zcsl_fs_file* file);
/* Ends the file, except when it is busy. Null returns 0. Does not wait for the device. */
ZVSDK_API zvsdk_status zcsl_fs_file_close(zcsl_fs_file* file);

/*
 * By path. Links are followed by exists alone. A file is whatever is no directory; `exists`
 * receives 1 or 0. Rename replaces a file of the new name; it takes directories too.
 */
ZVSDK_API zvsdk_status zcsl_fs_file_exists(const char* path, uint8_t* exists);
ZVSDK_API zvsdk_status zcsl_fs_file_remove(const char* path);
ZVSDK_API zvsdk_status zcsl_fs_file_rename(const char* path, const char* new_path);

ZVSDK_API zvsdk_status zcsl_fs_dir_exists(const char* path, uint8_t* exists);
/* Makes one directory in one that is there; `mode` as above. */
ZVSDK_API zvsdk_status zcsl_fs_dir_create(const char* path, uint32_t mode);
/* Removes an empty directory; 0x90030368 when it is not empty. */
ZVSDK_API zvsdk_status zcsl_fs_dir_remove(const char* path);

/* One step of an enumeration; 0 stops it. The name has no path and is valid during the call. */
typedef int32_t (*zcsl_fs_dir_fn)(void* context, const char* name, uint8_t is_directory);
/*
 * Calls back for every name in a directory, but "." and "..", in no particular order; 0x100301A0
 * when the callback stopped it. Links are followed to tell what is a directory. All names are read
 * before the first call, so the callback may do anything, also to this directory; the directory is
 * one of the pool's descriptors until then.
 */
ZVSDK_API zvsdk_status zcsl_fs_dir_enumerate(const char* path, zcsl_fs_dir_fn callback,
                                             void* context);

/*
 * Options. One key, "zcsl_fs_max_handles": how many descriptors the files may hold, as decimal
 * text; 0, which is also what text that is no number means, for no limit. A lower limit closes idle
 * files at once and others as they fall idle. The text that get gives lasts until the thread's next
 * get.
 */
ZVSDK_API zvsdk_status zcsl_fs_option_set(const char* key, const char* value);
ZVSDK_API zvsdk_status zcsl_fs_option_get(const char* key, const char** value);

/*
 * Metrics. A marker counts the files and directories that are opened while it stands: those that
 * its thread opens, as far as that same thread uses them, or, the global one, all of them by all
 * threads. A thread may have any number of markers; there is one global one (0x90030368). For want
 * of memory a file goes uncounted.
 */
typedef struct zcsl_fs_marker zcsl_fs_marker;

typedef struct zcsl_fs_metrics {
  uint64_t bytes_read;
  uint32_t largest_read; /* bytes of the largest single read */
  uint32_t read_count;   /* reads that gave any bytes */
  uint64_t bytes_written;
  uint32_t largest_write;
  uint32_t write_count;
  uint32_t seek_count;
  uint32_t files;
  uint32_t closed_files; /* of these, how many are closed */
  uint32_t active_files; /* of these, how many were read, written or sought in */
} zcsl_fs_metrics;

/* Sets a marker for the calling thread, or the global one; the caller owns it. */
ZVSDK_API zvsdk_status zcsl_fs_marker_create(zcsl_fs_marker** marker, uint8_t global);
/* The sums so far. Any thread may ask. */
ZVSDK_API zvsdk_status zcsl_fs_marker_get(zcsl_fs_marker* marker, zcsl_fs_metrics* metrics);
/* Null returns 0. Any thread may delete it, also while files are open. */
ZVSDK_API zvsdk_status zcsl_fs_marker_delete(zcsl_fs_marker* marker);

#ifdef __cplusplus
}
#endif

#endif
