// Transactions: one question of one caller to a collection, from its filters to its results. All
// that is called for a transaction belongs to its caller's thread, so there are no locks here.
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "providers/playlist_impl_intf_vibegrid.h"
#include "support/zcsl_log.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"
#include "support/zcsl_vector.h"

namespace {

constexpr char s_source[] = "playlist_vibegrid_transaction";

// As the caller gets it: containers and texts may have failed as well.
zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return zcsl_logged(_playlist_map_error(status), line, s_source);
}

using transaction_owner =
    zcsl_owner<zvsdk_vibegrid_transaction, _playlist_vibegrid_datasource_transaction_release>;

void _playlist_transaction_filter_vector_delete(void* filter) {
  zcsl_memory_free(filter);
}

// Tells where the search stands; true when it is to stop.
bool report(const zvsdk_vibegrid_transaction& transaction, uint32_t status, uint32_t percent) {
  uint8_t abort = 0;
  if (transaction.status_callback != nullptr)
    transaction.status_callback(transaction.status_data, status, percent, 0, 0, &abort);
  return abort != 0;
}

// The two steps before the statement runs. Whether it was stopped before or after the second one
// shows in the class of the status alone.
zvsdk_status report_start(const zvsdk_vibegrid_transaction& transaction) {
  if (report(transaction, zvsdk_vibegrid_status_begin, 0)) return playlist_warn_aborted;
  if (report(transaction, zvsdk_vibegrid_status_searching, 10)) return playlist_error_aborted;
  return 0;
}

zvsdk_status write_statement(const zvsdk_vibegrid_transaction& transaction,
                             zcsl_accum_owner* statement, bool* is_single_mood = nullptr,
                             uint32_t* last_value = nullptr) {
  const zvsdk_status status = zcsl_string_accum_create(statement->out(), nullptr, 0);
  if (status != 0) return status;
  return _playlist_process_filters_to_pdl(statement->get(), transaction.filters, is_single_mood,
                                          last_value);
}

zvsdk_status generate(zvsdk_vibegrid_transaction* transaction, zcsl_accum* statement) {
  const char* text = nullptr;
  zcsl_string_accum_get_string(statement, &text, nullptr);
  return zvsdk_playlist_generate_playlist(transaction->user, text, transaction->context->collection,
                                          nullptr, &transaction->results);
}

// The count of a single mood, without a search.
zvsdk_status estimate(zvsdk_vibegrid_transaction* transaction, uint32_t* count) {
  zcsl_accum_owner statement;
  bool is_single_mood = false;
  uint32_t mood = 0;
  const zvsdk_status status = write_statement(*transaction, &statement, &is_single_mood, &mood);
  if (status != 0) return status;
  if (!is_single_mood) return playlist_warn_not_found;
  return playlist_vibegrid_estimate(transaction->context, mood, count);
}

zvsdk_status check_found(zvsdk_vibegrid_transaction* transaction) {
  return transaction->results != nullptr ? 0 : playlist_error_bad_state;
}

}  // namespace

zvsdk_status _playlist_vibegrid_datasource_transaction_create(
    void*, void* context, zvsdk_vibegrid_transaction** transaction, zvsdk_user* user,
    zvsdk_vibegrid_status_callback callback, void* callback_data) {
  if (context == nullptr || transaction == nullptr || user == nullptr)
    return logged(playlist_error_invalid_arg);
  playlist_collection_reference collection;
  zvsdk_status status = playlist_vibegrid_acquire(context, collection.out());
  if (status != 0) return logged(status);
  transaction_owner made(static_cast<zvsdk_vibegrid_transaction*>(
      zcsl_memory_calloc(1, sizeof(zvsdk_vibegrid_transaction))));
  if (!made) return logged(playlist_error_no_memory);
  (void)collection.release();  // the transaction's from here on
  made->context = static_cast<playlist_vibegrid_context*>(context);
  made->user = user;
  made->status_callback = callback;
  made->status_data = callback_data;
  status =
      zcsl_vector_create(&made->filters, 0, nullptr, _playlist_transaction_filter_vector_delete);
  if (status == 0) *transaction = made.release();
  return logged(status);
}

