// workspace.h: a folder of its own for each test, with files of any content and small real audio
// files, removed at the end; and how tests see tracks.
#ifndef ZVPLAYLIST_TESTS_WORKSPACE_H
#define ZVPLAYLIST_TESTS_WORKSPACE_H

#include <fileref.h>
#include <tpropertymap.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

#include "tests/common/host_objects.h"
#include "tools/track.h"

namespace zvplaylist {

using namespace std::string_literals;

using tag_values = std::map<std::string, std::vector<std::string>>;

// One metadata block, the stream's parameters: 44100 Hz, two channels, 16 bits, 441000 samples.
inline const std::string flac_stream =
    "fLaC\x80\x00\x00\x22\x10\x00\x10\x00\x00\x00\x00\x00\x00\x00\x0A\xC4\x42\xF0\x00\x06\xBA\xA8"s +
    std::string(16, '\0');

class workspace {
 public:
  workspace() {
    std::string name = (std::filesystem::temp_directory_path() / "zvplaylist-XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
    root_ = name;
  }
  ~workspace() {
    std::error_code error;
    std::filesystem::remove_all(root_, error);
  }
  workspace(const workspace&) = delete;
  workspace& operator=(const workspace&) = delete;

  // Paths are below the folder; folders on the way are made.
  std::string path(const std::string& name) const { return (root_ / name).string(); }
  std::string write(const std::string& name, const std::string& content) const {
    std::filesystem::create_directories((root_ / name).parent_path());
    std::ofstream(root_ / name, std::ios::binary) << content;
    return path(name);
  }
  // An empty FLAC stream with tags.
  std::string write_audio(const std::string& name, const tag_values& tags) const {
    const std::string file = write(name, flac_stream);
    TagLib::PropertyMap properties;
    for (const auto& [key, values] : tags)
      for (const std::string& value : values) properties[key].append({value, TagLib::String::UTF8});
    TagLib::FileRef audio(file.c_str());
    if (audio.isNull()) throw std::runtime_error("cannot tag " + file);
    audio.file()->setProperties(properties);
    if (!audio.save()) throw std::runtime_error("cannot save " + file);
    return file;
  }

 private:
  std::filesystem::path root_;
};

inline std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

// "ident/title/artist+artist/year/tempo" and a line end.
inline std::string summary(const track& entry) {
  std::string text = entry.ident + "/" + entry.title + "/";
  for (const std::string& artist : entry.artists)
    text += (&artist == entry.artists.data() ? "" : "+") + artist;
  return text + "/" + std::to_string(entry.year) + "/" + std::to_string(entry.tempo) + "\n";
}

}  // namespace zvplaylist

#endif
