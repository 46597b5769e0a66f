// The exported calls that look at a statement without making a playlist.
#include "collections/playlist_joined_guard.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_parser.h"
#include "pdl/playlist_render_parsetree.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_guards.h"
#include "support/zcsl_owners.h"

namespace {

// The destructor given to the manager.
zvsdk_status _playlist_pdl_string_delete(void* text) {
  zcsl_string_free(static_cast<char*>(text));
  return 0;
}

playlist_call& check_arguments(playlist_call& call, const char* statement,
                               playlist_collection* collection) {
  return call.require_text(statement, "No PDL statement provided.")
      .handle(collection, playlist_collection_magic);
}

zvsdk_status validate_locked(const char* statement, playlist_collection* collection,
                             uint8_t* uses_seed, zcsl_string_owner* message) {
  const zcsl_read_guard guard(collection->rwlock);
  if (guard.status() != 0) return guard.status();
  zcsl_vector_owner actions;
  return _playlist_pdl_parse(statement, collection, uses_seed, actions.out(), message->out());
}

// The ident where it is found first: that collection's values are what it is evaluated by.
zvsdk_status find_entry(playlist_collection* collection, const char* ident,
                        playlist_result_entry* entry) {
  const zvsdk_status status =
      playlist_collection_ident_find(collection, ident, 0, nullptr, &entry->collection);
  if (status != 0) return status;
  return zcsl_stringtable_get_value_ref(entry->collection->idents, ident, &entry->ident);
}

// Chance begins where the context does, at 0, so that an analysis is the same on every run.
zvsdk_status evaluate(const char* statement, playlist_collection* collection, const char* ident,
                      zcsl_vector_owner* actions, zcsl_string_owner* message) {
  uint8_t uses_seed = 0;
  zvsdk_status status =
      _playlist_pdl_parse(statement, collection, &uses_seed, actions->out(), message->out());
  if (status != 0) return status;
  if (uses_seed != 0) return playlist_error_seed_required;
  status = _playlist_pdl_setup_actions(actions->get(), nullptr, message->out());
  if (status != 0) return status;
  playlist_result_entry entry = {};
  status = find_entry(collection, ident, &entry);
  if (status != 0) return status;
  playlist_pdl_context context = {};
  return _playlist_pdl_perform_actions(actions->get(), &entry, nullptr, &context);
}

zvsdk_status render(zcsl_vector* actions, zcsl_string_owner* text) {
  zcsl_accum_owner accumulator;
  zvsdk_status status = zcsl_string_accum_create(accumulator.out(), nullptr, 0);
  if (status == 0)
    status = playlist_pdl_each_action(actions, [&](playlist_pdl_node* action) {
      return _playlist_render_parsetree(accumulator.get(), 0, action);
    });
  return status == 0 ? zcsl_string_accum_detach(accumulator.get(), text->out(), nullptr) : status;
}

// The nodes may stand in any of the joined collections, so they go before the locks do.
zvsdk_status analyze_locked(const char* statement, playlist_collection* collection,
                            const char* ident, zcsl_string_owner* text,
                            zcsl_string_owner* message) {
  const playlist_joined_guard guard(collection);
  if (guard.status() != 0) return guard.status();
  zcsl_vector_owner actions;
  const zvsdk_status status = evaluate(statement, collection, ident, &actions, message);
  return status == 0 ? render(actions.get(), text) : status;
}

// Makes a finished text a handle of the application's.
zvsdk_status hand_out(zcsl_string_owner* text, const char** analysis) {
  const zvsdk_status status = g_playlist_handlemanager_interface->handle_register(
      g_playlist_client_ref, text->get(), 0, _playlist_pdl_string_delete);
  if (status == 0) *analysis = text->release();
  return status;
}

}  // namespace

zvsdk_status zvsdk_playlist_statement_validate(const char* statement,
                                               playlist_collection* collection,
                                               uint8_t* uses_seed) {
  playlist_call call(__func__, "zvsdk_playlist_statement_validate( %s, %p, %p )", statement,
                     collection, uses_seed);
  if (check_arguments(call, statement, collection).refused()) return call.refusal();
  zcsl_string_owner message;
  const zvsdk_status status = validate_locked(statement, collection, uses_seed, &message);
  return call.finish(status, message.get());
}

zvsdk_status zvsdk_playlist_statement_analyze_ident(const char* statement,
                                                    playlist_collection* collection,
                                                    const char* ident, const char** analysis) {
  playlist_call call(__func__, "zvsdk_playlist_statement_analyze_ident( %s, %p, %s, %p )",
                     statement, collection, ident, analysis);
  check_arguments(call, statement, collection).require(analysis);
  if (call.refused()) return call.refusal();
  zcsl_string_owner text;
  zcsl_string_owner message;
  zvsdk_status status = analyze_locked(statement, collection, ident, &text, &message);
  if (status == 0) status = hand_out(&text, analysis);
  return call.finish(status, message.get());
}
