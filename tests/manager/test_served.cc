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

class served_test : public zdo_test {
 protected:
  zdo_ptr serve(const zvsdk_zdo_provider& table, void* data, zvsdk_user* user = nullptr) {
    return zdo_ptr(output_of(objects->zdo_create, host.client, data, &table, user,
                             ZVSDK_LOCALE_MUSIC, nullptr, nullptr));
  }
  /* The language after the locale was set to a group's, or could not be. */
  static std::string set_locale(const zdo_ptr& of, const char* group) {
    const char *language = nullptr, *region = nullptr, *descriptor = nullptr;
    zvsdk_manager_zdo_locale_set(of.get(), group);
    EXPECT_EQ(0u, zvsdk_manager_zdo_locale_get(of.get(), &language, &region, &descriptor));
    return language;
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
  EXPECT_EQ("3", value(root, "k/k/v", 3));
  EXPECT_EQ(1, source.live) << "the children went with their handles";
  EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_value_add(root.get(), "k", "x")));
  // It may be the child of an object in memory, which then holds it, and its child may outlive it.
  zdo_ptr parent = make_object("parent", {}, {{"k", root}});
  EXPECT_EQ(0x0Bu, low_word(zvsdk_manager_zdo_child_add(root.get(), "k", parent.get())));
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
  zvsdk_zdo_provider table = {};
  const auto asked = [&] {
    const zdo_ptr root = serve(table, nullptr);
    const char* text = nullptr;
    const zvsdk_status status = objects->zdo_value_get(root.get(), "k", 1, &text);
    EXPECT_EQ(nullptr, text);
    return status;
  };
  EXPECT_EQ(0x9008000B, asked());
  table.get_value = [](void*, const char*, uint32_t, const char** text) -> zvsdk_status {
    return *text = "spoilt", 0x90AA0042;
  };
  EXPECT_EQ(0x90AA0042, asked());
  table.get_value = [](void*, const char*, uint32_t, const char**) -> zvsdk_status { return 0; };
  EXPECT_EQ(0x10080003u, asked());
}

TEST_F(served_test, the_locale_is_that_of_a_group_and_goes_back_to_the_objects_own) {
  const zdo_ptr root = serve(s_table, source.make(1));
  EXPECT_EQ(0x2D3u, low_word(zvsdk_manager_zdo_locale_set(root.get(), ZVSDK_LOCALE_MUSIC)));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_PLAYLIST, "de", nullptr, nullptr));
  EXPECT_EQ("ger", set_locale(root, ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ(0u, zvsdk_manager_locale_unload(ZVSDK_LOCALE_PLAYLIST));
  EXPECT_EQ("ger", set_locale(root, ZVSDK_LOCALE_PLAYLIST)) << "it keeps what it has";
  EXPECT_EQ("eng", set_locale(root, nullptr));
  EXPECT_EQ("eng", set_locale(child(root, "k"), nullptr));
}

}  // namespace
