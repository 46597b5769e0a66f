// The exported calls that keep collections on disk, list and remove them, and care for the file.
#include <algorithm>
#include <cstring>
#include <utility>

#include "collections/playlist_coll_serialize.h"
#include "collections/playlist_coll_storage.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "support/zcsl_guards.h"

namespace {

using storage_interface = zvsdk_storage_interface;

bool names_are_known() {
  return __atomic_load_n(&g_playlist_storage_dirty, __ATOMIC_RELAXED) == 0;
}

template <class Work>
zvsdk_status with_storage(Work work) {
  playlist_storage_service service;
  const zvsdk_status status = playlist_storage_obtain(&service);
  return status == 0 ? work(service.get()) : status;
}

zvsdk_status finish(playlist_call& call, zvsdk_status status, const char* message = nullptr) {
  return call.finish(
      status, status == playlist_error_no_storage ? "Storage provider is not enabled." : message);
}

// What a store needs of a collection, taken in one moment, so that no lock is held later.
struct stored_form {
  zcsl_block_owner<void> data;
  uint32_t length = 0;
  zcsl_string_owner name;
  zcsl_string_owner old_name;  // of the row to replace, where that is another
};

zvsdk_status take_form(playlist_collection* collection, stored_form* form) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  _playlist_coll_serialize(collection, form->data.out(), &form->length);
  form->name.reset(zcsl_string_strdup(collection->name));
  const char* stored_name = collection->stored_name;
  const bool is_renamed =
      stored_name != nullptr && zcsl_string_equal(stored_name, collection->name, 0) == 0;
  if (is_renamed) form->old_name.reset(zcsl_string_strdup(stored_name));
  return form->name && is_renamed == bool{form->old_name} ? 0 : playlist_error_no_memory;
}

// The row that the collection replaces, else a new one, with its name. A row that is found and then
// cannot be read stays as it is; one that is gone by then was removed by somebody else.
zvsdk_status row_for(const storage_interface* storage, zvsdk_storage_table* table,
                     const stored_form& form, playlist_storage_record* row) {
  const char* name = form.name.get();
  playlist_storage_record key(storage);
  playlist_storage_cursor cursor(storage);
  zvsdk_status status =
      playlist_storage_record_named(storage, form.old_name ? form.old_name.get() : name, key.out());
  if (status != 0) return status;
  if (storage->table_find(table, key.get(), nullptr, cursor.out()) != 0)
    return playlist_storage_record_named(storage, name, row->out());
  status = storage->cursor_next(cursor.get(), row->out());
  if (zvsdk_low_word(status) == ZVSDK_STORAGE_END)
    return playlist_storage_record_named(storage, name, row->out());
  if (status != 0) return status;
  return storage->record_set_string(row->get(), playlist_storage_column_name, name,
                                    ZVSDK_STORAGE_VALUE);
}

zvsdk_status put(const storage_interface* storage, zvsdk_storage_table* table,
                 const stored_form& form) {
  playlist_storage_record row(storage);
  zvsdk_status status = row_for(storage, table, form, &row);
  if (status == 0)
    status = storage->record_set_binary(row.get(), playlist_storage_column_data, form.data.get(),
                                        form.length, ZVSDK_STORAGE_VALUE);
  if (status == 0) status = storage->table_put(table, row.get(), nullptr);
  return status;
}

// The collection is stored under this name from here on.
zvsdk_status note_stored(playlist_collection* collection, zcsl_string_owner* name) {
  const zcsl_write_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  zvsdk_status status = 0;
  if (names_are_known()) {
    if (collection->stored_name != nullptr)
      zcsl_stringmap_value_delete(g_playlist_storage_names, collection->stored_name);
    status = zcsl_stringmap_value_add(g_playlist_storage_names, name->get(), nullptr);
  }
  zcsl_string_free(std::exchange(collection->stored_name, name->release()));
  return status;
}

zvsdk_status store(const storage_interface* storage, playlist_collection* collection) {
  stored_form form;
  zvsdk_status status = take_form(collection, &form);
  if (status != 0) return status;
  playlist_storage_table table(storage);
  // Whatever keeps it from being opened, making it anew is worth the try.
  if (_playlist_coll_storage_open(storage, table.out()) != 0)
    status = _playlist_coll_storage_create(storage, table.out());
  if (status == 0) status = put(storage, table.get(), form);
  if (status == 0) status = note_stored(collection, &form.name);
  return status;
}

zvsdk_status read_row(const storage_interface* storage, zvsdk_storage_record* row, const char* name,
                      playlist_collection_owner* record) {
  const void* data = nullptr;
  uint32_t size = 0;
  zvsdk_status status = storage->record_get_binary(row, playlist_storage_column_data, &data, &size);
  if (status == 0) status = _playlist_coll_deserialize(data, size, record->out());
  if (status != 0) return status;
  (*record)->stored_name = zcsl_string_strdup(name);
  if ((*record)->stored_name == nullptr) return playlist_error_no_memory;
  return playlist_collection_set_default_options(record->get());
}

// `message` tells of a name that is not there.
zvsdk_status load(const storage_interface* storage, const char* name,
                  playlist_collection** collection, zcsl_string_owner* message) {
  playlist_storage_table table(storage);
  playlist_storage_record row(storage);
  zvsdk_status status = _playlist_coll_storage_open(storage, table.out());
  if (status != 0) return status;
  status = playlist_storage_find(storage, table.get(), name, row.out());
  if (playlist_is_not_found(status))
    message->reset(zcsl_string_mprintf("collection '%s' not found", name));
  playlist_collection_owner record;
  if (status == 0) status = read_row(storage, row.get(), name, &record);
  if (status == 0) status = playlist_collection_hand_out(&record, collection);
  return status;
}

