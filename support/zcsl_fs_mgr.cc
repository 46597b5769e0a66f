// The pool of descriptors: any number of files are open on a bounded number of descriptors. When
// the limit is reached, the file that has been idle longest gives its descriptor up; it is opened
// again, by its path, when it is used next. Everything here is guarded by s_fs_mgr_cs, which is
// given back while a thread waits, and kept while a descriptor is closed or reopened.
//
// Why nobody sleeps for ever. Who can have no descriptor waits for s_fs_mgr_event. The event does
// not count: two signals before a waiter runs are one. So not only does each release and close
// signal; whoever leaves the pool (`pool_turn`), be it with success or failure, signals as well
// when somebody waits and something can be had. That includes each waiter that a signal has let go:
// what it leaves over it passes on. Hence, whenever the lock is free, something can be had and
// somebody waits, then a signal is set or on its way, or a waiter that took one has yet to look. A
// signal between giving the lock back and waiting stays set and ends the wait at once. Those who
// hold a descriptor never wait for another one, so they come to their release.

#include "support/zcsl_fs_mgr.h"

#include "support/zcsl_guards.h"
#include "support/zcsl_links.h"
#include "support/zcsl_module.h"
#include "support/zcsl_module_internal.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"

uint32_t g_fs_num_file_handles = 0;
uint32_t g_fs_max_file_handles = 0;

namespace {

zcsl_critsec* s_fs_mgr_cs = nullptr;
zcsl_event* s_fs_mgr_event = nullptr;  // not signalled at start, auto-reset
uint32_t s_fs_waiting = 0;             // threads that wait for the event

// Files that hold a descriptor and are not in use, oldest first.
zcsl_fs_entry* s_fs_live_list = nullptr;
zcsl_fs_entry* s_fs_live_end = nullptr;
uint32_t s_fs_live_count = 0;

// Files that are open, and whose descriptor was taken away.
zcsl_fs_entry* s_fs_open_list = nullptr;
zcsl_fs_entry* s_fs_open_end = nullptr;
uint32_t s_fs_open_count = 0;

struct fs_list {
  zcsl_fs_entry*& first;
  zcsl_fs_entry*& end;
  uint32_t& count;
};

constexpr fs_list s_live{s_fs_live_list, s_fs_live_end, s_fs_live_count};
constexpr fs_list s_parked{s_fs_open_list, s_fs_open_end, s_fs_open_count};

constexpr char s_max_handles_key[] = "zcsl_fs_max_handles";

zvsdk_status mgr_logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, "zcsl_fs_mgr");
}

using idleness = zcsl_links<&zcsl_fs_entry::next, &zcsl_fs_entry::previous>;

void append(const fs_list& list, zcsl_fs_entry* entry) {
  idleness::append(list.first, list.end, entry);
  ++list.count;
}

void remove(const fs_list& list, zcsl_fs_entry* entry) {
  idleness::remove(list.first, list.end, entry);
  --list.count;
}

bool limit_reached() {
  return g_fs_max_file_handles != 0 && g_fs_num_file_handles >= g_fs_max_file_handles;
}

bool above_limit() {
  return g_fs_max_file_handles != 0 && g_fs_num_file_handles > g_fs_max_file_handles;
}

// Whether a descriptor can be had at once.
bool available() {
  return !limit_reached() || s_fs_live_count > 0;
}

// One visit to the pool: the lock, and at the end the signal to one who waits.
class pool_turn {
 public:
  pool_turn() : guard_(s_fs_mgr_cs) {}
  pool_turn(const pool_turn&) = delete;
  pool_turn& operator=(const pool_turn&) = delete;
  ~pool_turn() {
    const bool signal = signal_ || (s_fs_waiting > 0 && available());
    guard_.unlock();
    if (signal) zcsl_thread_event_signal(s_fs_mgr_event);
  }

  // Signals at the end, also when nobody waits: the signal stays.
  void signal() { signal_ = true; }

 private:
  zcsl_critsec_guard guard_;
  bool signal_ = false;
};

// Looks first, and waits only while `ready` says no. The lock is held again at the end.
template <class Ready>
zvsdk_status wait_until(zcsl_fs_entry* entry, Ready ready) {
  zvsdk_status status = 0;
  ++entry->waiting;
  ++s_fs_waiting;
  while (!status && !ready()) {
    zcsl_thread_critsec_leave(s_fs_mgr_cs);
    status = zcsl_thread_event_wait(s_fs_mgr_event, zcsl_thread_wait_forever);
    zcsl_thread_critsec_enter(s_fs_mgr_cs);
  }
  --s_fs_waiting;
  --entry->waiting;
  return status;
}

// Takes the descriptor of the file that is idle longest. It is gone also when its close fails, so
// the lists are the same in either case.
zvsdk_status park_oldest() {
  zcsl_fs_entry* oldest = s_fs_live_list;
  remove(s_live, oldest);
  const zvsdk_status status = _zcsl_fs_close_internal(oldest->file);
  oldest->has_descriptor = 0;
  append(s_parked, oldest);
  return mgr_logged(status);
}

