// The table that the host is given for each collection, and the life of its contexts.
#include "providers/playlist_impl_intf_vibegrid.h"

#include <utility>

#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_log.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_impl_intf_vibegrid";

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(status, line, s_source);
}

// The destructor given to the manager.
zvsdk_status context_delete(void* data) {
  auto* context = static_cast<playlist_vibegrid_context*>(data);
  zcsl_hashmap_delete(context->estimate_map);
  zcsl_spinlock_delete(&context->lock);
  zcsl_memory_free(context);
  return 0;
}

// A reference on the handle of a context.
void unpin(void* context) {
  g_playlist_handlemanager_interface->handle_release(context);
}
using pinned_context = zcsl_owner<void, unpin>;

zvsdk_status create_context(playlist_collection* collection, pinned_context* context) {
  zcsl_block_owner<playlist_vibegrid_context> made(static_cast<playlist_vibegrid_context*>(
      zcsl_memory_calloc(1, sizeof(playlist_vibegrid_context))));
  if (!made) return playlist_error_no_memory;
  made->collection = collection;
  const zvsdk_status status = g_playlist_handlemanager_interface->handle_register(
      g_playlist_client_ref, made.get(), playlist_vibegrid_context_magic, context_delete);
  if (status == 0) context->reset(made.release());
  return status;
}

zvsdk_status _playlist_vibegrid_register_collection(playlist_collection* collection) {
  pinned_context context;
  zvsdk_status status = create_context(collection, &context);
  if (status != 0) return logged(status);
  status = g_playlist_sdkmanager_interface->provider_register(
      g_playlist_client_ref, ZVSDK_VIBEGRID_INTERFACE, nullptr,
      &s_playlist_vibegrid_datasource_provider, sizeof(s_playlist_vibegrid_datasource_provider),
      context.get(), &collection->vibegrid_registration);
  if (status == 0) (void)context.release();  // the registration's from here on
  return logged(status);
}

// The context may outlive this for a moment, in the hands of a thread that comes too late.
zvsdk_status _playlist_vibegrid_deregister_collection(playlist_collection* collection) {
  if (collection->vibegrid_registration == nullptr) return 0;
  void* data = nullptr;
  const zvsdk_status status = g_playlist_sdkmanager_interface->provider_deregister(
      std::exchange(collection->vibegrid_registration, nullptr), &data);
  if (status != 0) return logged(status);
  const pinned_context context(data);
  auto* record = static_cast<playlist_vibegrid_context*>(data);
  const zcsl_spin_guard guard(&record->lock);
  record->collection = nullptr;
  return 0;
}

zvsdk_status get_name(void* context, const char** value) {
  playlist_collection* collection = nullptr;
  zvsdk_status status = playlist_vibegrid_acquire(context, &collection);
  if (status != 0) return status;
  status = zvsdk_playlist_collection_get_name(collection, value);
  playlist_collection_release(collection);
  return status;
}

struct constant_datum {
  const char* key;
  const char* value;
};
constexpr constant_datum s_constant_data[] = {
    {ZVSDK_VIBEGRID_PROVIDER_TYPE, "zvsdk_playlist"},
    {ZVSDK_VIBEGRID_PROVIDER_NETWORK_USE, "FALSE"},
};

zvsdk_status _playlist_vibegrid_datasource_data_get(void*, void* context, const char* key,
                                                    const char** value) {
  if (value == nullptr || zcsl_string_isempty(key)) return logged(playlist_error_invalid_arg);
  if (zcsl_string_equal(key, ZVSDK_VIBEGRID_PROVIDER_NAME, 0))
    return logged(get_name(context, value));
  for (const constant_datum& datum : s_constant_data) {
    if (!zcsl_string_equal(key, datum.key, 0)) continue;
    *value = datum.value;
    return 0;
  }
  return logged(playlist_error_invalid_arg);
}

uint32_t _playlist_vibegrid_datasource_capabilities(void*, void*) {
  return 0;
}

zvsdk_status _playlist_vibegrid_datasource_zdo_get(void*, void*, const char*, zvsdk_zdo**) {
  return playlist_error_unsupported;
}

zvsdk_status _playlist_vibegrid_datasource_option_get(void*, void*, const char*, const char**) {
  return playlist_error_unsupported;
}

zvsdk_status _playlist_vibegrid_datasource_option_set(void*, void*, const char*, const char*) {
  return playlist_error_unsupported;
}

}  // namespace

constexpr zvsdk_vibegrid_datasource_provider s_playlist_vibegrid_datasource_provider = {
    .reserved = nullptr,
    .capabilities = _playlist_vibegrid_datasource_capabilities,
    .zdo_get = _playlist_vibegrid_datasource_zdo_get,
    .data_get = _playlist_vibegrid_datasource_data_get,
    .option_get = _playlist_vibegrid_datasource_option_get,
    .option_set = _playlist_vibegrid_datasource_option_set,
    .transaction_create = _playlist_vibegrid_datasource_transaction_create,
    .transaction_filter_create = _playlist_vibegrid_datasource_transaction_filter_create,
    .transaction_find = _playlist_vibegrid_datasource_transaction_find,
    .transaction_find_estimate = _playlist_vibegrid_datasource_transaction_find_estimate,
    .transaction_result_count = _playlist_vibegrid_datasource_transaction_result_count,
    .transaction_result_enum = _playlist_vibegrid_datasource_transaction_result_enum,
    .transaction_release = _playlist_vibegrid_datasource_transaction_release,
};
static_assert(sizeof(zvsdk_vibegrid_datasource_provider) == 13 * sizeof(void*));

constexpr playlist_datasource g_playlist_vibegrid_datasource = {
    .offer = _playlist_vibegrid_register_collection,
    .withdraw = _playlist_vibegrid_deregister_collection,
};

zvsdk_status playlist_vibegrid_acquire(void* context, playlist_collection** collection) {
  if (zvsdk_playlist_initchecks() == 0) return playlist_error_not_initialized;
  const zvsdk_handlemanager_interface& handles = *g_playlist_handlemanager_interface;
  zvsdk_status status = handles.handle_addref(context);
  if (status != 0) return _playlist_map_error(status);
  const pinned_context pinned(context);
  status = handles.handle_validate(context, playlist_vibegrid_context_magic);
  if (status != 0) return _playlist_map_error(status);
  auto* record = static_cast<playlist_vibegrid_context*>(context);
  const zcsl_spin_guard guard(&record->lock);
  // Null when it is withdrawn; refused when its last reference is just going.
  status = handles.handle_addref(record->collection);
  if (status == 0) *collection = record->collection;
  return _playlist_map_error(status);
}
