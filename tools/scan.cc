// Walks folders and turns the audio files into tracks.
#include "tools/scan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>

#include "tools/tags.h"

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

// Lists a tree. Links wait until everything else was seen, so that a file keeps its plain path when
// a link leads to it too, and a loop of links ends at the first folder that is met again.
class walk {
 public:
  explicit walk(console& out) : out_(out) {}
  std::vector<std::string> run(const std::string& folder);

 private:
  void list(const std::string& folder);
  void visit(const std::string& path);
  bool first_visit(const struct stat& status) {
    return seen_.emplace(status.st_dev, status.st_ino).second;
  }

  console& out_;
  std::vector<std::string> folders_, links_, files_;
  std::set<std::pair<dev_t, ino_t>> seen_;
};

void walk::list(const std::string& folder) {
  std::error_code error;
  fs::directory_iterator entry(folder, error);
  std::vector<std::string> paths;
  while (!error && entry != fs::directory_iterator()) {
    paths.push_back(entry->path().string());
    entry.increment(error);
  }
  if (error) out_.report(outcome::skipped, {folder}, error.message());
  std::sort(paths.begin(), paths.end());
  for (std::string& path : paths) {
    if (fs::is_symlink(path, error))
      links_.push_back(std::move(path));
    else
      visit(path);
  }
  out_.progress("looking for music", files_.size());
}

void walk::visit(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) {
    if (is_audio_path(path)) out_.report(outcome::skipped, {path}, std::strerror(errno));
    return;
  }
  const bool folder = S_ISDIR(status.st_mode);
  if (!folder && !(S_ISREG(status.st_mode) && is_audio_path(path))) return;
  // A second hard link to a file is a file of its own; a second way by a symbolic link is not.
  if (!first_visit(status) && (folder || fs::is_symlink(path))) return;
  (folder ? folders_ : files_).push_back(path);
}

std::vector<std::string> walk::run(const std::string& folder) {
  struct stat status;
  if (stat(folder.c_str(), &status) != 0) {
    out_.report(outcome::skipped, {folder}, std::strerror(errno));
    return {};
  }
  first_visit(status);
  folders_.push_back(folder);
  while (!folders_.empty() || !links_.empty()) {
    std::vector<std::string>& next = folders_.empty() ? links_ : folders_;
    const std::string path = std::move(next.back());
    next.pop_back();
    if (&next == &links_)
      visit(path);
    else
      list(path);
  }
  std::sort(files_.begin(), files_.end());
  return std::move(files_);
}

// Empty when the file can be read.
std::string why_unreadable(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::strerror(errno);
  close(descriptor);
  return {};
}

bool scan_file(const std::string& path, const track_sink& sink, console& out) {
  const place where{path};
  if (const std::string why = why_unreadable(path); !why.empty()) {
    out.report(outcome::skipped, where, why);
    return false;
  }
  auto tags = read_tags(path);
  if (!tags) {
    out.report(outcome::skipped, where, "not a readable audio file");
    return false;
  }
  // The ident is the path as the caller would write it; a player needs it whatever its own folder.
  tags->values.emplace_back(field::ident, path);
  tags->values.emplace_back(field::location, fs::absolute(path).lexically_normal().string());
  auto entry = track_from_record(tags->values, where, out);
  if (!entry) return false;
  entry->seconds = tags->seconds;
  sink(std::move(*entry), where);
  return true;
}

}  // namespace

std::vector<std::string> find_audio_files(const std::string& folder, console& out) {
  return walk(out).run(folder);
}

size_t scan_folder(const std::string& folder, const track_sink& sink, console& out) {
  const std::vector<std::string> files = find_audio_files(folder, out);
  size_t usable = 0;
  for (size_t i = 0; i < files.size(); ++i) {
    out.progress("reading tags", i, files.size());
    usable += scan_file(files[i], sink, out);
  }
  if (files.empty()) out.report(outcome::noted, {folder}, "no audio files");
  return usable;
}

}  // namespace zvplaylist
