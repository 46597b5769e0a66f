// Makes the files that tests read.
#include "tests/tool/workspace.h"

#include <fileref.h>
#include <tpropertymap.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace zvplaylist {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;

// One metadata block, the stream's parameters: 44100 Hz, two channels, 16 bits, 441000 samples.
const std::string flac_stream =
    "fLaC\x80\x00\x00\x22\x10\x00\x10\x00\x00\x00\x00\x00\x00\x00\x0A\xC4\x42\xF0\x00\x06\xBA\xA8"s +
    std::string(16, '\0');
// Format and data chunks, two silent samples.
const std::string wav_stream =
    "RIFF\x28\x00\x00\x00WAVEfmt \x10\x00\x00\x00\x01\x00\x01\x00\x44\xAC\x00\x00\x88\x58\x01\x00"s +
    "\x02\x00\x10\x00"
    "data\x04\x00\x00\x00\x00\x00\x00\x00"s;

}  // namespace

workspace::workspace() {
  std::string name = (fs::temp_directory_path() / "zvplaylist-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot make " + name);
  root_ = name;
}

workspace::~workspace() {
  std::error_code error;
  fs::remove_all(root_, error);
}

std::string workspace::write(const std::string& name, const std::string& content) const {
  fs::create_directories(fs::path(path(name)).parent_path());
  std::ofstream(path(name), std::ios::binary) << content;
  return path(name);
}

std::string workspace::write_audio(const std::string& name, const tag_values& tags) const {
  std::string file = write(name, name.ends_with(".wav") ? wav_stream : flac_stream);
  TagLib::PropertyMap properties;
  for (const auto& [key, values] : tags) {
    TagLib::StringList list;
    for (const std::string& value : values) list.append({value, TagLib::String::UTF8});
    properties.insert(key, list);
  }
  TagLib::FileRef audio(file.c_str());
  if (audio.isNull()) throw std::runtime_error("cannot tag " + file);
  audio.file()->setProperties(properties);
  if (!audio.save()) throw std::runtime_error("cannot save " + file);
  return file;
}

std::string summary(const track& entry) {
  std::string text = entry.ident + "/" + entry.title + "/";
  for (const std::string& artist : entry.artists)
    text += (&artist == entry.artists.data() ? "" : "+") + artist;
  return text + "/" + std::to_string(entry.year) + "/" + std::to_string(entry.tempo) + "\n";
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

}  // namespace zvplaylist
