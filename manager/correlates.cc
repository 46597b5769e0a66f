// Correlates tables and their rows.

#include "manager/correlates.h"

#include <charconv>

#include "manager/guard.h"

namespace manager {

namespace {

constexpr std::string_view s_name_prefix = "zvsdk_";
constexpr int32_t s_best = 1000;

int32_t read_score(const json_value& value) {
  if (!value.is(json_value::type::integer) || value.number < -s_best || value.number > s_best) {
    refuse_document("a score is a whole number from -1000 to 1000");
  }
  return static_cast<int32_t>(value.number);
}

uint32_t read_id(const std::string& key) {
  uint32_t id = 0;
  const char* end = key.data() + key.size();
  const auto [stop, fault] = std::from_chars(key.data(), end, id);
  if (fault != std::errc() || stop != end) refuse_document("\"" + key + "\" is no id");
  return id;
}

}  // namespace

correlates_table::correlates_table(const json_value& document) {
  if (const json_value* score = document.find("default")) m_default = read_score(*score);
  const json_value* rows = document.find("rows");
  if (rows == nullptr) refuse_document("\"rows\" is missing");
  for (const auto& [id, scores] : rows->members) {
    row& made = m_rows[read_id(id)];
    for (const auto& [other, score] : scores.members) made[read_id(other)] = read_score(score);
  }
}

const correlates_table::row* correlates_table::find(uint32_t id) const {
  const auto found = m_rows.find(id);
  return found != m_rows.end() ? &found->second : nullptr;
}

int32_t correlates_set_slot::score(uint32_t id) const {
  const auto found = row->find(id);
  const bool known = found != row->end() && found->second >= lowest;
  return known ? found->second : table->default_score();
}

correlates::correlates(handle_space& space, const data_files& files)
    : m_files(files), m_tables(space), m_sets(space) {}

correlates_slot* correlates::retrieve(std::string_view name) {
  if (!name.starts_with(s_name_prefix)) throw status_error(warn_not_found);
  const std::string document(name.substr(s_name_prefix.size()));
  std::lock_guard lock(m_mutex);
  const auto found = m_loaded.find(document);
  correlates_slot* table = found != m_loaded.end() ? found->second : load(document);
  table->revive();
  return table;
}

correlates_slot* correlates::load(const std::string& document) {
  const auto text = m_files.read(document);
  if (!text) throw status_error(warn_not_found);
  const json_value root = json_value::parse(*text);
  if (root.find("correlates") == nullptr) throw status_error(warn_not_found);
  auto table = std::make_unique<const correlates_table>(root);
  const auto place = m_loaded.emplace(document, m_tables.take()).first;
  place->second->table = std::move(table);
  return place->second;
}

correlates_set_slot* correlates::get_set(const correlates_slot& of, uint32_t id, int32_t lowest) {
  const correlates_table::row* row = of.table->find(id);
  if (row == nullptr) throw status_error(warn_not_found);
  correlates_set_slot* set = m_sets.take();
  set->table = of.table.get();
  set->row = row;
  set->lowest = lowest;
  set->revive();
  return set;
}

zvsdk_status correlates::release(correlates_set_slot* set) noexcept {
  bool last = false;
  if (!set->release(last)) return error_invalid_arg;
  if (last) m_sets.give_back(set);
  return status_ok;
}

}  // namespace manager
