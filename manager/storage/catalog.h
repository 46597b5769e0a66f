/*
 * catalog.h: what a storage file says of itself: that it is one (application id and version of the
 * format), and which tables it has with which columns, in a table of the service's own. Callers
 * hold a unit of work.
 */
#ifndef STORAGE_CATALOG_H
#define STORAGE_CATALOG_H

#include <optional>

#include "manager/storage/connection.h"
#include "manager/storage/schema.h"

namespace manager::storage {

/* False for an empty file. Throws when the file is somebody else's or of a later version; the
 * schema of such a file is not even read. */
bool is_storage_file(connection& file);
/* Makes a file that was empty a storage file, unless somebody else just did. */
void make_storage_file(connection& file);

std::optional<table_definition> find_table(connection& file, std::string_view name);
/* Throws "missing" when there is none, and damage when the table is not as it was made. */
table_definition get_table(connection& file, std::string_view name);
bool has_table(connection& file, const table_definition& table);
std::vector<std::string> table_names(connection& file);

/* Gives the definition its id. */
void add_table(connection& file, table_definition& table);
void drop_table(connection& file, std::string_view name);

}  // namespace manager::storage

#endif
