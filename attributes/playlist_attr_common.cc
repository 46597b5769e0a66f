// What all attributes share: reading data objects, collecting, thresholds and interned texts.
#include "attributes/playlist_attr_common.h"

#include <iterator>
#include <string_view>

#include "support/zcsl_string.h"

namespace {

struct context_name {
  std::string_view text;
  playlist_attr_context context;
};
constexpr context_name s_contexts[] = {
    {"zvsdk_ctx_track", playlist_attr_context::track},
    {"zvsdk_ctx_album", playlist_attr_context::album},
    {"zvsdk_ctx_pldata", playlist_attr_context::pldata},
    {"zvsdk_ctx_artist", playlist_attr_context::artist},
    {"zvsdk_ctx_contributor", playlist_attr_context::contributor},
    {"zvsdk_ctx_name", playlist_attr_context::name},
};

// Asked several times for each media that is added: the length alone rules out most names.
playlist_attr_context context_named(std::string_view text) {
  for (const context_name& known : s_contexts)
    if (text == known.text) return known.context;
  return playlist_attr_context::other;
}

// Where a contributor's values are: an album stands in when it has no artist.
bool has_contributor_values(playlist_attr_context context) {
  return context == playlist_attr_context::contributor ||
         context == playlist_attr_context::pldata || context == playlist_attr_context::album;
}

// `of_album(album)` hands out the album's track.
template <class OfAlbum>
zvsdk_zdo* track_of(zvsdk_zdo* object, playlist_zdo_owner& held, OfAlbum of_album) {
  switch (playlist_attr_context_of(object)) {
    case playlist_attr_context::album:
      held = of_album(object);
      return held.get();
    case playlist_attr_context::track:
    case playlist_attr_context::pldata:
      return object;
    default:
      return nullptr;
  }
}

}  // namespace

zvsdk_status playlist_attr_context_get(zvsdk_zdo* object, playlist_attr_context* context) {
  const char* type = nullptr;
  const zvsdk_status status = g_playlist_zdo_interface->zdo_get_type(object, &type);
  const bool is_known = status == 0 && type != nullptr;
  *context = is_known ? context_named(type) : playlist_attr_context::other;
  return status;
}

zvsdk_status playlist_attr_value(zvsdk_zdo* object, const char* key, const char** text) {
  return g_playlist_zdo_interface->zdo_value_get(object, key, 1, text);
}

zvsdk_status playlist_attr_child(zvsdk_zdo* object, const char* key, playlist_zdo_owner& child) {
  return g_playlist_zdo_interface->zdo_child_get(object, key, 1, nullptr, child.out());
}

zvsdk_status playlist_attr_walk::descend(const char* key) {
  playlist_zdo_owner child;
  const zvsdk_status status = playlist_attr_child(at, key, child);
  if (status != 0) return status;
  held = std::move(child);
  at = held.get();
  return look();
}

zvsdk_status playlist_attr_contributor_number(zvsdk_zdo* object, const char* key,
                                              uint32_t* number) {
  using kind = playlist_attr_context;
  playlist_attr_walk walk{.at = object};
  zvsdk_status status = walk.look();
  if (walk.context == kind::album || walk.context == kind::track)
    status = walk.descend(playlist_key_artist);
  if (walk.context == kind::artist) status = walk.descend(playlist_key_contributor);
  const char* text = nullptr;
  if (has_contributor_values(walk.context)) status = playlist_attr_value(walk.at, key, &text);
  if (status == 0) *number = zcsl_string_atou32(text);
  return status;
}

const char* playlist_attr_media::ident() const {
  const char* ident = nullptr;
  return api->get_media_ident(context, &ident) == 0 ? ident : nullptr;
}

zvsdk_status playlist_attr_media::take_number(zvsdk_zdo* object, const char* key) const {
  const char* text = nullptr;
  const zvsdk_status status = playlist_attr_value(object, key, &text);
  return status != 0 ? status : give(zcsl_string_atou32(text));
}

void playlist_attr_media::take_list_element(const char* list_type) const {
  const zvsdk_listmanager_interface& lists = *g_playlist_lists_interface;
  zvsdk_list_element* element = nullptr;
  const char* type = nullptr;
  uint32_t id = 0;
  if (api->get_media_list_element(context, &element) != 0) return;
  if (lists.element_get_list_type(element, &type) != 0) return;
  if (!zcsl_string_equal(type, list_type, 0)) return;
  if (lists.element_get_id(element, &id) == 0) give(id);
}

bool playlist_attr_is_media(zvsdk_zdo* track, const char* ident) {
  const char* own = nullptr;
  if (playlist_attr_value(track, "zvsdk_val_ident", &own) != 0) return true;
  return zcsl_string_equal(own, ident, 0) != 0;
}

playlist_zdo_owner playlist_attr_matching_track(zvsdk_zdo* album,
                                                const playlist_attr_media& media) {
  playlist_zdo_owner match;
  const char* ident = media.ident();
  if (ident == nullptr) return match;
  playlist_attr_each_child(album, playlist_key_matching_track, [&](playlist_zdo_owner& track) {
    if (!playlist_attr_is_media(track.get(), ident)) return true;
    match = std::move(track);
    return false;
  });
  return match;
}

zvsdk_zdo* playlist_attr_track_of_media(zvsdk_zdo* object, const playlist_attr_media& media,
                                        playlist_zdo_owner& held) {
  return track_of(object, held,
                  [&](zvsdk_zdo* album) { return playlist_attr_matching_track(album, media); });
}

zvsdk_zdo* playlist_attr_track_of_seed(zvsdk_zdo* seed, playlist_zdo_owner& held) {
  return track_of(seed, held, [](zvsdk_zdo* album) {
    playlist_zdo_owner first;
    playlist_attr_child(album, playlist_key_matching_track, first);
    return first;
  });
}

void playlist_attr_set_threshold(const playlist_attr_thresholds& thresholds, uint32_t op,
                                 uint32_t level, int32_t* threshold) {
  if (op != playlist_op_like) return;
  *threshold = thresholds.by_level[level < std::size(thresholds.by_level) ? level : 0];
}

void playlist_attr_set_seed_threshold(const playlist_attr_thresholds& thresholds, uint32_t op,
                                      int32_t* threshold) {
  if (op == playlist_op_like) *threshold = thresholds.from_seed;
}

zvsdk_status _playlist_attribute_cache_value(zcsl_stringmap** map, const char* text,
                                             const char** copy) {
  zvsdk_status status = 0;
  if (*map == nullptr) status = zcsl_stringmap_create(map, zcsl_hashtable_flag_case_sensitive);
  if (status != 0) return status;
  if (zcsl_stringmap_value_find_ex(*map, text, 0, copy) == 0) return 0;
  status = zcsl_stringmap_value_add(*map, text, text);
  return status != 0 ? status : zcsl_stringmap_value_find_ex(*map, text, 0, copy);
}

zvsdk_status playlist_attr_cache_number(zcsl_stringmap** map, uint32_t number, const char** copy) {
  char digits[sizeof "4294967295"];
  zcsl_string_u32toa(number, digits, sizeof digits);
  return _playlist_attribute_cache_value(map, digits, copy);
}
