// Correlates tables and their rows.

#include "manager/correlates.h"

#include <algorithm>
#include <charconv>

#include "manager/guard.h"

namespace manager {
namespace {

constexpr std::string_view s_name_prefix = "zvsdk_";
constexpr std::string_view s_document_prefix = "correlates_";

uint32_t read_id(const std::string& key) {
  uint32_t id = 0;
  const char* end = key.data() + key.size();
  const auto [stop, fault] = std::from_chars(key.data(), end, id);
  if (fault != std::errc() || stop != end) refuse_document("\"" + key + "\" is no id");
  return id;
}

void require_object(const json_value& value) {
  if (!value.is(json_value::type::object)) refuse_document("\"rows\" must be objects by id");
}

}  // namespace

correlates_table::correlates_table(const json_value& document, lists& all_lists) {
  if (const json_value* score = document.find("default")) default_ = read_score(*score);
  const json_value* list = document.find("list");
  if (list != nullptr) {
    list_ = all_lists.definition_of(list->text);
    if (list_ == nullptr) refuse_document("\"list\" names no list");
    rule_ = read_correlates_rule(document, *list_);
  }
  const json_value* rows = document.find("rows");
  if (rows == nullptr && list == nullptr) refuse_document("\"rows\" is missing");
  if (rows != nullptr) read_rows(*rows);
  place_columns();
}

void correlates_table::read_rows(const json_value& rows) {
  require_object(rows);
  for (const auto& [id, scores] : rows.members) {
    require_object(scores);
    std::vector<cell>& made = rows_[read_id(id)];
    for (const auto& [other, score] : scores.members) {
      made.push_back({read_id(other), no_element, read_score(score)});
    }
  }
}

/* Without a list, each id that any row names has a column, which the rows share. */
void correlates_table::place_columns() {
  std::vector<uint32_t> ids;
  for (const auto& [id, cells] : rows_) {
    for (const cell& each : cells) ids.push_back(each.id);
  }
  std::sort(ids.begin(), ids.end());
  ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
  if (list_ == nullptr) ids_ = id_index(ids);
  column_count_ = list_ != nullptr ? list_->named_count() : ids.size();
  for (auto& [id, cells] : rows_) {
    for (cell& each : cells) each.column = column(each.id);
  }
}

std::optional<std::vector<correlates_score>> correlates_table::row(uint32_t id,
                                                                   int32_t lowest) const {
  std::vector<correlates_score> scores(column_count_, default_);
  const uint32_t from = rule_ != nullptr ? column(id) : no_element;
  const bool told = from != no_element && rule_->fill(from, scores);
  const auto own = rows_.find(id);
  if (!told && own == rows_.end()) return std::nullopt;
  if (own != rows_.end()) {
    for (const cell& each : own->second) {
      if (each.column < scores.size()) scores[each.column] = each.score;
    }
  }
  for (correlates_score& each : scores) {
    if (each < lowest) each = default_;
  }
  return scores;
}

correlates::correlates(handle_space& space, const data_files& files, lists& all_lists)
    : files_(files), lists_(all_lists), tables_(space), sets_(space) {}

correlates_slot* correlates::retrieve(std::string_view name) {
  if (!name.starts_with(s_name_prefix)) throw status_error(warn_not_found);
  std::lock_guard lock(mutex_);
  correlates_slot* table = load(std::string(name.substr(s_name_prefix.size())));
  if (table == nullptr) throw status_error(warn_not_found);
  table->revive();
  return table;
}

void correlates::load_all() {
  std::lock_guard lock(mutex_);
  for (const std::string& name : files_.own_names()) {
    if (name.starts_with(s_document_prefix)) load(name);
  }
}

correlates_slot* correlates::load(const std::string& document) {
  if (const auto found = loaded_.find(document); found != loaded_.end()) return found->second;
  std::unique_ptr<const correlates_table> table;
  if (const auto text = files_.read(document)) {
    naming_document(document, [&] {
      const json_value root = json_value::parse(*text);
      if (root.find("correlates") == nullptr) return;
      table = std::make_unique<const correlates_table>(root, lists_);
    });
  }
  if (table == nullptr) return nullptr;
  correlates_slot* made = loaded_.emplace(document, tables_.take()).first->second;
  made->table = std::move(table);
  return made;
}

correlates_set_slot* correlates::get_set(const correlates_slot& of, uint32_t id, int32_t lowest) {
  auto scores = of.table->row(id, lowest);
  if (!scores) throw status_error(warn_not_found);
  correlates_set_slot* set = sets_.take();
  set->table = of.table.get();
  set->scores = std::move(*scores);
  set->revive();
  return set;
}

zvsdk_status correlates::release(correlates_set_slot* set) noexcept {
  bool last = false;
  if (!set->release(last)) return error_invalid_arg;
  if (!last) return status_ok;
  set->scores = {};
  sets_.give_back(set);
  return status_ok;
}

}  // namespace manager
