// term_choice.h: which element of each list stands for a track, of all that its tags or columns
// name.
#ifndef ZVPLAYLIST_TERM_CHOICE_H
#define ZVPLAYLIST_TERM_CHOICE_H

#include <string>
#include <vector>

#include "tools/term_lists.h"
#include "tools/track.h"

namespace zvplaylist {

// Texts for a track description: ids, or for the mood maybe a profile. Empty where nothing is
// known.
struct chosen_terms {
  std::string genre, mood, era, origin, artist_type;
  std::vector<std::string> unknown;  // "unknown genre 'Foo'"
};

// Of several names for one list, the finest that the list knows counts; of equally fine ones the
// finer field's, then the first. A text that no list knows is tried in parts ("Pop/Rock").
chosen_terms choose_terms(const term_lists& lists, const track& entry);

}  // namespace zvplaylist

#endif
