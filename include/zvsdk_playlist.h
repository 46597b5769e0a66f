/*
 * zvsdk_playlist.h: playlist generation over music collections.
 *
 * Life of a program: start the manager (zvsdk_manager.h), zvsdk_playlist_initialize, create a
 * collection, add media with data, generate, read the results, release what was handed out,
 * zvsdk_playlist_shutdown.
 *
 *     zvsdk_playlist_initialize(manager);
 *     zvsdk_playlist_collection_create("music", &collection);
 *     zvsdk_playlist_collection_add_zdo(collection, "track-1", object);
 *     zvsdk_playlist_generate_playlist(user, "GENERATE PLAYLIST LIMIT 25 RESULTS", collection,
 *                                      NULL, &results);
 *     for (i = 0; zvsdk_playlist_results_enum(results, i, &ident, NULL) == 0; ++i) puts(ident);
 *
 * Conventions, once for all functions:
 *  - Every function returns a status (zvsdk_types.h). Codes of other packages are mapped to this
 *    library's package 0x89 before they are returned. The manager's per-thread error record holds
 *    the mapped code, the original one, the function and, for a fault that has one, the message; a
 *    success clears it. A call that leaves the record alone says so; a refusal with
 *    not_initialized and a release of null leave it alone too.
 *  - Results come through pointers, which are written on success only. A null where a pointer or a
 *    handle is needed, and an empty text, give playlist_error_invalid_arg.
 *  - Handles are counted by the manager. What a "create", "generate" or "get" call hands out is the
 *    caller's to release; releasing null succeeds. A wrong or stale handle is refused.
 *  - Texts handed out are borrowed: they belong to the object and live as the function says.
 *  - Texts are NUL-terminated UTF-8 of at most three bytes a character.
 *  - Any function may be called on any thread. Calls on one collection lock it: readers (reads,
 *    enumerations, generation) share, writers (adding, removing, renaming) wait. No call may run
 *    during the last zvsdk_playlist_shutdown, nor on an object during its last release.
 */
#ifndef ZVSDK_PLAYLIST_H
#define ZVSDK_PLAYLIST_H

#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

/* ---- Status codes of this library ---------------------------------------------------------- */

/* One list makes the codes, their names and their texts: X(name, value, what it means). */
#define ZVSDK_PLAYLIST_STATUS_LIST(X)                                                         \
  X(error_invalid_arg, 0x90890001u, "a null or empty argument, or a bad option")              \
  X(error_no_memory, 0x90890002u, "allocation failed")                                        \
  X(error_not_found, 0x90890003u, "a named thing is absent")                                  \
  X(warn_not_found, 0x10890003u, "nothing found, or the end of an enumeration")               \
  X(error_not_initialized, 0x90890007u, "the module is not initialized")                      \
  X(error_buffer_too_small, 0x90890008u, "the caller's buffer is too small")                  \
  X(error_init_failed, 0x9089000Au, "the module could not start")                             \
  X(error_unsupported, 0x9089000Bu, "a value that the attribute does not support")            \
  X(error_bad_data, 0x9089000Cu, "data out of bounds")                                        \
  X(error_bad_state, 0x9089000Du, "an object is not in the state that the call needs")        \
  X(error_internal, 0x9089003Cu, "a parse tree or action that cannot occur")                  \
  X(error_no_storage, 0x9089003Fu, "the host offers no storage")                              \
  X(error_mapped_84, 0x90890084u, "timed out in another package")                             \
  X(error_corrupt_data, 0x90890122u, "serialized data cannot be unpacked")                    \
  X(error_aborted, 0x908901A0u, "a status callback asked to stop")                            \
  X(warn_aborted, 0x108901A0u, "a status callback asked to stop")                             \
  X(error_no_seed_data, 0x908901A4u, "the seed holds no data for the attribute")              \
  X(error_no_locale, 0x908902D3u, "the locale or list that an attribute needs is not loaded") \
  X(error_bad_manager_handle, 0x90890320u, "the manager handle is wrong")                     \
  X(error_version_mismatch, 0x90890321u, "the manager is of another version")                 \
  X(error_end_of_list, 0x90890361u, "an ident enumeration ran past its end")                  \
  X(warn_end_of_list, 0x10890361u, "an enumeration ran past its end")                         \
  X(error_mapped_400, 0x90890400u, "a failure of the host's data access")                     \
  X(error_mapped_403, 0x90890403u, "a failure of the host's package 16")                      \
  X(error_mapped_404, 0x90890404u, "a failure of the host's package 7")                       \
  X(error_mapped_405, 0x90890405u, "a failure of the host's package 14")                      \
  X(error_storage_open, 0x90890501u, "the collection store could not be opened")              \
  X(error_seed_required, 0x90890600u, "the statement uses SEED and no seed was given")        \
  X(error_pdl_syntax, 0x90890601u, "the statement is at fault; the message tells where")

