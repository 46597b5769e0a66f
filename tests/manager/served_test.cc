// Objects that a provider serves: every slot, and what becomes of data, user and locale.

#include "tests/manager/zdo_fixture.h"

namespace {

/* A provider whose objects have the values 1 to 3 under every key, and one child of their own kind
 * to a depth of two. Counts the objects that it serves. */
struct provider {
  struct object {
    provider* of;
    int depth;
    zvsdk_locale* locale;
  };
  const zvsdk_listmanager_interface* lists;
  int live = 0;

  object* make(int depth) { return ++live, new object{this, depth, nullptr}; }

  static object& as(void* data) { return *static_cast<object*>(data); }
  static zvsdk_status number(void*, const char*, uint32_t ordinal, const char** text) {
    static const char* const texts[] = {"1", "2", "3"};
    if (ordinal > 3) return 0x10AA0003;
    return *text = texts[ordinal - 1], 0;
  }
  static zvsdk_status child(void* data, const char*, uint32_t ordinal, void** child) {
    if (ordinal > 1 || as(data).depth == 0) return 0x10AA0003;
    return *child = as(data).of->make(as(data).depth - 1), 0;
  }
  static zvsdk_status set_locale(void* data, zvsdk_locale* locale) {
    object& self = as(data);
    if (self.locale != nullptr) self.of->lists->locale_release(self.locale);
    self.locale = locale;
    return locale != nullptr ? self.of->lists->locale_addref(locale) : 0;
  }
  static zvsdk_status release(void* data) {
    set_locale(data, nullptr);
    --as(data).of->live;
    return delete &as(data), 0;
  }
};

const zvsdk_zdo_provider s_table = {
    .reserved1 = nullptr,
    .get_context = [](void*, const char** text) -> zvsdk_status { return *text = "served", 0; },
    .get_child_count = [](void* data, const char*, uint32_t* count) -> zvsdk_status {
      return *count = provider::as(data).depth != 0, 0;
    },
    .get_child = provider::child,
    .get_value_count = [](void*, const char*, uint32_t* count) -> zvsdk_status {
      return *count = 3, 0;
    },
    .get_value = provider::number,
    .reserved2 = nullptr,
    .render_value =
        [](void* data, uint32_t index, const char** key, const char** text) {
          return *key = "v", provider::number(data, *key, index + 1, text);
        },
    .set_locale = provider::set_locale,
    .get_locale = [](void* data, zvsdk_locale** locale) -> zvsdk_status {
      return *locale = provider::as(data).locale, 0;
    },
    .release = provider::release,
};

/* Answers without a result, or, when it fails, with one that must not be handed out. */
template <zvsdk_status Status>
constexpr zvsdk_zdo_provider s_answering = {
    .get_child_count = [](void*, const char*, uint32_t* count) { return *count = 7, Status; },
    .get_child = [](void* data, const char*, uint32_t,
                    void** child) { return *child = Status != 0 ? data : nullptr, Status; },
    .get_value = [](void*, const char*, uint32_t,
                    const char** text) { return *text = Status != 0 ? "x" : nullptr, Status; },
};

class served_test : public zdo_test {
 protected:
  zdo_ptr serve(const zvsdk_zdo_provider& table, void* data, zvsdk_user* user = nullptr) {
    return zdo_ptr(output_of(objects->zdo_create, host.client, data, &table, user,
                             ZVSDK_LOCALE_MUSIC, nullptr, nullptr));
  }
  /* "language region descriptor" after the locale was set to a group's, or the low words of both
   * calls. */
  static std::string set_locale(const zdo_ptr& of, const char* group) {
    const char *language = nullptr, *region = nullptr, *descriptor = nullptr;
    const uint32_t set = low_word(zvsdk_manager_zdo_locale_set(of.get(), group));
    const uint32_t got =
        low_word(zvsdk_manager_zdo_locale_get(of.get(), &language, &region, &descriptor));
    return got != 0 ? std::to_string(set) + " " + std::to_string(got)
                    : language + std::string(" ") + region + " " + descriptor;
  }
  provider source{host.lists};
};

TEST_F(served_test, a_provider_answers_every_call) {
  zvsdk_user* user = output_of(zvsdk_manager_user_create, "u");
  zdo_ptr root = serve(s_table, source.make(2), user);
  EXPECT_EQ(0u, zvsdk_manager_user_release(user));
  EXPECT_EQ("served", context(root));
  EXPECT_EQ("2", value(root, "v", 2));
  EXPECT_EQ(3u, output_of(zvsdk_manager_zdo_value_count, root.get(), "v"));
  EXPECT_EQ(1u, output_of(zvsdk_manager_zdo_child_count, root.get(), "k"));
  const char *key = nullptr, *text = nullptr;
  EXPECT_EQ(0u, zvsdk_manager_zdo_render(root.get(), 1, &key, &text));
  EXPECT_EQ("v2", std::string(key) + text);
  EXPECT_EQ(3u, low_word(zvsdk_manager_zdo_render(root.get(), 3, &key, &text)));
  EXPECT_EQ("3", value(root, "k/k/v", 3));
  EXPECT_EQ(1, source.live) << "the children went with their handles";
  EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_value_add(root.get(), "k", "x")));
  // It may be the child of an object in memory, which then holds it, and its child may outlive it.
  zdo_ptr parent = make_object("parent", {}, {{"k", root}});
  EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_child_add(root.get(), "k", parent.get())));
  EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_render(parent.get(), 0, &key, &text)));
  EXPECT_EQ("11 11", set_locale(parent, nullptr));
  root.reset();
  zdo_ptr last = child(child(parent, "k"), "k");
  parent.reset();
  EXPECT_EQ(1, source.live);
  EXPECT_EQ(0u, host.handles->handle_validate_user(user)) << "every object holds the user";
  EXPECT_EQ(6u, low_word(host.manager->client_release(host.client)));
  last.reset();
  EXPECT_EQ(0, source.live);
  EXPECT_NE(0u, host.handles->handle_validate_user(user));
}

