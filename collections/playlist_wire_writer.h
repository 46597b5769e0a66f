/*
 * playlist_wire_writer.h: MessagePack values into a growing block of the memory family. The packer
 * is msgpack-c's, over a write callback of ours, so that nothing is allocated behind our back.
 *
 * A write that finds no memory spoils the whole: ask ok() at the end.
 */
#ifndef PLAYLIST_WIRE_WRITER_H
#define PLAYLIST_WIRE_WRITER_H

#include <stddef.h>
#include <stdint.h>

#include <initializer_list>

#include "support/zcsl_owners.h"

class playlist_wire_writer {
 public:
  playlist_wire_writer() = default;
  playlist_wire_writer(const playlist_wire_writer&) = delete;
  playlist_wire_writer& operator=(const playlist_wire_writer&) = delete;

  /* The shortest form. */
  void number(uint32_t value);
  void numbers(std::initializer_list<uint32_t> values);
  /* The old raw form, which the later string family can read. Gives the place of the bytes in the
   * block, good until the next write, or null. */
  uint8_t* raw(const void* bytes, uint32_t size);

  bool ok() const { return !failed_; }
  /* Gives the whole up. */
  void spoil() { failed_ = true; }
  /* Hands the block over. */
  void detach(void** data, uint32_t* length);

 private:
  /* The packer's callback: 0, or -1 without memory. */
  static int msgpack_sbuffer_write(void* writer, const char* bytes, size_t size);
  bool make_room(size_t size);

  zcsl_block_owner<uint8_t> data_;
  size_t size_ = 0;
  size_t capacity_ = 0;
  bool failed_ = false;
};

#endif
