/*
 * failing_memory.h: memory that runs out where a test wants it to. One count covers both families,
 * the host's operator new and the zcsl_memory_* blocks, of all threads.
 */
#ifndef FAILING_MEMORY_H
#define FAILING_MEMORY_H

#include <cstdint>

enum class memory_failure {
  once,    /* one allocation fails */
  lasting, /* and every one after it */
};

/* The n-th allocation from here on fails, until memory_restore. */
void memory_fail_at(uint64_t n, memory_failure how);
/* Allocations succeed again. True if one was failed since memory_fail_at. */
bool memory_restore();

/* Puts the functions under the zcsl_memory_* family; before the host is made. */
void memory_install();
/* Blocks of that family that are not given back yet. */
int64_t memory_live_blocks();

#endif
