// Collections as sources of a grid, through the tables and contexts that the host hands out.
#include <deque>
#include <sstream>
#include <thread>

#include "tests/attributes/attribute_fixture.h"
#include "tests/common/use_collection.h"
#include "zvsdk_vibegrid.h"

namespace {

constexpr char s_name[] = ZVSDK_VIBEGRID_PROVIDER_NAME, s_moods[] = ZVSDK_VIBEGRID_LIST_MOODS;
constexpr char s_include[] = ZVSDK_VIBEGRID_INCLUDE;

using statuses = std::vector<zvsdk_status>;
template <class... Each>
statuses all(Each... each) {
  return {each...};
}

using source_table = zvsdk_vibegrid_datasource_provider;
struct source {
  const source_table* slots = nullptr;
  void* context = nullptr;
};

// The sources that are registered now, in their order.
std::vector<source> sources() {
  std::vector<source> all;
  const void* table = nullptr;
  void* context = nullptr;
  while (zvsdk_manager_provider_get(ZVSDK_VIBEGRID_INTERFACE, static_cast<uint32_t>(all.size()),
                                    &table, &context) == 0)
    all.push_back({static_cast<const source_table*>(table), context});
  return all;
}

// A transaction with filters given as "moods 7001; genres !7002".
struct cell {
  cell(const source& from, zvsdk_user* user, const std::string& filters = "",
       zvsdk_vibegrid_status_callback callback = nullptr, void* data = nullptr)
      : slots(*from.slots) {
    created = slots.transaction_create(nullptr, from.context, &transaction, user, callback, data);
    std::istringstream in(filters);
    for (std::string list, value; created == 0 && in >> list && getline(in >> std::ws, value, ';');)
      EXPECT_EQ(0u, add(kept.emplace_back("zvsdk_list_type_" + list).c_str(),
                        kept.emplace_back(value.substr(value[0] == '!')).c_str(),
                        value[0] == '!' ? ZVSDK_VIBEGRID_EXCLUDE : s_include));
  }
  ~cell() { EXPECT_EQ(0u, slots.transaction_release(transaction)); }

  zvsdk_status add(const char* list, const char* value, const char* condition, uint32_t flag = 1) {
    return slots.transaction_filter_create(transaction, list, value, condition, flag);
  }
  zvsdk_status find() { return slots.transaction_find(transaction); }
  zvsdk_status count(uint32_t* out) { return slots.transaction_result_count(transaction, out); }
  zvsdk_status estimate(uint32_t* out) { return slots.transaction_find_estimate(transaction, out); }
  zvsdk_status at(uint32_t index, const char** ident, const char** name) {
    return slots.transaction_result_enum(transaction, index, ident, name);
  }
  texts results() {
    const char* name = nullptr;
    return listed([&](uint32_t i, const char** ident) { return at(i, ident, &name); });
  }

