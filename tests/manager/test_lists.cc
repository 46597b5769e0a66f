// Locales, lists, their elements and correlates: the built-in tempos as data, and documents of an
// application's own, good and bad.

#include <thread>

#include "tests/common/data_folder.h"
#include "tests/manager/host_fixture.h"
#include "tests/manager/list_view.h"

namespace {

constexpr char s_tempos[] = "zvsdk_list_type_tempos";

TEST_F(host_test, a_plain_tempo_belongs_to_one_band_of_each_level) {
  const list_view tempos(host.lists, s_tempos, "eng");
  for (uint32_t tempo = 1; tempo < 1000; ++tempo) {
    SCOPED_TRACE(tempo);
    const element_facts finest = tempos.by_id(tempo);
    ASSERT_EQ(3u, finest.level);
    EXPECT_EQ(finest, tempos.by_id(tempo, 9)) << "coarser than asked is given itself";
    for (uint32_t level = 3; level >= 1; --level) {
      const element_facts band = tempos.by_id(tempo, level);
      const element_facts named = tempos.by_id(band.match_id);
      ASSERT_EQ(tempo, band.id) << "a plain tempo stays what is stored";
      ASSERT_TRUE(named.id == band.match_id && named.id != tempo && named.level == level);
      ASSERT_TRUE(band.level == level && band.text == named.text);
      ASSERT_TRUE(named.lower <= tempo && tempo <= named.upper);
      ASSERT_EQ(named, tempos.by_id(finest.match_id, level)) << "lifted from the named band";
    }
  }
  EXPECT_EQ(0u, tempos.by_id(1000).id);
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

TEST(own_data, replaces_and_extends_what_is_built_in) {
  const data_folder folder;
  folder.write("eras.json", R"({"list_type": "zvsdk_list_type_eras", "languages": ["eng"],
    "values": "element", "elements": [{"id": 5001, "text": "1980s", "range": [1980, 1989],
    "children": [{"id": 5002, "text": "Early", "range": [1980, 1984]},
                 {"id": 5003, "text": "Late", "range": [1986, 1989]}]}]})");
  const running_host host(folder.path().c_str());
  EXPECT_EQ(100001u, list_view(host.lists, s_tempos, "FR").by_text("TRÈS LENT").id)
      << "still built in";
  const list_view eras(host.lists, "zvsdk_list_type_eras", "eng");
  EXPECT_EQ(5002u, eras.by_id(1983).id) << "a year takes the id of its era";
  EXPECT_EQ(5001u, eras.by_id(1985).id) << "a gap belongs to the parent";
  EXPECT_EQ(0u, eras.by_id(1990).id);

  const std::string outside =
      "zvsdk_list_type_../" + std::filesystem::path(folder.path()).filename().string() + "/eras";
  const std::tuple<std::string, const char*, uint32_t> absent[] = {
      {s_tempos, "xyz", 0x2D3}, {"zvsdk_list_type_none", "eng", 3}, {outside, "eng", 3}};
  for (const auto& [type, language, status] : absent) {
    zvsdk_list* list = nullptr;
    EXPECT_EQ(status, low_word(host.lists->list_retrieve(type.c_str(), language, "", "", nullptr,
                                                         nullptr, nullptr, &list)));
  }
}

/* Loading any locale is refused with a message that names the document and its fault. */
TEST(own_data, a_bad_document_is_refused_with_its_name_and_the_fault) {
  const std::string list =
      R"({"list_type": "t", "languages": ["eng"], "values": "keep", "elements": )";
  const std::string one = list + R"([{"id": 9, "text": "x", "range": [1, 2])";
  const std::string another = R"(, "text": "x", "range": [2, 3]})";
  const std::string rule = R"({"correlates": "c", "list": "moods", )";
  const std::string tree =
      rule + R"("rule": "tree", "inside": [1], "around": [1], "siblings": [1], "step": 1, )";
  const std::string line =
      R"({"correlates": "c", "list": "eras", "rule": "interval", "zero": 1, "far": 2, "axis": )";
  const struct {
    const char* file;
    std::string text;
    const char* fault;
  } cases[] = {
      {"tempos", "{", "line 1"},
      {"tempos", R"({"list_type": "t", "languages": []})", "languages"},
      {"tempos", list + R"([{"id": 0)" + another + "]}", "must not be 0"},
      {"tempos", list + R"([{"id": 2)" + another + "]}", "taken for a value"},
      {"tempos", list + R"([{"id": 9, "text": "x", "range": [2, 1]}]})", "upside down"},
      {"tempos", list + R"([{"id": 9, "text": "x", "range": [1, 2000000]}]})", "too wide"},
      {"tempos", list + R"([{"id": 9, "text": {"ger": "x"}, "range": [1, 2]}]})", "\"eng\""},
      {"tempos", list + R"([{"id": 9, "text": "x"}]})", "range is missing"},
      {"tempos", one + R"(}, {"id": 9, "text": "x", "range": [3, 4]}]})", "given twice"},
      {"tempos", one + R"(}, {"id": 8)" + another + "]}", "neighbour"},
      {"tempos", one + R"(, "children": [{"id": 8)" + another + "]}]}", "parent"},
      {"tempos", one + R"(, "also": ["y", 3]}]})", "element 9: \"also\""},
      {"tempos", one + R"(, "plane": [0.5, 1.5]}]})", "\"plane\""},
      {"tempos", std::string(100000, '['), "deep"},
      {"correlates_mood", R"({"correlates": "c"})", "rows"},
      {"correlates_mood", R"({"correlates": "c", "list": "none"})", "no list"},
      {"correlates_mood", rule + R"("rule": "x"})", "rule"},
      {"correlates_mood", rule + R"("rule": "plane"})", "zero"},
      {"correlates_mood", R"({"correlates": "c", "rows": {"x": {}}})", "no id"},
      {"correlates_mood", R"({"correlates": "c", "rows": {"1": {"1": 1001}}})", "1000"},
      {"correlates_mood", tree + R"("apart": 1, "affinities": [[1, 2]]})", "affinities"},
      {"correlates_mood", tree + R"("apart": 1, "affinity_step": -9223372036854775808})", "score"},
      {"correlates_era", line + "[[1, 1], [2, 1]]}", "rising"},
  };
  for (const auto& [file, text, fault] : cases) {
    const data_folder folder;
    folder.write((file + std::string(".json")).c_str(), text);
    const running_host host(folder.path().c_str());
    EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_locale_load("g", "eng", nullptr, nullptr))) << text;
    EXPECT_TRUE(std::string(last_error().message).starts_with(file + std::string(".json: ")));
    EXPECT_TRUE(has(last_error().message, fault));
  }
}

}  // namespace
