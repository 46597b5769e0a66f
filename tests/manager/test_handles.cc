// The handle registry against a model, its destructors, and what is refused as a handle.

#include <array>
#include <atomic>
#include <functional>
#include <map>
#include <random>
#include <thread>

#include "tests/manager/host_fixture.h"

namespace {

/* Random operations on one thread's own objects, beside other threads that do the same. */
void compare_with_model(const running_host& host, uint32_t seed) {
  const zvsdk_handlemanager_interface& handles = *host.handles;
  std::vector<uint64_t> objects(500);
  std::mt19937 random(seed);
  std::map<void*, std::pair<uint32_t, uint32_t>> model;  // magic and references
  for (int step = 0; step < 20000; ++step) {
    void* object = &objects[random() % objects.size()];
    const auto known = model.find(object);
    const bool live = known != model.end();
    const uint32_t magic = 1 + random() % 2;
    switch (random() % 4) {
      case 0:
        ASSERT_EQ(live ? 0x368u : 0u,
                  low_word(handles.handle_register(host.client, object, magic, nullptr)));
        model.insert({object, {magic, 1}});
        break;
      case 1:
        ASSERT_EQ(!live, handles.handle_addref(object) != 0);
        if (live) ++known->second.second;
        break;
      case 2:
        ASSERT_EQ(live ? 0u : 1u, low_word(handles.handle_release(object)));
        if (live && --known->second.second == 0) model.erase(known);
        break;
      default:
        ASSERT_EQ(live && known->second.first == magic,
                  handles.handle_validate(object, magic) == 0);
    }
  }
  for (auto& [object, entry] : model)
    while (entry.second-- != 0) ASSERT_EQ(0u, handles.handle_release(object));
}

TEST_F(host_test, registry_agrees_with_a_model_on_several_threads) {
  std::array<uint64_t, 200> shared;
  for (uint64_t& each : shared)
    ASSERT_EQ(0u, host.handles->handle_register(host.client, &each, 9, nullptr));
  std::atomic<bool> done{false};
  std::jthread reader([&] {
    while (!done) {
      for (uint64_t& each : shared) ASSERT_EQ(0u, host.handles->handle_validate(&each, 9));
    }
  });
  std::vector<std::jthread> threads;
  for (uint32_t seed = 0; seed < 4; ++seed)
    threads.emplace_back(compare_with_model, std::cref(host), seed);
  threads.clear();
  done = true;
  reader.join();
  for (uint64_t& each : shared) EXPECT_EQ(0u, host.handles->handle_release(&each));
}

/* Releases the next of a chain when it is destroyed. */
struct link {
  const zvsdk_handlemanager_interface* handles;
  link* next;
  int* destroyed;

  static zvsdk_status destroy(void* object) {
    const std::unique_ptr<link> self(static_cast<link*>(object));
    ++*self->destroyed;
    EXPECT_NE(0u, self->handles->handle_validate(object, 3));
    return self->next != nullptr ? self->handles->handle_release(self->next) : 0x90AA0001;
  }
};

TEST_F(host_test, a_destructor_runs_once_and_may_release_other_handles) {
  int destroyed = 0;
  link* chain = nullptr;
  for (int i = 0; i < 200; ++i) {
    chain = new link{host.handles, chain, &destroyed};
    ASSERT_EQ(0u, host.handles->handle_register(host.client, chain, 3, link::destroy));
  }
  EXPECT_EQ(0x90AA0001u, host.handles->handle_release(chain)) << "the destructor's own status";
  EXPECT_EQ(200, destroyed);
}

/* A call whose first argument is a handle, as one that can be given any. The others are the number
 * 8, or room that holds the text "x". */
template <class Handle, class... More>
std::function<zvsdk_status(void*)> of_any(zvsdk_status (*call)(Handle*, More...)) {
  return [call](void* handle) {
    alignas(8) static char room[64] = "x";
    [[maybe_unused]] const auto any = []<class Any>(Any) {
      if constexpr (std::is_pointer_v<Any>)
        return reinterpret_cast<Any>(room);
      else
        return Any{8};
    };
    return low_word(call(static_cast<Handle*>(handle), any(More{})...));
  };
}

TEST_F(host_test, null_stale_foreign_and_other_handles_are_refused_everywhere) {
  ASSERT_EQ(0u, zvsdk_manager_locale_load(ZVSDK_LOCALE_MUSIC, "eng", nullptr, nullptr));
  const zvsdk_listmanager_interface& l = *host.lists;
  const user_ptr user(output_of(zvsdk_manager_user_create, "u"));
  const zdo_ptr object = make_object("c");
  void* const gone = make_object("c").get();
  zvsdk_locale* locale = output_of(l.locale_get_default, ZVSDK_LOCALE_MUSIC);
  zvsdk_list* list = output_of(l.list_retrieve, "zvsdk_list_type_tempos", "eng", "", "", nullptr,
                               nullptr, nullptr);
  const std::pair<void*, std::function<zvsdk_status(void*)>> calls[] = {
      {user.get(), of_any(host.handles->handle_validate_user)},
      {object.get(), of_any(host.handles->handle_validate_zdo)},
      {nullptr, of_any(host.handles->handle_validate_list_element)},
      {locale, of_any(l.locale_get_info)},
      {list, of_any(l.list_get_element_by_string)},
      {host.client, of_any(host.manager->provider_register)},
      {nullptr, of_any(l.element_get_id)},
      {nullptr, of_any(l.element_get_parent)},
      {nullptr, of_any(l.correlates_set_get_score)},
      {nullptr, of_any(l.correlates_release)},
      {nullptr, of_any(host.handles->handle_release)},
      {nullptr, of_any(zvsdk_manager_handle_release)}};
  alignas(64) char foreign[64] = {};
  char* const inside = reinterpret_cast<char*>(object.get());
  for (void* handle : std::initializer_list<void*>{
           nullptr, reinterpret_cast<void*>(8), reinterpret_cast<void*>(~uintptr_t{0xFFF}), foreign,
           gone, inside + 4, inside - 32, host.client, user.get(), object.get(), locale, list}) {
    for (const auto& [own_kind, call] : calls) {
      if (handle != nullptr && handle == own_kind) continue;
      EXPECT_EQ(1u, call(handle)) << "call " << &call - &calls[0].second << " of " << handle;
    }
  }
  EXPECT_EQ(0u, l.list_release(list));
  EXPECT_EQ(1u, low_word(l.list_release(list)));
  EXPECT_EQ(0u, l.locale_release(locale));
}

}  // namespace
