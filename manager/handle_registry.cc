// The sharded registry of modules' handles.
//
// How a reader without a lock stays right: a writer makes the shard's counter odd, changes cells
// with release stores and makes the counter even again. A reader that saw any of those stores also
// sees the odd counter when it reads it again behind its acquire loads, and then tries once more.

#include "manager/handle_registry.h"

namespace manager {

namespace {

constexpr size_t s_none = ~size_t{0};

/* What a validation reads is atomic; the rest is only touched under the shard's mutex. */
struct cell {
  std::atomic<const void*> object{nullptr};
  std::atomic<uint32_t> magic{0};
  uint32_t refs = 0;
  zvsdk_handle_delete_fn destroy = nullptr;
  const void* client = nullptr;

  void set(const cell& from) noexcept {
    refs = from.refs;
    destroy = from.destroy;
    client = from.client;
    magic.store(from.magic.load(std::memory_order_relaxed), std::memory_order_release);
    object.store(from.object.load(std::memory_order_relaxed), std::memory_order_release);
  }
  void clear() noexcept { object.store(nullptr, std::memory_order_release); }
  bool used() const noexcept { return object.load(std::memory_order_acquire) != nullptr; }
};

}  // namespace

uint64_t handle_registry::hash(const void* object) noexcept {
  uint64_t h = reinterpret_cast<uintptr_t>(object) >> 3;
  h *= 0x9E3779B97F4A7C15u;
  return h ^ (h >> 32);
}

struct handle_registry::table {
  explicit table(size_t capacity) : mask(capacity - 1), cells(new cell[capacity]) {}

  size_t start(uint64_t hash) const noexcept { return (hash / s_shard_count) & mask; }

  /* The cell of an object, or none. Ends even when it runs beside a writer. */
  size_t find(const void* object, uint64_t hash) const noexcept {
    size_t i = start(hash);
    for (size_t probes = 0; probes <= mask; ++probes, i = (i + 1) & mask) {
      const void* found = cells[i].object.load(std::memory_order_acquire);
      if (found == object) return i;
      if (found == nullptr) return s_none;
    }
    return s_none;
  }

  void insert(const cell& from, uint64_t hash) noexcept {
    size_t i = start(hash);
    while (cells[i].used()) i = (i + 1) & mask;
    cells[i].set(from);
  }

  /* Empties a cell and moves back the entries behind it that would be cut off from their start. */
  void erase(size_t hole) noexcept {
    for (size_t i = (hole + 1) & mask; cells[i].used(); i = (i + 1) & mask) {
      const size_t home = start(handle_registry::hash(cells[i].object.load()));
      if (((i - home) & mask) < ((i - hole) & mask)) continue;
      cells[hole].set(cells[i]);
      hole = i;
    }
    cells[hole].clear();
  }

  size_t mask;
  std::unique_ptr<cell[]> cells;
};

struct alignas(64) handle_registry::shard {
  std::atomic<uint64_t> changes{0};
  std::atomic<table*> current{nullptr};
  std::mutex mutex;
  size_t count = 0;                            // guarded by mutex
  std::vector<std::unique_ptr<table>> tables;  // guarded by mutex; forerunners stay for readers

