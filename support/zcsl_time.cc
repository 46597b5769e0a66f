// The clock.

#include "support/zcsl_time.h"

#include <sys/time.h>

uint64_t zcsl_time_get_microseconds() {
  timeval now{};
  if (gettimeofday(&now, nullptr) != 0) return 0;
  return static_cast<uint64_t>(now.tv_sec) * 1000000u + static_cast<uint64_t>(now.tv_usec);
}
