/*
 * data_folder.h: a folder for one test, with list documents of an application's own or a store.
 */
#ifndef DATA_FOLDER_H
#define DATA_FOLDER_H

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

/* In memory where that can be, for tests that wait for nothing but the disk otherwise. */
inline std::filesystem::path quick_folder() {
  return std::filesystem::is_directory("/dev/shm") ? std::filesystem::path("/dev/shm")
                                                   : std::filesystem::temp_directory_path();
}

class data_folder {
 public:
  explicit data_folder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
      : path_(parent / ("zvsdk_data_" + std::to_string(getpid()))) {
    std::filesystem::remove_all(path_);  // what a killed run of the same number left
    std::filesystem::create_directory(path_);
  }
  ~data_folder() { std::filesystem::remove_all(path_); }
  void write(const char* name, const std::string& text) const {
    std::ofstream(path_ / name) << text;
  }
  std::string path() const { return path_.string(); }

 private:
  std::filesystem::path path_;
};

#endif
