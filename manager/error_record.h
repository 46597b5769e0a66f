/*
 * error_record.h: the per-thread record of the last outcome. Each thread sees its own; nothing is
 * locked. Clearing, the usual case, writes a few words and allocates nothing. The record works
 * until the very end of a thread and of the process, also in exit handlers.
 *
 * A function may report in two steps: the place that knows the message reports it without a
 * function, then the exported function reports the same code without a message, or the code that
 * it made of it. The second report completes the first, so that the record ends up with both.
 */
#ifndef ERROR_RECORD_H
#define ERROR_RECORD_H

#include "manager/manager_status.h"
#include "zvsdk_manager.h"

namespace manager {

/* Clears the record when both codes are 0. Texts may be null. Never fails: without memory the
 * message is left out. */
void record_outcome(zvsdk_status mapped, zvsdk_status source, const char* function,
                    const char* message) noexcept;

}  // namespace manager

#endif
