// folder_sync.h: brings a stored collection in step with a folder. The idents are the whole paths
// of files, and only those below the folder are looked at, so that a collection may hold several
// folders and catalogs too. Files are read that are new, or whose stamp is not the one that the
// track was stored with; a track that has none is merely read again.
#ifndef ZVPLAYLIST_FOLDER_SYNC_H
#define ZVPLAYLIST_FOLDER_SYNC_H

#include <exception>
#include <string>
#include <unordered_map>
#include <vector>

#include "tools/scan.h"
#include "tools/update.h"

namespace zvplaylist {

class folder_sync {
 public:
  // `again`: files are read whatever their stamps say.
  folder_sync(collection_update& target, const std::string& folder, bool again);

  // False: nothing in the folder is usable. No track is taken out for want of any file: the disk
  // may just not be there.
  bool run();

 private:
  struct known_file {
    const found_file* file;
    bool is_new = false;
  };

  void announce();
  void compare();
  void take_out();
  void read_files();
  bool needs_reading(const std::string& ident, const known_file& known);
  // Below the folder, and not below anything that could not be looked at.
  bool is_in_sight(const std::string& ident) const;
  static zvsdk_status take_difference(void* sync, playlist_collection* collection,
                                      const char* ident, uint32_t status, uint8_t* abort);

  collection_update& target_;
  console& out_;
  const std::string folder_;
  const bool again_;
  found_files found_;
  std::unordered_map<std::string, known_file> by_ident_;
  std::vector<std::string> gone_;
  std::exception_ptr fault_;
};

// True for an ident below a folder, which is given as a whole path.
bool is_below(const std::string& ident, const std::string& folder);

}  // namespace zvplaylist

#endif
