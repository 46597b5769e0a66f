/*
 * correlates.h: tables that say how alike two ids of a list are, from -1000 to 1000. A table is
 * read from its document ("zvsdk_correlates_genre" from correlates_genre.json) when it is first
 * asked for and stays until the host stops. It has a rule over a list, rows of its own, or both; a
 * score of a row stands before that of the rule.
 *
 * A set is one row as seen by one caller, computed when it is asked for: one pass over the list.
 * Its scores are then found by id in constant time, with no lock and no allocation. It answers for
 * any id: what the table does not tell has the default score.
 */
#ifndef CORRELATES_H
#define CORRELATES_H

#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "manager/correlates_rule.h"
#include "manager/handle_space.h"
#include "manager/lists.h"
#include "manager/manager_status.h"

namespace manager {

class correlates_table {
 public:
  /* Throws status_error with a message. */
  correlates_table(const json_value& document, lists& all_lists);

  /* The row of an id by columns, or none. A score below `lowest` becomes the default one. */
  std::optional<std::vector<correlates_score>> row(uint32_t id, int32_t lowest) const;
  /* Where a row has the score of an id, or no_element. */
  uint32_t column(uint32_t id) const noexcept {
    return list_ != nullptr ? list_->find_named(id) : ids_.find(id);
  }
  int32_t default_score() const { return default_; }

 private:
  struct cell {
    uint32_t id;
    uint32_t column;
    correlates_score score;
  };

  void read_rows(const json_value& rows);
  void place_columns();

  correlates_score default_ = 0;
  std::shared_ptr<const list_definition> list_;  // whose elements are the columns, or none
  std::unique_ptr<const correlates_rule> rule_;
  id_index ids_;  // the columns without a list
  size_t column_count_ = 0;
  std::unordered_map<uint32_t, std::vector<cell>> rows_;
};

struct correlates_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::correlates;

  std::unique_ptr<const correlates_table> table;
};

struct correlates_set_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::correlates_set;

  const correlates_table* table = nullptr;
  std::vector<correlates_score> scores;

  int32_t score(uint32_t id) const noexcept {
    const uint32_t column = table->column(id);
    return column < scores.size() ? scores[column] : table->default_score();
  }
};

class correlates {
 public:
  correlates(handle_space& space, const data_files& files, lists& all_lists);

  /* The table with a new reference. Throws "not found". */
  correlates_slot* retrieve(std::string_view name);
  /* Reads the application's own tables, so that a fault in them shows. */
  void load_all();
  /* The row of an id with one reference. Throws "not found". */
  correlates_set_slot* get_set(const correlates_slot& of, uint32_t id, int32_t lowest);
  zvsdk_status release(correlates_set_slot* set) noexcept;

 private:
  correlates_slot* load(const std::string& document);

  const data_files& files_;
  lists& lists_;
  slot_pool<correlates_slot> tables_;
  slot_pool<correlates_set_slot> sets_;
  std::mutex mutex_;
  std::map<std::string, correlates_slot*> loaded_;  // guarded by mutex_
};

}  // namespace manager

#endif
