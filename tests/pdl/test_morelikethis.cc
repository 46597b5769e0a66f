// More-Like-This: checks, options, chance, the seed left out, seeds that tell little.
#include <algorithm>
#include <map>

#include "tests/pdl/pdl_fixture.h"

namespace {

class morelikethis : public pdl_test {
 protected:
  void SetUp() override {
    pdl_test::SetUp();
    user.reset(output_of(zvsdk_manager_user_create, "someone"));
    for (uint32_t i = 0; i < 60; ++i) {
      const std::string ident = "t" + std::to_string(i);
      const std::string artist = "Artist " + std::to_string(i % 12);
      const std::string album = "Album " + std::to_string(i % 20);
      const zdo_ptr object = make_track(ident.c_str(), {.title = ident.c_str(),
                                                        .artists = {artist.c_str()},
                                                        .album = album.c_str(),
                                                        .tempo = 60 + i % 10 * 15});
      EXPECT_EQ(0u,
                zvsdk_playlist_collection_add_zdo(collection.get(), ident.c_str(), object.get()));
    }
  }
  void TearDown() override {
    user.reset();
    pdl_test::TearDown();
  }

  texts like(zvsdk_zdo* seed) {
    playlist_results* made = nullptr;
    status = zvsdk_playlist_generate_morelikethis(user.get(), collection.get(), seed, &made);
    if (status != 0) return {};
    const results_ptr results(made);
    return listed([made](uint32_t index, const char** ident) {
      return zvsdk_playlist_results_enum(made, index, ident, nullptr);
    });
  }
  void set(const char* option, const char* value) {
    EXPECT_EQ(0u, zvsdk_playlist_morelikethis_option_set(collection.get(), option, value));
  }

  // How often each of an attribute's values comes up in the most frequent case.
  static size_t most_of(const texts& idents, uint32_t groups) {
    std::map<int, size_t> found;
    size_t most = 0;
    for (const std::string& ident : idents)
      most = std::max(most, ++found[std::atoi(ident.c_str() + 1) % static_cast<int>(groups)]);
    return most;
  }

  user_ptr user;
};

TEST_F(morelikethis, checks_its_arguments_in_order) {
  const zdo_ptr object = make_object("zvsdk_ctx_track");
  uint32_t stranger = 0;
  playlist_results* results = nullptr;
  auto* nobody = reinterpret_cast<zvsdk_user*>(&stranger);
  auto* foreign = reinterpret_cast<playlist_collection*>(&stranger);
  auto* nothing = reinterpret_cast<zvsdk_zdo*>(&stranger);
  struct call {
    zvsdk_user* user;
    playlist_collection* collection;
    zvsdk_zdo* seed;
    playlist_results** results;
    bool is_null;
    const char* message;
  };
  // Each row is wrong in one place and in all that are looked at later.
  const call rows[] = {
      {nobody, foreign, nothing, nullptr, true, "Parameter ph_results cannot be null."},
      {nullptr, foreign, nothing, &results, true, ""},
      {nobody, nullptr, nullptr, &results, false, ""},
      {user.get(), nullptr, nothing, &results, true, ""},
      {user.get(), foreign, nullptr, &results, false, ""},
      {user.get(), collection.get(), nullptr, &results, true, ""},
      {user.get(), collection.get(), nothing, &results, false, ""},
  };
  for (const call& row : rows) {
    const zvsdk_status refused =
        zvsdk_playlist_generate_morelikethis(row.user, row.collection, row.seed, row.results);
    const zvsdk_error_info info = last_error();
    EXPECT_TRUE(zvsdk_is_error(refused)) << &row - rows;
    EXPECT_EQ(row.is_null, info.source == playlist_error_invalid_arg) << &row - rows;
    EXPECT_STREQ(row.message, info.message) << &row - rows;
    EXPECT_STREQ("zvsdk_playlist_generate_morelikethis", info.function) << &row - rows;
  }
  EXPECT_EQ(nullptr, results);
}

TEST_F(morelikethis, keeps_to_its_options) {
  const zdo_ptr object = make_track("x", {.artists = {"Artist 3"}});
  EXPECT_GE(2u, most_of(like(object.get()), 12));
  EXPECT_GE(1u, most_of(like(object.get()), 20));
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "3");
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "5");
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "9");
  EXPECT_EQ(9u, like(object.get()).size());
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "60");
  EXPECT_LT(9u, like(object.get()).size());
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "1");
  EXPECT_EQ(1u, most_of(like(object.get()), 12));
  set(ZVSDK_PLAYLIST_OPTION_RANDOM, "7");
  const texts seven = like(object.get());
  EXPECT_EQ(seven, like(object.get()));
  set(ZVSDK_PLAYLIST_OPTION_RANDOM, "8");
  EXPECT_NE(seven, like(object.get()));
  // An option's text enters the statement as it stands.
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "9 x");
  EXPECT_TRUE(like(object.get()).empty());
  EXPECT_EQ("90890601: expected RESULTS|PER at 'x RESULTS'", failure());
  EXPECT_STREQ("", last_error().function) << "reported by the generation alone";
}

TEST_F(morelikethis, leaves_the_seed_out_and_takes_any_seed) {
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "60");
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "60");
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "60");
  const zdo_ptr own(
      output_of(zvsdk_playlist_collection_get_zdo, collection.get(), user.get(), "t7"));
  const texts others = like(own.get());
  EXPECT_LT(9u, others.size());
  EXPECT_EQ(0, std::ranges::count(others, "t7"));
  // The artist alone, the tempo alone, nothing at all: what is known leads the list.
  const auto leader = [&](const track_data& data) {
    const texts list = like(make_track("x", data).get());
    EXPECT_EQ(0u, status);
    return list.empty() ? -1 : std::atoi(list[0].c_str() + 1);
  };
  EXPECT_EQ(3, leader({.artists = {"Artist 3"}}) % 12);
  EXPECT_NEAR(4, leader({.artists = {}, .tempo = 120}) % 10, 1);
  EXPECT_LT(9u, like(make_track("x", {}).get()).size());
}

}  // namespace
