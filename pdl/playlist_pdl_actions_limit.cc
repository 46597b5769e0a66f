// LIMIT: keeps the best n results, or at most n for each value of an attribute, chosen by chance.
#include <algorithm>
#include <utility>

#include "pdl/playlist_pdl_actions.h"
#include "support/zcsl_random.h"
#include "support/zcsl_string.h"
#include "support/zcsl_vector2_internal.h"

namespace {

zvsdk_status logged(zvsdk_status status, uint32_t line = __builtin_LINE()) {
  return playlist_pdl_logged(status, "playlist_pdl_actions_limit", line);
}

using entries_view = zcsl_vector2_view<playlist_result_entry>;

zvsdk_status limit_results(playlist_pdl_node* node, playlist_results* results, uint32_t count) {
  const uint32_t limit = zcsl_string_atou32(node->left->text);
  if (limit >= count) return 0;
  const zvsdk_status status = playlist_results_rank(results, limit);
  if (status != 0) return status;
  return zcsl_vector2_deleterange(results->entries, limit, count - 1);
}

// How many texts the collections ahead of this one hold, so that base plus reference tells texts of
// all collections apart.
uint32_t text_base(const playlist_results* results, const playlist_collection* collection) {
  uint32_t base = 0;
  for (uint32_t i = 0; auto* joined = playlist_collection_joined_at(results->collection, i); ++i) {
    if (joined == collection) break;
    uint32_t texts = 0;
    zcsl_stringtable_count(joined->strings, &texts);
    base += texts;
  }
  return base;
}

/*
 * The groups of one PER limit. Each result belongs to the first group that one of its values
 * already belongs to, or to a new one; the members of other groups that its values touch are added
 * to the count, but those groups go on by themselves. This is no full union, and is not meant to
 * be.
 *
 * A value is the integer, or for a text a number with bit 31 set that is equal exactly when
 * collection and text are.
 */
class grouping {
 public:
  zvsdk_status create(uint32_t count) {
    members_.reset(static_cast<uint32_t*>(zcsl_memory_calloc(count, sizeof(uint32_t))));
    if (!members_) return playlist_error_no_memory;
    return zcsl_hashmap_create(group_of_.out(), 0, nullptr) == 0 ? 0 : playlist_error_no_memory;
  }

  // Puts a result with these values into its group and leaves its last value in it. An attribute
  // value that cannot be read ends the walk of this result's values.
  zvsdk_status add(playlist_result_entry* result, const playlist_pdl_values& values, uint32_t index,
                   uint32_t base) {
    uint32_t group = next_;
    uint32_t members = 0;
    for (; playlist_pdl_values_belongs(values, index, result->ident); ++index) {
      if (!key_of(values, values.records[index].value, base, &result->value)) break;
      void* found = nullptr;
      if (zcsl_hashmap_lookup(group_of_.get(), result->value, &found) != 0) {
        void* value = reinterpret_cast<void*>(uintptr_t{group});
        if (zcsl_hashmap_insert(group_of_.get(), result->value, value) != 0)
          return playlist_error_no_memory;
        continue;
      }
      const auto other = static_cast<uint32_t>(reinterpret_cast<uintptr_t>(found));
      if (other == group) continue;
      if (group == next_)
        members = members_of(group = other);
      else
        members += members_of(other);
    }
    members_of(group) = members + 1;
    if (group == next_) ++next_;
    return 0;
  }

  // Takes a result out of its group if that has more than `limit` members.
  bool take_surplus(const playlist_result_entry& result, uint32_t limit) {
    void* found = nullptr;
    if (zcsl_hashmap_lookup(group_of_.get(), result.value, &found) != 0) return false;
    uint32_t& members = members_of(reinterpret_cast<uintptr_t>(found));
    if (members <= limit) return false;
    --members;
    return true;
  }

 private:
  static bool key_of(const playlist_pdl_values& values, uint32_t value, uint32_t base,
                     uint32_t* key) {
    if ((value & playlist_string_flag) != 0) {
      const char* text = nullptr;
      if (playlist_pdl_values_text(&values, value, &text) != 0) return false;
      value = (base + (value & ~playlist_string_flag)) | playlist_string_flag;
    }
    *key = value;
    return true;
  }

  uint32_t& members_of(uintptr_t group) { return members_.get()[group]; }

  zcsl_block_owner<uint32_t> members_;  // of each group; 0 for groups not begun
  uint32_t next_ = 0;                   // the group that a result with new values begins
  zcsl_hashmap_owner group_of_;
};

// A collection without the attribute ends the grouping; what was grouped so far is cut all the
// same.
zvsdk_status group_results(playlist_pdl_node* node, playlist_results* results, grouping* groups) {
  playlist_pdl_values& values = node->values;
  uint32_t base = 0;
  for (playlist_result_entry& result : entries_view(results->entries)) {
    if (values.collection != result.collection) {
      if (playlist_pdl_values_enter(&values, result.collection, node->right->text) != 0) return 0;
      base = text_base(results, result.collection);
    }
    const uint32_t index = playlist_pdl_values_find(&values, result.ident);
    if (index == values.count)
      result.value = 0;
    else if (const zvsdk_status status = groups->add(&result, values, index, base))
      return status;
  }
  return 0;
}

// Each place is swapped with a random one. Not an unbiased shuffle, but a seed repeats it.
void shuffle(const entries_view& entries, uint32_t* seed) {
  for (playlist_result_entry& entry : entries)
    std::swap(entry, entries[zcsl_random_rand(seed) % entries.count]);
}

struct cut {
  grouping* groups;
  uint32_t limit;
};

bool is_surplus(void* context, const void* record) {
  const auto* wanted = static_cast<const cut*>(context);
  return wanted->groups->take_surplus(*static_cast<const playlist_result_entry*>(record),
                                      wanted->limit);
}

zvsdk_status limit_per_value(playlist_pdl_node* node, playlist_results* results, uint32_t count,
                             playlist_pdl_context* context) {
  if (node->left->kind != playlist_pdl_number) return logged(playlist_error_internal);
  const uint32_t limit = zcsl_string_atou32(node->left->text);
  if (limit == 0 || limit >= count) return 0;
  grouping groups;
  zvsdk_status status = groups.create(count);
  if (status == 0) status = group_results(node, results, &groups);
  if (status != 0) return logged(status);
  shuffle(entries_view(results->entries), &context->seed);
  cut wanted = {.groups = &groups, .limit = limit};
  return zcsl_vector2_delete_matching(results->entries, is_surplus, &wanted);
}

}  // namespace

// A single result survives every limit.
zvsdk_status _playlist_pdl_perform_limit(playlist_pdl_node* node, playlist_result_entry*,
                                         playlist_results* results, playlist_pdl_context* context) {
  if (node->left == nullptr || node->right == nullptr) return logged(playlist_error_internal);
  if (results == nullptr) return 0;
  uint32_t count = 0;
  const zvsdk_status status = zcsl_vector2_count(results->entries, &count);
  if (status != 0 || count < 2) return status;
  if (node->right->kind == playlist_pdl_results) return limit_results(node, results, count);
  return limit_per_value(node, results, count, context);
}
