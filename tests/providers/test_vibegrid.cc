// Collections as sources of a grid, through the tables and contexts that the host hands out.
#include <algorithm>
#include <deque>
#include <sstream>
#include <thread>

#include "tests/attributes/attribute_fixture.h"
#include "tests/common/use_collection.h"
#include "zvsdk_vibegrid.h"

namespace {

constexpr char s_name[] = ZVSDK_VIBEGRID_PROVIDER_NAME, s_include[] = ZVSDK_VIBEGRID_INCLUDE;

struct source {
  const zvsdk_vibegrid_datasource_provider* slots = nullptr;
  void* context = nullptr;

  zvsdk_status get(const char* key, const char** text) const {
    return slots->data_get(nullptr, context, key, text);
  }
};

// The sources that are registered now, in their order.
std::vector<source> sources() {
  std::vector<source> all;
  const void* table = nullptr;
  void* context = nullptr;
  while (zvsdk_manager_provider_get(ZVSDK_VIBEGRID_INTERFACE, static_cast<uint32_t>(all.size()),
                                    &table, &context) == 0)
    all.push_back({static_cast<const zvsdk_vibegrid_datasource_provider*>(table), context});
  return all;
}

// A transaction with filters given as "moods 7001 genres !7002".
struct cell {
  cell(const source& from, zvsdk_user* user, const std::string& filters = "",
       zvsdk_vibegrid_status_callback callback = nullptr, void* data = nullptr)
      : slots(*from.slots) {
    created = slots.transaction_create(nullptr, from.context, &transaction, user, callback, data);
    std::istringstream in(filters);
    for (std::string list, value; created == 0 && in >> list >> value;) {
      const bool out = value[0] == '!';
      const char* kept = kept_texts.emplace_back(value.substr(out)).c_str();
      EXPECT_EQ(0u, add(kept_texts.emplace_back("zvsdk_list_type_" + list).c_str(), kept,
                        out ? ZVSDK_VIBEGRID_EXCLUDE : s_include));
    }
  }
  ~cell() { EXPECT_EQ(0u, slots.transaction_release(transaction)); }

  zvsdk_status add(const char* list, const char* value, const char* condition, uint32_t flag = 1) {
    return slots.transaction_filter_create(transaction, list, value, condition, flag);
  }
  zvsdk_status find() { return slots.transaction_find(transaction); }
  zvsdk_status count(uint32_t* count) { return slots.transaction_result_count(transaction, count); }
  zvsdk_status estimate(uint32_t* count) {
    return slots.transaction_find_estimate(transaction, count);
  }
  zvsdk_status at(uint32_t index, const char** ident, const char** name) {
    return slots.transaction_result_enum(transaction, index, ident, name);
  }
  texts results() {
    const char* name = nullptr;
    texts all = listed([&](uint32_t i, const char** ident) { return at(i, ident, &name); });
    std::ranges::sort(all);
    return all;
  }

  const zvsdk_vibegrid_datasource_provider& slots;
  std::deque<std::string> kept_texts;
  zvsdk_vibegrid_transaction* transaction = nullptr;
  zvsdk_status created;
};

class vibegrid : public small_lists_test {
 protected:
  void SetUp() override {
    small_lists_test::SetUp();
    collection.reset(output_of(zvsdk_playlist_collection_create, "main"));
    for (const auto& [ident, mood, genre] : {std::tuple{"coarse", "7001", "7002"},
                                             {"middle", "7011", "7111"},
                                             {"two", "7011", "7012"},
                                             {"two", "7012", "7012"},
                                             {"fine", "7111", "7012"},
                                             {"other", "7002", "7112"},
                                             {"profile", "7121:60,7002:40", "7111"}})
      add(ident, mood, genre);
    main = sources().at(0);
  }
  void TearDown() override {
    collection.reset();
    EXPECT_TRUE(sources().empty());
    small_lists_test::TearDown();
  }
  void add(const char* ident, const char* mood, const char* genre) {
    const zdo_ptr track = make_track(ident, {.artists = {}, .genre = genre, .mood = mood});
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), ident, track.get()));
  }
  // The count that is estimated, and after a + the results if that took a search.
  std::string estimate(const std::string& filters) {
    cell asked(main, user.get(), filters);
    uint32_t count = 0, found = 0;
    const zvsdk_status status = asked.estimate(&count);
    if (status != 0) return "#" + std::to_string(zvsdk_low_word(status));
    return std::to_string(count) + (asked.count(&found) == 0 ? "+" + std::to_string(found) : "");
  }

  collection_ptr collection;
  source main;
};

