// The user of the table of grid sources.
#include "tools/grid.h"

#include <functional>

#include "tools/library.h"

namespace zvplaylist {
namespace {

using source_table = zvsdk_vibegrid_datasource_provider;

struct cell_release {
  const source_table* source;
  void operator()(zvsdk_vibegrid_transaction* cell) const { source->transaction_release(cell); }
};
using unique_cell = std::unique_ptr<zvsdk_vibegrid_transaction, cell_release>;

// The question has to stay as long as the cell.
unique_cell ask(const source_table* source, void* context, zvsdk_user* user,
                const grid_question& question) {
  zvsdk_vibegrid_transaction* made = nullptr;
  check(source->transaction_create(nullptr, context, &made, user, nullptr, nullptr),
        "asking a collection");
  unique_cell cell(made, {source});
  for (const grid_filter& each : question)
    check(source->transaction_filter_create(
              made, each.list_type, each.value.c_str(),
              each.include ? ZVSDK_VIBEGRID_INCLUDE : ZVSDK_VIBEGRID_EXCLUDE, 1),
          "adding a filter");
  return cell;
}

using cell_use = std::function<void(const source_table*, zvsdk_vibegrid_transaction*)>;

void ask_each_source(const grid_question& question, const cell_use& use) {
  zvsdk_user* made = nullptr;
  check(zvsdk_manager_user_create("grid", &made), "making a user");
  const unique_user user(made);
  const void* table = nullptr;
  void* context = nullptr;
  for (uint32_t i = 0;
       zvsdk_manager_provider_get(ZVSDK_VIBEGRID_INTERFACE, i, &table, &context) == 0; ++i) {
    const auto* source = static_cast<const source_table*>(table);
    use(source, ask(source, context, user.get(), question).get());
  }
  zvsdk_manager_errorinfo_clear();
}

}  // namespace

std::vector<std::string> find_in_grid(const grid_question& question) {
  std::vector<std::string> found;
  ask_each_source(question, [&](const source_table* source, zvsdk_vibegrid_transaction* cell) {
    check(source->transaction_find(cell), "searching a collection");
    const char* ident = nullptr;
    const char* collection = nullptr;
    for (uint32_t i = 0; source->transaction_result_enum(cell, i, &ident, &collection) == 0; ++i)
      found.emplace_back(ident);
  });
  return found;
}

uint64_t estimate_in_grid(const grid_question& question) {
  uint64_t sum = 0;
  ask_each_source(question, [&](const source_table* source, zvsdk_vibegrid_transaction* cell) {
    uint32_t count = 0;
    check(source->transaction_find_estimate(cell, &count), "counting tracks");
    sum += count;
  });
  return sum;
}

}  // namespace zvplaylist
