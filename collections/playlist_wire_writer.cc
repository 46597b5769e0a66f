// The writing of MessagePack values.
#include "collections/playlist_wire_writer.h"

#include <msgpack/pack.h>

#include <cstring>
#include <utility>

namespace {

constexpr size_t s_first_capacity = 8192;

}  // namespace

bool playlist_wire_writer::make_room(size_t size) {
  const size_t needed = size_ + size;
  if (needed > UINT32_MAX) return false;  // lengths are told in 32 bits
  if (needed <= capacity_) return true;
  size_t capacity = capacity_ != 0 ? capacity_ : s_first_capacity;
  while (capacity < needed) capacity *= 2;
  void* block = zcsl_memory_realloc(data_.get(), capacity);
  if (block == nullptr) return false;
  (void)data_.release();
  data_.reset(static_cast<uint8_t*>(block));
  capacity_ = capacity;
  return true;
}

int playlist_wire_writer::msgpack_sbuffer_write(void* writer, const char* bytes, size_t size) {
  auto* self = static_cast<playlist_wire_writer*>(writer);
  if (self->failed_ || !self->make_room(size)) {
    self->failed_ = true;
    return -1;
  }
  if (size != 0) std::memcpy(self->data_.get() + self->size_, bytes, size);
  self->size_ += size;
  return 0;
}

void playlist_wire_writer::number(uint32_t value) {
  msgpack_packer packer = {this, msgpack_sbuffer_write};
  msgpack_pack_uint32(&packer, value);
}

void playlist_wire_writer::numbers(std::initializer_list<uint32_t> values) {
  for (const uint32_t value : values) number(value);
}

uint8_t* playlist_wire_writer::raw(const void* bytes, uint32_t size) {
  msgpack_packer packer = {this, msgpack_sbuffer_write};
  msgpack_pack_v4raw(&packer, size);
  msgpack_pack_v4raw_body(&packer, bytes, size);
  return ok() ? data_.get() + size_ - size : nullptr;
}

void playlist_wire_writer::detach(void** data, uint32_t* length) {
  *data = data_.release();
  *length = static_cast<uint32_t>(std::exchange(size_, 0));
  capacity_ = 0;
}
