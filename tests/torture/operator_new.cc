// The replaced operator new.
#include "tests/torture/operator_new.h"

#include <new>

failing_memory* g_new_counter = nullptr;

namespace {

void* allocate(size_t size, std::align_val_t alignment = {}) {
  if (g_new_counter != nullptr && g_new_counter->refuse()) return nullptr;
  const size_t align = std::max(static_cast<size_t>(alignment), alignof(std::max_align_t));
  return std::aligned_alloc(align, (size + align) / align * align);
}

void* allocated(void* block) {
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

void* operator new(size_t size) {
  return allocated(allocate(size));
}
void* operator new(size_t size, std::align_val_t to) {
  return allocated(allocate(size, to));
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
  std::free(block);
}
void operator delete(void* block, size_t, std::align_val_t) noexcept {
  std::free(block);
}
