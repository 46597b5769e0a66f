/*
 * zcsl_time.h: the clock.
 */
#ifndef ZCSL_TIME_H
#define ZCSL_TIME_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The wall clock in microseconds since 1970, or 0 when it cannot be read. */
ZVSDK_API uint64_t zcsl_time_get_microseconds(void);

#ifdef __cplusplus
}
#endif

#endif
