// The exported calls on a results handle. Finished results never change: no lock is taken.
#include "module/playlist_frame.h"
#include "pdl/playlist_results.h"
#include "support/zcsl_error.h"

namespace {

// The vector says "end of range"; behind the last result there is nothing to be found.
zvsdk_status entry_at(playlist_results* results, uint32_t index, playlist_result_entry** entry) {
  void* record = nullptr;
  const zvsdk_status status = zcsl_vector2_getindex(results->entries, index, &record);
  *entry = static_cast<playlist_result_entry*>(record);
  return status == zcsl_warn_end_of_range ? zcsl_warn_not_found : status;
}

}  // namespace

zvsdk_status zvsdk_playlist_results_count(playlist_results* results, uint32_t* count) {
  playlist_call call(__func__, "zvsdk_playlist_results_count( %p, %p )", results, count);
  call.require(count, playlist_report::log_only).handle(results, playlist_results_magic);
  if (call.refused()) return call.refusal();
  return call.finish(zcsl_vector2_count(results->entries, count), playlist_report::log_only);
}

zvsdk_status zvsdk_playlist_results_enum(playlist_results* results, uint32_t index,
                                         const char** ident, const char** collection_name) {
  playlist_call call(__func__, "zvsdk_playlist_results_enum( %p, %u, %p, %p )", results, index,
                     ident, collection_name);
  call.require(ident, playlist_report::log_only).handle(results, playlist_results_magic);
  if (call.refused()) return call.refusal();

  playlist_result_entry* entry = nullptr;
  zvsdk_status status = entry_at(results, index, &entry);
  if (status == 0)
    status = zcsl_stringtable_get_value(entry->collection->idents, entry->ident, ident, nullptr);
  if (status == 0 && collection_name != nullptr) *collection_name = entry->collection->name;
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_results_get_score(playlist_results* results, uint32_t index,
                                              int32_t* score) {
  playlist_call call(__func__, "zvsdk_playlist_results_get_score( %p, %u, %p )", results, index,
                     score);
  call.require(score, playlist_report::log_only).handle(results, playlist_results_magic);
  if (call.refused()) return call.refusal();

  playlist_result_entry* entry = nullptr;
  const zvsdk_status status = entry_at(results, index, &entry);
  if (status == 0) *score = entry->score;
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_results_release(playlist_results* results) {
  playlist_call call(__func__, "zvsdk_playlist_results_release( %p )", results);
  if (call.refused()) return call.refusal();
  if (results == nullptr) return 0;
  if (call.handle(results, playlist_results_magic).refused()) return call.refusal();
  return call.finish(_playlist_results_release(results), playlist_report::log_only);
}
