// The event: a flag under a mutex, and a condition for those who wait for it.

#include <ctime>

#include "support/zcsl_monitor.h"
#include "support/zcsl_thread.h"

struct zcsl_event {
  uint8_t signalled;
  uint8_t manual_reset;
  pthread_mutex_t mutex;
  pthread_cond_t conditions[1];
};

namespace {

timespec deadline_in(uint32_t milliseconds) {
  timespec deadline{};
  clock_gettime(CLOCK_MONOTONIC, &deadline);
  deadline.tv_sec += milliseconds / 1000;
  deadline.tv_nsec += static_cast<long>(milliseconds % 1000) * 1000000;
  deadline.tv_sec += deadline.tv_nsec / 1000000000;
  deadline.tv_nsec %= 1000000000;
  return deadline;
}

// Sleeps until the condition moves or, where there is a deadline, until that. A POSIX result.
int sleep_on(zcsl_event* event, const timespec* deadline) {
  if (!deadline) return pthread_cond_wait(&event->conditions[0], &event->mutex);
  return pthread_cond_clockwait(&event->conditions[0], &event->mutex, CLOCK_MONOTONIC, deadline);
}

// A signal that comes together with the deadline is taken: it may have woken nobody else.
zvsdk_status wait_and_take(zcsl_event* event, const timespec* deadline) {
  while (!event->signalled) {
    const int failure = sleep_on(event, deadline);
    if (failure && !event->signalled) return _thread_map_error(failure);
  }
  if (!event->manual_reset) event->signalled = 0;
  return 0;
}

}  // namespace

zvsdk_status zcsl_thread_event_create(zcsl_event** event, uint8_t signalled, uint8_t manual_reset) {
  const zvsdk_status status = monitor_create(event);
  if (status == 0) {
    (*event)->signalled = signalled != 0;
    (*event)->manual_reset = manual_reset != 0;
  }
  return status;
}

zvsdk_status zcsl_thread_event_signal(zcsl_event* event) {
  return monitor_operate(event, [event]() -> zvsdk_status {
    event->signalled = 1;
    const auto wake = event->manual_reset ? pthread_cond_broadcast : pthread_cond_signal;
    return _thread_map_error(wake(&event->conditions[0]));
  });
}

zvsdk_status zcsl_thread_event_reset(zcsl_event* event) {
  return monitor_operate(event, [event]() -> zvsdk_status {
    event->signalled = 0;
    return 0;
  });
}

zvsdk_status zcsl_thread_event_wait(zcsl_event* event, uint32_t milliseconds) {
  const bool forever = milliseconds == zcsl_thread_wait_forever;
  const timespec deadline = forever ? timespec{} : deadline_in(milliseconds);
  return monitor_operate(
      event, [&, event] { return wait_and_take(event, forever ? nullptr : &deadline); });
}

zvsdk_status zcsl_thread_event_delete(zcsl_event* event) {
  if (event) monitor_delete(event);
  return 0;
}