#define ZVSDK_PLAYLIST_STATUS_ENTRY(name, value, text) \
  static const zvsdk_status playlist_##name = value;
#if defined(__GNUC__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wunused-variable"
#pragma GCC diagnostic ignored "-Wunused-const-variable"
#endif
ZVSDK_PLAYLIST_STATUS_LIST(ZVSDK_PLAYLIST_STATUS_ENTRY)
#if defined(__GNUC__)
#pragma GCC diagnostic pop
#endif
#undef ZVSDK_PLAYLIST_STATUS_ENTRY

/* ---- Module -------------------------------------------------------------------------------- */

/*
 * Starts the module beside the manager, or counts a further start. The manager must be of this
 * library's version. Errors: invalid_arg, bad_manager_handle, version_mismatch, init_failed.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_initialize(zvsdk_sdkmanager* manager);
/*
 * Balances one start; the last one stops the module. While handles of this module are alive the
 * last one is refused with the manager's code, mapped, and the module stays usable. Without a
 * start: not_initialized. Leaves the error record alone.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_shutdown(void);
/* How many starts are not yet balanced; 0 means not initialized. */
ZVSDK_API uint32_t zvsdk_playlist_initchecks(void);
/* "3.10.5". Works before the start. */
ZVSDK_API const char* zvsdk_playlist_get_version(void);
/* Date, time and zone of the build. Works before the start. */
ZVSDK_API const char* zvsdk_playlist_get_build_date(void);

/* ---- Collections --------------------------------------------------------------------------- */

