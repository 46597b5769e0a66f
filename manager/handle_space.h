/*
 * handle_space.h: where the manager's own handles live, and how any pointer is recognised as one of
 * them without being followed.
 *
 * Handles are slots in chunks of 64 KiB that are aligned to their size. The chunk of a pointer is
 * found by its upper bits in a directory of chunk addresses; only when the directory has it is any
 * memory behind the pointer read. Chunks stay until the host stops, so the reference count in a
 * slot can always be read, also when the slot has been given back meanwhile: a count of 0 is a
 * stale handle. Recognising a handle takes no lock and costs a few nanoseconds.
 *
 * handle_space::find is lock-free; adding chunks and the free lists have mutexes of their own.
 */
#ifndef HANDLE_SPACE_H
#define HANDLE_SPACE_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "manager/manager_status.h"

namespace manager {

enum class handle_kind : uint32_t {
  client,
  user,
  locale,
  list,
  list_element,
  correlates,
  correlates_set,
  zdo,
  stored_table,
  stored_schema,
  stored_record,
  stored_cursor,
  stored_transaction
};

/* What every slot begins with. */
class handle_slot {
 public:
  bool live() const noexcept { return refs_.load(std::memory_order_acquire) != 0; }
  /* Takes a reference on a handle that must be live; false when it is not. */
  bool addref() noexcept;
  /* Gives one back; false when there was none. `last` tells whether it was the last one. */
  bool release(bool& last) noexcept;
  /* Takes a reference whether or not there are others; true for the first one. */
  bool revive() noexcept { return refs_.fetch_add(1, std::memory_order_acq_rel) == 0; }

 private:
  std::atomic<uint32_t> refs_{0};
};

struct handle_chunk {
  static constexpr size_t size = 65536;
  static constexpr size_t header_size = 64;

  handle_kind kind;
  uint32_t granule;  // bytes from slot to slot
  uint32_t count;    // slots
  uint32_t owner;    // for the pool's own use

  char* first() { return reinterpret_cast<char*>(this) + header_size; }
};

class handle_space {
 public:
  handle_space();
  ~handle_space();
  handle_space(const handle_space&) = delete;
  handle_space& operator=(const handle_space&) = delete;

  /* A new chunk. `prepare` makes all its slots before anyone can find them; nothing fails behind
   * it. */
  template <class Prepare>
  handle_chunk* add_chunk(handle_kind kind, uint32_t granule, Prepare prepare) {
    chunk_memory memory = new_chunk(kind, granule);
    std::lock_guard lock(mutex_);
    make_room();
    prepare(memory.get());
    return publish(std::move(memory));
  }

  /* The chunk that a pointer points into, or null. */
  const handle_chunk* find(const void* pointer) const noexcept;

  /* The live slot that a pointer names, or null. */
  template <class Slot>
  Slot* live_slot(const void* pointer) const noexcept {
    const handle_chunk* chunk = find(pointer);
    if (chunk == nullptr || chunk->kind != Slot::kind) return nullptr;
    const size_t offset = reinterpret_cast<uintptr_t>(pointer) - reinterpret_cast<uintptr_t>(chunk);
    if (offset < handle_chunk::header_size) return nullptr;
    const size_t inside = offset - handle_chunk::header_size;
    if (inside % sizeof(Slot) != 0 || inside / sizeof(Slot) >= chunk->count) return nullptr;
    auto* slot = static_cast<Slot*>(const_cast<void*>(pointer));
    return slot->live() ? slot : nullptr;
  }

 private:
  struct chunk_deleter {
    void operator()(handle_chunk* chunk) const noexcept;
  };
  using chunk_memory = std::unique_ptr<handle_chunk, chunk_deleter>;
  struct directory;

  static chunk_memory new_chunk(handle_kind kind, uint32_t granule);
  void make_room();
  handle_chunk* publish(chunk_memory memory) noexcept;

  std::atomic<const directory*> current_;
  std::mutex mutex_;  // guards what follows
  std::vector<chunk_memory> chunks_;
  std::vector<std::unique_ptr<directory>> directories_;  // the current one and its forerunners
};

/*
 * Slots of one kind. A slot object is made with its chunk and lives as long as the pool; take and
 * give_back only hand it around.
 */
template <class Slot>
class slot_pool {
 public:
  explicit slot_pool(handle_space& space) : space_(space) {}
  ~slot_pool() {
    for (Slot* slot : all_) slot->~Slot();
  }
  slot_pool(const slot_pool&) = delete;
  slot_pool& operator=(const slot_pool&) = delete;

  /* A slot without references; its first one makes it a handle. */
  Slot* take() {
    std::lock_guard lock(mutex_);
    if (free_.empty()) add_slots();
    Slot* slot = free_.back();
    free_.pop_back();
    return slot;
  }

  void give_back(Slot* slot) noexcept {
    std::lock_guard lock(mutex_);
    free_.push_back(slot);  // never grows: add_slots reserved room for every slot
  }

  /* Gives a reference back, and with the last one the slot. An error for one without references. */
  zvsdk_status release(Slot* slot) noexcept {
    bool last = false;
    if (!slot->release(last)) return error_invalid_arg;
    if (last) give_back(slot);
    return status_ok;
  }

  /* Slots that are handed out. */
  size_t taken() {
    std::lock_guard lock(mutex_);
    return all_.size() - free_.size();
  }

 private:
  void add_slots() {
    constexpr uint32_t count = (handle_chunk::size - handle_chunk::header_size) / sizeof(Slot);
    all_.reserve(all_.size() + count);
    free_.reserve(all_.size() + count);
    space_.add_chunk(Slot::kind, sizeof(Slot), [&](handle_chunk* chunk) {
      for (uint32_t i = count; i-- > 0;) {
        all_.push_back(new (chunk->first() + i * sizeof(Slot)) Slot);
        free_.push_back(all_.back());
      }
    });
  }

  handle_space& space_;
  std::mutex mutex_;  // guards what follows
  std::vector<Slot*> all_;
  std::vector<Slot*> free_;
};

}  // namespace manager

#endif
