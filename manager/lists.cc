// Lists in their languages, built on demand from the data documents.

#include "manager/lists.h"

#include "manager/guard.h"
#include "manager/text_fold.h"

namespace manager {

namespace {

constexpr std::string_view s_type_prefix = "zvsdk_list_type_";

struct language_alias {
  std::string_view given;
  std::string_view code;
};

constexpr language_alias s_language_aliases[] = {
    {"en", "eng"}, {"de", "ger"}, {"deu", "ger"}, {"fr", "fre"}, {"fra", "fre"},
};

}  // namespace

std::string language_code(const char* given) {
  std::string folded = fold_case(given);
  for (const language_alias& alias : s_language_aliases) {
    if (alias.given == folded) return std::string(alias.code);
  }
  return folded;
}

localized_list::localized_list(std::shared_ptr<const list_definition> definition, uint32_t language,
                               slot_pool<list_slot>& lists, list_element_pool& elements)
    : m_list_slots(lists),
      m_element_slots(elements),
      m_definition(std::move(definition)),
      m_language(language) {}

localized_list::~localized_list() {
  for (list_element_slot* each : m_elements) m_element_slots.give_back(each);
  if (m_handle != nullptr) m_list_slots.give_back(m_handle);
}

void localized_list::fill() {
  const auto& all = m_definition->elements();
  // Coarser elements stand first and keep their text when a finer one has the same.
  for (uint32_t i = 0; i < m_definition->named_count(); ++i) {
    m_by_text.emplace(fold_case(text(all[i])), i);
  }
  for (const auto& further : m_definition->further_texts()) {
    m_by_text.emplace(fold_case(further.text), further.index);
  }
  m_elements.reserve(all.size());
  for (uint32_t i = 0; i < all.size(); ++i) {
    m_elements.push_back(m_element_slots.take());
    m_elements[i]->index = i;
    m_elements[i]->list = this;
  }
  m_handle = m_list_slots.take();
  m_handle->list = this;
}

list_element_slot* localized_list::at(uint32_t index) noexcept {
  m_elements[index]->revive();
  return m_elements[index];
}

list_element_slot* localized_list::by_id(uint32_t id, uint32_t level) noexcept {
  const uint32_t found = m_definition->find(id);
  return found != no_element ? at(m_definition->lift(found, level)) : nullptr;
}

uint32_t localized_list::find_text(const char* text) const {
  const auto found = m_by_text.find(fold_case(text));
  return found != m_by_text.end() ? found->second : no_element;
}

list_element_slot* localized_list::by_text(const char* text) {
  const uint32_t index = find_text(text);
  return index != no_element ? at(index) : nullptr;
}

uint32_t localized_list::id_by_text(const char* text) const {
  const uint32_t index = find_text(text);
  return index != no_element ? m_definition->elements()[index].id : 0;
}

lists::lists(handle_space& space, const data_files& files)
    : m_files(files), m_list_slots(space), m_element_slots(space) {}

list_slot* lists::retrieve(std::string_view list_type, std::string_view language) {
  const auto [status, list] = get(list_type, language);
  if (list == nullptr) throw status_error(status);
  list->handle()->revive();
  return list->handle();
}

localized_list* lists::lookup(std::string_view list_type, std::string_view language) {
  return get(list_type, language).second;
}

std::pair<zvsdk_status, localized_list*> lists::get(std::string_view list_type,
                                                    std::string_view language) {
  if (!list_type.starts_with(s_type_prefix)) return {warn_not_found, nullptr};
  const key wanted(list_type.substr(s_type_prefix.size()), language);
  {
    std::shared_lock lock(m_mutex);
    if (const auto found = m_lists.find(wanted); found != m_lists.end()) {
      return {status_ok, found->second.get()};
    }
    const auto absent = m_definitions.find(wanted.first);
    if (absent != m_definitions.end() && absent->second == nullptr)
      return {warn_not_found, nullptr};
  }
  std::lock_guard lock(m_mutex);
  return build(wanted);
}

void lists::load_all(std::string_view language) {
  std::lock_guard lock(m_mutex);
  bool any = false;
  const auto built = [&](std::string_view name) {
    return build({std::string(name), std::string(language)}).second != nullptr;
  };
  for (const std::string& name : m_files.own_names()) any |= built(name);
  for (size_t i = 0; !any && i < builtin_file_count; ++i) any = built(builtin_files[i].name);
  if (any) return;
  throw status_error(error_no_locale, "no list has texts in \"" + std::string(language) + "\"");
}

std::shared_ptr<const list_definition> lists::definition_of(const std::string& document) {
  std::lock_guard lock(m_mutex);
  return definition(document);
}

std::pair<zvsdk_status, localized_list*> lists::build(const key& wanted) {
  if (const auto found = m_lists.find(wanted); found != m_lists.end()) {
    return {status_ok, found->second.get()};
  }
  const auto& defined = definition(wanted.first);
  if (defined == nullptr) return {warn_not_found, nullptr};
  const uint32_t language = defined->language(wanted.second);
  if (language == no_element) return {error_no_locale, nullptr};
  auto made = std::make_unique<localized_list>(defined, language, m_list_slots, m_element_slots);
  made->fill();
  return {status_ok, m_lists.emplace(wanted, std::move(made)).first->second.get()};
}

/* Null when there is no such document or when it is no list. */
const std::shared_ptr<const list_definition>& lists::definition(const std::string& document) {
  if (const auto found = m_definitions.find(document); found != m_definitions.end()) {
    return found->second;
  }
  std::shared_ptr<const list_definition> made;
  if (const auto text = m_files.read(document)) {
    made = naming_document(document, [&]() -> std::shared_ptr<const list_definition> {
      const json_value root = json_value::parse(*text);
      if (!list_definition::describes_list(root)) return nullptr;
      return std::make_shared<const list_definition>(root);
    });
  }
  return m_definitions.emplace(document, std::move(made)).first->second;
}

}  // namespace manager
