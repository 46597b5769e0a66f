/*
 * zcsl_module.h: counted start and stop of the support modules, which all follow one pattern.
 *
 *   zcsl_<module>_initialize      starts the module and the modules beneath it on the first call,
 *                                 only counts on the later ones. 0, or the bare value 10 when the
 *                                 start failed, which leaves everything as it was.
 *   zcsl_<module>_shutdown        counts down; the last call stops what the start started, in
 *                                 reverse. 0; the bare value 7 with a count of 0; or the failure of
 *                                 the stop, which leaves the count as it was.
 *   zcsl_<module>_initchecks      the count, read without the lock. Nonzero means started.
 *   zcsl_<module>_get_version, zcsl_<module>_get_build_date   fixed texts, never freed.
 *
 * Chain: datatypes starts memory, thread, string, random; random starts fs; fs starts memory,
 * thread, string, iostream; time starts memory, string; string, iostream and thread start memory;
 * atomic stands alone and need not be started. All functions are safe from several threads at once:
 * each module has its own lock, taken along the chain from the top down.
 */
#ifndef ZCSL_MODULE_H
#define ZCSL_MODULE_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* The bare results of the pattern, which carry no package. */
enum { zcsl_module_start_failed = 10, zcsl_module_not_started = 7 };

#define ZCSL_DECLARE_MODULE(module)                        \
  ZVSDK_API zvsdk_status zcsl_##module##_initialize(void); \
  ZVSDK_API zvsdk_status zcsl_##module##_shutdown(void);   \
  ZVSDK_API uint32_t zcsl_##module##_initchecks(void);     \
  ZVSDK_API const char* zcsl_##module##_get_version(void); \
  ZVSDK_API const char* zcsl_##module##_get_build_date(void)

ZCSL_DECLARE_MODULE(datatypes);
ZCSL_DECLARE_MODULE(random);
ZCSL_DECLARE_MODULE(fs);
ZCSL_DECLARE_MODULE(string);
ZCSL_DECLARE_MODULE(time);
ZCSL_DECLARE_MODULE(iostream);
ZCSL_DECLARE_MODULE(thread);
ZCSL_DECLARE_MODULE(atomic);

#ifdef __cplusplus
}
#endif

#endif
