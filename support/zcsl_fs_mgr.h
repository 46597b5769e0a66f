/*
 * zcsl_fs_mgr.h: the pool of descriptors, for the operations of the file layer. Internal.
 *
 *   _zcsl_fs_mgr_new_fd       a place for a file that is to be opened; the entry is then in use.
 *   _zcsl_fs_mgr_acquire_fd   around every operation: brings the file's descriptor back if it was
 *   _zcsl_fs_mgr_release_fd   taken away, and keeps it from being taken meanwhile.
 *   _zcsl_fs_mgr_close_fd     ends an entry: the file's close, or its open having failed. The
 *                             descriptor itself is closed by then.
 *
 * While a thread is between acquire and release it must not ask for another descriptor: with a low
 * limit all could hold one and wait for a second.
 */
#ifndef ZCSL_FS_MGR_H
#define ZCSL_FS_MGR_H

#include "support/zcsl_fs_internal.h"

/* Guarded by the pool's lock. */
extern uint32_t g_fs_num_file_handles; /* real descriptors held */
extern uint32_t g_fs_max_file_handles; /* the limit; 0 for none */

/* The pool's lock, for what takes several steps. Recursive. */
zcsl_critsec* _zcsl_fs_mgr_lock();

zvsdk_status _zcsl_fs_mgr_new_fd(zcsl_fs_entry* entry);
zvsdk_status _zcsl_fs_mgr_acquire_fd(zcsl_fs_entry* entry);
zvsdk_status _zcsl_fs_mgr_release_fd(zcsl_fs_entry* entry);
zvsdk_status _zcsl_fs_mgr_close_fd(zcsl_fs_entry* entry);

/* Counts a transfer, or seeks, for the markers of the calling thread and the global one. */
zvsdk_status _zcsl_fs_mgr_update_metrics(zcsl_fs_entry* entry, uint32_t bytes_read,
                                         uint32_t bytes_written, uint32_t seeks);

/* The metrics' part in an entry's life, under the pool's lock. */
void _zcsl_fs_metrics_open(zcsl_fs_entry* entry);
void _zcsl_fs_metrics_close(zcsl_fs_entry* entry);
/* Whether any marker is left. */
bool _zcsl_fs_metrics_watching();

#endif
