// The counted functions under zcsl_memory_*, and the replaced operator new.
#include "tests/torture/failing_memory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "zvsdk_manager.h"

namespace {

std::atomic<uint64_t> s_allocations;
std::atomic<uint64_t> s_fail_from = ~uint64_t{0};  // the first failing allocation
std::atomic<uint64_t> s_fail_to = ~uint64_t{0};    // the last one
std::atomic<int64_t> s_live;

bool may_allocate() {
  const uint64_t number = ++s_allocations;
  return number < s_fail_from || number > s_fail_to;
}

void* counted(void* block, bool is_new) {
  if (block != nullptr && is_new) ++s_live;
  return block;
}

void* host_alloc(void*, size_t size) {
  return may_allocate() ? counted(std::malloc(size), true) : nullptr;
}

void* host_calloc(void*, size_t count, size_t size) {
  return may_allocate() ? counted(std::calloc(count, size), true) : nullptr;
}

void* host_realloc(void*, void* block, size_t size) {
  return may_allocate() ? counted(std::realloc(block, size), block == nullptr) : nullptr;
}

void host_free(void*, void* block) {
  if (block != nullptr) --s_live;
  std::free(block);
}

void* plain_new(size_t size, size_t alignment) noexcept {
  if (!may_allocate()) return nullptr;
  if (alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) return std::malloc(size ? size : 1);
  return std::aligned_alloc(alignment, (size + alignment - 1) / alignment * alignment);
}

void* throwing_new(size_t size, size_t alignment) {
  if (void* block = plain_new(size, alignment)) return block;
  throw std::bad_alloc();
}

}  // namespace

void memory_fail_at(uint64_t n, memory_failure how) {
  s_allocations = 0;
  s_fail_to = how == memory_failure::once ? n : ~uint64_t{0};
  s_fail_from = n;
}

bool memory_restore() {
  const bool failed = s_allocations >= s_fail_from;
  s_fail_from = ~uint64_t{0};
  return failed;
}

void memory_install() {
  const zvsdk_memory_functions functions = {.alloc = host_alloc,
                                            .calloc = host_calloc,
                                            .realloc = host_realloc,
                                            .free = host_free,
                                            .context = nullptr};
  ASSERT_EQ(0u, zvsdk_manager_memory_functions_set(&functions));
}

int64_t memory_live_blocks() {
  return s_live;
}

void* operator new(size_t size) {
  return throwing_new(size, 0);
}
void* operator new[](size_t size) {
  return throwing_new(size, 0);
}
void* operator new(size_t size, std::align_val_t alignment) {
  return throwing_new(size, static_cast<size_t>(alignment));
}
void* operator new[](size_t size, std::align_val_t alignment) {
  return throwing_new(size, static_cast<size_t>(alignment));
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  return plain_new(size, 0);
}
void* operator new[](size_t size, const std::nothrow_t&) noexcept {
  return plain_new(size, 0);
}
void operator delete(void* block) noexcept {
  std::free(block);
}
void operator delete[](void* block) noexcept {
  std::free(block);
}
void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, size_t) noexcept {
  std::free(block);
}
void operator delete(void* block, std::align_val_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, std::align_val_t) noexcept {
  std::free(block);
}
void operator delete(void* block, size_t, std::align_val_t) noexcept {
  std::free(block);
}
void operator delete[](void* block, size_t, std::align_val_t) noexcept {
  std::free(block);
}