  const source_table& slots;
  std::deque<std::string> kept;
  zvsdk_vibegrid_transaction* transaction = nullptr;
  zvsdk_status created;
};

class vibegrid : public small_lists_test {
 protected:
  void SetUp() override {
    small_lists_test::SetUp();
    collection.reset(output_of(zvsdk_playlist_collection_create, "main"));
    std::istringstream tracks(
        "coarse 7001 7002 middle 7011 7111 two 7011 7012 two 7012 7012 fine 7111 7012 "
        "other 7002 7112 profile 7121:60,7002:40 7111");
    for (std::string ident, mood, genre; tracks >> ident >> mood >> genre;) add(ident, mood, genre);
    main = sources().at(0);
  }
  void TearDown() override {
    collection.reset();
    EXPECT_TRUE(sources().empty());
    small_lists_test::TearDown();
  }
  void add(const std::string& ident, const std::string& mood, const std::string& genre) {
    const zdo_ptr track =
        make_track(ident.c_str(), {.artists = {}, .genre = genre.c_str(), .mood = mood.c_str()});
    EXPECT_EQ(0u, zvsdk_playlist_collection_add_zdo(collection.get(), ident.c_str(), track.get()));
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
  const auto datum = [&](void* context, const char* key) {
    const char* text = nullptr;
    const zvsdk_status status = copy.slots->data_get(nullptr, context, key, &text);
    return (status == 0 ? text : std::to_string(zvsdk_low_word(status))) + " ";
  };
  std::string told;
  for (const char* key :
       {s_name, ZVSDK_VIBEGRID_PROVIDER_TYPE, ZVSDK_VIBEGRID_PROVIDER_NETWORK_USE, "zvsdk", ""})
    told += datum(copy.context, key);
  EXPECT_EQ("copy zvsdk_playlist FALSE 1 1 ", told);
  EXPECT_EQ(0u, copy.slots->capabilities(nullptr, copy.context));
  EXPECT_EQ(statuses(3, playlist_error_unsupported),
            all(copy.slots->zdo_get(nullptr, copy.context, "two", nullptr),
                copy.slots->option_get(nullptr, copy.context, "a", nullptr),
                copy.slots->option_set(nullptr, copy.context, "a", "1")));
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
  for (void* context : std::vector<void*>{copy.context, user.get(), other.get(), nullptr}) {
    EXPECT_EQ(playlist_error_invalid_arg, cell({copy.slots, context}, user.get()).created);
    EXPECT_EQ("1 ", datum(context, s_name));
  }
}

// A value becomes part of the statement, whatever it is.
TEST_F(vibegrid, turns_filters_into_statements) {
  std::vector<std::pair<std::string, std::string>> rows = {
      {"moods 7001;genres 7012", "ZV_MOOD == 7001 AND (ZV_GENRE == 7012 )"},
      {"MOODS !'Coarse'", "ZV_MOOD != 'Coarse'"},
      {"moods 7001;genres !7002;genres !7111",
       "ZV_MOOD == 7001 AND (ZV_GENRE != 7002 AND ZV_GENRE != 7111 )"},
      {"genres 7002;eras 1960;origins 7002;moods 7001",
       "ZV_GENRE == 7002 AND (ZV_ERA == 1960 OR ZV_ORIGIN == 7002 OR ZV_MOOD == 7001 )"},
      {"tempos 7001", ""},
      {"moods 7001;x 7;genres 7002", "ZV_MOOD == 7001 AND ( OR ZV_GENRE == 7002 )"}};
  for (const std::string& value :
       texts{"7001 LIMIT 1 RESULTS", "7001 OR ZV_GENRE == 7112", "SEED", "'", "-1", "99999999999",
             "%s%n", "'\xff'", std::string(5000, '(')})
    rows.emplace_back("moods " + value, "ZV_MOOD == " + value);
  std::string found;
  for (const auto& [filters, where] : rows) {
    cell asked(main, user.get(), filters);
    log_capture log(zcsl_log_api_trace);
    const zvsdk_status status = asked.find();
    EXPECT_EQ("8 00890000 playlist_vibegrid_statement: MOOD PDL GENERATE PLAYLIST WHERE " + where,
              log.take().at(0));
    found += (status != 0 ? "#" + std::to_string(zvsdk_low_word(status))
                          : std::to_string(asked.results().size())) +
             " ";
  }
  EXPECT_EQ("2 1 2 1 #1537 #1537 1 6 #1536 #1537 0 0 #1537 #11 #1537 ", found);
}

TEST_F(vibegrid, refuses_what_is_missing_or_comes_too_early_or_too_late) {
  cell asked(main, user.get()), none(main, nullptr);
  const char *ident = nullptr, *name = nullptr, *wrong = "zvsdk_vibegrid_filter_condition_INCLUDE";
  uint32_t count = 0;
  for (const char* missing : {"", static_cast<const char*>(nullptr)})
    EXPECT_EQ(statuses(3, playlist_error_invalid_arg),
              all(asked.add(missing, "1", s_include), asked.add(s_moods, missing, s_include),
                  asked.add(s_moods, "1", missing)));
  EXPECT_EQ(statuses(16, playlist_error_invalid_arg),
            all(none.created, none.find(), none.estimate(&count), none.count(&count),
                none.at(0, &ident, &name), none.add(s_moods, "1", s_include), asked.find(),
                asked.estimate(&count), asked.add(s_moods, "1", wrong),
                asked.add(s_moods, "1", s_include, 0), asked.estimate(nullptr),
                asked.count(nullptr), asked.at(0, nullptr, &name), asked.at(0, &ident, nullptr),
                main.slots->transaction_create(nullptr, main.context, nullptr, user.get(), nullptr,
                                               nullptr),
                main.slots->data_get(nullptr, main.context, s_name, nullptr)));
  EXPECT_EQ(0u, asked.add(s_moods, "7012", s_include, 9));
  EXPECT_EQ(statuses(2, playlist_error_bad_state),
            all(asked.count(&count), asked.at(0, &ident, &name)));
  EXPECT_EQ(0u, asked.find());
  EXPECT_EQ(playlist_error_internal, asked.find());
  EXPECT_EQ(0u, asked.at(1, &ident, &name));
  EXPECT_STREQ("main", name);
}

TEST_F(vibegrid, tells_where_it_stands_and_stops_when_told_to) {
  std::pair<uint32_t, std::string> log;  // where to stop, and what was heard
  const auto listen = [](void* data, uint32_t status, uint32_t percent, uint32_t a, uint32_t b,
                         uint8_t* abort) {
    auto& [stop_at, heard] = *static_cast<decltype(log)*>(data);
    heard += std::to_string(status) + ":" + std::to_string(percent + a + b) + " ";
    *abort = status == stop_at;
  };
  cell asked(main, user.get(), "moods 7002", listen, &log);
  for (const zvsdk_status status :
       {playlist_warn_aborted, playlist_error_aborted, zvsdk_status{0}}) {
    ++log.first;
    EXPECT_EQ(status, asked.find());
  }
  EXPECT_EQ("1:0 1:0 2:10 1:0 2:10 3:100 ", log.second);
  EXPECT_EQ(texts{"other"}, asked.results());
}

TEST_F(vibegrid, estimates_a_single_mood_from_its_values) {
  // Of 7011 and 7001 the direct sub-moods alone; "two" has two of them. A profile comes with an id,
  // 7012 for one, and is not counted itself. Of other filters only the last value counts.
  std::string told;
  for (const char* filters :
       {"moods 7111", "moods 7011", "moods 7001", "moods 7012", "moods !7002",
        "genres 7112;moods 7111", "moods 7111;genres 7001", "moods 7111;eras !1960",
        "moods 7111;moods 7011", "moods 'Fine'", "genres 7012", "x 7111"})
    told += estimate(filters) + " ";
  EXPECT_EQ("1 1 3 1 1 1 3 0+0 1+1 1+1 2+2 #1537 ", told);
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
    cell asked(all[1], user.get(), "moods 7111");
    uint32_t count = 1;
    const zvsdk_status status = asked.created != 0 ? asked.created : asked.estimate(&count);
    EXPECT_TRUE(status != 0 || count == 1);
    if (status != 0 && status != playlist_error_invalid_arg) {  // a filter was dropped
      EXPECT_EQ(playlist_error_no_memory, status);
    }
    memory.restore();
    EXPECT_EQ(0u, cell(all[1], user.get(), "moods 7111").estimate(&count));
    EXPECT_EQ(1u, count);
  });
  EXPECT_GT(refusals, 20u) << "they must reach the statement";
}

