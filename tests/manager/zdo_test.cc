// Data objects: trees built by calls, from JSON and from track descriptions, and served ones.

#include <cstring>
#include <thread>

#include "tests/manager/host_fixture.h"

namespace {

/* A handle that gives itself back. */
class object {
 public:
  explicit object(zvsdk_zdo* handle) : m_handle(handle) {}
  object(object&& from) noexcept : m_handle(std::exchange(from.m_handle, nullptr)) {}
  ~object() {
    if (m_handle != nullptr) {
      EXPECT_EQ(0u, zvsdk_manager_zdo_release(m_handle));
    }
  }
  operator zvsdk_zdo*() const { return m_handle; }
  void swap(object& other) { std::swap(m_handle, other.m_handle); }

 private:
  zvsdk_zdo* m_handle;
};

object make(const char* context) {
  zvsdk_zdo* made = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_zdo_create(context, &made));
  return object(made);
}

class zdo_test : public host_test {
 protected:
  object child(zvsdk_zdo* of, const char* key, uint32_t ordinal = 1) {
    zvsdk_zdo* found = nullptr;
    const zvsdk_status status = host.objects->zdo_child_get(of, key, ordinal, nullptr, &found);
    EXPECT_EQ(found != nullptr ? 0u : 3u, low_word(status)) << key;
    return object(found);
  }
  std::string value(zvsdk_zdo* of, const char* key, uint32_t ordinal = 1) {
    const char* text = nullptr;
    const zvsdk_status status = host.objects->zdo_value_get(of, key, ordinal, &text);
    EXPECT_EQ(text != nullptr ? 0u : 3u, low_word(status)) << key;
    return text != nullptr ? text : "(none)";
  }
  std::string context(zvsdk_zdo* of) {
    const char* text = nullptr;
    EXPECT_EQ(0u, host.objects->zdo_get_type(of, &text));
    return text;
  }
  /* Follows children by key from an object and reads a value at the end. */
  std::string walk(zvsdk_zdo* from, std::vector<const char*> path, const char* key) {
    object at = child(from, path.front());
    if (at == nullptr) return "(none)";
    path.erase(path.begin());
    return path.empty() ? value(at, key) : walk(at, path, key);
  }
};

TEST_F(zdo_test, values_and_children_keep_their_order_under_each_key) {
  const object root = make("zvsdk_ctx_album");
  std::vector<std::string> texts;
  for (int i = 0; i < 300; ++i) {
    texts.push_back("text " + std::to_string(i * i));
    const std::string key = "key " + std::to_string(i % 7);
    ASSERT_EQ(0u, zvsdk_manager_zdo_value_add(root, key.c_str(), texts.back().c_str()));
    const object added = make(texts.back().c_str());
    ASSERT_EQ(0u, zvsdk_manager_zdo_child_add(root, key.c_str(), added));
  }
  for (uint32_t i = 0; i < 300; ++i) {
    const std::string key = "key " + std::to_string(i % 7);
    EXPECT_EQ(texts[i], value(root, key.c_str(), i / 7 + 1));
    EXPECT_EQ(texts[i], context(child(root, key.c_str(), i / 7 + 1)));
  }
  uint32_t count = 0;
  EXPECT_EQ(0u, zvsdk_manager_zdo_value_count(root, "key 5", &count));
  EXPECT_EQ(43u, count);
  EXPECT_EQ(0u, zvsdk_manager_zdo_child_count(root, "key 6", &count));
  EXPECT_EQ(42u, count);
  EXPECT_EQ(0u, zvsdk_manager_zdo_child_count(root, "other", &count));
  EXPECT_EQ(0u, count);
  EXPECT_EQ("(none)", value(root, "key 6", 43));
  const char* text = nullptr;
  EXPECT_EQ(1u, low_word(host.objects->zdo_value_get(root, "key 6", 0, &text)));
  EXPECT_EQ(1u, low_word(host.objects->zdo_value_get(root, nullptr, 1, &text)));
  EXPECT_EQ(1u, low_word(host.objects->zdo_value_get(root, "key 6", 1, nullptr)));
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_value_add(root, "", "x")));
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_create("", nullptr)));
}

TEST_F(zdo_test, a_child_lives_as_long_as_its_parent_or_its_own_handle) {
  zvsdk_zdo* inner = nullptr;
  {
    const object root = make("root");
    {
      const object leaf = make("leaf");
      ASSERT_EQ(0u, zvsdk_manager_zdo_child_add(root, "k", leaf));
      inner = leaf;
    }
    EXPECT_NE(0u, host.handles->handle_validate_zdo(inner)) << "the handle was given back";
    EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_release(inner)));
    ASSERT_EQ(0u, host.objects->zdo_child_get(root, "k", 1, nullptr, &inner));
    ASSERT_EQ(0u, host.objects->zdo_addref(inner));
  }
  EXPECT_EQ(0u, host.objects->zdo_release(inner));
  EXPECT_EQ("leaf", context(inner)) << "held by its own handle";
  EXPECT_EQ(0u, host.objects->zdo_release(inner));
  EXPECT_NE(0u, host.handles->handle_validate_zdo(inner));
}

