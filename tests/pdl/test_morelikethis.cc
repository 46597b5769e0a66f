// More-Like-This: options, chance, the seed left out, seeds that tell little. What makes a
// good list is measured elsewhere.
#include <algorithm>

#include "tests/pdl/pdl_fixture.h"

namespace {

class morelikethis : public pdl_test {
 protected:
  void SetUp() override {
    pdl_test::SetUp();
    for (uint32_t i = 0; i < 60; ++i) {
      const std::string artist = "Artist " + std::to_string(i % 12);
      const std::string album = "Album " + std::to_string(i % 20);
      const zdo_ptr object = make_track("any", {.title = "Title",
                                                .artists = {artist.c_str()},
                                                .album = album.c_str(),
                                                .tempo = 60 + i % 10 * 15});
      zvsdk_playlist_collection_add_zdo(collection.get(), std::to_string(i).c_str(), object.get());
    }
  }
  std::vector<int> like(const zdo_ptr& seed) {
    playlist_results* made = nullptr;
    status = zvsdk_playlist_generate_morelikethis(user.get(), collection.get(), seed.get(), &made);
    const results_ptr results(made);
    std::vector<int> list;
    const char* ident = nullptr;
    while (made != nullptr && zvsdk_playlist_results_enum(made, list.size(), &ident, nullptr) == 0)
      list.push_back(std::atoi(ident));
    return list;
  }
  void set(const char* option, const char* value) {
    EXPECT_EQ(0u, zvsdk_playlist_morelikethis_option_set(collection.get(), option, value));
  }
  // The size of the largest group, where a track belongs to the group of its number modulo
  // `groups`.
  static size_t most_of(const std::vector<int>& list, int groups) {
    std::vector<size_t> sizes(groups);
    for (int track : list) ++sizes[track % groups];
    return *std::ranges::max_element(sizes);
  }
};

TEST_F(morelikethis, keeps_to_its_options) {
  const zdo_ptr seed = make_track("x", {.artists = {"Artist 3"}});
  EXPECT_EQ(2u, most_of(like(seed), 12));
  EXPECT_EQ(1u, most_of(like(seed), 20));
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "3");
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "1");
  EXPECT_EQ(1u, most_of(like(seed), 12));
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "9");
  EXPECT_EQ(9u, like(seed).size());
  set(ZVSDK_PLAYLIST_OPTION_RANDOM, "7");
  const auto seven = like(seed);
  EXPECT_EQ(seven, like(seed));
  set(ZVSDK_PLAYLIST_OPTION_RANDOM, "8");
  EXPECT_NE(seven, like(seed));
  // An option's text enters the statement as it stands. The generation alone reports the fault.
  set(ZVSDK_PLAYLIST_OPTION_MAX_TRACKS, "10 x");
  like(seed);
  EXPECT_EQ(playlist_error_pdl_syntax, status);
  EXPECT_STREQ("expected RESULTS|PER at 'x RESULTS'", last_error().message);
  EXPECT_STREQ("", last_error().function);
}

// The artist alone, the tempo alone, nothing at all: what is known leads the list.
TEST_F(morelikethis, takes_any_seed_and_leaves_it_out) {
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST, "60");
  set(ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM, "60");
  EXPECT_EQ(3, like(make_track("x", {.artists = {"Artist 3"}})).at(0) % 12);
  EXPECT_NEAR(4, like(make_track("x", {.artists = {}, .tempo = 120})).at(0) % 10, 1);
  EXPECT_LT(9u, like(make_track("x", {})).size());
  const auto others = like(
      zdo_ptr(output_of(zvsdk_playlist_collection_get_zdo, collection.get(), user.get(), "7")));
  EXPECT_LT(9u, others.size());
  EXPECT_EQ(0, std::ranges::count(others, 7));
}

}  // namespace