TEST_F(vibegrid, offers_every_collection_as_long_as_it_lives) {
  collection_ptr read(deserialized(serialized(collection.get())));
  EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(read.get(), "copy"));
  const source copy = sources().at(1);
  const char* text = nullptr;
  for (const auto& [key, value] : {std::pair{s_name, "copy"},
                                   {ZVSDK_VIBEGRID_PROVIDER_TYPE, "zvsdk_playlist"},
                                   {ZVSDK_VIBEGRID_PROVIDER_NETWORK_USE, "FALSE"}}) {
    EXPECT_EQ(0u, copy.get(key, &text));
    EXPECT_STREQ(value, text);
  }
  EXPECT_EQ(playlist_error_invalid_arg, copy.get("zvsdk_vibegrid_provider_NAME", &text));
  EXPECT_EQ(playlist_error_invalid_arg, copy.get(s_name, nullptr));
  EXPECT_EQ(0u, copy.slots->capabilities(nullptr, copy.context));
  EXPECT_EQ(playlist_error_unsupported, copy.slots->zdo_get(nullptr, copy.context, "two", nullptr));
  EXPECT_EQ(playlist_error_unsupported, copy.slots->option_get(nullptr, copy.context, "a", &text));
  EXPECT_EQ(playlist_error_unsupported, copy.slots->option_set(nullptr, copy.context, "a", "1"));
  {
    cell held(copy, user.get(), "moods 7002");
    read.reset();
    EXPECT_EQ(0u, held.find());
    EXPECT_EQ(texts{"other"}, held.results());
    EXPECT_EQ(0x90890006u, (collection.reset(), zvsdk_playlist_shutdown()));
  }
  // What is no context any more, or never was, is refused.
  EXPECT_TRUE(sources().empty());
  const collection_ptr other(output_of(zvsdk_playlist_collection_create, "no context"));
  for (void* context :
       std::initializer_list<void*>{copy.context, user.get(), other.get(), nullptr}) {
    EXPECT_EQ(playlist_error_invalid_arg, cell({copy.slots, context}, user.get()).created);
    EXPECT_EQ(playlist_error_invalid_arg, source({copy.slots, context}).get(s_name, &text));
  }
}

TEST_F(vibegrid, turns_filters_into_statements) {
  const std::tuple<const char*, const char*, texts> rows[] = {
      {"moods 7001 genres 7012", "ZV_MOOD == 7001 AND (ZV_GENRE == 7012 )", {"fine", "two"}},
      {"MOODS !'Coarse'", "ZV_MOOD != 'Coarse'", {"other"}},
      {"moods 7001 genres !7002 genres !7111",
       "ZV_MOOD == 7001 AND (ZV_GENRE != 7002 AND ZV_GENRE != 7111 )",
       {"fine", "two"}},
      {"genres 7002 eras 1960 origins 7002 moods 7001",
       "ZV_GENRE == 7002 AND (ZV_ERA == 1960 OR ZV_ORIGIN == 7002 OR ZV_MOOD == 7001 )",
       {"coarse"}},
      {"tempos 7001", "", {}},  // nothing is found: the statement is at fault
      {"moods 7001 x 7 genres 7002", "ZV_MOOD == 7001 AND ( OR ZV_GENRE == 7002 )", {}}};
  const std::string head =
      "8 00890000 playlist_vibegrid_statement: MOOD PDL GENERATE PLAYLIST WHERE ";
  for (const auto& [filters, where, found] : rows) {
    cell asked(main, user.get(), filters);
    log_capture log(zcsl_log_api_trace);
    EXPECT_EQ(found.empty() ? playlist_error_pdl_syntax : 0, asked.find()) << where;
    EXPECT_EQ(head + where, log.take().at(0));
    EXPECT_EQ(found, asked.results());
  }
}

TEST_F(vibegrid, refuses_what_is_missing_or_comes_too_early_or_too_late) {
  cell asked(main, user.get()), none(main, nullptr);
  const char *ident = nullptr, *name = nullptr, *moods = ZVSDK_VIBEGRID_LIST_MOODS;
  uint32_t count = 0;
  for (const zvsdk_status status :
       {none.created,
        none.find(),
        none.estimate(&count),
        none.count(&count),
        none.at(0, &ident, &name),
        none.add(moods, "7012", s_include),
        main.slots->transaction_create(nullptr, main.context, nullptr, user.get(), nullptr,
                                       nullptr),
        asked.find(),
        asked.estimate(&count),
        asked.add(nullptr, "7012", s_include),
        asked.add("", "7012", s_include),
        asked.add(moods, nullptr, s_include),
        asked.add(moods, "", s_include),
        asked.add(moods, "7012", nullptr),
        asked.add(moods, "7012", "zvsdk_vibegrid_filter_condition_INCLUDE"),
        asked.add(moods, "7012", s_include, 0),
        asked.estimate(nullptr),
        asked.count(nullptr),
        asked.at(0, nullptr, &name),
        asked.at(0, &ident, nullptr)})
    EXPECT_EQ(playlist_error_invalid_arg, status);
  EXPECT_EQ(0u, asked.add(moods, "7012", s_include, 9));
  EXPECT_EQ(playlist_error_bad_state, asked.count(&count));
  EXPECT_EQ(playlist_error_bad_state, asked.at(0, &ident, &name));
  EXPECT_EQ(0u, asked.find());
  EXPECT_EQ(playlist_error_internal, asked.find());
  EXPECT_EQ(0u, asked.at(1, &ident, &name));
  EXPECT_STREQ("main", name);
  EXPECT_EQ(playlist_warn_not_found, asked.at(2, &ident, &name));
}

