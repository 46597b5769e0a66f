// catalog.h: every track that was read, by ident. Finding is constant time; entries do not move.
#ifndef ZVPLAYLIST_CATALOG_H
#define ZVPLAYLIST_CATALOG_H

#include <deque>
#include <string_view>
#include <unordered_map>

#include "tools/track.h"

namespace zvplaylist {

class catalog {
 public:
  // Null when the ident is there already; the first track stays.
  const track* add(track&& entry) {
    if (find(entry.ident) != nullptr) return nullptr;
    const track& kept = tracks_.emplace_back(std::move(entry));
    by_ident_.emplace(kept.ident, &kept);
    return &kept;
  }

  const track* find(std::string_view ident) const {
    const auto found = by_ident_.find(ident);
    return found == by_ident_.end() ? nullptr : found->second;
  }

  size_t size() const { return tracks_.size(); }
  // In the order of adding.
  auto begin() const { return tracks_.begin(); }
  auto end() const { return tracks_.end(); }

 private:
  std::deque<track> tracks_;
  std::unordered_map<std::string_view, const track*> by_ident_;
};

}  // namespace zvplaylist

#endif
