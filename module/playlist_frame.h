/*
 * playlist_frame.h: the frame that every exported function shares. A function reads as its checks
 * and its work:
 *
 *     playlist_call call(__func__, "zvsdk_playlist_results_count( %p, %p )", results, count);
 *     call.require(count, playlist_report::log_only).handle(results, playlist_results_magic);
 *     if (call.refused()) return call.refusal();
 *     ...
 *     return call.finish(status);
 *
 * The constructor writes the trace line and asks whether the module is up. Checks run in the order
 * written and stop at the first that fails. finish maps the outcome, records it for the thread and
 * logs it. Locks are taken and given back between the checks and finish, never across them.
 */
#ifndef PLAYLIST_FRAME_H
#define PLAYLIST_FRAME_H

#include "module/playlist_status.h"
#include "support/zcsl_log.h"
#include "zvsdk_playlist.h"

/* The code to present at the boundary for a status of any package. */
zvsdk_status _playlist_map_error(zvsdk_status error);

/* Where an outcome goes. Only a few functions keep away from the error record. */
enum class playlist_report { record_and_log, log_only };

class playlist_call {
 public:
  template <class... Args>
  playlist_call(const char* function, const char* trace_format, Args... args)
      : function_(function) {
    trace(trace_format, args...);
    check_initialized();
  }
  playlist_call(const playlist_call&) = delete;
  playlist_call& operator=(const playlist_call&) = delete;

  /* A call that needs no start. Without one, its outcome goes to the log alone. */
  template <class... Args>
  static playlist_call before_start(const char* function, const char* trace_format, Args... args) {
    trace(trace_format, args...);
    return playlist_call(function);
  }
  /* The entry line alone, for functions that work before the start. */
  template <class... Args>
  static void trace(const char* trace_format, Args... args) {
    zcsl_log(0, "[api_trace]", zcsl_log_api_trace, playlist_package_code, trace_format, args...);
  }

  /* A null pointer is an invalid argument. */
  playlist_call& require(const void* pointer, playlist_report how);
  playlist_call& require(const void* pointer, const char* message = nullptr);
  /* A null or empty text is an invalid argument. */
  playlist_call& require_text(const char* text, const char* message = nullptr);
  /* Any other condition on an argument. */
  playlist_call& require_that(bool holds, const char* message = nullptr);
  /* A null handle is an invalid argument; any other must be registered with this magic. */
  playlist_call& handle(const void* handle, uint32_t magic);
  /* Handles of the manager's own kinds; null is an invalid argument. */
  playlist_call& user(const zvsdk_user* user);
  playlist_call& object(const zvsdk_zdo* object);
  playlist_call& element(const zvsdk_list_element* element);
  /* The outcome of a check that needs a call of its own, such as the licence. */
  playlist_call& passed(zvsdk_status status);

  bool refused() const { return refusal_ != 0; }
  zvsdk_status refusal() const { return refusal_; }

  /* Maps, records and logs the outcome of the work, and gives the code to return. */
  zvsdk_status finish(zvsdk_status result, const char* message = nullptr);
  zvsdk_status finish(zvsdk_status result, playlist_report how);

 private:
  explicit playlist_call(const char* function) : function_(function) {}
  void check_initialized();
  /* The outcome of a check on a null-or-valid handle. */
  template <class Validate>
  playlist_call& validate(const void* handle, Validate validate);
  zvsdk_status report(zvsdk_status result, const char* message, playlist_report how);

  const char* function_;
  zvsdk_status refusal_ = 0;
};

#endif
