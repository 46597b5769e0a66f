// The storage table: handles are unwrapped, the work is done, failures go to the error record.

#include "manager/host.h"
#include "manager/service_tables.h"
#include "manager/storage/file.h"
#include "manager/storage/storage_status.h"
#include "manager/storage/table.h"
#include "manager/storage/transaction.h"

namespace manager::storage {
namespace {

using interface = zvsdk_storage_interface;

/* Like guarded, but what is thrown goes to the error record, as a message whose function is still
 * to come: a module that passes the status on completes it. A status that is returned does not: it
 * is an ordinary outcome. */
template <class Work>
zvsdk_status reported(Work work) noexcept {
  try {
    if constexpr (std::is_void_v<decltype(work(require_host().storage_handles))>) {
      work(require_host().storage_handles);
      return status_ok;
    } else {
      return work(require_host().storage_handles);
    }
  } catch (...) {
    std::string message;
    const zvsdk_status status = status_of_exception(message);
    record_outcome(status, status, nullptr, message.c_str());
    return status;
  }
}

void require_table(const interface* storage) {
  manager::require(storage == &storage_table);
}

/* Null is a no-op. */
template <class Handle, class Release>
zvsdk_status released(Handle* handle, Release release) {
  if (handle == nullptr) return status_ok;
  return reported([&](handles& of) { release(of, handle); });
}

template <class Result>
Result* require_result(Result* result) {
  *require_pointer(result) = {};
  return result;
}

zvsdk_status found_or_not(bool found) {
  return found ? status_ok : warn_not_found;
}

open_mode mode_of(uint32_t mode) {
  require(mode == ZVSDK_STORAGE_READ || mode == ZVSDK_STORAGE_READ_WRITE,
          "a table is opened in mode 1 or 2");
  return mode == ZVSDK_STORAGE_READ ? open_mode::read : open_mode::write;
}

zvsdk_status storage_release(const interface* storage) {
  return guarded([&] { require_table(storage); });
}

zvsdk_status storage_validate(const interface* storage, const char* file_name, const char* location,
                              zvsdk_storage_info* info) {
  return reported([&](handles&) {
    require_table(storage);
    require_pointer(info);
    require(info->size >= sizeof *info, "the size of the info record is not set");
    const uint32_t size = std::exchange(*info, {}).size;
    info->size = size;
    validate_file(path_of(file_name, location), *info);
  });
}

zvsdk_status storage_compact(const interface* storage, const char* file_name,
                             const char* location) {
  return reported([&](handles&) {
    require_table(storage);
    compact_file(path_of(file_name, location));
  });
}

zvsdk_status table_drop(const interface* storage, const char* file_name, const char* table_name,
                        const char* location) {
  return reported([&](handles&) {
    require_table(storage);
    require_table_name(table_name);
    table::drop(path_of(file_name, location), table_name);
  });
}

zvsdk_storage_schema* add_schema_of(handles& of, const table& described) {
  const auto& columns = described.definition().columns;
  auto made = std::make_shared<schema>();
  made->columns.assign(columns.begin(), columns.end());
  return of.schemas.add(std::move(made));
}

void release_schema_of(handles& of, table& described) {
  if (zvsdk_storage_schema* kept = described.take_schema()) of.schemas.take(kept);
}

/* Its first schema is made here: who cannot learn what a table looks like may give it up as
 * foreign, and want of memory must not bring that about. */
zvsdk_storage_table* add_table(handles& of, const std::shared_ptr<table>& opened) {
  opened->keep_schema(add_schema_of(of, *opened));
  try {
    return of.tables.add(opened);
  } catch (...) {
    release_schema_of(of, *opened);
    throw;
  }
}

zvsdk_status table_open(const interface* storage, const char* file_name, const char* table_name,
                        const char* location, uint32_t mode, zvsdk_storage_table** result) {
  return reported([&](handles& of) {
    require_result(result);
    require_table(storage);
    require_table_name(table_name);
    const std::string path = path_of(file_name, location);
    *result = add_table(of, table::open(path, table_name, mode_of(mode)));
  });
}

zvsdk_status table_create(const interface* storage, const char* file_name, const char* table_name,
                          const char* location, void*, zvsdk_storage_schema* columns,
                          zvsdk_storage_table** result) {
  return reported([&](handles& of) {
    require_result(result);
    require_table(storage);
    require_table_name(table_name);
    table_definition definition{.id = 0, .name = table_name, .columns = {}};
    const auto declared = of.schemas.get(columns);
    {
      std::lock_guard lock(declared->mutex);
      definition.columns.assign(declared->columns.begin(), declared->columns.end());
    }
    require(!definition.columns.empty(), "a table needs a column");
    const std::string path = path_of(file_name, location);
    *result = add_table(of, table::create(path, std::move(definition)));
  });
}

zvsdk_status table_get_schema(zvsdk_storage_table* handle, zvsdk_storage_schema** result) {
  return reported([&](handles& of) {
    require_result(result);
    const auto described = of.tables.get(handle);
    zvsdk_storage_schema* kept = described->take_schema();
    *result = kept != nullptr ? kept : add_schema_of(of, *described);
  });
}

zvsdk_status table_close(zvsdk_storage_table* handle) {
  return released(handle,
                  [](handles& of, auto* each) { release_schema_of(of, *of.tables.take(each)); });
}

zvsdk_status table_find(zvsdk_storage_table* handle, zvsdk_storage_record* key, void*,
                        zvsdk_storage_cursor** result) {
  return reported([&](handles& of) {
    require_result(result);
    auto selected = std::make_shared<cursor>();
    selected->over = of.tables.get(handle);
    const auto wanted = of.records.get(key);
    {
      std::lock_guard lock(wanted->mutex);
      selected->rows = selected->over->select(*wanted);
      if (selected->rows.empty() && !wanted->asks_for_every()) return warn_not_found;
    }
    *result = of.cursors.add(std::move(selected));
    return status_ok;
  });
}

/* A change of the row of a record, alone or in a transaction. */
template <class Change>
zvsdk_status change_row(zvsdk_storage_table* handle, zvsdk_storage_record* row,
                        zvsdk_storage_transaction* in, Change change) {
  return reported([&](handles& of) {
    const auto target = of.tables.get(handle);
    const auto values = of.records.get(row);
    const auto together = in != nullptr ? of.transactions.get(in) : nullptr;
    std::lock_guard lock(values->mutex);
    return found_or_not(change(*target, *values, together.get()));
  });
}

zvsdk_status table_put(zvsdk_storage_table* handle, zvsdk_storage_record* row,
                       zvsdk_storage_transaction* in) {
  return change_row(handle, row, in, [](table& target, record& values, transaction* together) {
    return target.put(values, together);
  });
}

zvsdk_status table_delete_record(zvsdk_storage_table* handle, zvsdk_storage_record* row,
                                 zvsdk_storage_transaction* in) {
  return change_row(handle, row, in, [](table& target, record& values, transaction* together) {
    return target.remove(values, together);
  });
}

zvsdk_status transaction_begin(const interface* storage, zvsdk_storage_transaction** result) {
  return reported([&](handles& of) {
    require_result(result);
    require_table(storage);
    *result = of.transactions.add(std::make_shared<transaction>());
  });
}

zvsdk_status transaction_commit(zvsdk_storage_transaction* handle) {
  return reported([&](handles& of) { of.transactions.take(handle)->commit(); });
}

zvsdk_status transaction_rollback(zvsdk_storage_transaction* handle) {
  return released(handle, [](handles& of, auto* each) { of.transactions.take(each)->roll_back(); });
}

zvsdk_status schema_create(const interface* storage, zvsdk_storage_schema** result) {
  return reported([&](handles& of) {
    require_result(result);
    require_table(storage);
    *result = of.schemas.add(std::make_shared<schema>());
  });
}

zvsdk_status schema_column_count(zvsdk_storage_schema* handle, uint32_t* count) {
  return reported([&](handles& of) {
    require_result(count);
    const auto columns = of.schemas.get(handle);
    std::lock_guard lock(columns->mutex);
    *count = static_cast<uint32_t>(columns->columns.size());
  });
}

zvsdk_status schema_get_column(zvsdk_storage_schema* handle, uint32_t index, const char** name,
                               uint32_t* type, uint32_t* flags) {
  return reported([&](handles& of) {
    const auto columns = of.schemas.get(handle);
    std::lock_guard lock(columns->mutex);
    if (index >= columns->columns.size()) return warn_not_found;
    const column& found = columns->columns[index];
    if (name != nullptr) *name = found.name.c_str();
    if (type != nullptr) *type = found.type;
    if (flags != nullptr) *flags = found.flags;
    return status_ok;
  });
}

zvsdk_status schema_add_column(zvsdk_storage_schema* handle, const char* name, uint32_t type,
                               uint32_t flags) {
  return reported([&](handles& of) { of.schemas.get(handle)->add(name, type, flags); });
}

zvsdk_status schema_release(zvsdk_storage_schema* handle) {
  return released(handle, [](handles& of, auto* each) { of.schemas.take(each); });
}

zvsdk_status record_create(const interface* storage, zvsdk_storage_record** result) {
  return reported([&](handles& of) {
    require_result(result);
    require_table(storage);
    *result = of.records.add(std::make_shared<record>());
  });
}

zvsdk_status set_value(zvsdk_storage_record* handle, const char* column, value_kind kind,
                       std::string_view bytes) {
  return reported([&](handles& of) {
    require_column_name(column);
    const auto values = of.records.get(handle);
    std::string copy(bytes);
    std::lock_guard lock(values->mutex);
    values->set(column, kind, std::move(copy));
  });
}

zvsdk_status record_set_binary(zvsdk_storage_record* handle, const char* column, const void* data,
                               uint32_t size, uint32_t flags) {
  if (flags != ZVSDK_STORAGE_VALUE || (data == nullptr && size != 0)) return error_invalid_arg;
  const char* bytes = data != nullptr ? static_cast<const char*>(data) : "";
  return set_value(handle, column, value_kind::binary, {bytes, size});
}

zvsdk_status record_set_string(zvsdk_storage_record* handle, const char* column, const char* text,
                               uint32_t flags) {
  if (flags == ZVSDK_STORAGE_EVERY && text == nullptr) {
    return set_value(handle, column, value_kind::every, {});
  }
  if (flags != ZVSDK_STORAGE_VALUE || text == nullptr) return error_invalid_arg;
  return set_value(handle, column, value_kind::text, text);
}

template <class Write>
zvsdk_status get_value(zvsdk_storage_record* handle, const char* column, value_kind kind,
                       Write write) {
  return reported([&](handles& of) {
    const auto values = of.records.get(handle);
    std::lock_guard lock(values->mutex);
    const std::string* found = values->get(require_text(column), kind);
    if (found == nullptr) return warn_not_found;
    write(*found);
    return status_ok;
  });
}

zvsdk_status record_get_binary(zvsdk_storage_record* handle, const char* column, const void** data,
                               uint32_t* size) {
  if (data == nullptr || size == nullptr) return error_invalid_arg;
  return get_value(handle, column, value_kind::binary, [&](const std::string& bytes) {
    *data = bytes.data();
    *size = static_cast<uint32_t>(bytes.size());
  });
}

zvsdk_status record_get_string(zvsdk_storage_record* handle, const char* column,
                               const char** text) {
  if (text == nullptr) return error_invalid_arg;
  return get_value(handle, column, value_kind::text,
                   [&](const std::string& bytes) { *text = bytes.c_str(); });
}

zvsdk_status record_release(zvsdk_storage_record* handle) {
  return released(handle, [](handles& of, auto* each) { of.records.take(each); });
}

zvsdk_status cursor_next(zvsdk_storage_cursor* handle, zvsdk_storage_record** result) {
  return reported([&](handles& of) {
    require_result(result);
    auto next = of.cursors.get(handle)->advance();
    if (next == nullptr) return warn_end;
    *result = of.records.add(std::move(next));
    return status_ok;
  });
}

zvsdk_status cursor_release(zvsdk_storage_cursor* handle) {
  return released(handle, [](handles& of, auto* each) { of.cursors.take(each); });
}

}  // namespace
}  // namespace manager::storage

namespace manager {

const zvsdk_storage_interface storage_table = {
    .storage_release = storage::storage_release,
    .storage_validate = storage::storage_validate,
    .storage_compact = storage::storage_compact,
    .table_drop = storage::table_drop,
    .table_open = storage::table_open,
    .table_create = storage::table_create,
    .table_get_schema = storage::table_get_schema,
    .table_close = storage::table_close,
    .table_find = storage::table_find,
    .table_put = storage::table_put,
    .table_delete_record = storage::table_delete_record,
    .transaction_begin = storage::transaction_begin,
    .transaction_commit = storage::transaction_commit,
    .transaction_rollback = storage::transaction_rollback,
    .schema_create = storage::schema_create,
    .schema_column_count = storage::schema_column_count,
    .schema_get_column = storage::schema_get_column,
    .schema_add_column = storage::schema_add_column,
    .schema_release = storage::schema_release,
    .record_create = storage::record_create,
    .record_set_binary = storage::record_set_binary,
    .record_set_string = storage::record_set_string,
    .record_get_binary = storage::record_get_binary,
    .record_get_string = storage::record_get_string,
    .record_release = storage::record_release,
    .cursor_next = storage::cursor_next,
    .cursor_release = storage::cursor_release,
};

}  // namespace manager
