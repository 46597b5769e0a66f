// Start and stop of the module: the one place that knows every floor and wires them. A count of
// starts decides: only its first rise does the work and only its last fall undoes it.
#include "zvsdk_playlist.h"

#include <atomic>
#include <initializer_list>
#include <iterator>
#include <utility>

#include "attributes/playlist_impl_attributes.h"
#include "collections/playlist_datasource.h"
#include "collections/playlist_zdo_view.h"
#include "module/playlist_build_date.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "providers/playlist_impl_intf_vibegrid.h"
#include "support/zcsl_error.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_module.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "zvsdk_playlist";
constexpr char s_version[] = "3.10.5";

// What a stop is for, which decides how far it goes.
enum class stop_mode { failed_start = 0, shutdown = 1, ordered_by_manager = 2 };

zcsl_spinlock _g_initlock_playlist;               // guards start and stop, held across all of them
std::atomic<uint32_t> _g_initcount_playlist = 0;  // read without the lock by every call's check

// A thread that sees the module up also sees everything that the start has built.
uint32_t init_count() {
  return _g_initcount_playlist.load(std::memory_order_acquire);
}
void set_init_count(uint32_t count) {
  _g_initcount_playlist.store(count, std::memory_order_release);
}

struct support_module {
  zvsdk_status (*initialize)();
  zvsdk_status (*shutdown)();
};

// Started in this order, and stopped in it as well: each is counted, so the order does not matter.
constexpr support_module s_support_modules[] = {
    {zcsl_memory_initialize, zcsl_memory_shutdown},
    {zcsl_thread_initialize, zcsl_thread_shutdown},
    {zcsl_string_initialize, zcsl_string_shutdown},
    {zcsl_datatypes_initialize, zcsl_datatypes_shutdown},
    {zcsl_random_initialize, zcsl_random_shutdown},
};
constexpr uint32_t s_support_module_count = std::size(s_support_modules);

// `started` counts the modules to stop again, whatever the outcome.
zvsdk_status start_support(uint32_t* started) {
  for (*started = 0; *started < s_support_module_count; ++*started) {
    const zvsdk_status status = s_support_modules[*started].initialize();
    if (status != 0) return status;
  }
  return 0;
}

void stop_support(uint32_t started) {
  for (uint32_t i = 0; i < started; ++i) s_support_modules[i].shutdown();
}

// A line under the module's own package and again under that of the banners.
template <class... Args>
void log_banner(uint32_t level, const char* format, Args... args) {
  for (uint32_t package : {zvsdk_package_playlist, zvsdk_package_banner})
    zcsl_log(0, nullptr, level, package << 16, format, args...);
}

zvsdk_status create_storage_names() {
  const zvsdk_status status =
      zcsl_stringmap_create(&g_playlist_storage_names, zcsl_hashtable_flag_threadsafe);
  __atomic_store_n(&g_playlist_storage_dirty, uint8_t{1}, __ATOMIC_RELAXED);
  return status;
}

zvsdk_status _playlist_client_shutdown();

zvsdk_status start_services() {
  zvsdk_status status = g_playlist_sdkmanager_interface->client_register(
      zvsdk_package_playlist, "ZVSDK Playlst", _playlist_client_shutdown, nullptr,
      &g_playlist_client_ref);
  if (status == 0) status = playlist_services_acquire();
  if (status == 0) status = playlist_attributes_initialize();
  if (status == 0) status = create_storage_names();
  g_playlist_datasource = &g_playlist_vibegrid_datasource;
  return status;
}

void free_module_state() {
  g_playlist_datasource = nullptr;
  playlist_attributes_shutdown();
  playlist_zdo_shutdown();
  zcsl_stringmap_delete(std::exchange(g_playlist_storage_names, nullptr));
  zcsl_vector2_delete(std::exchange(g_playlist_attribute_mgr, nullptr));
  zcsl_string_free(std::exchange(g_playlist_storage_location, nullptr));
}

