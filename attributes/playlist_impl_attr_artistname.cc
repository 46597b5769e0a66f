// ZV_ArtistName: every name by which a media's artist may be found. A criterion is a set of names
// too, since a seed yields several; the best result of a stored name against the set stands.
#include <cstring>

#include "attributes/playlist_attr_names.h"
#include "attributes/playlist_impl_attributes.h"
#include "support/zcsl_log.h"
#include "support/zcsl_owners.h"
#include "support/zcsl_string.h"

namespace {

constexpr char s_source[] = "playlist_impl_attr_artistname";
constexpr char s_name[] = "ZV_ArtistName";
constexpr char s_official_name_key[] = "zvsdk_ctx_name!off";
constexpr uint32_t s_stamp = 0xccddeeff;

// What parts the artists of a collaboration, the preferred one first.
constexpr const char* s_separators[] = {"feat. ", "vs. "};

struct playlist_artist_instance {
  uint32_t stamp;
  uint32_t op;
  zcsl_stringmap* names; /* the criterion: keys without values, ASCII case ignored */
};

playlist_artist_instance* record_of(playlist_attribute_instance* instance) {
  return playlist_attr_record<playlist_artist_instance>(instance);
}

// Where names go: into a criterion, or into the collection.
struct name_sink {
  zcsl_stringmap* names;
  const playlist_attr_media* media;

  zvsdk_status take(const char* name) const {
    return names != nullptr ? zcsl_stringmap_value_add(names, name, nullptr) : media->give(name);
  }
};

// Each separator has a full stop, which is this byte or, in a sequence that is longer than need be,
// has one of these lead bytes. Most names have none of them and are not searched any further.
bool may_have_separator(const char* name) {
  return std::strpbrk(name, ".\xC0\xE0") != nullptr;
}

const char* find_separator(const char* name) {
  if (!may_have_separator(name)) return nullptr;
  for (const char* separator : s_separators)
    if (const char* place = zcsl_string_subistring(name, separator, nullptr, nullptr)) return place;
  return nullptr;
}

// Takes a name and, of a collaboration, the name in front of the separator. The copy is made one
// byte short, which in ordinary text drops the space.
zvsdk_status _playlist_artist_parse_names(const char* name, const name_sink& sink) {
  zvsdk_status status = sink.take(name);
  const char* separator = find_separator(name);
  if (separator != nullptr && separator != name) {
    const zcsl_string_owner first(
        zcsl_string_strdupn(name, static_cast<uint32_t>(separator - name), 0));
    status = first ? sink.take(zcsl_string_trim(first.get())) : playlist_error_no_memory;
  }
  return zcsl_logged(status, __LINE__, s_source);
}

// A walk from an object down to the names of its artist, taking what each step has.
class name_walk {
 public:
  name_walk(zvsdk_zdo* start, const name_sink& sink) : walk_{.at = start}, sink_(sink) {}

  // 0 if there was a name, otherwise the last failure.
  zvsdk_status run() {
    note(walk_.look());
    take_all();
    return found_ != 0 ? 0 : last_failure_;
  }

 private:
  void take_all() {
    using kind = playlist_attr_context;
    if (walk_.context == kind::pldata) return take_values();
    if (walk_.context == kind::album || walk_.context == kind::track)
      note(walk_.descend(playlist_key_artist));
    if (walk_.context == kind::artist) {
      take_official_name(walk_.at);
      note(walk_.descend(playlist_key_contributor));
    }
    if (walk_.context == kind::contributor) {
      take_members();
      note(walk_.descend(s_official_name_key));
    }
    if (walk_.context == kind::name) take_display(walk_.at);
  }

  void take(const char* name) {
    ++found_;
    _playlist_artist_parse_names(name, sink_);
  }

  void take_values() {
    const zvsdk_zdo_interface& objects = *g_playlist_zdo_interface;
    const char* name = nullptr;
    for (uint32_t i = 1; note(objects.zdo_value_get(walk_.at, s_name, i, &name)); ++i) take(name);
  }

  void take_display(zvsdk_zdo* name_object) {
    const char* name = nullptr;
    if (note(playlist_attr_value(name_object, playlist_key_display, &name))) take(name);
  }

  void take_official_name(zvsdk_zdo* owner) {
    playlist_zdo_owner name_object;
    if (note(playlist_attr_child(owner, s_official_name_key, name_object)))
      take_display(name_object.get());
  }

  void take_members() {
    playlist_attr_each_child(walk_.at, playlist_key_contributor, [&](playlist_zdo_owner& member) {
      take_official_name(member.get());
      return true;
    });
  }

  bool note(zvsdk_status status) {
    if (status != 0) last_failure_ = status;
    return status == 0;
  }

