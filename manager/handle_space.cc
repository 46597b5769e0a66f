// Chunks of handle slots and the directory in which pointers are looked up.

#include "manager/handle_space.h"

#include <cstdlib>
#include <new>

namespace manager {

bool handle_slot::addref() noexcept {
  uint32_t refs = refs_.load(std::memory_order_relaxed);
  do {
    if (refs == 0) return false;
  } while (!refs_.compare_exchange_weak(refs, refs + 1, std::memory_order_relaxed));
  return true;
}

bool handle_slot::release(bool& last) noexcept {
  uint32_t refs = refs_.load(std::memory_order_relaxed);
  do {
    if (refs == 0) return false;
  } while (!refs_.compare_exchange_weak(refs, refs - 1, std::memory_order_acq_rel,
                                        std::memory_order_relaxed));
  last = refs == 1;
  return true;
}

/* An open hash of chunk addresses. Entries are only ever added; 0 ends a probe. */
struct handle_space::directory {
  explicit directory(size_t capacity)
      : mask(capacity - 1), cells(new std::atomic<uintptr_t>[capacity]()) {}

  size_t start(uintptr_t base) const noexcept {
    return static_cast<size_t>(((base / handle_chunk::size) * 0x9E3779B97F4A7C15u) >> 32) & mask;
  }

  void add(uintptr_t base) noexcept {
    size_t i = start(base);
    while (cells[i].load(std::memory_order_relaxed) != 0) i = (i + 1) & mask;
    cells[i].store(base, std::memory_order_release);
  }

  bool has(uintptr_t base) const noexcept {
    for (size_t i = start(base);; i = (i + 1) & mask) {
      const uintptr_t cell = cells[i].load(std::memory_order_acquire);
      if (cell == base) return true;
      if (cell == 0) return false;
    }
  }

  size_t mask;
  std::unique_ptr<std::atomic<uintptr_t>[]> cells;
};

void handle_space::chunk_deleter::operator()(handle_chunk* chunk) const noexcept {
  std::free(chunk);
}

handle_space::handle_space() {
  directories_.push_back(std::make_unique<directory>(64));
  current_.store(directories_.back().get(), std::memory_order_release);
}

handle_space::~handle_space() = default;

handle_space::chunk_memory handle_space::new_chunk(handle_kind kind, uint32_t granule) {
  void* memory = std::aligned_alloc(handle_chunk::size, handle_chunk::size);
  if (memory == nullptr) throw std::bad_alloc();
  const uint32_t count =
      static_cast<uint32_t>((handle_chunk::size - handle_chunk::header_size) / granule);
  return chunk_memory(new (memory) handle_chunk{kind, granule, count, 0});
}

void handle_space::make_room() {
  if (chunks_.size() == chunks_.capacity()) chunks_.reserve(chunks_.size() * 2 + 8);
  const directory* current = directories_.back().get();
  if ((chunks_.size() + 1) * 2 <= current->mask + 1) return;
  auto grown = std::make_unique<directory>((current->mask + 1) * 2);
  for (const chunk_memory& chunk : chunks_) grown->add(reinterpret_cast<uintptr_t>(chunk.get()));
  directories_.push_back(std::move(grown));
  current_.store(directories_.back().get(), std::memory_order_release);
}

handle_chunk* handle_space::publish(chunk_memory memory) noexcept {
  handle_chunk* chunk = memory.get();
  directories_.back()->add(reinterpret_cast<uintptr_t>(chunk));
  chunks_.push_back(std::move(memory));
  return chunk;
}

const handle_chunk* handle_space::find(const void* pointer) const noexcept {
  const uintptr_t base = reinterpret_cast<uintptr_t>(pointer) & ~(handle_chunk::size - 1);
  if (base == 0) return nullptr;
  if (!current_.load(std::memory_order_acquire)->has(base)) return nullptr;
  return reinterpret_cast<const handle_chunk*>(base);
}

}  // namespace manager
