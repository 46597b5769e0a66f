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

#include "tools/interrupt.h"
#include "tools/stamp.h"
#include "tools/tags.h"

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

uint64_t stamp_of(const struct stat& status) {
  return stamp_maker()
      .add(static_cast<uint64_t>(status.st_size))
      .add(static_cast<uint64_t>(status.st_mtim.tv_sec))
      .add(static_cast<uint64_t>(status.st_mtim.tv_nsec))
      .stamp();
}

// Lists a tree. Links wait until everything else was seen, so that a file keeps its plain path when
// a link leads to it too, and a loop of links ends at the first folder that is met again.
class walk {
 public:
  explicit walk(console& out) : out_(out) {}
  found_files run(const std::string& folder);

 private:
  void list(const std::string& folder);
  void visit(const std::string& path);
  bool first_visit(const struct stat& status) {
    return seen_.emplace(status.st_dev, status.st_ino).second;
  }

  void miss(const std::string& path, std::string_view why) {
    out_.report(outcome::skipped, {path}, why);
    found_.unseen.push_back(path);
  }

  console& out_;
  std::vector<std::string> folders_, links_;
  found_files found_;
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
  if (error) miss(folder, error.message());
  std::sort(paths.begin(), paths.end());
  for (std::string& path : paths) {
    if (fs::is_symlink(path, error))
      links_.push_back(std::move(path));
    else
      visit(path);
  }
  out_.progress("looking for music", found_.files.size());
}

void walk::visit(const std::string& path) {
  struct stat status;
  if (stat(path.c_str(), &status) != 0) {
    if (is_audio_path(path)) return miss(path, std::strerror(errno));
    return found_.unseen.push_back(path);
  }
  const bool folder = S_ISDIR(status.st_mode);
  if (!folder && !(S_ISREG(status.st_mode) && is_audio_path(path))) return;
  // A second hard link to a file is a file of its own; a second way by a symbolic link is not.
  if (!first_visit(status) && (folder || fs::is_symlink(path))) return;
  if (folder)
    folders_.push_back(path);
  else
    found_.files.push_back({path, stamp_of(status)});
}

found_files walk::run(const std::string& folder) {
  struct stat status;
  if (stat(folder.c_str(), &status) != 0) {
    miss(folder, std::strerror(errno));
    return std::move(found_);
  }
  first_visit(status);
  folders_.push_back(folder);
  while (!(folders_.empty() && links_.empty()) && interrupted_by() == 0) {
    std::vector<std::string>& next = folders_.empty() ? links_ : folders_;
    const std::string path = std::move(next.back());
    next.pop_back();
    if (&next == &links_)
      visit(path);
    else
      list(path);
  }
  std::ranges::sort(found_.files, {}, &found_file::path);
  return std::move(found_);
}

// Empty when the file can be read.
std::string why_unreadable(const std::string& path) {
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (descriptor < 0) return std::strerror(errno);
  close(descriptor);
  return {};
}

}  // namespace

found_files find_audio_files(const std::string& folder, console& out) {
  return walk(out).run(folder);
}

std::optional<track> read_audio_file(const found_file& file, console& out) {
  const place where{file.path};
  if (const std::string why = why_unreadable(file.path); !why.empty()) {
    out.report(outcome::skipped, where, why);
    return std::nullopt;
  }
  auto tags = read_tags(file.path);
  if (!tags) {
    out.report(outcome::skipped, where, "not a readable audio file");
    return std::nullopt;
  }
  // The ident is the path as the caller would write it; a player needs it whatever its own folder.
  tags->values.emplace_back(field::ident, file.path);
  tags->values.emplace_back(field::location, absolute_path(file.path));
  auto entry = track_from_record(tags->values, where, out);
  if (!entry) return std::nullopt;
  entry->seconds = tags->seconds;
  entry->stamp = file.stamp;
  return entry;
}

size_t scan_folder(const std::string& folder, const track_sink& sink, console& out) {
  const auto [files, unseen] = find_audio_files(folder, out);
  size_t usable = 0;
  for (size_t i = 0; i < files.size(); ++i) {
    out.progress("reading tags", i, files.size());
    auto entry = read_audio_file(files[i], out);
    if (!entry) continue;
    sink(std::move(*entry), {files[i].path});
    ++usable;
  }
  if (files.empty() && unseen.empty()) out.report(outcome::noted, {folder}, "no audio files");
  return usable;
}

std::string absolute_path(const std::string& path) {
  std::error_code error;  // the current folder may be gone; and an empty path leads nowhere
  fs::path absolute = fs::absolute(path, error);
  if (error) absolute = path;
  std::string whole = absolute.lexically_normal().string();
  if (whole.size() > 1 && whole.ends_with('/')) whole.pop_back();
  return whole;
}

}  // namespace zvplaylist
