/*
 * correlates.h: tables that say how alike two ids of a list are, from -1000 to 1000. A table is
 * read from its document ("zvsdk_correlates_genre" from correlates_genre.json) when it is first
 * asked for and stays until the host stops. A set is one row as seen by one caller.
 *
 * A row answers for any id: what its document leaves out has the table's default score.
 */
#ifndef CORRELATES_H
#define CORRELATES_H

#include <map>
#include <memory>
#include <mutex>
#include <unordered_map>

#include "manager/data_files.h"
#include "manager/handle_space.h"
#include "manager/json_document.h"
#include "manager/manager_status.h"

namespace manager {

class correlates_table {
 public:
  using row = std::unordered_map<uint32_t, int32_t>;

  /* Throws status_error with a message. */
  explicit correlates_table(const json_value& document);

  const row* find(uint32_t id) const;
  int32_t default_score() const { return m_default; }

 private:
  int32_t m_default = 0;
  std::unordered_map<uint32_t, row> m_rows;
};

struct correlates_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::correlates;

  std::unique_ptr<const correlates_table> table;
};

struct correlates_set_slot : handle_slot {
  static constexpr handle_kind kind = handle_kind::correlates_set;

  const correlates_table* table = nullptr;
  const correlates_table::row* row = nullptr;
  int32_t lowest = 0;

  int32_t score(uint32_t id) const;
};

class correlates {
 public:
  correlates(handle_space& space, const data_files& files);

  /* The table with a new reference. Throws "not found". */
  correlates_slot* retrieve(std::string_view name);
  /* The row of an id with one reference. Throws "not found". */
  correlates_set_slot* get_set(const correlates_slot& of, uint32_t id, int32_t lowest);
  zvsdk_status release(correlates_set_slot* set) noexcept;

 private:
  correlates_slot* load(const std::string& document);

  const data_files& m_files;
  slot_pool<correlates_slot> m_tables;
  slot_pool<correlates_set_slot> m_sets;
  std::mutex m_mutex;
  std::map<std::string, correlates_slot*> m_loaded;  // guarded by m_mutex
};

}  // namespace manager

#endif
