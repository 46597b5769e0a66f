/*
 * correlates_rule.h: how alike two elements of a list are when the list itself tells it, so that no
 * table of all pairs has to be written down.
 *
 *   "tree"     by the nearest ancestor that two elements share, and by stated affinities.
 *   "plane"    by the distance of their points on the plane.
 *   "interval" by the distance of the middles of their ranges.
 *
 * A rule is immutable and computes a row in one pass over the list.
 */
#ifndef CORRELATES_RULE_H
#define CORRELATES_RULE_H

#include <memory>
#include <vector>

#include "manager/json_document.h"
#include "manager/list_definition.h"

namespace manager {

using correlates_score = int16_t;

inline constexpr correlates_score best_score = 1000;

class correlates_rule {
 public:
  virtual ~correlates_rule() = default;

  /* Writes the scores between an element and all named elements of its list. What the rule does not
   * tell stays as it is. False when it tells nothing of the element. */
  virtual bool fill(uint32_t from, std::vector<correlates_score>& scores) const = 0;
};

/* The rule that a document states for a list. Throws status_error with a message. */
std::unique_ptr<const correlates_rule> read_correlates_rule(const json_value& document,
                                                            const list_definition& list);

/* A score of a document. Throws status_error with a message. */
correlates_score read_score(const json_value& value);

}  // namespace manager

#endif
