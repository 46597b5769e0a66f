// ZV_Mood: a media's mood is an id of the mood list, and also a profile, a text of weighted ids. A
// criterion takes one of the two; values of the other kind have no opinion about it.
#include <atomic>

#include "attributes/playlist_attr_lists.h"
#include "attributes/playlist_dsp.h"
#include "attributes/playlist_impl_attributes.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr playlist_list_kind s_kind = {
    .source = "playlist_impl_attr_mood",
    .attribute_name = "ZV_Mood",
    .name_in_any_case = false,
    .list_type = "zvsdk_list_type_moods",
    .correlates = "zvsdk_correlates_mood",
    .value_key = "_sdkmgr_val_list_mood_id",
    .other_value_key = nullptr,
    .display_level = 2,
    .no_row_text = "Failed to find a correlates set for Mood. (criteria:%d)",
    .thresholds = {.from_seed = 700, .by_level = {700, 500, 600, 700}},
};
constexpr char s_profile_key[] = "_sdkmgr_val_list_mood_data";
constexpr uint32_t s_stamp = 0xcbbddeef;

struct playlist_mood_instance : playlist_list_instance {
  bool has_vector; /* the criterion is a profile */
  playlist_mood_vector vector;
  playlist_normalized_mood_vector* normalized;
};

playlist_mood_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_mood_instance>(instance);
}

// The locale that was used last stays alive until the next one or the module's stop. Instances may
// be created by several threads at once.
std::atomic<zvsdk_locale*> s_default_locale = nullptr;

void keep_locale(playlist_locale_owner locale) {
  const playlist_locale_owner last(s_default_locale.exchange(locale.release()));
}

zvsdk_status playlist_mood_initialize(playlist_attribute*) {
  return 0;
}

zvsdk_status playlist_mood_shutdown(playlist_attribute*) {
  playlist_locale_owner last(s_default_locale.exchange(nullptr));
  if (g_playlist_lists_interface == nullptr) (void)last.release();
  return 0;
}

zvsdk_status playlist_mood_attribute_name(const char** name) {
  *name = s_kind.attribute_name;
  return 0;
}

zvsdk_status playlist_mood_supported_operators(uint32_t index, uint32_t* op) {
  return playlist_attr_operator_at(playlist_id_operators, index, op);
}

void take_moods(const playlist_attr_media& media, zvsdk_zdo* track) {
  const char* profile = nullptr;
  if (playlist_attr_value(track, s_profile_key, &profile) == 0) media.give(profile);
  media.take_number(track, s_kind.value_key);
}

zvsdk_status playlist_mood_collect_attribute_data(playlist_collect_context* context,
                                                  const playlist_collect_api* api) {
  const playlist_attr_media media{context, api};
  playlist_zdo_owner object;
  playlist_zdo_owner held;
  if (media.object(object) == 0)
    if (zvsdk_zdo* track = playlist_attr_track_of_media(object.get(), media, held))
      take_moods(media, track);
  media.take_list_element(s_kind.list_type);
  return 0;
}

zvsdk_status playlist_mood_release_instance(playlist_attribute_instance* instance) {
  playlist_mood_instance* mood = record_of(instance);
  playlist_delete_normalized_mood_vector(mood->normalized);
  playlist_attr_release_instance(mood);
  return 0;
}

// Moods need their list, unlike other attributes, but not its correlates. The locale is kept when
// it has been used: from then on another thread may release it.
zvsdk_status load_lists(playlist_attr_lists* lists) {
  playlist_locale_owner locale;
  zvsdk_status status = playlist_attr_default_locale(locale);
  if (status != 0) return status;
  status = playlist_attr_retrieve_list(locale.get(), s_kind.list_type, &lists->list);
  keep_locale(std::move(locale));
  if (status != 0) return status;
  g_playlist_lists_interface->correlates_retrieve(s_kind.correlates, nullptr, nullptr, nullptr,
                                                  &lists->correlates);
  return 0;
}

zvsdk_status playlist_mood_create_instance(playlist_attribute_instance** instance) {
  playlist_attribute_instance* made = nullptr;
  zvsdk_status status = playlist_attr_create<playlist_mood_instance>(s_stamp, &made);
  if (status != 0) return zcsl_logged(status, __LINE__, s_kind.source);
  status = load_lists(&record_of(made)->lists);
  if (status == 0) {
    *instance = made;
  } else {
    playlist_mood_release_instance(made);
  }
  return zcsl_logged(status, __LINE__, s_kind.source);
}

// That a mood has no row of correlates is found out by the first comparison.
zvsdk_status like_text(playlist_mood_instance* mood, int32_t* threshold) {
  if (mood->op != playlist_op_like) return 0;
  playlist_attr_set_threshold(s_kind.thresholds, mood->op, mood->level, threshold);
  if (mood->lists.correlates == nullptr) return playlist_error_no_locale;
  playlist_attr_get_row(mood);
  return 0;
}

zvsdk_status playlist_mood_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                               const char* text, int32_t* threshold) {
  playlist_mood_instance* mood = record_of(instance);
  mood->begin_criterion(op);
  zvsdk_status status = playlist_attr_place_of_text(mood, text, op == playlist_op_like);
  if (status == 0) status = like_text(mood, threshold);
  return zcsl_logged(status, __LINE__, s_kind.source);
}