  template <class Change>
  void change(Change make) noexcept {
    changes.store(changes.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
    make();
    changes.store(changes.load(std::memory_order_relaxed) + 1, std::memory_order_release);
  }

  void make_room() {
    table* old = current.load(std::memory_order_relaxed);
    if (old != nullptr && (count + 1) * 2 <= old->mask + 1) return;
    auto grown = std::make_unique<table>(old != nullptr ? (old->mask + 1) * 2 : 16);
    for (size_t i = 0; old != nullptr && i <= old->mask; ++i) {
      const cell& from = old->cells[i];
      if (from.used()) grown->insert(from, hash(from.object.load()));
    }
    tables.push_back(std::move(grown));
    current.store(tables.back().get(), std::memory_order_release);
  }

  cell* find(const void* object, uint64_t hash) noexcept {
    table* entries = current.load(std::memory_order_relaxed);
    const size_t i = entries != nullptr ? entries->find(object, hash) : s_none;
    return i != s_none ? &entries->cells[i] : nullptr;
  }

  void erase(cell* gone) noexcept {
    table* entries = current.load(std::memory_order_relaxed);
    change([&] { entries->erase(static_cast<size_t>(gone - entries->cells.get())); });
    --count;
  }

  /* One try without a lock: false when a writer came between. */
  bool try_valid(const void* object, uint32_t magic, uint64_t hash, bool& result) const noexcept {
    const uint64_t before = changes.load(std::memory_order_acquire);
    if (before % 2 != 0) return false;
    const table* entries = current.load(std::memory_order_acquire);
    const size_t i = entries != nullptr ? entries->find(object, hash) : s_none;
    result = i != s_none && entries->cells[i].magic.load(std::memory_order_acquire) == magic;
    return changes.load(std::memory_order_relaxed) == before;
  }
};

handle_registry::shard& handle_registry::shard_of(uint64_t hash) const noexcept {
  return shards_[hash % s_shard_count];
}

handle_registry::handle_registry() : shards_(new shard[s_shard_count]) {}
handle_registry::~handle_registry() = default;

zvsdk_status handle_registry::add(const void* client, void* object, uint32_t magic,
                                  zvsdk_handle_delete_fn destroy) {
  const uint64_t key = hash(object);
  shard& home = shard_of(key);
  std::lock_guard lock(home.mutex);
  if (home.find(object, key) != nullptr) return error_exists;
  home.make_room();
  cell entry;
  entry.object.store(object, std::memory_order_relaxed);
  entry.magic.store(magic, std::memory_order_relaxed);
  entry.refs = 1;
  entry.destroy = destroy;
  entry.client = client;
  table* entries = home.current.load(std::memory_order_relaxed);
  home.change([&] { entries->insert(entry, key); });
  ++home.count;
  return status_ok;
}

bool handle_registry::valid(const void* object, uint32_t magic) const noexcept {
  if (object == nullptr) return false;
  const uint64_t key = hash(object);
  shard& home = shard_of(key);
  bool result = false;
  for (int tries = 0; tries < 16; ++tries) {
    if (home.try_valid(object, magic, key, result)) return result;
  }
  std::lock_guard lock(home.mutex);
  const cell* entry = home.find(object, key);
  return entry != nullptr && entry->magic.load(std::memory_order_relaxed) == magic;
}

zvsdk_status handle_registry::addref(const void* object) noexcept {
  const uint64_t key = hash(object);
  shard& home = shard_of(key);
  std::lock_guard lock(home.mutex);
  cell* entry = object != nullptr ? home.find(object, key) : nullptr;
  if (entry == nullptr) return error_invalid_arg;
  ++entry->refs;
  return status_ok;
}

zvsdk_status handle_registry::release(void* object) noexcept {
  const uint64_t key = hash(object);
  shard& home = shard_of(key);
  zvsdk_handle_delete_fn destroy = nullptr;
  {
    std::lock_guard lock(home.mutex);
    cell* entry = object != nullptr ? home.find(object, key) : nullptr;
    if (entry == nullptr) return error_invalid_arg;
    if (--entry->refs != 0) return status_ok;
    destroy = entry->destroy;
    home.erase(entry);
  }
  return destroy != nullptr ? destroy(object) : status_ok;
}

bool handle_registry::has_handles_of(const void* client) noexcept {
  for (size_t s = 0; s < s_shard_count; ++s) {
    shard& home = shards_[s];
    std::lock_guard lock(home.mutex);
    const table* entries = home.current.load(std::memory_order_relaxed);
    for (size_t i = 0; entries != nullptr && i <= entries->mask; ++i) {
      if (entries->cells[i].used() && entries->cells[i].client == client) return true;
    }
  }
  return false;
}

}  // namespace manager
