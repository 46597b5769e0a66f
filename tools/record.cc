// Makes tracks out of raw values.
#include "tools/record.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tools/text.h"

namespace zvplaylist {
namespace {

// The first group of exactly four digits in a date of any usual form.
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

// Beats a minute, rounded to the nearest; up to 999.
std::optional<uint32_t> tempo_of(std::string_view text) {
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  const std::string unit = ascii_lower(trim({end, text.data() + text.size()}));
  if (error != std::errc() || !(unit.empty() || unit == "bpm")) return std::nullopt;
  if (!(value >= 0 && value < 999.5)) return std::nullopt;
  return static_cast<uint32_t>(std::lround(value));
}

// A number from 0 to 1.
std::optional<float> share_of(std::string_view text) {
  float value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (!(value >= 0 && value <= 1)) return std::nullopt;
  return value;
}

// Catalogs put several values into one field with this; names that have it are not known.
constexpr std::string_view separator = ";";

// One record on its way to a track, with what there is to say about it.
class track_builder {
 public:
  void take(field which, std::string_view raw);
  bool finish();

  track entry;
  bool ident_too_long = false;
  std::vector<std::string> faults;         // what was replaced, cut or left out
  std::vector<std::string> common_faults;  // the same, likely to be so in many rows

 private:
  std::string clean(std::string_view raw);
  void take_artist(const std::string& name);
  void take_term(field which, const std::string& text);
  void take_number(uint32_t& target, std::optional<uint32_t> value, field which,
                   const std::string& text);
  void take_share(std::optional<float>& target, field which, const std::string& text);
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

void track_builder::take_artist(const std::string& name) {
  if (std::find(entry.artists.begin(), entry.artists.end(), name) == entry.artists.end())
    entry.artists.push_back(name);
}

// "Worldwide" and "Europe" are what releases have for want of a country.
void track_builder::take_term(field which, const std::string& text) {
  const bool no_country = which == field::origin && (text == "XW" || text == "XE");
  if (!no_country) entry.terms.push_back({which, text});
}

void track_builder::take_number(uint32_t& target, std::optional<uint32_t> value, field which,
                                const std::string& text) {
  if (target != 0) return;
  if (value)
    target = *value;
  else
    fault(std::string(field_name(which)) + " '" + text.substr(0, 40) + "' not understood");
}

void track_builder::take_share(std::optional<float>& target, field which, const std::string& text) {
  if (target) return;
  target = share_of(text);
  if (!target)
    common_faults.push_back(std::string(field_name(which)) + " '" + text.substr(0, 40) +
                            "' is no number from 0 to 1");
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
      return each_part(text, separator, [this](const std::string& name) { take_artist(name); });
    case field::album:
      return keep_first(entry.album);
    case field::date:
      return take_number(entry.year, year_of(text), which, text);
    case field::tempo:
      return take_number(entry.tempo, tempo_of(text), which, text);
    case field::valence:
      return take_share(entry.valence, which, text);
    case field::energy:
      return take_share(entry.energy, which, text);
    case field::subgenre:
    case field::genre:
    case field::mood:
    case field::era:
    case field::origin:
    case field::artist_type:
      return each_part(text, separator, [&](const std::string& name) { take_term(which, name); });
  }
}

// A path stands in for an ident and an ident for a path.
bool track_builder::finish() {
  if (entry.ident.empty()) {
    ident_too_long |= entry.location.size() > max_text_bytes;
    entry.ident = clean(entry.location);
  }
  if (entry.location.empty()) entry.location = entry.ident;
  if (entry.valence.has_value() != entry.energy.has_value())
    common_faults.push_back("valence or energy without the other is not used");
  return !entry.ident.empty() && !ident_too_long;
}

}  // namespace

std::optional<track> track_from_record(const record& values, const place& where, console& out) {
  track_builder builder;
  for (const auto& [which, raw] : values) builder.take(which, raw);
  if (!builder.finish()) {
    out.report(outcome::skipped, where,
               builder.ident_too_long ? "ident is too long, left out" : "no ident, left out");
    return std::nullopt;
  }
  for (const std::string& what : builder.common_faults)
    out.report_repeated(outcome::mended, where, what);
  if (!builder.faults.empty()) out.report(outcome::mended, where, joined(builder.faults));
  std::vector<std::string> missing;
  if (builder.entry.title.empty()) missing.push_back("no title");
  if (builder.entry.artists.empty()) missing.push_back("no artist");
  if (!missing.empty()) out.report(outcome::noted, where, joined(missing));
  return std::move(builder.entry);
}

}  // namespace zvplaylist
