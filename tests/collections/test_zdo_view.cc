// Media read back as data objects: what each key answers, with and without a locale, and what can
// be done with such an object.
#include "collections/playlist_zdo_view.h"

#include <algorithm>

#include "module/playlist_handles.h"
#include "tests/attributes/attribute_fixture.h"
#include "tests/common/results_text.h"

namespace {

// What the full media has, under the keys that data objects know.
struct known_value {
  const char* key;
  const char* text;
  const char* attribute;
};
constexpr known_value s_values[] = {
    {"ZV_TrackName", "Title", "ZV_TrackName"},
    {"ZV_ArtistName", "Artist", "ZV_ArtistName"},
    {"ZV_AlbumName", "Album", "ZV_AlbumName"},
    {"_sdkmgr_val_list_genre_id", "7111", "ZV_Genre"},
    {"_sdkmgr_val_list_origin_id", "7112", "ZV_Origin"},
    {"_sdkmgr_val_desc_origin_id", "7112", "ZV_Origin"},
    {"_sdkmgr_val_list_era_id", "7111", "ZV_Era"},
    {"_sdkmgr_val_desc_era_id", "7111", "ZV_Era"},
    {"_sdkmgr_val_list_artist_type_id", "7012", "ZV_ArtistType"},
    {"_sdkmgr_val_list_tempo_value", "110", "ZV_Tempo"},
    {"_sdkmgr_val_list_mood_data", "7011:60,7012:40", "ZV_Mood"},
    {"_sdkmgr_val_list_mood_id", "7012", "ZV_Mood"},
};

// What the attributes' names answer; nothing without a locale, but for two.
struct display {
  const char* attribute;
  const char* with_locale;
  const char* without;
};
constexpr display s_displays[] = {
    {"ZV_Genre", "Middle", "#3"},
    {"ZV_Mood", "Second middle", "#3"},
    {"zv_era", "Fine", "7111"},
    {"ZV_Origin", "Second fine", "#3"},
    {"ZV_ArtistType", "Second middle", "#3"},
    {"zv_TEMPO", "Middle", "110"},
    {"ZV_ArtistName", "Artist", "Artist"},
};

class zdo_view : public small_lists_test {
 protected:
  void SetUp() override {
    small_lists_test::SetUp();
    user.reset(output_of(zvsdk_manager_user_create, "someone"));
    collection.reset(output_of(zvsdk_playlist_collection_create, "main"));
    const zdo_ptr object = make_object("zvsdk_ctx_pldata");
    for (const known_value& each : s_values)
      EXPECT_EQ(0u, zvsdk_manager_zdo_value_add(object.get(), each.key, each.text));
    EXPECT_EQ(0u, zvsdk_manager_zdo_value_add(object.get(), "ZV_ArtistName", "Member"));
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_ident(collection.get(), "bare"));
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), "full", object.get()));
  }
  void TearDown() override {
    collection.reset();
    user.reset();
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

  // "key=text" or the bare key, for each entry.
  static texts rendered(const zdo_ptr& object) {
    texts all;
    const char* key = nullptr;
    const char* text = nullptr;
    while (zvsdk_manager_zdo_render(object.get(), all.size(), &key, &text) == 0)
      all.push_back(key + (text ? std::string("=") + text : ""));
    return all;
  }

  texts values_in(const collection_ptr& of, const char* attribute, const char* ident) {
    return values_of(of.get(), attribute, ident);
  }

  user_ptr user;
  collection_ptr collection;
};

TEST_F(zdo_view, answers_every_key_with_and_without_locale) {
  const zdo_ptr object = view("full");
  for (int with_locale : {1, 0}) {
    SCOPED_TRACE(with_locale);
    if (!with_locale) {
      EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
      EXPECT_EQ(0u, zvsdk_manager_zdo_locale_set(object.get(), nullptr));
    }
    for (const known_value& each : s_values) {
      EXPECT_EQ(each.text, value(object, each.key)) << each.key;
      EXPECT_EQ(each.key == std::string(each.attribute), count(object, each.key) != 0) << each.key;
      EXPECT_LT(0u, count(object, each.attribute)) << each.attribute;
    }
    for (const display& each : s_displays)
      EXPECT_EQ(with_locale ? each.with_locale : each.without, value(object, each.attribute))
          << each.attribute;
  }
  EXPECT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
  EXPECT_EQ("Member", value(object, "ZV_ArtistName", 2));
  EXPECT_EQ(2u, count(object, "ZV_ArtistName"));
  for (const char* key : {"ZV_ArtistName", "ZV_Tempo", "nothing", "zvsdk_val_display"})
    EXPECT_EQ("#3", value(object, key, 3).substr(0, 2)) << key;
  EXPECT_EQ("2", value(object, "IDENT_REF"));
  EXPECT_EQ(1u, count(object, "IDENT_REF"));
  const char* context = output_of(g_playlist_zdo_interface->zdo_get_type, object.get());
  EXPECT_STREQ("zvsdk_ctx_pldata", context);
  EXPECT_EQ(0u, output_of(zvsdk_manager_zdo_child_count, object.get(), "zvsdk_ctx_artist!"));
}

