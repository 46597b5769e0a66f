/*
 * playlist_attr_titles.h: album name and track name are one attribute twice over: a title that an
 * object of the own context has itself, and that the children of an object of the other context
 * have. playlist_title_kind holds all that differs, playlist_title_attribute makes the table of
 * thirteen slots from it.
 */
#ifndef PLAYLIST_ATTR_TITLES_H
#define PLAYLIST_ATTR_TITLES_H

#include "attributes/playlist_attr_names.h"

struct playlist_title_kind {
  const char* source;         /* name of the source file, for the log */
  const char* attribute_name; /* also the value key of pldata objects */
  playlist_attr_context own;
  playlist_attr_context other;
  const char* child_key; /* from an object of the other context to those that have titles */
  bool media_only;       /* collect from children that stand for the media, not from all */
};

zvsdk_status playlist_title_supported_operators(const playlist_title_kind& kind, uint32_t index,
                                                uint32_t* op);
zvsdk_status playlist_title_collect(const playlist_title_kind& kind,
                                    const playlist_attr_media& media);
zvsdk_status playlist_title_create_instance(const playlist_title_kind& kind,
                                            playlist_attribute_instance** instance);
zvsdk_status playlist_title_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                                const char* text, int32_t* threshold);
zvsdk_status playlist_title_set_seed_criteria(const playlist_title_kind& kind,
                                              playlist_attribute_instance* instance, uint32_t op,
                                              zvsdk_zdo* seed, int32_t* threshold);
zvsdk_status playlist_title_compare(const playlist_title_kind& kind,
                                    playlist_attribute_instance* instance, const char* stored,
                                    int32_t* score);
zvsdk_status playlist_title_release_instance(playlist_attribute_instance* instance);

/* The table of a kind: each slot that needs the kind passes it on. */
template <const playlist_title_kind& Kind>
inline constexpr playlist_attribute playlist_title_attribute = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = [](const char** name) -> zvsdk_status {
      *name = Kind.attribute_name;
      return 0;
    },
    .supported_operators = [](uint32_t index, uint32_t* op) -> zvsdk_status {
      return playlist_title_supported_operators(Kind, index, op);
    },
    .collect_attribute_data = [](playlist_collect_context* context,
                                 const playlist_collect_api* api) -> zvsdk_status {
      return playlist_title_collect(Kind, {context, api});
    },
    .create_instance = [](playlist_attribute_instance** instance) -> zvsdk_status {
      return playlist_title_create_instance(Kind, instance);
    },
    .set_string_criteria = playlist_title_set_string_criteria,
    .set_seed_criteria = [](playlist_attribute_instance* instance, uint32_t op, zvsdk_zdo* seed,
                            int32_t* threshold) -> zvsdk_status {
      return playlist_title_set_seed_criteria(Kind, instance, op, seed, threshold);
    },
    .compare_integer_data = nullptr,
    .compare_string_data = [](playlist_attribute_instance* instance, const char* text,
                              int32_t* score) -> zvsdk_status {
      return playlist_title_compare(Kind, instance, text, score);
    },
    .value_from_integer_data = nullptr,
    .value_from_string_data = [](playlist_attribute_instance*, const char* text, const char* key,
                                 zvsdk_locale*, const char** value) -> zvsdk_status {
      return playlist_name_value(Kind.attribute_name, text, key, value);
    },
    .release_instance = playlist_title_release_instance,
};

#endif
