// What an exception becomes at the edge of the library.

#include "manager/guard.h"

namespace manager {

zvsdk_status status_of_exception(std::string& message) noexcept {
  try {
    throw;
  } catch (const status_error& error) {
    try {
      message = error.what();
    } catch (...) {  // the status must get through without its message
    }
    return error.status();
  } catch (const std::bad_alloc&) {
    return error_no_memory;
  } catch (...) {
    return error_internal;
  }
}

}  // namespace manager
