// The exported calls that bring a collection in step with the media that an application has: it
// announces what it has, and a pass tells it the differences. Announcements live in the collection
// under its lock; a pass takes them out and owns them from then on, so that what is announced
// meanwhile waits for the next pass.
#include <algorithm>
#include <utility>

#include "collections/playlist_collection.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_error.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_vector2_internal.h"

namespace {

// Ident references in their order, by their difference.
int32_t playlist_sync_del_compare(const void* a, const void* b) {
  return static_cast<int32_t>(*static_cast<const uint32_t*>(a) - *static_cast<const uint32_t*>(b));
}

bool comes_before(uint32_t a, uint32_t b) {
  return playlist_sync_del_compare(&a, &b) < 0;
}

// A vector of ident references in the order in which they are added.
zvsdk_status create_refs(zcsl_vector2** refs) {
  return zcsl_vector2_create(refs, sizeof(zcsl_stringtable_ref), 0, nullptr, nullptr);
}

zvsdk_status add_ref(zcsl_vector2* refs, zcsl_stringtable_ref ref) {
  return zcsl_vector2_add(refs, &ref, sizeof(ref), nullptr);
}

zvsdk_status start_announcing(playlist_collection* collection) {
  zvsdk_status status = 0;
  if (collection->sync_new == nullptr)
    status = playlist_collection_create_stringtable(&collection->sync_new);
  if (status == 0 && collection->sync_seen == nullptr) status = create_refs(&collection->sync_seen);
  return status;
}

// An ident that is held is noted as often as it is announced, any other once.
zvsdk_status announce(playlist_collection* collection, const char* ident) {
  const zcsl_write_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  if (const zvsdk_status failure = start_announcing(collection)) return failure;
  zcsl_stringtable_ref ref = 0;
  const zvsdk_status status = zcsl_stringtable_get_value_ref(collection->idents, ident, &ref);
  if (status == 0) return add_ref(collection->sync_seen, ref);
  if (status != zcsl_warn_not_found) return status;
  return zcsl_stringtable_add_value(collection->sync_new, ident, nullptr);
}

zvsdk_status is_announcing(playlist_collection* collection, bool* announcing) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() == 0)
    *announcing = collection->sync_seen != nullptr && collection->sync_new != nullptr;
  return guard.status();
}

// One pass, with the announcements that are its own.
class sync_pass {
 public:
  sync_pass(playlist_collection* collection, playlist_sync_callback callback, void* callback_data)
      : collection_(collection), callback_(callback), callback_data_(callback_data) {}

  // The callback may give back the last reference of others.
  zvsdk_status run() {
    if (const zvsdk_status failure = playlist_collection_addref(collection_)) return failure;
    const playlist_collection_reference held(collection_);
    zvsdk_status status = take_announcements();
    if (status == 0) status = find_unannounced();
    if (status == 0) status = report_removals();
    return status == 0 ? report_additions() : status;
  }

 private:
  zvsdk_status take_announcements();
  zvsdk_status find_unannounced();
  zvsdk_status merge_held(zcsl_vector2* unannounced);
  zvsdk_status copy_ident(zcsl_stringtable_ref ref, zcsl_string_owner* ident) const;
  zvsdk_status report_removals();
  zvsdk_status report_additions();
  void report(const char* ident, uint32_t status) {
    callback_(callback_data_, collection_, ident, status, &abort_);
  }

  playlist_collection* collection_;
  playlist_sync_callback callback_;
  void* callback_data_;
  zcsl_stringtable_owner new_;  // announced and not held
  zcsl_vector2_owner seen_;     // announced and held; later the references to report as removals
  uint8_t abort_ = 0;
};

// One of the two may be missing when another pass was faster, or when an announcement failed.
zvsdk_status sync_pass::take_announcements() {
  const zcsl_write_guard guard(collection_->rwlock);
  if (guard.status() != 0) return guard.status();
  new_.reset(std::exchange(collection_->sync_new, nullptr));
  seen_.reset(std::exchange(collection_->sync_seen, nullptr));
  return new_ && seen_ ? 0 : playlist_error_bad_state;
}

