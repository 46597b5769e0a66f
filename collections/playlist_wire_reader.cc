// The reading of MessagePack values.
#include "collections/playlist_wire_reader.h"

namespace {

enum class kind : uint8_t {
  nothing,
  number,
  signed_number,
  boolean,
  raw,
  extension,
  other,
  container
};

// What the lead byte of a value says.
struct form {
  kind type = kind::other;
  uint8_t number_size = 0;  // bytes of a number behind the lead byte: the value or a length
  uint8_t body_size = 0;    // bytes behind that, beside those of a length
  uint8_t number = 0;       // the value or the length when it is in the lead byte
};

// 0xc0 to 0xdf: nil, one that is none, false, true, bin, ext, floats, numbers, fixed exts, str,
// arrays and maps.
constexpr form s_forms[32] = {
    {.type = kind::other},
    {.type = kind::container},
    {.type = kind::boolean, .number = 0},
    {.type = kind::boolean, .number = 1},
    {.type = kind::raw, .number_size = 1},
    {.type = kind::raw, .number_size = 2},
    {.type = kind::raw, .number_size = 4},
    {.type = kind::extension, .number_size = 1, .body_size = 1},
    {.type = kind::extension, .number_size = 2, .body_size = 1},
    {.type = kind::extension, .number_size = 4, .body_size = 1},
    {.type = kind::other, .body_size = 4},
    {.type = kind::other, .body_size = 8},
    {.type = kind::number, .number_size = 1},
    {.type = kind::number, .number_size = 2},
    {.type = kind::number, .number_size = 4},
    {.type = kind::number, .number_size = 8},
    {.type = kind::signed_number, .number_size = 1},
    {.type = kind::signed_number, .number_size = 2},
    {.type = kind::signed_number, .number_size = 4},
    {.type = kind::signed_number, .number_size = 8},
    {.type = kind::other, .body_size = 2},
    {.type = kind::other, .body_size = 3},
    {.type = kind::other, .body_size = 5},
    {.type = kind::other, .body_size = 9},
    {.type = kind::other, .body_size = 17},
    {.type = kind::raw, .number_size = 1},
    {.type = kind::raw, .number_size = 2},
    {.type = kind::raw, .number_size = 4},
    {.type = kind::container},
    {.type = kind::container},
    {.type = kind::container},
    {.type = kind::container},
};

form form_of(uint8_t lead) {
  if (lead < 0x80) return {.type = kind::number, .number = lead};
  if (lead < 0xa0) return {.type = kind::container};
  if (lead < 0xc0) return {.type = kind::raw, .number = static_cast<uint8_t>(lead & 0x1f)};
  return lead < 0xe0 ? s_forms[lead - 0xc0] : form{};
}

uint64_t big_endian(playlist_wire_bytes bytes) {
  uint64_t number = 0;
  for (const uint8_t byte : bytes) number = number << 8 | byte;
  return number;
}

// A signed form of a value that is not negative is as good as an unsigned one.
kind settled(kind type, playlist_wire_bytes number) {
  if (type != kind::signed_number) return type;
  return (number[0] & 0x80) != 0 ? kind::other : kind::number;
}

}  // namespace

struct playlist_wire_reader::item {
  kind type = kind::nothing;
  uint64_t number = 0;
  playlist_wire_bytes body = {};
};

playlist_wire_reader::item playlist_wire_reader::next() {
  if (left() == 0) return {};
  const form lead = form_of(data_[offset_]);
  if (lead.type == kind::container) return {.type = kind::container};
  playlist_wire_bytes rest = data_.subspan(offset_ + 1);
  if (rest.size() < lead.number_size) return {};
  const playlist_wire_bytes number = rest.first(lead.number_size);
  rest = rest.subspan(lead.number_size);

  item read = {.type = settled(lead.type, number),
               .number = number.empty() ? lead.number : big_endian(number)};
  const bool has_length = read.type == kind::raw || read.type == kind::extension;
  const uint64_t size = lead.body_size + (has_length ? read.number : 0);
  if (rest.size() < size) return {};
  read.body = rest.first(size);
  offset_ = data_.size() - (rest.size() - size);
  return read;
}

bool playlist_wire_reader::number(uint64_t* value) {
  const auto read = next();
  *value = read.number;
  return read.type == kind::number;
}

bool playlist_wire_reader::boolean(bool* value) {
  const auto read = next();
  *value = read.number != 0;
  return read.type == kind::boolean;
}

bool playlist_wire_reader::raw(playlist_wire_bytes* bytes) {
  const auto read = next();
  *bytes = read.body;
  return read.type == kind::raw;
}
