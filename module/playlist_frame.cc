// The shared frame of exported functions: init check, argument checks, mapping, error record, log.
#include "module/playlist_frame.h"

#include "module/playlist_services.h"
#include "support/zcsl_string.h"

namespace {

constexpr uint32_t s_class_error = 0x90000000u;

// Low words that mean the same in every package and have a code of their own here.
struct low_word_mapping {
  uint32_t low_word;
  zvsdk_status mapped;
};
constexpr low_word_mapping s_by_low_word[] = {
    {0x3, playlist_warn_not_found},
    {0x2, playlist_error_no_memory},
    {0x84, playlist_error_mapped_84},
    {0x361, playlist_warn_end_of_list},
};

// Packages of the host whose failures are told apart by package alone.
struct package_mapping {
  uint32_t package;
  zvsdk_status mapped;
};
constexpr package_mapping s_by_package[] = {
    {4, playlist_error_mapped_400},  {20, playlist_error_mapped_400},
    {7, playlist_error_mapped_404},  {14, playlist_error_mapped_405},
    {16, playlist_error_mapped_403},
};

}  // namespace

zvsdk_status _playlist_map_error(zvsdk_status error) {
  if (error == 0 || zvsdk_package(error) == zvsdk_package_playlist) return error;
  for (const low_word_mapping& row : s_by_low_word)
    if (row.low_word == zvsdk_low_word(error)) return row.mapped;
  for (const package_mapping& row : s_by_package)
    if (row.package == zvsdk_package(error)) return row.mapped;
  return s_class_error | playlist_package_code | zvsdk_low_word(error);
}

void playlist_call::check_initialized() {
  if (zvsdk_playlist_initchecks() != 0) return;
  // The error record's table may not exist, so this refusal goes to the log alone.
  zcsl_log(0, function_, zcsl_log_error, playlist_error_not_initialized,
           "playlist not initialized!");
  refusal_ = playlist_error_not_initialized;
}

zvsdk_status playlist_call::report(zvsdk_status result, const char* message, playlist_report how) {
  const zvsdk_status mapped = _playlist_map_error(result);
  if (how == playlist_report::record_and_log && g_playlist_errorinfo_interface != nullptr)
    g_playlist_errorinfo_interface->errorinfo_set(mapped, result, function_, message);
  return zcsl_logged(mapped, 0, function_);
}

playlist_call& playlist_call::require_that(bool holds, const char* message) {
  if (!refused() && !holds)
    refusal_ = report(playlist_error_invalid_arg, message, playlist_report::record_and_log);
  return *this;
}

playlist_call& playlist_call::require(const void* pointer, const char* message) {
  return require_that(pointer != nullptr, message);
}

playlist_call& playlist_call::require(const void* pointer, playlist_report how) {
  if (!refused() && pointer == nullptr) refusal_ = report(playlist_error_invalid_arg, nullptr, how);
  return *this;
}

playlist_call& playlist_call::require_text(const char* text, const char* message) {
  return require_that(zcsl_string_isempty(text) == 0, message);
}

playlist_call& playlist_call::passed(zvsdk_status status) {
  if (!refused() && status != 0)
    refusal_ = report(status, nullptr, playlist_report::record_and_log);
  return *this;
}

template <class Validate>
playlist_call& playlist_call::validate(const void* handle, Validate validate) {
  require(handle);
  return refused() ? *this : passed(validate());
}

playlist_call& playlist_call::handle(const void* handle, uint32_t magic) {
  return validate(
      handle, [=] { return g_playlist_handlemanager_interface->handle_validate(handle, magic); });
}

playlist_call& playlist_call::user(const zvsdk_user* user) {
  return validate(user,
                  [=] { return g_playlist_handlemanager_interface->handle_validate_user(user); });
}

playlist_call& playlist_call::object(const zvsdk_zdo* object) {
  return validate(object,
                  [=] { return g_playlist_handlemanager_interface->handle_validate_zdo(object); });
}

playlist_call& playlist_call::element(const zvsdk_list_element* element) {
  return validate(element, [=] {
    return g_playlist_handlemanager_interface->handle_validate_list_element(element);
  });
}

zvsdk_status playlist_call::finish(zvsdk_status result, const char* message) {
  return report(result, message, playlist_report::record_and_log);
}

zvsdk_status playlist_call::finish(zvsdk_status result, playlist_report how) {
  return report(result, nullptr, how);
}
