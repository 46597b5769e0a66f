// Locks of open files on single bytes.
#include "tools/store_lock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>

#include "tools/command.h"
#include "tools/stamp.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

// Names that differ in case alone share a place, for only one of them may be begun. Others that do
// wait for each other without need, and that is all.
int64_t place_of(const std::string& name) {
  return static_cast<int64_t>(stamp_maker().add(ascii_lower(name)).stamp());
}

[[noreturn]] void fail(const std::string& folder, const char* why) {
  throw failure(exit_storage, "cannot use " + folder + ": " + why +
                                  "; name a folder that can be written with --store DIR");
}

// What holds a person's library is for that person.
int open_lock_file(const std::string& folder) {
  std::error_code error;
  const mode_t before = umask(077);
  std::filesystem::create_directories(folder, error);
  umask(before);
  if (error) fail(folder, error.message().c_str());
  const int file = open((folder + "/zvplaylist.lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) fail(folder, std::strerror(errno));
  return file;
}

}  // namespace

store_lock::store_lock(const std::string& folder, const std::vector<std::string>& names,
                       console& out)
    : file_(open_lock_file(folder)) {
  std::vector<int64_t> places;
  for (const std::string& name : names) places.push_back(place_of(name));
  // In one order for all programs, so that no two wait for each other.
  std::sort(places.begin(), places.end());
  for (const int64_t place : places) lock(folder, place, out);
}

store_lock::~store_lock() {
  close(file_);
}

void store_lock::lock(const std::string& folder, int64_t place, console& out) const {
  struct flock request {};
  request.l_type = F_WRLCK;
  request.l_whence = SEEK_SET;
  request.l_start = place;
  request.l_len = 1;
  if (fcntl(file_, F_OFD_SETLK, &request) == 0) return;
  if (errno == EAGAIN || errno == EACCES) {
    out.note("waiting for another zvplaylist that changes the same collection");
    if (fcntl(file_, F_OFD_SETLKW, &request) == 0) return;
  }
  const char* why = std::strerror(errno);
  close(file_);
  fail(folder, why);
}

}  // namespace zvplaylist
