// The exported calls that join collections: joining, counting, listing, finding and taking out.
#include "collections/playlist_collection.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_no_collection[] = "Parameter p_joined_collection cannot be null.";
constexpr char s_no_name[] = "Parameter collection_name cannot be null or empty.";

void release_element(void* collection) {
  playlist_collection_release(static_cast<playlist_collection*>(collection));
}

zvsdk_status add_element(zcsl_vector* joined, playlist_collection* element) {
  zvsdk_status status = playlist_collection_addref(element);
  if (status != 0) return status;
  status = zcsl_vector_add(joined, element);
  if (status != 0) playlist_collection_release(element);
  return status;
}

// What the source is made of, itself first, with a reference each. Its lock is given back before
// the destination's is taken, so that two threads may join two collections crosswise.
zvsdk_status take_elements(playlist_collection* source, zcsl_vector_owner* elements) {
  const zcsl_read_guard guard(source->rwlock);
  zvsdk_status status = guard.status();
  if (status == 0) status = zcsl_vector_create(elements->out(), 0, nullptr, release_element);
  for (uint32_t i = 0; status == 0; ++i) {
    auto* element = playlist_collection_joined_at(source, i);
    if (element == nullptr) break;
    status = add_element(elements->get(), element);
  }
  return status;
}

// The place of a name from `first` on, exactly, in what a collection is made of; or past the end.
// The lock on names is held.
uint32_t find_name(zcsl_vector* elements, const char* name, uint32_t first) {
  for (;; ++first) {
    const playlist_collection* element = playlist_collection_at(elements, first);
    if (element == nullptr || zcsl_string_equal(element->name, name, 0)) return first;
  }
}

// The same for a caller without that lock. Indexes hold as long as the vector is locked.
uint32_t locked_find_name(zcsl_vector* elements, const char* name, uint32_t first) {
  const zcsl_spin_guard names(&g_playlist_collection_names_lock);
  return find_name(elements, name, first);
}

bool have_common_name(zcsl_vector* destination, zcsl_vector* source) {
  for (uint32_t i = 0; const auto* element = playlist_collection_at(source, i); ++i)
    if (playlist_collection_at(destination, find_name(destination, element->name, 0)) != nullptr)
      return true;
  return false;
}

// Two parts of one name are refused. The message names the source, whichever pair it was.
bool may_join(playlist_collection* destination, zcsl_vector* elements, const char* function) {
  const zcsl_spin_guard names(&g_playlist_collection_names_lock);
  if (!have_common_name(destination->joined, elements)) return true;
  g_playlist_errorinfo_interface->errorinfo_set_format(
      playlist_error_invalid_arg, playlist_error_invalid_arg, function,
      "Destination collection already has collection named %s .",
      playlist_collection_at(elements, 0)->name);
  return false;
}

// The outcome is that of the last element; what was added stays.
zvsdk_status join(playlist_collection* destination, playlist_collection* source,
                  const char* function) {
  zcsl_vector_owner elements;
  zvsdk_status status = take_elements(source, &elements);
  if (status != 0) return status;
  const zcsl_write_guard guard(destination->rwlock);
  if (guard.status() != 0) return guard.status();
  if (!may_join(destination, elements.get(), function)) return playlist_error_invalid_arg;
  for (uint32_t i = 0; auto* element = playlist_collection_at(elements.get(), i); ++i)
    status = add_element(destination->joined, element);
  return status;
}

zvsdk_status count_joined(playlist_collection* collection, uint32_t* count) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  uint32_t all = 0;
  const zvsdk_status status = zcsl_vector_count(collection->joined, &all);
  if (status == 0) *count = all - 1;
  return status;
}

// To the application, which releases it.
zvsdk_status give_reference(playlist_collection* element, playlist_collection** out) {
  const zvsdk_status status = playlist_collection_addref(element);
  if (status == 0) *out = element;
  return status;
}

zvsdk_status enum_joined(playlist_collection* collection, uint32_t index,
                         playlist_collection** out) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  void* element = nullptr;
  const uint32_t behind_itself = index != UINT32_MAX ? index + 1 : index;
  const zvsdk_status status = zcsl_vector_getindex(collection->joined, behind_itself, &element);
  return status != 0 ? status : give_reference(static_cast<playlist_collection*>(element), out);
}

zvsdk_status get_joined(playlist_collection* collection, const char* name,
                        playlist_collection** out) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  auto* element =
      playlist_collection_at(collection->joined, locked_find_name(collection->joined, name, 0));
  return element != nullptr ? give_reference(element, out) : playlist_error_not_found;
}

// Takes an element out with its reference.
zvsdk_status take_joined(playlist_collection* collection, const char* name, void** element) {
  const zcsl_write_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  const uint32_t index = locked_find_name(collection->joined, name, 1);
  if (playlist_collection_at(collection->joined, index) == nullptr) return playlist_error_not_found;
  return zcsl_vector_removeindex(collection->joined, index, element);
}

zvsdk_status remove_joined(playlist_collection* collection, const char* name) {
  void* element = nullptr;
  const zvsdk_status status = take_joined(collection, name, &element);
  return status != 0 ? status
                     : playlist_collection_release(static_cast<playlist_collection*>(element));
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_join(playlist_collection* destination,
                                            playlist_collection* source) {
  playlist_call call(__func__, "zvsdk_playlist_collection_join( %p, %p )", destination, source);
  call.handle(destination, playlist_collection_magic).handle(source, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(join(destination, source, __func__));
}

zvsdk_status zvsdk_playlist_collection_join_count(playlist_collection* collection,
                                                  uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_collection_join_count( %p, %p )", collection, count);
  call.handle(collection, playlist_collection_magic)
      .require(count, "Parameter p_count cannot be null.");
  if (call.refused()) return call.refusal();
  return call.finish(count_joined(collection, count));
}

zvsdk_status zvsdk_playlist_collection_join_enum(playlist_collection* collection, uint32_t index,
                                                 playlist_collection** joined) {
  playlist_call call(__func__, "zvsdk_playlist_collection_join_enum( %p, %u, %p )", collection,
                     index, joined);
  call.handle(collection, playlist_collection_magic).require(joined, s_no_collection);
  if (call.refused()) return call.refusal();
  return call.finish(enum_joined(collection, index, joined));
}

zvsdk_status zvsdk_playlist_collection_join_get(playlist_collection* collection, const char* name,
                                                playlist_collection** joined) {
  playlist_call call(__func__, "zvsdk_playlist_collection_join_get( %p, %s, %p )", collection, name,
                     joined);
  call.handle(collection, playlist_collection_magic)
      .require(joined, s_no_collection)
      .require_text(name, s_no_name);
  if (call.refused()) return call.refusal();
  return call.finish(get_joined(collection, name, joined));
}

zvsdk_status zvsdk_playlist_collection_join_remove(playlist_collection* collection,
                                                   const char* name) {
  playlist_call call(__func__, "zvsdk_playlist_collection_join_remove( %p, %s )", collection, name);
  call.handle(collection, playlist_collection_magic).require_text(name, s_no_name);
  if (call.refused()) return call.refusal();
  return call.finish(remove_joined(collection, name));
}
