// The collection record from birth to death: its parts, default options, references and freeing.
#include "collections/playlist_collection.h"
#include "collections/playlist_datasource.h"
#include "module/playlist_services.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_coll_record";

struct option_default {
  const char* key;
  const char* value;
};
constexpr option_default s_default_options[] = {
    {ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "25"},
    {ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "2"},
    {ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "1"},
    {ZVSDK_PLAYLIST_OPTION_RANDOM, "0"},
};

// The order of joined collections by name. Their vector is not kept sorted: it finds with this.
int32_t _playlist_coll_vector_compare(const void* a, const void* b) {
  return zcsl_string_strcmp(static_cast<const playlist_collection*>(a)->name,
                            static_cast<const playlist_collection*>(b)->name);
}

zvsdk_status create_parts(playlist_collection* collection) {
  zvsdk_status status =
      zcsl_hashtable_create(&collection->attributes, 0, _playlist_attrinfo_hashtable_delete);
  if (status == 0) status = zcsl_thread_rwlock_create(&collection->rwlock);
  if (status == 0) status = playlist_collection_create_stringtable(&collection->idents);
  if (status == 0) status = playlist_collection_create_stringtable(&collection->strings);
  if (status == 0)
    status = zcsl_stringmap_create(&collection->options, zcsl_hashtable_flag_threadsafe);
  if (status == 0)
    status = zcsl_vector_create(&collection->joined, 0, _playlist_coll_vector_compare, nullptr);
  if (status == 0) status = zcsl_vector_add(collection->joined, collection);
  return status;
}

// The collection's own entry holds no reference.
void release_joined(playlist_collection* collection) {
  for (uint32_t i = 0; auto* joined = playlist_collection_joined_at(collection, i); ++i)
    if (joined != collection) playlist_collection_release(joined);
}

// What the manager runs when the last reference goes.
zvsdk_status playlist_coll_handle_delete(void* handle) {
  auto* collection = static_cast<playlist_collection*>(handle);
  if (collection->vibegrid_registration != nullptr && g_playlist_datasource != nullptr)
    g_playlist_datasource->withdraw(collection);
  return playlist_collection_delete(collection);
}

}  // namespace

zcsl_spinlock g_playlist_collection_names_lock;
const playlist_datasource* g_playlist_datasource = nullptr;

zvsdk_status playlist_collection_create_stringtable(zcsl_stringtable** table) {
  const zvsdk_status status = zcsl_stringtable_create(table, 0);
  // A table that lacks a part for want of memory says so by leaving the output alone.
  return status == 0 && *table == nullptr ? playlist_error_no_memory : status;
}

zvsdk_status playlist_collection_copy_text(zcsl_stringtable* table, zcsl_stringtable_ref ref,
                                           zcsl_string_owner* copy) {
  const char* text = nullptr;
  const zvsdk_status status = zcsl_stringtable_get_value(table, ref, &text, nullptr);
  if (status != 0) return status;
  copy->reset(zcsl_string_strdup(text));
  return *copy ? 0 : playlist_error_no_memory;
}

zvsdk_status playlist_collection_create(playlist_collection** collection) {
  playlist_collection_owner record(
      static_cast<playlist_collection*>(zcsl_memory_calloc(1, sizeof(playlist_collection))));
  if (!record) return zcsl_logged(playlist_error_no_memory, __LINE__, s_source);
  record->magic = playlist_collection_magic;
  const zvsdk_status status = create_parts(record.get());
  if (status == 0) *collection = record.release();
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status playlist_collection_delete(playlist_collection* collection) {
  if (collection == nullptr) return 0;
  zcsl_thread_rwlock_delete(collection->rwlock);
  release_joined(collection);
  zcsl_vector_delete(collection->joined);
  zcsl_hashtable_delete(collection->attributes);
  zcsl_stringtable_delete(collection->idents);
  zcsl_stringtable_delete(collection->strings);
  zcsl_stringmap_delete(collection->options);
  zcsl_stringtable_delete(collection->sync_new);
  zcsl_vector2_delete(collection->sync_seen);
  zcsl_string_free(collection->name);
  zcsl_string_free(collection->stored_name);
  zcsl_memory_free(collection);
  return 0;
}

zvsdk_status playlist_collection_addref(playlist_collection* collection) {
  if (collection == nullptr) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  return g_playlist_handlemanager_interface->handle_addref(collection);
}

zvsdk_status playlist_collection_release(playlist_collection* collection) {
  return g_playlist_handlemanager_interface->handle_release(collection);
}

zvsdk_status playlist_collection_hand_out(playlist_collection_owner* record,
                                          playlist_collection** collection) {
  const zvsdk_status status = g_playlist_handlemanager_interface->handle_register(
      g_playlist_client_ref, record->get(), (*record)->magic, playlist_coll_handle_delete);
  if (status != 0) return status;
  *collection = record->release();
  if (g_playlist_datasource != nullptr) g_playlist_datasource->offer(*collection);
  return 0;
}

zvsdk_status playlist_collection_set_default_options(playlist_collection* collection) {
  for (const option_default& option : s_default_options) {
    const zvsdk_status status =
        zcsl_stringmap_value_add(collection->options, option.key, option.value);
    if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  }
  return 0;
}

zvsdk_status playlist_collection_get_name_syncronized(playlist_collection* collection,
                                                      const char** name) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() == 0) *name = collection->name;
  return guard.status();
}
