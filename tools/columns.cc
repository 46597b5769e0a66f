// Recognition of columns by name.
#include "tools/columns.h"

#include <algorithm>

#include "tools/command.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct usual_name {
  std::string_view key;
  field target;
};

constexpr std::string_view field_names[field_count] = {
    "ident",  "location", "title", "artist", "album", "date",   "tempo",      "valence",
    "energy", "subgenre", "genre", "mood",   "era",   "origin", "artist_type"};

constexpr usual_name usual_names[] = {
    {"ident", field::ident},
    {"id", field::ident},
    {"identifier", field::ident},
    {"trackid", field::ident},
    {"path", field::location},
    {"file", field::location},
    {"filename", field::location},
    {"filepath", field::location},
    {"location", field::location},
    {"uri", field::location},
    {"url", field::location},
    {"title", field::title},
    {"name", field::title},
    {"track", field::title},
    {"trackname", field::title},
    {"tracktitle", field::title},
    {"song", field::title},
    {"artist", field::artist},
    {"artists", field::artist},
    {"artistname", field::artist},
    {"trackartist", field::artist},
    {"performer", field::artist},
    {"album", field::album},
    {"albumname", field::album},
    {"albumtitle", field::album},
    {"trackalbumname", field::album},
    {"date", field::date},
    {"year", field::date},
    {"releasedate", field::date},
    {"releaseyear", field::date},
    {"albumreleasedate", field::date},
    {"genre", field::genre},
    {"genres", field::genre},
    {"subgenre", field::subgenre},
    {"tempo", field::tempo},
    {"bpm", field::tempo},
    {"tempobpm", field::tempo},
    {"valence", field::valence},
    {"energy", field::energy},
    {"mood", field::mood},
    {"moods", field::mood},
    {"era", field::era},
    {"decade", field::era},
    {"artistera", field::era},
    {"origin", field::origin},
    {"country", field::origin},
    {"artistorigin", field::origin},
    {"artistcountry", field::origin},
    {"countryoforigin", field::origin},
    {"artisttype", field::artist_type},
};

// "Release Date", "release_date" and "releaseDate" are one name. Bytes of other scripts count.
std::string key_of(std::string_view column) {
  std::string key = ascii_lower(column);
  std::erase_if(key, [](unsigned char c) {
    return c < 0x80 && !(c >= 'a' && c <= 'z') && !(c >= '0' && c <= '9');
  });
  return key;
}

field field_by_name(std::string_view name, const std::string& assignment) {
  for (size_t i = 0; i < field_count; ++i)
    if (key_of(field_names[i]) == name) return static_cast<field>(i);
  throw failure(exit_usage, "--map " + assignment + ": the fields are " + field_names_text());
}

}  // namespace

std::string_view field_name(field which) {
  return field_names[static_cast<size_t>(which)];
}

std::string field_names_text() {
  std::string text;
  for (std::string_view each : field_names) text.append(text.empty() ? "" : ", ").append(each);
  return text;
}

column_map::column_map(const std::vector<std::string>& assignments) {
  for (const std::string& text : assignments) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos || equals + 1 == text.size())
      throw failure(exit_usage, "--map " + text + ": expected FIELD=COLUMN");
    const std::string column = text.substr(equals + 1);
    const field target = field_by_name(key_of(text.substr(0, equals)), text);
    assignments_.push_back({target, column, key_of(column)});
  }
}

bool column_map::is_mapped(field which) const {
  return std::any_of(assignments_.begin(), assignments_.end(),
                     [which](const assignment& a) { return a.target == which; });
}

std::optional<field> column_map::find(std::string_view column) const {
  const std::string key = key_of(column);
  for (const assignment& a : assignments_)
    if (a.column == column || a.key == key) return a.target;
  for (const usual_name& name : usual_names)
    if (name.key == key && !is_mapped(name.target)) return name.target;
  return std::nullopt;
}

std::vector<std::string> column_map::missing_from(const std::vector<std::string>& columns) const {
  std::vector<std::string> missing;
  for (const assignment& a : assignments_) {
    const bool found = std::any_of(columns.begin(), columns.end(), [&a](const std::string& column) {
      return a.column == column || a.key == key_of(column);
    });
    if (!found) missing.push_back(a.column);
  }
  return missing;
}

}  // namespace zvplaylist