zvsdk_status remove(const storage_interface* storage, const char* name) {
  playlist_storage_table table(storage);
  playlist_storage_record row(storage);
  zvsdk_status status = _playlist_coll_storage_open(storage, table.out());
  if (status == 0) status = playlist_storage_find(storage, table.get(), name, row.out());
  if (status == 0) status = storage->table_delete_record(table.get(), row.get(), nullptr);
  if (status == 0 && names_are_known())
    status = zcsl_stringmap_value_delete(g_playlist_storage_names, name);
  return status;
}

// Reads the names of the file unless somebody has done so before.
zvsdk_status know_names() {
  if (names_are_known()) return 0;
  const zvsdk_status status = with_storage(_playlist_coll_storage_enum);
  if (status == 0) __atomic_store_n(&g_playlist_storage_dirty, uint8_t{0}, __ATOMIC_RELAXED);
  return status;
}

// The size that the caller has written stays, and bounds what is written behind it.
void clear(zvsdk_storage_info* info) {
  const uint32_t size = std::min<uint32_t>(info->size, sizeof(*info));
  if (size > sizeof(info->size))
    std::memset(reinterpret_cast<char*>(info) + sizeof(info->size), 0, size - sizeof(info->size));
}

void log_missing_file(const char* function) {
  if (g_playlist_storage_location != nullptr)
    zcsl_log(0, function, zcsl_log_information, playlist_package_code,
             "Playlist local database not found. Checked location '%s'.",
             g_playlist_storage_location);
  else
    zcsl_log(0, function, zcsl_log_information, playlist_package_code,
             "Playlist local database not found");
}

}  // namespace

zvsdk_status zvsdk_playlist_storage_store_collection(playlist_collection* collection) {
  playlist_call call(__func__, "zvsdk_playlist_storage_store_collection( %p )", collection);
  if (call.handle(collection, playlist_collection_magic).refused()) return call.refusal();
  return finish(call, with_storage([&](const storage_interface* storage) {
                  return store(storage, collection);
                }));
}

zvsdk_status zvsdk_playlist_storage_load_collection(const char* name,
                                                    playlist_collection** collection) {
  playlist_call call(__func__, "zvsdk_playlist_storage_load_collection( %s, %p )", name,
                     collection);
  if (call.require_text(name).require(collection).refused()) return call.refusal();
  zcsl_string_owner message;
  const zvsdk_status status = with_storage(
      [&](const storage_interface* storage) { return load(storage, name, collection, &message); });
  return finish(call, status, message.get());
}

zvsdk_status zvsdk_playlist_storage_count_collections(uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_storage_count_collections( %p )", count);
  if (call.require(count).refused()) return call.refusal();
  zvsdk_status status = know_names();
  if (status == 0) status = zcsl_stringmap_count(g_playlist_storage_names, count);
  return finish(call, status);
}

zvsdk_status zvsdk_playlist_storage_enum_collections(uint32_t index, const char** name) {
  playlist_call call(__func__, "zvsdk_playlist_storage_enum_collections( %u, %p )", index, name);
  if (call.require(name).refused()) return call.refusal();
  zvsdk_status status = know_names();
  if (status == 0)
    status = zcsl_stringmap_value_get(g_playlist_storage_names, index, name, nullptr);
  return finish(call, status);
}

zvsdk_status zvsdk_playlist_storage_remove_collection(const char* name) {
  playlist_call call(__func__, "zvsdk_playlist_storage_remove_collection( %s )", name);
  if (call.require_text(name).refused()) return call.refusal();
  return finish(
      call, with_storage([&](const storage_interface* storage) { return remove(storage, name); }));
}

zvsdk_status zvsdk_playlist_storage_compact() {
  playlist_call call = playlist_call::before_start(__func__, "zvsdk_playlist_storage_compact()");
  return finish(call, with_storage([](const storage_interface* storage) {
                  return storage->storage_compact(storage, playlist_storage_file,
                                                  g_playlist_storage_location);
                }));
}

zvsdk_status zvsdk_playlist_storage_location_set(const char* path) {
  playlist_call call =
      playlist_call::before_start(__func__, "zvsdk_playlist_storage_location_set( %s )", path);
  zcsl_string_free(std::exchange(g_playlist_storage_location, zcsl_string_strdup(path)));
  return call.finish(g_playlist_storage_location != nullptr ? 0 : playlist_error_no_memory);
}

zvsdk_status zvsdk_playlist_storage_validate(zvsdk_storage_info* info) {
  playlist_call call =
      playlist_call::before_start(__func__, "zvsdk_playlist_storage_validate( %p )", info);
  if (call.require(info).refused()) return call.refusal();
  clear(info);
  const zvsdk_status status = with_storage([&](const storage_interface* storage) {
    return storage->storage_validate(storage, playlist_storage_file, g_playlist_storage_location,
                                     info);
  });
  if (zvsdk_low_word(_playlist_map_error(status)) != ZVSDK_STORAGE_MISSING)
    return finish(call, status);
  log_missing_file(__func__);
  return call.finish(0);
}
