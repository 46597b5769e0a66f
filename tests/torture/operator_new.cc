// The replaced operator new. Blocks of a wider alignment, which the host makes once at its start,
// stay with the library.
#include "tests/torture/operator_new.h"

#include <new>

failing_memory* g_new_counter = nullptr;

namespace {

void* allocate(size_t size) {
  if (g_new_counter != nullptr && g_new_counter->refuse()) return nullptr;
  return std::malloc(size != 0 ? size : 1);
}

}  // namespace

void* operator new(size_t size) {
  if (void* block = allocate(size)) return block;
  throw std::bad_alloc();
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
