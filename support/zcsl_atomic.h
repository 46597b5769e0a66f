/*
 * zcsl_atomic.h: u32 and pointer operations that are atomic among themselves. Each is one critical
 * section under a single mutex of the process, so they are simple rather than fast, and a target
 * must be touched through this family alone while several threads use it.
 *
 * Status: 0; 0x901F0001 for a null target (or a null `swapped`); 0x901F003C when the mutex fails.
 * Outputs are optional unless said otherwise.
 */
#ifndef ZCSL_ATOMIC_H
#define ZCSL_ATOMIC_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* Stores `value`. */
ZVSDK_API zvsdk_status zcsl_atomic_set(uint32_t* target, uint32_t value);
/* Adds `value`, wrapping at 32 bits. */
ZVSDK_API zvsdk_status zcsl_atomic_add(uint32_t* target, uint32_t value);
/* `value` receives what stands there. */
ZVSDK_API zvsdk_status zcsl_atomic_read(uint32_t* target, uint32_t* value);
/* Step up or down by one, wrapping; `new_value` receives the value after the step. */
ZVSDK_API zvsdk_status zcsl_atomic_inc(uint32_t* target, uint32_t* new_value);
ZVSDK_API zvsdk_status zcsl_atomic_dec(uint32_t* target, uint32_t* new_value);
/* Stores `new_value` if the target equals `expected`; `swapped`, required, tells whether it did. */
ZVSDK_API zvsdk_status zcsl_atomic_cas(uint32_t* target, uint32_t expected, uint32_t new_value,
                                       uint8_t* swapped);

/* `value` receives what stands there. */
ZVSDK_API zvsdk_status zcsl_atomicPtr_read(void** target, void** value);
/* Stores `new_value`; `old_value` receives what stood there. */
ZVSDK_API zvsdk_status zcsl_atomicPtr_exchange(void** target, void* new_value, void** old_value);

#ifdef __cplusplus
}
#endif

#endif
