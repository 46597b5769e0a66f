// Lists through the host's table.
#include "tools/term_lists.h"

#include <charconv>

#include "tools/library.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

std::optional<uint32_t> decimal(const std::string& text) {
  uint32_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

}  // namespace

term_lists::term_lists(zvsdk_sdkmanager* manager, const std::string& language) {
  void* table = nullptr;
  check(manager->interface_get(ZVSDK_LISTMANAGER_INTERFACE, nullptr, nullptr, &table),
        "asking for the lists");
  table_ = static_cast<const zvsdk_listmanager_interface*>(table);
  for (const term_list_kind& kind : term_list_kinds) {
    zvsdk_list* found = nullptr;
    const zvsdk_status status = table_->list_retrieve(kind.type, language.c_str(), nullptr, nullptr,
                                                      nullptr, nullptr, nullptr, &found);
    if (zvsdk_is_error(status)) check(status, kind.type);
    lists_.push_back(list_owner(found, giver{table_}));
  }
}

term_lists::element_owner term_lists::by_id(term_list which, uint32_t id) const {
  zvsdk_list_element* found = nullptr;
  table_->list_get_element_by_id(list(which), id, 0, &found);
  return own(found);
}

std::optional<known_term> term_lists::find(term_list which, const std::string& text) const {
  element_owner element = own(nullptr);
  if (const auto number = decimal(text)) element = by_id(which, *number);
  if (element == nullptr) {
    zvsdk_list_element* found = nullptr;
    table_->list_get_element_by_string(list(which), text.c_str(), nullptr, &found);
    element = own(found);
  }
  if (element == nullptr) return std::nullopt;
  known_term known{};
  check(table_->element_get_id(element.get(), &known.id), "reading an id");
  check(table_->element_get_level(element.get(), &known.level), "reading a level");
  return known;
}

std::string term_lists::name_of(term_list which, uint32_t id) const {
  const element_owner element = by_id(which, id);
  const char* name = nullptr;
  if (element != nullptr)
    check(table_->element_get_display_string(element.get(), &name), "reading a name");
  return name != nullptr ? name : "";
}

term_node term_lists::node_of(zvsdk_list_element* element, uint32_t levels) const {
  const char* name = nullptr;
  check(table_->element_get_display_string(element, &name), "reading a name");
  term_node node{.id = 0, .name = name, .range = {}, .children = {}};
  check(table_->element_get_id(element, &node.id), "reading an id");
  term_range range{};
  if (table_->element_get_range(element, &range.lower, &range.upper) == 0) node.range = range;
  uint32_t count = 0;
  if (levels > 1) check(table_->element_get_child_count(element, &count), "counting children");
  for (uint32_t i = 0; i < count; ++i) {
    zvsdk_list_element* child = nullptr;
    check(table_->element_get_child(element, i, &child), "reading a list");
    node.children.push_back(node_of(own(child).get(), levels - 1));
  }
  return node;
}

std::vector<term_node> term_lists::tree(term_list which, uint32_t levels) const {
  std::vector<term_node> roots;
  zvsdk_list_element* root = nullptr;
  for (uint32_t i = 0; zvsdk_manager_list_get_root(list(which), i, &root) == 0; ++i)
    roots.push_back(node_of(own(root).get(), levels));
  zvsdk_manager_errorinfo_clear();  // of the end of the list
  return roots;
}

}  // namespace zvplaylist
