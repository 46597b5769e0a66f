// The tree of a track: track, titles, album, artist, contributor and names.

#include <algorithm>
#include <span>

#include "manager/track_properties.h"
#include "manager/zdo_builder.h"

namespace manager {
namespace {

constexpr uint32_t s_usual_nodes = 8;
constexpr size_t s_other_keys = 7;    // of titles, names, album and artist
constexpr size_t s_number_size = 12;  // of a value that is a number

/* Where the attributes look for an id. */
struct place {
  track_property property;
  const char* key;
};
constexpr place s_track_places[] = {
    {track_property::genre, "_sdkmgr_val_list_genre_id"},
    {track_property::mood, "_sdkmgr_val_list_mood_id"},
};
constexpr place s_contributor_places[] = {
    {track_property::era, "_sdkmgr_val_list_era_id"},
    {track_property::origin, "_sdkmgr_val_list_origin_id"},
    {track_property::artist_type, "_sdkmgr_val_list_artist_type_id"},
};

/* What has a text to be shown: the key that holds it, and its context. */
struct display_kind {
  const char* key;
  const char* context;
};
constexpr display_kind s_title = {"zvsdk_ctx_title!off", "zvsdk_ctx_title"};
constexpr display_kind s_name = {"zvsdk_ctx_name!off", "zvsdk_ctx_name"};

class track_tree {
 public:
  track_tree(zdo_pool& pool, const zvsdk_track_description& track,
             const track_properties& properties)
      : track_(track), properties_(properties), builder_(pool, node_count(), byte_count()) {}

  zdo_node* build() {
    zdo_node* track = builder_.add_root("zvsdk_ctx_track", track_keys());
    builder_.add_value(track, "zvsdk_val_ident", track_.ident);
    builder_.add_value(track, "_sdkmgr_val_list_tempo_value", decimal(track_.tempo).c_str());
    builder_.add_value(track, "zvsdk_val_year", decimal(track_.year).c_str());
    builder_.add_value(track, "_sdkmgr_val_list_mood_data", properties_.mood_profile());
    add_ids(track, s_track_places);
    add_display(track, s_title, track_.title);
    if (given(track_.album)) {
      add_display(builder_.add_child(track, "zvsdk_ctx_album!", "zvsdk_ctx_album", 1), s_title,
                  track_.album);
    }
    if (has_artist()) add_artist(track);
    return builder_.finish();
  }

 private:
  uint32_t count_ids(std::span<const place> places) const {
    return static_cast<uint32_t>(
        std::count_if(places.begin(), places.end(),
                      [&](const place& each) { return properties_.id(each.property) != 0; }));
  }
  bool has_artist() const {
    return track_.artist_count != 0 || count_ids(s_contributor_places) != 0;
  }
  const char* artist(uint32_t index) const {
    return index < track_.artist_count ? track_.artists[index] : nullptr;
  }

  uint32_t node_count() const {
    const uint32_t members = track_.artist_count > 1 ? track_.artist_count - 1 : 0;
    return members < zdo_pool::most_nodes ? s_usual_nodes + 2 * members : zdo_pool::most_nodes;
  }

  uint32_t track_keys() const {
    return (track_.tempo != 0) + (track_.year != 0) + given(track_.ident) +
           given(properties_.mood_profile()) + count_ids(s_track_places) + given(track_.title) +
           given(track_.album) + has_artist();
  }
  uint32_t contributor_keys() const {
    return 1 + count_ids(s_contributor_places) + (track_.artist_count > 1);
  }

  /* An estimate that makes the arena a single block for the usual track. */
  size_t byte_count() const {
    const size_t numbers = 2 + count_ids(s_track_places) + count_ids(s_contributor_places);
    size_t bytes = (track_keys() + contributor_keys() + s_other_keys) * sizeof(zdo_key) +
                   numbers * s_number_size;
    for (const char* text :
         {track_.ident, track_.title, track_.album, properties_.mood_profile()}) {
      if (text != nullptr) bytes += std::strlen(text) + 1;
    }
    for (uint32_t i = 0; i < track_.artist_count; ++i) {
      if (artist(i) != nullptr) bytes += 2 * std::strlen(artist(i)) + 3 * sizeof(zdo_key);
    }
    return bytes;
  }

  /* A title or name object with its display text; nothing for an unknown text. */
  void add_display(zdo_node* of, const display_kind& kind, const char* text) {
    if (!given(text)) return;
    zdo_node* node = builder_.add_child(of, kind.key, kind.context, 1);
    builder_.add_value(node, "zvsdk_val_display", text);
  }

  void add_artist(zdo_node* track) {
    zdo_node* node = builder_.add_child(track, "zvsdk_ctx_artist!", "zvsdk_ctx_artist", 2);
    add_display(node, s_name, artist(0));
    zdo_node* contributor = add_contributor(node, artist(0), contributor_keys());
    add_ids(contributor, s_contributor_places);
    for (uint32_t i = 1; i < track_.artist_count; ++i) {
      if (given(artist(i))) add_contributor(contributor, artist(i), 1);
    }
  }

  zdo_node* add_contributor(zdo_node* of, const char* name, uint32_t keys) {
    zdo_node* node =
        builder_.add_child(of, "zvsdk_ctx_contributor!", "zvsdk_ctx_contributor", keys);
    add_display(node, s_name, name);
    return node;
  }

  void add_ids(zdo_node* of, std::span<const place> places) {
    for (const place& each : places) {
      builder_.add_value(of, each.key, decimal(properties_.id(each.property)).c_str());
    }
  }

  const zvsdk_track_description& track_;
  const track_properties& properties_;
  zdo_builder builder_;
};

}  // namespace

zdo_node* zdo_from_track(host& h, const zvsdk_track_description& track, uint32_t* unknown) {
  const track_properties properties(h, track, unknown);
  return track_tree(h.objects, track, properties).build();
}

}  // namespace manager
