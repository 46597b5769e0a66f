// What every attribute must obey, and what every attribute whose values are from a list must: one
// row an attribute.
#include "tests/attributes/attribute_fixture.h"

namespace {

// Operators by their codes, in index order.
const std::vector<uint32_t> s_of_names = {10, 11, 20, 30, 31};
const std::vector<uint32_t> s_of_ids = {10, 11, 20};
const std::vector<uint32_t> s_of_ranges = {10, 11, 20, 12, 13, 14, 15};

enum trait {
  integers = 0x01,      /* what it stores; else texts */
  any_context = 0x02,   /* a seed of any context may have the value */
  any_case = 0x04,      /* the key of the display text counts in any case */
  any_key = 0x08,       /* without a locale every key gives the number */
  artists = 0x10,       /* the value is the artist's, not the track's or album's own */
  album = 0x20,         /* an album stands in for a track that it does not have */
  first_track = 0x40,   /* an album as a seed is its first track, not itself */
  needs_row = 0x80,     /* LIKE needs a row of correlates */
  needs_locale = 0x100, /* nothing goes without a locale */
};

struct attribute_row {
  const char* name;
  int traits;
  std::vector<uint32_t> operators;
  const char* value_key;
  const char* value; /* of a list: within Fine */
  // Of those with a list alone:
  const char* list_type = nullptr;
  const char* display = nullptr;      /* of the value, in German */
  const char* unknown_seed = nullptr; /* the warning about it */
  const char* other_key = nullptr;
  const char* outside = "7002"; /* values outside Coarse */
  const char* third = "7012";
};

const attribute_row s_rows[] = {
    {"ZV_TrackName", 0, s_of_names, "ZV_TrackName", "Blue"},
    {"ZV_ArtistName", 0, s_of_names, "ZV_ArtistName", "Cher"},
    {"ZV_AlbumName", 0, s_of_names, "ZV_AlbumName", "Hits"},
    {"ZV_Genre", integers | any_context | album | needs_row, s_of_ids, "_sdkmgr_val_list_genre_id",
     "7111", "zvsdk_list_type_genres", "Mittel",
     "genre: Failed to find a correlates set for Genre. (criteria:999999)"},
    {"ZV_Mood", integers | first_track | needs_locale, s_of_ids, "_sdkmgr_val_list_mood_id", "7111",
     "zvsdk_list_type_moods", "Mittel",
     "mood: Failed to find a correlates set for Mood. (criteria:999999)"},
    {"ZV_Origin", integers | any_case | artists | album | needs_row, s_of_ids,
     "_sdkmgr_val_list_origin_id", "7222", "zvsdk_list_type_origins", "Feinst",
     "origin: Failed to find a correlates set for Origin. (criteria:999999)",
     "_sdkmgr_val_desc_origin_id"},
    {"ZV_Era", integers | any_case | any_key | artists | album | needs_row, s_of_ranges,
     "_sdkmgr_val_list_era_id", "7111", "zvsdk_list_type_eras", "Fein",
     "era: Failed to find a list element for Era. (criteria:999999)", "_sdkmgr_val_desc_era_id"},
    {"ZV_ArtistType", integers | any_case | artists | album | needs_row, s_of_ids,
     "_sdkmgr_val_list_artist_type_id", "7111", "zvsdk_list_type_artist_types", "Mittel",
     "arttype: Failed to find a correlates set for ArtistType. (criteria:999999)"},
    {"ZV_Tempo", integers | any_case | any_key | first_track, s_of_ranges,
     "_sdkmgr_val_list_tempo_value", "110", "zvsdk_list_type_tempos", "Mittel",
     "tempo: Failed to find a list element for Tempo. (criteria: 999999)",
     "_sdkmgr_val_list_tempo_data", "1", "60"},
};

std::string name_of_row(const testing::TestParamInfo<attribute_row>& row) {
  return row.param.name;
}

class every_attribute : public small_lists_test,
                        public ::testing::WithParamInterface<attribute_row> {
 protected:
  const attribute_row& row() const { return GetParam(); }
  bool has(trait which) const { return (row().traits & which) != 0; }
  const playlist_attribute& table() const { return attribute_of(row().name); }
  // As a collection gives it, "#7" for the integer 7.
  std::string stored(const char* value) const {
    return (has(integers) ? "#" : "") + std::string(value);
  }
  std::string stored() const { return stored(row().value); }
  zdo_ptr object(const char* context, const char* value) const {
    return make_object(context, {{row().value_key, value}});
  }
};

TEST_P(every_attribute, knows_its_operators_and_what_can_be_a_seed) {
  std::vector<uint32_t> operators;
  uint32_t op = 0;
  zvsdk_status status = 0;
  for (uint32_t i = 0; (status = table().supported_operators(i, &op)) == 0; ++i)
    operators.push_back(op);
  EXPECT_EQ(row().operators, operators);
  EXPECT_EQ(has(integers) ? playlist_warn_not_found : playlist_error_unsupported, status);

  const zdo_ptr seed = object("zvsdk_ctx_pldata", row().value);
  EXPECT_EQ(texts{stored()}, collected(row().name, seed));
  EXPECT_EQ("1000: 1000", judged(row().name, playlist_op_equal, seed, {stored()}));
  attribute_use use(row().name);
  EXPECT_EQ(attribute_use::s_no_score, use.score(stored()));
  for (const char* context : {"zvsdk_ctx_album", "zvsdk_ctx_track", "zvsdk_ctx_pldata"})
    EXPECT_EQ(playlist_error_no_seed_data, use.set(playlist_op_like, make_object(context)));
  EXPECT_EQ(has(any_context) ? 0 : playlist_error_no_seed_data,
            use.set(playlist_op_equal, object("zvsdk_ctx_pldata2", row().value)));
}

INSTANTIATE_TEST_SUITE_P(attributes, every_attribute, ::testing::ValuesIn(s_rows), name_of_row);

class every_list_attribute : public every_attribute {
 protected:
  // A track or album that has the value wherever the attribute may look for it.
  zdo_ptr holder(const char* context, const char* ident, const char* value) const {
    const zdo_ptr artist =
        make_object("zvsdk_ctx_artist", {},
                    {{"zvsdk_ctx_contributor!", object("zvsdk_ctx_contributor", value)}});
    zdo_ptr made = has(artists) ? make_object(context, {}, {{"zvsdk_ctx_artist!", artist}})
                                : object(context, value);
    zvsdk_manager_zdo_value_add(made.get(), "zvsdk_val_ident", ident);
    return made;
  }
  zdo_ptr served(const char* value) const { return object("zvsdk_ctx_pldata", value); }
};

TEST_P(every_list_attribute, tells_what_the_list_does_not_know) {
  EXPECT_EQ("#11 1000:", judged(row().name, playlist_op_equal, "0", {}));
  attribute_use seeded(row().name);
  log_capture log(zcsl_log_warning | zcsl_log_error);
  EXPECT_EQ(playlist_error_no_seed_data, seeded.set(playlist_op_like, served("999999")));
  const texts lines = log.take();
  EXPECT_EQ(std::string("2 00890000 playlist_impl_attr_") + row().unknown_seed, lines.at(0));
  EXPECT_EQ('2', lines.back()[0]) << "no error";
}

TEST_P(every_list_attribute, needs_a_locale_for_what_needs_the_list) {
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  if (has(needs_locale)) {
    playlist_attribute_instance* none = nullptr;
    EXPECT_EQ(723u, zvsdk_low_word(table().create_instance(&none)));
    EXPECT_EQ(nullptr, none);
  } else {
    attribute_use use(row().name);
    EXPECT_EQ(playlist_error_no_locale, use.set(playlist_op_equal, "Coarse"));
    const zvsdk_status like = has(needs_row) ? playlist_error_no_locale : 0;
    EXPECT_EQ(0u, use.set(playlist_op_equal, row().value));
    EXPECT_EQ(0u, use.set(playlist_op_equal, served(row().value)));
    EXPECT_EQ(like, use.set(playlist_op_like, row().value));
    EXPECT_EQ(like, use.set(playlist_op_like, served(row().value)));
    EXPECT_EQ(has(needs_row) ? attribute_use::s_no_score : 1000, use.score(stored()));
    EXPECT_EQ(has(any_key) ? row().value : "723", use.value(stored(), row().name));
  }
  // The music group serves when the playlist group has no locale.
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  EXPECT_EQ("1000:", judged(row().name, playlist_op_equal, "Coarse", {}));
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_MUSIC));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

