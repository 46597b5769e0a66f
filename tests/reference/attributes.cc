// The nine attributes: media and seeds, criteria, comparisons.
#include "tests/reference/reference.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "attributes/playlist_dsp.h"
#include "support/zcsl_fuzzy.h"
#include "tests/attributes/attribute_fixture.h"

namespace reference {
namespace {

constexpr zvsdk_status s_nothing_to_compare = 0x9089003E;

const zvsdk_listmanager_interface& host() {
  return *g_playlist_lists_interface;
}

uint32_t number(const std::string& text) {
  return static_cast<uint32_t>(std::strtoul(text.c_str(), nullptr, 10));
}

struct element {
  uint32_t id, match, level, lower, upper;
};
// What a number or a name stands for in an attribute's list, at a level.
std::optional<element> look_up(attribute of, const std::string& text, uint32_t level = 0) {
  playlist_element_owner at;
  element seen = {};
  const std::string type = std::string("zvsdk_list_type_") + rules[of].list;
  const playlist_list_owner list = list_of(type.c_str());
  if (number(text) != 0)
    host().list_get_element_by_id(list.get(), number(text), level, at.out());
  else
    host().list_get_element_by_string(list.get(), text.c_str(), nullptr, at.out());
  if (!at) return {};
  host().element_get_id(at.get(), &seen.id);
  host().element_get_match_id(at.get(), &seen.match);
  host().element_get_level(at.get(), &seen.level);
  host().element_get_range(at.get(), &seen.lower, &seen.upper);
  return seen;
}

// What the row of an id says of another, if it has a row.
std::optional<int32_t> likeness(attribute of, uint32_t id, uint32_t other) {
  playlist_correlates_owner table;
  playlist_correlates_set_owner row;
  int32_t score = 0;
  const std::string name = std::string("zvsdk_correlates_") + rules[of].correlates;
  host().correlates_retrieve(name.c_str(), nullptr, nullptr, nullptr, table.out());
  if (host().correlates_get_set(table.get(), id, -1000, row.out()) != 0) return {};
  host().correlates_set_get_score(row.get(), other, &score);
  return score;
}

std::string folded(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(c));
  return text;
}

int32_t alike(const char* a, const char* b) {
  return static_cast<int32_t>(zcsl_string_fuzzycmp_ex(a, b, 0, nullptr, nullptr)) * 10;
}

int32_t text_score(const std::string& op, const std::string& stored, const texts& wanted) {
  int32_t best = -1000;
  const std::string a = folded(stored);
  for (const std::string& each : wanted) {
    const std::string b = folded(each);
    // The last character may differ, if it is not the only one.
    const bool begins =
        a.size() >= b.size() && a.starts_with(b.size() > 1 ? b.substr(0, b.size() - 1) : b);
    const bool holds = op == "BEGINS" ? begins : op == "CONTAINS" ? a.find(b) < a.size() : a == b;
    best = std::max(best, op == "LIKE" ? alike(a.c_str(), b.c_str()) : holds ? 1000 : -1000);
  }
  return op == "!=" ? -best : best;
}

playlist_mood_vector moods_of(const std::string& profile) {
  playlist_mood_vector read;
  playlist_fill_mood_vector(profile.c_str(), &read);
  return read;
}

int32_t mood_score(const criterion& seed, const std::string& profile, zvsdk_status& failure) {
  const playlist_mood_vector held = moods_of(profile);
  if (held.count == 0) failure = s_nothing_to_compare;
  float square = 0;  // of the distance; the sums on an axis wrap
  for (const uint32_t axis : seed.moods) {
    uint32_t sum = 0;
    for (uint32_t i = 0; i < held.count; ++i)
      sum += static_cast<uint32_t>(likeness(mood, axis, held.ids[i]).value_or(0)) * held.weights[i];
    const int32_t place = std::clamp(static_cast<int32_t>(sum) / 1000, -100, 100);
    const float reached = static_cast<float>(place) / 100.0f;
    const float distance = (likeness(mood, axis, axis) ? 1.0f : 0.0f) - reached;
    square += distance * distance;
  }
  const float norm = std::sqrt(static_cast<float>(seed.moods.size()) * 4.0f);
  return static_cast<int32_t>(std::max(1000.0f - std::sqrt(square) / norm * 2000.0f, -1000.0f));
}

}  // namespace

