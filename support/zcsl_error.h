/*
 * zcsl_error.h: the status codes of the support library.
 *
 * Codes have the layout of zvsdk_types.h. Bit 31 clear marks an outcome that is no failure (not
 * found, end of range, aborted); such a code is never logged.
 */
#ifndef ZCSL_ERROR_H
#define ZCSL_ERROR_H

#include "zvsdk_types.h"

/* Package ids. */
enum {
  zcsl_package_thread = 0x02,
  zcsl_package_fs = 0x03,
  zcsl_package_string = 0x05,
  zcsl_package_datatypes = 0x0D,
  zcsl_package_utils = 0x0F,
  zcsl_package_time = 0x1C,
  zcsl_package_atomic = 0x1F,
  zcsl_package_iostream = 0x22
};

/* Low words that keep their meaning in every package. */
enum {
  zcsl_code_invalid_arg = 1,
  zcsl_code_no_memory = 2,
  zcsl_code_not_found = 3,
  zcsl_code_busy = 6,
  zcsl_code_not_initialized = 7,
  zcsl_code_buffer_too_small = 8,
  zcsl_code_bad_data = 9,
  zcsl_code_unexpected = 0x3E,
  zcsl_code_timed_out = 0x84,
  zcsl_code_aborted = 0x1A0,
  zcsl_code_size_mismatch = 0x209,
  zcsl_code_deadlock = 0x281,
  zcsl_code_try_again = 0x282,
  zcsl_code_interrupted = 0x283,
  zcsl_code_not_permitted = 0x284,
  zcsl_code_too_many_open = 0x285,
  zcsl_code_no_space = 0x286,
  zcsl_code_io_failed = 0x287,
  zcsl_code_other_device = 0x288,
  zcsl_code_bad_magic = 0x321,
  zcsl_code_wrong_type = 0x360,
  zcsl_code_end_of_range = 0x361,
  zcsl_code_bad_offset = 0x363,
  zcsl_code_exists = 0x368,
  zcsl_code_bad_utf8 = 0x3A0,
  zcsl_code_odd_ucs2_length = 0x3A1
};

/* An error code or an outcome (warning) code of a package. */
#define ZCSL_ERROR(package, code) \
  ((zvsdk_status)(0x90000000u | ((uint32_t)(package) << 16) | (code)))
#define ZCSL_WARNING(package, code) \
  ((zvsdk_status)(0x10000000u | ((uint32_t)(package) << 16) | (code)))

/* The container codes. Which of the two magic codes an operation gives is fixed by operation. */
#define zcsl_error_invalid_arg ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_invalid_arg)
#define zcsl_error_no_memory ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_no_memory)
#define zcsl_error_not_initialized ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_not_initialized)
#define zcsl_error_bad_data ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_bad_data)
#define zcsl_error_size_mismatch ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_size_mismatch)
#define zcsl_error_bad_magic_320 ZCSL_ERROR(zcsl_package_datatypes, 0x320)
#define zcsl_error_bad_magic ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_bad_magic)
#define zcsl_error_wrong_type ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_wrong_type)
#define zcsl_error_bad_offset ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_bad_offset)
#define zcsl_error_exists ZCSL_ERROR(zcsl_package_datatypes, zcsl_code_exists)
#define zcsl_warn_not_found ZCSL_WARNING(zcsl_package_datatypes, zcsl_code_not_found)
#define zcsl_warn_aborted ZCSL_WARNING(zcsl_package_datatypes, zcsl_code_aborted)
#define zcsl_warn_end_of_range ZCSL_WARNING(zcsl_package_datatypes, zcsl_code_end_of_range)

/* Codes of strings and threads that have names of their own. Running out of time is no failure. */
#define zcsl_error_buffer_too_small ZCSL_ERROR(zcsl_package_string, zcsl_code_buffer_too_small)
#define zcsl_error_bad_utf8 ZCSL_ERROR(zcsl_package_string, zcsl_code_bad_utf8)
#define zcsl_error_odd_ucs2_length ZCSL_ERROR(zcsl_package_string, zcsl_code_odd_ucs2_length)
#define zcsl_error_timed_out ZCSL_WARNING(zcsl_package_thread, zcsl_code_timed_out)

#endif
