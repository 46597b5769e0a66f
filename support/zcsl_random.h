/*
 * zcsl_random.h: the one generator of the system, a small linear congruential one whose sequence is
 * fixed: equal states give equal numbers everywhere. Drawing numbers needs no start of the module.
 */
#ifndef ZCSL_RANDOM_H
#define ZCSL_RANDOM_H

#include "support/zcsl_module.h" /* zcsl_random_initialize and its like */
#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/*
 * The next value, 0 to 32767. `seed` is the caller's state, updated by the call. Null uses the
 * state of the process, without a lock: of two threads that draw at once both may get one number.
 */
ZVSDK_API uint32_t zcsl_random_rand(uint32_t* seed);

#ifdef __cplusplus
}
#endif

#endif
