/*
 * lists.h: lists as handles: a definition in one language, with a slot for the list and one for
 * each element.
 *
 * A list is built when it is first asked for and stays until the host stops, so retrieving it again
 * and addressing elements allocates nothing. The references of a list and of its elements are
 * counted all the same: what nobody holds is no handle.
 */
#ifndef LISTS_H
#define LISTS_H

#include <map>
#include <memory>
#include <shared_mutex>

#include "manager/data_files.h"
#include "manager/handle_space.h"
#include "manager/list_definition.h"
#include "manager/manager_status.h"

namespace manager {

class localized_list;

struct list_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::list;

  localized_list* list = nullptr;
};

struct list_element_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::list_element;

  uint32_t index = 0;
  localized_list* list = nullptr;

  inline const list_definition::element& data() const;
};

using list_element_pool = slot_pool<list_element_slot>;

/* One list in one language. */
class localized_list {
 public:
  localized_list(std::shared_ptr<const list_definition> definition, uint32_t language,
                 slot_pool<list_slot>& lists, list_element_pool& elements);
  /* Gives back the slots, also of a list that was filled only in part. */
  ~localized_list();
  localized_list(const localized_list&) = delete;
  localized_list& operator=(const localized_list&) = delete;

  /* Indexes the texts and takes the slots, once, before anything else is asked for. */
  void fill();

  const list_definition& definition() const { return *definition_; }
  list_slot* handle() { return handle_; }
  const char* text(const list_definition::element& of) const {
    return definition_->text(language_, of).c_str();
  }

  /* Elements with a new reference, or null. */
  list_element_slot* by_id(uint32_t id, uint32_t level) noexcept;
  list_element_slot* by_text(const char* text);
  list_element_slot* at(uint32_t index) noexcept;
  /* The id of the element with this text, or 0. */
  uint32_t id_by_text(const char* text) const;

 private:
  uint32_t find_text(const char* text) const;

  slot_pool<list_slot>& list_slots_;
  list_element_pool& element_slots_;
  std::shared_ptr<const list_definition> definition_;
  uint32_t language_;
  list_slot* handle_ = nullptr;
  std::vector<list_element_slot*> elements_;
  std::unordered_map<std::string, uint32_t> by_text_;  // case removed
};

inline const list_definition::element& list_element_slot::data() const {
  return list->definition().elements()[index];
}

/* All lists of the host. Retrieval of a list that was built already takes a shared lock. */
class lists {
 public:
  lists(handle_space& space, const data_files& files);

  /* The list with a new reference. Throws "not found" or "no locale". */
  list_slot* retrieve(std::string_view list_type, std::string_view language);
  /* The list itself, or null when there is none of that type and language. */
  localized_list* lookup(std::string_view list_type, std::string_view language);
  /* The list of a document in no language, or null. */
  std::shared_ptr<const list_definition> definition_of(const std::string& document);
  /* Builds the application's own lists in a language, so that a fault in them shows. Built-in ones
   * wait until they are asked for. Throws "no locale" when no list has texts in the language. */
  void load_all(std::string_view language);

 private:
  using key = std::pair<std::string, std::string>;  // document, language

  /* The outcome "ok", "not found" or "no locale" with the list. */
  std::pair<zvsdk_status, localized_list*> get(std::string_view list_type,
                                               std::string_view language);
  std::pair<zvsdk_status, localized_list*> build(const key& wanted);
  const std::shared_ptr<const list_definition>& definition(const std::string& document);

  const data_files& files_;
  slot_pool<list_slot> list_slots_;
  list_element_pool element_slots_;
  std::shared_mutex mutex_;  // guards what follows
  std::map<std::string, std::shared_ptr<const list_definition>> definitions_;
  std::map<key, std::unique_ptr<localized_list>> lists_;
};

/* "eng", "ger", "fre" for the two- and three-letter codes of these languages in any case; others
 * without their case. */
std::string language_code(const char* given);

}  // namespace manager

#endif
