// Write, sync, rename.
#include "tools/atomic_file.h"

#include <stdlib.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/command.h"

namespace zvplaylist {
namespace {

// A new file of the user's, gone again unless it is moved to its place.
class new_file {
 public:
  explicit new_file(const std::string& path) : target_(path), path_(path + ".XXXXXX") {
    descriptor_ = mkstemp(path_.data());
    if (descriptor_ < 0) fail();
  }
  new_file(const new_file&) = delete;
  new_file& operator=(const new_file&) = delete;
  ~new_file() {
    close(descriptor_);
    if (!moved_) unlink(path_.c_str());
  }

  void write_all(const std::string& bytes) {
    for (size_t done = 0; done < bytes.size();) {
      const ssize_t written = ::write(descriptor_, bytes.data() + done, bytes.size() - done);
      if (written < 0 && errno != EINTR) fail();
      if (written > 0) done += static_cast<size_t>(written);
    }
    const mode_t mask = umask(0);
    umask(mask);
    if (fchmod(descriptor_, 0666 & ~mask) != 0 || fsync(descriptor_) != 0) fail();
  }

  void move_to_target() {
    moved_ = std::rename(path_.c_str(), target_.c_str()) == 0;
    if (!moved_) fail();
  }

 private:
  [[noreturn]] void fail() const {
    throw failure(exit_storage, "cannot write " + target_ + ": " + std::strerror(errno));
  }

  std::string target_, path_;
  int descriptor_ = -1;
  bool moved_ = false;
};

}  // namespace

void write_whole_file(const std::string& path, const std::string& bytes, bool force) {
  struct stat status;
  if (!force && lstat(path.c_str(), &status) == 0)
    throw failure(exit_usage, path + " is there already; --force replaces it");
  if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
    throw failure(exit_storage, "cannot write " + path + ": a device, folder or pipe is there");
  new_file file(path);
  file.write_all(bytes);
  file.move_to_target();
}

}  // namespace zvplaylist
