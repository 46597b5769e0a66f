// xdg.h: where a user's files are.
#ifndef ZVPLAYLIST_XDG_H
#define ZVPLAYLIST_XDG_H

#include <string>

namespace zvplaylist {

// The folder "zvplaylist" in the one that the variable names, or else in `fallback` below the home
// folder; empty if there is neither. As the XDG rules have it, a path that is not absolute counts
// as none.
std::string user_folder(const char* variable, const char* fallback);

}  // namespace zvplaylist

#endif
