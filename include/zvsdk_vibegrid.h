/*
 * zvsdk_vibegrid.h: collections as sources for a grid of moods. Every collection that is created,
 * read from bytes or loaded offers itself to the host under the interface name below, with the
 * table of functions of this header, until its last reference goes. A grid module asks the sources
 * for the media of a cell:
 *
 *     zvsdk_manager_provider_get(ZVSDK_VIBEGRID_INTERFACE, 0, &table, &context);
 *     source = table;
 *     source->transaction_create(NULL, context, &cell, user, NULL, NULL);
 *     source->transaction_filter_create(cell, ZVSDK_VIBEGRID_LIST_MOODS, "40001",
 *                                       ZVSDK_VIBEGRID_INCLUDE, 1);
 *     source->transaction_find(cell);
 *     for (i = 0; source->transaction_result_enum(cell, i, &ident, &name) == 0; ++i) puts(ident);
 *     source->transaction_release(cell);
 *
 * Conventions are those of zvsdk_playlist.h but for these:
 *  - The slots are called through the table alone and do not write the error record; what they call
 *    inside does, so that it has the message of a statement that failed.
 *  - A context is refused (invalid_arg) when it is null or its collection is gone. This is safe at
 *    any time, also while another thread releases the collection.
 *  - A transaction is a plain record of one caller, not a handle: one thread at a time, and no use
 *    after its release. It holds the collection, so the module cannot be shut down before it goes.
 *    The user must live as long as it is searched with.
 *  - After the module has stopped, what needs a collection gives not_initialized. A transaction
 *    that outlived it can still be released while the host runs.
 */
#ifndef ZVSDK_VIBEGRID_H
#define ZVSDK_VIBEGRID_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define ZVSDK_VIBEGRID_INTERFACE "_zvsdk_vibegrid_datasource_provider_interface"

/* What data_get tells of a source: the collection's name, the kind of source ("zvsdk_playlist"),
 * and whether it uses the network ("FALSE"). */
#define ZVSDK_VIBEGRID_PROVIDER_NAME "zvsdk_vibegrid_provider_name"
#define ZVSDK_VIBEGRID_PROVIDER_TYPE "zvsdk_vibegrid_provider_type"
#define ZVSDK_VIBEGRID_PROVIDER_NETWORK_USE "zvsdk_vibegrid_provider_network_use"

/* The lists that a filter's value may come from, in any case. */
#define ZVSDK_VIBEGRID_LIST_MOODS "zvsdk_list_type_moods"
#define ZVSDK_VIBEGRID_LIST_GENRES "zvsdk_list_type_genres"
#define ZVSDK_VIBEGRID_LIST_ERAS "zvsdk_list_type_eras"
#define ZVSDK_VIBEGRID_LIST_ORIGINS "zvsdk_list_type_origins"

/* Whether a filter takes or leaves out, in exactly this case. */
#define ZVSDK_VIBEGRID_INCLUDE "zvsdk_vibegrid_filter_condition_include"
#define ZVSDK_VIBEGRID_EXCLUDE "zvsdk_vibegrid_filter_condition_exclude"

/* Where a search stands. */
enum {
  zvsdk_vibegrid_status_begin = 1,     /* percent 0 */
  zvsdk_vibegrid_status_searching = 2, /* percent 10: the statement is about to run */
  zvsdk_vibegrid_status_complete = 3   /* percent 100: the results are there */
};

/*
 * Follows a search, on its thread and with no lock held. A non-zero *abort stops it before the
 * statement runs: at begin the search gives warn_aborted, at searching error_aborted, and at
 * complete it comes too late. The reserved numbers are 0. Must not use the transaction.
 */
typedef void (*zvsdk_vibegrid_status_callback)(void* callback_data, uint32_t status,
                                               uint32_t percent, uint32_t reserved1,
                                               uint32_t reserved2, uint8_t* abort);

/* One question to a source. It is empty until it has found, which it does once. */
typedef struct zvsdk_vibegrid_transaction zvsdk_vibegrid_transaction;

