// Announces the files, takes the differences, reads what is needed.
#include "tools/folder_sync.h"

#include <algorithm>

#include "tools/command.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

// As track_from_record makes it.
std::string ident_of(const std::string& path) {
  return repair_text(path).text;
}

}  // namespace

bool is_below(const std::string& ident, const std::string& folder) {
  if (folder.empty()) return false;
  const std::string start = replace_unusable(folder).text + (folder.ends_with('/') ? "" : "/");
  return ident.starts_with(start);
}

folder_sync::folder_sync(collection_update& target, const std::string& folder, bool again)
    : target_(target), out_(target.out()), folder_(absolute_path(folder)), again_(again) {}

bool folder_sync::run() {
  found_ = find_audio_files(folder_, out_);
  target_.pause();
  if (found_.files.empty()) return false;
  announce();
  compare();
  take_out();
  read_files();
  return true;
}

// Every ident once: two paths may differ in nothing but bytes that no text can have.
void folder_sync::announce() {
  std::erase_if(found_.files, [&](const found_file& file) {
    if (by_ident_.try_emplace(ident_of(file.path)).second) return false;
    out_.report(outcome::skipped, {file.path}, "another file has the same ident, left out");
    return true;
  });
  for (const found_file& file : found_.files) {
    const std::string ident = ident_of(file.path);
    by_ident_[ident].file = &file;
    check(zvsdk_playlist_collection_sync_ident_add(target_.library().own(), ident.c_str()),
          "announcing a file");
  }
}

// A hidden ident is told as gone and as new, although its file is there.
zvsdk_status folder_sync::take_difference(void* data, playlist_collection*, const char* ident,
                                          uint32_t status, uint8_t* abort) {
  auto* sync = static_cast<folder_sync*>(data);
  try {
    if (status == playlist_sync_status_add)
      sync->by_ident_[ident].is_new = true;
    else if (!sync->by_ident_.contains(ident) && sync->is_in_sight(ident))
      sync->gone_.emplace_back(ident);
  } catch (...) {  // the library's frames must not be unwound
    sync->fault_ = std::current_exception();
    *abort = 1;
  }
  return 0;
}

void folder_sync::compare() {
  const zvsdk_status status =
      zvsdk_playlist_collection_sync_process(target_.library().own(), take_difference, this);
  if (fault_) std::rethrow_exception(fault_);
  check(status, "comparing the collection with the folder");
}

bool folder_sync::is_in_sight(const std::string& ident) const {
  return is_below(ident, folder_) &&
         std::ranges::none_of(found_.unseen, [&](const std::string& path) {
           return ident == ident_of(path) || is_below(ident, path);
         });
}

// From the end, where taking out is cheapest.
void folder_sync::take_out() {
  for (size_t i = gone_.size(); i-- > 0; target_.pause()) target_.remove(gone_[i]);
}

bool folder_sync::needs_reading(const std::string& ident, const known_file& known) {
  if (again_) return true;
  if (target_.is_hidden(ident)) return false;
  return known.is_new || target_.library().stamp(ident) != known.file->stamp;
}

// A file that is there and cannot be read keeps the track that it was.
void folder_sync::read_files() {
  for (size_t i = 0; i < found_.files.size(); ++i) {
    const found_file& file = found_.files[i];
    const std::string ident = ident_of(file.path);
    out_.progress("reading tags", i, found_.files.size());
    if (!needs_reading(ident, by_ident_[ident]))
      target_.count_unchanged();
    else if (auto entry = read_audio_file(file, out_))
      target_.put(std::move(*entry), {file.path});
    target_.pause();
  }
}

}  // namespace zvplaylist
