// shelf.h: what the commands that look after the store work with.
#ifndef ZVPLAYLIST_SHELF_H
#define ZVPLAYLIST_SHELF_H

#include "tools/console.h"
#include "tools/session.h"
#include "tools/store.h"

namespace zvplaylist {

struct shelf {
  explicit shelf(const std::string& folder) : kept(folder) {}

  console out = console::standard();
  session library{"eng"};  // before the store, which calls it
  store kept;
};

}  // namespace zvplaylist

#endif
