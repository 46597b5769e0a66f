// Where attributes of lists differ: spans and sources of eras, numbers that are not an element's
// own, elements that are kept, scores without a rule of their own.
#include "tests/attributes/attribute_fixture.h"

namespace {

using list_attributes = small_lists_test;

// Stands in for the list service: counts lookups and the references that are out, and gives Fine
// for the number 7099 and, to whoever does not ask at a level, for Coarse.
class list_probe {
 public:
  list_probe() : real_(g_playlist_lists_interface), table_(*real_) {
    s_self = this;
    table_.list_get_element_by_id = [](zvsdk_list* list, uint32_t id, uint32_t level,
                                       zvsdk_list_element** element) {
      ++s_self->lookups;
      const bool is_inner = id == 7099 || (id == 7001 && level == 0);
      return s_self->given(
          s_self->real_->list_get_element_by_id(list, is_inner ? 7111 : id, level, element));
    };
    table_.element_get_parent = [](zvsdk_list_element* element, zvsdk_list_element** parent) {
      return s_self->given(s_self->real_->element_get_parent(element, parent));
    };
    table_.element_addref = [](zvsdk_list_element* element) {
      return s_self->given(s_self->real_->element_addref(element));
    };
    table_.element_release = [](zvsdk_list_element* element) {
      --s_self->references;
      return s_self->real_->element_release(element);
    };
    g_playlist_lists_interface = &table_;
  }
  ~list_probe() {
    g_playlist_lists_interface = real_;
    s_self = nullptr;
  }

  int lookups = 0;
  int references = 0;

 private:
  zvsdk_status given(zvsdk_status status) {
    references += status == 0;
    return status;
  }

