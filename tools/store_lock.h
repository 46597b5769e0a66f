// store_lock.h: keeps two programs from changing the same stored collection at once, each from what
// it read before the other stored: the later one waits for the earlier one's end. Locks are held by
// the open file, "zvplaylist.lock" in the store's folder, a byte for each name, so that they end
// with the program, however it ends. Different collections do not wait for each other.
#ifndef ZVPLAYLIST_STORE_LOCK_H
#define ZVPLAYLIST_STORE_LOCK_H

#include <string>
#include <vector>

#include "tools/console.h"

namespace zvplaylist {

class store_lock {
 public:
  // Makes the folder if need be. Says so on the console when it has to wait.
  store_lock(const std::string& folder, const std::vector<std::string>& names, console& out);
  store_lock(const store_lock&) = delete;
  store_lock& operator=(const store_lock&) = delete;
  ~store_lock();

 private:
  void lock(const std::string& folder, int64_t place, console& out) const;

  int file_;
};

}  // namespace zvplaylist

#endif
