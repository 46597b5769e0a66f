/*
 * list_definition.h: one list as its document gives it, whatever the language: a hierarchy of
 * elements with ids, ranges and texts.
 *
 * Elements stand in one array, level by level, so that children lie side by side. A list may also
 * be addressed by a plain value that lies in a range ("values" in the document):
 *
 *   "keep"    the value stays what collections store. For each value and each level there is an
 *             element that is its band but carries the value as id (a tempo of 122 stays 122).
 *   "element" the value addresses the finest element around it and takes its id (a year its era).
 *             An id within the ranges is allowed where the element stands for that value alone.
 *
 * Beside its text in each language, an element may have further texts that find it in all of them
 * ("also": codes, other spellings), and a point on the plane of valence and energy ("plane").
 *
 * Looking up an id, lifting an element to a level and going to parents and children take constant
 * time. Immutable once parsed.
 */
#ifndef LIST_DEFINITION_H
#define LIST_DEFINITION_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "manager/id_index.h"
#include "manager/json_document.h"

namespace manager {

class list_definition {
 public:
  struct element {
    uint32_t id;        // what collections store
    uint32_t match_id;  // what names the element; differs for a plain value
    uint32_t level;     // 1 is the coarsest
    uint32_t parent;    // index or no_element
    uint32_t first_child;
    uint32_t child_count;
    uint32_t lower;
    uint32_t upper;
    uint32_t text;  // index of its text in every language
    bool has_range;
  };
  /* A text that finds an element and is never shown. */
  struct further_text {
    std::string text;
    uint32_t index;  // of the element
  };
  /* Where an element lies on the plane; both coordinates from 0 to 1. */
  struct plane_point {
    uint32_t index;  // of the element
    uint32_t id;
    uint32_t level;
    double valence;
    double energy;
  };

  /* Throws status_error with a message that names the element at fault. */
  explicit list_definition(const json_value& document);

  /* True when the document is a list at all and not, say, a correlates table. */
  static bool describes_list(const json_value& document);

  const std::string& type() const { return type_; }
  const std::vector<element>& elements() const { return elements_; }
  /* Elements that the document names; those for plain values stand behind them. */
  size_t named_count() const { return named_count_; }
  const std::vector<std::string>& languages() const { return languages_; }
  /* Index of a language, or no_element. */
  uint32_t language(std::string_view code) const;
  const std::string& text(uint32_t language, const element& of) const {
    return texts_[language][of.text];
  }

  const std::vector<further_text>& further_texts() const { return further_texts_; }
  /* The elements that have a point, in order, so those of level 1 first. */
  const std::vector<plane_point>& plane_points() const { return plane_points_; }

  /* The element that an id or plain value addresses, or no_element. */
  uint32_t find(uint32_t id) const noexcept {
    if (const uint32_t named = by_id_.find(id); named != no_element) return named;
    const uint32_t value = id - first_value_;
    return value < by_value_.size() ? by_value_[value] : no_element;
  }
  /* The same; for a value that keeps its own id the element that names it. */
  uint32_t find_named(uint32_t id) const noexcept {
    const uint32_t found = find(id);
    return found < named_count_ || found == no_element ? found : elements_[found].text;
  }
  /* Its ancestor at a level; the element itself when it is coarser, and for level 0. */
  uint32_t lift(uint32_t index, uint32_t level) const;

 private:
  enum class values { none, keep, element };
  struct pending;

  void read_head(const json_value& document);
  void read_elements(const json_value& top);
  void add_element(const pending& from);
  void read_texts(const json_value* text, const element& of);
  void read_further_texts(const json_value* also, const element& of);
  void read_plane_point(const json_value* plane, const element& of);
  void read_range(const json_value* range, element& of);
  void index_ids();
  void check_siblings(uint32_t first, uint32_t count) const;
  void index_values();
  void add_value(uint32_t value, uint32_t finest);

  std::string type_;
  std::vector<std::string> languages_;
  std::vector<std::vector<std::string>> texts_;  // by language, then by element::text
  values values_ = values::none;
  std::vector<element> elements_;
  size_t named_count_ = 0;
  std::vector<further_text> further_texts_;
  std::vector<plane_point> plane_points_;
  id_index by_id_;
  uint32_t first_value_ = 0;
  std::vector<uint32_t> by_value_;  // from first_value_ on
};

}  // namespace manager

#endif