  static inline list_probe* s_self;
  zvsdk_listmanager_interface* real_;
  zvsdk_listmanager_interface table_;
};

TEST_F(list_attributes, recent_elements_are_kept_and_given_back) {
  list_probe probe;
  {
    attribute_use era("ZV_Era"), genre("ZV_Genre");
    EXPECT_EQ(0u, genre.set(playlist_op_equal, "7111"));
    for (const char* on_the_way_up : {"#7111", "#7011", "#7001"}) genre.score(on_the_way_up);
    EXPECT_EQ(1, probe.lookups);
    EXPECT_EQ(3, probe.references);

    EXPECT_EQ(0u, era.set(playlist_op_greater, "7012"));
    EXPECT_EQ(4, probe.references);
    const auto compare_years = [&](int from, int to) {
      for (; from < to; ++from) EXPECT_EQ(1000, era.score("#" + std::to_string(from)));
    };
    probe.lookups = 0;
    for (int round = 0; round < 2; ++round) compare_years(2000, 2032);
    EXPECT_EQ(32, probe.lookups);
    compare_years(2032, 2040);
    EXPECT_EQ(40, probe.lookups);
    EXPECT_EQ(3 + 32, probe.references);
  }
  EXPECT_EQ(0, probe.references);
}

// Numbers that an element is found for but not named by: "=" takes the element, save for an origin,
// and LIKE takes the number. A genre is placed where its number stands above the element. Seeds are
// numbers and take nothing.
TEST_F(list_attributes, criteria_may_be_numbers_of_no_element) {
  list_probe probe;
  for (const auto& [attribute, equal, like] :
       {std::tuple{"ZV_Genre", "1000: 1000 -1000 -1000", "#3 750: failed"},
        {"ZV_Mood", "1000: 1000 -1000 -1000", "700: failed"},
        {"ZV_Origin", "1000: -1000 -1000 -1000", "#3 700: failed"},
        {"ZV_Era", "1000: 1000 -1000 -1000", "#3 850: failed"},
        {"ZV_ArtistType", "1000: 1000 -1000 -1000", "#3 800: failed"}}) {
    EXPECT_EQ(equal, judged(attribute, playlist_op_equal, "7099", {"#7111", "#7112", "#7001"}));
    EXPECT_EQ(like, judged(attribute, playlist_op_like, "7099", {"#7111"}));
  }
  EXPECT_EQ("1000: 1000", judged("ZV_Origin", playlist_op_equal, "7099", {"#7099"}));
  EXPECT_EQ("1000: 1000 -1000", judged("ZV_Genre", playlist_op_equal, "7001", {"#7112", "#7002"}));
  EXPECT_EQ("750:", judged("ZV_Genre", playlist_op_like, "7001", {}));
  for (const char* no_number : {"198O", "-1984", "1984 ", ""})
    EXPECT_EQ("#11 1000:", judged("ZV_Era", playlist_op_equal, no_number, {}));

  const auto seed = [](const char* key, const char* number) {
    return make_object("zvsdk_ctx_pldata", {{key, number}});
  };
  const zdo_ptr genre = seed("_sdkmgr_val_list_genre_id", "7111");
  EXPECT_EQ("1000: -1000", judged("ZV_Genre", playlist_op_equal, genre, {"#7099"}));
  for (const auto& [number, like] : {std::pair{"7099", "#420 850: failed"}, {"888888", "850: 650"}})
    EXPECT_EQ(like, judged("ZV_Era", playlist_op_like, seed("_sdkmgr_val_list_era_id", number),
                           {"#7111"}));
}

TEST_F(list_attributes, more_values_are_compared_than_scores_are_remembered) {
  attribute_use other("ZV_Genre");
  EXPECT_EQ(0u, other.set(playlist_op_equal, "7002"));
  for (int round = 0; round < 2; ++round)
    for (int value = 0; value < 8000; ++value)
      EXPECT_EQ(value == 7002 ? 1000 : -1000, other.score("#" + std::to_string(value)));
}

TEST_F(list_attributes, texts_are_kept_once_in_each_case) {
  zcsl_stringmap* map = nullptr;
  const auto kept = [&](const std::string& text) {
    return output_of(_playlist_attribute_cache_value, &map, text.c_str());
  };
  const char* rock = kept("Rock");
  EXPECT_EQ(rock, kept("Rock"));
  EXPECT_STREQ("ROCK", kept("ROCK"));
  EXPECT_STREQ("Rock", rock);
  zcsl_stringmap_delete(map);
}

TEST_F(list_attributes, an_era_comes_from_the_contributor_or_else_the_year) {
  const auto with_era = [](const char* context) {
    return make_object(context, {{"_sdkmgr_val_list_era_id", "7111"}});
  };
  const auto artist_of = [](const zdo_ptr& contributor) {
    return make_object("zvsdk_ctx_artist", {}, {{"zvsdk_ctx_contributor!", contributor}});
  };
  const auto track_of = [](const zdo_ptr& artist) {
    return make_object("zvsdk_ctx_track", {{"zvsdk_val_year", "1999"}},
                       {{"zvsdk_ctx_artist!", artist}});
  };
  const zdo_ptr singer =
      artist_of(make_object("zvsdk_ctx_contributor", {{"_sdkmgr_val_list_origin_id", "7002"},
                                                      {"_sdkmgr_val_list_era_id", "7111"}}));
  const struct {
    zdo_ptr object;
    texts ids;
  } rows[] = {{track_of(singer), {"#7111"}},
              {track_of(make_object("zvsdk_ctx_artist")), {"#1999"}},
              {track_of(artist_of(make_object("zvsdk_ctx_contributor"))), {"#1999"}},
              {make_object("zvsdk_ctx_album", {{"zvsdk_val_year", "1999"}}), {"#1999"}},
              {with_era("zvsdk_ctx_album"), {"#7111"}},
              {with_era("zvsdk_ctx_contributor"), {"#7111"}},
              {with_era("zvsdk_ctx_track"), {}},
              {make_object("zvsdk_ctx_pldata", {{"zvsdk_val_year", "1999"}}), {}}};
  for (const auto& [object, ids] : rows) EXPECT_EQ(ids, collected("ZV_Era", object));
  // A bare artist has an origin but no era.
  EXPECT_EQ(texts{}, collected("ZV_Era", singer));
  EXPECT_EQ(texts{"#7002"}, collected("ZV_Origin", singer));
}

}  // namespace
