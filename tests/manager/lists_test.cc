// Locales, lists, their elements and correlates: the built-in tempos as data, and documents of an
// application's own, good and bad.

#include <thread>

#include "tests/manager/data_folder.h"
#include "tests/manager/list_view.h"

namespace {

constexpr char s_tempos[] = "zvsdk_list_type_tempos";
constexpr uint32_t s_slowest = 1, s_fastest = 999;

TEST_F(host_test, a_plain_tempo_belongs_to_one_band_of_each_level) {
  const list_view tempos(host.lists, s_tempos, "eng");
  for (uint32_t tempo = s_slowest; tempo <= s_fastest; ++tempo) {
    SCOPED_TRACE(tempo);
    const element_facts finest = tempos.by_id(tempo);
    ASSERT_EQ(3u, finest.level);
    EXPECT_EQ(finest, tempos.by_id(tempo, 9)) << "coarser than asked is given itself";
    for (uint32_t level = 3; level >= 1; --level) {
      const element_facts band = tempos.by_id(tempo, level);
      const element_facts named = tempos.by_id(band.match_id);
      ASSERT_EQ(tempo, band.id) << "a plain tempo stays what is stored";
      ASSERT_NE(tempo, band.match_id) << "and names no band";
      ASSERT_TRUE(named.id == named.match_id && named.id == band.match_id);
      ASSERT_TRUE(named.level == level && band.level == level && band.text == named.text);
      ASSERT_TRUE(named.lower <= tempo && tempo <= named.upper);
      ASSERT_EQ(named, tempos.by_id(finest.match_id, level)) << "lifted from the named band";
    }
  }
  for (uint32_t unknown : {0u, s_fastest + 1, 100000u, ~0u})
    EXPECT_EQ(0u, tempos.by_id(unknown).id);
}

TEST_F(host_test, texts_are_those_of_the_language_and_found_in_any_case) {
  struct {
    const char *language, *text, *asked;
  } const cases[] = {{"eng", "Very slow", "vERY sLOW"},
                     {"ger", "Sehr langsam", "sehr langsam"},
                     {"de", "Sehr langsam", "SEHR LANGSAM"},
                     {"fre", "Très lent", "TRÈS LENT"},
                     {"FR", "Très lent", "très lent"}};
  for (const auto& each : cases) {
    const list_view tempos(host.lists, s_tempos, each.language);
    EXPECT_EQ(100001u, tempos.by_text(each.asked).id) << each.asked;
    EXPECT_EQ(each.text, tempos.by_id(100001).text);
    EXPECT_EQ(0u, tempos.by_text("no such speed").id);
    EXPECT_EQ(s_tempos, tempos.by_id(100001).list_type);
  }
  zvsdk_list* list = nullptr;
  const auto retrieve = [&](const char* type, const char* language) {
    return low_word(
        host.lists->list_retrieve(type, language, "", "", nullptr, nullptr, nullptr, &list));
  };
  EXPECT_EQ(0x2D3u, retrieve(s_tempos, "xyz"));
  EXPECT_EQ(3u, retrieve("zvsdk_list_type_none", "eng"));
  EXPECT_EQ(3u, retrieve("tempos", "eng"));
  EXPECT_EQ(3u, retrieve("zvsdk_list_type_../tempos", "eng"));
  zvsdk_correlates* correlates = nullptr;
  EXPECT_EQ(3u, low_word(host.lists->correlates_retrieve("zvsdk_correlates_none", nullptr, nullptr,
                                                         nullptr, &correlates)));
}

TEST_F(host_test, a_group_has_one_default_locale_that_may_outlive_its_replacement) {
  const zvsdk_listmanager_interface& l = *host.lists;
  const auto info = [&](zvsdk_locale* of) {
    const char *language = nullptr, *region = nullptr, *descriptor = nullptr;
    EXPECT_EQ(0u, l.locale_get_info(of, nullptr, &language, &region, &descriptor, nullptr));
    return std::string(language) + "/" + region + "/" + descriptor;
  };
  zvsdk_locale* old = nullptr;
  EXPECT_EQ(0x2D3u, low_word(l.locale_get_default(ZVSDK_LOCALE_PLAYLIST, &old)));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "en", "US", nullptr));
  old = output_of(l.locale_get_default, ZVSDK_LOCALE_PLAYLIST);
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "fra", nullptr, "short"));
  zvsdk_locale* current = output_of(l.locale_get_default, ZVSDK_LOCALE_PLAYLIST);
  EXPECT_EQ("eng/US/", info(old));
  EXPECT_EQ("fre//short", info(current));
  EXPECT_EQ(0u, l.locale_addref(old));
  for (int i = 0; i < 2; ++i) EXPECT_EQ(0u, l.locale_release(old));
  EXPECT_EQ(1u, low_word(l.locale_addref(old)));
  EXPECT_EQ(0u, l.locale_release(current));
  EXPECT_EQ(0x2D3u, low_word(zvsdk_manager_locale_load("g", "tlh", nullptr, nullptr)));
  EXPECT_TRUE(has(last_error().message, "tlh"));
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ(3u, low_word(zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST)));
}

