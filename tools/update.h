// update.h: a stored collection while it is brought up to date. It is locked against other programs
// from the start, changed in memory, and stored now and then, so that a program that ends in the
// middle, however it does, loses little. Order of use: construct, change, finish.
#ifndef ZVPLAYLIST_UPDATE_H
#define ZVPLAYLIST_UPDATE_H

#include <chrono>
#include <string>
#include <unordered_set>

#include "tools/console.h"
#include "tools/session.h"
#include "tools/store.h"
#include "tools/store_lock.h"
#include "tools/track.h"

namespace zvplaylist {

struct update_options {
  std::string name;
  std::string store;
  std::string language = "eng";
  bool quiet = false;
};

class collection_update {
 public:
  // A collection that is not stored yet is begun.
  explicit collection_update(const update_options& options);

  // The collection has the ident, and the library does not find it (collection.h).
  bool is_hidden(const std::string& ident) const {
    return held_.contains(ident) && !session_.holds(ident);
  }
  // Adds a track, or puts it in the place of the one with its ident. A hidden one is reported, and
  // stays as it is; so it is with a removal.
  void put(track&& entry, const place& where);
  void remove(const std::string& ident);
  void count_unchanged(size_t more = 1) { unchanged_ += more; }
  // To be called between changes. Stores when it is time; after an interruption stores and fails.
  void pause();
  // Stores what is not stored and tells the counts.
  void finish();

  session& library() { return session_; }
  console& out() { return out_; }

 private:
  void save();

  const std::string name_;
  console out_;
  session session_;
  store store_;
  store_lock lock_;
  std::unordered_set<std::string> held_;  // hidden ones too
  size_t added_ = 0, removed_ = 0, changed_ = 0, unchanged_ = 0;
  bool saved_ = false;  // the row is as the collection
  std::chrono::steady_clock::time_point next_save_;
};

}  // namespace zvplaylist

#endif
