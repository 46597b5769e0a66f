/*
 * handles.h: the handles of the storage service: what a slot of the handle space stands for is an
 * object that its users share, so that a call that runs while another thread gives the handle back
 * ends in peace. Objects that are left when the host stops end with their slots.
 */
#ifndef STORAGE_HANDLES_H
#define STORAGE_HANDLES_H

#include "manager/guard.h"
#include "manager/handle_space.h"

namespace manager::storage {

class table;
class transaction;
struct cursor;
struct record;
struct schema;

template <handle_kind Kind, class Object, class Handle>
struct slot : handle_slot {
  static constexpr handle_kind kind = Kind;
  using object_type = Object;
  using handle_type = Handle;

  std::mutex mutex;
  std::shared_ptr<Object> object;  // guarded by mutex
};

using table_slot = slot<handle_kind::stored_table, table, zvsdk_storage_table>;
using schema_slot = slot<handle_kind::stored_schema, schema, zvsdk_storage_schema>;
using record_slot = slot<handle_kind::stored_record, record, zvsdk_storage_record>;
using cursor_slot = slot<handle_kind::stored_cursor, cursor, zvsdk_storage_cursor>;
using transaction_slot =
    slot<handle_kind::stored_transaction, transaction, zvsdk_storage_transaction>;

template <class Slot>
class pool {
 public:
  using object = typename Slot::object_type;
  using handle = typename Slot::handle_type;

  explicit pool(handle_space& space) : space_(space), slots_(space) {}

  handle* add(std::shared_ptr<object> made) {
    Slot* taken = slots_.take();
    {
      std::lock_guard lock(taken->mutex);
      taken->object = std::move(made);
    }
    taken->revive();
    return reinterpret_cast<handle*>(taken);
  }

  /* The object of a live handle; anything else is an invalid argument. */
  std::shared_ptr<object> get(const handle* of) const {
    Slot* found = require_pointer(space_.live_slot<Slot>(of));
    std::lock_guard lock(found->mutex);
    require(found->object != nullptr);
    return found->object;
  }

  /* Ends the handle and gives its object. */
  std::shared_ptr<object> take(const handle* of) {
    Slot* found = require_pointer(space_.live_slot<Slot>(of));
    bool last = false;
    require(found->release(last));
    std::shared_ptr<object> taken;
    {
      std::lock_guard lock(found->mutex);
      taken = std::move(found->object);
    }
    slots_.give_back(found);
    return taken;
  }

 private:
  handle_space& space_;
  slot_pool<Slot> slots_;
};

struct handles {
  explicit handles(handle_space& space)
      : tables(space), schemas(space), records(space), cursors(space), transactions(space) {}

  pool<table_slot> tables;
  pool<schema_slot> schemas;
  pool<record_slot> records;
  pool<cursor_slot> cursors;
  pool<transaction_slot> transactions;
};

}  // namespace manager::storage

#endif
