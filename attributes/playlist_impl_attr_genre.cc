// ZV_Genre: an id of the genre list. A criterion may be coarser than what media have: a candidate
// is lifted to the criterion's level before it is compared.
#include "attributes/playlist_attr_elements.h"
#include "attributes/playlist_impl_attributes.h"
#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr playlist_list_kind s_kind = {
    .source = "playlist_impl_attr_genre",
    .attribute_name = "ZV_Genre",
    .name_in_any_case = false,
    .list_type = "zvsdk_list_type_genres",
    .correlates = "zvsdk_correlates_genre",
    .value_key = "_sdkmgr_val_list_genre_id",
    .other_value_key = nullptr,
    .display_level = 2,
    .no_row_text = "Failed to find a correlates set for Genre. (criteria:%d)",
    .thresholds = {.from_seed = 750, .by_level = {750, 500, 600, 700}},
};
constexpr uint32_t s_stamp = 0xaabbccdd;
constexpr uint32_t s_element_limit = 64;

struct playlist_genre_instance : playlist_list_instance {
  zcsl_lrumap* elements;
};

playlist_genre_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_genre_instance>(instance);
}

zvsdk_status playlist_genre_attribute_name(const char** name) {
  *name = s_kind.attribute_name;
  return 0;
}

zvsdk_status playlist_genre_supported_operators(uint32_t index, uint32_t* op) {
  return playlist_attr_operator_at(playlist_id_operators, index, op);
}

zvsdk_status playlist_genre_collect_attribute_data(playlist_collect_context* context,
                                                   const playlist_collect_api* api) {
  const playlist_attr_media media{context, api};
  playlist_zdo_owner object;
  if (media.object(object) == 0)
    playlist_attr_from_track_or_object(object.get(), media, [&](zvsdk_zdo* holder) {
      return media.take_number(holder, s_kind.value_key);
    });
  media.take_list_element(s_kind.list_type);
  return 0;
}

zvsdk_status playlist_genre_create_instance(playlist_attribute_instance** instance) {
  const zvsdk_status status = playlist_attr_create<playlist_genre_instance>(s_stamp, instance);
  if (status != 0) return zcsl_logged(status, __LINE__, s_kind.source);
  playlist_genre_instance* genre = record_of(*instance);
  playlist_attr_create_elements(&genre->elements, s_element_limit);
  playlist_attr_load_lists(s_kind, &genre->lists);
  return 0;
}

// Places a number where it stands on the way from an element to the top, or else at the element.
// The comparisons will ask for what stands on that way.
zvsdk_status place_upward(playlist_genre_instance* genre, playlist_element_owner element) {
  const zvsdk_listmanager_interface& lists = *g_playlist_lists_interface;
  const uint32_t number = genre->id;
  zvsdk_status status = playlist_attr_take_place(genre, element.get());
  while (status == 0) {
    playlist_element_owner parent;
    uint32_t id = 0;
    if (lists.element_get_parent(element.get(), parent.out()) != 0) break;
    if (lists.element_get_id(parent.get(), &id) != 0) break;
    playlist_attr_keep_element(genre->elements, id, parent.get());
    if (id == number) status = playlist_attr_take_place(genre, parent.get());
    element = std::move(parent);
  }
  return status;
}

zvsdk_status place_of_text(playlist_genre_instance* genre, const char* text) {
  const uint32_t number = genre->id = zcsl_string_atou32(text);
  playlist_element_owner element;
  const zvsdk_status status =
      playlist_attr_criterion_element(genre->lists.list, text, number, element);
  if (status != 0 || !element) return status;
  if (number != 0) playlist_attr_keep_element(genre->elements, number, element.get());
  if (number != 0 && genre->op != playlist_op_like) return place_upward(genre, std::move(element));
  if (!playlist_attr_names_element(number, element.get())) return 0;
  return playlist_attr_take_place(genre, element.get());
}

zvsdk_status playlist_genre_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                                const char* text, int32_t* threshold) {
  playlist_genre_instance* genre = record_of(instance);
  genre->begin_criterion(op);
  zvsdk_status status = place_of_text(genre, text);
  if (status == 0) status = playlist_attr_like_text(s_kind, genre, threshold);
  return zcsl_logged(status, __LINE__, s_kind.source);
}

// A seed names no element, so that candidates are not lifted.
zvsdk_status playlist_genre_set_seed_criteria(playlist_attribute_instance* instance, uint32_t op,
                                              zvsdk_zdo* seed, int32_t* threshold) {
  playlist_genre_instance* genre = record_of(instance);
  genre->begin_criterion(op);
  const char* text = nullptr;
  if (playlist_attr_value(seed, s_kind.value_key, &text) != 0)
    return zcsl_logged(playlist_error_no_seed_data, __LINE__, s_kind.source);
  genre->id = zcsl_string_atou32(text);
  return playlist_attr_like_seed(s_kind, genre, threshold);
}

// As playlist_attr_lift, through the recent elements.
zvsdk_status lift(const playlist_genre_instance& genre, uint32_t* value) {
  if (genre.lists.list == nullptr || genre.level == 0) return 0;
  zvsdk_list_element* element = nullptr;
  const zvsdk_status status =
      playlist_attr_recent_element(genre.elements, genre.lists.list, *value, genre.level, &element);
  if (status != 0) return playlist_is_not_found(status) ? 0 : status;
  return g_playlist_lists_interface->element_get_id(element, value);
}

zvsdk_status compare(const playlist_genre_instance& genre, uint32_t value, int32_t* score) {
  zvsdk_status status = lift(genre, &value);
  if (status == 0) status = playlist_attr_compare_id(genre, value, score);
  return zcsl_logged(status, __LINE__, s_kind.source);
}

zvsdk_status playlist_genre_compare_integer_data(playlist_attribute_instance* instance,
                                                 uint32_t value, int32_t* score) {
  playlist_genre_instance& genre = *record_of(instance);
  return genre.scores.get(value, score, [&] { return compare(genre, value, score); });
}

zvsdk_status playlist_genre_value_from_integer_data(playlist_attribute_instance* instance,
                                                    uint32_t value, const char* key,
                                                    zvsdk_locale* locale, const char** text) {
  return zcsl_logged(
      playlist_attr_text_of_id(s_kind, &record_of(instance)->values, value, key, locale, text),
      __LINE__, s_kind.source);
}

zvsdk_status playlist_genre_release_instance(playlist_attribute_instance* instance) {
  playlist_genre_instance* genre = record_of(instance);
  zcsl_lrumap_delete(genre->elements);
  playlist_attr_release_instance(genre);
  return 0;
}

constexpr playlist_attribute s_genre = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = playlist_genre_attribute_name,
    .supported_operators = playlist_genre_supported_operators,
    .collect_attribute_data = playlist_genre_collect_attribute_data,
    .create_instance = playlist_genre_create_instance,
    .set_string_criteria = playlist_genre_set_string_criteria,
    .set_seed_criteria = playlist_genre_set_seed_criteria,
    .compare_integer_data = playlist_genre_compare_integer_data,
    .compare_string_data = nullptr,
    .value_from_integer_data = playlist_genre_value_from_integer_data,
    .value_from_string_data = nullptr,
    .release_instance = playlist_genre_release_instance,
};

}  // namespace

zvsdk_status playlist_init_attribute_genre() {
  return playlist_register_built_in(s_genre);
}
