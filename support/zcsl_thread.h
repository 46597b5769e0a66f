/*
 * zcsl_thread.h: the locks, and an event to wait for. On POSIX threads:
 *
 *   zcsl_critsec   recursive lock with an owner; its mutex is held only while the state changes.
 *   zcsl_rwlock    many readers or one writer, writers preferred. Not recursive: a thread that
 *                  holds a read lock and asks for another deadlocks as soon as a writer waits.
 *   zcsl_spinlock  one plain mutex, used by value. A zero-filled object is a valid unlocked lock,
 *                  so a static one needs no init.
 *   zcsl_event     a flag that threads wait for. One signal of an auto-reset event lets one waiter
 *                  go and is used up by it; a manual one lets all go until it is reset.
 *
 * Spinlocks aside they are made by create and released by delete; the creator owns them. Errors
 * have package 0x02 (spinlock: 0x1F): code 1 for a null lock, 2 for no memory, and what the
 * platform's failures map to.
 */
#ifndef ZCSL_THREAD_H
#define ZCSL_THREAD_H

#include <pthread.h>

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

typedef struct zcsl_critsec zcsl_critsec;
typedef struct zcsl_rwlock zcsl_rwlock;
typedef struct zcsl_event zcsl_event;
typedef struct zcsl_spinlock {
  pthread_mutex_t mutex;
} zcsl_spinlock;

/* Makes an unlocked critsec. */
ZVSDK_API zvsdk_status zcsl_thread_critsec_create(zcsl_critsec** lock);
/* Waits until no other thread holds the critsec. The owner may enter again, once per leave. */
ZVSDK_API zvsdk_status zcsl_thread_critsec_enter(zcsl_critsec* lock);
/* Leaves once. A leave by a thread that is not the owner changes nothing and returns 0. */
ZVSDK_API zvsdk_status zcsl_thread_critsec_leave(zcsl_critsec* lock);
/* Null returns 0. With waiters, or held by another thread: 0x90020006, and nothing is deleted. */
ZVSDK_API zvsdk_status zcsl_thread_critsec_delete(zcsl_critsec* lock);

/* Makes an unlocked lock. */
ZVSDK_API zvsdk_status zcsl_thread_rwlock_create(zcsl_rwlock** lock);
/* Waits while a writer is active or any writer waits. */
ZVSDK_API zvsdk_status zcsl_thread_rwlock_readlock(zcsl_rwlock* lock);
/* Waits while anybody is active. */
ZVSDK_API zvsdk_status zcsl_thread_rwlock_writelock(zcsl_rwlock* lock);
/* Gives back either kind. 0x90020001 when nobody holds the lock. */
ZVSDK_API zvsdk_status zcsl_thread_rwlock_unlock(zcsl_rwlock* lock);
/* Null returns 0. Does not check for holders. */
ZVSDK_API zvsdk_status zcsl_thread_rwlock_delete(zcsl_rwlock* lock);

/* An event that is `signalled` from the start, or is not. */
ZVSDK_API zvsdk_status zcsl_thread_event_create(zcsl_event** event, uint8_t signalled,
                                                uint8_t manual_reset);
/*
 * Sets the flag and wakes one waiter, or all of a manual event. Signals do not add up: the flag
 * stays set until a wait uses it up, and a second signal before that changes nothing.
 */
ZVSDK_API zvsdk_status zcsl_thread_event_signal(zcsl_event* event);
/* Clears the flag. */
ZVSDK_API zvsdk_status zcsl_thread_event_reset(zcsl_event* event);
#define zcsl_thread_wait_forever 0xFFFFFFFFu
/* Waits for the flag; 0x10020084 when it was not set within so many milliseconds. */
ZVSDK_API zvsdk_status zcsl_thread_event_wait(zcsl_event* event, uint32_t milliseconds);
/* Null returns 0. Does not check for waiters. */
ZVSDK_API zvsdk_status zcsl_thread_event_delete(zcsl_event* event);

/* All return 0, whatever the platform says; null gives 0x901F0001, and 0 from delete. */
ZVSDK_API zvsdk_status zcsl_spinlock_init(zcsl_spinlock* lock);
ZVSDK_API zvsdk_status zcsl_spinlock_lock(zcsl_spinlock* lock);
ZVSDK_API zvsdk_status zcsl_spinlock_unlock(zcsl_spinlock* lock);
ZVSDK_API zvsdk_status zcsl_spinlock_delete(zcsl_spinlock* lock);

#ifdef __cplusplus
}
#endif

#endif
