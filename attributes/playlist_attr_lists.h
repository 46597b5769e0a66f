/*
 * playlist_attr_lists.h: what the list-backed attributes share. The values that they hold are ids
 * of a list, a hierarchy of elements with level 1 as the coarsest. In the order in which an
 * attribute needs it:
 *
 *   kinds        all that such an attribute says of itself, as one constant
 *   lists        loading the list and its correlates into an instance, giving them back
 *   instances    the record of an attribute that has a criterion's id, with scores already known
 *   criteria     the element that a text names, its place in the list, the row of its correlates
 *   comparison   lifting a stored value to the criterion's level, scores
 *   texts        stored values as text
 *
 * Lifting and scoring are called once for each candidate: constant time, nothing is allocated.
 * As in playlist_attr_common.h nothing is kept, and nothing is logged but what seeds come to.
 */
#ifndef PLAYLIST_ATTR_LISTS_H
#define PLAYLIST_ATTR_LISTS_H

#include <span>

#include "attributes/playlist_attr_common.h"
#include "module/playlist_status.h"

/* ---- Kinds --------------------------------------------------------------------------------- */

struct playlist_list_kind {
  const char* source;         /* name of the source file, for the log */
  const char* attribute_name; /* also the key of a value's display text */
  bool name_in_any_case;      /* whether that key counts whatever its case */
  const char* list_type;
  const char* correlates;      /* null: the attribute has none */
  const char* value_key;       /* where objects have the value; also gives the id as text */
  const char* other_value_key; /* gives the id as text too; may be null */
  uint32_t display_level;      /* at which display texts are given */
  const char* no_row_text;     /* warns of a seed without a row of correlates; may be null */
  playlist_attr_thresholds thresholds;
};

/* The operators of attributes that compare ids and of those that compare ranges. */
inline constexpr uint32_t playlist_id_operators[] = {playlist_op_equal, playlist_op_not_equal,
                                                     playlist_op_like};
inline constexpr uint32_t playlist_range_operators[] = {
    playlist_op_equal,         playlist_op_not_equal, playlist_op_like,      playlist_op_greater,
    playlist_op_greater_equal, playlist_op_less,      playlist_op_less_equal};

/* The operator at an index; warn_not_found past the end. */
zvsdk_status playlist_attr_operator_at(std::span<const uint32_t> operators, uint32_t index,
                                       uint32_t* op);

/* ---- Lists --------------------------------------------------------------------------------- */

/* The default locale of the playlist group, or else of the music group. */
zvsdk_status playlist_attr_default_locale(playlist_locale_owner& locale);
/* The list of a type in the language of a locale. */
zvsdk_status playlist_attr_retrieve_list(zvsdk_locale* locale, const char* list_type,
                                         zvsdk_list** list);

/* What an instance holds of the list service. Each may be null. */
struct playlist_attr_lists {
  zvsdk_list* list;
  zvsdk_correlates* correlates;
  zvsdk_correlates_set* set; /* the row of the criterion, for LIKE */
};
/* Loads a kind's list and correlates for the default locale. What cannot be loaded stays null: such
 * an instance refuses only what needs it. */
void playlist_attr_load_lists(const playlist_list_kind& kind, playlist_attr_lists* lists);
void playlist_attr_release_lists(const playlist_attr_lists& lists);

/* ---- Instances ----------------------------------------------------------------------------- */

/*
 * Scores of values that were compared already. A collection has few different values and a
 * criterion gives each the same score every time, so that most comparisons end here. Part of an
 * instance's record; empty when zero-filled.
 */
class playlist_attr_scores {
 public:
  /* The score of a value, from `compare()`, which writes `score`, unless it is known. */
  template <class Compare>
  zvsdk_status get(uint32_t value, int32_t* score, Compare compare) {
    entry& known = entries_[value * 0x9E3779B1u >> 24];
    if (known.value == value && known.mark != 0) {
      *score = static_cast<int32_t>(known.mark ^ s_sign);
      return 0;
    }
    const zvsdk_status status = compare();
    if (status == 0) known = {value, static_cast<uint32_t>(*score) ^ s_sign};
    return status;
  }

 private:
  static constexpr uint32_t s_sign = 0x80000000;

  struct entry {
    uint32_t value;
    uint32_t mark; /* the score with its sign turned over; 0 is no score at all */
  };
  entry entries_[256];
};

/* What the record of an attribute that has a criterion's id begins with. */
struct playlist_list_instance {
  uint32_t stamp;
  uint32_t op;
  uint32_t id;    /* of an element, or a number that the list does not know */
  uint32_t level; /* of the named element; 0 when the criterion named none */
  playlist_attr_lists lists;
  zcsl_stringmap* values; /* interned texts */
  playlist_attr_scores scores;

