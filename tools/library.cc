// Messages for failures.
#include "tools/library.h"

#include <cstdio>

namespace zvplaylist {
namespace {

std::string status_text(zvsdk_status status) {
  char text[32];
  std::snprintf(text, sizeof text, "status 0x%08X", static_cast<unsigned>(status));
  return text;
}

}  // namespace

void check(zvsdk_status status, const char* what) {
  if (status == 0) return;
  zvsdk_error_info info{};
  zvsdk_manager_errorinfo_get_message(&info);
  std::string message = info.message != nullptr ? info.message : "";
  if (message.empty()) message = std::string(what) + " failed with " + status_text(status);
  // Or the next failure without a message of its own would show this one.
  zvsdk_manager_errorinfo_clear();
  throw library_error(status, message);
}

}  // namespace zvplaylist
