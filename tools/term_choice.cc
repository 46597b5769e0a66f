// Weighs a track's terms against the lists.
#include "tools/term_choice.h"

#include <algorithm>

#include "tools/library.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct list_use {
  term_list list;
  std::vector<field> fields;  // finer ones first
  std::string chosen_terms::*target;
};
const list_use list_uses[] = {
    {term_list::genres, {field::subgenre, field::genre}, &chosen_terms::genre},
    {term_list::moods, {field::mood}, &chosen_terms::mood},
    {term_list::eras, {field::era}, &chosen_terms::era},
    {term_list::origins, {field::origin}, &chosen_terms::origin},
    {term_list::artist_types, {field::artist_type}, &chosen_terms::artist_type}};

// The finest element that a text names, whole or else in part.
std::optional<known_term> find_finest(const term_lists& lists, term_list which,
                                      const std::string& text) {
  std::optional<known_term> finest = lists.find(which, text);
  if (finest) return finest;
  each_part(text, "/,|", [&](const std::string& part) {
    const auto found = lists.find(which, part);
    if (found && (!finest || found->level > finest->level)) finest = found;
  });
  return finest;
}

// "ID:WEIGHT,ID:WEIGHT"; the host tells whether it can be one.
bool is_mood_profile(const std::string& text) {
  if (text.find(':') == std::string::npos) return false;
  zvsdk_track_description description{};
  description.size = sizeof description;
  description.mood = text.c_str();
  zvsdk_zdo* object = nullptr;
  const bool taken = zvsdk_manager_zdo_from_track(&description, nullptr, &object) == 0;
  const unique_zdo held(object);
  zvsdk_manager_errorinfo_clear();
  return taken;
}

// What a description may say, and how fine it is.
struct weighed_term {
  uint32_t level;
  std::string text;
};

std::optional<weighed_term> weigh(const term_lists& lists, term_list which,
                                  const std::string& text) {
  if (const auto found = find_finest(lists, which, text))
    return weighed_term{found->level, std::to_string(found->id)};
  if (which == term_list::moods && is_mood_profile(text)) return weighed_term{UINT32_MAX, text};
  return std::nullopt;
}

void choose(const term_lists& lists, const list_use& use, const track& entry,
            chosen_terms& chosen) {
  uint32_t finest = 0;
  for (const field source : use.fields) {
    for (const term& each : entry.terms) {
      if (each.source != source) continue;
      const auto found = weigh(lists, use.list, each.text);
      if (!found) {
        chosen.unknown.push_back("unknown " + std::string(field_name(source)) + " '" + each.text +
                                 "'");
      } else if (found->level > finest) {
        finest = found->level;
        chosen.*use.target = found->text;
      }
    }
  }
}

}  // namespace

chosen_terms choose_terms(const term_lists& lists, const track& entry) {
  chosen_terms chosen;
  for (const list_use& use : list_uses) choose(lists, use, entry, chosen);
  return chosen;
}

}  // namespace zvplaylist
