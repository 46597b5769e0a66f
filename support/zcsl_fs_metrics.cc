// Metrics: a marker counts what is done with the files that are opened while it stands, either by
// its own thread or, the global one, by all. Each file has a record for each marker that it was
// opened under. Markers and records are guarded by the pool's lock; a marker owns its records,
// which outlive their files.

#include <algorithm>
#include <new>

#include "support/zcsl_fs_mgr.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_module.h"
#include "zvsdk_runtime.h"

struct zcsl_fs_record {
  uint64_t bytes_read;
  uint32_t largest_read;
  uint32_t read_count;
  uint64_t bytes_written;
  uint32_t largest_write;
  uint32_t write_count;
  uint32_t seeks;
  uint8_t closed;
  uint8_t active;
  zcsl_fs_entry* entry;  // null once the file is closed
  zcsl_fs_record* next_of_entry;
  zcsl_fs_marker* marker;
  zcsl_fs_record* next_of_marker;
};

struct zcsl_fs_marker {
  static constexpr uint32_t alive = 0x0F5A4C0E;

  uint32_t magic = alive;
  uint8_t global = 0;
  pthread_t thread{};
  zcsl_fs_marker* next = nullptr;
  zcsl_fs_record* records = nullptr;
};

namespace {

constexpr size_t s_marker_list_count = 16;

zcsl_fs_marker* s_fs_marker_lists[s_marker_list_count];  // by the id of the thread
zcsl_fs_marker* s_fs_global_marker = nullptr;

zvsdk_status metrics_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_fs_metrics");
}

// Thread ids are addresses of large, aligned blocks: their low bits tell nothing.
zcsl_fs_marker*& markers_of(pthread_t thread) {
  return s_fs_marker_lists[(static_cast<uintptr_t>(thread) >> 12) % s_marker_list_count];
}

// The global marker's records belong to every thread.
bool belongs_to(const zcsl_fs_record* record, pthread_t thread) {
  return record->marker->global || pthread_equal(record->marker->thread, thread);
}

// A file goes uncounted rather than unopened when there is no memory.
void watch(zcsl_fs_marker* marker, zcsl_fs_entry* entry) {
  auto* record = static_cast<zcsl_fs_record*>(zcsl_memory_calloc(1, sizeof(zcsl_fs_record)));
  if (!record) return;
  record->entry = entry;
  record->next_of_entry = entry->records;
  entry->records = record;
  record->marker = marker;
  record->next_of_marker = marker->records;
  marker->records = record;
}

void count_transfer(uint32_t bytes, uint64_t* total, uint32_t* largest, uint32_t* count) {
  *total += bytes;
  *largest = std::max(*largest, bytes);
  *count += bytes != 0;
}

// Takes `item` out of a chain that is linked by `next`.
template <class Item>
void unchain(Item** link, Item* item, Item* Item::*next) {
  while (*link != item) link = &((*link)->*next);
  *link = item->*next;
}

void free_records(zcsl_fs_marker* marker) {
  while (zcsl_fs_record* record = marker->records) {
    marker->records = record->next_of_marker;
    if (record->entry) unchain(&record->entry->records, record, &zcsl_fs_record::next_of_entry);
    zcsl_memory_free(record);
  }
}

void add_up(const zcsl_fs_record& record, zcsl_fs_metrics* sum) {
  sum->bytes_read += record.bytes_read;
  sum->largest_read = std::max(sum->largest_read, record.largest_read);
  sum->read_count += record.read_count;
  sum->bytes_written += record.bytes_written;
  sum->largest_write = std::max(sum->largest_write, record.largest_write);
  sum->write_count += record.write_count;
  sum->seek_count += record.seeks;
  sum->files += 1;
  sum->closed_files += record.closed;
  sum->active_files += record.active;
}

// Where a new marker belongs, or null where the global one is set already.
zcsl_fs_marker** place_of(const zcsl_fs_marker* marker) {
  if (!marker->global) return &markers_of(marker->thread);
  return s_fs_global_marker ? nullptr : &s_fs_global_marker;
}

