/*
 * list_view.h: a list and its elements as plain values.
 */
#ifndef LIST_VIEW_H
#define LIST_VIEW_H

#include "tests/manager/host_fixture.h"

/* What the table says about an element; the parent, 0 for none, and the children by their ids. */
struct element_facts {
  uint32_t id = 0, match_id = 0, level = 0, lower = 0, upper = 0, parent = 0;
  std::vector<uint32_t> children;
  std::string text;

  bool operator==(const element_facts&) const = default;
};

class list_view {
 public:
  list_view(const zvsdk_listmanager_interface* table, const char* type, const char* language)
      : table_(*table),
        list_(output_of(table->list_retrieve, type, language, "", "", nullptr, nullptr, nullptr)) {}
  ~list_view() { EXPECT_EQ(0u, table_.list_release(list_)); }
  list_view(const list_view&) = delete;
  list_view& operator=(const list_view&) = delete;

  element_facts by_id(uint32_t id, uint32_t level = 0) const {
    zvsdk_list_element* element = nullptr;
    const zvsdk_status status = table_.list_get_element_by_id(list_, id, level, &element);
    EXPECT_EQ(element != nullptr ? 0u : 3u, low_word(status));
    return facts(element);
  }
  element_facts by_text(const char* text) const {
    zvsdk_list_element* element = nullptr;
    table_.list_get_element_by_string(list_, text, nullptr, &element);
    return facts(element);
  }
  /* Every element, parents in front of their children. */
  std::vector<element_facts> all() const {
    std::vector<element_facts> found;
    zvsdk_list_element* top = nullptr;
    for (uint32_t i = 0; zvsdk_manager_list_get_root(list_, i, &top) == 0; ++i) {
      found.push_back(facts(top));
    }
    for (size_t i = 0; i < found.size(); ++i) {
      for (uint32_t id : std::vector(found[i].children)) found.push_back(by_id(id));
    }
    return found;
  }

 private:
  /* Gives the reference back. */
  uint32_t take_id(zvsdk_list_element* element) const {
    const uint32_t id = output_of(table_.element_get_id, element);
    EXPECT_EQ(0u, table_.element_release(element));
    return id;
  }
  element_facts facts(zvsdk_list_element* element) const {
    element_facts found;
    if (element == nullptr) return found;
    zvsdk_list_element* other = nullptr;
    found.match_id = output_of(table_.element_get_match_id, element);
    found.level = output_of(table_.element_get_level, element);
    table_.element_get_range(element, &found.lower, &found.upper);
    if (table_.element_get_parent(element, &other) == 0) found.parent = take_id(other);
    for (uint32_t i = 0; table_.element_get_child(element, i, &other) == 0; ++i)
      found.children.push_back(take_id(other));
    EXPECT_EQ(found.children.size(), output_of(table_.element_get_child_count, element));
    found.text = output_of(table_.element_get_display_string, element);
    found.id = take_id(element);
    return found;
  }

  const zvsdk_listmanager_interface& table_;
  zvsdk_list* list_;
};

#endif