TEST_F(vibegrid, tells_where_it_stands_and_stops_when_told_to) {
  std::pair<uint32_t, std::string> log;  // where to stop, and what was heard
  const auto listen = [](void* data, uint32_t status, uint32_t percent, uint32_t a, uint32_t b,
                         uint8_t* abort) {
    auto& [stop_at, heard] = *static_cast<std::pair<uint32_t, std::string>*>(data);
    heard += std::to_string(status) + ":" + std::to_string(percent + a + b) + " ";
    *abort = status == stop_at;
  };
  cell asked(main, user.get(), "moods 7002", listen, &log);
  for (const auto& [stop_at, status, heard] : {std::tuple{1u, playlist_warn_aborted, "1:0 "},
                                               {2u, playlist_error_aborted, "1:0 2:10 "},
                                               {3u, zvsdk_status{0}, "1:0 2:10 3:100 "}}) {
    log = {stop_at, ""};
    EXPECT_EQ(status, asked.find());
    EXPECT_EQ(heard, log.second);
  }
  EXPECT_EQ(texts{"other"}, asked.results());
}

TEST_F(vibegrid, estimates_a_single_mood_from_its_values) {
  const std::pair<const char*, const char*> rows[] = {
      {"moods 7111", "1"},
      {"moods 7011", "1"},  // the sub-moods alone, where there are some
      {"moods 7001", "3"},  // the direct ones; "two" has two of them
      {"moods 7012", "1"},  // a profile comes with an id, and is not counted itself
      {"moods !7002", "1"},
      {"genres 7112 moods 7111", "1"},  // other filters are not looked at,
      {"moods 7111 genres 7001", "3"},  // but the last value names the mood
      {"moods 7111 eras !1960", "0+0"},
      {"moods 7111 moods 7011", "1+1"},
      {"moods 'Fine'", "1+1"},
      {"genres 7012", "2+2"},
      {"x 7111", "#1537"}};
  for (const auto& [filters, expected] : rows) EXPECT_EQ(expected, estimate(filters)) << filters;
  add("more", "7111", "7002");
  const collection_ptr joined(deserialized(serialized(collection.get())));
  EXPECT_EQ(0u, zvsdk_playlist_collection_update_name(joined.get(), "joined"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_join(collection.get(), joined.get()));
  EXPECT_EQ("2", estimate("moods 7111"));
  EXPECT_EQ("4+4", estimate("moods 'Fine'"));
  EXPECT_EQ(0u, zvsdk_playlist_collection_ident_remove(collection.get(), "more"));
  EXPECT_EQ("1", estimate("moods 7111"));
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ("#723", estimate("moods 7111")) << "moods need their list";
  EXPECT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "eng", nullptr, nullptr));
}

TEST_F(vibegrid, loses_nothing_when_memory_runs_out) {
  const std::string bytes = serialized(collection.get());
  const uint64_t refusals = memory.for_each_failure([&] {
    const collection_ptr made(deserialized(bytes));
    const std::vector<source> all = sources();
    if (all.size() < 2) return;  // there, but not offered
    {
      cell asked(all[1], user.get(), "moods 7111");
      uint32_t count = 1;
      const zvsdk_status status = asked.created != 0 ? asked.created : asked.estimate(&count);
      EXPECT_EQ(1u, count);
      EXPECT_GE(2u, zvsdk_low_word(status)) << "no memory, or the filter was dropped";
    }
    memory.restore();
    cell again(all[1], user.get(), "moods 7111");
    EXPECT_EQ(1u, output_of(again.slots.transaction_find_estimate, again.transaction));
    EXPECT_EQ(0u, again.find());
    EXPECT_EQ(texts{"fine"}, again.results());
  });
  EXPECT_GT(refusals, 20u) << "they must reach the statement";
}

TEST_F(vibegrid, answers_threads_beside_changes_and_releases) {
  const auto repeat = [](auto body) {
    return std::jthread([body] {
      for (int i = 0; i < 100; ++i) body(i);
    });
  };
  const auto ask = [this](int) { EXPECT_NE('#', estimate("moods 7111")[0]); };
  const auto walk = [this](int) {
    const char* name = nullptr;
    for (const source& each : sources()) {
      const cell asked(each, user.get());
      EXPECT_TRUE(asked.created == 0 || asked.created == playlist_error_invalid_arg);
      each.get(s_name, &name);
    }
  };
  {
    const std::jthread threads[] = {
        repeat(ask), repeat(ask), repeat(walk),
        repeat([this](int i) { add(numbered_ident(i).c_str(), "7111", "7002"); }),
        repeat([](int) { collection_ptr(output_of(zvsdk_playlist_collection_create, "guest")); })};
  }
  EXPECT_EQ("101", estimate("moods 7111"));
}

}  // namespace
