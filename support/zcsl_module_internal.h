/*
 * zcsl_module_internal.h: what a module runs of its own at its start and its stop, beside starting
 * the modules beneath it. Called under the module's lock, by the module pattern alone. Internal.
 */
#ifndef ZCSL_MODULE_INTERNAL_H
#define ZCSL_MODULE_INTERNAL_H

#include "zvsdk_types.h"

/* The thread-store key: made unless the manager has one already, deleted only if made here. */
zvsdk_status zcsl_thread_store_start();
zvsdk_status zcsl_thread_store_stop();

/* The pool of descriptors. Its stop refuses with 0x90030006 while a file or a marker is left. */
zvsdk_status zcsl_fs_mgr_start();
zvsdk_status zcsl_fs_mgr_stop();

/* The mutex of the atomics. */
zvsdk_status zcsl_atomic_mutex_start();
zvsdk_status zcsl_atomic_mutex_stop();

#endif