/*
 * A new, empty collection that carries every registered attribute. One reference. An attribute that
 * there is no memory for may be missing. `collection` must not be null: it is not checked.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_create(const char* name,
                                                        playlist_collection** collection);
/* Drops a reference. Null succeeds. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_release(playlist_collection* collection);
/* The name, borrowed until the next rename or the last release. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_get_name(playlist_collection* collection,
                                                          const char** name);
/* Gives the collection another name, which is copied. A stored row has the old one until the
 * collection is stored again; what joins the collection does not look at the new one. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_update_name(playlist_collection* collection,
                                                             const char* name);

/*
 * Adds a media that has no data. An ident that is present stays as it is. The three calls that add
 * leave out what there is no memory for, the ident or some of its values, and succeed all the same.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_add_ident(playlist_collection* collection,
                                                           const char* ident);
/*
 * Adds a media with the values that its data object holds for each attribute. An ident that is
 * present gains the new values and keeps the old ones.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_add_zdo(playlist_collection* collection,
                                                         const char* ident, zvsdk_zdo* object);
/* The same with one element of a list, such as a tempo. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_add_list_element(playlist_collection* collection,
                                                                  const char* ident,
                                                                  zvsdk_list_element* element);

/* How many idents the collection and all that it joins hold. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_ident_count(playlist_collection* collection,
                                                             uint32_t* count);
/*
 * The ident at an index from 0 and, if wanted, the name of the collection that holds it; both
 * borrowed until that collection changes. The order is that in which idents were added, collection
 * by collection. Past the end: error_end_of_list.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_ident_enum(playlist_collection* collection,
                                                            uint32_t index, const char** ident,
                                                            const char** collection_name);
/*
 * Finds an ident. The index handed out runs from 1; fed back as `start` it finds the next
 * occurrence in a later joined collection; 0 finds the first. Index and name, borrowed as above,
 * may be null where they are not wanted. Absent: warn_not_found.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_ident_find(playlist_collection* collection,
                                                            const char* ident, uint32_t start,
                                                            uint32_t* index,
                                                            const char** collection_name);
/* Removes an ident with all its values. Absent: warn_not_found. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_ident_remove(playlist_collection* collection,
                                                              const char* ident);

/*
 * A media as a data object (context "zvsdk_ctx_pldata"): all that the collection holds for it, to
 * be read, used as a seed, or added to any collection as new media with equal values. It answers
 *
 *  - "ident_ref": the media's number in the collection;
 *  - an attribute's name ("ZV_Genre"): display texts in the language of the object's locale.
 *    Without one a tempo or an era is a plain number, and the other lists have no text. Moods also
 *    want a locale loaded for one of the two groups when they are first read;
 *  - the keys that data objects of tracks have for ids and numbers, such as
 *    "_sdkmgr_val_list_genre_id" or "_sdkmgr_val_list_tempo_value". Counting works by attribute
 *    name alone: under these keys it gives 0.
 *
 * zvsdk_manager_zdo_render walks the attributes that the collection carries, with the first text of
 * each or null. The locale is at first the default one of the playlist group, else of the music
 * group, else none; zvsdk_manager_zdo_locale_set exchanges it.
 *
 * `user` is required. The object is one reference, given back by zvsdk_manager_zdo_release; it
 * holds the collection and the user and keeps the values of the moment. Reading makes what it needs
 * on the way, so that one object is for one thread at a time; any number of threads may have
 * objects of their own. An ident that the collection itself does not hold: warn_not_found.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_get_zdo(playlist_collection* collection,
                                                         zvsdk_user* user, const char* ident,
                                                         zvsdk_zdo** object);

/*
 * Joins: generation, counting, enumerating and finding idents see the collection with all that it
 * joins, itself first. Nothing is copied: what changes in a joined collection is seen at once. The
 * source comes with what it joins by then; what joins the source later does not follow. Of the
 * names involved no two may be equal, case counts: invalid_arg, whose message only
 * zvsdk_manager_errorinfo_get_message still has. A joined collection lives as long as it stays
 * joined, so a ring of collections that join one another lives until a join is removed.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_join(playlist_collection* destination,
                                                      playlist_collection* source);
/* How many collections are joined; 0 for none. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_join_count(playlist_collection* collection,
                                                            uint32_t* count);
/* The joined collection at an index from 0, with a reference. Past the end: warn_end_of_list. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_join_enum(playlist_collection* collection,
                                                           uint32_t index,
                                                           playlist_collection** joined);
/* The one of that name, with a reference; the collection itself for its own name. Absent:
 * error_not_found. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_join_get(playlist_collection* collection,
                                                          const char* name,
                                                          playlist_collection** joined);
/* Takes the joined collection of that name out, but not what came with it. Absent, or the
 * collection itself: error_not_found. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_join_remove(playlist_collection* collection,
                                                             const char* name);

/*
 * A collection as bytes, and back (docs/format.md): name, idents and all values, but neither the
 * options nor what is joined to it. The size is a bound, some bytes more than will be needed.
 *
 * Serialize with a null buffer gives that bound as well; else `size` says how large the buffer is,
 * which must be the bound or more (error_buffer_too_small), and receives the length. A length of 0
 * says that there was no memory to do it in.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_serialize_size(playlist_collection* collection,
                                                                uint32_t* size);
ZVSDK_API zvsdk_status zvsdk_playlist_collection_serialize(playlist_collection* collection,
                                                           void* buffer, uint32_t* size);
/*
 * A new collection from bytes, with default options; one reference. Any bytes are safe. Those that
 * are no collection give error_bad_data, another version error_unsupported, and whatever fails with
 * five bytes or fewer to go error_corrupt_data. An attribute that this module lacks is kept, and
 * written again, but not used. `collection` must not be null: it is not checked.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_deserialize(const void* buffer, uint32_t size,
                                                             playlist_collection** collection);

/* ---- Sync ---------------------------------------------------------------------------------- */

