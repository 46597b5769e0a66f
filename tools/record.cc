// Makes tracks out of raw values.
#include "tools/record.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tools/text.h"

namespace zvplaylist {
namespace {

// One record on its way to a track, with what there is to say about it.
class track_builder {
 public:
  void take(field which, std::string_view raw);
  bool finish();

  track entry;
  bool ident_too_long = false;
  std::vector<std::string> faults;  // what was replaced, cut or left out

 private:
  std::string clean(std::string_view raw);
  void take_artists(std::string_view text);
  void take_number(uint32_t& target, std::optional<uint32_t> value, field which,
                   const std::string& text);
  void fault(const std::string& what);
};

void track_builder::fault(const std::string& what) {
  if (std::find(faults.begin(), faults.end(), what) == faults.end()) faults.push_back(what);
}

std::string track_builder::clean(std::string_view raw) {
  repaired_text repaired = repair_text(raw);
  if (repaired.had_invalid) fault("invalid UTF-8 replaced");
  if (repaired.had_wide) fault("characters above U+FFFF replaced");
  if (repaired.was_cut) fault("text cut to " + std::to_string(max_text_bytes) + " bytes");
  return std::move(repaired.text);
}

// Catalogs put several artists into one field with semicolons; names with one are not known.
void track_builder::take_artists(std::string_view text) {
  while (!text.empty()) {
    const size_t end = std::min(text.find(';'), text.size());
    const std::string name(trim(text.substr(0, end)));
    if (!name.empty() &&
        std::find(entry.artists.begin(), entry.artists.end(), name) == entry.artists.end())
      entry.artists.push_back(name);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void track_builder::take_number(uint32_t& target, std::optional<uint32_t> value, field which,
                                const std::string& text) {
  if (target != 0) return;
  if (value)
    target = *value;
  else
    fault(std::string(field_name(which)) + " '" + text.substr(0, 40) + "' not understood");
}

void track_builder::take(field which, std::string_view raw) {
  const std::string text = clean(raw);
  if (text.empty()) return;
  const auto keep_first = [&text](std::string& target) {
    if (target.empty()) target = text;
  };
  switch (which) {
    case field::ident:
      ident_too_long |= raw.size() > max_text_bytes;
      return keep_first(entry.ident);
    case field::location:
      // A path's own bytes: a player must find the file under them.
      if (entry.location.empty()) entry.location = trim(raw);
      return;
    case field::title:
      return keep_first(entry.title);
    case field::artist:
      return take_artists(text);
    case field::album:
      return keep_first(entry.album);
    case field::genre:
      return keep_first(entry.genre);
    case field::subgenre:
      return keep_first(entry.subgenre);
    case field::date:
      return take_number(entry.year, year_of(text), which, text);
    case field::tempo:
      return take_number(entry.tempo, tempo_of(text), which, text);
  }
}

// A path stands in for an ident and an ident for a path.
bool track_builder::finish() {
  if (entry.ident.empty()) {
    ident_too_long |= entry.location.size() > max_text_bytes;
    entry.ident = clean(entry.location);
  }
  if (entry.location.empty()) entry.location = entry.ident;
  return !entry.ident.empty() && !ident_too_long;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string text;
  for (const std::string& part : parts) text += (text.empty() ? "" : ", ") + part;
  return text;
}

}  // namespace

std::optional<uint32_t> year_of(std::string_view date) {
  for (size_t i = 0; i < date.size();) {
    const size_t first = i;
    while (i < date.size() && is_digit(date[i])) ++i;
    uint32_t year = 0;
    if (i - first == 4) std::from_chars(date.data() + first, date.data() + i, year);
    if (year != 0) return year;
    if (i == first) ++i;
  }
  return std::nullopt;
}

std::optional<uint32_t> tempo_of(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const std::string unit = ascii_lower(trim({end, text.data() + text.size()}));
  if (error != std::errc() || !(unit.empty() || unit == "bpm")) return std::nullopt;
  if (!(value >= 0 && value < 999.5)) return std::nullopt;
  return static_cast<uint32_t>(std::lround(value));
}

std::optional<track> track_from_record(const record& values, const place& where, console& out) {
  track_builder builder;
  for (const auto& [which, raw] : values) builder.take(which, raw);
  if (!builder.finish()) {
    out.report(outcome::skipped, where,
               builder.ident_too_long ? "ident is too long, left out" : "no ident, left out");
    return std::nullopt;
  }
  if (!builder.faults.empty()) out.report(outcome::mended, where, joined(builder.faults));
  std::vector<std::string> missing;
  if (builder.entry.title.empty()) missing.push_back("no title");
  if (builder.entry.artists.empty()) missing.push_back("no artist");
  if (!missing.empty()) out.report(outcome::noted, where, joined(missing));
  return std::move(builder.entry);
}

}  // namespace zvplaylist
