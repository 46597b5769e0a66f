// The memory module: the one family of allocation functions under every module, with the
// application's own functions underneath where it gave some.
//
// Live blocks are counted, so that functions are never exchanged under a block that the others
// made. The count is spread over several cache lines; only their sum means anything.

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "manager/manager_status.h"
#include "zvsdk_manager.h"

namespace {

constexpr unsigned s_counter_count = 16;

struct alignas(64) live_counter {
  std::atomic<int64_t> blocks{0};
};

live_counter s_live[s_counter_count];
std::atomic<unsigned> s_next_counter{0};
std::atomic<uint32_t> s_start_count{0};

std::mutex s_functions_mutex;  // serialises exchanges
zvsdk_memory_functions s_functions;
std::atomic<const zvsdk_memory_functions*> s_replacement{nullptr};

live_counter& own_counter() {
  thread_local const unsigned index =
      s_next_counter.fetch_add(1, std::memory_order_relaxed) % s_counter_count;
  return s_live[index];
}

void* counted(void* block) {
  if (block != nullptr) own_counter().blocks.fetch_add(1, std::memory_order_relaxed);
  return block;
}

int64_t live_blocks() {
  int64_t sum = 0;
  for (const live_counter& counter : s_live) sum += counter.blocks.load(std::memory_order_acquire);
  return sum;
}

const zvsdk_memory_functions* replacement() {
  return s_replacement.load(std::memory_order_acquire);
}

bool complete(const zvsdk_memory_functions& functions) {
  return functions.alloc != nullptr && functions.calloc != nullptr &&
         functions.realloc != nullptr && functions.free != nullptr;
}

}  // namespace

void* zcsl_memory_alloc(size_t size) {
  if (size == 0) size = 1;
  const zvsdk_memory_functions* other = replacement();
  return counted(other != nullptr ? other->alloc(other->context, size) : std::malloc(size));
}

void* zcsl_memory_calloc(size_t count, size_t size) {
  size_t product;
  if (__builtin_mul_overflow(count, size, &product)) return nullptr;
  if (product == 0) count = size = 1;
  const zvsdk_memory_functions* other = replacement();
  return counted(other != nullptr ? other->calloc(other->context, count, size)
                                  : std::calloc(count, size));
}

void* zcsl_memory_realloc(void* block, size_t size) {
  if (block == nullptr) return zcsl_memory_alloc(size);
  if (size == 0) size = 1;
  const zvsdk_memory_functions* other = replacement();
  return other != nullptr ? other->realloc(other->context, block, size) : std::realloc(block, size);
}

void zcsl_memory_free(void* block) {
  if (block == nullptr) return;
  if (const zvsdk_memory_functions* other = replacement()) {
    other->free(other->context, block);
  } else {
    std::free(block);
  }
  // Counted last: until now the block needed the functions that made it.
  own_counter().blocks.fetch_sub(1, std::memory_order_release);
}

void* zcsl_memory_dup(const void* block, size_t size) {
  void* copy = zcsl_memory_alloc(size);
  return copy != nullptr ? zcsl_memory_memcpy(copy, block, size) : nullptr;
}

void* zcsl_memory_memcpy(void* destination, const void* source, size_t size) {
  return size != 0 ? std::memcpy(destination, source, size) : destination;
}

void* zcsl_memory_memmove(void* destination, const void* source, size_t size) {
  return size != 0 ? std::memmove(destination, source, size) : destination;
}

void* zcsl_memory_memset(void* block, int byte, size_t size) {
  return size != 0 ? std::memset(block, byte, size) : block;
}

int zcsl_memory_memcmp(const void* a, const void* b, size_t size) {
  return size != 0 ? std::memcmp(a, b, size) : 0;
}

zvsdk_status zcsl_memory_initialize(void) {
  s_start_count.fetch_add(1, std::memory_order_relaxed);
  return 0;
}

zvsdk_status zcsl_memory_shutdown(void) {
  uint32_t count = s_start_count.load(std::memory_order_relaxed);
  do {
    if (count == 0) return 7;  // the bare value of the start and stop pattern
  } while (!s_start_count.compare_exchange_weak(count, count - 1, std::memory_order_relaxed));
  return 0;
}

zvsdk_status zvsdk_manager_memory_functions_set(const zvsdk_memory_functions* functions) {
  if (functions != nullptr && !complete(*functions)) return manager::error_invalid_arg;
  std::lock_guard lock(s_functions_mutex);
  if (live_blocks() != 0) return manager::error_busy;
  s_replacement.store(nullptr, std::memory_order_release);
  if (functions != nullptr) {
    s_functions = *functions;
    s_replacement.store(&s_functions, std::memory_order_release);
  }
  return 0;
}
