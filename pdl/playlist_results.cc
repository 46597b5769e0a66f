// The results object: making, filling, ranking and freeing it.
#include "pdl/playlist_results.h"

#include <cstddef>

#include "module/playlist_services.h"
#include "support/zcsl_log.h"
#include "support/zcsl_vector2_internal.h"

namespace {

constexpr char s_source[] = "playlist_results";

void release_contributor(void* collection) {
  playlist_collection_release(static_cast<playlist_collection*>(collection));
}

zvsdk_status fill(playlist_results* results, playlist_collection* collection) {
  results->magic = playlist_results_magic;
  zvsdk_status status = playlist_collection_addref(collection);
  if (status != 0) return status;
  results->collection = results->latest = collection;
  status =
      zcsl_vector2_create(&results->entries, sizeof(playlist_result_entry), 0, nullptr, nullptr);
  if (status != 0) return status;
  return zcsl_vector_create(&results->contributors, 0, nullptr, release_contributor);
}

// Makes sure that a reference is held on the collection.
zvsdk_status hold(playlist_results* results, playlist_collection* collection) {
  if (collection != results->collection &&
      zcsl_vector_find(results->contributors, collection, nullptr) != 0) {
    zvsdk_status status = playlist_collection_addref(collection);
    if (status != 0) return status;
    status = zcsl_vector_add(results->contributors, collection);
    if (status != 0) {
      playlist_collection_release(collection);
      return status;
    }
  }
  results->latest = collection;
  return 0;
}

int32_t descending(uintptr_t a, uintptr_t b) {
  return a > b ? -1 : (a < b ? 1 : 0);
}

}  // namespace

zvsdk_status _playlist_results_create(playlist_collection* collection, playlist_results** results) {
  playlist_results_owner made(
      static_cast<playlist_results*>(zcsl_memory_calloc(1, sizeof(playlist_results))));
  const zvsdk_status status = made ? fill(made.get(), collection) : playlist_error_no_memory;
  if (status == 0) *results = made.release();
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status _playlist_results_add_result(playlist_results* results,
                                          playlist_collection* collection, uint32_t ident,
                                          int32_t score) {
  if (collection != results->latest) {
    if (const zvsdk_status status = hold(results, collection))
      return zcsl_logged(status, __LINE__, s_source);
  }
  const playlist_result_entry entry = {
      .collection = collection, .ident = ident, .value = 0, .score = score};
  return zcsl_vector2_add(results->entries, &entry, sizeof(entry), nullptr);
}

zvsdk_status _playlist_results_delete(playlist_results* results) {
  if (results == nullptr) return 0;
  if (results->collection != nullptr) playlist_collection_release(results->collection);
  zcsl_vector2_delete(results->entries);
  zcsl_vector_delete(results->contributors);
  results->magic = 0;
  zcsl_memory_free(results);
  return 0;
}

zvsdk_status _playlist_result_handle_delete(void* results) {
  return _playlist_results_delete(static_cast<playlist_results*>(results));
}

zvsdk_status _playlist_results_release(playlist_results* results) {
  return g_playlist_handlemanager_interface->handle_release(results);
}

int32_t _playlist_results_sort_by_score(const void* a, const void* b) {
  const auto first = static_cast<uint32_t>(static_cast<const playlist_result_entry*>(a)->score);
  const auto second = static_cast<uint32_t>(static_cast<const playlist_result_entry*>(b)->score);
  return static_cast<int32_t>(second - first);
}

zvsdk_status playlist_results_rank(playlist_results* results, uint32_t needed) {
  return zcsl_vector2_sort_by_key(results->entries, _playlist_results_sort_by_score,
                                  offsetof(playlist_result_entry, score), 0, needed);
}

int32_t playlist_results_sort_by_ident(const void* a, const void* b) {
  const auto* first = static_cast<const playlist_result_entry*>(a);
  const auto* second = static_cast<const playlist_result_entry*>(b);
  const int32_t by_ident = descending(first->ident, second->ident);
  if (by_ident != 0) return by_ident;
  return descending(reinterpret_cast<uintptr_t>(first->collection),
                    reinterpret_cast<uintptr_t>(second->collection));
}
