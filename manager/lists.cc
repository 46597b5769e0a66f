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
    : list_slots_(lists),
      element_slots_(elements),
      definition_(std::move(definition)),
      language_(language) {}

localized_list::~localized_list() {
  for (list_element_slot* each : elements_) element_slots_.give_back(each);
  if (handle_ != nullptr) list_slots_.give_back(handle_);
}

void localized_list::fill() {
  const auto& all = definition_->elements();
  // Coarser elements stand first and keep their text when a finer one has the same.
  for (uint32_t i = 0; i < definition_->named_count(); ++i) {
    by_text_.emplace(fold_case(text(all[i])), i);
  }
  for (const auto& further : definition_->further_texts()) {
    by_text_.emplace(fold_case(further.text), further.index);
  }
  elements_.reserve(all.size());
  for (uint32_t i = 0; i < all.size(); ++i) {
    elements_.push_back(element_slots_.take());
    elements_[i]->index = i;
    elements_[i]->list = this;
  }
  handle_ = list_slots_.take();
  handle_->list = this;
}

list_element_slot* localized_list::at(uint32_t index) noexcept {
  elements_[index]->revive();
  return elements_[index];
}

list_element_slot* localized_list::by_id(uint32_t id, uint32_t level) noexcept {
  const uint32_t found = definition_->find(id);
  return found != no_element ? at(definition_->lift(found, level)) : nullptr;
}

uint32_t localized_list::find_text(const char* text) const {
  const auto found = by_text_.find(fold_case(text));
  return found != by_text_.end() ? found->second : no_element;
}

list_element_slot* localized_list::by_text(const char* text) {
  const uint32_t index = find_text(text);
  return index != no_element ? at(index) : nullptr;
}

uint32_t localized_list::id_by_text(const char* text) const {
  const uint32_t index = find_text(text);
  return index != no_element ? definition_->elements()[index].id : 0;
}

lists::lists(handle_space& space, const data_files& files)
    : files_(files), list_slots_(space), element_slots_(space) {}

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
    std::shared_lock lock(mutex_);
    if (const auto found = lists_.find(wanted); found != lists_.end()) {
      return {status_ok, found->second.get()};
    }
    const auto absent = definitions_.find(wanted.first);
    if (absent != definitions_.end() && absent->second == nullptr) return {warn_not_found, nullptr};
  }
  std::lock_guard lock(mutex_);
  return build(wanted);
}

void lists::load_all(std::string_view language) {
  std::lock_guard lock(mutex_);
  bool any = false;
  const auto built = [&](std::string_view name) {
    return build({std::string(name), std::string(language)}).second != nullptr;
  };
  for (const std::string& name : files_.own_names()) any |= built(name);
  for (size_t i = 0; !any && i < builtin_file_count; ++i) any = built(builtin_files[i].name);
  if (any) return;
  throw status_error(error_no_locale, "no list has texts in \"" + std::string(language) + "\"");
}

std::shared_ptr<const list_definition> lists::definition_of(const std::string& document) {
  std::lock_guard lock(mutex_);
  return definition(document);
}

std::pair<zvsdk_status, localized_list*> lists::build(const key& wanted) {
  if (const auto found = lists_.find(wanted); found != lists_.end()) {
    return {status_ok, found->second.get()};
  }
  const auto& defined = definition(wanted.first);
  if (defined == nullptr) return {warn_not_found, nullptr};
  const uint32_t language = defined->language(wanted.second);
  if (language == no_element) return {error_no_locale, nullptr};
  auto made = std::make_unique<localized_list>(defined, language, list_slots_, element_slots_);
  made->fill();
  return {status_ok, lists_.emplace(wanted, std::move(made)).first->second.get()};
}

/* Null when there is no such document or when it is no list. */
const std::shared_ptr<const list_definition>& lists::definition(const std::string& document) {
  if (const auto found = definitions_.find(document); found != definitions_.end()) {
    return found->second;
  }
  std::shared_ptr<const list_definition> made;
  if (const auto text = files_.read(document)) {
    made = naming_document(document, [&]() -> std::shared_ptr<const list_definition> {
      const json_value root = json_value::parse(*text);
      if (!list_definition::describes_list(root)) return nullptr;
      return std::make_shared<const list_definition>(root);
    });
  }
  return definitions_.emplace(document, std::move(made)).first->second;
}

}  // namespace manager