TEST_F(host_test, lists_and_locales_serve_several_threads) {
  std::vector<std::jthread> threads;
  for (const char* language : {"eng", "ger", "eng", "fre"}) {
    threads.emplace_back([&, language] {
      for (uint32_t i = 0; i < 2000; ++i) {
        const list_view tempos(host.lists, s_tempos, language);
        ASSERT_EQ(2u, tempos.by_id(60 + i % 100, 2).level);
        ASSERT_EQ(0u, zvsdk_manager_locale_load("g", language, nullptr, nullptr));
        ASSERT_EQ(0u, host.lists->locale_release(output_of(host.lists->locale_get_default, "g")));
      }
    });
  }
}

constexpr char s_eras[] = R"({"list_type": "zvsdk_list_type_eras", "languages": ["eng"],
  "values": "element", "elements": [
  {"id": 5001, "text": "The Eighties", "range": [1980, 1989], "children": [
    {"id": 5002, "text": "Early", "range": [1980, 1984]},
    {"id": 5003, "text": "Late", "range": [1986, 1989]}]}]})";

TEST(own_data, replaces_and_extends_what_is_built_in) {
  const data_folder folder;
  folder.write("eras.json", s_eras);
  folder.write("correlates_era.json", R"({"correlates": "x", "default": -7,
    "rows": {"5002": {"5002": 1000, "5003": 250, "5001": -300}}})");
  const running_host host(folder.path().c_str());
  EXPECT_EQ(129u, list_view(host.lists, s_tempos, "eng").by_id(129).id) << "still built in";
  const list_view eras(host.lists, "zvsdk_list_type_eras", "eng");
  EXPECT_EQ(5002u, eras.by_id(1983).id) << "a year takes the id of its era";
  EXPECT_EQ(5001u, eras.by_id(1985).id) << "a gap belongs to the parent";
  EXPECT_EQ(5001u, eras.by_id(1983, 1).id);
  EXPECT_EQ(0u, eras.by_id(1990).id);

  const zvsdk_listmanager_interface& l = *host.lists;
  const std::string outside =
      "zvsdk_list_type_../" + std::filesystem::path(folder.path()).filename().string() + "/eras";
  zvsdk_list* list = nullptr;
  EXPECT_EQ(3u, low_word(l.list_retrieve(outside.c_str(), "eng", "", "", nullptr, nullptr, nullptr,
                                         &list)));
  zvsdk_correlates* table =
      output_of(l.correlates_retrieve, "zvsdk_correlates_era", nullptr, nullptr, nullptr);
  zvsdk_correlates_set* set = nullptr;
  EXPECT_EQ(3u, low_word(l.correlates_get_set(table, 5003, -1000, &set)));
  const auto scores = [&](int32_t least) {
    std::vector<int32_t> found;
    set = output_of(l.correlates_get_set, table, 5002u, least);
    for (uint32_t id : {5002, 5003, 5001, 1})
      found.push_back(output_of(l.correlates_set_get_score, set, id));
    EXPECT_EQ(0u, l.correlates_set_release(set));
    return found;
  };
  EXPECT_EQ((std::vector{1000, 250, -300, -7}), scores(-1000));
  EXPECT_EQ((std::vector{1000, -7, -7, -7}), scores(300));
  EXPECT_EQ(0u, l.correlates_release(table));
}

TEST(own_data, a_bad_document_is_refused_with_its_name_and_the_fault) {
  const std::string head =
      R"({"list_type": "t", "languages": ["eng"], "values": "keep", "elements": )";
  const auto element = [](const char* id, const char* range) {
    return std::string(R"({"id": )") + id + R"(, "text": "x", "range": )" + range + "}";
  };
  struct {
    std::string text, message;
  } const cases[] = {
      {"{", "line 1"},
      {R"({"list_type": "t", "list_type": "t"})", "given twice"},
      {R"({"list_type": "t"})", "languages"},
      {R"({"list_type": "t", "languages": []})", "languages"},
      {R"({"list_type": "t", "languages": ["eng"], "values": "x", "elements": []})", "values"},
      {head + "[]}", "empty"},
      {head + "[7]}", "no object"},
      {head + "[" + element("0", "[1, 2]") + "]}", "must not be 0"},
      {head + "[" + element("-1", "[1, 2]") + "]}", "whole number"},
      {head + "[" + element("9", "[2, 1]") + "]}", "upside down"},
      {head + "[" + element("9", "[1]") + "]}", "two numbers"},
      {head + "[" + element("9", "[1, 2000000]") + "]}", "too wide"},
      {head + "[" + element("2", "[1, 3]") + "]}", "taken for a value"},
      {head + "[" + element("9", "[1, 2]") + "," + element("9", "[3, 4]") + "]}", "given twice"},
      {head + "[" + element("9", "[1, 3]") + "," + element("8", "[3, 4]") + "]}", "neighbour"},
      {head + R"([{"id": 9, "range": [1, 2]}]})", "no text"},
      {head + R"([{"id": 9, "text": {"ger": "x"}, "range": [1, 2]}]})", "no text in \"eng\""},
      {head + R"([{"id": 9, "text": "x"}]})", "range is missing"},
      {head + R"([{"id": 9, "text": "x", "range": [1, 2], "children": {}}]})", "\"children\""},
      {head + R"([{"id": 9, "text": "x", "range": [1, 2], "children": [)" + element("8", "[2, 3]") +
           "]}]}",
       "parent"},
      {std::string(100000, '['), "deep"},
  };
  for (const auto& each : cases) expect_refused("tempos.json", each.text, each.message);
}

}  // namespace
