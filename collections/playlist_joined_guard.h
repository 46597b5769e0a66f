/*
 * playlist_joined_guard.h: read locks on a collection and on all that it joins, for work that looks
 * at all of them at once. The collection's own comes first and is waited for like any; the others
 * pass waiting writers (zcsl_thread_rwlock_readlock_nested), so that in whatever way collections
 * join one another, threads never wait for each other. As long as the first is held the collection
 * joins what it joins, and so everything stays alive.
 */
#ifndef PLAYLIST_JOINED_GUARD_H
#define PLAYLIST_JOINED_GUARD_H

#include "collections/playlist_collection.h"
#include "support/zcsl_guards.h"

class playlist_joined_guard {
 public:
  explicit playlist_joined_guard(playlist_collection* collection);
  playlist_joined_guard(const playlist_joined_guard&) = delete;
  playlist_joined_guard& operator=(const playlist_joined_guard&) = delete;
  ~playlist_joined_guard();

  /* 0 when every lock was taken. */
  zvsdk_status status() const { return status_; }

 private:
  playlist_collection* collection_;
  zcsl_read_guard own_;
  uint32_t locked_ = 1; /* the elements whose locks are held, the collection itself among them */
  zvsdk_status status_;
};

#endif
