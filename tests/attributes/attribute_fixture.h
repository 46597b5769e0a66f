/*
 * attribute_fixture.h: drives attributes through their tables: a media that stands where a
 * collection's media stands and records what an attribute gives it, and instances that release
 * themselves.
 */
#ifndef ATTRIBUTE_FIXTURE_H
#define ATTRIBUTE_FIXTURE_H

#include <string>
#include <string_view>

#include "attributes/playlist_impl_attributes.h"
#include "module/playlist_handles.h"
#include "tests/common/playlist_fixture.h"

/* The registered table of that name, or null. */
inline const playlist_attribute* find_attribute(std::string_view wanted) {
  const char* name = nullptr;
  void* record = nullptr;
  for (uint32_t i = 0; zcsl_vector2_getindex(g_playlist_attribute_mgr, i, &record) == 0; ++i) {
    auto* attribute = static_cast<const playlist_attribute*>(record);
    if (attribute->attribute_name(&name) == 0 && wanted == name) return attribute;
  }
  return nullptr;
}

/* One media and the values that an attribute gave it, in their order. */
struct recorded_media {
  const char* ident = "media";
  zvsdk_zdo* object = nullptr;
  zvsdk_list_element* element = nullptr;
  texts values = {};

  void collect(const playlist_attribute& attribute) {
    static constexpr playlist_collect_api api = {
        [](playlist_collect_context* context, const char** out) -> zvsdk_status {
          return *out = of(context).ident, 0;
        },
        [](playlist_collect_context* context, zvsdk_zdo** out) -> zvsdk_status {
          if (of(context).object == nullptr) return playlist_warn_not_found;
          return g_playlist_zdo_interface->zdo_addref(*out = of(context).object);
        },
        [](playlist_collect_context* context, zvsdk_list_element** out) -> zvsdk_status {
          *out = of(context).element;
          return *out == nullptr ? playlist_warn_not_found : 0;
        },
        [](playlist_collect_context* context, int32_t value) -> zvsdk_status {
          return of(context).values.push_back(std::to_string(value)), 0;
        },
        [](playlist_collect_context* context, const char* text) -> zvsdk_status {
          return of(context).values.push_back(text), 0;
        }};
    auto* context = reinterpret_cast<playlist_collect_context*>(this);
    EXPECT_EQ(0u, attribute.collect_attribute_data(context, &api));
  }

  static recorded_media& of(playlist_collect_context* context) {
    return *reinterpret_cast<recorded_media*>(context);
  }
};

/* One use of an attribute: create, one criterion, compare, release. */
class attribute_use {
 public:
  explicit attribute_use(const playlist_attribute& table) : m_table(table) {
    EXPECT_EQ(0u, table.create_instance(&m_instance));
  }
  attribute_use(const attribute_use&) = delete;
  ~attribute_use() { m_table.release_instance(m_instance); }

  zvsdk_status text(uint32_t op, const char* criterion) {
    return m_table.set_string_criteria(m_instance, op, criterion, &threshold);
  }
  zvsdk_status seed(uint32_t op, const zdo_ptr& object) {
    return m_table.set_seed_criteria(m_instance, op, object.get(), &threshold);
  }
  /* A score that no comparison gives stands for a failed one. */
  int32_t score(uint32_t value) {
    int32_t score = 0;
    return m_table.compare_integer_data(m_instance, value, &score) == 0 ? score : s_no_score;
  }
  int32_t score(const char* stored) {
    int32_t score = 0;
    return m_table.compare_string_data(m_instance, stored, &score) == 0 ? score : s_no_score;
  }
  playlist_attribute_instance* instance() { return m_instance; }

  static constexpr int32_t s_no_score = -77777;
  int32_t threshold = 1000;

 private:
  const playlist_attribute& m_table;
  playlist_attribute_instance* m_instance = nullptr;
};

#endif
