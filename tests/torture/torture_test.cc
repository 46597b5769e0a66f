// Every allocation of a whole life of the module fails, first alone and then with all that follow:
// start, collection, media with data, generation, a media read back, More-Like-This, results, the
// collection as bytes and back and joined to itself as it was, release, stop. Each call must end
// with a proper status, what was made must be sound or absent, nothing may be lost, and the module
// must work again at once.
#include <algorithm>
#include <array>
#include <set>

#include "tests/common/playlist_fixture.h"
#include "tests/torture/operator_new.h"

namespace {

constexpr char s_statement[] =
    "GENERATE PLAYLIST WHERE ZV_Tempo > 90 AND (ZV_ArtistName CONTAINS \"b\" OR "
    "ZV_TrackName LIKE \"Track 4\") AND (ZV_Genre = \"Rock\" OR ZV_Mood LIKE SEED > -900) "
    "ORDER ZV_Genre LIKE SEED + ZV_Mood LIKE SEED + ZV_Origin LIKE SEED + ZV_Era LIKE SEED + "
    "ZV_ArtistType LIKE SEED + ZV_Tempo LIKE SEED + ZV_ArtistName LIKE SEED + "
    "ZV_AlbumName LIKE SEED + ZV_TrackName LIKE SEED + ZV_Mood LIKE \"Furious\" + RAND(100, 7) "
    "LIMIT 2 PER ZV_ArtistName, 3 RESULTS";
constexpr uint32_t s_track_count = 12;

// What one life came to. The test's own bookkeeping must not allocate while memory is short.
struct life {
  zvsdk_status start = 0;
  zvsdk_status create = 0;
  std::array<zvsdk_status, s_track_count> add = {};
  zvsdk_status generate = 0;
  zvsdk_status read_back = 0;
  zvsdk_status seeded = 0;
  zvsdk_status like = 0;
  zvsdk_status serialize = 0;
  zvsdk_status deserialize = 0;
  zvsdk_status join = 0;
  uint32_t bytes = 0;
  uint32_t joined_idents = 0;
  std::array<zvsdk_status, 7> give_back =
      {};  // results, collection, stop, object, likes, copy, ...
  uint32_t attributes = 0;
  uint32_t idents = 0;
  uint32_t count = 0;
  std::array<const char*, s_track_count> results = {};
};

class torture : public host_test, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    g_new_counter = &memory;
    host_test::SetUp();
    ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
    user.reset(output_of(zvsdk_manager_user_create, "torturer"));
    for (uint32_t i = 0; i < s_track_count; ++i) {
      const std::string title = "Track " + std::to_string(i);
      const std::string artist = "The Band " + std::to_string(i % 5);
      idents.push_back("ident-" + std::to_string(i));
      objects.push_back(
          make_track(idents.back().c_str(), {.title = title.c_str(),
                                             .artists = {artist.c_str(), title.c_str()},
                                             .album = "Album",
                                             .tempo = 80 + i * 5,
                                             .year = 1980 + i,
                                             .genre = i % 2 == 0 ? "Rock" : "Europop",
                                             .mood = i % 3 == 0 ? "40101:60,40102:40" : "Furious",
                                             .origin = "Algeria",
                                             .artist_type = "Vocalist"}));
    }
  }
  void TearDown() override {
    objects.clear();
    user.reset();
    EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
    host_test::TearDown();
    g_new_counter = nullptr;
  }

  void live(life& seen) {
    seen.start = zvsdk_playlist_initialize(manager);
    if (seen.start != 0) return;
    playlist_collection* collection = nullptr;
    seen.create = zvsdk_playlist_collection_create("torture", &collection);
    if (seen.create == 0) use(collection, seen);
    seen.give_back[1] = zvsdk_playlist_collection_release(collection);
    seen.give_back[2] = zvsdk_playlist_shutdown();
  }

  void use(playlist_collection* collection, life& seen) {
    zvsdk_playlist_collection_attributes_count(collection, &seen.attributes);
    for (uint32_t i = 0; i < s_track_count; ++i)
      seen.add[i] =
          zvsdk_playlist_collection_add_zdo(collection, idents[i].c_str(), objects[i].get());
    zvsdk_playlist_collection_ident_count(collection, &seen.idents);
    zvsdk_playlist_morelikethis_option_set(collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7");
    playlist_results* results = nullptr;
    seen.generate = zvsdk_playlist_generate_playlist(nullptr, s_statement, collection,
                                                     objects[4].get(), &results);
    if (seen.generate == 0) zvsdk_playlist_results_count(results, &seen.count);
    for (uint32_t i = 0; i < seen.count; ++i) seen.results[i] = own_ident(results, i);
    seen.give_back[0] = zvsdk_playlist_results_release(results);
    read_back(collection, seen);
    copy(collection, seen);
  }

  void copy(playlist_collection* collection, life& seen) {
    playlist_collection* read = nullptr;
    seen.bytes = sizeof(buffer);
    seen.serialize = zvsdk_playlist_collection_serialize(collection, buffer, &seen.bytes);
    if (seen.serialize != 0 || seen.bytes == 0) return;
    seen.deserialize = zvsdk_playlist_collection_deserialize(buffer, seen.bytes, &read);
    if (seen.deserialize != 0) return;
    seen.join = zvsdk_playlist_collection_update_name(read, "copy");
    if (seen.join == 0) seen.join = zvsdk_playlist_collection_join(collection, read);
    seen.give_back[5] = zvsdk_playlist_collection_release(read);
    zvsdk_playlist_collection_ident_count(collection, &seen.joined_idents);
  }

  void read_back(playlist_collection* collection, life& seen) {
    zvsdk_zdo* object = nullptr;
    playlist_results *results = nullptr, *likes = nullptr;
    const char* key = nullptr;
    const char* text = nullptr;
    seen.read_back =
        zvsdk_playlist_collection_get_zdo(collection, user.get(), idents[3].c_str(), &object);
    if (seen.read_back != 0) return;
    for (uint32_t i = 0; zvsdk_manager_zdo_render(object, i, &key, &text) == 0;) ++i;
    seen.seeded =
        zvsdk_playlist_generate_playlist(nullptr, s_statement, collection, object, &results);
    seen.like = zvsdk_playlist_generate_morelikethis(user.get(), collection, object, &likes);
    seen.give_back[3] = zvsdk_manager_zdo_release(object);
    seen.give_back[4] = zvsdk_playlist_results_release(likes);
    seen.give_back[6] = zvsdk_playlist_results_release(results);
  }

  // Our own text of a result, as the collection's goes with the collection.
  const char* own_ident(playlist_results* results, uint32_t index) {
    const char* ident = nullptr;
    zvsdk_playlist_results_enum(results, index, &ident, nullptr);
    const auto own = std::ranges::find_if(
        idents, [&](const std::string& each) { return ident && each == ident; });
    return own != idents.end() ? own->c_str() : nullptr;
  }

  static void expect_one_of(std::initializer_list<zvsdk_status> fine, zvsdk_status status) {
    EXPECT_NE(0, std::ranges::count(fine, status)) << std::hex << status;
  }

  // The most that want of memory may do. Giving back never needs any.
  static void expect_sound(const life& seen, uint32_t attributes) {
    expect_one_of({0, playlist_error_init_failed}, seen.start);
    expect_one_of({0, playlist_error_no_memory}, seen.create);
    for (const zvsdk_status status : seen.add) expect_one_of({0, playlist_error_no_memory}, status);
    // An attribute that could not be made is missing without a word, and a statement that names it
    // names something unknown.
    const bool lacks = seen.attributes < attributes;
    // A criterion whose list could not be loaded goes without, and one that needs it says so. The
    // mood of a seed is looked up even in correlates that could not be loaded.
    for (const zvsdk_status status : {seen.generate, seen.seeded, seen.like})
      expect_one_of({0, playlist_error_no_memory, playlist_error_no_locale,
                     playlist_error_invalid_arg, lacks ? playlist_error_pdl_syntax : 0},
                    status);
    // What could not be added is not found.
    expect_one_of({0, playlist_error_no_memory, playlist_warn_not_found}, seen.read_back);
    EXPECT_EQ(0u, seen.serialize);
    // Whatever strikes at the end of the bytes is told as a damaged end.
    expect_one_of({0, playlist_error_no_memory, playlist_error_corrupt_data}, seen.deserialize);
    expect_one_of({0, playlist_error_no_memory}, seen.join);
    EXPECT_LE(seen.joined_idents, 2 * seen.idents);
    for (const zvsdk_status status : seen.give_back) EXPECT_EQ(0u, status);
    EXPECT_EQ(0u, zvsdk_playlist_initchecks());
    EXPECT_LE(seen.idents, s_track_count);
    EXPECT_LE(seen.count, 3u);
  }

  life live_with_memory() {
    life seen;
    live(seen);
    EXPECT_EQ(0u, seen.start | seen.create | seen.generate | seen.read_back | seen.seeded |
                      seen.like | seen.serialize | seen.deserialize | seen.join);
    EXPECT_EQ(2 * s_track_count, seen.joined_idents);
    EXPECT_EQ(s_track_count, seen.idents);
    EXPECT_EQ(3u, seen.count);
    for (uint32_t i = 0; i < seen.count; ++i) EXPECT_NE(nullptr, seen.results[i]);
    return seen;
  }

  failing_memory memory;
  char buffer[16384] = {};
  texts idents;
  std::vector<zdo_ptr> objects;
  user_ptr user;
};

TEST_P(torture, every_allocation_may_fail) {
  const life whole = live_with_memory();
  const uint64_t refusals = memory.for_each_failure(
      [&] {
        life seen;
        live(seen);
        memory.restore();
        expect_sound(seen, whole.attributes);
        EXPECT_EQ(whole.results, live_with_memory().results) << "works again";
      },
      GetParam());
  EXPECT_GT(refusals, 100u) << "they must reach into the work";
}

INSTANTIATE_TEST_SUITE_P(alone_and_lasting, torture, ::testing::Bool());

}  // namespace
