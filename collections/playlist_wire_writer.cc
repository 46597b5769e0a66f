// The writing of MessagePack values.
#include "collections/playlist_wire_writer.h"

#include <msgpack/pack.h>

#include <cstring>
#include <utility>

namespace {

constexpr size_t s_first_capacity = 8192;

}  // namespace

bool playlist_wire_writer::make_room(size_t size) {
  const size_t needed = m_size + size;
  if (needed > UINT32_MAX) return false;  // lengths are told in 32 bits
  if (needed <= m_capacity) return true;
  size_t capacity = m_capacity != 0 ? m_capacity : s_first_capacity;
  while (capacity < needed) capacity *= 2;
  void* block = zcsl_memory_realloc(m_data.get(), capacity);
  if (block == nullptr) return false;
  (void)m_data.release();
  m_data.reset(static_cast<uint8_t*>(block));
  m_capacity = capacity;
  return true;
}

int playlist_wire_writer::msgpack_sbuffer_write(void* writer, const char* bytes, size_t size) {
  auto* self = static_cast<playlist_wire_writer*>(writer);
  if (self->m_failed || !self->make_room(size)) {
    self->m_failed = true;
    return -1;
  }
  if (size != 0) std::memcpy(self->m_data.get() + self->m_size, bytes, size);
  self->m_size += size;
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
  return ok() ? m_data.get() + m_size - size : nullptr;
}

void playlist_wire_writer::detach(void** data, uint32_t* length) {
  *data = m_data.release();
  *length = static_cast<uint32_t>(std::exchange(m_size, 0));
  m_capacity = 0;
}
