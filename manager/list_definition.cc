// Reads and checks a list document.

#include "manager/list_definition.h"

#include <algorithm>

namespace manager {
namespace {

constexpr uint32_t s_level_limit = 16;
constexpr uint64_t s_value_limit = 100000;  // width of the range of plain values

const json_value& member(const json_value& object, std::string_view key, json_value::type kind) {
  const json_value* found = object.find(key);
  if (found == nullptr || !found->is(kind)) {
    refuse_document("\"" + std::string(key) + "\" is missing or of the wrong kind");
  }
  return *found;
}

uint32_t number(const json_value& value, const std::string& of) {
  if (!value.is(json_value::type::integer) || value.number < 0 || value.number >= INT32_MAX) {
    refuse_document(of + " must be a whole number from 0 to 2147483646");
  }
  return static_cast<uint32_t>(value.number);
}

std::string named(uint32_t id) {
  return "element " + std::to_string(id) + ": ";
}

}  // namespace

/* An element that was seen but not yet added, because its level is not complete. */
struct list_definition::pending {
  const json_value* source;
  uint32_t parent;
  uint32_t level;
};

bool list_definition::describes_list(const json_value& document) {
  return document.find("list_type") != nullptr;
}

list_definition::list_definition(const json_value& document) {
  read_head(document);
  read_elements(member(document, "elements", json_value::type::array));
  named_count_ = elements_.size();
  index_ids();
  if (values_ != values::none) index_values();
}

void list_definition::read_head(const json_value& document) {
  type_ = member(document, "list_type", json_value::type::text).text;
  for (const json_value& each : member(document, "languages", json_value::type::array).items) {
    if (!each.is(json_value::type::text) || language(each.text) != no_element) {
      refuse_document("\"languages\" must be different texts");
    }
    languages_.push_back(each.text);
  }
  if (languages_.empty()) refuse_document("\"languages\" is empty");
  texts_.resize(languages_.size());
  const json_value* addressed = document.find("values");
  if (addressed == nullptr) return;
  if (addressed->text != "keep" && addressed->text != "element") {
    refuse_document("\"values\" must be \"keep\" or \"element\"");
  }
  values_ = addressed->text == "keep" ? values::keep : values::element;
}

void list_definition::read_elements(const json_value& top) {
  std::vector<pending> queue;
  for (const json_value& each : top.items) queue.push_back({&each, no_element, 1});
  for (size_t next = 0; next < queue.size(); ++next) {
    const pending current = queue[next];
    add_element(current);
    const json_value* children = current.source->find("children");
    if (children == nullptr) continue;
    if (!children->is(json_value::type::array)) {
      refuse_document(named(elements_[next].id) + "\"children\" must be an array");
    }
    element& parent = elements_[next];
    parent.first_child = static_cast<uint32_t>(queue.size());
    parent.child_count = static_cast<uint32_t>(children->items.size());
    for (const json_value& each : children->items) {
      queue.push_back({&each, static_cast<uint32_t>(next), current.level + 1});
    }
  }
  check_siblings(0, static_cast<uint32_t>(top.items.size()));
  for (const element& each : elements_) check_siblings(each.first_child, each.child_count);
}

void list_definition::add_element(const pending& from) {
  if (!from.source->is(json_value::type::object)) refuse_document("an element is no object");
  element made{};
  made.id = made.match_id = number(member(*from.source, "id", json_value::type::integer), "an id");
  made.level = from.level;
  made.parent = from.parent;
  made.text = static_cast<uint32_t>(elements_.size());
  if (made.id == 0) refuse_document("an id must not be 0");
  if (made.level > s_level_limit) refuse_document(named(made.id) + "too many levels");
  read_texts(from.source->find("text"), made);
  read_further_texts(from.source->find("also"), made);
  read_plane_point(from.source->find("plane"), made);
  read_range(from.source->find("range"), made);
  elements_.push_back(made);
}

void list_definition::read_texts(const json_value* text, const element& of) {
  for (size_t i = 0; i < languages_.size(); ++i) {
    const json_value* in_language =
        text != nullptr && text->is(json_value::type::object) ? text->find(languages_[i]) : text;
    if (in_language == nullptr || !in_language->is(json_value::type::text) ||
        in_language->text.empty()) {
      refuse_document(named(of.id) + "no text in \"" + languages_[i] + "\"");
    }
    texts_[i].push_back(in_language->text);
  }
}

void list_definition::read_further_texts(const json_value* also, const element& of) {
  if (also == nullptr) return;
  bool fits = also->is(json_value::type::array);
  for (const json_value& each : also->items) {
    fits &= each.is(json_value::type::text) && !each.text.empty();
    further_texts_.push_back({each.text, of.text});
  }
  if (!fits) refuse_document(named(of.id) + "\"also\" must be an array of texts");
}

void list_definition::read_plane_point(const json_value* plane, const element& of) {
  if (plane == nullptr) return;
  const auto coordinate = [&](size_t i) {
    return i < plane->items.size() ? plane->items[i].as_real().value_or(-1) : -1;
  };
  const plane_point point{of.text, of.id, of.level, coordinate(0), coordinate(1)};
  const auto fits = [](double each) { return each >= 0 && each <= 1; };
  if (plane->items.size() != 2 || !fits(point.valence) || !fits(point.energy)) {
    refuse_document(named(of.id) + "\"plane\" must be two numbers from 0 to 1");
  }
  plane_points_.push_back(point);
}

void list_definition::read_range(const json_value* range, element& of) {
  of.has_range = range != nullptr;
  if (!of.has_range) {
    if (values_ != values::none) refuse_document(named(of.id) + "the range is missing");
    return;
  }
  if (range->items.size() != 2) refuse_document(named(of.id) + "a range is two numbers");
  of.lower = number(range->items[0], named(of.id) + "a bound");
  of.upper = number(range->items[1], named(of.id) + "a bound");
  if (of.lower > of.upper) refuse_document(named(of.id) + "the range is upside down");
  if (of.parent == no_element) return;
  const element& parent = elements_[of.parent];
  if (of.lower < parent.lower || of.upper > parent.upper) {
    refuse_document(named(of.id) + "the range does not lie within the parent's");
  }
}

void list_definition::check_siblings(uint32_t first, uint32_t count) const {
  for (uint32_t i = first + 1; i < first + count; ++i) {
    const element& before = elements_[i - 1];
    const element& after = elements_[i];
    if (before.has_range && after.has_range && after.lower <= before.upper) {
      refuse_document(named(after.id) + "the range does not follow its neighbour's");
    }
  }
}

void list_definition::index_ids() {
  std::vector<uint32_t> ids;
  ids.reserve(elements_.size());
  for (const element& each : elements_) ids.push_back(each.id);
  by_id_ = id_index(ids);
  for (uint32_t i = 0; i < ids.size(); ++i) {
    if (by_id_.find(ids[i]) != i) refuse_document(named(ids[i]) + "the id is given twice");
  }
}

/* Levels stand in order, so a finer element overwrites what its ancestors claimed. */
void list_definition::index_values() {
  uint32_t last = 0;
  first_value_ = UINT32_MAX;
  for (const element& each : elements_) {
    first_value_ = std::min(first_value_, each.lower);
    last = std::max(last, each.upper);
  }
  if (elements_.empty() || uint64_t{last} - first_value_ >= s_value_limit) {
    refuse_document("the ranges are empty or too wide to be addressed by value");
  }
  std::vector<uint32_t> finest(last - first_value_ + 1, no_element);
  for (uint32_t i = 0; i < named_count_; ++i) {
    const element& each = elements_[i];
    const bool stands_for_itself =
        values_ == values::element && each.lower == each.id && each.upper == each.id;
    if (each.id >= first_value_ && each.id <= last && !stands_for_itself) {
      refuse_document(named(each.id) + "the id could be taken for a value");
    }
    std::fill(finest.begin() + (each.lower - first_value_),
              finest.begin() + (each.upper - first_value_) + 1, i);
  }
  by_value_.resize(finest.size(), no_element);
  for (uint32_t i = 0; i < finest.size(); ++i) add_value(i, finest[i]);
}

void list_definition::add_value(uint32_t value, uint32_t finest) {
  by_value_[value] = finest;
  if (finest == no_element || values_ != values::keep) return;
  by_value_[value] = static_cast<uint32_t>(elements_.size());
  for (uint32_t band = finest; band != no_element; band = elements_[band].parent) {
    element kept = elements_[band];
    kept.id = first_value_ + value;
    elements_.push_back(kept);
  }
}

uint32_t list_definition::language(std::string_view code) const {
  const auto found = std::find(languages_.begin(), languages_.end(), code);
  return found != languages_.end() ? static_cast<uint32_t>(found - languages_.begin()) : no_element;
}

uint32_t list_definition::lift(uint32_t index, uint32_t level) const {
  if (level == 0 || elements_[index].level <= level) return index;
  // The elements of one plain value stand side by side, the finest first.
  if (index >= named_count_) return index + (elements_[index].level - level);
  while (elements_[index].level > level) index = elements_[index].parent;
  return index;
}

}  // namespace manager
