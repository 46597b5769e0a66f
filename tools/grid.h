// grid.h: asks all collections of the session for the media of a cell, through the sources that the
// library offers to grids.
#ifndef ZVPLAYLIST_GRID_H
#define ZVPLAYLIST_GRID_H

#include <string>
#include <vector>

#include "zvsdk_vibegrid.h"

namespace zvplaylist {

struct grid_filter {
  const char* list_type;
  std::string value;  // an id in decimal
  bool include = true;
};
// The first is the cell (zvsdk_vibegrid.h tells how the others are joined).
using grid_question = std::vector<grid_filter>;

// Each collection answers for itself: none may be joined to another. Failures throw library_error.
std::vector<std::string> find_in_grid(const grid_question& question);
uint64_t estimate_in_grid(const grid_question& question);

}  // namespace zvplaylist

#endif
