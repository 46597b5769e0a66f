// Looks at the environment.
#include "tools/xdg.h"

#include <cstdlib>
#include <filesystem>

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;

fs::path folder_in(const char* variable) {
  const char* value = std::getenv(variable);
  const fs::path folder = value != nullptr ? value : "";
  return folder.is_absolute() ? folder : fs::path();
}

}  // namespace

std::string user_folder(const char* variable, const char* fallback) {
  const fs::path named = folder_in(variable);
  if (!named.empty()) return named / "zvplaylist";
  const fs::path home = folder_in("HOME");
  return home.empty() ? home : home / fallback / "zvplaylist";
}

}  // namespace zvplaylist