TEST_F(served_test, empty_failing_and_silent_slots_hand_out_nothing) {
  const zvsdk_zdo_provider empty = {};
  const std::tuple<const zvsdk_zdo_provider&, zvsdk_status, uint32_t> cases[] = {
      {empty, 0x9008000B, 0},
      {s_answering<0x90AA0042>, 0x90AA0042, 0},
      {s_answering<0>, 0x10080003, 7}};
  for (const auto& [table, status, count] : cases) {
    const zdo_ptr root = serve(table, &host);
    const char* text = nullptr;
    zvsdk_zdo* child = nullptr;
    uint32_t children = 0;
    EXPECT_EQ(status, objects->zdo_value_get(root.get(), "k", 1, &text));
    EXPECT_EQ(status, objects->zdo_child_get(root.get(), "k", 1, nullptr, &child));
    EXPECT_EQ(count != 0 ? 0 : status, zvsdk_manager_zdo_child_count(root.get(), "k", &children));
    EXPECT_TRUE(text == nullptr && child == nullptr && children == count) << children;
  }
}

TEST_F(served_test, the_locale_is_that_of_a_group_and_goes_back_to_the_objects_own) {
  const zdo_ptr root = serve(s_table, source.make(1));
  EXPECT_EQ("723 3", set_locale(root, ZVSDK_LOCALE_MUSIC)) << "the group has none";
  EXPECT_EQ("0 3", set_locale(root, nullptr));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", "us", "m"));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "de", "at", "p"));
  EXPECT_EQ("ger at p", set_locale(root, ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ("ger at p", set_locale(root, ZVSDK_LOCALE_PLAYLIST)) << "it keeps what it has";
  EXPECT_EQ("eng us m", set_locale(root, nullptr));
  EXPECT_EQ("eng us m", set_locale(child(root, "k"), nullptr));
}

TEST_F(served_test, what_could_not_be_made_stays_its_makers) {
  provider::object* data = source.make(0);
  zvsdk_user* stale = output_of(zvsdk_manager_user_create, "u");
  EXPECT_EQ(0u, zvsdk_manager_user_release(stale));
  zvsdk_zdo* made = nullptr;
  EXPECT_EQ(1u, low_word(objects->zdo_create(host.client, data, &s_table, stale, "g", nullptr,
                                             nullptr, &made)));
  EXPECT_EQ(nullptr, made);
  EXPECT_EQ(1, source.live);
  EXPECT_EQ(0u, provider::release(data));
}

}  // namespace
