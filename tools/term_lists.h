// term_lists.h: the library's lists of genres, moods and the like, in the language of the session:
// finding elements by what a tag or column says, and whole lists as trees. Finding is constant
// time. To be destroyed before the session's manager.
#ifndef ZVPLAYLIST_TERM_LISTS_H
#define ZVPLAYLIST_TERM_LISTS_H

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "zvsdk_manager.h"

namespace zvplaylist {

enum class term_list { genres, moods, eras, tempos, origins, artist_types };
struct term_list_kind {
  term_list list;
  const char* name;  // as the command line has it
  const char* type;  // as the library has it
};
// In the order of term_list.
inline constexpr term_list_kind term_list_kinds[] = {
    {term_list::genres, "genres", "zvsdk_list_type_genres"},
    {term_list::moods, "moods", "zvsdk_list_type_moods"},
    {term_list::eras, "eras", "zvsdk_list_type_eras"},
    {term_list::tempos, "tempos", "zvsdk_list_type_tempos"},
    {term_list::origins, "origins", "zvsdk_list_type_origins"},
    {term_list::artist_types, "artist-types", "zvsdk_list_type_artist_types"}};
constexpr const char* name_of_list(term_list which) {
  return term_list_kinds[static_cast<size_t>(which)].name;
}

struct known_term {
  uint32_t id;
  uint32_t level;  // 1 is the coarsest
};

struct term_range {
  uint32_t lower, upper;  // both inclusive
};

struct term_node {
  uint32_t id;
  std::string name;
  std::optional<term_range> range;
  std::vector<term_node> children;
};

class term_lists {
 public:
  term_lists(zvsdk_sdkmanager* manager, const std::string& language);

  // By a name in any case or an id in decimal.
  std::optional<known_term> find(term_list which, const std::string& text) const;
  // The display text of an element, or nothing.
  std::string name_of(term_list which, uint32_t id) const;
  // The whole list, or as many levels of it.
  std::vector<term_node> tree(term_list which, uint32_t levels) const;

 private:
  // Gives back to the table that it came from.
  struct giver {
    const zvsdk_listmanager_interface* table;
    void operator()(zvsdk_list* list) const { table->list_release(list); }
    void operator()(zvsdk_list_element* element) const { table->element_release(element); }
  };
  using list_owner = std::unique_ptr<zvsdk_list, giver>;
  using element_owner = std::unique_ptr<zvsdk_list_element, giver>;

  zvsdk_list* list(term_list which) const { return lists_[static_cast<size_t>(which)].get(); }
  element_owner own(zvsdk_list_element* element) const { return {element, giver{table_}}; }
  element_owner by_id(term_list which, uint32_t id) const;
  term_node node_of(zvsdk_list_element* element, uint32_t levels) const;

  const zvsdk_listmanager_interface* table_;
  std::vector<list_owner> lists_;  // null: the data lack it, so it knows nothing
};

}  // namespace zvplaylist

#endif
