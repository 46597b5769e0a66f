// Documents from the application's folder or from the built-in copy.

#include "manager/data_files.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
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

std::string read_file(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  if (file.bad()) throw status_error(error_bad_data, path.string() + ": cannot be read");
  return text;
}

}  // namespace

data_files::data_files(std::string path) : m_path(std::move(path)) {
  std::error_code ignored;
  if (!m_path.empty() && !fs::is_directory(m_path, ignored)) {
    throw status_error(error_bad_data, m_path + ": no such folder");
  }
}

std::vector<std::string> data_files::names() const {
  std::set<std::string> found;
  for (size_t i = 0; i < builtin_file_count; ++i) found.emplace(builtin_files[i].name);
  if (!m_path.empty()) {
    std::error_code ignored;
    for (const fs::directory_entry& entry : fs::directory_iterator(m_path, ignored)) {
      const fs::path& path = entry.path();
      if (path.extension() == ".json" && plain_word(path.stem().string())) {
        found.insert(path.stem().string());
      }
    }
  }
  return {found.begin(), found.end()};
}

std::optional<std::string> data_files::read(std::string_view name) const {
  if (!plain_word(name)) return std::nullopt;
  if (!m_path.empty()) {
    const fs::path path = fs::path(m_path) / (std::string(name) + ".json");
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