zvsdk_status _playlist_vibegrid_datasource_transaction_filter_create(
    zvsdk_vibegrid_transaction* transaction, const char* list_type, const char* value,
    const char* condition, uint32_t flag) {
  if (transaction == nullptr || zcsl_string_isempty(list_type) || zcsl_string_isempty(value) ||
      zcsl_string_isempty(condition) || flag == 0)
    return logged(playlist_error_invalid_arg);
  const bool include = zcsl_string_equal(condition, ZVSDK_VIBEGRID_INCLUDE, 0) != 0;
  if (!include && !zcsl_string_equal(condition, ZVSDK_VIBEGRID_EXCLUDE, 0))
    return logged(playlist_error_invalid_arg);
  zcsl_block_owner<playlist_vibegrid_filter> filter(static_cast<playlist_vibegrid_filter*>(
      zcsl_memory_calloc(1, sizeof(playlist_vibegrid_filter))));
  if (!filter) return 0;  // dropped without a word, as the table promises
  *filter = {.list_type = list_type, .value = value, .include = include};
  if (zcsl_vector_add(transaction->filters, filter.get()) == 0) (void)filter.release();
  return 0;
}

zvsdk_status _playlist_vibegrid_datasource_transaction_find(
    zvsdk_vibegrid_transaction* transaction) {
  if (transaction == nullptr) return logged(playlist_error_invalid_arg);
  if (transaction->results != nullptr) return logged(playlist_error_internal);
  zcsl_accum_owner statement;
  zvsdk_status status = write_statement(*transaction, &statement);
  if (status == 0) status = report_start(*transaction);
  if (status == 0) status = generate(transaction, statement.get());
  if (status == 0) report(*transaction, zvsdk_vibegrid_status_complete, 100);
  return logged(status);
}

zvsdk_status _playlist_vibegrid_datasource_transaction_find_estimate(
    zvsdk_vibegrid_transaction* transaction, uint32_t* count) {
  if (transaction == nullptr || count == nullptr) return logged(playlist_error_invalid_arg);
  if (estimate(transaction, count) == 0) return 0;
  const zvsdk_status status = _playlist_vibegrid_datasource_transaction_find(transaction);
  return status != 0 ? status
                     : _playlist_vibegrid_datasource_transaction_result_count(transaction, count);
}

zvsdk_status _playlist_vibegrid_datasource_transaction_result_count(
    zvsdk_vibegrid_transaction* transaction, uint32_t* count) {
  if (transaction == nullptr || count == nullptr) return logged(playlist_error_invalid_arg);
  if (const zvsdk_status status = check_found(transaction)) return logged(status);
  return zvsdk_playlist_results_count(transaction->results, count);
}

zvsdk_status _playlist_vibegrid_datasource_transaction_result_enum(
    zvsdk_vibegrid_transaction* transaction, uint32_t index, const char** ident,
    const char** collection_name) {
  if (transaction == nullptr || ident == nullptr || collection_name == nullptr)
    return logged(playlist_error_invalid_arg);
  if (const zvsdk_status status = check_found(transaction)) return logged(status);
  return zvsdk_playlist_results_enum(transaction->results, index, ident, collection_name);
}

// The collection goes last: with it the context may go. When the module was stopped by force, its
// handles are gone already.
zvsdk_status _playlist_vibegrid_datasource_transaction_release(
    zvsdk_vibegrid_transaction* transaction) {
  if (transaction == nullptr) return 0;
  zcsl_vector_delete(transaction->filters);
  if (transaction->results != nullptr) zvsdk_playlist_results_release(transaction->results);
  if (zvsdk_playlist_initchecks() != 0)
    playlist_collection_release(transaction->context->collection);
  zcsl_memory_free(transaction);
  return 0;
}
