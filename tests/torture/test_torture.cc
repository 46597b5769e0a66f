// Every allocation of a whole life of the module fails, first alone and then with all that follow:
// start, collection, media with data, generation, analysis, a media read back, More-Like-This,
// results, the collection as bytes and back and joined to itself as it was, a sync, release, stop.
// Each call must end with a proper status, what was made must be sound or absent, nothing may be
// lost, and the module must work again at once.
#include <algorithm>
#include <array>

#include "tests/common/data_folder.h"
#include "tests/common/playlist_fixture.h"
#include "tests/torture/operator_new.h"

namespace {

constexpr char s_statement[] =
    "GENERATE PLAYLIST WHERE ZV_Tempo > 90 AND (ZV_ArtistName CONTAINS \"b\" OR "
    "ZV_TrackName LIKE \"Track 4\") AND (ZV_Genre = \"Rock\" OR ZV_Mood LIKE SEED > -900) "
    "ORDER ZV_Genre LIKE SEED + ZV_Mood LIKE SEED + ZV_Origin LIKE SEED + ZV_Era LIKE SEED + "
    "ZV_ArtistType LIKE SEED + ZV_Tempo LIKE SEED + ZV_ArtistName LIKE SEED + "
    "ZV_AlbumName LIKE SEED + ZV_TrackName LIKE SEED + ZV_Mood LIKE \"Furious\" + "
    "ZV_Origin LIKE \"Africa\" + ZV_Era LIKE 1980 + ZV_ArtistType LIKE \"Person\" + RAND(100, 7) "
    "LIMIT 2 PER ZV_ArtistName, 3 RESULTS";
constexpr char s_seedless[] =
    "GENPL WHERE ZV_Tempo > 90 AND (ZV_ArtistName = 'x' OR ZV_Mood LIKE 'Furious' > 5) "
    "ORDER RAND(9) + ZV_Genre LIKE 'Rock' LIMIT 1 RESULTS";
constexpr uint32_t s_track_count = 12;
constexpr uint32_t s_attribute_count = 9;

class torture : public with_locale<host_test>, public ::testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    g_new_counter = &memory;
    with_locale::SetUp();
    for (uint32_t i = 0; i < s_track_count; ++i) {
      idents.push_back(numbered_ident(i));
      objects.push_back(make_numbered_track(i));
    }
  }
  void TearDown() override {
    objects.clear();
    with_locale::TearDown();
    g_new_counter = nullptr;
  }

  // Whether a call worked. While memory is short it may be refused instead with one of these.
  bool works(zvsdk_status status, std::initializer_list<zvsdk_status> refusals = {}) {
    expect(status == 0 || (is_short && std::ranges::count(refusals, status) != 0), status);
    return status == 0;
  }
  // Counts are reached with enough memory, and never passed.
  void counts(uint32_t expected, uint32_t count) {
    expect(is_short ? count <= expected : count == expected, count);
  }
  void expect(bool holds, uint32_t seen) {
    if (holds) return;
    memory.restore();  // the report needs some
    ADD_FAILURE() << std::hex << seen << " in " << last_error().function;
  }

  // The numbers of the best tracks. Our own bookkeeping must not allocate while memory is short.
  using ranking = std::array<ptrdiff_t, 3>;

  // A life of the module with one collection.
  template <class Use>
  ranking live(Use use) {
    best = {};
    playlist_collection* collection = nullptr;
    if (works(zvsdk_playlist_initialize(manager), {playlist_error_init_failed})) {
      if (works(zvsdk_playlist_collection_create("torture", &collection),
                {playlist_error_no_memory}))
        use(collection);
      works(zvsdk_playlist_collection_release(collection));
      works(zvsdk_playlist_shutdown());
    }
    counts(0, zvsdk_playlist_initchecks());
    return best;
  }

  // Lives with each allocation refused, and once more after each.
  template <class Use>
  ranking survive(Use use) {
    const ranking whole = live(use);
    const uint64_t refusals = memory.for_each_failure(
        [&] {
          is_short = true;
          live(use);
          is_short = false;
          memory.restore();
          EXPECT_EQ(whole, live(use)) << "works again";
        },
        GetParam());
    EXPECT_GT(refusals, 100u) << "they must reach into the work";
    return whole;
  }

  void use(playlist_collection* collection) {
    uint32_t count = 0;
    for (uint32_t i = 0; i < s_track_count; ++i)
      works(zvsdk_playlist_collection_add_zdo(collection, idents[i].c_str(), objects[i].get()),
            {playlist_error_no_memory});
    works(zvsdk_playlist_collection_ident_count(collection, &count));
    counts(s_track_count, count);
    works(zvsdk_playlist_morelikethis_option_set(collection, ZVSDK_PLAYLIST_OPTION_RANDOM, "7"),
          {playlist_error_no_memory});
    best = generate(collection, objects[4].get());
    analyze(collection);
    read_back(collection);
    copy(collection);
    sync(collection);
  }

  bool is_generated(playlist_collection* collection, zvsdk_status status,
                    zvsdk_status further_refusal = 0) {
    // An attribute that could not be made is missing without a word, and a statement that names it
    // names something unknown.
    uint32_t attributes = 0;
    works(zvsdk_playlist_collection_attributes_count(collection, &attributes));
    // A criterion whose list could not be loaded goes without, and one that needs it says so. The
    // mood of a seed is looked up even in correlates that could not be loaded.
    return works(status,
                 {playlist_error_no_memory, playlist_error_no_locale, playlist_error_invalid_arg,
                  further_refusal, attributes < s_attribute_count ? playlist_error_pdl_syntax : 0});
  }

  ranking generate(playlist_collection* collection, zvsdk_zdo* seed) {
    ranking found = {};
    uint32_t count = 0;
    playlist_results* results = nullptr;
    if (!is_generated(collection, zvsdk_playlist_generate_playlist(nullptr, s_statement, collection,
                                                                   seed, &results)))
      return found;
    works(zvsdk_playlist_results_count(results, &count));
    counts(3, count);
    for (uint32_t i = 0; i < std::min(count, 3u); ++i) {
      const char* ident = "";
      works(zvsdk_playlist_results_enum(results, i, &ident, nullptr));
      found[i] = std::ranges::find(idents, std::string_view(ident)) - idents.begin();
    }
    works(zvsdk_playlist_results_release(results));
    return found;
  }

  void analyze(playlist_collection* collection) {
    const char* text = nullptr;
    is_generated(collection, zvsdk_playlist_statement_validate(s_statement, collection, nullptr));
    const zvsdk_status status =
        zvsdk_playlist_statement_analyze_ident(s_seedless, collection, idents[3].c_str(), &text);
    if (is_generated(collection, status, playlist_warn_not_found))
      works(zvsdk_manager_handle_release(text));
  }

  void read_back(playlist_collection* collection) {
    zvsdk_zdo* object = nullptr;
    playlist_results* likes = nullptr;
    const char *key = nullptr, *text = nullptr;
    // What could not be added is not found.
    if (!works(
            zvsdk_playlist_collection_get_zdo(collection, user.get(), idents[3].c_str(), &object),
            {playlist_error_no_memory, playlist_warn_not_found}))
      return;
    for (uint32_t i = 0; zvsdk_manager_zdo_render(object, i, &key, &text) == 0;) ++i;
    generate(collection, object);
    is_generated(collection,
                 zvsdk_playlist_generate_morelikethis(user.get(), collection, object, &likes));
    works(zvsdk_manager_zdo_release(object));
    works(zvsdk_playlist_results_release(likes));
  }

  void copy(playlist_collection* collection) {
    playlist_collection* read = nullptr;
    uint32_t size = sizeof(buffer), count = 0;
    works(zvsdk_playlist_collection_serialize(collection, buffer, &size));
    if (size == 0) return;
    // Whatever strikes at the end of the bytes is told as a damaged end.
    if (!works(zvsdk_playlist_collection_deserialize(buffer, size, &read),
               {playlist_error_no_memory, playlist_error_corrupt_data}))
      return;
    if (works(zvsdk_playlist_collection_update_name(read, "copy"), {playlist_error_no_memory}))
      works(zvsdk_playlist_collection_join(collection, read), {playlist_error_no_memory});
    works(zvsdk_playlist_collection_release(read));
    works(zvsdk_playlist_collection_ident_count(collection, &count));
    counts(2 * s_track_count, count);
  }

  // What could not be written is not found. No table is taken for a foreign one.
  bool is_kept(zvsdk_status status) {
    return works(status, {playlist_error_no_memory, playlist_error_corrupt_data,
                          playlist_warn_not_found, 0x90890500});
  }

  void keep(playlist_collection* collection) {
    playlist_collection* read = nullptr;
    uint32_t count = 0;
    works(zvsdk_playlist_collection_add_ident(collection, "ident"), {playlist_error_no_memory});
    if (!works(zvsdk_playlist_storage_location_set(folder_path.c_str()),
               {playlist_error_no_memory}))
      return;
    is_kept(zvsdk_playlist_storage_store_collection(collection));
    if (is_kept(zvsdk_playlist_storage_count_collections(&count))) counts(1, count);
    is_kept(zvsdk_playlist_storage_load_collection("torture", &read));
    works(zvsdk_playlist_collection_release(read));
    is_kept(zvsdk_playlist_storage_store_collection(collection));
    is_kept(zvsdk_playlist_storage_remove_collection("torture"));
  }

  // Every other track is announced, and one that is not there.
  void sync(playlist_collection* collection) {
    const auto obey = [](void* self, playlist_collection* of, const char* ident, uint32_t status,
                         uint8_t*) {
      torture& test = *static_cast<torture*>(self);
      ++test.differences;
      test.works(status == playlist_sync_status_add
                     ? zvsdk_playlist_collection_add_ident(of, ident)
                     : zvsdk_playlist_collection_ident_remove(of, ident),
                 {playlist_error_no_memory});
      return zvsdk_status{0};
    };
    differences = 0;
    for (uint32_t i = 0; i <= s_track_count; i += 2)
      works(zvsdk_playlist_collection_sync_ident_add(collection,
                                                     i < s_track_count ? idents[i].c_str() : "new"),
            {playlist_error_no_memory});
    // An announcement may have failed between its two halves.
    works(zvsdk_playlist_collection_sync_process(collection, obey, this),
          {playlist_error_no_memory, playlist_error_bad_state});
    expect(is_short || differences == s_track_count / 2 + 1, differences);
  }

  failing_memory memory;
  ranking best = {};
  uint32_t differences = 0;
  bool is_short = false;
  const data_folder folder{quick_folder()};
  const std::string folder_path = folder.path();
  char buffer[16384] = {};
  texts idents;
  std::vector<zdo_ptr> objects;
};

TEST_P(torture, every_allocation_may_fail) {
  const ranking whole = survive([this](auto* collection) { use(collection); });
  EXPECT_EQ(0, std::ranges::count(whole, s_track_count)) << "an ident of nobody";
}

TEST_P(torture, every_allocation_of_storage_may_fail) {
  survive([this](auto* collection) { keep(collection); });
}

INSTANTIATE_TEST_SUITE_P(alone_and_lasting, torture, ::testing::Bool());

}  // namespace
