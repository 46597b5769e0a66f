/*
 * zvsdk_runtime.h: what the manager library gives to every module without a table: memory, the log
 * and the per-thread error record. Kept apart from the service tables so that the support library
 * sees no more of the host than it uses.
 */
#ifndef ZVSDK_RUNTIME_H
#define ZVSDK_RUNTIME_H

#include <pthread.h>
#include <stddef.h>

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * Memory. Every block of the playlist library comes from here and goes back here; an application
 * can put its own functions underneath (zvsdk_manager_memory_functions_set). All are safe to call
 * from several threads at once.
 */

/* A new block of `size` bytes with undefined contents, or null. A size of 0 gives a block of 1. */
ZVSDK_API void* zcsl_memory_alloc(size_t size);
/* A zero-filled block of `count` times `size` bytes, or null, also when that product overflows. */
ZVSDK_API void* zcsl_memory_calloc(size_t count, size_t size);
/* A resized block with the old contents kept; null leaves the old block alone. Null allocates. */
ZVSDK_API void* zcsl_memory_realloc(void* block, size_t size);
/* Releases a block from this family. Null is a no-op. */
ZVSDK_API void zcsl_memory_free(void* block);
/* A new copy of the block, or null. */
ZVSDK_API void* zcsl_memory_dup(const void* block, size_t size);
/* Copies between blocks that do not overlap. Returns `destination`. */
ZVSDK_API void* zcsl_memory_memcpy(void* destination, const void* source, size_t size);
/* Copies between blocks that may overlap. Returns `destination`. */
ZVSDK_API void* zcsl_memory_memmove(void* destination, const void* source, size_t size);
/* Fills a block. Returns `block`. */
ZVSDK_API void* zcsl_memory_memset(void* block, int byte, size_t size);
/* Negative, zero or positive as memcmp. */
ZVSDK_API int zcsl_memory_memcmp(const void* a, const void* b, size_t size);
/* Counted start and stop of the memory module. 0 on success; a stop with a zero count gives 7. */
ZVSDK_API zvsdk_status zcsl_memory_initialize(void);
ZVSDK_API zvsdk_status zcsl_memory_shutdown(void);

/*
 * Log. A line is passed to the callback only when the bit of its level is set in the word of the
 * package named by bits 23 to 16 of its code. The words and the callback are read at each use, with
 * relaxed atomic loads; write them with relaxed atomic stores or before other threads start.
 */
enum { zcsl_log_error = 1, zcsl_log_warning = 2, zcsl_log_information = 4, zcsl_log_api_trace = 8 };

/* `line` is 0 at the API boundary; `format` may be null. Format and arguments are as for printf. */
typedef void (*zcsl_log_callback)(uint32_t line, const char* source, uint32_t level, uint32_t code,
                                  const char* format, ...);

enum { zcsl_log_package_count = 256 };

ZVSDK_API extern zcsl_log_callback g_zcsl_log_callback;
ZVSDK_API extern uint32_t g_zcsl_log_enabled_pkgs[zcsl_log_package_count];

/* The thread-store key that manager and support library share; 0 until one of them made it. */
ZVSDK_API extern pthread_key_t g_zcsl_thread_store_key;

/*
 * Records the calling thread's last outcome, for the time when no errorinfo table exists. `message`
 * may be null; the texts are copied. Two zero codes clear the record. Always returns 0.
 */
ZVSDK_API zvsdk_status manager_errorinfo_set(zvsdk_status mapped, zvsdk_status source,
                                             const char* function, const char* message);

#ifdef __cplusplus
}
#endif

#endif
