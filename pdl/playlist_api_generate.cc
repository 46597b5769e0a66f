// The exported generation calls, by statement and by More-Like-This, and the two option calls.
#include "collections/playlist_joined_guard.h"
#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "pdl/playlist_generate.h"
#include "pdl/playlist_morelikethis.h"
#include "pdl/playlist_results.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_feature[] = "playlist";

zvsdk_status generate_locked(const char* statement, zvsdk_zdo* seed,
                             playlist_collection* collection, playlist_results** results) {
  const playlist_joined_guard guard(collection);
  if (guard.status() != 0) return guard.status();
  return _playlist_generate_results(statement, seed, collection, results);
}

// The check that both kinds of generation make last.
playlist_call& check_licence(playlist_call& call, zvsdk_user* user) {
  if (!call.refused()) call.passed(g_playlist_license_interface->license_check(user, s_feature));
  return call;
}

// Makes finished results a handle of the application's.
zvsdk_status hand_out(playlist_results_owner* made, playlist_results** results) {
  const zvsdk_status status = g_playlist_handlemanager_interface->handle_register(
      g_playlist_client_ref, made->get(), playlist_results_magic, _playlist_result_handle_delete);
  if (status == 0) *results = made->release();
  return status;
}

// The stored text of an option, or null when there is no such option.
const char* option_text(playlist_collection* collection, const char* key) {
  const char* text = nullptr;
  return zcsl_stringmap_value_find_ex(collection->options, key, 0, &text) == 0 ? text : nullptr;
}

void free_decoded(char* text) {
  g_playlist_serialization_interface->serialization_free(text);
}
using decoded_owner = zcsl_owner<char, free_decoded>;

enum option_index { max_tracks, max_per_artist, max_per_album, random_order, option_count };
constexpr const char* s_options[option_count] = {
    ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST,
    ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, ZVSDK_PLAYLIST_OPTION_RANDOM};

// The template with the collection's options filled in. Printing leaves out what it has no memory
// for without a word, and such a statement might still run: so its length is looked at. Each
// option takes the place of the two characters of its conversion.
zvsdk_status fill_template(const char* format, uint32_t length, playlist_collection* collection,
                           zcsl_string_owner* statement) {
  const char* options[option_count] = {};
  for (uint32_t i = 0; i < option_count; ++i) {
    const zvsdk_status status =
        zcsl_stringmap_value_find_ex(collection->options, s_options[i], 0, &options[i]);
    if (status != 0) return status;
    length += zcsl_string_bytelen_nonull(options[i]) - 2;
  }
  statement->reset(zcsl_string_mprintf(format, options[random_order], options[max_per_artist],
                                       options[max_per_album], options[max_tracks]));
  const bool whole = *statement && zcsl_string_bytelen_nonull(statement->get()) == length;
  return whole ? 0 : playlist_error_no_memory;
}

// The options are read under the lock of the generation that they are for. An empty statement is
// no failure: there are just no results.
zvsdk_status generate_from_template(const char* format, uint32_t length, zvsdk_zdo* seed,
                                    playlist_collection* collection, playlist_results** results) {
  const playlist_joined_guard guard(collection);
  if (guard.status() != 0) return guard.status();
  zcsl_string_owner statement;
  const zvsdk_status status = fill_template(format, length, collection, &statement);
  if (status != 0 || zcsl_string_isempty(statement.get()) != 0) return status;
  return _playlist_generate_results(statement.get(), seed, collection, results);
}

zvsdk_status generate_morelikethis(zvsdk_zdo* seed, playlist_collection* collection,
                                   playlist_results** results) {
  decoded_owner format;
  uint32_t length = 0;
  const zvsdk_status status = g_playlist_serialization_interface->serialization_decode(
      playlist_morelikethis_template, format.out(), &length);
  if (status != 0) return status;
  return generate_from_template(format.get(), length, seed, collection, results);
}

constexpr char s_invalid_option[] = "Parameter option_key contains an invalid option.";

}  // namespace

zvsdk_status zvsdk_playlist_generate_playlist(zvsdk_user* user, const char* statement,
                                              playlist_collection* collection, zvsdk_zdo* seed,
                                              playlist_results** results) {
  playlist_call call(__func__, "zvsdk_playlist_generate_playlist( %p, %s, %p, %p, %p )", user,
                     statement, collection, seed, results);
  call.require_text(statement, "No PDL statement provided.")
      .require(results, "Parameter ph_results cannot be null.")
      .handle(collection, playlist_collection_magic);
  if (seed != nullptr) call.object(seed);
  if (check_licence(call, user).refused()) return call.refusal();

  playlist_results_owner made;
  zvsdk_status status = generate_locked(statement, seed, collection, made.out());
  if (status == 0) status = hand_out(&made, results);
  return call.finish(status);
}

zvsdk_status zvsdk_playlist_generate_morelikethis(zvsdk_user* user, playlist_collection* collection,
                                                  zvsdk_zdo* seed, playlist_results** results) {
  playlist_call call(__func__, "zvsdk_playlist_generate_morelikethis( %p, %p, %p, %p )", user,
                     collection, seed, results);
  call.require(results, "Parameter ph_results cannot be null.")
      .user(user)
      .handle(collection, playlist_collection_magic)
      .object(seed);
  if (check_licence(call, user).refused()) return call.refusal();

  playlist_results_owner made;
  zvsdk_status status = generate_morelikethis(seed, collection, made.out());
  if (status == 0 && made) status = hand_out(&made, results);
  // The generation has made the report, with its message.
  return call.finish(status, playlist_report::log_only);
}

zvsdk_status zvsdk_playlist_morelikethis_option_set(playlist_collection* collection,
                                                    const char* option_key,
                                                    const char* option_value) {
  playlist_call call(__func__, "zvsdk_playlist_morelikethis_option_set( %p, %s, %s )", collection,
                     option_key, option_value);
  call.handle(collection, playlist_collection_magic)
      .require_text(option_key, "Parameter option_key is empty or null.")
      .require_text(option_value, "Parameter option_value is empty or null.")
      .require_that(zcsl_string_isvalid(option_value) != 0,
                    "Parameter option_value contains an invalid UTF8 string.")
      .require_that(zcsl_string_atou32(option_value) != 0,
                    "Parameter option_value must be numeric and not evaluate to zero.");
  if (call.refused()) return call.refusal();
  const char* present = option_text(collection, option_key);
  if (call.require_that(present != nullptr, s_invalid_option).refused()) return call.refusal();

  // The two outcomes below keep away from the error record.
  if (zcsl_string_atou32(present) == zcsl_string_atou32(option_value)) return 0;
  return call.finish(zcsl_stringmap_value_add(collection->options, option_key, option_value),
                     playlist_report::log_only);
}

zvsdk_status zvsdk_playlist_morelikethis_option_get(playlist_collection* collection,
                                                    const char* option_key,
                                                    const char** option_value) {
  playlist_call call(__func__, "zvsdk_playlist_morelikethis_option_get( %p, %s, %p )", collection,
                     option_key, option_value);
  call.handle(collection, playlist_collection_magic)
      .require_text(option_key, "Parameter option_key is empty or null.")
      .require(option_value, "Parameter p_option_value is null.");
  if (call.refused()) return call.refusal();
  const char* present = option_text(collection, option_key);
  if (call.require_that(present != nullptr, s_invalid_option).refused()) return call.refusal();
  *option_value = present;
  return 0;
}
