// Where attributes of lists differ: spans and sources of eras, numbers that are not an element's
// own, elements that are kept, scores without a rule of their own, bands of tempos.
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
  ~list_probe() { g_playlist_lists_interface = real_; }

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

TEST_F(list_attributes, judge_by_level_and_row) {
  const struct {
    const char* attribute;
    uint32_t op;
    const char* criterion;
    texts stored;
    const char* outcome;
  } rows[] = {
      // Numbers that an element is found for but not named by. A genre is placed where its number
      // stands above the element; others take or leave the element.
      {"ZV_Genre", playlist_op_equal, "7001", {"#7112", "#7002"}, "1000: 1000 -1000"},
      {"ZV_Genre", playlist_op_like, "7001", {}, "750:"},
      {"ZV_Genre", playlist_op_equal, "7099", {"#7111", "#7112"}, "1000: 1000 -1000"},
      {"ZV_Genre", playlist_op_like, "7099", {}, "#3 750:"},
      {"ZV_Origin", playlist_op_equal, "7099", {"#7099", "#7111"}, "1000: 1000 -1000"},
      {"ZV_Origin", playlist_op_like, "7099", {}, "#3 700:"},
      {"ZV_ArtistType", playlist_op_equal, "7099", {"#7111", "#7112"}, "1000: 1000 -1000"},
      {"ZV_ArtistType", playlist_op_like, "7099", {}, "#3 800:"},
      {"ZV_Era", playlist_op_equal, "7099", {"#7111", "#7112"}, "1000: 1000 -1000"},
      {"ZV_Era", playlist_op_like, "7099", {}, "#3 850:"},
      // Scores of rows.
      {"ZV_Genre", playlist_op_like, "7111", {"#7112"}, "700: 650"},
      {"ZV_Genre", playlist_op_like, "7011", {"#7121"}, "600: 400"},
      {"ZV_Era", playlist_op_like, "7011", {"#1997"}, "750: 400"},
      {"ZV_Origin", playlist_op_like, "7111", {"#7112"}, "700: 650"},
      {"ZV_Origin", playlist_op_like, "7002", {"#7002"}, "500: 0"},
      // An artist type without a score for itself just passes, but for the finest.
      {"ZV_ArtistType", playlist_op_like, "Coarse", {"#7111"}, "600: 600"},
      {"ZV_ArtistType", playlist_op_like, "7011", {"#7111", "#7012"}, "700: 700 -400"},
      {"ZV_ArtistType", playlist_op_like, "7121", {"#7121"}, "800: 0"},
      // A mood needs no row: that there is none is found out by the comparison alone.
      {"ZV_Mood", playlist_op_equal, "999999", {"#999999"}, "1000: 1000"},
      {"ZV_Mood", playlist_op_like, "999999", {"#999999"}, "700: failed"},
      // Years name the finest era around them.
      {"ZV_Era", playlist_op_like, "1984", {"#1985"}, "800: 650"},
      {"ZV_Era", playlist_op_like, "1987", {}, "750:"},
      {"ZV_Era", playlist_op_like, "1995", {}, "#3 750:"},
      {"ZV_Era", playlist_op_equal, "198O", {}, "#11 1000:"},
      {"ZV_Era", playlist_op_equal, "-1984", {}, "#11 1000:"},
      {"ZV_Era", playlist_op_equal, "1984 ", {}, "#11 1000:"},
      {"ZV_Era", playlist_op_equal, "", {}, "#11 1000:"},
  };
  list_probe probe;
  for (const auto& row : rows)
    EXPECT_EQ(row.outcome, judged(row.attribute, row.op, row.criterion, row.stored))
        << row.attribute << " " << row.op << " " << row.criterion;
}

// What comes from a seed is not lifted to. More values are compared than scores are remembered.
TEST_F(list_attributes, seeds_compare_as_they_are) {
  attribute_use seeded("ZV_Genre");
  const zdo_ptr seed = make_object("any", {{"_sdkmgr_val_list_genre_id", "7011"}});
  EXPECT_EQ(0u, seeded.set(playlist_op_equal, seed));
  for (int round = 0; round < 2; ++round)
    for (int value = 7000; value < 8000; ++value)
      EXPECT_EQ(value == 7011 ? 1000 : -1000, seeded.score("#" + std::to_string(value)));
}

zdo_ptr with_era(const char* context, const char* era) {
  return make_object(context, {{"_sdkmgr_val_list_era_id", era}});
}

