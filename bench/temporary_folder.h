// An empty folder that goes with its owner's end, in the place for temporary files.
#ifndef TEMPORARY_FOLDER_H
#define TEMPORARY_FOLDER_H

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

class temporary_folder {
 public:
  temporary_folder() : path_(std::filesystem::temp_directory_path() / "zvsdk-bench-XXXXXX") {
    if (mkdtemp(path_.data()) != nullptr) return;
    std::perror(path_.c_str());
    std::exit(1);
  }
  temporary_folder(const temporary_folder&) = delete;
  temporary_folder& operator=(const temporary_folder&) = delete;
  ~temporary_folder() { std::filesystem::remove_all(path_); }

  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

#endif
