// The generation: statement in, ranked results out, and the driver that orders and runs the
// actions.
#include "pdl/playlist_generate.h"

#include "module/playlist_frame.h"
#include "module/playlist_services.h"
#include "pdl/playlist_pdl_actions.h"
#include "pdl/playlist_pdl_parser.h"
#include "support/zcsl_container_owners.h"
#include "support/zcsl_string.h"
#include "support/zcsl_time.h"

namespace {

constexpr char s_source[] = "playlist_generate";
constexpr char s_playlist_object[] = "zvsdk_ctx_pldata";

// The random option repeats an order; as long as it is 0 the clock makes every run another one.
uint32_t random_seed(playlist_collection* collection) {
  const char* option = nullptr;
  uint32_t seed = 0;
  if (zcsl_stringmap_value_find_ex(collection->options, ZVSDK_PLAYLIST_OPTION_RANDOM, 0, &option) ==
      0)
    seed = zcsl_string_atou32(option);
  return seed != 0 ? seed : static_cast<uint32_t>(zcsl_time_get_microseconds());
}

// A seed that was read from a collection is kept out of its own playlist.
void exclude_seed(playlist_pdl_context* context, zvsdk_zdo* seed, playlist_collection* collection) {
  const char* text = nullptr;
  if (g_playlist_zdo_interface->zdo_get_type(seed, &text) != 0 ||
      !zcsl_string_equal(text, s_playlist_object, 0) ||
      g_playlist_zdo_interface->zdo_value_get(seed, "ident_ref", 1, &text) != 0)
    return;
  context->excluded_ident = zcsl_string_atou32(text);
  context->excluded_collection = collection;
}

zvsdk_status generate(const char* statement, zvsdk_zdo* seed, playlist_collection* collection,
                      playlist_results_owner* results, zcsl_string_owner* message) {
  uint8_t uses_seed = 0;
  zcsl_vector_owner actions;
  zvsdk_status status =
      _playlist_pdl_parse(statement, collection, &uses_seed, actions.out(), message->out());
  if (status != 0) return status;
  if (uses_seed != 0 && seed == nullptr) return playlist_error_seed_required;
  status = _playlist_pdl_setup_actions(actions.get(), seed, message->out());
  if (status != 0) return status;
  status = _playlist_results_create(collection, results->out());
  if (status != 0) return status;

  playlist_pdl_context context = {
      .seed = random_seed(collection), .excluded_ident = 0, .excluded_collection = nullptr};
  if (seed != nullptr) exclude_seed(&context, seed, collection);
  return _playlist_pdl_perform_actions(actions.get(), nullptr, results->get(), &context);
}

// The kind first; PER limits before RESULTS limits, and the smaller of two PER limits first.
int32_t order_of_actions(const playlist_pdl_node* a, const playlist_pdl_node* b) {
  if (a->kind != playlist_pdl_limit || b->kind != playlist_pdl_limit) return a->kind - b->kind;
  if (a->right->kind != playlist_pdl_ident || b->right->kind != playlist_pdl_ident)
    return a->right->kind - b->right->kind;
  const uint32_t first = zcsl_string_atou32(a->left->text);
  const uint32_t second = zcsl_string_atou32(b->left->text);
  return first < second ? -1 : (first > second ? 1 : 0);
}

int32_t _playlist_actions_sort(const void* a, const void* b) {
  return order_of_actions(static_cast<const playlist_pdl_node*>(a),
                          static_cast<const playlist_pdl_node*>(b));
}

}  // namespace

zvsdk_status _playlist_pdl_perform_actions(zcsl_vector* actions, playlist_result_entry* entry,
                                           playlist_results* results,
                                           playlist_pdl_context* context) {
  zvsdk_status status = zcsl_vector_sort(actions, _playlist_actions_sort, 0);
  if (status == 0)
    status = playlist_pdl_each_action(actions, [=](playlist_pdl_node* action) {
      return playlist_pdl_perform(action, entry, results, context);
    });
  if (status != 0 || results == nullptr) return status;
  return playlist_results_rank(results, UINT32_MAX);
}

zvsdk_status _playlist_generate_results(const char* statement, zvsdk_zdo* seed,
                                        playlist_collection* collection,
                                        playlist_results** results) {
  playlist_results_owner made;
  zcsl_string_owner message;
  const zvsdk_status status = generate(statement, seed, collection, &made, &message);
  g_playlist_errorinfo_interface->errorinfo_set(_playlist_map_error(status), status, nullptr,
                                                message.get());
  if (status == 0) *results = made.release();
  if (status == playlist_error_seed_required) return status;  // the caller's slip, not a fault here
  return zcsl_logged(status, __LINE__, s_source);
}
