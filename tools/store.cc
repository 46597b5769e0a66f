// The library's storage calls, and where the folder is.
#include "tools/store.h"

#include <algorithm>
#include <cstring>
#include <filesystem>

#include "tools/collection.h"
#include "tools/command.h"
#include "tools/scan.h"
#include "tools/text.h"
#include "tools/xdg.h"

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

constexpr char file_name[] = "zv_colls.zdb";
constexpr size_t max_name_bytes = 255;
// Of the file's whole path: what the database below takes, less the end of its journal's name.
constexpr size_t max_path_bytes = 504;

std::string usual_folder() {
  const std::string folder = user_folder("XDG_DATA_HOME", ".local/share");
  if (folder.empty())
    throw failure(exit_usage,
                  "there is no home folder to keep collections in; name one with --store DIR");
  return folder;
}

// Told before anything is made there, and by its cause.
std::string checked_folder(const std::string& folder) {
  const size_t size = absolute_path(folder).size() + 1 + std::strlen(file_name);
  if (size > max_path_bytes)
    throw failure(exit_storage,
                  "cannot use " + folder + ": with the name of the file in it the path has " +
                      std::to_string(size) + " bytes, and " + std::to_string(max_path_bytes) +
                      " is the most; name a folder with a shorter path by --store DIR");
  return folder;
}

std::string listed(const std::vector<std::string>& names) {
  constexpr size_t most = 10;
  std::string text;
  for (size_t i = 0; i < std::min(names.size(), most); ++i) text += (i == 0 ? "" : ", ") + names[i];
  return text + (names.size() > most ? ", ..." : "");
}

}  // namespace

void check_name(const std::string& name) {
  if (name.empty() || trim(name) != name || name.size() > max_name_bytes ||
      printable(name) != name || replace_unusable(name).text != name)
    throw failure(exit_usage, "'" + printable(name) + "' cannot name a collection: 1 to " +
                                  std::to_string(max_name_bytes) +
                                  " bytes of plain text are wanted, with no blanks around it");
}

store::store(const std::string& folder)
    : folder_(checked_folder(folder.empty() ? usual_folder() : folder)) {
  check(zvsdk_playlist_storage_location_set(folder_.c_str()), "choosing the store");
}

bool store::exists() const {
  std::error_code error;
  return fs::exists(fs::path(folder_) / file_name, error) || error;
}

std::vector<std::string> store::names() const {
  if (!exists()) return {};
  uint32_t count = 0;
  check(zvsdk_playlist_storage_count_collections(&count), "reading the store");
  std::vector<std::string> names;
  const char* name = nullptr;
  for (uint32_t i = 0; i < count; ++i) {
    check(zvsdk_playlist_storage_enum_collections(i, &name), "reading the store");
    names.push_back(name);
  }
  std::sort(names.begin(), names.end());
  return names;
}

bool store::has(const std::string& name) const {
  return std::ranges::count(names(), name) != 0;
}

void store::require(const std::string& name) const {
  const std::vector<std::string> known = names();
  if (std::ranges::count(known, name) != 0) return;
  throw failure(exit_no_match, "there is no collection '" + name + "' in " + folder_ +
                                   (known.empty() ? "; zvplaylist scan DIR --into NAME makes one"
                                                  : "; there is " + listed(known)));
}

void store::require_free(const std::string& name) const {
  if (has(name))
    throw failure(exit_usage, "there is a collection '" + name + "' already; --force replaces it");
}

void store::require_distinct(const std::string& name, const std::string& renamed) const {
  for (const std::string& other : names())
    if (other != name && other != renamed && ascii_lower(other) == ascii_lower(name))
      throw failure(exit_usage, "there is a collection '" + other + "': '" + name +
                                    "' must differ from it in more than the case of letters");
}

unique_collection store::load(const std::string& name) const {
  require(name);
  playlist_collection* loaded = nullptr;
  try {
    check(zvsdk_playlist_storage_load_collection(name.c_str(), &loaded), "reading it");
  } catch (const library_error& error) {
    throw failure(exit_storage, "cannot load collection '" + name + "' from " + folder_ + ": " +
                                    error.what() + "; zvplaylist check tells what is whole");
  }
  unique_collection collection(loaded);
  // Its row counts, should the data say another name.
  if (name_of(loaded) != name) rename_collection(loaded, name);
  return collection;
}

void store::put(playlist_collection* collection) const {
  check(zvsdk_playlist_storage_store_collection(collection), "storing a collection");
}

void store::remove(const std::string& name) const {
  check(zvsdk_playlist_storage_remove_collection(name.c_str()), "removing a collection");
}

}  // namespace zvplaylist
