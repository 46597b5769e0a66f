// The tree of a track: track, titles, album, artist, contributor and names.

#include <charconv>

#include "manager/zdo_builder.h"

namespace manager {
namespace {

constexpr uint32_t s_usual_nodes = 8;
constexpr size_t s_other_keys = 7;  // of titles, names, album and artist

bool given(const char* text) {
  return text != nullptr && *text != '\0';
}

/* Decimal text of a number; 0 is unknown and gives an empty one. */
class decimal {
 public:
  explicit decimal(uint32_t number) {
    if (number != 0) std::to_chars(m_text, m_text + sizeof m_text - 1, number);
  }
  const char* c_str() const { return m_text; }

 private:
  char m_text[12] = {};
};

bool is_number(const char* text) {
  return *text != '\0' && std::strspn(text, "0123456789") == std::strlen(text);
}

/* The id of a list element by its text, in the language of the playlist or the music group; 0 when
 * there is no such list or no such element. */
uint32_t id_of_name(host& h, const char* list_type, const char* name) {
  for (const char* group : {ZVSDK_LOCALE_PLAYLIST, ZVSDK_LOCALE_MUSIC}) {
    locale_slot* locale = h.groups.get_default(group);
    if (locale == nullptr) continue;
    const std::string language = locale->language;
    h.groups.release(locale);
    localized_list* list = h.all_lists.lookup(list_type, language);
    return list != nullptr ? list->id_by_text(name) : 0;
  }
  return 0;
}

class track_tree {
 public:
  track_tree(host& h, const zvsdk_track_description& track)
      : m_host(h), m_track(track), m_builder(h.objects, node_count(), byte_count()) {}

  zdo_node* build() {
    zdo_node* track = m_builder.add_root("zvsdk_ctx_track", track_keys());
    m_builder.add_value(track, "zvsdk_val_ident", m_track.ident);
    m_builder.add_value(track, "_sdkmgr_val_list_tempo_value", decimal(m_track.tempo).c_str());
    m_builder.add_value(track, "zvsdk_val_year", decimal(m_track.year).c_str());
    m_builder.add_value(track, "_sdkmgr_val_list_mood_data", m_track.mood_profile);
    add_list_id(track, "_sdkmgr_val_list_genre_id", "zvsdk_list_type_genres", m_track.genre);
    add_title(track, m_track.title);
    if (given(m_track.album)) {
      add_title(m_builder.add_child(track, "zvsdk_ctx_album!", "zvsdk_ctx_album", 1),
                m_track.album);
    }
    if (has_artist()) add_artist(track);
    return m_builder.finish();
  }

 private:
  bool has_artist() const {
    return m_track.artist_count != 0 || given(m_track.origin) || given(m_track.artist_type);
  }
  const char* artist(uint32_t index) const {
    return index < m_track.artist_count ? m_track.artists[index] : nullptr;
  }

  uint32_t node_count() const {
    const uint32_t members = m_track.artist_count > 1 ? m_track.artist_count - 1 : 0;
    return members < zdo_pool::most_nodes ? s_usual_nodes + 2 * members : zdo_pool::most_nodes;
  }

  uint32_t track_keys() const {
    return (m_track.tempo != 0) + (m_track.year != 0) + given(m_track.ident) +
           given(m_track.mood_profile) + given(m_track.genre) + given(m_track.title) +
           given(m_track.album) + has_artist();
  }
  uint32_t contributor_keys() const {
    return 1 + given(m_track.origin) + given(m_track.artist_type) + (m_track.artist_count > 1);
  }

  /* An estimate that makes the arena a single block for the usual track. */
  size_t byte_count() const {
    size_t bytes = (track_keys() + contributor_keys() + s_other_keys) * sizeof(zdo_key) + 32;
    for (const char* text : {m_track.ident, m_track.title, m_track.album, m_track.mood_profile}) {
      if (text != nullptr) bytes += std::strlen(text) + 1;
    }
    for (uint32_t i = 0; i < m_track.artist_count; ++i) {
      if (artist(i) != nullptr) bytes += 2 * std::strlen(artist(i)) + 3 * sizeof(zdo_key);
    }
    return bytes;
  }

  void add_title(zdo_node* of, const char* text) { add_display(of, "title", text); }

  /* A title or name object with its display text; nothing for an unknown text. */
  void add_display(zdo_node* of, const char* what, const char* text) {
    if (!given(text)) return;
    const bool title = *what == 't';
    zdo_node* node = m_builder.add_child(of, title ? "zvsdk_ctx_title!off" : "zvsdk_ctx_name!off",
                                         title ? "zvsdk_ctx_title" : "zvsdk_ctx_name", 1);
    m_builder.add_value(node, "zvsdk_val_display", text);
  }

  void add_artist(zdo_node* track) {
    zdo_node* node = m_builder.add_child(track, "zvsdk_ctx_artist!", "zvsdk_ctx_artist", 2);
    add_display(node, "name", artist(0));
    zdo_node* contributor = add_contributor(node, artist(0), contributor_keys());
    add_list_id(contributor, "_sdkmgr_val_list_origin_id", "zvsdk_list_type_origins",
                m_track.origin);
    add_list_id(contributor, "_sdkmgr_val_list_artist_type_id", "zvsdk_list_type_artist_types",
                m_track.artist_type);
    for (uint32_t i = 1; i < m_track.artist_count; ++i) {
      if (given(artist(i))) add_contributor(contributor, artist(i), 1);
    }
  }

  zdo_node* add_contributor(zdo_node* of, const char* name, uint32_t keys) {
    zdo_node* node =
        m_builder.add_child(of, "zvsdk_ctx_contributor!", "zvsdk_ctx_contributor", keys);
    add_display(node, "name", name);
    return node;
  }

  /* A list property is given as an id or by name. */
  void add_list_id(zdo_node* of, const char* key, const char* list_type, const char* text) {
    if (!given(text)) return;
    if (is_number(text)) return m_builder.add_value(of, key, text);
    m_builder.add_value(of, key, decimal(id_of_name(m_host, list_type, text)).c_str());
  }

  host& m_host;
  const zvsdk_track_description& m_track;
  zdo_builder m_builder;
};

}  // namespace

zdo_node* zdo_from_track(host& h, const zvsdk_track_description& track) {
  return track_tree(h, track).build();
}

}  // namespace manager