TEST_F(zdo_test, circles_are_refused) {
  const object a = make("a");
  const object b = make("b");
  const object c = make("c");
  EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(a, "k", b));
  EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(b, "k", c));
  EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(a, "k", c)) << "two ways are no circle";
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_child_add(c, "k", a)));
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_child_add(b, "k", a)));
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_child_add(c, "k", c)));
  EXPECT_STRNE("", last_error().message);
  EXPECT_EQ("(none)", walk(c, {"k"}, "v"));
}

TEST_F(zdo_test, a_chain_of_any_length_is_built_and_freed) {
  object top = make("link");
  for (int i = 0; i < 200000; ++i) {
    object above = make("link");
    ASSERT_EQ(0u, zvsdk_manager_zdo_child_add(above, "next", top));
    top.swap(above);
  }
  EXPECT_EQ("link", context(child(child(top, "next"), "next")));
}

TEST_F(zdo_test, a_json_document_becomes_a_tree) {
  zvsdk_zdo* made = nullptr;
  ASSERT_EQ(
      0u, zvsdk_manager_zdo_from_json(
              R"({"context": "zvsdk_ctx_album", "values": {"zvsdk_val_year": 1999, "m": ["a", "b"]},
      "children": {"zvsdk_ctx_title!off": {"context": "zvsdk_ctx_title",
                                           "values": {"zvsdk_val_display": "Gr\u00fcn \"1\""}},
                   "zvsdk_ctx_track!matching": [{"context": "t", "values": {"zvsdk_val_ident": "1"}},
                                                {"context": "t", "values": {"zvsdk_val_ident": "2"}}]}})",
              &made));
  const object album(made);
  EXPECT_EQ("zvsdk_ctx_album", context(album));
  EXPECT_EQ("1999", value(album, "zvsdk_val_year"));
  EXPECT_EQ("b", value(album, "m", 2));
  EXPECT_EQ("Grün \"1\"", walk(album, {"zvsdk_ctx_title!off"}, "zvsdk_val_display"));
  EXPECT_EQ("2", value(child(album, "zvsdk_ctx_track!matching", 2), "zvsdk_val_ident"));
}

TEST_F(zdo_test, a_bad_json_document_is_refused_with_a_message) {
  std::string deep = "{}";
  for (int i = 0; i < 60; ++i) deep = R"({"context": "c", "children": {"k": )" + deep + "}}";
  struct {
    std::string json, message;
  } const cases[] = {
      {"[]", "document: an object was expected"},
      {"{\"context\"", "line 1"},
      {R"({"context": "c"} x)", "line 1"},
      {"{}", "\"context\" must be a text"},
      {R"({"context": ""})", "\"context\" must be a text"},
      {R"({"context": "c", "value": {}})", "\"value\" is not known here"},
      {R"({"context": "c", "values": []})", "document.values: an object was expected"},
      {R"({"context": "c", "values": {"": "x"}})", "a key is empty"},
      {R"({"context": "c", "values": {"k": [true]}})", "document.values.k: a text was expected"},
      {R"({"context": "c", "values": {"k": "1", "k": "2"}})", "given twice"},
      {R"({"context": "c", "children": {"k": [{"context": "d"}, {"context": 4}]}})",
       "document.children.k: \"context\""},
      {"{\"context\": \"c\xFF\"}", "UTF-8"},
      {R"({"context": "c", "values": {"a\u0000x": "1"}})", "U+0000"},
      {R"({"context": "c\u0000"})", "U+0000"},
      {deep, "deep"},
      {std::string(1000000, '['), "deep"},
  };
  for (const auto& each : cases) {
    zvsdk_zdo* made = nullptr;
    EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_zdo_from_json(each.json.c_str(), &made)));
    EXPECT_NE(std::string::npos, std::string(last_error().message).find(each.message))
        << last_error().message;
    EXPECT_EQ(nullptr, made);
  }
}