  /* What was known of another criterion no longer holds. */
  void begin_criterion(uint32_t criterion_op) {
    op = criterion_op;
    scores = {};
  }
};
/* Frees the record with all that the fields above hold. */
void playlist_attr_release_instance(playlist_list_instance* instance);

/* ---- Criteria ------------------------------------------------------------------------------ */

/*
 * The element that a text criterion names: by its display text when `number` is 0, by number
 * otherwise. A name needs a list (no_locale) that knows it (unsupported). A number that no list
 * knows is no failure: it stands for itself, and `element` stays empty.
 */
zvsdk_status playlist_attr_criterion_element(zvsdk_list* list, const char* text, uint32_t number,
                                             playlist_element_owner& element);
/* True for a criterion that names the element, by text or by its own number; false for a number
 * that only falls inside it. */
bool playlist_attr_names_element(uint32_t number, zvsdk_list_element* element);
/* The numbers that an element stands for, such as years, both bounds included. */
struct playlist_attr_range {
  uint32_t lower;
  uint32_t upper;

  bool has(uint32_t number) const { return lower <= number && number <= upper; }
};
zvsdk_status playlist_attr_range_of(zvsdk_list_element* element, playlist_attr_range* range);
/* Makes an element's level and id the criterion's. */
zvsdk_status playlist_attr_take_place(playlist_list_instance* instance,
                                      zvsdk_list_element* element);
/*
 * The id and level that a text criterion names. A number that the list does not know is its own id,
 * with the level left as it was; with `own_number_only` so is one that falls inside an element.
 */
zvsdk_status playlist_attr_place_of_text(playlist_list_instance* instance, const char* text,
                                         bool own_number_only);

/* The row of the criterion's id, kept in the instance, as the list service answers. */
zvsdk_status playlist_attr_get_row(playlist_list_instance* instance);
/*
 * The outcome of looking up what a seed names: "not found" is warned about with the text, which may
 * show the number, and becomes no_seed_data, with which the statement goes on.
 */
zvsdk_status playlist_attr_seed_outcome(const playlist_list_kind& kind, zvsdk_status found,
                                        const char* text, uint32_t number);
/* Passes the status of a seed's criterion on, logging it as an error unless it is no_seed_data. */
zvsdk_status playlist_attr_seed_logged(const playlist_list_kind& kind, zvsdk_status status);
/* The criterion of a seed beyond its id: of LIKE, the threshold and the row. Without correlates:
 * no_locale. A seed that has no row is warned about, any other failure is logged. */
zvsdk_status playlist_attr_like_seed(const playlist_list_kind& kind,
                                     playlist_list_instance* instance, int32_t* threshold);
/* The same of a text, whose place is known. The failures are the caller's to log. */
zvsdk_status playlist_attr_like_text(const playlist_list_kind& kind,
                                     playlist_list_instance* instance, int32_t* threshold);

/* ---- Comparison ---------------------------------------------------------------------------- */

/* A stored value as the id of the element around it at the criterion's level. A value that the list
 * does not know stays what it is, and so does any value at level 0 or without a list. */
zvsdk_status playlist_attr_lift(const playlist_list_instance& instance, uint32_t* value);
/* A candidate's score in the criterion's row. Without a row: no_locale. */
zvsdk_status playlist_attr_row_score(const playlist_list_instance& instance, uint32_t value,
                                     int32_t* score);
/* A candidate against the criterion's id by one of playlist_id_operators, else error_internal. */
zvsdk_status playlist_attr_compare_id(const playlist_list_instance& instance, uint32_t value,
                                      int32_t* score);

/* ---- Texts --------------------------------------------------------------------------------- */

/* A stored id as text, interned: the id itself under the value keys, the display text under the
 * attribute's name, which needs a locale (no_locale). Any other key: warn_not_found. */
zvsdk_status playlist_attr_text_of_id(const playlist_list_kind& kind, zcsl_stringmap** values,
                                      uint32_t value, const char* key, zvsdk_locale* locale,
                                      const char** text);
/* A stored measure, such as a year, as text: without a locale the number itself under any key, with
 * one the id and the display text of the element around it under the same keys as above. */
zvsdk_status playlist_attr_text_of_measure(const playlist_list_kind& kind, zcsl_stringmap** values,
                                           uint32_t value, const char* key, zvsdk_locale* locale,
                                           const char** text);

#endif
