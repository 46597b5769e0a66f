/*
 * data_folder.h: a folder with list documents of an application's own.
 */
#ifndef DATA_FOLDER_H
#define DATA_FOLDER_H

#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "tests/manager/host_fixture.h"

/* Lives for one test. */
class data_folder {
 public:
  explicit data_folder(const std::filesystem::path& parent = std::filesystem::temp_directory_path())
      : m_path(parent / ("zvsdk_data_" + std::to_string(getpid()))) {
    std::filesystem::create_directory(m_path);
  }
  ~data_folder() { std::filesystem::remove_all(m_path); }
  void write(const char* name, const std::string& text) const {
    std::ofstream(m_path / name) << text;
  }
  std::string path() const { return m_path.string(); }

 private:
  std::filesystem::path m_path;
};

/* Loading any locale is refused with a message that names the document and its fault. */
inline void expect_refused(const std::string& document, const std::string& text,
                           const std::string& fault) {
  const data_folder folder;
  folder.write(document.c_str(), text);
  const running_host host(folder.path().c_str());
  EXPECT_EQ(0x0Cu, low_word(zvsdk_manager_locale_load("g", "eng", nullptr, nullptr))) << text;
  EXPECT_TRUE(std::string(last_error().message).starts_with(document + ": "));
  EXPECT_TRUE(has(last_error().message, fault));
}

#endif
