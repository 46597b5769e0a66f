// The handle registry against a model, its destructors, and what is refused as a handle.

#include <atomic>
#include <map>
#include <memory>
#include <random>
#include <thread>

#include "tests/manager/host_fixture.h"

namespace {

struct model_entry {
  uint32_t magic;
  uint32_t references;
};

/* Random operations on one thread's own objects, beside other threads that do the same. */
void compare_with_model(const running_host& host, std::vector<uint64_t>& objects, uint32_t seed) {
  std::mt19937 random(seed);
  std::map<void*, model_entry> model;
  for (int step = 0; step < 20000; ++step) {
    void* object = &objects[random() % objects.size()];
    const auto known = model.find(object);
    const bool live = known != model.end();
    const uint32_t magic = 1 + random() % 2;
    switch (random() % 4) {
      case 0:
        ASSERT_EQ(live ? 0x368u : 0u,
                  low_word(host.handles->handle_register(host.client, object, magic, nullptr)));
        if (!live) model[object] = {magic, 1};
        break;
      case 1:
        ASSERT_EQ(!live, host.handles->handle_addref(object) != 0);
        if (live) ++known->second.references;
        break;
      case 2:
        ASSERT_EQ(live ? 0u : 1u, low_word(host.handles->handle_release(object)));
        if (live && --known->second.references == 0) model.erase(known);
        break;
      default:
        ASSERT_EQ(live && known->second.magic == magic,
                  host.handles->handle_validate(object, magic) == 0);
    }
  }
  for (auto& [object, entry] : model) {
    while (entry.references-- != 0) ASSERT_EQ(0u, host.handles->handle_release(object));
  }
}

TEST_F(host_test, registry_agrees_with_a_model_on_several_threads) {
  std::vector<std::vector<uint64_t>> objects(4, std::vector<uint64_t>(500));
  uint64_t shared = 0;
  ASSERT_EQ(0u, host.handles->handle_register(host.client, &shared, 9, nullptr));
  std::atomic<bool> done{false};
  std::thread reader([&] {
    while (!done) {
      ASSERT_EQ(0u, host.handles->handle_validate(&shared, 9));
      ASSERT_NE(0u, host.handles->handle_validate(&done, 9));
    }
  });
  std::vector<std::thread> threads;
  for (uint32_t i = 0; i < objects.size(); ++i) {
    threads.emplace_back([&, i] { compare_with_model(host, objects[i], i); });
  }
  for (std::thread& each : threads) each.join();
  done = true;
  reader.join();
  EXPECT_EQ(0u, host.handles->handle_release(&shared));
}

/* Releases the next of a chain when it is destroyed. */
struct link {
  const running_host* host;
  link* next;
  int* destroyed;

