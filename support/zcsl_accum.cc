// The accumulator. Its record and its text each lie in a block of their own or in one of the
// caller's, which is left alone; a text that outgrows that block moves to one of its own.

#include "support/zcsl_accum.h"

#include <algorithm>
#include <cstring>
#include <memory>

#include "support/zcsl_error.h"
#include "support/zcsl_output.h"
#include "support/zcsl_string.h"
#include "zvsdk_runtime.h"

struct zcsl_accum {
  char* data;  // null before the first growth
  uint32_t length;
  uint32_t capacity;
  uint8_t record_owned;
  uint8_t data_owned;
};

namespace {

constexpr zvsdk_status s_invalid_arg = ZCSL_ERROR(zcsl_package_string, zcsl_code_invalid_arg);
constexpr zvsdk_status s_no_memory = ZCSL_ERROR(zcsl_package_string, zcsl_code_no_memory);

// What every report of a size says: the terminator counts, but only behind a text.
uint32_t reported_size(const zcsl_accum* accum) {
  return accum->length ? accum->length + 1 : 0;
}

// The record and the text within the caller's block, or null when the block has no room for both.
zcsl_accum* accum_within(void* storage, uint32_t size) {
  size_t room = size;
  void* place = storage;
  if (!storage || !std::align(alignof(zcsl_accum), sizeof(zcsl_accum), place, room)) return nullptr;
  room -= sizeof(zcsl_accum);
  if (room == 0) return nullptr;
  auto* accum = static_cast<zcsl_accum*>(place);
  char* data = reinterpret_cast<char*>(accum + 1);
  *data = 0;
  *accum = {.data = data,
            .length = 0,
            .capacity = static_cast<uint32_t>(room),
            .record_owned = 0,
            .data_owned = 0};
  return accum;
}

zvsdk_status allocate_accum(zcsl_accum** accum, uint32_t size) {
  auto* made = static_cast<zcsl_accum*>(zcsl_memory_alloc(sizeof(zcsl_accum)));
  char* data = made && size ? static_cast<char*>(zcsl_memory_calloc(1, size)) : nullptr;
  if (!made || (size && !data)) {
    zcsl_memory_free(made);
    return s_no_memory;
  }
  *made = {.data = data, .length = 0, .capacity = size, .record_owned = 1, .data_owned = 1};
  *accum = made;
  return 0;
}

// A block of `capacity` bytes with the text and its terminator in front.
char* resized_text(const zcsl_accum* accum, uint32_t capacity) {
  if (accum->data_owned) return static_cast<char*>(zcsl_memory_realloc(accum->data, capacity));
  char* copy = static_cast<char*>(zcsl_memory_alloc(capacity));
  if (copy && accum->data) std::memcpy(copy, accum->data, accum->length + 1);
  return copy;
}

zvsdk_status make_room(zcsl_accum* accum, uint32_t addition) {
  const uint64_t needed = uint64_t{accum->length} + 1 + addition;
  if (needed <= accum->capacity) return 0;
  if (needed > UINT32_MAX) return s_no_memory;
  const auto capacity = static_cast<uint32_t>(std::min<uint64_t>(needed * 2, UINT32_MAX));
  char* data = resized_text(accum, capacity);
  if (!data) return s_no_memory;
  accum->data = data;
  accum->capacity = capacity;
  accum->data_owned = 1;
  return 0;
}

}  // namespace

zvsdk_status zcsl_string_accum_create(zcsl_accum** accum, void* storage, uint32_t size) {
  if (!accum) return s_invalid_arg;
  if (zcsl_accum* within = accum_within(storage, size)) {
    *accum = within;
    return 0;
  }
  return allocate_accum(accum, size);
}

zvsdk_status zcsl_string_accum_delete(zcsl_accum* accum) {
  if (!accum) return 0;
  if (accum->data_owned) zcsl_memory_free(accum->data);
  if (accum->record_owned) zcsl_memory_free(accum);
  return 0;
}

zvsdk_status zcsl_string_accum_append(zcsl_accum* accum, const char* string, const char** text) {
  if (!accum) return s_invalid_arg;
  const size_t length = string ? std::strlen(string) : 0;
  if (length > UINT32_MAX) return s_no_memory;
  const zvsdk_status status =
      zcsl_string_accum_append_bytes(accum, string, static_cast<uint32_t>(length), nullptr);
  if (!status) zcsl_give(text, accum->data);
  return status;
}

zvsdk_status zcsl_string_accum_set(zcsl_accum* accum, const char* string) {
  if (!accum) return s_invalid_arg;
  const uint32_t before = accum->length;
  const zvsdk_status status = zcsl_string_accum_append(accum, string, nullptr);
  if (!status) zcsl_string_accum_remove_range(accum, 0, before, nullptr);
  return status;
}

zvsdk_status zcsl_string_accum_append_bytes(zcsl_accum* accum, const void* bytes, uint32_t size,
                                            const char** text) {
  if (!accum) return s_invalid_arg;
  if (size == 0) return 0;
  if (bytes) {
    if (const zvsdk_status failure = make_room(accum, size)) return failure;
    std::memcpy(accum->data + accum->length, bytes, size);
    accum->length += size;
    accum->data[accum->length] = 0;
  }
  zcsl_give(text, accum->data);
  return 0;
}

zvsdk_status zcsl_string_accum_append_chars(zcsl_accum* accum, const char* string,
                                            uint32_t max_chars, const char** text) {
  if (!accum) return s_invalid_arg;
  if (max_chars == 0) return 0;
  const uint32_t size = zcsl_string_byteclen(string, max_chars);
  const zvsdk_status status = zcsl_string_accum_append_bytes(accum, string, size, nullptr);
  if (!status) zcsl_give(text, accum->data);
  return status;
}

zvsdk_status zcsl_string_accum_get_string(zcsl_accum* accum, const char** text, uint32_t* size) {
  if (!accum) return s_invalid_arg;
  zcsl_give(text, accum->data);
  zcsl_give(size, reported_size(accum));
  return 0;
}

zvsdk_status zcsl_string_accum_bytelen(zcsl_accum* accum, uint32_t* size) {
  if (!accum || !size) return s_invalid_arg;
  *size = reported_size(accum);
  return 0;
}

zvsdk_status zcsl_string_accum_detach(zcsl_accum* accum, char** text, uint32_t* size) {
  if (!accum || !text) return s_invalid_arg;
  char* detached = accum->data ? resized_text(accum, accum->length + 1) : nullptr;
  if (!detached && accum->data_owned) detached = accum->data;  // a block too large is good enough
  if (!detached && accum->data) return s_no_memory;
  *text = detached;
  zcsl_give(size, reported_size(accum));
  accum->data = nullptr;
  accum->length = 0;
  accum->capacity = 0;
  accum->data_owned = 0;
  return 0;
}

zvsdk_status zcsl_string_accum_remove_range(zcsl_accum* accum, uint32_t start, uint32_t count,
                                            uint32_t* removed) {
  if (!accum) return s_invalid_arg;
  start = std::min(start, accum->length);
  count = std::min(count, accum->length - start);
  if (count) {
    char* gap = accum->data + start;
    accum->length -= count;
    std::memmove(gap, gap + count, accum->length - start);
    accum->data[accum->length] = 0;
  }
  zcsl_give(removed, count);
  return 0;
}

zvsdk_status zcsl_string_accum_clear(zcsl_accum* accum) {
  if (!accum) return s_invalid_arg;
  accum->length = 0;
  if (accum->data) *accum->data = 0;
  return 0;
}