// Eras are against 1980 to 1989: a year that the list does not know, a year within, the span
// itself, one that begins with it and one after it. A text lifts what is within to the span itself.
// Tempos are below, at the lower and at the upper bound of a band, and above.
TEST_F(list_attributes, ranges_compare_whole) {
  const struct {
    uint32_t op;
    const char *era_by_seed, *era_by_text, *tempo;
  } rows[] = {{playlist_op_equal, "-++--", "-++--", "-++-"},
              {playlist_op_not_equal, "+--++", "+--++", "+--+"},
              {playlist_op_greater, "-+--+", "----+", "---+"},
              {playlist_op_greater_equal, "-++++", "-++++", "-+++"},
              {playlist_op_less, "+----", "+----", "+---"},
              {playlist_op_less_equal, "+++--", "+++--", "+++-"}};
  const auto passing = [](const char* attribute, uint32_t op, const auto& criterion,
                          const texts& values) {
    attribute_use use(attribute);
    EXPECT_EQ(0u, use.set(op, criterion));
    std::string marks;
    for (const std::string& value : values) marks += use.score(value) == 1000 ? '+' : '-';
    return marks;
  };
  const texts eras = {"#1900", "#1984", "#7011", "#7001", "#7012"};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.op);
    EXPECT_EQ(row.era_by_seed,
              passing("ZV_Era", row.op, with_era("zvsdk_ctx_pldata", "7011"), eras));
    EXPECT_EQ(row.era_by_text, passing("ZV_Era", row.op, "Middle", eras));
    for (const auto& [criterion, values] :
         {std::pair{"Middle", texts{"#99", "#100", "#119", "#120"}},
          {"110 BPM", {"#104", "#105", "#112", "#113"}},
          {"7012", {"#119", "#120", "#199", "#200"}},
          {"4000000000", {"#3999999999", "#4000000000", "#4000000000", "#4000000001"}}})
      EXPECT_EQ(row.tempo, passing("ZV_Tempo", row.op, criterion, values)) << criterion;
  }
}

// Without a list a number is a band of its own.
TEST_F(list_attributes, a_tempo_is_compared_with_the_middle_of_the_band) {
  EXPECT_EQ("800: 803", judged("ZV_Tempo", playlist_op_like, "Middle", {"#77"}));
  EXPECT_EQ("800: 803", judged("ZV_Tempo", playlist_op_like, "7011", {"#77"}));
  EXPECT_EQ("900: 808", judged("ZV_Tempo", playlist_op_like, "110", {"#77"}));
  ASSERT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ("1000: -1000 1000 -1000",
            judged("ZV_Tempo", playlist_op_equal, "110", {"#109", "#110", "#111"}));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

TEST_F(list_attributes, an_era_comes_from_the_contributor_or_else_the_year) {
  const auto artist_of = [](const zdo_ptr& contributor) {
    return make_object("zvsdk_ctx_artist", {}, {{"zvsdk_ctx_contributor!", contributor}});
  };
  const auto track_of = [](const zdo_ptr& artist) {
    return make_object("zvsdk_ctx_track", {{"zvsdk_val_year", "1999"}},
                       {{"zvsdk_ctx_artist!", artist}});
  };
  const zdo_ptr singer = artist_of(with_era("zvsdk_ctx_contributor", "7111"));
  const struct {
    zdo_ptr object;
    texts ids;
  } rows[] = {{track_of(singer), {"#7111"}},
              {track_of(make_object("zvsdk_ctx_artist")), {"#1999"}},
              {track_of(artist_of(make_object("zvsdk_ctx_contributor"))), {"#1999"}},
              {make_object("zvsdk_ctx_album", {{"zvsdk_val_year", "1999"}}), {"#1999"}},
              {with_era("zvsdk_ctx_album", "7111"), {"#7111"}},
              {with_era("zvsdk_ctx_contributor", "7111"), {"#7111"}},
              {with_era("zvsdk_ctx_track", "7111"), {}},
              {make_object("zvsdk_ctx_pldata", {{"zvsdk_val_year", "1999"}}), {}}};
  for (const auto& [object, ids] : rows) EXPECT_EQ(ids, collected("ZV_Era", object));
  // A bare artist has an origin but no era.
  const zdo_ptr dancer =
      artist_of(make_object("zvsdk_ctx_contributor", {{"_sdkmgr_val_list_origin_id", "7002"},
                                                      {"_sdkmgr_val_list_era_id", "7111"}}));
  EXPECT_EQ(texts{}, collected("ZV_Era", dancer));
  EXPECT_EQ(texts{"#7002"}, collected("ZV_Origin", dancer));
}

}  // namespace
