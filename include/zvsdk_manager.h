/*
 * zvsdk_manager.h: the manager, host of the playlist library. Two halves:
 *
 *  1. The service tables. A module asks for a table by name (zvsdk_sdkmanager.interface_get) and
 *     gives it back through the table's first slot. Another host may stand behind the same tables.
 *  2. The embedded host's own calls, zvsdk_manager_*, with which an application starts the host,
 *     makes users, loads locales, builds data objects and reads errors.
 *
 * Conventions. Every call returns a status (zvsdk_types.h) and hands results out through pointers,
 * which are written on success only. An object handed out by "create", "retrieve", "get_set" or
 * with a new reference is released by the caller; what a row calls borrowed is not. Texts handed
 * out are borrowed and live as long as their object. Text arguments are copied. Every call may be
 * made from any thread; an object may be used by several threads at once unless its call says
 * otherwise. A null, stale or foreign handle is refused, never followed.
 */
#ifndef ZVSDK_MANAGER_H
#define ZVSDK_MANAGER_H

#include "zvsdk_runtime.h"
#include "zvsdk_types.h"

#ifdef __cplusplus
extern "C" {
#endif

#define ZVSDK_MANAGER_MAGIC 0x1EEEEEE1u
#define ZVSDK_MANAGER_VERSION "3.10.5"

/* Interface names. */
#define ZVSDK_LICENSE_INTERFACE "_zvsdk_license_interface"
#define ZVSDK_ERRORINFO_INTERFACE "_zvsdk_errorinfo_interface"
#define ZVSDK_HANDLEMANAGER_INTERFACE "_zvsdk_handlemanager_interface"
#define ZVSDK_USERINFO_INTERFACE "_zvsdk_userinfo_interface"
#define ZVSDK_LISTMANAGER_INTERFACE "_zvsdk_listmanager_interface"
#define ZVSDK_ZDO_INTERFACE "_zvsdk_zdo_interface"
#define ZVSDK_SERIALIZATION_INTERFACE "_zvsdk_serialization_interface"
#define ZVSDK_STORAGE_INTERFACE "_zvsdk_storage_interface"

/* Locale groups. */
#define ZVSDK_LOCALE_PLAYLIST "zvsdk_locale_playlist"
#define ZVSDK_LOCALE_MUSIC "zvsdk_locale_music"

/* ---- 1. Service tables ------------------------------------------------------------------- */

/* Called when the manager orders a client to stop. Must not start or release the host. */
typedef zvsdk_status (*zvsdk_client_shutdown_fn)(void);
/* Destroys an object when its last reference goes. */
typedef zvsdk_status (*zvsdk_handle_delete_fn)(void* object);
/* What provider_register hands out. */
typedef struct zvsdk_provider_registration zvsdk_provider_registration;

/* The manager handle: its magic, its version text, then its operations. */
struct zvsdk_sdkmanager {
  uint32_t magic;      /* ZVSDK_MANAGER_MAGIC */
  const char* version; /* ZVSDK_MANAGER_VERSION */
  zvsdk_status (*client_register)(uint32_t package, const char* name,
                                  zvsdk_client_shutdown_fn shutdown, void* reserved,
                                  zvsdk_client** client);
  /* Refused (low word 6) while handles or served data objects of this client live. */
  zvsdk_status (*client_release)(zvsdk_client* client);
  /* Registers a provider table of `table_size` bytes, copied, under an interface name; `data` goes
   * with every call of it. */
  zvsdk_status (*provider_register)(zvsdk_client* client, const char* interface_name,
                                    void* reserved, const void* table, uint32_t table_size,
                                    void* data, zvsdk_provider_registration** registration);
  /* Drops a registration and hands back the data that it was made with (`data` may be null). */
  zvsdk_status (*provider_deregister)(zvsdk_provider_registration* registration, void** data);
  /* Low word 3 when no table has that name. */
  zvsdk_status (*interface_get)(const char* interface_name, void* reserved1, void* reserved2,
                                void** table);
};

/* Per-thread record of the last outcome. */
typedef struct zvsdk_errorinfo_interface {
  zvsdk_status (*release)(const struct zvsdk_errorinfo_interface* table);
  /* Two zero codes clear the record. `message` may be null; texts are copied. */
  zvsdk_status (*errorinfo_set)(zvsdk_status mapped, zvsdk_status source, const char* function,
                                const char* message);
  /* The same with a message made from a printf format. */
  zvsdk_status (*errorinfo_set_format)(zvsdk_status mapped, zvsdk_status source,
                                       const char* function, const char* format, ...);
} zvsdk_errorinfo_interface;

/* Registry of handles. A handle is the object's own address. */
typedef struct zvsdk_handlemanager_interface {
  zvsdk_status (*release)(const struct zvsdk_handlemanager_interface* table);
  /* Registers an object with one reference. `destroy` may be null. */
  zvsdk_status (*handle_register)(zvsdk_client* client, void* object, uint32_t magic,
                                  zvsdk_handle_delete_fn destroy);
  zvsdk_status (*handle_validate)(const void* handle, uint32_t magic);
  zvsdk_status (*handle_addref)(void* handle);
  /* The last reference runs the delete callback given at registration. */
  zvsdk_status (*handle_release)(void* handle);
  zvsdk_status (*handle_validate_user)(const zvsdk_user* user);
  zvsdk_status (*handle_validate_zdo)(const zvsdk_zdo* object);
  zvsdk_status (*handle_validate_list_element)(const zvsdk_list_element* element);
} zvsdk_handlemanager_interface;

typedef struct zvsdk_userinfo_interface {
  zvsdk_status (*release)(const struct zvsdk_userinfo_interface* table);
  zvsdk_status (*user_addref)(zvsdk_user* user);
  zvsdk_status (*user_release)(zvsdk_user* user);
} zvsdk_userinfo_interface;

typedef struct zvsdk_license_interface {
  zvsdk_status (*release)(const struct zvsdk_license_interface* table);
  /* 0 allows; anything else refuses and ends the calling function. `user` may be null. */
  zvsdk_status (*license_check)(zvsdk_user* user, const char* feature);
} zvsdk_license_interface;

typedef struct zvsdk_serialization_interface {
  zvsdk_status (*release)(const struct zvsdk_serialization_interface* table);
  /* Decodes a stored text (zvsdk_stored_text.h). The buffer is terminated, `length` is without the
   * terminator, and serialization_free takes the buffer back. Low word 0x0C: the text is damaged;
   * 0x0B: its form is of another version. */
  zvsdk_status (*serialization_decode)(const char* stored, char** buffer, uint32_t* length);
  /* Null is a no-op. */
  zvsdk_status (*serialization_free)(char* buffer);
} zvsdk_serialization_interface;

/*
 * Lists are hierarchies of elements with ids, display texts and numeric ranges; level 1 is the
 * coarsest. Correlates say how alike two ids of a list are, from -1000 to 1000.
 */
typedef struct zvsdk_listmanager_interface {
  zvsdk_status (*release)(const struct zvsdk_listmanager_interface* table);
  /* Loads the named list in the language of a locale's identifying strings. Low word 3: no such
   * list; 0x2D3: it does not have the language. */
  zvsdk_status (*list_retrieve)(const char* list_type, const char* language, const char* region,
                                const char* descriptor, void* reserved1, void* reserved2,
                                void* reserved3, zvsdk_list** list);
  zvsdk_status (*list_release)(zvsdk_list* list);
  /* Level 0 is the element as stored, level N its ancestor at that level; an element that is
   * coarser than N is given itself. An id is an element's own, or, where the list has ranges for
   * it, a plain number that lies in one: the finest such element. A new reference. Low word 3: no
   * such. */
  zvsdk_status (*list_get_element_by_id)(zvsdk_list* list, uint32_t id, uint32_t level,
                                         zvsdk_list_element** element);
  /* By a text that is shown or a further one, in any case. A new reference. Low word 3: no such. */
  zvsdk_status (*list_get_element_by_string)(zvsdk_list* list, const char* text, void* reserved,
                                             zvsdk_list_element** element);
  zvsdk_status (*element_release)(zvsdk_list_element* element);
  zvsdk_status (*element_get_list_type)(zvsdk_list_element* element, const char** list_type);
  /* The id that names the element. Equal to the id that addressed it, unless that was a plain
   * number within its range. */
  zvsdk_status (*element_get_match_id)(zvsdk_list_element* element, uint32_t* id);
  /* The id that collections store and comparisons use. An element of the tempo list that was
   * addressed by a plain tempo has that tempo. */
  zvsdk_status (*element_get_id)(zvsdk_list_element* element, uint32_t* id);
  zvsdk_status (*element_get_display_string)(zvsdk_list_element* element, const char** text);
  zvsdk_status (*element_get_level)(zvsdk_list_element* element, uint32_t* level);
  /* Inclusive numeric range. Low word 3: the list has none. */
  zvsdk_status (*element_get_range)(zvsdk_list_element* element, uint32_t* lower, uint32_t* upper);
  zvsdk_status (*element_get_child_count)(zvsdk_list_element* element, uint32_t* count);
  /* Index from 0; low word 3 past the end. The child is a new reference. */
  zvsdk_status (*element_get_child)(zvsdk_list_element* element, uint32_t index,
                                    zvsdk_list_element** child);
  /* A new reference. Low word 3: it is one of level 1. */
  zvsdk_status (*element_get_parent)(zvsdk_list_element* element, zvsdk_list_element** parent);
  zvsdk_status (*element_addref)(zvsdk_list_element* element);
  /* Low word 3: no such table. */
  zvsdk_status (*correlates_retrieve)(const char* name, void* reserved1, void* reserved2,
                                      void* reserved3, zvsdk_correlates** correlates);
  zvsdk_status (*correlates_release)(zvsdk_correlates* correlates);
  /* The row of scores for `id` from `lowest` (-1000 for the whole row). Low word 3: no row. */
  zvsdk_status (*correlates_get_set)(zvsdk_correlates* correlates, uint32_t id, int32_t lowest,
                                     zvsdk_correlates_set** set);
  zvsdk_status (*correlates_set_get_score)(zvsdk_correlates_set* set, uint32_t id, int32_t* score);
  zvsdk_status (*correlates_set_release)(zvsdk_correlates_set* set);
  /* A new reference. Low word 0x2D3: the group has none. */
  zvsdk_status (*locale_get_default)(const char* group, zvsdk_locale** locale);
  /* What is not wanted may be null. The texts live as long as the locale. */
  zvsdk_status (*locale_get_info)(zvsdk_locale* locale, void* reserved1, const char** language,
                                  const char** region, const char** descriptor, void* reserved2);
  zvsdk_status (*locale_addref)(zvsdk_locale* locale);
  zvsdk_status (*locale_release)(zvsdk_locale* locale);
} zvsdk_listmanager_interface;

/*
 * A provider of data objects: the object's calls go to these slots with the provider's own data.
 * Texts handed out stay valid until the object is released. Slots may be null; the calls for them
 * then answer low word 0x0B. A slot's failure is the call's, and what it wrote is not handed out; a
 * success without a text, child or locale counts as "not found". Slots are called with no lock
 * held, from any thread that has the object.
 */
typedef struct zvsdk_zdo_provider {
  void* reserved1;
  zvsdk_status (*get_context)(void* data, const char** context);
  zvsdk_status (*get_child_count)(void* data, const char* key, uint32_t* count);
  /* Hands out the data of a further object of this provider, with the same user and locale group.
   * `release` ends it once, like that of the object itself. */
  zvsdk_status (*get_child)(void* data, const char* key, uint32_t ordinal, void** child);
  zvsdk_status (*get_value_count)(void* data, const char* key, uint32_t* count);
  zvsdk_status (*get_value)(void* data, const char* key, uint32_t ordinal, const char** text);
  void* reserved2;
  /* The entry at an index from 0. A null text is one that it does not have. */
  zvsdk_status (*render_value)(void* data, uint32_t index, const char** key, const char** text);
  /* Takes a reference of its own on the locale; null is none. */
  zvsdk_status (*set_locale)(void* data, zvsdk_locale* locale);
  /* Borrowed; null is none. */
  zvsdk_status (*get_locale)(void* data, zvsdk_locale** locale);
  /* Called once, when the last reference to the object goes. Its status is not looked at. */
  zvsdk_status (*release)(void* data);
} zvsdk_zdo_provider;

typedef struct zvsdk_zdo_interface {
  zvsdk_status (*release)(const struct zvsdk_zdo_interface* table);
  /* A new data object whose calls go to the provider table, which is copied. It holds the user (may
   * be null) while it lives. The locale group (may be null) is copied: the one that
   * zvsdk_manager_zdo_locale_set goes back to. No slot is called here; when it fails, the data stay
   * the caller's to release. */
  zvsdk_status (*zdo_create)(zvsdk_client* client, void* data, const zvsdk_zdo_provider* provider,
                             zvsdk_user* user, const char* locale_group, void* reserved1,
                             void* reserved2, zvsdk_zdo** object);
  zvsdk_status (*zdo_addref)(zvsdk_zdo* object);
  zvsdk_status (*zdo_release)(zvsdk_zdo* object);
  zvsdk_status (*zdo_get_type)(zvsdk_zdo* object, const char** context);
  /* Ordinals run from 1. Low word 3: no such value. */
  zvsdk_status (*zdo_value_get)(zvsdk_zdo* object, const char* key, uint32_t ordinal,
                                const char** text);
  /* The child is a new reference. */
  zvsdk_status (*zdo_child_get)(zvsdk_zdo* object, const char* key, uint32_t ordinal,
                                void* reserved, zvsdk_zdo** child);
} zvsdk_zdo_interface;

/* Types of a storage column. */
#define ZVSDK_STORAGE_STRING 1u
#define ZVSDK_STORAGE_BINARY 3u
/* Flags of a storage column. Columns with both of these bits are the table's key, together if there
 * are several. Other bits are kept and mean nothing. */
#define ZVSDK_STORAGE_COLUMN_KEY 3u
/* Flags of a record's value: no text, any value matches; or the value given. */
#define ZVSDK_STORAGE_EVERY 256u
#define ZVSDK_STORAGE_VALUE 512u
/* Modes in which a table is opened. */
#define ZVSDK_STORAGE_READ 1u
#define ZVSDK_STORAGE_READ_WRITE 2u
/* Most bytes of a file, table or column name, and most columns of a table. */
#define ZVSDK_STORAGE_NAME_SIZE 64u
#define ZVSDK_STORAGE_COLUMNS 32u
/* Low words of storage statuses. The first two are ordinary outcomes (warnings), the others are
 * errors, whose message in the error record names the file and says what to do. */
#define ZVSDK_STORAGE_MISSING 0x500u   /* no such file, or no such table in it */
#define ZVSDK_STORAGE_END 0x503u       /* the cursor is at its end */
#define ZVSDK_STORAGE_NOT_OPEN 0x501u  /* the folder is missing, is no folder, or refuses access */
#define ZVSDK_STORAGE_FOREIGN 0x502u   /* the file is not a storage file; it was left alone */
#define ZVSDK_STORAGE_DAMAGED 0x504u   /* the file is damaged or was changed by another program */
#define ZVSDK_STORAGE_READ_ONLY 0x505u /* file or folder cannot be written */
#define ZVSDK_STORAGE_FULL 0x506u      /* disk full, or a limit on sizes */
#define ZVSDK_STORAGE_IO 0x507u        /* the disk failed */
#define ZVSDK_STORAGE_BUSY 0x508u      /* others held the file for longer than one waits */

/* States of zvsdk_storage_info.integrity. */
enum { zvsdk_storage_unchecked = 0, zvsdk_storage_whole = 1, zvsdk_storage_damaged = 2 };

/* What storage_validate finds. Set `size`; the rest is zeroed, then written as far as it is known,
 * also when the call fails. */
struct zvsdk_storage_info {
  uint32_t size;      /* sizeof(zvsdk_storage_info) */
  uint32_t exists;    /* 1: the file is there */
  uint32_t readable;  /* 1: it is a storage file and can be read */
  uint32_t integrity; /* zvsdk_storage_unchecked, _whole or _damaged */
  uint64_t file_size; /* bytes */
  uint64_t free_size; /* bytes that storage_compact would give back, roughly */
  uint64_t row_count; /* rows of all tables */
};

/*
 * Storage: tables of typed columns in files. `file_name` is a plain name without a slash and
 * without the endings "-journal", "-wal" and "-shm" (low word 1); `location` is the folder, which
 * must exist; null or "" is the current folder. Table and column names are compared without regard
 * to ASCII case, values byte by byte.
 *
 * A put or commit that returned success survives the end of the process and of the machine at any
 * moment; one that was cut short leaves the old rows whole. Processes and threads that write the
 * same file wait for each other, up to ten seconds (ZVSDK_STORAGE_BUSY). No lock is held between
 * calls, but for a transaction between its first change and its end.
 *
 * Every handle may be used from any thread; calls on one handle run one at a time. Handles that are
 * left when the host stops are closed, open transactions rolled back. Objects do not depend on the
 * order of their releases: a record outlives its cursor and its table.
 *
 * A value has at most some 10^9 bytes. Low word 1 with a message: a record does not fit its table.
 * An out handle is null after a failure.
 */
typedef struct zvsdk_storage_interface {
  zvsdk_status (*storage_release)(const struct zvsdk_storage_interface* storage);
  /* Checks the whole file. A damaged one is ZVSDK_STORAGE_DAMAGED, success means that it is whole.
   * What the values mean is not looked at. */
  zvsdk_status (*storage_validate)(const struct zvsdk_storage_interface* storage,
                                   const char* file_name, const char* location,
                                   zvsdk_storage_info* info);
  /* Rewrites the file without the room that deleted rows left. Needs up to twice its size on the
   * disk while it runs. A damaged file is refused. */
  zvsdk_status (*storage_compact)(const struct zvsdk_storage_interface* storage,
                                  const char* file_name, const char* location);
  /* Removes a table with its rows. Handles of it that are open answer ZVSDK_STORAGE_MISSING. */
  zvsdk_status (*table_drop)(const struct zvsdk_storage_interface* storage, const char* file_name,
                             const char* table_name, const char* location);
  /* Opens an existing table. One that is opened to read and write where that is not allowed can be
   * read; its changes are refused (ZVSDK_STORAGE_READ_ONLY). */
  zvsdk_status (*table_open)(const struct zvsdk_storage_interface* storage, const char* file_name,
                             const char* table_name, const char* location, uint32_t mode,
                             zvsdk_storage_table** table);
  /* Makes the table, and the file where needed, and opens it to read and write. A table that is
   * there with the same columns, say because another process made it just now, is opened as it is;
   * with other columns: low word 0x368. The schema stays the caller's. */
  zvsdk_status (*table_create)(const struct zvsdk_storage_interface* storage, const char* file_name,
                               const char* table_name, const char* location, void* reserved,
                               zvsdk_storage_schema* schema, zvsdk_storage_table** table);
  /* A schema of the caller's own with the columns as they were declared. */
  zvsdk_status (*table_get_schema)(zvsdk_storage_table* table, zvsdk_storage_schema** schema);
  zvsdk_status (*table_close)(zvsdk_storage_table* table); /* null is a no-op */
  /* Selects the rows whose columns equal all values of the key record; ZVSDK_STORAGE_EVERY on a
   * column asks nothing of it. Low word 3: no row; but a record with ZVSDK_STORAGE_EVERY gives an
   * empty cursor then. */
  zvsdk_status (*table_find)(zvsdk_storage_table* table, zvsdk_storage_record* key, void* reserved,
                             zvsdk_storage_cursor** cursor);
  /* Inserts the record, or replaces the row with its key, in one step. A record from cursor_next
   * replaces the row that it came from, also under a new key; a row that already has that key goes.
   * Columns that are not set become empty. A table without key columns gets a further row. Low word
   * 3: the row that the record came from is gone, with values that were never read. */
  zvsdk_status (*table_put)(zvsdk_storage_table* table, zvsdk_storage_record* record,
                            zvsdk_storage_transaction* transaction);
  /* Deletes the row that a record came from, or, for another record, the row with its key. Low word
   * 3: it is gone. */
  zvsdk_status (*table_delete_record)(zvsdk_storage_table* table, zvsdk_storage_record* record,
                                      zvsdk_storage_transaction* transaction);
  /* A transaction belongs to the file of its first change; other files are refused (low word 1).
   * From then until its end, whoever else changes that file waits, this thread included. */
  zvsdk_status (*transaction_begin)(const struct zvsdk_storage_interface* storage,
                                    zvsdk_storage_transaction** transaction);
  /* Keeps all changes or, when it or one of them failed, none. Ends the handle in any case. */
  zvsdk_status (*transaction_commit)(zvsdk_storage_transaction* transaction);
  /* Keeps none and ends the handle; null is a no-op. */
  zvsdk_status (*transaction_rollback)(zvsdk_storage_transaction* transaction);
  zvsdk_status (*schema_create)(const struct zvsdk_storage_interface* storage,
                                zvsdk_storage_schema** schema);
  zvsdk_status (*schema_column_count)(zvsdk_storage_schema* schema, uint32_t* count);
  /* Index from 0; low word 3 past the end. What is not wanted may be null. */
  zvsdk_status (*schema_get_column)(zvsdk_storage_schema* schema, uint32_t index, const char** name,
                                    uint32_t* type, uint32_t* flags);
  zvsdk_status (*schema_add_column)(zvsdk_storage_schema* schema, const char* name, uint32_t type,
                                    uint32_t flags);
  zvsdk_status (*schema_release)(zvsdk_storage_schema* schema); /* null is a no-op */
  /* A record is a set of values by column name. It can be put any number of times. */
  zvsdk_status (*record_create)(const struct zvsdk_storage_interface* storage,
                                zvsdk_storage_record** record);
  /* Copies the data (may be null when `size` is 0); flags are ZVSDK_STORAGE_VALUE. */
  zvsdk_status (*record_set_binary)(zvsdk_storage_record* record, const char* column,
                                    const void* data, uint32_t size, uint32_t flags);
  /* ZVSDK_STORAGE_VALUE with a text, or ZVSDK_STORAGE_EVERY with null. */
  zvsdk_status (*record_set_string)(zvsdk_storage_record* record, const char* column,
                                    const char* text, uint32_t flags);
  /* Data and text stay until the column is set anew or the record goes. Low word 3: the record has
   * no such value. A binary value of a row is read when it is first asked for, as the row has it
   * then, so that walking over rows does not read them. */
  zvsdk_status (*record_get_binary)(zvsdk_storage_record* record, const char* column,
                                    const void** data, uint32_t* size);
  zvsdk_status (*record_get_string)(zvsdk_storage_record* record, const char* column,
                                    const char** text);
  zvsdk_status (*record_release)(zvsdk_storage_record* record); /* null is a no-op */
  /* The next row as a record of the caller's own; ZVSDK_STORAGE_END at the end. The order is that
   * of the key, or of insertion. Which rows there are was settled by table_find; what they hold is
   * read now, and rows that were deleted since are passed over. */
  zvsdk_status (*cursor_next)(zvsdk_storage_cursor* cursor, zvsdk_storage_record** record);
  zvsdk_status (*cursor_release)(zvsdk_storage_cursor* cursor); /* null is a no-op */
} zvsdk_storage_interface;

/* ---- 2. The embedded host ----------------------------------------------------------------- */

/* Options of zvsdk_manager_create. Zero-fill it, set `size` and what you need. */
typedef struct zvsdk_manager_config {
  uint32_t size;         /* sizeof(zvsdk_manager_config) */
  const char* data_path; /* folder of list data files, or null for the built-in copy */
} zvsdk_manager_config;

/*
 * Starts the host, or takes a further reference on the one that runs (`config` is then not looked
 * at). One host serves a process. `config` may be null. A reference is given back by
 * zvsdk_manager_release. Low word 0x0C and a message: `data_path` is no folder.
 */
ZVSDK_API zvsdk_status zvsdk_manager_create(const zvsdk_manager_config* config,
                                            zvsdk_sdkmanager** manager);
/*
 * Gives a reference back. The last one calls the shutdown callback of every client that is still
 * registered, then stops the host; it is refused (low word 6) while users or data objects live. No
 * other call may run at the same time as the last one.
 */
ZVSDK_API zvsdk_status zvsdk_manager_release(zvsdk_sdkmanager* manager);

/*
 * The calling thread's last recorded outcome. Texts live until the thread's next recorded one. A
 * module records its outcomes, but for the calls that say otherwise; the host's own calls record
 * failures and never clear the record. The calls for error records, memory functions and logging
 * leave it alone.
 */
typedef struct zvsdk_error_info {
  zvsdk_status mapped;  /* the code returned to the application; 0 after a success */
  zvsdk_status source;  /* the code where the fault arose */
  const char* function; /* the exported function, or "" */
  const char* message;  /* or "" */
} zvsdk_error_info;

/* The record of the calling thread. Works without a host, as do the next two. */
ZVSDK_API zvsdk_status zvsdk_manager_errorinfo_get(zvsdk_error_info* info);
/*
 * The newest outcome of this thread that was an error with a message, even when later outcomes
 * replaced it in the record; cleared by zvsdk_manager_errorinfo_clear. For logs: the record above
 * is nearly always enough after a failed call, because a call that reports twice, first its message
 * and then its function, leaves both there.
 */
ZVSDK_API zvsdk_status zvsdk_manager_errorinfo_get_message(zvsdk_error_info* info);
/* Empties the record and the kept message of this thread. */
ZVSDK_API zvsdk_status zvsdk_manager_errorinfo_clear(void);

/*
 * Gives back a reference on an object that a module handed out as a handle and has no call of its
 * own to release, such as the text of zvsdk_playlist_statement_analyze_ident. The last one destroys
 * the object. Low word 1: no such handle lives, or it is one of the host's own kinds.
 */
ZVSDK_API zvsdk_status zvsdk_manager_handle_release(const void* handle);

/* Memory functions of the application's own, each like that of the C library, with `context` in
 * front. They are called on any thread, several at once, never for a size of 0 or a null block. */
typedef struct zvsdk_memory_functions {
  void* (*alloc)(void* context, size_t size);
  void* (*calloc)(void* context, size_t count, size_t size);
  void* (*realloc)(void* context, void* block, size_t size);
  void (*free)(void* context, void* block);
  void* context;
} zvsdk_memory_functions;

/* Sets all four (low word 1 where one is missing); null restores the default. The record is copied.
 * To be called before the host is created; refused (low word 6) while blocks of the other family
 * live. */
ZVSDK_API zvsdk_status zvsdk_manager_memory_functions_set(const zvsdk_memory_functions* functions);

/* Log lines as finished text: `text` and `source` are borrowed for the call, never null. The
 * handler is called on the thread that logs, several at once, and must not log. */
typedef void (*zvsdk_log_handler)(void* context, uint32_t level, uint32_t code, uint32_t line,
                                  const char* source, const char* text);
/* Exchanges the handler; null turns logging off. A line that is under way on another thread may
 * still reach the old one. */
ZVSDK_API zvsdk_status zvsdk_manager_log_handler_set(zvsdk_log_handler handler, void* context);
/* Which levels (zcsl_log_*) of a package reach the handler; package 256 means all packages, a
 * larger one is refused (low word 1). None do at first. */
ZVSDK_API zvsdk_status zvsdk_manager_log_mask_set(uint32_t package, uint32_t levels);

/* A user, for calls that ask for one. Released by zvsdk_manager_user_release. The name may be null
 * or empty, and two users may have the same. */
ZVSDK_API zvsdk_status zvsdk_manager_user_create(const char* name, zvsdk_user** user);
/* The name given at creation or "", borrowed while the user lives. */
ZVSDK_API zvsdk_status zvsdk_manager_user_get_name(zvsdk_user* user, const char** name);
/* Gives the reference of the creation back. What was made for the user keeps it alive. */
ZVSDK_API zvsdk_status zvsdk_manager_user_release(zvsdk_user* user);

/* Decides about a feature such as "playlist" for a user (or null): 0 allows, anything else is the
 * status of the refused call. Called on that call's thread, several at once. */
typedef zvsdk_status (*zvsdk_license_policy)(void* context, zvsdk_user* user, const char* feature);
/* Null restores the default, which allows everything. */
ZVSDK_API zvsdk_status zvsdk_manager_license_policy_set(zvsdk_license_policy policy, void* context);

/*
 * Makes a locale ("eng", "ger", "fre", ...; region and descriptor may be null) the default of a
 * group, whose lists are then served in its language. Low word 0x2D3: no list has it. Documents of
 * the application's own folder are read here: low word 0x0C and a message when one cannot be used.
 * Until a group has a locale, attributes that need a list say so.
 */
ZVSDK_API zvsdk_status zvsdk_manager_locale_load(const char* group, const char* language,
                                                 const char* region, const char* descriptor);
/* Takes a group's locale away; what holds it keeps it. Low word 3: the group has none. */
ZVSDK_API zvsdk_status zvsdk_manager_locale_unload(const char* group);
/*
 * The elements of level 1 of a list from the listmanager table, in their order: index from 0; low
 * word 3 past the end. The element is a new reference, given back through the table, which also
 * walks on from it (element_get_child).
 */
ZVSDK_API zvsdk_status zvsdk_manager_list_get_root(zvsdk_list* list, uint32_t index,
                                                   zvsdk_list_element** element);

/*
 * Data objects: trees of contexts ("zvsdk_ctx_track", ...) with values and children by key, each
 * key holding any number in order. Not to be changed while another thread reads them. What makes an
 * object hands out one reference, given back by zvsdk_manager_zdo_release. An object that a
 * provider serves cannot be changed (low word 0x0B).
 */
/* An object without values and children. */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_create(const char* context, zvsdk_zdo** object);
/* One more value under a key. The text may be empty. */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_value_add(zvsdk_zdo* object, const char* key,
                                                   const char* text);
/* One more child under a key; the object takes a reference. A cycle is refused (low word 1). */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_child_add(zvsdk_zdo* object, const char* key,
                                                   zvsdk_zdo* child);
/* Gives a reference back. Children go with the last one unless somebody else holds them. */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_release(zvsdk_zdo* object);
/*
 * One JSON document: {"context": C, "values": {KEY: TEXT or [TEXT, ...]}, "children": {KEY: OBJECT
 * or [OBJECT, ...]}}. Whole numbers may stand for texts. A document that is refused: low word 0x0C,
 * and the message names the place.
 */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_from_json(const char* json, zvsdk_zdo** object);

/*
 * A flat description of one track. Null, "" or 0 is unknown. Zero-fill it and set what you know.
 *
 * Genre, mood, era, origin and artist type are given as a list id in decimal or as a name in the
 * language of the playlist locale (without one, of the music locale), in any case. An id stands as
 * it is, whether a list has it or not.
 *
 * A mood may also be a profile, "ID:WEIGHT,ID:WEIGHT,...": 1 to 64 pairs, weights from 1 to 100, in
 * any order. Or it is a point, which becomes a profile of the five named moods around it; with both
 * a point and a name or id, the profile is the point's and the id that of the name.
 */
typedef struct zvsdk_track_description {
  uint32_t size; /* sizeof(zvsdk_track_description) */
  const char* ident;
  const char* title;
  const char* const* artists; /* every credited artist, the main one first */
  uint32_t artist_count;
  const char* album;
  uint32_t year;
  const char* genre;
  uint32_t tempo;   /* beats a minute */
  const char* mood; /* profile, id or name */
  const char* origin;
  const char* artist_type;
  const char* era;         /* of the artist; a track whose artist has none goes by its year */
  uint32_t has_mood_point; /* not 0: the next two are given */
  float valence;           /* 0 is sad, 1 is happy */
  float energy;            /* 0 is calm, 1 is intense */
} zvsdk_track_description;

/* Which names of a description no list knows. */
#define ZVSDK_TRACK_UNKNOWN_GENRE 0x01u
#define ZVSDK_TRACK_UNKNOWN_MOOD 0x02u /* or the mood list has no points */
#define ZVSDK_TRACK_UNKNOWN_ERA 0x04u
#define ZVSDK_TRACK_UNKNOWN_ORIGIN 0x08u
#define ZVSDK_TRACK_UNKNOWN_ARTIST_TYPE 0x10u

/*
 * Expands a description to a full tree: track, album, artist, contributor, name, title. With
 * `unknown` the object is made without the names that no list knows, and the mask says which they
 * are; with null such a name is refused. Low word 0x0C, and a message that names the field and its
 * text: a name that is refused, a malformed profile, a point outside 0 to 1.
 */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_from_track(const zvsdk_track_description* track,
                                                    uint32_t* unknown, zvsdk_zdo** object);

/*
 * The stored form of a text (zvsdk_stored_text.h), for what a program keeps enciphered and a module
 * reads through the serialization table. It belongs to the caller: zcsl_memory_free.
 */
ZVSDK_API zvsdk_status zvsdk_manager_serialization_encode(const char* text, char** stored);

/* How many values or children an object has under a key; 0 is a success. */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_value_count(zvsdk_zdo* object, const char* key,
                                                     uint32_t* count);
ZVSDK_API zvsdk_status zvsdk_manager_zdo_child_count(zvsdk_zdo* object, const char* key,
                                                     uint32_t* count);
/*
 * For objects that a provider serves; low word 0x0B for others, and for what a provider cannot do.
 *
 * The entry at an index from 0, as key and text (null when it has no text). Past the end it fails
 * as the provider has it: a media of a collection with low word 0x361.
 */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_render(zvsdk_zdo* object, uint32_t index, const char** key,
                                                const char** text);
/*
 * Renders the object's texts in the locale that is now the default of a group (low word 0x2D3: it
 * has none). Null is the group that the object was made for; none, where it has no group or the
 * group no locale. Not to be called while another thread reads the object.
 */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_locale_set(zvsdk_zdo* object, const char* group);
/* The locale that the object's texts are in. What is not wanted may be null. The texts live until
 * the object gets another locale or goes. Low word 3: it has no locale. */
ZVSDK_API zvsdk_status zvsdk_manager_zdo_locale_get(zvsdk_zdo* object, const char** language,
                                                    const char** region, const char** descriptor);

/*
 * Walks the providers registered under an interface name: index from 0; low word 3 past the end.
 * `data` may be null. The table is the manager's copy and stays until the host stops, so that a
 * call through it is safe also when the provider deregisters meanwhile. The data are the provider's
 * own: it says what comes of a call with data that it no longer has (zvsdk_vibegrid.h: it is
 * refused).
 */
ZVSDK_API zvsdk_status zvsdk_manager_provider_get(const char* interface_name, uint32_t index,
                                                  const void** table, void** data);

#ifdef __cplusplus
}
#endif

#endif
