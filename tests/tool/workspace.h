// workspace.h: a folder of its own for each test, with files of any content and small real audio
// files, removed at the end.
#ifndef ZVPLAYLIST_TESTS_WORKSPACE_H
#define ZVPLAYLIST_TESTS_WORKSPACE_H

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "tests/common/host_objects.h"
#include "tools/command.h"
#include "tools/track.h"

namespace zvplaylist {

using tag_values = std::map<std::string, std::vector<std::string>>;

class workspace {
 public:
  workspace();
  ~workspace();
  workspace(const workspace&) = delete;
  workspace& operator=(const workspace&) = delete;

  // Paths are below the folder; folders on the way are made.
  std::string path(const std::string& name) const { return (root_ / name).string(); }
  std::string write(const std::string& name, const std::string& content) const;
  // An empty FLAC stream with tags, or a WAV file where the name says so.
  std::string write_audio(const std::string& name, const tag_values& tags) const;

 private:
  std::filesystem::path root_;
};

std::string read_file(const std::string& path);

// "ident/title/artist+artist/year/tempo" and a line end.
std::string summary(const track& entry);

// The exit code that work ends the run with.
template <class Work>
exit_code code_of(Work&& work) {
  try {
    work();
  } catch (const failure& error) {
    return error.code();
  }
  return exit_code{};
}

}  // namespace zvplaylist

#endif
