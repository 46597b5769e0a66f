// store.h: the collections that stay: one storage file in a folder of the user's. Reading needs no
// lock: a row is whole, old or new. Who changes a collection holds its store_lock from before it is
// read until it is stored.
//
// There is one store at a time in a program, and the library must be started (session.h).
#ifndef ZVPLAYLIST_STORE_H
#define ZVPLAYLIST_STORE_H

#include <string>
#include <vector>

#include "tools/library.h"

namespace zvplaylist {

// A name that a collection can be stored under; others are a usage failure.
void check_name(const std::string& name);

class store {
 public:
  // An empty folder stands for zvplaylist below the user's data folder. Nothing is made yet.
  explicit store(const std::string& folder);

  const std::string& folder() const { return folder_; }
  // False: nothing was stored yet.
  bool exists() const;
  std::vector<std::string> names() const;  // sorted
  bool has(const std::string& name) const;
  // Fails as "no match" with the names that there are.
  void require(const std::string& name) const;
  // Fails as wrong usage if the name is taken.
  void require_free(const std::string& name) const;
  // Fails as wrong usage if another name than `renamed` is the same but for the case of its
  // letters: the library would list only one of the two, and the other could not be found again.
  void require_distinct(const std::string& name, const std::string& renamed = {}) const;
  // As require; a row that cannot be read is a storage failure.
  unique_collection load(const std::string& name) const;

  // Under its name; one that was loaded and renamed takes its old row with it.
  void put(playlist_collection* collection) const;
  void remove(const std::string& name) const;

 private:
  std::string folder_;
};

}  // namespace zvplaylist

#endif
