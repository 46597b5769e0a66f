// The engine against the plain model: random libraries, random statements, fixed seeds.
#include <gtest/gtest.h>

#include "collections/playlist_collection.h"
#include "tests/common/playlist_fixture.h"
#include "tests/common/results_text.h"
#include "tests/reference/model.h"

namespace {

using reference::library;
using reference::track;

// No locale is loaded, so that tempos are plain numbers and not bands.
class against_reference : public module_test {
 protected:
  void TearDown() override {
    m_collections.clear();
    module_test::TearDown();
  }

  void make_libraries(std::mt19937& random) {
    m_collections.clear();
    m_libraries.assign(1 + random() % 3, {});
    for (size_t i = 0; i < m_libraries.size(); ++i) {
      for (uint32_t k = random() % 40; k > 0; --k)
        m_libraries[i].push_back(make_track(random, std::to_string(i) + "-" + std::to_string(k)));
      load(m_libraries[i], std::to_string(i));
    }
  }

  template <class T>
  static void add_once(std::vector<T>& values, T value) {
    if (std::count(values.begin(), values.end(), value) == 0) values.push_back(std::move(value));
  }

  static track make_track(std::mt19937& random, std::string ident) {
    track made;
    made.ident = std::move(ident);
    for (uint32_t i = random() % 4; i > 0; --i) add_once<uint32_t>(made.tempos, random() % 20 * 10);
    for (uint32_t i = random() % 4; i > 0; --i)
      add_once(made.texts[reference::artist], any_name(random));
    for (auto of : {reference::album, reference::title})
      if (random() % 3 != 0) made.texts[of].push_back(any_name(random));
    return made;
  }
  static std::string any_name(std::mt19937& random) {
    return reference::names()[random() % reference::names().size()];
  }

  void load(const library& tracks, const std::string& name) {
    playlist_collection* collection = nullptr;
    ASSERT_EQ(0u, zvsdk_playlist_collection_create(name.c_str(), &collection));
    m_collections.emplace_back(collection);
    for (const track& each : tracks) load(collection, each);
    if (m_collections.size() == 1) return;
    ASSERT_EQ(0u, playlist_collection_addref(collection));
    ASSERT_EQ(0u, zcsl_vector_add(m_collections[0]->joined, collection));
  }

  // An object lists one tempo; further ones come with further objects for the same ident.
  static void load(playlist_collection* collection, const track& each) {
    const zdo_ptr object = make_object("zvsdk_ctx_pldata");
    static constexpr const char* keys[] = {"", "ZV_ArtistName", "ZV_AlbumName", "ZV_TrackName"};
    for (int of : {1, 2, 3})
      for (const std::string& text : each.texts[of])
        zvsdk_manager_zdo_value_add(object.get(), keys[of], text.c_str());
    ASSERT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection, each.ident.c_str(), object.get()));
    for (uint32_t tempo : each.tempos) {
      const zdo_ptr further = make_object(
          "zvsdk_ctx_pldata", {{"_sdkmgr_val_list_tempo_value", std::to_string(tempo).c_str()}});
      ASSERT_EQ(0u,
                zvsdk_playlist_collection_add_zdo(collection, each.ident.c_str(), further.get()));
    }
  }

  std::string engine(const std::string& statement) {
    playlist_results* handle = nullptr;
    const zvsdk_status status = zvsdk_playlist_generate_playlist(
        nullptr, statement.c_str(), m_collections[0].get(), nullptr, &handle);
    if (status != 0) return "status " + std::to_string(status) + " " + last_error().message;
    const results_ptr results(handle);
    return results_text(handle);
  }

  std::vector<library> m_libraries;
  std::vector<collection_ptr> m_collections;
};

TEST_F(against_reference, agrees_on_random_statements) {
  constexpr uint32_t rounds = 100, statements = 50;
  for (uint32_t round = 1; round <= rounds && !HasFailure(); ++round) {
    std::mt19937 random(round);
    make_libraries(random);
    ASSERT_EQ(0u, zvsdk_playlist_morelikethis_option_set(m_collections[0].get(),
                                                         ZVSDK_PLAYLIST_OPTION_RANDOM,
                                                         std::to_string(round).c_str()));
    for (uint32_t i = 0; i < statements && !HasFailure(); ++i) {
      reference::statement statement = reference::make_statement(random);
      const std::string found = engine(statement.text);
      EXPECT_EQ(reference::run(statement, m_libraries, round), found)
          << statement.text << "\nround " << round << " statement " << i;
    }
  }
}

}  // namespace
