// stamp.h: stamps tell whether a file or a row is still what a track was read from.
#ifndef ZVPLAYLIST_STAMP_H
#define ZVPLAYLIST_STAMP_H

#include <cstdint>
#include <string_view>

#include "tools/track.h"

namespace zvplaylist {

// A 64-bit FNV-1a hash, cut to what a collection can hold.
class stamp_maker {
 public:
  stamp_maker& add(std::string_view text) {
    add(text.size());
    for (const unsigned char c : text) add_byte(c);
    return *this;
  }
  stamp_maker& add(uint64_t number) {
    for (int shift = 0; shift < 64; shift += 8) add_byte(static_cast<uint8_t>(number >> shift));
    return *this;
  }
  // As many bits as fit, never 0.
  uint64_t stamp() const {
    constexpr uint64_t mask = (uint64_t{1} << stamp_bits) - 1;
    return ((hash_ ^ hash_ >> stamp_bits) & mask) | 1;
  }

 private:
  static constexpr int stamp_bits = 62;
  void add_byte(uint8_t byte) { hash_ = (hash_ ^ byte) * 0x100000001B3; }

  uint64_t hash_ = 0xCBF29CE484222325;
};

// Of a track as it was read, whatever from.
uint64_t stamp_of_values(const track& entry);

}  // namespace zvplaylist

#endif
