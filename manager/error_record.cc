// The per-thread error record, its service table and the calls with which an application reads it.

#include "manager/error_record.h"

#include <pthread.h>

#include <cstring>
#include <new>

#include "manager/formatted_text.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

/* A copied text. Made for thread storage: no constructor or destructor has to run. */
struct record_text {
  char* data = nullptr;
  size_t capacity = 0;

  const char* c_str() const { return data != nullptr ? data : ""; }
  bool empty() const { return *c_str() == '\0'; }
  void clear() noexcept {
    if (data != nullptr) *data = '\0';
  }
  /* `text` may be this very text. Without memory the text is empty. */
  void assign(const char* text) noexcept {
    const size_t size = std::strlen(text) + 1;
    if (size > capacity) {
      free();
      data = new (std::nothrow) char[size];
      if (data == nullptr) return;
      capacity = size;
    }
    std::memmove(data, text, size);
  }
  void free() noexcept {
    delete[] data;
    *this = {};
  }
};

struct outcome {
  zvsdk_status mapped = 0;
  zvsdk_status source = 0;
  record_text function;
  record_text message;

  void clear() noexcept {
    mapped = source = 0;
    function.clear();
    message.clear();
  }
  void free_texts() noexcept {
    function.free();
    message.free();
  }
};

struct thread_record {
  outcome last;
  outcome last_with_message;
  bool is_freed_at_end = false;
};

// Never destroyed: calls may come from exit handlers and from the end of a thread, when what has a
// destructor is gone. Only the texts are freed, by the key below, as often as a late call makes new
// ones; those of the thread that ends the process stay.
constinit thread_local thread_record s_record;

void free_texts(void* record) {
  auto* ended = static_cast<thread_record*>(record);
  ended->last.free_texts();
  ended->last_with_message.free_texts();
  ended->is_freed_at_end = false;
}

/* Has the texts of this thread freed when it ends; false when that cannot be. */
bool free_at_end(thread_record& record) noexcept {
  struct end_key {
    pthread_key_t key = 0;
    bool exists = pthread_key_create(&key, free_texts) == 0;
  };
  static const end_key s_key;
  if (!record.is_freed_at_end) {
    record.is_freed_at_end = s_key.exists && pthread_setspecific(s_key.key, &record) == 0;
  }
  return record.is_freed_at_end;
}

bool empty(const char* text) {
  return text == nullptr || *text == '\0';
}

void assign(record_text& to, const char* text) noexcept {
  if (empty(text) || !free_at_end(s_record)) return to.clear();
  to.assign(text);
}

/* The last report was a message that still lacks its function, and this one is its function. */
bool completes_last(const outcome& last, zvsdk_status mapped, zvsdk_status source,
                    const char* message) {
  const bool is_same = mapped == last.mapped || source == last.mapped;
  return is_same && empty(message) && last.function.empty() && !last.message.empty();
}

void store(outcome& record, zvsdk_status mapped, zvsdk_status source, const char* function,
           const char* message) noexcept {
  const bool keep_message = completes_last(record, mapped, source, message);
  record.mapped = mapped;
  record.source = source;
  assign(record.function, function);
  if (!keep_message) assign(record.message, message);
}

void keep_message(thread_record& record) noexcept {
  if (record.last.message.empty()) return;
  outcome& kept = record.last_with_message;
  kept.mapped = record.last.mapped;
  kept.source = record.last.source;
  assign(kept.function, record.last.function.c_str());
  assign(kept.message, record.last.message.c_str());
}

zvsdk_error_info view(const outcome& record) {
  return {record.mapped, record.source, record.function.c_str(), record.message.c_str()};
}

zvsdk_status errorinfo_set_format(zvsdk_status mapped, zvsdk_status source, const char* function,
                                  const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const formatted_text message(format, arguments);
  va_end(arguments);
  return manager_errorinfo_set(mapped, source, function, message.c_str());
}

}  // namespace

void record_outcome(zvsdk_status mapped, zvsdk_status source, const char* function,
                    const char* message) noexcept {
  thread_record& record = s_record;
  if (mapped == 0 && source == 0) return record.last.clear();
  store(record.last, mapped, source, function, message);
  keep_message(record);
}

const zvsdk_errorinfo_interface errorinfo_table = {
    .release = table_release,
    .errorinfo_set = manager_errorinfo_set,
    .errorinfo_set_format = errorinfo_set_format,
};

}  // namespace manager

zvsdk_status manager_errorinfo_set(zvsdk_status mapped, zvsdk_status source, const char* function,
                                   const char* message) {
  manager::record_outcome(mapped, source, function, message);
  return 0;
}

zvsdk_status zvsdk_manager_errorinfo_get(zvsdk_error_info* info) {
  if (info == nullptr) return manager::error_invalid_arg;
  *info = manager::view(manager::s_record.last);
  return 0;
}

zvsdk_status zvsdk_manager_errorinfo_get_message(zvsdk_error_info* info) {
  if (info == nullptr) return manager::error_invalid_arg;
  *info = manager::view(manager::s_record.last_with_message);
  return 0;
}

zvsdk_status zvsdk_manager_errorinfo_clear(void) {
  manager::s_record.last.clear();
  manager::s_record.last_with_message.clear();
  return 0;
}
