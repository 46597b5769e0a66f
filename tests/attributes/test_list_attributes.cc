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

// A genre is placed where its number stands above the element; others take or leave the element.
TEST_F(list_attributes, numbers_that_an_element_is_found_for_but_not_named_by) {
  const struct {
    const char *attribute, *number;
    uint32_t passing, failing;
    int32_t like_threshold;
  } rows[] = {{"ZV_Genre", "7001", 7112, 7002, 750},
              {"ZV_Genre", "7099", 7111, 7112, 750},
              {"ZV_Origin", "7099", 7099, 7111, 700},
              {"ZV_ArtistType", "7099", 7111, 7112, 800},
              {"ZV_Era", "7099", 7111, 7112, 850}};
  list_probe probe;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.attribute);
    attribute_use use(row.attribute), like(row.attribute);
    EXPECT_EQ(0u, use.text(playlist_op_equal, row.number));
    EXPECT_EQ(1000, use.score(row.passing));
    EXPECT_EQ(-1000, use.score(row.failing));
    like.text(playlist_op_like, row.number);
    EXPECT_EQ(row.like_threshold, like.threshold);
  }
}

TEST_F(list_attributes, recent_elements_are_kept_and_given_back) {
  list_probe probe;
  {
    attribute_use era("ZV_Era"), genre("ZV_Genre");
    EXPECT_EQ(0u, genre.text(playlist_op_equal, "7111"));
    for (uint32_t on_the_way_up : {7111, 7011, 7001}) genre.score(on_the_way_up);
    EXPECT_EQ(1, probe.lookups);
    EXPECT_EQ(3, probe.references);

    EXPECT_EQ(0u, era.text(playlist_op_greater, "7012"));
    EXPECT_EQ(4, probe.references);
    probe.lookups = 0;
    for (int round = 0; round < 2; ++round)
      for (uint32_t year = 2000; year < 2032; ++year) EXPECT_EQ(1000, era.score(year));
    EXPECT_EQ(32, probe.lookups);
    for (uint32_t year = 2032; year < 2040; ++year) era.score(year);
    EXPECT_EQ(40, probe.lookups);
    EXPECT_EQ(3 + 32, probe.references);
  }
  EXPECT_EQ(0, probe.references);
}

TEST_F(list_attributes, rows_give_the_scores_of_like) {
  const struct {
    const char *attribute, *criterion;
    uint32_t value;
    int32_t score;
  } rows[] = {
      {"ZV_Genre", "7111", 7112, 650},
      {"ZV_Genre", "7011", 7121, 400},
      {"ZV_Era", "1984", 1985, 650},
      {"ZV_Era", "7011", 1997, 400},
      {"ZV_Origin", "7111", 7112, 650},
      {"ZV_Origin", "7002", 7002, 0},
      // An artist type without a score for itself just passes, but for the finest.
      {"ZV_ArtistType", "7001", 7111, 600},
      {"ZV_ArtistType", "7011", 7111, 700},
      {"ZV_ArtistType", "7121", 7121, 0},
      {"ZV_ArtistType", "7011", 7012, -400},
  };
  for (const auto& row : rows) {
    attribute_use use(row.attribute);
    EXPECT_EQ(0u, use.text(playlist_op_like, row.criterion));
    EXPECT_EQ(row.score, use.score(row.value)) << row.attribute << row.criterion << row.value;
  }
  // What comes from a seed is not lifted to.
  attribute_use seeded("ZV_Genre");
  EXPECT_EQ(0u, seeded.seed(playlist_op_equal,
                            make_object("any", {{"_sdkmgr_val_list_genre_id", "7011"}})));
  for (int round = 0; round < 2; ++round)  // more values than scores are remembered
    for (uint32_t value = 7000; value < 8000; ++value)
      EXPECT_EQ(value == 7011 ? 1000 : -1000, seeded.score(value)) << value;
}

zdo_ptr with_era(const char* context, const char* era) {
  return make_object(context, {{"_sdkmgr_val_list_era_id", era}});
}

// Against 1980 to 1989: a year that the list does not know, a year within, the span itself, one
// that begins with it and one after it. A text lifts what is within to the span itself.
TEST_F(list_attributes, eras_compare_as_spans) {
  const struct {
    uint32_t op;
    std::string_view by_seed, by_text;
  } rows[] = {
      {playlist_op_equal, "-++--", "-++--"},   {playlist_op_not_equal, "+--++", "+--++"},
      {playlist_op_greater, "-+--+", "----+"}, {playlist_op_greater_equal, "-++++", "-++++"},
      {playlist_op_less, "+----", "+----"},    {playlist_op_less_equal, "+++--", "+++--"}};
  const auto passing = [](attribute_use& use) {
    std::string marks;
    for (uint32_t value : {1900, 1984, 7011, 7001, 7012})
      marks += use.score(value) == 1000 ? '+' : '-';
    return marks;
  };
  for (const auto& row : rows) {
    attribute_use seeded("ZV_Era"), named("ZV_Era");
    EXPECT_EQ(0u, seeded.seed(row.op, with_era("zvsdk_ctx_pldata", "7011")));
    EXPECT_EQ(0u, named.text(row.op, "Middle"));
    EXPECT_EQ(row.by_seed, passing(seeded)) << row.op;
    EXPECT_EQ(row.by_text, passing(named)) << row.op;
  }
}

TEST_F(list_attributes, years_name_the_finest_era_around_them) {
  const std::pair<const char*, int32_t> rows[] = {{"1984", 800}, {"1987", 750}, {"1995", 750}};
  for (const auto& [year, threshold] : rows) {
    attribute_use use("ZV_Era");
    use.text(playlist_op_like, year);
    EXPECT_EQ(threshold, use.threshold) << year;
  }
  for (const char* name : {"198O", "-1984", "1984 ", ""})
    EXPECT_EQ(playlist_error_unsupported, attribute_use("ZV_Era").text(playlist_op_equal, name));
  const zdo_ptr track = make_object("zvsdk_ctx_track", {{"zvsdk_val_year", "1984"}});
  attribute_use seeded("ZV_Era");
  EXPECT_EQ(0u, seeded.seed(playlist_op_like, track));
  EXPECT_EQ(650, seeded.score(7112u));
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