TEST_F(vibegrid, answers_threads_beside_changes_and_releases) {
  const auto repeat = [](auto body) {
    return std::jthread([body] {
      for (int i = 0; i < 100; ++i) body(i);
    });
  };
  const auto ask = [this](int i) {
    EXPECT_NE('#', estimate(i % 2 ? "moods 7111" : "moods 'Fine'")[0]);
  };
  const auto walk = [this](int) {
    const char* name = nullptr;
    for (const source& each : sources()) {
      const cell asked(each, user.get());
      EXPECT_TRUE(asked.created == 0 || asked.created == playlist_error_invalid_arg);
      each.slots->data_get(nullptr, each.context, s_name, &name);
    }
  };
  const auto visit = [this](int) {
    const collection_ptr guest(output_of(zvsdk_playlist_collection_create, "guest"));
    EXPECT_EQ(0u, zvsdk_playlist_collection_join(collection.get(), guest.get()));
    EXPECT_EQ(0u, zvsdk_playlist_collection_join_remove(collection.get(), "guest"));
  };
  {
    const std::jthread threads[] = {
        repeat(ask), repeat(ask), repeat(walk), repeat(visit),
        repeat([this](int i) { add(numbered_ident(i), "7111", "7002"); })};
  }
  EXPECT_EQ("101", estimate("moods 7111"));
}

// The host stops the module when it ends itself, also under a transaction.
TEST(vibegrid_without_host, releases_what_outlived_the_module) {
  zvsdk_sdkmanager* manager = output_of(zvsdk_manager_create, nullptr);
  EXPECT_EQ(0u, zvsdk_playlist_initialize(manager));
  playlist_collection* collection = output_of(zvsdk_playlist_collection_create, "main");
  user_ptr user(output_of(zvsdk_manager_user_create, "someone"));
  const source_table table = *sources().at(0).slots;  // the host's own ends with it
  const source main = {&table, sources().at(0).context};
  cell held(main, user.get(), "moods 7001");
  zvsdk_user* const gone = user.get();
  user.reset();
  EXPECT_EQ(0u, zvsdk_manager_release(manager));
  uint32_t count = 0;
  EXPECT_EQ(statuses(3, playlist_error_not_initialized),
            all(held.find(), held.estimate(&count), cell(main, gone).created));
  // Whoever stops so has lost what had handles.
  EXPECT_EQ(0u, playlist_collection_delete(collection));
  zcsl_memory_free(main.context);
}

}  // namespace
