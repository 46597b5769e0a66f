// Locking a collection with all that it joins.
#include "collections/playlist_joined_guard.h"

playlist_joined_guard::playlist_joined_guard(playlist_collection* collection)
    : collection_(collection), own_(collection->rwlock), status_(own_.status()) {
  while (status_ == 0) {
    auto* element = playlist_collection_joined_at(collection_, locked_);
    if (element == nullptr) return;
    if (element->rwlock != nullptr) status_ = zcsl_thread_rwlock_readlock_nested(element->rwlock);
    if (status_ == 0) ++locked_;
  }
}

playlist_joined_guard::~playlist_joined_guard() {
  while (--locked_ > 0) {
    auto* element = playlist_collection_joined_at(collection_, locked_);
    if (element->rwlock != nullptr) zcsl_thread_rwlock_unlock(element->rwlock);
  }
}