// The seed's profile, where the operator can use it, or else its id. A profile's own id is that of
// its first mood: the number ends where the weight begins.
const char* read_seed(playlist_mood_instance* mood, zvsdk_zdo* track) {
  const char* text = nullptr;
  mood->has_vector =
      mood->op == playlist_op_like && playlist_attr_value(track, s_profile_key, &text) == 0;
  if (!mood->has_vector && playlist_attr_value(track, s_kind.value_key, &text) != 0) return nullptr;
  mood->id = zcsl_string_atou32(text);
  return text;
}

zvsdk_status like_profile(playlist_mood_instance* mood, const char* text) {
  zvsdk_status status = playlist_fill_mood_vector(text, &mood->vector);
  if (status == 0) status = playlist_create_normalized_mood_vector(&mood->normalized);
  if (status == 0)
    status = dsp_mood_normalize_vector(&mood->vector, mood->normalized, mood->lists.correlates);
  return status;
}

zvsdk_status like_id(playlist_mood_instance* mood) {
  const zvsdk_status found = playlist_attr_get_row(mood);
  return playlist_attr_seed_outcome(s_kind, found, s_kind.no_row_text, mood->id);
}

// A seed without a mood is no fault: the statement goes on without the criterion.
zvsdk_status playlist_mood_set_seed_criteria(playlist_attribute_instance* instance, uint32_t op,
                                             zvsdk_zdo* seed, int32_t* threshold) {
  playlist_mood_instance* mood = record_of(instance);
  mood->begin_criterion(op);
  playlist_zdo_owner held;
  zvsdk_zdo* track = playlist_attr_track_of_seed(seed, held);
  const char* text = track != nullptr ? read_seed(mood, track) : nullptr;
  if (text == nullptr) return playlist_error_no_seed_data;
  if (op != playlist_op_like) return 0;
  playlist_attr_set_seed_threshold(s_kind.thresholds, op, threshold);
  const zvsdk_status status = mood->has_vector ? like_profile(mood, text) : like_id(mood);
  return playlist_attr_seed_logged(s_kind, status);
}

zvsdk_status compare_id(const playlist_mood_instance& mood, uint32_t value, int32_t* score) {
  zvsdk_status status = playlist_attr_lift(mood, &value);
  if (status == 0) status = playlist_attr_compare_id(mood, value, score);
  return zcsl_logged(status, __LINE__, s_kind.source);
}

zvsdk_status playlist_mood_compare_integer_data(playlist_attribute_instance* instance,
                                                uint32_t value, int32_t* score) {
  playlist_mood_instance& mood = *record_of(instance);
  if (mood.has_vector) {
    *score = playlist_score_ignored;
    return 0;
  }
  return mood.scores.get(value, score, [&] { return compare_id(mood, value, score); });
}

zvsdk_status playlist_mood_compare_string_data(playlist_attribute_instance* instance,
                                               const char* text, int32_t* score) {
  const playlist_mood_instance& mood = *record_of(instance);
  if (!mood.has_vector) {
    *score = playlist_score_ignored;
    return 0;
  }
  playlist_mood_vector candidate;
  int32_t similarity = 0;
  zvsdk_status status = playlist_fill_mood_vector(text, &candidate);
  if (status == 0)
    status = dsp_mood_similarity(mood.lists.correlates, mood.normalized, &candidate, &similarity);
  if (status == 0) *score = similarity;
  return zcsl_logged(status, __LINE__, s_kind.source);
}

zvsdk_status playlist_mood_value_from_integer_data(playlist_attribute_instance* instance,
                                                   uint32_t value, const char* key,
                                                   zvsdk_locale* locale, const char** text) {
  return zcsl_logged(
      playlist_attr_text_of_id(s_kind, &record_of(instance)->values, value, key, locale, text),
      __LINE__, s_kind.source);
}

zvsdk_status playlist_mood_value_from_string_data(playlist_attribute_instance*, const char* stored,
                                                  const char* key, zvsdk_locale*,
                                                  const char** text) {
  if (!zcsl_string_equal(key, s_profile_key, 0)) return playlist_warn_not_found;
  *text = stored;
  return 0;
}

constexpr playlist_attribute s_mood = {
    .initialize = playlist_mood_initialize,
    .shutdown = playlist_mood_shutdown,
    .attribute_name = playlist_mood_attribute_name,
    .supported_operators = playlist_mood_supported_operators,
    .collect_attribute_data = playlist_mood_collect_attribute_data,
    .create_instance = playlist_mood_create_instance,
    .set_string_criteria = playlist_mood_set_string_criteria,
    .set_seed_criteria = playlist_mood_set_seed_criteria,
    .compare_integer_data = playlist_mood_compare_integer_data,
    .compare_string_data = playlist_mood_compare_string_data,
    .value_from_integer_data = playlist_mood_value_from_integer_data,
    .value_from_string_data = playlist_mood_value_from_string_data,
    .release_instance = playlist_mood_release_instance,
};

}  // namespace

zvsdk_status playlist_init_attribute_mood() {
  const zvsdk_status status = playlist_dsp_initialize();
  return status != 0 ? status : playlist_register_built_in(s_mood);
}

zvsdk_status playlist_shutdown_attribute_mood() {
  return playlist_dsp_shutdown();
}