zvsdk_status check_marker(const zcsl_fs_marker* marker, bool arguments) {
  if (!marker || !arguments) return fs_error(zcsl_code_invalid_arg);
  return marker->magic == zcsl_fs_marker::alive ? 0 : fs_error(zcsl_code_bad_magic);
}

zvsdk_status install(zcsl_fs_marker* marker) {
  zcsl_critsec_guard guard(_zcsl_fs_mgr_lock());
  zcsl_fs_marker** place = place_of(marker);
  if (!place) return fs_error(zcsl_code_exists);
  marker->next = *place;
  *place = marker;
  return 0;
}

}  // namespace

void _zcsl_fs_metrics_open(zcsl_fs_entry* entry) {
  for (zcsl_fs_marker* marker = markers_of(entry->owner); marker; marker = marker->next) {
    if (pthread_equal(marker->thread, entry->owner)) watch(marker, entry);
  }
  if (s_fs_global_marker) watch(s_fs_global_marker, entry);
}

void _zcsl_fs_metrics_close(zcsl_fs_entry* entry) {
  for (zcsl_fs_record* record = entry->records; record; record = record->next_of_entry) {
    record->closed = 1;
    record->entry = nullptr;
  }
  entry->records = nullptr;
}

bool _zcsl_fs_metrics_watching() {
  for (const zcsl_fs_marker* marker : s_fs_marker_lists) {
    if (marker) return true;
  }
  return s_fs_global_marker != nullptr;
}

zvsdk_status _zcsl_fs_mgr_update_metrics(zcsl_fs_entry* entry, uint32_t bytes_read,
                                         uint32_t bytes_written, uint32_t seeks) {
  zcsl_critsec_guard guard(_zcsl_fs_mgr_lock());
  const pthread_t caller = pthread_self();
  zcsl_fs_record* record = entry->records;
  for (; record && belongs_to(record, caller); record = record->next_of_entry) {
    count_transfer(bytes_read, &record->bytes_read, &record->largest_read, &record->read_count);
    count_transfer(bytes_written, &record->bytes_written, &record->largest_write,
                   &record->write_count);
    record->seeks += seeks;
    record->active = 1;
  }
  return 0;
}

zvsdk_status zcsl_fs_marker_create(zcsl_fs_marker** marker, uint8_t global) {
  if (!marker) return metrics_logged(fs_error(zcsl_code_invalid_arg));
  if (!zcsl_fs_initchecks()) return metrics_logged(fs_error(zcsl_code_not_initialized));
  void* block = zcsl_memory_alloc(sizeof(zcsl_fs_marker));
  if (!block) return metrics_logged(fs_error(zcsl_code_no_memory));
  auto* made = ::new (block) zcsl_fs_marker;
  made->global = global != 0;
  made->thread = pthread_self();
  const zvsdk_status status = install(made);
  if (status) {
    zcsl_memory_free(made);
  } else {
    *marker = made;
  }
  return metrics_logged(status);
}

zvsdk_status zcsl_fs_marker_get(zcsl_fs_marker* marker, zcsl_fs_metrics* metrics) {
  if (const zvsdk_status status = check_marker(marker, metrics)) return metrics_logged(status);
  zcsl_critsec_guard guard(_zcsl_fs_mgr_lock());
  *metrics = {};
  for (const zcsl_fs_record* record = marker->records; record; record = record->next_of_marker) {
    add_up(*record, metrics);
  }
  return 0;
}

zvsdk_status zcsl_fs_marker_delete(zcsl_fs_marker* marker) {
  if (!marker) return 0;
  if (const zvsdk_status status = check_marker(marker, true)) return metrics_logged(status);
  zcsl_critsec_guard guard(_zcsl_fs_mgr_lock());
  zcsl_fs_marker*& list = marker->global ? s_fs_global_marker : markers_of(marker->thread);
  unchain(&list, marker, &zcsl_fs_marker::next);
  free_records(marker);
  marker->magic = 0;
  zcsl_memory_free(marker);
  return 0;
}
