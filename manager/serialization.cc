// The serialization table. This host keeps no enciphered texts: its operations say that they are
// not supported, so that a module which holds the table learns it at the call and not at its start.

#include "manager/manager_status.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

zvsdk_status table_release(const zvsdk_serialization_interface*) {
  return status_ok;
}

zvsdk_status serialization_decode(const char*, char**, uint32_t*) {
  return error_unsupported;
}

zvsdk_status serialization_free(char* buffer) {
  return buffer == nullptr ? status_ok : error_unsupported;
}

}  // namespace

const zvsdk_serialization_interface serialization_table = {
    .release = table_release,
    .serialization_decode = serialization_decode,
    .serialization_free = serialization_free,
};

}  // namespace manager
