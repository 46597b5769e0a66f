// What the formats share, and the writing.
#include "tools/output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "tools/command.h"

namespace zvplaylist {
namespace {

constexpr std::string_view plain_uri_bytes =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/!$&'()*+,;=@";
// Left alone where a location is a URI already.
constexpr std::string_view uri_syntax_bytes = ":?#[]%";

bool has_scheme(std::string_view location) {
  const size_t colon = location.find("://");
  return colon != std::string_view::npos && colon > 0 && location.find_first_of("/ ") == colon + 1;
}

[[noreturn]] void fail_to_write(const std::string& path) {
  throw failure(exit_storage, "cannot write " + path + ": " + std::strerror(errno));
}

}  // namespace

std::string uri_of(std::string_view location) {
  const bool is_uri = has_scheme(location);
  std::string uri = !is_uri && location.starts_with('/') ? "file://" : "";
  for (unsigned char c : location) {
    if (plain_uri_bytes.find(static_cast<char>(c)) != std::string_view::npos ||
        (is_uri && uri_syntax_bytes.find(static_cast<char>(c)) != std::string_view::npos)) {
      uri += static_cast<char>(c);
    } else {
      char escaped[4];
      std::snprintf(escaped, sizeof escaped, "%%%02X", c);
      uri += escaped;
    }
  }
  return uri;
}

void write_output(const std::string& path, const std::string& document) {
  const bool to_stdout = path.empty() || path == "-";
  const std::string name = to_stdout ? "standard output" : path;
  std::FILE* file = to_stdout ? stdout : std::fopen(path.c_str(), "wb");
  if (file == nullptr) fail_to_write(name);
  const bool written = std::fwrite(document.data(), 1, document.size(), file) == document.size();
  const bool flushed = std::fflush(file) == 0;
  if (!written || !flushed) fail_to_write(name);
  if (!to_stdout && std::fclose(file) != 0) fail_to_write(name);
}

}  // namespace zvplaylist