facts make_facts(std::mt19937& random, std::string ident) {
  facts made = {std::move(ident), {}, 0};
  for (attribute of : {title, artist, artist, album, genre, mood, origin, era, arttype, tempo}) {
    const auto word = [&] { return words[!is_text(of)][random() % held_words[!is_text(of)]]; };
    std::string profile;
    const auto moods = static_cast<uint32_t>(of == mood ? random() % 6 : 0);
    const uint32_t share = moods == 5 ? 6 : moods == 4 ? ~0u : 60;
    for (uint32_t i = 0; i < moods; ++i)
      profile += word() + (random() % 8 != 0 ? ":" + std::to_string(random() % share) : "") + ",";
    if (!profile.empty()) made.held[of].push_back(profile);
    if (random() % 5 < 3) made.held[of].push_back((is_text(of) ? "" : "#") + word());
  }
  if (random() % 6 == 0) made.held[tempo] = {"#0"};
  return made;
}

criterion make_criterion(const expression& from, const facts* seed) {
  criterion made;
  const attribute of = from.of;
  const bool like = from.op == "LIKE", spans = of == era || of == tempo;
  texts given = seed ? seed->held[of] : texts{from.text};
  // A profile serves LIKE alone, and then comes before the mood itself.
  std::ranges::stable_partition(given, [](auto& each) { return each[0] != '#'; });
  if (seed && of == mood && !like) std::erase_if(given, [](auto& each) { return each[0] != '#'; });
  made.silent = given.empty();
  if (!made.silent) made.names = of == artist ? given : texts{given[0]};
  if (is_text(of) || made.silent) return made;

  if (seed && given[0][0] != '#') {
    const playlist_mood_vector moods = moods_of(given[0]);
    made.moods.assign(moods.ids, moods.ids + moods.count);
    if (made.moods.empty()) made.refusal = s_nothing_to_compare;
    return made;
  }
  const std::string value = given[0].substr(seed != nullptr);
  const uint32_t id = made.id = number(value);
  const auto at = look_up(of, value);
  const bool within = at && of == era && at->lower <= id && id <= at->upper;
  const bool own = at && (id == 0 || at->match == id || within);
  if (seed) {
    made.silent = !at && spans && !(of == era && like);
    if (within) made.id = at->id;
  } else if (id == 0 && !at) {
    made.refusal = playlist_error_unsupported;
  } else if (own || (at && !like && of != origin)) {
    made.id = at->id;
    made.level = at->level;
  }
  made.lower = at && spans ? at->lower : seed && of == era ? 0 : made.id;
  made.upper = at && spans ? at->upper : made.lower;
  if (!like || of == tempo || made.silent || made.refusal != 0) return made;
  const bool has_row = likeness(of, made.id, made.id).has_value();
  made.silent = seed && !has_row;
  if (!has_row && !seed && of != mood) made.refusal = playlist_error_pdl_syntax;
  return made;
}

int32_t compare(const expression& from, const std::string& value, zvsdk_status& failure) {
  const criterion& with = from.wanted;
  const attribute of = from.of;
  const std::string& op = from.op;
  if (is_text(of)) return text_score(op, value, with.names);
  if (of == mood && (value[0] == '#') != with.moods.empty()) return ignored;
  if (!with.moods.empty()) return mood_score(with, value, failure);
  const bool like = op == "LIKE";
  uint32_t id = number(value.substr(1));
  if (of == tempo && like) {
    int32_t score = 0;
    dsp_primary_tempo_similarity((with.lower + with.upper) / 2, id, &score);
    return score;
  }
  const bool lifts = of != tempo && with.level != 0;
  const auto at = lifts || of == era ? look_up(of, value.substr(1), with.level) : std::nullopt;
  if (at && lifts) id = at->id;
  if (like) {
    const auto row = likeness(of, with.id, id);
    if (!row) failure = playlist_error_no_locale;
    const int32_t score = row.value_or(0);
    const bool same = of == arttype && score == 0 && id == with.id;
    return same && lifts && with.level < 3 ? rules[of].thresholds[with.level] : score;
  }
  const uint32_t lower = of != era ? id : at ? at->lower : 0;
  const uint32_t upper = of != era ? id : at ? at->upper : 0;
  const bool inside = with.lower <= lower && upper <= with.upper;
  const bool holds = op == "="    ? inside
                     : op == "!=" ? !inside
                     : op == ">"  ? lower > (of == era ? with.lower : with.upper)
                     : op == ">=" ? upper >= with.lower
                     : op == "<"  ? upper < with.lower
                                  : upper <= with.upper;
  return holds ? 1000 : -1000;
}

}  // namespace reference