TEST_F(zdo_view, shows_each_attribute_also_without_values) {
  const texts bare = rendered(view("bare"));
  EXPECT_EQ(listed(zvsdk_playlist_attributes_enum), bare);
  EXPECT_EQ("ZV_TrackName=Title", rendered(view("full")).at(0));
  // An attribute that this module lacks has no values, whatever the collection holds.
  _playlist_attribute_info_set(&info_of(collection.get(), "ZV_Tempo"), nullptr);
  EXPECT_EQ(1, std::ranges::count(rendered(view("full")), "ZV_Tempo"));
  EXPECT_EQ("#3", value(view("full"), "ZV_Tempo"));
}

TEST_F(zdo_view, checks_its_arguments_in_order) {
  zvsdk_zdo* object = nullptr;
  uint32_t stranger = playlist_collection_magic;
  auto* foreign = reinterpret_cast<playlist_collection*>(&stranger);
  auto* nobody = reinterpret_cast<zvsdk_user*>(&stranger);
  const auto get = [&](playlist_collection* of, zvsdk_user* who, const char* ident,
                       zvsdk_zdo** out) {
    return zvsdk_playlist_collection_get_zdo(of, who, ident, out);
  };
  EXPECT_EQ(playlist_error_invalid_arg, get(collection.get(), user.get(), "", &object));
  EXPECT_EQ(playlist_error_invalid_arg, get(collection.get(), user.get(), "full", nullptr));
  EXPECT_EQ(playlist_error_invalid_arg, get(foreign, nullptr, "full", &object));
  EXPECT_EQ(playlist_error_invalid_arg, get(nullptr, user.get(), "full", &object));
  EXPECT_TRUE(zvsdk_is_error(get(collection.get(), nobody, "full", &object)));
  EXPECT_TRUE(zvsdk_is_error(get(foreign, user.get(), "full", &object)));
  EXPECT_EQ(playlist_warn_not_found, get(collection.get(), user.get(), "absent", &object));
  EXPECT_EQ(nullptr, object);
}

TEST_F(zdo_view, serves_as_new_media_and_as_seed) {
  const zdo_ptr object = view("full");
  const collection_ptr other(output_of(zvsdk_playlist_collection_create, "other"));
  for (const collection_ptr& to : {std::cref(other), std::cref(collection)}) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(to.get(), "copy", object.get()));
    for (const std::string& name : listed(zvsdk_playlist_attributes_enum))
      EXPECT_EQ(values_in(collection, name.c_str(), "full"), values_in(to, name.c_str(), "copy"));
  }
  const results_ptr results(output_of(zvsdk_playlist_generate_playlist, user.get(),
                                      "GENPL WHERE ZV_Tempo = SEED AND ZV_ArtistName = SEED",
                                      collection.get(), object.get()));
  EXPECT_EQ("copy:1000", results_text(results.get())) << "the seed itself is left out";
}

// The texts of a collection move when it takes in more of them.
TEST_F(zdo_view, keeps_the_values_of_its_moment) {
  const zdo_ptr object = view("full");
  for (int i = 0; i < 1000; ++i) {
    const std::string name = "Another title " + std::to_string(i);
    const zdo_ptr more = make_object("zvsdk_ctx_pldata", {{"ZV_TrackName", name.c_str()}});
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), "full", more.get()));
  }
  collection.reset();
  EXPECT_EQ("Title", value(object, "ZV_TrackName"));
  EXPECT_EQ(1u, count(object, "ZV_TrackName"));
}

TEST_F(zdo_view, goes_without_a_trace_when_memory_runs_out) {
  const auto read = [&] {
    zvsdk_zdo* object = nullptr;
    const zvsdk_status status =
        zvsdk_playlist_collection_get_zdo(collection.get(), user.get(), "full", &object);
    EXPECT_EQ(status, object != nullptr ? 0 : playlist_error_no_memory);
    if (zdo_ptr owner(object); owner) {
      for (const known_value& each : s_values) value(owner, each.key);
      memory.restore();
      for (const known_value& each : s_values) EXPECT_EQ(each.text, value(owner, each.key));
    }
    memory.restore();
    EXPECT_EQ(0u, playlist_zdo_shutdown());  // so that each run makes the map of keys, too
  };
  EXPECT_LT(10u, memory.for_each_failure(read));
  EXPECT_LT(10u, memory.for_each_failure(read, true));
}

}  // namespace
