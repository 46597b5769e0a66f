// Media read back as data objects: what each key answers, with and without a locale, and what can
// be done with such an object.
#include "collections/playlist_zdo_view.h"

#include "tests/attributes/attribute_fixture.h"

namespace {

// What a key answers for the full media. With an attribute it is what the media was given under
// that key; without one it is a text for display.
struct known_text {
  const char* key;
  const char* attribute;
  const char* with_locale;
  const char* without;
};
constexpr known_text s_known[] = {
    {"ZV_TrackName", "ZV_TrackName", "Title", "Title"},
    {"ZV_ArtistName", "ZV_ArtistName", "Artist", "Artist"},
    {"ZV_AlbumName", "ZV_AlbumName", "Album", "Album"},
    {"_sdkmgr_val_list_genre_id", "ZV_Genre", "7111", "7111"},
    {"_sdkmgr_val_list_origin_id", "ZV_Origin", "7112", "7112"},
    {"_sdkmgr_val_desc_origin_id", "ZV_Origin", "7112", "7112"},
    {"_sdkmgr_val_list_era_id", "ZV_Era", "7111", "7111"},
    {"_sdkmgr_val_desc_era_id", "ZV_Era", "7111", "7111"},
    {"_sdkmgr_val_list_artist_type_id", "ZV_ArtistType", "7012", "7012"},
    {"_sdkmgr_val_list_tempo_value", "ZV_Tempo", "110", "110"},
    {"_sdkmgr_val_list_mood_data", "ZV_Mood", "7011:60,7012:40", "7011:60,7012:40"},
    {"_sdkmgr_val_list_mood_id", "ZV_Mood", "7012", "7012"},
    {"ZV_Genre", nullptr, "Middle", "#3"},
    {"ZV_Mood", nullptr, "Second middle", "#3"},
    {"zv_era", nullptr, "Fine", "7111"},
    {"zv_TEMPO", nullptr, "Middle", "110"},
    {"nothing", nullptr, "#3", "#3"},
    {"IDENT_REF", nullptr, "2", "2"},
};

class zdo_view : public small_lists_test {
 protected:
  void SetUp() override {
    small_lists_test::SetUp();
    collection.reset(output_of(zvsdk_playlist_collection_create, "main"));
    const zdo_ptr object = make_object("zvsdk_ctx_pldata");
    for (const known_text& each : s_known)
      if (each.attribute) zvsdk_manager_zdo_value_add(object.get(), each.key, each.without);
    zvsdk_manager_zdo_value_add(object.get(), "ZV_ArtistName", "Member");
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection.get(), "bare"));
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), "full", object.get()));
  }
  void TearDown() override {
    collection.reset();
    small_lists_test::TearDown();
  }

  zdo_ptr view(const char* ident) {
    return zdo_ptr(
        output_of(zvsdk_playlist_collection_get_zdo, collection.get(), user.get(), ident));
  }
  // The text under a key, or the low word of the refusal.
  static std::string value(const zdo_ptr& object, const char* key, uint32_t ordinal = 1) {
    const char* text = nullptr;
    const zvsdk_status status =
        g_playlist_zdo_interface->zdo_value_get(object.get(), key, ordinal, &text);
    return status == 0 ? text : "#" + std::to_string(zvsdk_low_word(status));
  }
  static uint32_t count(const zdo_ptr& object, const char* key) {
    return output_of(zvsdk_manager_zdo_value_count, object.get(), key);
  }
  // The keys that have no text.
  static texts empty_keys(const zdo_ptr& object) {
    texts all;
    const char *key = nullptr, *text = nullptr;
    for (uint32_t i = 0; zvsdk_manager_zdo_render(object.get(), i, &key, &text) == 0; ++i)
      if (text == nullptr) all.push_back(key);
    return all;
  }

  collection_ptr collection;
};

TEST_F(zdo_view, answers_every_key_with_and_without_locale) {
  const zdo_ptr object = view("full");
  for (const known_text& each : s_known) {
    EXPECT_EQ(each.with_locale, value(object, each.key)) << each.key;
    if (!each.attribute) continue;
    EXPECT_EQ(each.key == std::string(each.attribute), count(object, each.key) != 0) << each.key;
    EXPECT_LT(0u, count(object, each.attribute)) << each.attribute;
  }
  EXPECT_EQ(1u, count(object, "IDENT_REF"));
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ(0u, zvsdk_manager_zdo_locale_set(object.get(), nullptr));
  for (const known_text& each : s_known)
    EXPECT_EQ(each.without, value(object, each.key)) << each.key;
  EXPECT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

TEST_F(zdo_view, shows_each_attribute_also_without_values) {
  EXPECT_EQ(listed(zvsdk_playlist_attributes_enum), empty_keys(view("bare")));
  EXPECT_EQ(texts(), empty_keys(view("full")));
  // An attribute that this module lacks has no values, whatever the collection holds.
  _playlist_attribute_info_set(&info_of(collection.get(), "ZV_Tempo"), nullptr);
  EXPECT_EQ(texts({"ZV_Tempo"}), empty_keys(view("full")));
  zvsdk_zdo* none = nullptr;
  EXPECT_EQ(playlist_warn_not_found,
            zvsdk_playlist_collection_get_zdo(collection.get(), user.get(), "absent", &none));
}

TEST_F(zdo_view, serves_as_new_media) {
  const zdo_ptr object = view("full");
  const collection_ptr other(output_of(zvsdk_playlist_collection_create, "other"));
  for (playlist_collection* to : {other.get(), collection.get()}) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(to, "copy", object.get()));
    for (const std::string& name : listed(zvsdk_playlist_attributes_enum))
      EXPECT_EQ(values_of(collection.get(), name.c_str(), "full"),
                values_of(to, name.c_str(), "copy"));
  }
}

// The texts of a collection move when it takes in more of them.
TEST_F(zdo_view, keeps_the_values_of_its_moment) {
  const zdo_ptr object = view("full");
  const zdo_ptr more = make_object("zvsdk_ctx_pldata");
  for (int i = 0; i < 1000; ++i)
    zvsdk_manager_zdo_value_add(more.get(), "ZV_ArtistName", std::to_string(i).c_str());
  EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), "full", more.get()));
  collection.reset();
  EXPECT_EQ("Member", value(object, "ZV_ArtistName", 2));
  EXPECT_EQ("#3", value(object, "ZV_ArtistName", 3));
  EXPECT_EQ(2u, count(object, "ZV_ArtistName"));
}

TEST_F(zdo_view, goes_without_a_trace_when_memory_runs_out) {
  const auto read = [&] {
    zvsdk_zdo* made = nullptr;
    const zvsdk_status status =
        zvsdk_playlist_collection_get_zdo(collection.get(), user.get(), "full", &made);
    EXPECT_EQ(made != nullptr ? 0 : playlist_error_no_memory, status);
    if (made == nullptr) return;
    const zdo_ptr object(made);
    for (const known_text& each : s_known) value(object, each.key);
    memory.restore();
    for (const known_text& each : s_known)
      EXPECT_EQ(each.with_locale, value(object, each.key)) << "works again";
  };
  const auto read_with_new_map_of_keys = [&] {
    read();
    EXPECT_EQ(0u, playlist_zdo_shutdown());
  };
  for (const bool lasting : {false, true})
    EXPECT_LT(10u, memory.for_each_failure(read_with_new_map_of_keys, lasting));
}

}  // namespace
