/*
 * guard.h: the edge between C++ inside and C outside. Inside, a failure is thrown; at the edge it
 * becomes a status, so that no exception leaves the library.
 */
#ifndef GUARD_H
#define GUARD_H

#include <new>
#include <stdexcept>
#include <string>
#include <utility>

#include "manager/error_record.h"

namespace manager {

/* A failure with its status and, where there is something to say, a message. */
class status_error : public std::runtime_error {
 public:
  explicit status_error(zvsdk_status status, const std::string& message = {})
      : std::runtime_error(message), status_(status) {}
  zvsdk_status status() const { return status_; }

 private:
  zvsdk_status status_;
};

inline void require(bool holds) {
  if (!holds) throw status_error(error_invalid_arg);
}

/* Text and handle arguments: null, and for texts the empty one too, is an invalid argument. */
template <class T>
T* require_pointer(T* pointer) {
  require(pointer != nullptr);
  return pointer;
}
inline const char* require_text(const char* text) {
  require(text != nullptr && *text != '\0');
  return text;
}

/* The status of the exception that is being handled; `message` receives what it says. */
zvsdk_status status_of_exception(std::string& message) noexcept;

/* What `work` returns, a status or nothing, or what it throws. */
template <class Work>
zvsdk_status outcome_of(Work&& work, std::string& message) noexcept {
  try {
    if constexpr (std::is_void_v<decltype(work())>) {
      work();
      return status_ok;
    } else {
      return work();
    }
  } catch (...) {
    return status_of_exception(message);
  }
}

/* The work of a service table's slot. */
template <class Work>
zvsdk_status guarded(Work&& work) noexcept {
  std::string message;
  return outcome_of(work, message);
}

/* The same for one of the host's own calls, whose failures go to the thread's error record. */
template <class Work>
zvsdk_status guarded(const char* function, Work&& work) noexcept {
  std::string message;
  const zvsdk_status status = outcome_of(work, message);
  if (status != status_ok) record_outcome(status, status, function, message.c_str());
  return status;
}

}  // namespace manager

#endif
