/*
 * playlist_coll_storage.h: stored collections: rows of one table in one file of the host's storage,
 * a name and the serialized form each. Every call obtains the service and opens the table anew;
 * nothing of either outlives the call, and no lock of ours is held meanwhile.
 *
 * The names of what is stored are listed in g_playlist_storage_names, which has its own lock, once
 * somebody has asked for them (module/playlist_services.h).
 */
#ifndef PLAYLIST_COLL_STORAGE_H
#define PLAYLIST_COLL_STORAGE_H

#include "support/zcsl_owners.h"
#include "zvsdk_manager.h"
#include "zvsdk_playlist.h"

inline constexpr char playlist_storage_file[] = "zv_colls.zdb";
inline constexpr char playlist_storage_column_name[] = "coll_name";
inline constexpr char playlist_storage_column_data[] = "coll_data";

inline zvsdk_status playlist_storage_give_back(const zvsdk_storage_interface* storage) {
  return storage->storage_release(storage);
}
using playlist_storage_service =
    zcsl_owner<const zvsdk_storage_interface, playlist_storage_give_back>;

/* Obtains the host's storage, as every call does afresh: playlist_error_no_storage for any failure,
 * also for want of a manager. */
zvsdk_status playlist_storage_obtain(playlist_storage_service* service);

/* An object of the service, given back through a slot of the service's table. */
template <class Object, auto Slot>
class playlist_storage_owner {
 public:
  explicit playlist_storage_owner(const zvsdk_storage_interface* storage) : storage_(storage) {}
  playlist_storage_owner(const playlist_storage_owner&) = delete;
  playlist_storage_owner& operator=(const playlist_storage_owner&) = delete;
  ~playlist_storage_owner() { give_back(); }

  Object* get() const { return object_; }
  /* The place to hand to a function with an output parameter. */
  Object** out() {
    give_back();
    return &object_;
  }
  [[nodiscard]] Object* release() { return std::exchange(object_, nullptr); }
  zvsdk_status give_back() {
    Object* object = release();
    return object != nullptr ? (storage_->*Slot)(object) : 0;
  }

 private:
  const zvsdk_storage_interface* storage_;
  Object* object_ = nullptr;
};

using playlist_storage_table =
    playlist_storage_owner<zvsdk_storage_table, &zvsdk_storage_interface::table_close>;
using playlist_storage_schema =
    playlist_storage_owner<zvsdk_storage_schema, &zvsdk_storage_interface::schema_release>;
using playlist_storage_record =
    playlist_storage_owner<zvsdk_storage_record, &zvsdk_storage_interface::record_release>;
using playlist_storage_cursor =
    playlist_storage_owner<zvsdk_storage_cursor, &zvsdk_storage_interface::cursor_release>;

/*
 * Opens the table of collections. A table that is not what is written here is dropped with its rows
 * (playlist_error_storage_open), so that the next store makes it anew.
 */
zvsdk_status _playlist_coll_storage_open(const zvsdk_storage_interface* storage,
                                         zvsdk_storage_table** table);
/* Makes the table of collections, and what the file says about itself if that is missing. */
zvsdk_status _playlist_coll_storage_create(const zvsdk_storage_interface* storage,
                                           zvsdk_storage_table** table);
/* Lists the names anew. A missing file has none; after another failure the list holds what was read
 * until then. */
zvsdk_status _playlist_coll_storage_enum(const zvsdk_storage_interface* storage);

/* A new record with the name of a collection: a key to look for, or a row to be. */
zvsdk_status playlist_storage_record_named(const zvsdk_storage_interface* storage, const char* name,
                                           zvsdk_storage_record** record);
/* The row with that name. */
zvsdk_status playlist_storage_find(const zvsdk_storage_interface* storage,
                                   zvsdk_storage_table* table, const char* name,
                                   zvsdk_storage_record** row);

#endif
