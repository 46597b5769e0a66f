// record.h: from the raw values of a row, a JSON object or a file's tags to a track: text is
// repaired, dates and tempos become numbers, and what is missing or wrong is reported once a row.
#ifndef ZVPLAYLIST_RECORD_H
#define ZVPLAYLIST_RECORD_H

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/columns.h"
#include "tools/console.h"
#include "tools/track.h"

namespace zvplaylist {

// Values in the order of their columns. Artists and what names an element of a list may occur
// several times; of the other fields the first that is not empty counts.
using record = std::vector<std::pair<field, std::string>>;

// Nothing when the record has no usable ident, which is reported.
std::optional<track> track_from_record(const record& values, const place& where, console& out);

// Takes each track that was read.
using track_sink = std::function<void(track&& entry, const place& where)>;

}  // namespace zvplaylist

#endif
