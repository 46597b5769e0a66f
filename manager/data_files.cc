// Documents from the application's folder or from the built-in copy.

#include "manager/data_files.h"

#include <dirent.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <set>

#include "manager/guard.h"

namespace manager {

namespace fs = std::filesystem;

namespace {

/* Names are asked for by callers: nothing but a plain word may reach the file system. */
bool plain_word(std::string_view name) {
  return !name.empty() && std::all_of(name.begin(), name.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
  });
}

struct close_folder {
  void operator()(DIR* folder) const { closedir(folder); }
};

/* The names of a folder's documents. The directory iterators of <filesystem> end the program when
 * memory runs out. */
void add_documents(const std::string& folder, std::set<std::string>& names) {
  constexpr std::string_view ending = ".json";
  const std::unique_ptr<DIR, close_folder> entries(opendir(folder.c_str()));
  if (!entries) throw status_error(error_bad_data, folder + ": cannot be read");
  while (const dirent* entry = readdir(entries.get())) {
    const std::string_view file = entry->d_name;
    if (!file.ends_with(ending)) continue;
    const std::string_view name = file.substr(0, file.size() - ending.size());
    if (plain_word(name)) names.emplace(name);
  }
}

/* Nothing but a file is opened: a folder cannot be read, and a pipe might never end. */
std::string read_file(const fs::path& path) {
  std::error_code ignored;
  std::ifstream file;
  if (fs::is_regular_file(path, ignored)) file.open(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (!file.is_open() || file.bad())
    throw status_error(error_bad_data, path.string() + ": cannot be read");
  return text;
}

}  // namespace

data_files::data_files(std::string path) : path_(std::move(path)) {
  std::error_code ignored;
  if (!path_.empty() && !fs::is_directory(path_, ignored)) {
    throw status_error(error_bad_data, path_ + ": no such folder");
  }
}

std::vector<std::string> data_files::own_names() const {
  std::set<std::string> found;
  if (!path_.empty()) add_documents(path_, found);
  return {found.begin(), found.end()};
}

std::optional<std::string> data_files::read(std::string_view name) const {
  if (!plain_word(name)) return std::nullopt;
  if (!path_.empty()) {
    const fs::path path = fs::path(path_) / (std::string(name) + ".json");
    std::error_code ignored;
    if (fs::exists(path, ignored)) return read_file(path);
  }
  const builtin_file* end = builtin_files + builtin_file_count;
  const builtin_file* found =
      std::find_if(builtin_files, end, [&](const builtin_file& file) { return file.name == name; });
  if (found == end) return std::nullopt;
  return std::string(found->text);
}

}  // namespace manager