zvsdk_status _playlist_shutdown_func(stop_mode mode) {
  const zvsdk_status status =
      g_playlist_sdkmanager_interface->client_release(g_playlist_client_ref);
  if (status != 0 && mode != stop_mode::ordered_by_manager) {
    log_banner(zcsl_log_error, "Playlist Shutdown Failed: services still in use");
    return status;
  }
  log_banner(zcsl_log_information, "Playlist Shutdown");
  free_module_state();
  playlist_services_release();
  g_playlist_client_ref = nullptr;
  g_playlist_sdkmanager_interface = nullptr;
  if (mode != stop_mode::failed_start) stop_support(s_support_module_count);
  return 0;
}

zvsdk_status _playlist_init_func(zvsdk_sdkmanager* manager) {
  uint32_t started = 0;
  zvsdk_status status = start_support(&started);
  g_playlist_sdkmanager_interface = manager;
  if (status == 0) {
    status = start_services();
    if (status != 0) _playlist_shutdown_func(stop_mode::failed_start);
  }
  if (status != 0) {
    stop_support(started);
    return zcsl_logged(status, __LINE__, s_source);
  }
  log_banner(zcsl_log_information, "Playlist Initialize: Version %s  Built %s", s_version,
             playlist_build_date);
  return 0;
}

// Stops the module and sets the count to zero, if it is up and the stop succeeds.
zvsdk_status stop(stop_mode mode) {
  const zvsdk_status status = _playlist_shutdown_func(mode);
  if (status == 0) set_init_count(0);
  return status;
}

zvsdk_status _playlist_client_shutdown() {
  const zcsl_spin_guard guard(&_g_initlock_playlist);
  if (init_count() == 0) return zcsl_code_not_initialized;
  return stop(stop_mode::ordered_by_manager);
}

// An outcome of the start: what the application gets, where it came from, and its text.
struct start_outcome {
  zvsdk_status mapped;
  zvsdk_status source;
  const char* message;
};

start_outcome refuse_start(zvsdk_status status, const char* message) {
  return {status, status, message};
}

start_outcome check_manager(const zvsdk_sdkmanager* manager) {
  if (manager == nullptr)
    return refuse_start(playlist_error_invalid_arg, "given manager handle was null");
  if (manager->magic != ZVSDK_MANAGER_MAGIC)
    return refuse_start(playlist_error_bad_manager_handle, nullptr);
  if (!zcsl_string_equal(manager->version, s_version, 0))
    return refuse_start(playlist_error_version_mismatch,
                        "given manager handle was from a different version SDK");
  return {};
}

start_outcome start(zvsdk_sdkmanager* manager) {
  const zcsl_spin_guard guard(&_g_initlock_playlist);
  const zvsdk_status status = init_count() == 0 ? _playlist_init_func(manager) : 0;
  if (status != 0) return {playlist_error_init_failed, status, nullptr};
  set_init_count(init_count() + 1);
  return {};
}

}  // namespace

zvsdk_status zvsdk_playlist_initialize(zvsdk_sdkmanager* manager) {
  playlist_call::trace("zvsdk_playlist_initialize( %p )", manager);
  start_outcome outcome = check_manager(manager);
  if (outcome.mapped == 0) outcome = start(manager);
  // The error record's own table may not exist here.
  manager_errorinfo_set(outcome.mapped, outcome.source, __func__, outcome.message);
  return zcsl_logged(outcome.mapped, 0, __func__);
}

zvsdk_status zvsdk_playlist_shutdown() {
  playlist_call::trace("zvsdk_playlist_shutdown");
  zvsdk_status status = 0;
  {
    const zcsl_spin_guard guard(&_g_initlock_playlist);
    if (init_count() == 0)
      status = zcsl_code_not_initialized;
    else if (init_count() > 1)
      set_init_count(init_count() - 1);
    else
      status = stop(stop_mode::shutdown);
  }
  // Not recorded: the error record's table may be gone by now.
  return zcsl_logged(_playlist_map_error(status), 0, __func__);
}

uint32_t zvsdk_playlist_initchecks() {
  return init_count();
}

const char* zvsdk_playlist_get_version() {
  playlist_call::trace("zvsdk_playlist_get_version");
  return s_version;
}

const char* zvsdk_playlist_get_build_date() {
  playlist_call::trace("zvsdk_playlist_get_build_date");
  return playlist_build_date;
}
