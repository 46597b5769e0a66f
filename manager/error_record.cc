// The per-thread error record, its service table and the calls with which an application reads it.

#include "manager/error_record.h"

#include <new>
#include <string>

#include "manager/formatted_text.h"
#include "manager/service_tables.h"

namespace manager {
namespace {

struct outcome {
  zvsdk_status mapped = 0;
  zvsdk_status source = 0;
  std::string function;
  std::string message;

  void clear() noexcept {
    mapped = source = 0;
    function.clear();
    message.clear();
  }
};

struct thread_record {
  outcome last;
  outcome last_with_message;
};

thread_local thread_record s_record;

void assign(std::string& to, const char* text) noexcept {
  try {
    to.assign(text != nullptr ? text : "");
  } catch (const std::bad_alloc&) {
    to.clear();
  }
}

bool empty(const char* text) {
  return text == nullptr || *text == '\0';
}

/* The last report was a message that still lacks its function, and this one is its function. */
bool completes_last(const outcome& last, zvsdk_status mapped, const char* message) {
  return mapped == last.mapped && empty(message) && last.function.empty() && !last.message.empty();
}

void store(outcome& record, zvsdk_status mapped, zvsdk_status source, const char* function,
           const char* message) noexcept {
  const bool keep_message = completes_last(record, mapped, message);
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

zvsdk_status table_release(const zvsdk_errorinfo_interface*) {
  return 0;
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