// Leaves in `seen_` what is announced and what is held without what is both.
//
// The plain way is to sort the vector and then to delete or add the reference of each held ident.
// Both are quadratic where they must not be: every deletion moves the rest, and idents announced in
// two sweeps are an unlucky order for zcsl_vector2_sort. Equal references are the same bytes, so
// any sort makes the same vector, and a merge makes the same difference: one announcement of a held
// ident goes, and further ones stay.
zvsdk_status sync_pass::find_unannounced() {
  const zcsl_vector2_view<uint32_t> seen(seen_.get());
  std::sort(seen.begin(), seen.end(), comes_before);
  zcsl_vector2_owner unannounced;
  zvsdk_status status = create_refs(unannounced.out());
  if (status == 0) status = merge_held(unannounced.get());
  if (status == 0) seen_ = std::move(unannounced);
  return status;
}

zvsdk_status sync_pass::merge_held(zcsl_vector2* unannounced) {
  const zcsl_read_guard guard(collection_->rwlock);
  if (guard.status() != 0) return guard.status();
  const zcsl_vector2_view<const uint32_t> seen(seen_.get());
  const uint32_t* next = seen.begin();
  uint32_t count = 0;
  zvsdk_status status = zcsl_stringtable_count(collection_->idents, &count);
  for (uint32_t i = 0; status == 0 && i < count; ++i) {
    zcsl_stringtable_ref held = 0;
    status = zcsl_stringtable_enum(collection_->idents, i, &held, nullptr);
    while (status == 0 && next != seen.end() && comes_before(*next, held))
      status = add_ref(unannounced, *next++);
    if (status != 0) return status;
    if (next != seen.end() && *next == held)
      ++next;
    else
      status = add_ref(unannounced, held);
  }
  while (status == 0 && next != seen.end()) status = add_ref(unannounced, *next++);
  return status;
}

// A copy, because the callback may change the collection, which moves its texts.
zvsdk_status sync_pass::copy_ident(zcsl_stringtable_ref ref, zcsl_string_owner* ident) const {
  const zcsl_read_guard guard(collection_->rwlock);
  if (guard.status() != 0) return guard.status();
  return playlist_collection_copy_text(collection_->idents, ref, ident);
}

zvsdk_status sync_pass::report_removals() {
  for (const uint32_t ref : zcsl_vector2_view<const uint32_t>(seen_.get())) {
    zcsl_string_owner ident;
    if (const zvsdk_status failure = copy_ident(ref, &ident)) return failure;
    report(ident.get(), playlist_sync_status_remove);
    if (abort_ != 0) return playlist_warn_aborted;
  }
  return 0;
}

// The status is that of the last ident that was read: to stop here is a success.
zvsdk_status sync_pass::report_additions() {
  uint32_t count = 0;
  zvsdk_status status = zcsl_stringtable_count(new_.get(), &count);
  for (uint32_t i = 0; i < count && abort_ == 0; ++i) {
    const char* ident = nullptr;
    status = zcsl_stringtable_enum(new_.get(), i, nullptr, &ident);
    if (status == 0) report(ident, playlist_sync_status_add);
  }
  return status;
}

}  // namespace

zvsdk_status zvsdk_playlist_collection_sync_ident_add(playlist_collection* collection,
                                                      const char* ident) {
  playlist_call call(__func__, "zvsdk_playlist_collection_sync_ident_add( %p, %s )", collection,
                     ident);
  call.require_text(ident).handle(collection, playlist_collection_magic);
  if (call.refused()) return call.refusal();
  return call.finish(announce(collection, ident));
}

zvsdk_status zvsdk_playlist_collection_sync_process(playlist_collection* collection,
                                                    playlist_sync_callback callback,
                                                    void* callback_data) {
  const void* callback_address = reinterpret_cast<const void*>(callback);
  playlist_call call(__func__, "zvsdk_playlist_collection_sync_process( %p, %p, %p )", collection,
                     callback_address, callback_data);
  call.handle(collection, playlist_collection_magic).require(callback_address);
  if (call.refused()) return call.refusal();

  bool announcing = false;
  const zvsdk_status locked = is_announcing(collection, &announcing);
  if (locked != 0) return call.finish(locked);
  if (!announcing) {  // recorded as one failure and returned as another, on purpose
    g_playlist_errorinfo_interface->errorinfo_set(playlist_error_invalid_arg,
                                                  playlist_error_invalid_arg, __func__, nullptr);
    return call.finish(playlist_error_bad_state, playlist_report::log_only);
  }
  return call.finish(sync_pass(collection, callback, callback_data).run());
}
