// collection.h: the library's calls on one collection, with failures as exceptions. Idents that are
// listed or looked for include those of what is joined.
#ifndef ZVPLAYLIST_COLLECTION_H
#define ZVPLAYLIST_COLLECTION_H

#include <string>
#include <vector>

#include "tools/session.h"

namespace zvplaylist {

unique_collection new_collection(const std::string& name);
std::string name_of(playlist_collection* collection);
size_t size_of(playlist_collection* collection);
std::vector<std::string> idents_of(playlist_collection* collection);
bool holds_ident(playlist_collection* collection, const std::string& ident);
void remove_ident(playlist_collection* collection, const std::string& ident);
bool carries_every_attribute(playlist_collection* collection);

// The serialized form.
std::string bytes_of(playlist_collection* collection);
unique_collection collection_of(const std::string& bytes);

}  // namespace zvplaylist

#endif