/*
 * Brings a collection in step with the media that an application has, in two moves: it announces
 * every ident that it has now, then one pass tells it the differences through a callback. The
 * library changes nothing itself; the application adds and removes, from the callback or later.
 * Joined collections take no part.
 *
 * Announces an ident, which must not be null or empty (error_invalid_arg). It is looked up at once:
 * what the collection holds at this moment counts. Announcements wait for the next pass and are
 * dropped with the collection; they are neither serialized nor stored. Takes the write lock.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_sync_ident_add(playlist_collection* collection,
                                                                const char* ident);

/* What a sync pass says of an ident. */
enum {
  playlist_sync_status_add = 10,   /* announced, and absent from the collection */
  playlist_sync_status_remove = 11 /* in the collection, and not announced */
};

/*
 * Called for every difference, on the thread of the pass and with no lock held: the collection may
 * be changed, and idents may be announced for the next pass. The ident is borrowed for the call. A
 * non-zero *abort, which is 0 at first, stops the pass. What the callback returns is ignored.
 */
typedef zvsdk_status (*playlist_sync_callback)(void* callback_data, playlist_collection* collection,
                                               const char* ident, uint32_t status, uint8_t* abort);

/*
 * Runs the pass: first every removal, in the order in which the idents were added to the
 * collection, then every addition, in the order of the announcements. The announcements are used
 * up, whatever comes of it. The pass holds a reference on the collection, so the callback may
 * release it. A callback must not be null (error_invalid_arg).
 *
 * An ident that the collection holds and that was announced twice is reported as a removal;
 * announcing every ident once is the caller's part. So is leaving the idents alone from the first
 * announcement to the pass, but for what the callback is told: an ident that is removed after it
 * was announced, or before its own removal is told, ends the pass with warn_not_found; one that is
 * added after it was announced is told both ways.
 *
 * Without any announcement since the last pass: error_bad_state (the error record says
 * invalid_arg). Stopped among the removals: warn_aborted; stopped among the additions: success. No
 * memory: error_no_memory, and the callbacks made so far stand.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_sync_process(playlist_collection* collection,
                                                              playlist_sync_callback callback,
                                                              void* callback_data);

/* ---- Storage ------------------------------------------------------------------------------- */

/*
 * Collections as rows of one file, "zv_colls.zdb", in the folder that was set last, else where the
 * host puts it. Each call opens and closes the file. All of them: error_no_storage where the host
 * offers no storage; the host's own failures are mapped (low words in zvsdk_manager.h), and a
 * missing file is 0x90890500 where it is a failure. A table of the same name and another shape is
 * dropped with its rows: error_storage_open, and the next store makes it anew.
 *
 * The names of what is stored are read from the file by the first count or enumeration, and kept up
 * by storing and removing from then on: what another process stores later is not counted. Names
 * that differ only in ASCII case count once, but are rows of their own.
 */

/* Where the file is kept: a folder, copied. Works before the start, and must not run beside other
 * calls on storage. Names that were read already are kept. A null path takes the folder away and
 * gives error_no_memory. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_location_set(const char* path);
/*
 * Stores a collection under its name. A collection that was stored or loaded under another name
 * replaces that row; any other row of its name is replaced as well. A row is the serialized form:
 * neither options nor joins are kept. A failure leaves the rows as they were.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_store_collection(playlist_collection* collection);
/* A new collection from the row of that name; one reference. Absent: warn_not_found with a message.
 * Damaged: as zvsdk_playlist_collection_deserialize; the row stays. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_load_collection(const char* name,
                                                              playlist_collection** collection);
/* How many collections are stored. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_count_collections(uint32_t* count);
/* The name at an index from 0, in no particular order, borrowed until a collection is stored or
 * removed. Past the end: warn_end_of_list. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_enum_collections(uint32_t index, const char** name);
/* Removes the row of that name; collections in memory stay. Absent: warn_not_found. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_remove_collection(const char* name);
/* Gives the room of removed rows back. Before the start there is no host to do so:
 * error_no_storage, which is then not recorded. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_compact(void);
/* Examines the file into a record of the host's, whose first field is its size. A missing file is
 * no failure. Before the start as zvsdk_playlist_storage_compact. */
