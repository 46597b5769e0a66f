// collection.h: the library's calls on one collection, with failures as exceptions. Idents that are
// listed or looked for include those of what is joined.
//
// The library knows idents by a hash of 32 bits. Of several with the same hash a stored collection
// finds the last alone; the others are hidden: listed, counted and chosen by statements, but
// neither read nor removed by ident, and they would be added a second time. A removal may hide
// others too. Among a hundred thousand files one such pair is to be expected, and it is to do no
// harm.
#ifndef ZVPLAYLIST_COLLECTION_H
#define ZVPLAYLIST_COLLECTION_H

#include <string>
#include <vector>

#include "tools/library.h"

namespace zvplaylist {

unique_collection new_collection(const std::string& name);
std::string name_of(playlist_collection* collection);
void rename_collection(playlist_collection* collection, const std::string& name);
size_t size_of(playlist_collection* collection);
std::vector<std::string> idents_of(playlist_collection* collection);
bool holds_ident(playlist_collection* collection, const std::string& ident);
// What there is to say of a hidden ident.
std::string hidden_text(const std::string& ident);
void remove_ident(playlist_collection* collection, const std::string& ident);
bool carries_every_attribute(playlist_collection* collection);

// The serialized form.
std::string bytes_of(playlist_collection* collection);
unique_collection collection_of(const std::string& bytes);

}  // namespace zvplaylist

#endif
