// The exported calls that add media to a collection, count, list and find them, and remove them.
#include "collections/playlist_collection.h"
#include "collections/playlist_joined_guard.h"
#include "module/playlist_frame.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_string.h"

namespace {

// The checks that the three ways of adding share.
playlist_call& check_media(playlist_call& call, playlist_collection* collection,
                           const char* ident) {
  return call.require_text(ident).handle(collection, playlist_collection_magic);
}

zvsdk_status add_media(playlist_call& call, playlist_collection* collection, const char* ident,
                       zvsdk_zdo* object, zvsdk_list_element* element) {
  if (call.refused()) return call.refusal();
  const zvsdk_status status = _playlist_coll_add_media(collection, ident, object, element);
  if (status == 0) playlist_collection_count_change(collection);
  return call.finish(status);
}

// Shows `visit` the collection and what it joins, each under its read lock, until it returns false.
// The status is that of the locks alone.
template <class Visit>
zvsdk_status walk_joined(playlist_collection* collection, Visit visit) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  for (uint32_t i = 0; auto* element = playlist_collection_joined_at(collection, i); ++i) {
    const zcsl_nested_read_guard element_guard(element == collection ? nullptr : element->rwlock);
    if (element_guard.status() != 0) return element_guard.status();
    if (!visit(element)) return 0;
  }
  return 0;
}

zvsdk_status count_idents(playlist_collection* collection, uint32_t* count) {
  zvsdk_status status = 0;
  uint32_t total = 0;
  const zvsdk_status locked = walk_joined(collection, [&](playlist_collection* element) {
    uint32_t own = 0;
    status = zcsl_stringtable_count(element->idents, &own);
    total += own;
    return status == 0;
  });
  if (locked != 0) return locked;
  if (status == 0) *count = total;
  return status;
}

struct found_ident {
  const char* ident = nullptr;
  const char* collection_name = nullptr;
};

zvsdk_status enum_ident(playlist_collection* collection, uint32_t index, found_ident* found) {
  zvsdk_status status = playlist_error_end_of_list;
  uint32_t ahead = index;  // idents still to pass
  const zvsdk_status locked = walk_joined(collection, [&](playlist_collection* element) {
    uint32_t count = 0;
    const zvsdk_status counted = zcsl_stringtable_count(element->idents, &count);
    if (counted == 0 && ahead >= count) {
      ahead -= count;
      return true;
    }
    found->collection_name = element->name;
    status = counted != 0 ? counted
                          : zcsl_stringtable_enum(element->idents, ahead, nullptr, &found->ident);
    return false;
  });
  return locked != 0 ? locked : status;
}

zvsdk_status find_ident(playlist_collection* collection, const char* ident, uint32_t start,
                        uint32_t* index, const char** collection_name) {
  const playlist_joined_guard guard(collection);
  if (guard.status() != 0) return guard.status();
  playlist_collection* found_in = nullptr;
  const zvsdk_status status =
      playlist_collection_ident_find(collection, ident, start, index, &found_in);
  if (status == 0 && collection_name != nullptr) *collection_name = found_in->name;
  return status;
}

zvsdk_status remove_ident(playlist_collection* collection, const char* ident) {
  const zcsl_write_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  const zvsdk_status status = playlist_collection_remove_ident(collection, ident);
  if (status == 0) playlist_collection_count_change(collection);
  return status;
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_add_ident(playlist_collection* collection,
                                                 const char* ident) {
  playlist_call call(__func__, "zvsdk_playlist_collection_add_ident( %p, %s )", collection, ident);
  check_media(call, collection, ident);
  return add_media(call, collection, ident, nullptr, nullptr);
}

zvsdk_status zvsdk_playlist_collection_add_zdo(playlist_collection* collection, const char* ident,
                                               zvsdk_zdo* object) {
  playlist_call call(__func__, "zvsdk_playlist_collection_add_zdo( %p, %s, %p )", collection, ident,
                     object);
  check_media(call, collection, ident).object(object);
  return add_media(call, collection, ident, object, nullptr);
}

zvsdk_status zvsdk_playlist_collection_add_list_element(playlist_collection* collection,
                                                        const char* ident,
                                                        zvsdk_list_element* element) {
  playlist_call call(__func__, "zvsdk_playlist_collection_add_list_element( %p, %s, %p )",
                     collection, ident, element);
  check_media(call, collection, ident).element(element);
  return add_media(call, collection, ident, nullptr, element);
}

zvsdk_status zvsdk_playlist_collection_ident_count(playlist_collection* collection,
                                                   uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_collection_ident_count( %p, %p )", collection,
                     count);
  call.handle(collection, playlist_collection_magic).require(count);
  if (call.refused()) return call.refusal();
  return call.finish(count_idents(collection, count));
}

zvsdk_status zvsdk_playlist_collection_ident_enum(playlist_collection* collection, uint32_t index,
                                                  const char** ident,
                                                  const char** collection_name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_ident_enum( %p, %u, %p, %p )", collection,
                     index, ident, collection_name);
  call.handle(collection, playlist_collection_magic).require(ident);
  if (call.refused()) return call.refusal();

  found_ident found;
  const zvsdk_status status = enum_ident(collection, index, &found);
  if (status == 0) {
    *ident = found.ident;
    if (collection_name != nullptr) *collection_name = found.collection_name;
  }
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_collection_ident_find(playlist_collection* collection,
                                                  const char* ident, uint32_t start,
                                                  uint32_t* index, const char** collection_name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_ident_find( %p, %s, %u, %p, %p )",
                     collection, ident, start, index, collection_name);
  call.handle(collection, playlist_collection_magic).require_text(ident);
  call.require_that(zcsl_string_isvalid(ident) != 0);
  if (call.refused()) return call.refusal();
  return call.finish(find_ident(collection, ident, start, index, collection_name));
}

zvsdk_status zvsdk_playlist_collection_ident_remove(playlist_collection* collection,
                                                    const char* ident) {
  playlist_call call(__func__, "zvsdk_playlist_collection_ident_remove( %p, %s )", collection,
                     ident);
  call.require_text(ident).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(remove_ident(collection, ident));
}