ZVSDK_API zvsdk_status zvsdk_playlist_storage_validate(zvsdk_storage_info* info);

/* ---- Statements ---------------------------------------------------------------------------- */

/*
 * Parses a statement and checks it against a collection's attributes, without running it.
 * `uses_seed`, if not null, tells whether it needs a seed; written on success only. Errors:
 * pdl_syntax and others of the parser, with a message in the error record. What a criterion's value
 * means is asked when the statement runs. Any thread; holds the collection's read lock.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_statement_validate(const char* statement,
                                                         playlist_collection* collection,
                                                         uint8_t* uses_seed);
/*
 * Evaluates a statement for one ident and gives the evaluated tree as text, a line for each node,
 * indented: why the ident is in the playlist or not (docs/pdl.md reads one). An ident that joined
 * collections hold as well is taken where it is found first. Limits do nothing, and RAND draws the
 * same every time. A statement with SEED: error_seed_required. An ident that is absent:
 * warn_not_found. Other errors as for generation. Whatever is not success gives no text.
 *
 * The text belongs to the caller: give it back with zvsdk_manager_handle_release, before the module
 * stops. Any thread; holds the read locks of the collection and of all that it joins.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_statement_analyze_ident(const char* statement,
                                                              playlist_collection* collection,
                                                              const char* ident,
                                                              const char** analysis);

/* ---- Generation ---------------------------------------------------------------------------- */

/*
 * Runs a statement (docs/pdl.md). `user` may be null if the licence policy allows it; `seed` is the
 * data object that SEED in the statement stands for, or null. On success `results` is a new handle.
 * Errors: pdl_syntax and others with a message in the error record, seed_required, and what the
 * licence check returned.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_generate_playlist(zvsdk_user* user, const char* statement,
                                                        playlist_collection* collection,
                                                        zvsdk_zdo* seed,
                                                        playlist_results** results);

/*
 * More-Like-This: the media that are like the seed, most alike first, at most as many in all, by an
 * artist and of an album as the collection's options say. The seed is any data object, such as a
 * track of the application's own; one that was read from this very collection
 * (zvsdk_playlist_collection_get_zdo) is left out of the list. What the seed does not tell has no
 * influence. `user` is required. On success `results` is a new handle. Fails as
 * zvsdk_playlist_generate_playlist does; the error record has no function name then.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_generate_morelikethis(zvsdk_user* user,
                                                            playlist_collection* collection,
                                                            zvsdk_zdo* seed,
                                                            playlist_results** results);

/*
 * Options of a collection, decimal numbers as text. The random option, when not "0", repeats the
 * random order of statements; the others bound More-Like-This lists.
 */
#define ZVSDK_PLAYLIST_OPTION_MAX_TRACKS "zvsdk_playlist_morelikethis_option_max_tracks"
#define ZVSDK_PLAYLIST_OPTION_MAX_PER_ARTIST "zvsdk_playlist_morelikethis_option_max_per_artist"
#define ZVSDK_PLAYLIST_OPTION_MAX_PER_ALBUM "zvsdk_playlist_morelikethis_option_max_per_album"
#define ZVSDK_PLAYLIST_OPTION_RANDOM "zvsdk_playlist_morelikethis_option_random"

