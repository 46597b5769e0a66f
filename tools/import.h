// import.h: catalogs in CSV and JSON Lines. A bad row is reported with its line and the rest goes
// on; reading keeps one row at a time.
#ifndef ZVPLAYLIST_IMPORT_H
#define ZVPLAYLIST_IMPORT_H

#include <istream>
#include <string>

#include "tools/record.h"

namespace zvplaylist {

enum class catalog_format { csv, tsv, json_lines, unknown };

// What messages call it: its path, or "standard input".
std::string catalog_name(const std::string& path);

// Reads the file at `path`, "-" being standard input. Returns how many rows made a track; 0 when
// the file cannot be read, which is reported.
size_t import_file(const std::string& path, const column_map& columns, const track_sink& sink,
                   console& out);

// The same on an open stream; `name` is what reports call it. An unknown format is sniffed.
size_t import_stream(std::istream& in, catalog_format format, const std::string& name,
                     const column_map& columns, const track_sink& sink, console& out);

}  // namespace zvplaylist

#endif
