// scan.h: a folder of audio files. First the whole tree is listed, links that lead to something
// already seen left out, then the tags are read in the order of the paths, so that the same folder
// always gives the same collection. What cannot be read is reported and the rest goes on.
#ifndef ZVPLAYLIST_SCAN_H
#define ZVPLAYLIST_SCAN_H

#include <string>
#include <vector>

#include "tools/record.h"

namespace zvplaylist {

// Every audio file below a folder, sorted; paths begin with the folder as given.
std::vector<std::string> find_audio_files(const std::string& folder, console& out);

// The ident of a track is its path. Returns how many files made a track.
size_t scan_folder(const std::string& folder, const track_sink& sink, console& out);

}  // namespace zvplaylist

#endif
