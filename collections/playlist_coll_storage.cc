// The table of stored collections: its shape, its making, the search for a row, the listing of
// names.
#include "collections/playlist_coll_storage.h"

#include <iterator>

#include "module/playlist_services.h"
#include "support/zcsl_log.h"

namespace {

constexpr char s_source[] = "playlist_coll_storage";

struct column {
  const char* name;
  uint32_t type;
  uint32_t flags;
};
struct table_shape {
  const char* name;
  column columns[2];
};
constexpr table_shape s_collections = {
    "zvsdk_collection",
    {{playlist_storage_column_name, ZVSDK_STORAGE_STRING, ZVSDK_STORAGE_COLUMN_KEY},
     {playlist_storage_column_data, ZVSDK_STORAGE_BINARY, 0}}};
constexpr table_shape s_file_info = {
    "zdb_info", {{"param", ZVSDK_STORAGE_STRING, 0}, {"value", ZVSDK_STORAGE_STRING, 0}}};

// What a file says about itself. For people: nothing here reads it.
constexpr const char* s_file_info_rows[][2] = {
    {"zvsdk_product_version", "3.08.6.5437"},
    {"zvsdk_library_version", "3.10.5"},
    {"zvsdk_zdb_format", "1.0.0"},
};

zvsdk_status open_table(const zvsdk_storage_interface* storage, const table_shape& shape,
                        uint32_t mode, zvsdk_storage_table** table) {
  return storage->table_open(storage, playlist_storage_file, shape.name,
                             g_playlist_storage_location, mode, table);
}

bool has_column(const zvsdk_storage_interface* storage, zvsdk_storage_schema* schema,
                uint32_t index, const column& wanted) {
  const char* name = nullptr;
  uint32_t type = 0;
  uint32_t flags = 0;
  return storage->schema_get_column(schema, index, &name, &type, &flags) == 0 &&
         zcsl_string_equal(name, wanted.name, 1) != 0 && type == wanted.type &&
         flags == wanted.flags;
}

bool has_shape(const zvsdk_storage_interface* storage, zvsdk_storage_table* table,
               const table_shape& shape) {
  playlist_storage_schema schema(storage);
  uint32_t count = 0;
  if (storage->table_get_schema(table, schema.out()) != 0 ||
      storage->schema_column_count(schema.get(), &count) != 0 || count != std::size(shape.columns))
    return false;
  for (uint32_t i = 0; i < count; ++i)
    if (!has_column(storage, schema.get(), i, shape.columns[i])) return false;
  return true;
}

zvsdk_status create_table(const zvsdk_storage_interface* storage, const table_shape& shape,
                          zvsdk_storage_table** table) {
  playlist_storage_schema schema(storage);
  zvsdk_status status = storage->schema_create(storage, schema.out());
  for (const column& each : shape.columns)
    if (status == 0)
      status = storage->schema_add_column(schema.get(), each.name, each.type, each.flags);
  if (status != 0) return status;
  return storage->table_create(storage, playlist_storage_file, shape.name,
                               g_playlist_storage_location, nullptr, schema.get(), table);
}

// The commit keeps all of the rows or none, so single outcomes are of no interest.
zvsdk_status put_file_info(const zvsdk_storage_interface* storage, zvsdk_storage_table* table) {
  playlist_storage_record record(storage);
  zvsdk_storage_transaction* transaction = nullptr;
  zvsdk_status status = storage->record_create(storage, record.out());
  if (status == 0) status = storage->transaction_begin(storage, &transaction);
  if (status != 0) return status;
  for (const auto& row : s_file_info_rows) {
    for (size_t i = 0; i < std::size(row); ++i)
      storage->record_set_string(record.get(), s_file_info.columns[i].name, row[i],
                                 ZVSDK_STORAGE_VALUE);
    storage->table_put(table, record.get(), transaction);
  }
  return storage->transaction_commit(transaction);
}

zvsdk_status write_file_info(const zvsdk_storage_interface* storage) {
  playlist_storage_table table(storage);
  if (open_table(storage, s_file_info, ZVSDK_STORAGE_READ, table.out()) == 0) return 0;
  zvsdk_status status = create_table(storage, s_file_info, table.out());
  if (status == 0) status = put_file_info(storage, table.get());
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status find_every(const zvsdk_storage_interface* storage, zvsdk_storage_table* table,
                        zvsdk_storage_cursor** cursor) {
  playlist_storage_record every(storage);
  zvsdk_status status = storage->record_create(storage, every.out());
  if (status == 0)
    status = storage->record_set_string(every.get(), playlist_storage_column_name, nullptr,
                                        ZVSDK_STORAGE_EVERY);
  if (status == 0) status = storage->table_find(table, every.get(), nullptr, cursor);
  return status;
}

zvsdk_status list_next_name(const zvsdk_storage_interface* storage, zvsdk_storage_cursor* cursor) {
  playlist_storage_record row(storage);
  const char* name = nullptr;
  zvsdk_status status = storage->cursor_next(cursor, row.out());
  if (status == 0)
    status = storage->record_get_string(row.get(), playlist_storage_column_name, &name);
  if (status == 0) status = zcsl_stringmap_value_add(g_playlist_storage_names, name, nullptr);
  if (status == 0) status = row.give_back();
  return status;
}

// Until the last name or a failure, whose status is the outcome.
zvsdk_status list_names(const zvsdk_storage_interface* storage) {
  playlist_storage_table table(storage);
  playlist_storage_cursor cursor(storage);
  zvsdk_status status = _playlist_coll_storage_open(storage, table.out());
  if (status == 0) status = find_every(storage, table.get(), cursor.out());
  while (status == 0) status = list_next_name(storage, cursor.get());
  return status;
}

}  // namespace

zvsdk_status playlist_storage_obtain(playlist_storage_service* service) {
  void* table = nullptr;
  if (g_playlist_sdkmanager_interface == nullptr ||
      g_playlist_sdkmanager_interface->interface_get(ZVSDK_STORAGE_INTERFACE, nullptr, nullptr,
                                                     &table) != 0 ||
      table == nullptr)
    return playlist_error_no_storage;
  service->reset(static_cast<const zvsdk_storage_interface*>(table));
  return 0;
}

zvsdk_status _playlist_coll_storage_open(const zvsdk_storage_interface* storage,
                                         zvsdk_storage_table** table) {
  if (storage == nullptr) return zcsl_logged(playlist_error_invalid_arg, __LINE__, s_source);
  playlist_storage_table opened(storage);
  const zvsdk_status status =
      open_table(storage, s_collections, ZVSDK_STORAGE_READ_WRITE, opened.out());
  if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  if (!has_shape(storage, opened.get(), s_collections)) {
    storage->table_drop(storage, playlist_storage_file, s_collections.name,
                        g_playlist_storage_location);
    return zcsl_logged(playlist_error_storage_open, __LINE__, s_source);
  }
  *table = opened.release();
  return 0;
}

zvsdk_status _playlist_coll_storage_create(const zvsdk_storage_interface* storage,
                                           zvsdk_storage_table** table) {
  const zvsdk_status status = create_table(storage, s_collections, table);
  if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  write_file_info(storage);
  return 0;
}

zvsdk_status _playlist_coll_storage_enum(const zvsdk_storage_interface* storage) {
  zcsl_stringmap_clear(g_playlist_storage_names);
  const zvsdk_status status = list_names(storage);
  const uint32_t ending = zvsdk_low_word(status);
  if (ending == ZVSDK_STORAGE_MISSING || ending == ZVSDK_STORAGE_END) return 0;
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status playlist_storage_record_named(const zvsdk_storage_interface* storage, const char* name,
                                           zvsdk_storage_record** record) {
  const zvsdk_status status = storage->record_create(storage, record);
  if (status != 0) return status;
  return storage->record_set_string(*record, playlist_storage_column_name, name,
                                    ZVSDK_STORAGE_VALUE);
}

zvsdk_status playlist_storage_find(const zvsdk_storage_interface* storage,
                                   zvsdk_storage_table* table, const char* name,
                                   zvsdk_storage_record** row) {
  playlist_storage_record key(storage);
  playlist_storage_cursor cursor(storage);
  zvsdk_status status = playlist_storage_record_named(storage, name, key.out());
  if (status == 0) status = storage->table_find(table, key.get(), nullptr, cursor.out());
  if (status == 0) status = storage->cursor_next(cursor.get(), row);
  return status;
}
