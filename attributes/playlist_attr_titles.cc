// Album name and track name: finding an object's title, the criterion, the comparison.
#include "attributes/playlist_attr_titles.h"

#include "support/zcsl_log.h"
#include "support/zcsl_string.h"

namespace {

constexpr uint32_t s_stamp = 0xcddeeffa;

struct playlist_title_instance {
  uint32_t stamp;
  uint32_t op;
  char* text; /* the criterion */
};

playlist_title_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_title_instance>(instance);
}

// Hands the object's title to `take(text)`, during which it stays alive.
template <class Take>
zvsdk_status with_title(const playlist_title_kind& kind, zvsdk_zdo* object, Take take) {
  playlist_zdo_owner title;
  const char* text = nullptr;
  zvsdk_status status = playlist_attr_child(object, "zvsdk_ctx_title!off", title);
  if (status == 0) status = playlist_attr_value(title.get(), playlist_key_display, &text);
  if (status != 0) return zcsl_logged(status, __LINE__, kind.source);
  take(text);
  return 0;
}

// Every child with a title, or only those that stand for the media.
template <class Take>
void with_titles_of_children(const playlist_title_kind& kind, zvsdk_zdo* object,
                             const playlist_attr_media& media, Take take) {
  const char* ident = kind.media_only ? media.ident() : nullptr;
  playlist_attr_each_child(object, kind.child_key, [&](playlist_zdo_owner& child) {
    if (!kind.media_only || playlist_attr_is_media(child.get(), ident))
      with_title(kind, child.get(), take);
    return true;
  });
}

// The titles of an object by its context; those of its children are left to `of_children()`.
template <class Take, class OfChildren>
void with_titles(const playlist_title_kind& kind, zvsdk_zdo* object, Take take,
                 OfChildren of_children) {
  const playlist_attr_context context = playlist_attr_context_of(object);
  const char* text = nullptr;
  if (context == kind.own) {
    with_title(kind, object, take);
  } else if (context == kind.other) {
    of_children();
  } else if (context == playlist_attr_context::pldata) {
    if (playlist_attr_value(object, kind.attribute_name, &text) == 0) take(text);
  }
}

// The first title that a seed has.
char* copy_of_title(const playlist_title_kind& kind, zvsdk_zdo* seed) {
  char* copy = nullptr;
  const auto take = [&](const char* text) { copy = zcsl_string_strdup(text); };
  with_titles(kind, seed, take, [&] {
    playlist_attr_each_child(seed, kind.child_key, [&](playlist_zdo_owner& child) {
      return with_title(kind, child.get(), take) != 0;
    });
  });
  return copy;
}

}  // namespace

zvsdk_status playlist_title_supported_operators(const playlist_title_kind& kind, uint32_t index,
                                                uint32_t* op) {
  return zcsl_logged(playlist_name_operator_at(index, op), __LINE__, kind.source);
}

zvsdk_status playlist_title_collect(const playlist_title_kind& kind,
                                    const playlist_attr_media& media) {
  playlist_zdo_owner object;
  if (media.object(object) != 0) return 0;
  const auto take = [&](const char* text) { media.give(text); };
  with_titles(kind, object.get(), take,
              [&] { with_titles_of_children(kind, object.get(), media, take); });
  return 0;
}

zvsdk_status playlist_title_create_instance(const playlist_title_kind& kind,
                                            playlist_attribute_instance** instance) {
  return zcsl_logged(playlist_attr_create<playlist_title_instance>(s_stamp, instance), __LINE__,
                     kind.source);
}

zvsdk_status playlist_title_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                                const char* text, int32_t* threshold) {
  playlist_title_instance* title = record_of(instance);
  title->op = op;
  title->text = zcsl_string_strdup(text);
  playlist_attr_set_threshold(playlist_name_thresholds, op, 0, threshold);
  return 0;
}

zvsdk_status playlist_title_set_seed_criteria(const playlist_title_kind& kind,
                                              playlist_attribute_instance* instance, uint32_t op,
                                              zvsdk_zdo* seed, int32_t* threshold) {
  playlist_title_instance* title = record_of(instance);
  playlist_attr_set_seed_threshold(playlist_name_thresholds, op, threshold);
  title->op = op;
  title->text = copy_of_title(kind, seed);
  if (!zcsl_string_isempty(title->text)) return 0;
  return zcsl_logged(playlist_error_no_seed_data, __LINE__, kind.source);
}

zvsdk_status playlist_title_compare(const playlist_title_kind& kind,
                                    playlist_attribute_instance* instance, const char* stored,
                                    int32_t* score) {
  const playlist_title_instance& title = *record_of(instance);
  const playlist_name_scorer scorer = playlist_name_scorer_of(title.op);
  if (scorer == nullptr) return zcsl_logged(playlist_error_internal, __LINE__, kind.source);
  *score = scorer(stored, title.text);
  return 0;
}

zvsdk_status playlist_title_release_instance(playlist_attribute_instance* instance) {
  playlist_title_instance* title = record_of(instance);
  zcsl_string_free(title->text);
  zcsl_memory_free(title);
  return 0;
}
