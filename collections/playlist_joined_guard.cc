// Locking a collection with all that it joins.
#include "collections/playlist_joined_guard.h"

playlist_joined_guard::playlist_joined_guard(playlist_collection* collection)
    : m_collection(collection), m_own(collection->rwlock), m_status(m_own.status()) {
  while (m_status == 0) {
    auto* element = playlist_collection_joined_at(m_collection, m_locked);
    if (element == nullptr) return;
    if (element->rwlock != nullptr) m_status = zcsl_thread_rwlock_readlock_nested(element->rwlock);
    if (m_status == 0) ++m_locked;
  }
}

playlist_joined_guard::~playlist_joined_guard() {
  while (--m_locked > 0) {
    auto* element = playlist_collection_joined_at(m_collection, m_locked);
    if (element->rwlock != nullptr) zcsl_thread_rwlock_unlock(element->rwlock);
  }
}
