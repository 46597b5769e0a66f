/*
 * data_files.h: where list and correlates documents come from: a folder of the application's own,
 * and behind it the copy that was built in from data/. A file of the folder replaces the built-in
 * document of the same name; what the folder lacks is taken from the built-in copy.
 */
#ifndef DATA_FILES_H
#define DATA_FILES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace manager {

/* One document of the built-in copy; the build makes the array from the files of data/. */
struct builtin_file {
  std::string_view name;  // without ".json"
  std::string_view text;
};
extern const builtin_file builtin_files[];
extern const size_t builtin_file_count;

class data_files {
 public:
  /* An empty path means the built-in copy alone. Throws when the path is no folder. */
  explicit data_files(std::string path);

  /* Names of the folder's documents, without ".json", in order. */
  std::vector<std::string> own_names() const;
  /* The document's text, or nothing when there is none of that name. */
  std::optional<std::string> read(std::string_view name) const;

 private:
  std::string path_;
};

}  // namespace manager

#endif