/* The name walk of a track: artist, members of the contributor, contributor. */
TEST_F(zdo_test, a_track_description_expands_to_the_full_tree) {
  std::vector<const char*> artists = {"Ed", "Khalid", nullptr, "Fred"};
  std::vector<std::string> many;
  for (int i = 0; i < 150; ++i) many.push_back("Member " + std::to_string(i));
  zvsdk_track_description track = {};
  track.size = sizeof track;
  track.ident = "id 7";
  track.title = "Beautiful";
  track.album = "No. 6";
  track.year = 2019;
  track.genre = "42";
  track.tempo = 122;
  track.origin = "no such origin";
  track.artist_type = "3";
  track.mood_profile = "1:100";
  for (const bool crowd : {false, true}) {
    for (const std::string& name : many) {
      if (crowd) artists.push_back(name.c_str());
    }
    track.artists = artists.data();
    track.artist_count = static_cast<uint32_t>(artists.size());
    zvsdk_zdo* made = nullptr;
    ASSERT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &made));
    const object tree(made);
    EXPECT_EQ("zvsdk_ctx_track", context(tree));
    EXPECT_EQ("id 7", value(tree, "zvsdk_val_ident"));
    EXPECT_EQ("122", value(tree, "_sdkmgr_val_list_tempo_value"));
    EXPECT_EQ("2019", value(tree, "zvsdk_val_year"));
    EXPECT_EQ("42", value(tree, "_sdkmgr_val_list_genre_id"));
    EXPECT_EQ("1:100", value(tree, "_sdkmgr_val_list_mood_data"));
    EXPECT_EQ("Beautiful", walk(tree, {"zvsdk_ctx_title!off"}, "zvsdk_val_display"));
    EXPECT_EQ("No. 6",
              walk(tree, {"zvsdk_ctx_album!", "zvsdk_ctx_title!off"}, "zvsdk_val_display"));
    EXPECT_EQ("Ed", walk(tree, {"zvsdk_ctx_artist!", "zvsdk_ctx_name!off"}, "zvsdk_val_display"));
    const object contributor = child(child(tree, "zvsdk_ctx_artist!"), "zvsdk_ctx_contributor!");
    EXPECT_EQ("zvsdk_ctx_contributor", context(contributor));
    EXPECT_EQ("Ed", walk(contributor, {"zvsdk_ctx_name!off"}, "zvsdk_val_display"));
    EXPECT_EQ("3", value(contributor, "_sdkmgr_val_list_artist_type_id"));
    EXPECT_EQ("(none)", value(contributor, "_sdkmgr_val_list_origin_id"));
    for (uint32_t member = 1; member <= (crowd ? 152 : 2); ++member) {
      const object nested = child(contributor, "zvsdk_ctx_contributor!", member);
      const std::string name = walk(nested, {"zvsdk_ctx_name!off"}, "zvsdk_val_display");
      EXPECT_EQ(member == 1 ? "Khalid" : member == 2 ? "Fred" : many[member - 3], name);
    }
  }
}

TEST_F(zdo_test, what_a_track_description_lacks_is_absent) {
  zvsdk_track_description track = {};
  track.size = sizeof track;
  track.title = "";
  zvsdk_zdo* made = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &made));
  const object tree(made);
  for (const char* key : {"zvsdk_val_ident", "_sdkmgr_val_list_tempo_value", "zvsdk_val_year"})
    EXPECT_EQ("(none)", value(tree, key));
  for (const char* key : {"zvsdk_ctx_title!off", "zvsdk_ctx_album!", "zvsdk_ctx_artist!"})
    EXPECT_EQ(nullptr, static_cast<zvsdk_zdo*>(child(tree, key)));
  track.artist_count = 1;
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_from_track(&track, &made)));
  track.size = 2;
  EXPECT_EQ(1u, low_word(zvsdk_manager_zdo_from_track(&track, &made)));
  // A caller of an older version knew no field behind `ident`.
  track.size = offsetof(zvsdk_track_description, title);
  track.ident = "old";
  ASSERT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &made));
  EXPECT_EQ("old", value(object(made), "zvsdk_val_ident"));
}

/* Parts of one tree stay while any part is held, and threads may hold and drop them at once. */
TEST_F(zdo_test, parts_of_a_tree_are_held_by_several_threads) {
  const char* const artist = "A";
  zvsdk_track_description track = {};
  track.size = sizeof track;
  track.artists = &artist;
  track.artist_count = 1;
  for (int round = 0; round < 200; ++round) {
    zvsdk_zdo* tree = nullptr;
    ASSERT_EQ(0u, zvsdk_manager_zdo_from_track(&track, &tree));
    std::vector<std::thread> threads;
    for (int i = 0; i < 3; ++i) {
      ASSERT_EQ(0u, host.objects->zdo_addref(tree));
      threads.emplace_back([&, own = object(tree)]() mutable {
        object name =
            child(child(object(std::move(own)), "zvsdk_ctx_artist!"), "zvsdk_ctx_name!off");
        EXPECT_EQ("A", value(name, "zvsdk_val_display"));
      });
    }
    EXPECT_EQ(0u, zvsdk_manager_zdo_release(tree));
    for (std::thread& each : threads) each.join();
  }
}

