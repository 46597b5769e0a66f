// columns.h: which column of a catalog, key of a JSON object or tag of a file means which field of
// a track. Usual names are recognised in any letter case and with any punctuation; --map overrides.
#ifndef ZVPLAYLIST_COLUMNS_H
#define ZVPLAYLIST_COLUMNS_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zvplaylist {

enum class field {
  ident,
  location,
  title,
  artist,
  album,
  date,
  tempo,
  valence,
  energy,
  subgenre,  // from here on what names an element of a list, finer things first
  genre,
  mood,
  era,
  origin,
  artist_type
};
inline constexpr size_t field_count = static_cast<size_t>(field::artist_type) + 1;

// As --map has it.
std::string_view field_name(field which);
// All of them, for help and messages: "ident, location, ...".
std::string field_names_text();

class column_map {
 public:
  column_map() = default;
  // Takes "FIELD=COLUMN" texts; a bad one is a usage failure.
  explicit column_map(const std::vector<std::string>& assignments);

  // The field that a column fills, if any. A mapped field is filled by its mapped columns only.
  std::optional<field> find(std::string_view column) const;
  // The mapped columns that are not among those given.
  std::vector<std::string> missing_from(const std::vector<std::string>& columns) const;

 private:
  struct assignment {
    field target;
    std::string column;  // as given
    std::string key;     // letters and digits only, lower case
  };
  bool is_mapped(field which) const;

  std::vector<assignment> assignments_;
};

}  // namespace zvplaylist

#endif