  playlist_attr_walk walk_;
  const name_sink& sink_;
  uint32_t found_ = 0;
  zvsdk_status last_failure_ = playlist_warn_not_found;
};

zvsdk_status _playlist_artist_collect_names(zvsdk_zdo* object, const name_sink& sink) {
  return zcsl_logged(name_walk(object, sink).run(), __LINE__, s_source);
}

zvsdk_status playlist_artist_attribute_name(const char** name) {
  *name = s_name;
  return 0;
}

zvsdk_status playlist_artist_supported_operators(uint32_t index, uint32_t* op) {
  return zcsl_logged(playlist_name_operator_at(index, op), __LINE__, s_source);
}

zvsdk_status playlist_artist_collect_attribute_data(playlist_collect_context* context,
                                                    const playlist_collect_api* api) {
  const playlist_attr_media media{context, api};
  const name_sink into_collection{.names = nullptr, .media = &media};
  playlist_zdo_owner object;
  if (media.object(object) != 0) return 0;
  playlist_attr_from_track_or_object(object.get(), media, [&](zvsdk_zdo* holder) {
    return _playlist_artist_collect_names(holder, into_collection);
  });
  return 0;
}

// A failure leaves the record to the caller, who releases it as any other.
zvsdk_status playlist_artist_create_instance(playlist_attribute_instance** instance) {
  zvsdk_status status = playlist_attr_create<playlist_artist_instance>(s_stamp, instance);
  if (status == 0) status = zcsl_stringmap_create(&record_of(*instance)->names, 0);
  return zcsl_logged(status, __LINE__, s_source);
}

zvsdk_status playlist_artist_set_string_criteria(playlist_attribute_instance* instance, uint32_t op,
                                                 const char* text, int32_t* threshold) {
  playlist_artist_instance* artist = record_of(instance);
  const zvsdk_status status = zcsl_stringmap_value_add(artist->names, text, nullptr);
  if (status != 0) return zcsl_logged(status, __LINE__, s_source);
  artist->op = op;
  playlist_attr_set_threshold(playlist_name_thresholds, op, 0, threshold);
  return 0;
}

// Of an album, the first track's artist; the album's own where that gives nothing.
void collect_seed_names(zvsdk_zdo* seed, zcsl_stringmap* names) {
  const name_sink into_criterion{.names = names, .media = nullptr};
  playlist_zdo_owner track;
  if (playlist_attr_context_of(seed) == playlist_attr_context::album &&
      playlist_attr_child(seed, playlist_key_matching_track, track) == 0 &&
      _playlist_artist_collect_names(track.get(), into_criterion) == 0)
    return;
  _playlist_artist_collect_names(seed, into_criterion);
}

zvsdk_status playlist_artist_set_seed_criteria(playlist_attribute_instance* instance, uint32_t op,
                                               zvsdk_zdo* seed, int32_t* threshold) {
  playlist_artist_instance* artist = record_of(instance);
  artist->op = op;
  playlist_attr_set_seed_threshold(playlist_name_thresholds, op, threshold);
  collect_seed_names(seed, artist->names);
  uint32_t count = 0;
  zvsdk_status status = zcsl_stringmap_count(artist->names, &count);
  if (status == 0 && count == 0) status = playlist_error_no_seed_data;
  return zcsl_logged(status, __LINE__, s_source);
}

bool has_name(const playlist_artist_instance& artist, const char* name) {
  return zcsl_stringmap_value_find_ex(artist.names, name, 0, nullptr) == 0;
}

// The best score of the set, from 0 for an empty one.
int32_t best_score(const playlist_artist_instance& artist, playlist_name_scorer scorer,
                   const char* stored) {
  int32_t best = 0;
  const char* name = nullptr;
  for (uint32_t index = 0;
       best < 1000 && zcsl_stringmap_value_get(artist.names, index, &name, nullptr) == 0; ++index) {
    const int32_t score = scorer(stored, name);
    if (index == 0 || score > best) best = score;
  }
  return best;
}

zvsdk_status playlist_artist_compare_string_data(playlist_attribute_instance* instance,
                                                 const char* text, int32_t* score) {
  const playlist_artist_instance& artist = *record_of(instance);
  switch (artist.op) {
    case playlist_op_equal:
    case playlist_op_not_equal:
      *score = playlist_attr_verdict(has_name(artist, text) == (artist.op == playlist_op_equal));
      return 0;
    default:
      break;
  }
  const playlist_name_scorer scorer = playlist_name_scorer_of(artist.op);
  if (scorer == nullptr) return zcsl_logged(playlist_error_internal, __LINE__, s_source);
  *score = best_score(artist, scorer, text);
  return 0;
}

zvsdk_status playlist_artist_value_from_string_data(playlist_attribute_instance*, const char* text,
                                                    const char* key, zvsdk_locale*,
                                                    const char** value) {
  return playlist_name_value(s_name, text, key, value);
}

zvsdk_status playlist_artist_release_instance(playlist_attribute_instance* instance) {
  playlist_artist_instance* artist = record_of(instance);
  zcsl_stringmap_delete(artist->names);
  zcsl_memory_free(artist);
  return 0;
}

constexpr playlist_attribute s_artist_name = {
    .initialize = nullptr,
    .shutdown = nullptr,
    .attribute_name = playlist_artist_attribute_name,
    .supported_operators = playlist_artist_supported_operators,
    .collect_attribute_data = playlist_artist_collect_attribute_data,
    .create_instance = playlist_artist_create_instance,
    .set_string_criteria = playlist_artist_set_string_criteria,
    .set_seed_criteria = playlist_artist_set_seed_criteria,
    .compare_integer_data = nullptr,
    .compare_string_data = playlist_artist_compare_string_data,
    .value_from_integer_data = nullptr,
    .value_from_string_data = playlist_artist_value_from_string_data,
    .release_instance = playlist_artist_release_instance,
};

}  // namespace

zvsdk_status playlist_init_attribute_artistname() {
  return playlist_register_built_in(s_artist_name);
}
