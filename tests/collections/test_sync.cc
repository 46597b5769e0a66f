// Sync: what a pass tells of the announced and the held, and what may happen meanwhile.
#include <algorithm>
#include <functional>
#include <random>

#include "tests/collections/collection_fixture.h"

namespace {

// Idents are single letters; "-a+b" tells that a is to be removed, and then b to be added.
class sync : public collection_test {
 protected:
  using ident_call = zvsdk_status (*)(playlist_collection*, const char*);
  void for_each(const std::string& idents, ident_call call) {
    for (const char ident : idents) EXPECT_EQ(0u, call(collection, std::string{ident}.c_str()));
  }
  void announce(const std::string& idents) {
    for_each(idents, zvsdk_playlist_collection_sync_ident_add);
  }
  void hold(const std::string& idents) { for_each(idents, zvsdk_playlist_collection_add_ident); }
  void start_over(const std::string& held) {
    EXPECT_EQ(0u, zvsdk_playlist_collection_release(collection));
    collection = output_of(zvsdk_playlist_collection_create, "again");
    hold(held);
  }
  void pass(const std::string& expected, zvsdk_status status = 0) {
    told.clear();
    EXPECT_EQ(status, zvsdk_playlist_collection_sync_process(collection, on_difference, this));
    EXPECT_EQ(expected, told);
  }
  // The ident is read after all that `meanwhile` does.
  static zvsdk_status on_difference(void* self, playlist_collection* of, const char* ident,
                                    uint32_t status, uint8_t* abort) {
    sync& test = *static_cast<sync*>(self);
    EXPECT_EQ(test.collection, of);
    if (test.meanwhile) test.meanwhile(ident, status);
    test.told += (status == 10 ? "+" : status == 11 ? "-" : "?") + std::string(ident);
    EXPECT_EQ(0, std::exchange(*abort, test.told == test.last));
    return playlist_error_internal;  // nobody looks at it
  }

  std::function<void(const char* ident, uint32_t status)> meanwhile;
  std::string told, last = "none";  // the callback stops the pass when it has told `last`
};

TEST_F(sync, tells_the_difference_once) {
  const struct {
    std::string held, announced, told;
    bool stopped = false;  // by the callback, when it has told that
    zvsdk_status status = 0;
  } rows[] = {{"", "ba", "+b+a", true},
              {"cab", "abc", ""},
              {"cab", "dad", "-c-b+d"},
              {"ab", "bbabb", "-b-b-b", true, playlist_warn_aborted},
              {"abc", "d", "-a-b-c+d"},
              {"abc", "d", "-a-b-c", true, playlist_warn_aborted},
              {"abc", "d", "-a", true, playlist_warn_aborted},
              {"a", "bc", "-a+b", true}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.held + " and " + row.announced);
    start_over(row.held);
    announce(row.announced);
    last = row.stopped ? row.told : "none";
    pass(row.told, row.status);
    pass("", playlist_error_bad_state);
    EXPECT_EQ(playlist_error_invalid_arg, last_error().mapped);
  }
  announce("x");  // what is never asked for goes with the collection
}

TEST_F(sync, lets_callbacks_change_what_is_synced) {
  hold("abc");
  announce("cde");
  meanwhile = [this](const char* ident, uint32_t status) {
    for_each(ident, status == playlist_sync_status_add ? zvsdk_playlist_collection_add_ident
                                                       : zvsdk_playlist_collection_ident_remove);
    EXPECT_EQ(playlist_error_bad_state,
              zvsdk_playlist_collection_sync_process(collection, on_difference, this));
  };
  pass("-a-b+d+e");
  EXPECT_EQ((texts{"c", "d", "e"}), idents());
  announce("cd");
  meanwhile = [this](const char*, uint32_t) { announce("cex"); };
  pass("-e");
  meanwhile = nullptr;
  pass("-d+x");
}

TEST_F(sync, goes_on_when_a_callback_releases_the_collection) {
  hold("ab");
  announce("c");
  meanwhile = [this](const char* ident, uint32_t) {
    if (*ident == 'a') zvsdk_playlist_collection_release(collection);
  };
  pass("-a-b+c");
  EXPECT_EQ(playlist_error_invalid_arg, zvsdk_playlist_collection_release(collection)) << "gone";
  collection = output_of(zvsdk_playlist_collection_create, "again");
}

TEST_F(sync, ends_where_an_ident_has_gone) {
  hold("abc");
  announce("a");
  for_each("a", zvsdk_playlist_collection_ident_remove);
  pass("", playlist_warn_not_found);
  announce("d");
  meanwhile = [this](const char*, uint32_t) {
    for_each("c", zvsdk_playlist_collection_ident_remove);
  };
  pass("-b", playlist_warn_not_found);
}

// A held ident is told once when nobody has announced it, and once for each further announcement.
TEST_F(sync, tells_of_any_announcements_in_the_order_of_what_is_held) {
  std::mt19937 random(7);
  std::string all, order, announced;
  for (char ident = '0'; ident <= 'z'; ++ident) all += ident;
  for (uint32_t round = 0; round < 300; ++round) {
    SCOPED_TRACE(round);
    std::shuffle(all.begin(), all.end(), random);
    start_over(order = all);
    std::shuffle(all.begin(), all.end(), random);
    const size_t kept = random() % all.size();
    for_each(all.substr(kept), zvsdk_playlist_collection_ident_remove);
    std::erase_if(order, [&](char ident) { return all.find(ident) >= kept; });
    announced = "!";
    for (const char ident : order) announced.append(random() % 3, ident);
    std::shuffle(announced.begin(), announced.end(), random);
    announce(announced);
    std::string expected;
    for (const char ident : order) {
      const auto times = std::ranges::count(announced, ident);
      for (auto left = times != 0 ? times - 1 : 1; left > 0; --left) expected += {'-', ident};
    }
    pass(expected + "+!");
  }
}

}  // namespace