// A place for one descriptor, counted as held: a free one, or that of the oldest idle file. After a
// failure the place is free, and goes to whoever comes next.
zvsdk_status take_place() {
  if (!limit_reached()) {
    ++g_fs_num_file_handles;
    return 0;
  }
  const zvsdk_status status = park_oldest();
  if (status) --g_fs_num_file_handles;
  return status;
}

// After the limit was lowered: idle files give their descriptors up until it is kept. Those in use
// follow as they are released, so above the limit no file is idle. A close that fails is told to
// its own file alone: nobody here needs that descriptor.
void drain() {
  while (above_limit() && s_fs_live_count > 0) {
    (void)park_oldest();
    --g_fs_num_file_handles;
  }
}

// Opens a parked file again and makes it an idle one. After a failure it is parked as before.
zvsdk_status bring_back(zcsl_fs_entry* entry) {
  if (const zvsdk_status status = take_place()) return status;
  if (const zvsdk_status status = _zcsl_fs_reopen_internal(entry->file)) {
    --g_fs_num_file_handles;
    return status;
  }
  remove(s_parked, entry);
  entry->has_descriptor = 1;
  append(s_live, entry);
  return 0;
}

zvsdk_status start_lock_and_event() {
  zcsl_owner<zcsl_critsec, zcsl_thread_critsec_delete> lock;
  if (const zvsdk_status status = zcsl_thread_critsec_create(lock.out())) return status;
  if (const zvsdk_status status = zcsl_thread_event_create(&s_fs_mgr_event, 0, 0)) return status;
  s_fs_mgr_cs = lock.release();
  return 0;
}

}  // namespace

zvsdk_status zcsl_fs_mgr_start() {
  g_fs_max_file_handles = 0;
  return start_lock_and_event();
}

zvsdk_status zcsl_fs_mgr_stop() {
  zcsl_critsec_guard guard(s_fs_mgr_cs);
  const bool busy = g_fs_num_file_handles + s_fs_open_count > 0 || _zcsl_fs_metrics_watching();
  guard.unlock();
  if (busy) return mgr_logged(fs_error(zcsl_code_busy));
  if (const zvsdk_status status = zcsl_thread_critsec_delete(s_fs_mgr_cs)) return status;
  zcsl_thread_event_delete(s_fs_mgr_event);
  s_fs_mgr_cs = nullptr;
  s_fs_mgr_event = nullptr;
  return 0;
}

zcsl_critsec* _zcsl_fs_mgr_lock() {
  return s_fs_mgr_cs;
}

zvsdk_status _zcsl_fs_mgr_new_fd(zcsl_fs_entry* entry) {
  pool_turn turn;
  entry->owner = pthread_self();
  zvsdk_status status = wait_until(entry, available);
  if (!status) status = take_place();
  if (status) return mgr_logged(status);
  entry->use_count = 1;
  entry->has_descriptor = 1;
  _zcsl_fs_metrics_open(entry);
  return 0;
}

zvsdk_status _zcsl_fs_mgr_acquire_fd(zcsl_fs_entry* entry) {
  pool_turn turn;
  // Another thread may bring this very file back while this one waits.
  const auto ready = [entry] { return entry->has_descriptor || available(); };
  zvsdk_status status = wait_until(entry, ready);
  if (!status && !entry->has_descriptor) status = bring_back(entry);
  if (status) return mgr_logged(status);
  if (entry->use_count == 0) remove(s_live, entry);
  ++entry->use_count;
  return 0;
}

zvsdk_status _zcsl_fs_mgr_release_fd(zcsl_fs_entry* entry) {
  pool_turn turn;
  turn.signal();
  if (--entry->use_count > 0) return 0;
  append(s_live, entry);
  drain();
  return 0;
}

zvsdk_status _zcsl_fs_mgr_close_fd(zcsl_fs_entry* entry) {
  pool_turn turn;
  _zcsl_fs_metrics_close(entry);
  if (!entry->has_descriptor) {
    remove(s_parked, entry);
    return 0;
  }
  if (entry->use_count == 0) remove(s_live, entry);  // a file whose open failed is in no list
  --g_fs_num_file_handles;
  turn.signal();
  return 0;
}

zvsdk_status zcsl_fs_option_set(const char* key, const char* value) {
  if (!zcsl_string_equal(key, s_max_handles_key, 0)) {
    return mgr_logged(fs_error(zcsl_code_invalid_arg));
  }
  if (!zcsl_fs_initchecks()) return mgr_logged(fs_error(zcsl_code_not_initialized));
  pool_turn turn;  // a raised limit lets one waiter go at its end, who lets the next go
  g_fs_max_file_handles = zcsl_string_atou32(value);
  drain();
  return 0;
}

zvsdk_status zcsl_fs_option_get(const char* key, const char** value) {
  // Each thread has its own, so that two that ask at once do not write into each other's text.
  static thread_local char s_text[32];
  if (!value || !zcsl_string_equal(key, s_max_handles_key, 0)) {
    return mgr_logged(fs_error(zcsl_code_invalid_arg));
  }
  if (!zcsl_fs_initchecks()) return mgr_logged(fs_error(zcsl_code_not_initialized));
  pool_turn turn;
  *value = zcsl_string_u32toa(g_fs_max_file_handles, s_text, sizeof s_text);
  return 0;
}