// Of an album the media's own track counts, or else perhaps the album; then the list element, if it
// is of this list. A seed is no media: either the album's first track or the album itself.
TEST_P(every_list_attribute, is_collected_from_objects_and_elements) {
  const zdo_ptr track = holder("zvsdk_ctx_track", "media", row().value);
  const zdo_ptr disc = holder("zvsdk_ctx_album", "disc", row().third);
  const zdo_ptr first = holder("zvsdk_ctx_track", "first", row().outside);
  for (const zdo_ptr* each : {&first, &track})
    zvsdk_manager_zdo_child_add(disc.get(), "zvsdk_ctx_track!matching", each->get());
  const playlist_element_owner element = element_of(row().list_type, 7112);
  const playlist_element_owner stranger = element_of("zvsdk_list_type_other", 7111);
  EXPECT_EQ(texts{stored()}, collected(row().name, track));
  EXPECT_EQ(texts({stored(), "#7112"}), collected(row().name, disc, element.get()));
  EXPECT_EQ(texts{"#7112"}, collected(row().name, nullptr, element.get()));
  EXPECT_EQ(texts{}, collected(row().name, nullptr, stranger.get()));
  EXPECT_EQ(has(album) ? texts{stored(row().third)} : texts{},
            collected(row().name, disc, nullptr, "unknown"));
  EXPECT_EQ("1000: 1000", judged(row().name, playlist_op_equal, disc,
                                 {stored(has(first_track) ? row().outside : row().third)}));
}

TEST_P(every_list_attribute, gives_stored_values_as_text) {
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "ger", nullptr, nullptr));
  {
    playlist_locale_owner german;
    g_playlist_lists_interface->locale_get_default(ZVSDK_LOCALE_MUSIC, german.out());
    const std::string name_in_another_case = std::string("zv") + (row().name + 2);
    attribute_use use(row().name);
    const auto in_german = [&](const std::string& key) {
      return use.value(stored(), key.c_str(), german.get());
    };
    EXPECT_EQ(row().value, in_german(row().value_key));
    EXPECT_EQ(row().value, in_german(row().other_key ? row().other_key : row().value_key));
    EXPECT_EQ(row().display, in_german(row().name));
    EXPECT_EQ(has(any_case) ? row().display : "3", in_german(name_in_another_case));
    EXPECT_EQ("3", in_german("other"));
    EXPECT_EQ(row().value, use.value(stored(), row().value_key));
    EXPECT_EQ(has(any_key) ? row().value : "3", use.value(stored(), "other"));
    EXPECT_EQ("3", use.value("#999999", row().name, german.get()));
  }
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_MUSIC));
}

INSTANTIATE_TEST_SUITE_P(attributes, every_list_attribute,
                         ::testing::ValuesIn(s_rows + 3, std::end(s_rows)), name_of_row);

}  // namespace
