// The serialization table: texts that a module stores enciphered are made readable, and the host's
// own call with which an application makes such texts. The form is that of zvsdk_stored_text.h.

#include "zvsdk_stored_text.h"

#include <limits>
#include <memory>

#include "manager/guard.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

struct free_block {
  void operator()(char* block) const { zcsl_memory_free(block); }
};
using text_block = std::unique_ptr<char, free_block>;

/* A terminated text of this length, yet to be written. */
text_block make_text(size_t length) {
  text_block text(static_cast<char*>(zcsl_memory_alloc(length + 1)));
  if (text == nullptr) throw std::bad_alloc();
  text.get()[length] = '\0';
  return text;
}

zvsdk_status status_of(zvsdk::stored_text_state state) {
  switch (state) {
    case zvsdk::stored_text_state::whole:
      return status_ok;
    case zvsdk::stored_text_state::of_another_version:
      return error_unsupported;
    default:
      return error_bad_data;
  }
}

zvsdk_status serialization_decode(const char* stored, char** buffer, uint32_t* length) {
  return guarded([&] {
    const std::string_view text = require_text(stored);
    require_pointer(buffer);
    require_pointer(length);
    const size_t size = zvsdk::stored_text_plain_size(text.size());
    require(size <= std::numeric_limits<uint32_t>::max());
    text_block plain = make_text(size);
    const zvsdk_status status = status_of(zvsdk::stored_text_decode(text, plain.get()));
    if (status != status_ok) return status;
    *buffer = plain.release();
    *length = static_cast<uint32_t>(size);
    return status_ok;
  });
}

zvsdk_status serialization_free(char* buffer) {
  zcsl_memory_free(buffer);
  return status_ok;
}

}  // namespace

const zvsdk_serialization_interface serialization_table = {
    .release = table_release,
    .serialization_decode = serialization_decode,
    .serialization_free = serialization_free,
};

}  // namespace manager

zvsdk_status zvsdk_manager_serialization_encode(const char* text, char** stored) {
  using namespace manager;
  return guarded(__func__, [&] {
    const std::string_view plain = require_pointer(text);
    require_pointer(stored);
    text_block made = make_text(zvsdk::stored_text_size(plain.size()));
    zvsdk::stored_text_encode(plain, made.get());
    *stored = made.release();
  });
}
