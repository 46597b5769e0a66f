// Decoding, encoding and the comparison core.

#include "support/zcsl_utf8.h"

#include "support/zcsl_output.h"

namespace {

constexpr uint32_t sequence_length(uint8_t lead) {
  if ((lead & ~0x1F) == 0xC0) return 2;
  if ((lead & ~0x0F) == 0xE0) return 3;
  return 0;
}

// One comparison: the two places, and what has been found out so far.
struct comparison {
  const char* a;
  const char* b;
  uint32_t left;  // code points that may still be read
  bool case_sensitive;
  int32_t result = 0;
  uint32_t matched = 0;

  // Reads a pair; a side that fails to decode does not advance.
  zvsdk_status read_pair() {
    uint32_t from_a = 0;
    uint32_t from_b = 0;
    zvsdk_status status = _utf8_get_next_char(&a, &from_a);
    if (!status) status = _utf8_get_next_char(&b, &from_b);
    --left;
    if (!status) compare_pair(from_a, from_b);
    return status;
  }

  void compare_pair(uint32_t from_a, uint32_t from_b) {
    if (!case_sensitive) {
      from_a = _utf8_fold(from_a);
      from_b = _utf8_fold(from_b);
    }
    result = static_cast<int32_t>(from_a) - static_cast<int32_t>(from_b);
    if (result == 0) ++matched;
  }

  // After a pair: true when the walk is over. While it goes on, every pair so far was equal.
  bool finish(zvsdk_status status) {
    const bool undecided = result == 0 && left > 0;
    if (*a == 0) {
      if (undecided) result = *b ? -1 : 0;
    } else if (*b == 0 || status) {
      if (undecided) result = 1;
    } else {
      return !undecided;
    }
    return true;
  }
};

// The cases in which nothing is read.
bool nothing_to_read(comparison& state) {
  const bool limited = state.left == 0;
  if (*state.a == 0) {
    state.result = limited || *state.b == 0 ? 0 : -1;
  } else if (*state.b == 0) {
    state.result = limited ? 0 : 1;
  } else {
    return limited;
  }
  return true;
}

}  // namespace

zvsdk_status _utf8_get_sequence(const char** position, uint32_t* code_point) {
  const auto* bytes = reinterpret_cast<const uint8_t*>(*position);
  const uint32_t length = sequence_length(bytes[0]);
  if (length == 0) return zcsl_error_bad_utf8;
  uint32_t value = bytes[0] & utflmasktab[length - 1];
  for (uint32_t i = 1; i < length; ++i) {
    if ((bytes[i] & 0xC0) != 0x80) return zcsl_error_bad_utf8;
    value = (value << 6) | (bytes[i] & 0x3F);
  }
  *code_point = value;
  *position += length;
  return 0;
}

zvsdk_status _utf8_set_next_char(char* buffer, uint32_t room, uint32_t code_point,
                                 uint32_t* written) {
  *written = 0;
  if (code_point > 0xFFFF) return ZCSL_ERROR(zcsl_package_string, zcsl_code_invalid_arg);
  const uint32_t length = code_point < 0x80 ? 1 : code_point < 0x800 ? 2 : 3;
  if (room <= length) return zcsl_error_buffer_too_small;
  for (uint32_t i = length - 1; i > 0; --i) {
    buffer[i] = static_cast<char>(0x80 | (code_point & 0x3F));
    code_point >>= 6;
  }
  buffer[0] = static_cast<char>(code_point | utfmarktab[length - 1]);
  *written = length;
  return 0;
}

zvsdk_status _zcsl_string_utf8_compare(const char* a, const char* b, uint32_t max_chars,
                                       bool case_sensitive, int32_t* result, uint32_t* matched,
                                       const char** end_a, const char** end_b) {
  comparison state{.a = a, .b = b, .left = max_chars, .case_sensitive = case_sensitive};
  zvsdk_status status = 0;
  if (!nothing_to_read(state)) {
    do {
      status = state.read_pair();
    } while (!state.finish(status));
  }
  zcsl_give(result, state.result);
  zcsl_give(matched, state.matched);
  zcsl_give(end_a, state.a);
  zcsl_give(end_b, state.b);
  return status;
}
