/*
 * attribute_fixture.h: drives attributes: what they collect for one media, uses of their tables
 * whose instances release themselves, and lists that are alike for all of them.
 */
#ifndef ATTRIBUTE_FIXTURE_H
#define ATTRIBUTE_FIXTURE_H

#include <string_view>

#include "attributes/playlist_attr_lists.h"
#include "attributes/playlist_impl_attributes.h"
#include "module/playlist_handles.h"
#include "tests/common/collection_values.h"
#include "tests/common/failing_memory.h"

/*
 * A host whose lists are those of the folder lists/. All have the same elements, at levels 1, 2, 3:
 *
 *   7001 Coarse -- 7011 Middle -- 7111 Fine, 7112 Second fine
 *               -- 7012 Second middle -- 7121 Third fine
 *   7002 Other
 *
 * Nothing may be left allocated at the end.
 */
class small_lists_test : public playlist_test {
 protected:
  small_lists_test() {
    const zvsdk_manager_config config = {.size = sizeof config, .data_path = TEST_LISTS};
    EXPECT_EQ(0u, zvsdk_manager_create(&config, &host_));
  }
  ~small_lists_test() override { EXPECT_EQ(0u, zvsdk_manager_release(host_)); }

  failing_memory memory;

 private:
  zvsdk_sdkmanager* host_ = nullptr; /* kept beside the fixture's own reference to it */
};

/* The registered table of that name. */
inline const playlist_attribute& attribute_of(std::string_view wanted) {
  const char* name = nullptr;
  void* record = nullptr;
  for (uint32_t i = 0; zcsl_vector2_getindex(g_playlist_attribute_mgr, i, &record) == 0; ++i) {
    auto* attribute = static_cast<const playlist_attribute*>(record);
    if (attribute->attribute_name(&name) == 0 && wanted == name) return *attribute;
  }
  ADD_FAILURE() << "no attribute " << wanted;
  std::abort();
}

/* What a new collection holds of a media in an attribute when it is given an object and then a list
 * element, each if there is one. */
inline texts collected(const char* attribute, const zdo_ptr& object,
                       zvsdk_list_element* element = nullptr, const char* ident = "media") {
  const collection_ptr made(output_of(zvsdk_playlist_collection_create, "collected"));
  EXPECT_EQ(0u, object ? zvsdk_playlist_collection_add_zdo(made.get(), ident, object.get()) : 0);
  EXPECT_EQ(0u,
            element ? zvsdk_playlist_collection_add_list_element(made.get(), ident, element) : 0);
  return values_of(made.get(), attribute, ident);
}

/* A list in the default language. */
inline playlist_list_owner list_of(const char* list_type) {
  playlist_locale_owner locale;
  playlist_list_owner list;
  EXPECT_EQ(0u, playlist_attr_default_locale(locale));
  EXPECT_EQ(0u, playlist_attr_retrieve_list(locale.get(), list_type, list.out()));
  return list;
}

/* An element of such a list. */
inline playlist_element_owner element_of(const char* list_type, uint32_t id) {
  const playlist_list_owner list = list_of(list_type);
  playlist_element_owner element;
  EXPECT_EQ(0u,
            g_playlist_lists_interface->list_get_element_by_id(list.get(), id, 0, element.out()));
  return element;
}

/* One use of an attribute: create, one criterion, compare, release. */
class attribute_use {
 public:
  explicit attribute_use(std::string_view attribute) : table_(attribute_of(attribute)) {
    EXPECT_EQ(0u, table_.create_instance(&instance_));
  }
  attribute_use(const attribute_use&) = delete;
  ~attribute_use() { table_.release_instance(instance_); }

  zvsdk_status set(uint32_t op, const char* text) {
    return table_.set_string_criteria(instance_, op, text, &threshold);
  }
  zvsdk_status set(uint32_t op, const zdo_ptr& seed) {
    return table_.set_seed_criteria(instance_, op, seed.get(), &threshold);
  }
  /* The score of a value, "#7" for the integer 7 and anything else for a text. One that no
   * comparison gives stands for a failure. */
  int32_t score(const std::string& stored) {
    int32_t score = s_no_score;
    const zvsdk_status status =
        stored[0] == '#' ? table_.compare_integer_data(instance_, number_of(stored), &score)
                         : table_.compare_string_data(instance_, stored.c_str(), &score);
    EXPECT_TRUE(status == 0 || score == s_no_score) << "a failure writes no score";
    return score;
  }
  /* Such a value as text; a failure as the low word of its code. */
  std::string value(const std::string& stored, const char* key, zvsdk_locale* locale = nullptr) {
    const char* text = nullptr;
    const zvsdk_status status =
        stored[0] == '#'
            ? table_.value_from_integer_data(instance_, number_of(stored), key, locale, &text)
            : table_.value_from_string_data(instance_, stored.c_str(), key, locale, &text);
    return status == 0 ? text : std::to_string(zvsdk_low_word(status));
  }

  static constexpr int32_t s_no_score = -77777;
  int32_t threshold = 1000;

 private:
  static uint32_t number_of(const std::string& stored) {
    return static_cast<uint32_t>(std::stoul(stored.substr(1)));
  }

  const playlist_attribute& table_;
  playlist_attribute_instance* instance_ = nullptr;
};

/* What an attribute makes of a criterion, a text or a seed, and of stored values: "700: 1000 -1000"
 * is the threshold and the scores, of which "none" is no opinion and "failed" a failure. A refused
 * criterion begins with the low word of its code: "#62 700: failed". */
template <class Criterion>
std::string judged(std::string_view attribute, uint32_t op, const Criterion& criterion,
                   const texts& stored) {
  attribute_use use(attribute);
  const zvsdk_status status = use.set(op, criterion);
  std::string all = status != 0 ? "#" + std::to_string(zvsdk_low_word(status)) + " " : "";
  all += std::to_string(use.threshold) + ":";
  for (const std::string& value : stored) {
    const int32_t score = use.score(value);
    all += score == playlist_score_ignored      ? " none"
           : score == attribute_use::s_no_score ? " failed"
                                                : " " + std::to_string(score);
  }
  return all;
}

#endif
