// The one user of TagLib.
#include "tools/tags.h"

#include <fileref.h>
#include <tpropertymap.h>

#include <algorithm>
#include <set>

#include "tools/text.h"

namespace zvplaylist {
namespace {

struct tag_rule {
  const char* tag;
  field target;
};

// A field's tags in order of preference; the first that has text counts, with all its values.
// A recording's own year comes before that of the release at hand, an artist's country before that
// of a release.
constexpr tag_rule tag_rules[] = {{"TITLE", field::title},
                                  {"ARTISTS", field::artist},
                                  {"ARTIST", field::artist},
                                  {"ALBUM", field::album},
                                  {"ORIGINALDATE", field::date},
                                  {"ORIGINALYEAR", field::date},
                                  {"DATE", field::date},
                                  {"YEAR", field::date},
                                  {"SUBGENRE", field::subgenre},
                                  {"GENRE", field::genre},
                                  {"MOOD", field::mood},
                                  {"ARTISTCOUNTRY", field::origin},
                                  {"RELEASECOUNTRY", field::origin},
                                  {"ARTISTTYPE", field::artist_type},
                                  {"BPM", field::tempo},
                                  {"TEMPO", field::tempo}};

std::set<std::string> audio_extensions() {
  std::set<std::string> extensions;
  for (const TagLib::String& each : TagLib::FileRef::defaultFileExtensions())
    extensions.insert(ascii_lower(each.to8Bit(true)));
  return extensions;
}

void take_values(const TagLib::StringList& texts, field target, record& values) {
  for (const TagLib::String& text : texts) values.emplace_back(target, text.to8Bit(true));
}

record values_of(const TagLib::PropertyMap& properties) {
  record values;
  for (const tag_rule& rule : tag_rules) {
    const bool taken = std::any_of(values.begin(), values.end(), [&rule](const auto& value) {
      return value.first == rule.target;
    });
    if (!taken && properties.contains(rule.tag))
      take_values(properties[rule.tag], rule.target, values);
  }
  return values;
}

}  // namespace

bool is_audio_path(std::string_view path) {
  static const std::set<std::string> extensions = audio_extensions();
  const std::string_view name = path.substr(path.rfind('/') + 1);
  const size_t dot = name.rfind('.');
  return dot != std::string_view::npos && extensions.contains(ascii_lower(name.substr(dot + 1)));
}

std::optional<audio_tags> read_tags(const std::string& path) {
  const TagLib::FileRef file(path.c_str(), true, TagLib::AudioProperties::Fast);
  if (file.isNull()) return std::nullopt;
  audio_tags tags{.values = values_of(file.file()->properties())};
  if (file.audioProperties() != nullptr)
    tags.seconds = static_cast<uint32_t>(std::max(0, file.audioProperties()->length()));
  return tags;
}

}  // namespace zvplaylist
