// atomic_file.h: files that are there whole or not at all.
#ifndef ZVPLAYLIST_ATOMIC_FILE_H
#define ZVPLAYLIST_ATOMIC_FILE_H

#include <string>

namespace zvplaylist {

// Writes beside the target and moves the finished file there. Refuses to replace a file unless
// forced to (a usage failure), and anything but a file in any case; that and any other failure is a
// storage failure and leaves what was there.
void write_whole_file(const std::string& path, const std::string& bytes, bool force);

}  // namespace zvplaylist

#endif