/* A provider whose object has the values 1..3 under "v" and itself as the only child. */
struct served {
  int released = 0;
  zvsdk_locale* locale = nullptr;

  static served& of(void* data) { return *static_cast<served*>(data); }
  static zvsdk_status number(void*, const char*, uint32_t ordinal, const char** text) {
    static const char* const texts[] = {"1", "2", "3"};
    if (ordinal > 3) return 0x10AA0003;
    *text = texts[ordinal - 1];
    return 0;
  }
  zvsdk_zdo_provider table = {
      .reserved1 = nullptr,
      .get_context = [](void*, const char** text) -> zvsdk_status { return *text = "served", 0; },
      .get_child_count = [](void*, const char*, uint32_t* count) -> zvsdk_status {
        return *count = 1, 0;
      },
      .get_child = [](void* data, const char*, uint32_t ordinal, void** child) -> zvsdk_status {
        *child = data;
        return ordinal == 1 ? 0 : 0x10AA0003;
      },
      .get_value_count = [](void*, const char*, uint32_t* count) -> zvsdk_status {
        return *count = 3, 0;
      },
      .get_value = number,
      .reserved2 = nullptr,
      .render_value =
          [](void* data, uint32_t index, const char** key, const char** text) {
            *key = "v";
            return number(data, *key, index + 1, text);
          },
      .set_locale = [](void* data, zvsdk_locale* given) -> zvsdk_status {
        return of(data).locale = given, 0;
      },
      .get_locale = nullptr,
      .release = [](void* data) -> zvsdk_status { return ++of(data).released, 0; },
  };
};

TEST_F(zdo_test, a_provider_serves_an_object_through_every_call) {
  served provider;
  zvsdk_user* user = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_user_create("u", &user));
  zvsdk_zdo* made = nullptr;
  ASSERT_EQ(0u, host.objects->zdo_create(host.client, &provider, &provider.table, user,
                                         ZVSDK_LOCALE_MUSIC, nullptr, nullptr, &made));
  EXPECT_EQ(0u, zvsdk_manager_user_release(user));
  EXPECT_EQ(0u, host.handles->handle_validate_user(user)) << "the object holds the user";
  EXPECT_EQ(6u, low_word(host.manager->client_release(host.client)));
  {
    const object root(made);
    EXPECT_EQ("served", context(root));
    EXPECT_EQ("2", value(root, "v", 2));
    EXPECT_EQ("(none)", value(root, "v", 4));
    EXPECT_EQ("3", value(child(root, "k"), "v", 3));
    EXPECT_EQ(1, provider.released);
    EXPECT_EQ(nullptr, static_cast<zvsdk_zdo*>(child(root, "k", 2)));
    uint32_t count = 0;
    EXPECT_EQ(0u, zvsdk_manager_zdo_value_count(root, "v", &count));
    EXPECT_EQ(3u, count);
    EXPECT_EQ(0u, zvsdk_manager_zdo_child_count(root, "v", &count));
    EXPECT_EQ(1u, count);
    const char *key = nullptr, *text = nullptr;
    EXPECT_EQ(0u, zvsdk_manager_zdo_render(root, 1, &key, &text));
    EXPECT_EQ("v2", std::string(key) + text);
    EXPECT_EQ(3u, low_word(zvsdk_manager_zdo_render(root, 3, &key, &text)));
    EXPECT_EQ(0x2D3u, low_word(zvsdk_manager_zdo_locale_set(root, ZVSDK_LOCALE_MUSIC)));
    ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
    EXPECT_EQ(0u, zvsdk_manager_zdo_locale_set(root, ZVSDK_LOCALE_MUSIC));
    EXPECT_NE(nullptr, provider.locale);
    EXPECT_EQ(0u, zvsdk_manager_zdo_locale_set(root, nullptr));
    EXPECT_EQ(nullptr, provider.locale);
    EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_value_add(root, "k", "x")));
    // It may be the child of an object in memory, which then holds it.
    const object parent = make("parent");
    EXPECT_EQ(0u, zvsdk_manager_zdo_child_add(parent, "k", root));
    EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_child_add(root, "k", parent)));
    EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_render(parent, 0, &key, &text)));
  }
  EXPECT_EQ(2, provider.released);
  EXPECT_NE(0u, host.handles->handle_validate_user(user));
  // A provider may leave slots empty.
  const zvsdk_zdo_provider empty = {};
  ASSERT_EQ(0u, host.objects->zdo_create(host.client, &provider, &empty, nullptr, nullptr, nullptr,
                                         nullptr, &made));
  const object root(made);
  const char* text = nullptr;
  EXPECT_EQ(0x0Bu, low_word(host.objects->zdo_get_type(root, &text)));
}

}  // namespace
