/*
 * playlist_wire_reader.h: MessagePack values out of bytes that nobody vouches for. A reader of our
 * own and not msgpack-c's, which builds every value in a zone of malloc's before its type can be
 * looked at: five bytes that announce an array can ask it for gigabytes. This one allocates nothing
 * and hands out raws as ranges of the data.
 *
 * A value is read whole or not at all. Arrays and maps, which the format does not use, are never
 * entered: the reader stays in front of one.
 */
#ifndef PLAYLIST_WIRE_READER_H
#define PLAYLIST_WIRE_READER_H

#include <stddef.h>
#include <stdint.h>

#include <span>

using playlist_wire_bytes = std::span<const uint8_t>;

class playlist_wire_reader {
 public:
  playlist_wire_reader(const void* data, size_t size)
      : data_(static_cast<const uint8_t*>(data), size) {}

  /* The bytes behind the last value that was read. */
  size_t left() const { return data_.size() - offset_; }

  /* Each reads the next value; false for another type and where no whole value is left. A number is
   * not negative; a raw is of the old raw family, str or bin. */
  bool number(uint64_t* value);
  bool boolean(bool* value);
  bool raw(playlist_wire_bytes* bytes);

 private:
  struct item;
  item next();

  playlist_wire_bytes data_;
  size_t offset_ = 0;
};

#endif
