/*
 * zcsl_mapped_result.h: tables from what the platform returns (an errno value) to status codes.
 * Internal.
 */
#ifndef ZCSL_MAPPED_RESULT_H
#define ZCSL_MAPPED_RESULT_H

#include <span>

#include "zvsdk_types.h"

struct zcsl_mapped_result {
  int result;
  zvsdk_status status;
};

/* The status of the row of `result`, or `other` where there is none. */
inline zvsdk_status zcsl_mapped_status(std::span<const zcsl_mapped_result> table, int result,
                                       zvsdk_status other) {
  for (const zcsl_mapped_result& row : table) {
    if (row.result == result) return row.status;
  }
  return other;
}

#endif