/*
 * Sets one of the four options to a number that is not zero, so that a random order once fixed
 * stays fixed. The text is copied and enters the statement as it stands: give digits alone. Not to
 * be called on a collection while another thread generates over it. Another key, or a text that is
 * no number above zero: invalid_arg with a message. Whatever passes these checks leaves the error
 * record alone.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_morelikethis_option_set(playlist_collection* collection,
                                                              const char* option_key,
                                                              const char* option_value);
/* The option's text, borrowed until the option is changed. Another key: invalid_arg with a message;
 * a success leaves the error record alone. */
ZVSDK_API zvsdk_status zvsdk_playlist_morelikethis_option_get(playlist_collection* collection,
                                                              const char* option_key,
                                                              const char** option_value);

/* ---- Results ------------------------------------------------------------------------------- */

/* How many idents there are. Results never change. Leaves the error record alone. */
ZVSDK_API zvsdk_status zvsdk_playlist_results_count(playlist_results* results, uint32_t* count);
/*
 * The ident at an index from 0, best first, and, if wanted, the name of its collection. Both are
 * borrowed from the collection and stay good while the results live and the collection is not
 * changed. Past the end: warn_not_found.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_results_enum(playlist_results* results, uint32_t index,
                                                   const char** ident,
                                                   const char** collection_name);
/*
 * The ranking score of the ident at an index from 0: 1000 is a full match of the statement's last
 * test or the value of its ORDER expression. Past the end: warn_not_found.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_results_get_score(playlist_results* results, uint32_t index,
                                                        int32_t* score);
/* Drops a reference. Null succeeds. Leaves the error record alone unless the handle is wrong. */
ZVSDK_API zvsdk_status zvsdk_playlist_results_release(playlist_results* results);

/* ---- Attributes ---------------------------------------------------------------------------- */

/* Operators of attributes: = != > >= < <= LIKE BEGINS CONTAINS. */
enum {
  playlist_op_equal = 10,
  playlist_op_not_equal = 11,
  playlist_op_greater = 12,
  playlist_op_greater_equal = 13,
  playlist_op_less = 14,
  playlist_op_less_equal = 15,
  playlist_op_like = 20,
  playlist_op_begins = 30,
  playlist_op_contains = 31
};

/* A score that says nothing about the criterion: the value is skipped. */
#define playlist_score_ignored (-10001)

/* What an attribute is collected for; opaque to attributes, valid during the call only. */
typedef struct playlist_collect_context playlist_collect_context;
/* State of one use of an attribute, made and read by the attribute alone. */
typedef struct playlist_attribute_instance playlist_attribute_instance;

/* How an attribute asks about a media and hands values to its collection. A context that is used
 * after its call is refused (invalid_arg of the manager). */
typedef struct playlist_collect_api {
  /* Borrowed for the call. */
  zvsdk_status (*get_media_ident)(playlist_collect_context* context, const char** ident);
  /* A new reference, given back through the host's zdo table. warn_not_found: there is none. */
  zvsdk_status (*get_media_zdo)(playlist_collect_context* context, zvsdk_zdo** object);
  /* Borrowed for the call. warn_not_found: the media has none. */
  zvsdk_status (*get_media_list_element)(playlist_collect_context* context,
                                         zvsdk_list_element** element);
  /* Adds a value. A media may have several, each once. A negative one: error_bad_data. */
  zvsdk_status (*set_integer_data)(playlist_collect_context* context, int32_t value);
  /* The same for a text, which is copied. */
  zvsdk_status (*set_string_data)(playlist_collect_context* context, const char* text);
} playlist_collect_api;

/*
 * One attribute: a property of music that a statement can name. The slots marked (required) must be
 * filled; any other may be null. A score is 1000 for a value that satisfies the criterion, -1000
 * for one that fails, between them only from playlist_op_like, or playlist_score_ignored.
 *
 * Slots are called on any thread, several at once, but those of one instance on one thread at a
 * time. Most of them run with a collection locked: none may call into one.
 */
