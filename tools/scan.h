// scan.h: a folder of audio files. First the whole tree is listed, links that lead to something
// already seen left out, then the tags are read in the order of the paths, so that the same folder
// always gives the same collection. What cannot be read is reported and the rest goes on.
#ifndef ZVPLAYLIST_SCAN_H
#define ZVPLAYLIST_SCAN_H

#include <string>
#include <vector>

#include "tools/record.h"

namespace zvplaylist {

// A file with a stamp of its size and time of change.
struct found_file {
  std::string path;
  uint64_t stamp;
};

struct found_files {
  std::vector<found_file> files;    // sorted; paths begin with the folder as given
  std::vector<std::string> unseen;  // files and folders that could not be looked at or into
};

// Incomplete after an interruption (interrupt.h).
found_files find_audio_files(const std::string& folder, console& out);

// The track in a file, whose ident is the path. Nothing if it cannot be read, which is reported.
std::optional<track> read_audio_file(const found_file& file, console& out);

// Returns how many files made a track.
size_t scan_folder(const std::string& folder, const track_sink& sink, console& out);

// The path from the root, without "." and "..", links kept as they are. An empty one stays empty.
std::string absolute_path(const std::string& path);

}  // namespace zvplaylist

#endif