  static zvsdk_status destroy(void* object) {
    std::unique_ptr<link> self(static_cast<link*>(object));
    ++*self->destroyed;
    EXPECT_NE(0u, self->host->handles->handle_validate(self.get(), 3));
    return self->next != nullptr ? self->host->handles->handle_release(self->next) : 0x90AA0001;
  }
};

TEST_F(host_test, a_destructor_runs_once_and_may_release_other_handles) {
  int destroyed = 0;
  link* chain = nullptr;
  for (int i = 0; i < 200; ++i) {
    chain = new link{&host, chain, &destroyed};
    ASSERT_EQ(0u, host.handles->handle_register(host.client, chain, 3, link::destroy));
  }
  ASSERT_EQ(0u, host.handles->handle_addref(chain));
  EXPECT_EQ(0u, host.handles->handle_release(chain));
  EXPECT_EQ(0, destroyed);
  EXPECT_EQ(0x90AA0001u, host.handles->handle_release(chain)) << "the destructor's own status";
  EXPECT_EQ(200, destroyed);
}

TEST_F(host_test, null_stale_foreign_and_other_handles_are_refused_everywhere) {
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  zvsdk_user* user = nullptr;
  zvsdk_zdo* object = nullptr;
  zvsdk_zdo* gone = nullptr;
  zvsdk_locale* locale = nullptr;
  zvsdk_list* list = nullptr;
  ASSERT_EQ(0u, zvsdk_manager_user_create("u", &user));
  ASSERT_EQ(0u, zvsdk_manager_zdo_create("c", &object));
  ASSERT_EQ(0u, zvsdk_manager_zdo_create("c", &gone));
  ASSERT_EQ(0u, zvsdk_manager_zdo_release(gone));
  ASSERT_EQ(0u, host.lists->locale_get_default(ZVSDK_LOCALE_MUSIC, &locale));
  ASSERT_EQ(0u, host.lists->list_retrieve("zvsdk_list_type_tempos", "eng", "", "", nullptr, nullptr,
                                          nullptr, &list));
  alignas(64) char foreign[64] = {};
  void* const outsiders[] = {nullptr,
                             reinterpret_cast<void*>(8),
                             reinterpret_cast<void*>(~uintptr_t{0xFFF}),
                             foreign,
                             gone,
                             reinterpret_cast<char*>(object) + 4,
                             reinterpret_cast<char*>(object) - 32,  // in front of the object
                             host.client};
  void* const insiders[] = {user, object, locale, list};
  const zvsdk_listmanager_interface& l = *host.lists;
  const auto refused = [&](void* handle) {
    const char* text = nullptr;
    uint32_t number = 0;
    int32_t score = 0;
    void* out = nullptr;
    const auto as = [&](auto** target) { return reinterpret_cast<decltype(target)>(&out); };
    const auto check = [&](const void* own_kind, zvsdk_status status, const char* call) {
      if (handle != own_kind) {
        EXPECT_EQ(1u, low_word(status)) << call << " of " << handle;
      }
    };
    zvsdk_list_element** element = as(static_cast<zvsdk_list_element**>(nullptr));
    const auto e = static_cast<zvsdk_list_element*>(handle);
    const auto s = static_cast<zvsdk_correlates_set*>(handle);
    EXPECT_EQ(1u, low_word(host.handles->handle_validate_list_element(e)));
    check(user, host.handles->handle_validate_user(static_cast<zvsdk_user*>(handle)), "user");
    check(object, host.handles->handle_validate_zdo(static_cast<zvsdk_zdo*>(handle)), "zdo");
    check(locale,
          l.locale_get_info(static_cast<zvsdk_locale*>(handle), nullptr, &text, &text, &text,
                            nullptr),
          "locale");
    check(list,
          l.list_get_element_by_string(static_cast<zvsdk_list*>(handle), "x", nullptr, element),
          "list");
    check(host.client,
          host.manager->provider_register(static_cast<zvsdk_client*>(handle), "i", nullptr, &text,
                                          8, nullptr, nullptr),
          "client");
    EXPECT_EQ(1u, low_word(l.element_release(e)));
    EXPECT_EQ(1u, low_word(l.element_get_id(e, &number)));
    EXPECT_EQ(1u, low_word(l.element_get_range(e, &number, &number)));
    EXPECT_EQ(1u, low_word(l.element_get_parent(e, element)));
    EXPECT_EQ(1u, low_word(l.correlates_set_get_score(s, 1, &score)));
    EXPECT_EQ(1u, low_word(l.correlates_set_release(s)));
    EXPECT_EQ(1u, low_word(l.correlates_release(static_cast<zvsdk_correlates*>(handle))));
    EXPECT_EQ(1u, low_word(host.handles->handle_release(handle)));
  };
  for (void* handle : outsiders) refused(handle);
  for (void* handle : insiders) refused(handle);
  EXPECT_EQ(0u, l.list_release(list));
  EXPECT_EQ(1u, low_word(l.list_release(list)));
  EXPECT_EQ(0u, l.locale_release(locale));
  EXPECT_EQ(0u, zvsdk_manager_zdo_release(object));
  EXPECT_EQ(0u, zvsdk_manager_user_release(user));
}

}  // namespace