typedef struct playlist_attribute {
  /* Called at registration with the caller's record, which is copied afterwards. A failure is that
   * of the registration. */
  zvsdk_status (*initialize)(struct playlist_attribute* attribute);
  /* Called with the copy when the module stops. Its status is not looked at. */
  zvsdk_status (*shutdown)(struct playlist_attribute* attribute);
  /* (required) A constant text. */
  zvsdk_status (*attribute_name)(const char** name);
  /* (required) The operators by index from 0; fails past the end. */
  zvsdk_status (*supported_operators)(uint32_t index, uint32_t* op);
  /* (required) Hands the values of a media that is added with data to `api`. A failure is not
   * looked at: what was handed in stays. */
  zvsdk_status (*collect_attribute_data)(playlist_collect_context* context,
                                         const playlist_collect_api* api);
  /* (required) Writes `instance` even when it fails part-way, so that it can be released. */
  zvsdk_status (*create_instance)(playlist_attribute_instance** instance);
  /* Takes the value that a statement compares with; called once, before anything is compared.
   * `threshold` is the score at which a candidate passes: 1000 on entry. A failure refuses the
   * statement, with a message for unsupported, no_locale, low word 3 and others. Without the slot a
   * value is unsupported. */
  zvsdk_status (*set_string_criteria)(playlist_attribute_instance* instance, uint32_t op,
                                      const char* text, int32_t* threshold);
  /* The same for SEED. error_no_seed_data: the comparison has no opinion. */
  zvsdk_status (*set_seed_criteria)(playlist_attribute_instance* instance, uint32_t op,
                                    zvsdk_zdo* seed, int32_t* threshold);
  /* The score of a stored value of this kind; a failure ends the generation. Without the slot such
   * a value scores -1000. */
  zvsdk_status (*compare_integer_data)(playlist_attribute_instance* instance, uint32_t value,
                                       int32_t* score);
  zvsdk_status (*compare_string_data)(playlist_attribute_instance* instance, const char* text,
                                      int32_t* score);
  /* A stored value as text, for zvsdk_playlist_collection_get_zdo; `key` is what the reader asked
   * for, such as the attribute's name. The instance has no criterion. Texts live as long as it.
   * warn_not_found: no such key. `locale` may be null. */
  zvsdk_status (*value_from_integer_data)(playlist_attribute_instance* instance, uint32_t value,
                                          const char* key, zvsdk_locale* locale, const char** text);
  zvsdk_status (*value_from_string_data)(playlist_attribute_instance* instance, const char* text,
                                         const char* key, zvsdk_locale* locale, const char** value);
  /* Ends an instance, also one whose create_instance failed. */
  zvsdk_status (*release_instance)(playlist_attribute_instance* instance);
} playlist_attribute;

/* The attributes that the module knows, built-in ones first, then added ones in their order. */
ZVSDK_API zvsdk_status zvsdk_playlist_attributes_count(uint32_t* count);
/* The name is the attribute's own constant. Past the end: warn_end_of_list. */
ZVSDK_API zvsdk_status zvsdk_playlist_attributes_enum(uint32_t index, const char** name);
/* The attributes that a collection carries, also those from its bytes that this module lacks. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_attributes_count(playlist_collection* collection,
                                                                  uint32_t* count);
/* The name, as above, at an index from 0, in the order in which the collection took them: that of
 * the registry, or of its bytes. Of an attribute that this module lacks: invalid_arg. Past the end:
 * warn_end_of_list. */
ZVSDK_API zvsdk_status zvsdk_playlist_collection_attributes_enum(playlist_collection* collection,
                                                                 uint32_t index, const char** name);
/*
 * Adds an attribute of the application's own. Its initialize is called with this very record and
 * may change it; then the record is copied and need not outlive the call. To be called after the
 * start and before collections are made that are to carry it, while no other thread uses the
 * module. Its status is the raw one, such as invalid_arg where a required slot is empty, and the
 * error record is left alone.
 */
ZVSDK_API zvsdk_status zvsdk_playlist_register_attribute_provider(playlist_attribute* attribute);

#ifdef __cplusplus
}
#endif

#endif