/*
 * The table of a source. `provider` is whatever the caller knows the source by and is not looked
 * at; `context` is what zvsdk_manager_provider_get hands out with the table.
 */
typedef struct zvsdk_vibegrid_datasource_provider {
  void* reserved; /* null */
  /* Bits for what a source can do beyond this table. None are known: 0. */
  uint32_t (*capabilities)(void* provider, void* context);
  /* For sources that serve objects. A collection does not: error_unsupported. */
  zvsdk_status (*zdo_get)(void* provider, void* context, const char* ident, zvsdk_zdo** object);
  /* The text of a ZVSDK_VIBEGRID_PROVIDER key, a constant but for the name, which is borrowed from
   * the collection until it is renamed or goes. Other keys: invalid_arg. */
  zvsdk_status (*data_get)(void* provider, void* context, const char* key, const char** value);
  /* A collection has no options here: error_unsupported, both. */
  zvsdk_status (*option_get)(void* provider, void* context, const char* key, const char** value);
  zvsdk_status (*option_set)(void* provider, void* context, const char* key, const char* value);
  /* An empty transaction, to be released. `user` is required, `callback` may be null. */
  zvsdk_status (*transaction_create)(void* provider, void* context,
                                     zvsdk_vibegrid_transaction** transaction, zvsdk_user* user,
                                     zvsdk_vibegrid_status_callback callback, void* callback_data);
  /*
   * Adds a filter. The value is a list id in decimal or anything else that a statement may have
   * there, such as a name in quotes (docs/pdl.md); it is looked at when the statement runs. It gets
   * no quotes and is not checked: keywords or brackets in it change the statement, so look at
   * values from strangers first. List type and value are kept by reference and must stay until the
   * transaction is released. `flag` must not be 0. A filter that there is no memory for is dropped,
   * with success.
   *
   * The first filter is the cell and the others are one group beside it: CELL AND (A OR B ...).
   * Within the group an including filter is joined with OR and an excluding one with AND; both bind
   * to all that follows, so that A OR B AND C is A OR (B AND C). A filter of an unknown list says
   * nothing, but leaves its place: behind another such a statement is at fault.
   */
  zvsdk_status (*transaction_filter_create)(zvsdk_vibegrid_transaction* transaction,
                                            const char* list_type, const char* value,
                                            const char* condition, uint32_t flag);
  /* Runs the statement of the filters over the collection and what it joins. Without filters:
   * invalid_arg. Once it has found: error_internal. After any failure it may be tried again. */
  zvsdk_status (*transaction_find)(zvsdk_vibegrid_transaction* transaction);
  /*
   * About how many media there are, fast where one filter names a mood and the last filter's value
   * is an id of the mood list: then it is the number of mood values of that mood, or of its direct
   * sub-moods where it has some, in the collection itself and whatever the other filters say. The
   * first such question after a change counts the moods of all media, others only look them up; any
   * number of threads may ask at once, each with its own transaction. In every other case it finds,
   * and counts the results: the transaction has found then, and one that had before is refused. A
   * failure may leave 0 or a part of the sum in `count`.
   */
  zvsdk_status (*transaction_find_estimate)(zvsdk_vibegrid_transaction* transaction,
                                            uint32_t* count);
  /* Before it has found: error_bad_state. */
  zvsdk_status (*transaction_result_count)(zvsdk_vibegrid_transaction* transaction,
                                           uint32_t* count);
  /* The ident at an index from 0 and the name of its collection, both required, borrowed as from
   * zvsdk_playlist_results_enum while the transaction lives. Past the end: warn_not_found; before
   * it has found: error_bad_state. */
  zvsdk_status (*transaction_result_enum)(zvsdk_vibegrid_transaction* transaction, uint32_t index,
                                          const char** ident, const char** collection_name);
  /* In any state. Null succeeds. */
  zvsdk_status (*transaction_release)(zvsdk_vibegrid_transaction* transaction);
} zvsdk_vibegrid_datasource_provider;

#ifdef __cplusplus
}
#endif

#endif
