// The leaves: the score of one media by an attribute's criterion, by a list of values, by chance.
#include <algorithm>

#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_random.h"
#include "support/zcsl_vector2_internal.h"

namespace {

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return playlist_pdl_logged(status, "playlist_pdl_actions_score", line);
}

void set_scores(playlist_pdl_node* node, playlist_result_entry* entry, int32_t score) {
  node->score = entry->score = score;
}

// The best and the worst score over the values of one media.
struct extremes {
  int32_t best = -1000;
  int32_t worst = 1000;

  void add(int32_t score) {
    best = std::max(best, score);
    worst = std::min(worst, score);
  }
};

// All values must satisfy LT and LE, one value the others.
bool wants_worst(int32_t kind) {
  return kind == playlist_pdl_lt || kind == playlist_pdl_le;
}
bool is_equality(int32_t kind) {
  return kind == playlist_pdl_eq || kind == playlist_pdl_ne;
}

// True when no further value can change the outcome. A value that the attribute cannot compare
// counts as -1000 and ends the walk of LT and LE likewise.
bool settled(int32_t kind, const extremes& seen, int32_t score) {
  if (is_equality(kind)) return score == 1000;
  return wants_worst(kind) ? seen.worst < -999 : seen.best >= 1000;
}

zvsdk_status compare_text(const playlist_pdl_node* node, uint32_t value, int32_t* score) {
  const playlist_pdl_node* ident = node->left;
  if (ident->attribute->compare_string_data == nullptr) {
    *score = -1000;
    return 0;
  }
  const char* text = nullptr;
  if (const zvsdk_status status = playlist_pdl_values_text(&node->values, value, &text))
    return status;
  return ident->attribute->compare_string_data(ident->instance, text, score);
}

zvsdk_status compare_integer(playlist_pdl_node* ident, uint32_t value, int32_t* score) {
  ident->score = static_cast<int32_t>(value);
  if (ident->attribute->compare_integer_data == nullptr) {
    *score = -1000;
    return 0;
  }
  return ident->attribute->compare_integer_data(ident->instance, value, score);
}

// Walks the values of one media from `index` on.
zvsdk_status walk_values(playlist_pdl_node* node, const playlist_result_entry* entry,
                         uint32_t index, extremes* seen) {
  const playlist_pdl_values& values = node->values;
  for (; playlist_pdl_values_belongs(values, index, entry->ident); ++index) {
    const uint32_t value = values.records[index].value;
    int32_t score = 0;
    const zvsdk_status status = (value & playlist_string_flag) != 0
                                    ? compare_text(node, value, &score)
                                    : compare_integer(node->left, value, &score);
    if (status != 0) return status;
    if (score == playlist_score_ignored) continue;
    seen->add(score);
    if (settled(node->kind, *seen, score)) break;
  }
  return 0;
}

// Finds the media's first value. False when there is nothing to walk; the scores are set then.
bool find_values(playlist_pdl_node* node, playlist_result_entry* entry, uint32_t* index) {
  if (playlist_pdl_values_enter(&node->values, entry->collection, node->left->text) != 0) {
    entry->score = 0;
    return false;
  }
  *index = playlist_pdl_values_find(&node->values, entry->ident);
  if (*index != node->values.count) return true;
  set_scores(node, entry, 0);
  return false;
}

// The state of the generator that a RAND draws from: its own when the statement gives it a seed.
uint32_t* generator_of(playlist_pdl_node* node, playlist_pdl_context* context) {
  playlist_pdl_node* own = node->right;
  if (own == nullptr || own->kind != playlist_pdl_number) return &context->seed;
  if (!own->number_known && playlist_pdl_number_of(own) == 0)
    own->number = static_cast<int32_t>(context->seed);
  return reinterpret_cast<uint32_t*>(&own->number);
}

int32_t draw(uint32_t* state, uint32_t max) {
  const uint32_t value = zcsl_random_rand(state);
  return static_cast<int32_t>(max != 0 ? value % max : value);
}

}  // namespace

// The attribute is that of the left child's text even when the statement names it on the right.
zvsdk_status _playlist_pdl_perform_score_id_op_id(playlist_pdl_node* node,
                                                  playlist_result_entry* entry, playlist_results*,
                                                  playlist_pdl_context*) {
  uint32_t index = 0;
  if (!find_values(node, entry, &index)) return 0;
  if (!node->left->has_criterion) {
    set_scores(node, entry, 0);
    return 0;
  }
  extremes seen;
  const zvsdk_status status = walk_values(node, entry, index, &seen);
  if (status != 0) return status;
  set_scores(node, entry, wants_worst(node->kind) ? seen.worst : seen.best);
  return 0;
}

zvsdk_status _playlist_pdl_perform_score_id_in_list(playlist_pdl_node* node,
                                                    playlist_result_entry* entry, playlist_results*,
                                                    playlist_pdl_context*) {
  uint32_t index = 0;
  if (!find_values(node, entry, &index)) return 0;
  const playlist_pdl_values& values = node->values;
  int32_t score = -1000;
  for (; playlist_pdl_values_belongs(values, index, entry->ident); ++index) {
    const uint32_t value = values.records[index].value;
    if ((value & playlist_string_flag) != 0) continue;
    node->left->score = static_cast<int32_t>(value);
    if (zcsl_hashmap_lookup(node->right->list, value, nullptr) == 0) {
      score = 1000;
      break;
    }
  }
  set_scores(node, entry, score);
  return 0;
}

zvsdk_status _playlist_pdl_perform_score_rand(playlist_pdl_node* node, playlist_result_entry* entry,
                                              playlist_results* results,
                                              playlist_pdl_context* context) {
  if (node->left == nullptr || (entry == nullptr && results == nullptr))
    return logged(playlist_error_internal);
  // A negative maximum is a huge one, and leaves every value as it is.
  const auto max = static_cast<uint32_t>(playlist_pdl_number_of(node->left));
  uint32_t* state = generator_of(node, context);
  if (entry != nullptr) {
    set_scores(node, entry, draw(state, max));
    return 0;
  }
  for (playlist_result_entry& result : zcsl_vector2_view<playlist_result_entry>(results->entries))
    set_scores(node, &result, draw(state, max));
  return 0;
}
