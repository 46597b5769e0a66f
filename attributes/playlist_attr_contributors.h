/*
 * playlist_attr_contributors.h: origin and artist type are one attribute twice over: an id of a
 * list that a media has through its artist's contributor. playlist_contributor_kind holds all that
 * differs, playlist_contributor_attribute makes the table of thirteen slots from it. Comparing asks
 * the list once for each candidate; nothing is allocated.
 */
#ifndef PLAYLIST_ATTR_CONTRIBUTORS_H
#define PLAYLIST_ATTR_CONTRIBUTORS_H

#include "attributes/playlist_attr_lists.h"

struct playlist_contributor_kind {
  playlist_list_kind list;
  uint32_t stamp;
  /* A number that only falls inside an element never names it; else for LIKE alone it does not. */
  bool own_number_only;
  /* By level: what LIKE gives a candidate that is the criterion itself where its row says 0. */
  int32_t self_score[4];
};

zvsdk_status playlist_contributor_collect(const playlist_contributor_kind& kind,
                                          const playlist_attr_media& media);
zvsdk_status playlist_contributor_create_instance(const playlist_contributor_kind& kind,
                                                  playlist_attribute_instance** instance);
zvsdk_status playlist_contributor_set_string_criteria(const playlist_contributor_kind& kind,
                                                      playlist_attribute_instance* instance,
                                                      uint32_t op, const char* text,
                                                      int32_t* threshold);
zvsdk_status playlist_contributor_set_seed_criteria(const playlist_contributor_kind& kind,
                                                    playlist_attribute_instance* instance,
                                                    uint32_t op, zvsdk_zdo* seed,
                                                    int32_t* threshold);
zvsdk_status playlist_contributor_compare(const playlist_contributor_kind& kind,
                                          playlist_attribute_instance* instance, uint32_t value,
                                          int32_t* score);
zvsdk_status playlist_contributor_value(const playlist_contributor_kind& kind,
                                        playlist_attribute_instance* instance, uint32_t value,
                                        const char* key, zvsdk_locale* locale, const char** text);
zvsdk_status playlist_contributor_release_instance(playlist_attribute_instance* instance);

/* The table of a kind: each slot that needs the kind passes it on. */
template <const playlist_contributor_kind& Kind>
inline constexpr playlist_attribute playlist_contributor_attribute = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = [](const char** name) -> zvsdk_status {
      *name = Kind.list.attribute_name;
      return 0;
    },
    .supported_operators = [](uint32_t index, uint32_t* op) -> zvsdk_status {
      return playlist_attr_operator_at(playlist_id_operators, index, op);
    },
    .collect_attribute_data = [](playlist_collect_context* context,
                                 const playlist_collect_api* api) -> zvsdk_status {
      return playlist_contributor_collect(Kind, {context, api});
    },
    .create_instance = [](playlist_attribute_instance** instance) -> zvsdk_status {
      return playlist_contributor_create_instance(Kind, instance);
    },
    .set_string_criteria = [](playlist_attribute_instance* instance, uint32_t op, const char* text,
                              int32_t* threshold) -> zvsdk_status {
      return playlist_contributor_set_string_criteria(Kind, instance, op, text, threshold);
    },
    .set_seed_criteria = [](playlist_attribute_instance* instance, uint32_t op, zvsdk_zdo* seed,
                            int32_t* threshold) -> zvsdk_status {
      return playlist_contributor_set_seed_criteria(Kind, instance, op, seed, threshold);
    },
    .compare_integer_data = [](playlist_attribute_instance* instance, uint32_t value,
                               int32_t* score) -> zvsdk_status {
      return playlist_contributor_compare(Kind, instance, value, score);
    },
    .compare_string_data = nullptr,
    .value_from_integer_data = [](playlist_attribute_instance* instance, uint32_t value,
                                  const char* key, zvsdk_locale* locale,
                                  const char** text) -> zvsdk_status {
      return playlist_contributor_value(Kind, instance, value, key, locale, text);
    },
    .value_from_string_data = nullptr,
    .release_instance = playlist_contributor_release_instance,
};

#endif
