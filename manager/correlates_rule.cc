// Reads and applies the rules by which correlates follow from a list.

#include "manager/correlates_rule.h"

#include <algorithm>
#include <cmath>

namespace manager {
namespace {

const json_value& member(const json_value& document, const char* key) {
  const json_value* found = document.find(key);
  if (found == nullptr) refuse_document("\"" + std::string(key) + "\" is missing");
  return *found;
}

/* Elements as points: 1000 at no distance, falling through 0 at `zero` to -1000 from `far` on. */
class distance_rule : public correlates_rule {
 public:
  struct point {
    uint32_t index;
    double x, y;
  };

  distance_rule(const json_value& document, std::vector<point> points)
      : points_(std::move(points)) {
    zero_ = member(document, "zero").as_real().value_or(0);
    far_ = member(document, "far").as_real().value_or(0);
    if (!(zero_ > 0 && far_ > zero_)) {
      refuse_document("\"zero\" and \"far\" must be numbers above 0, in this order");
    }
  }

  bool fill(uint32_t from, std::vector<correlates_score>& scores) const override {
    const auto own = std::lower_bound(points_.begin(), points_.end(), from,
                                      [](const point& each, uint32_t i) { return each.index < i; });
    if (own == points_.end() || own->index != from) return false;
    for (const point& each : points_) {
      scores[each.index] = score(std::hypot(each.x - own->x, each.y - own->y));
    }
    return true;
  }

 private:
  correlates_score score(double distance) const {
    if (!(distance < far_)) return -best_score;  // nor is there a distance beyond all numbers
    const double over = distance - zero_;
    const double part = over < 0 ? over / zero_ : over / (far_ - zero_);
    return static_cast<correlates_score>(std::lround(-best_score * part));
  }

  std::vector<point> points_;  // in order of their indices
  double zero_, far_;
};

std::unique_ptr<const correlates_rule> read_plane(const json_value& document,
                                                  const list_definition& list) {
  std::vector<distance_rule::point> points;
  for (const auto& each : list.plane_points()) {
    points.push_back({each.index, each.valence, each.energy});
  }
  return std::make_unique<distance_rule>(document, std::move(points));
}

/* Where values lie on a line on which some of them may stand closer together than others. */
class axis {
 public:
  explicit axis(const json_value* given) {
    if (given == nullptr) return;
    for (const json_value& each : given->items) add(each);
    if (marks_.size() < 2) refuse_document("\"axis\" needs two marks or more");
  }

  /* Straight between two marks, and beyond the outer ones as between the last two. */
  double position(double value) const {
    if (marks_.empty()) return value;
    auto upper = std::lower_bound(marks_.begin() + 1, marks_.end() - 1, value,
                                  [](const mark& each, double v) { return each.value < v; });
    const mark &from = upper[-1], &to = upper[0];
    const double slope = (to.position - from.position) / (to.value - from.value);
    return from.position + slope * (value - from.value);
  }

 private:
  struct mark {
    double value, position;
  };

  void add(const json_value& given) {
    const bool pair = given.items.size() == 2;
    const auto value = pair ? given.items[0].as_real() : std::nullopt;
    const auto position = pair ? given.items[1].as_real() : std::nullopt;
    const bool rises =
        marks_.empty() || (value > marks_.back().value && position > marks_.back().position);
    if (!value || !position || !rises) {
      refuse_document("\"axis\" must be pairs of a value and its position, both rising");
    }
    marks_.push_back({*value, *position});
  }

  std::vector<mark> marks_;
};

std::unique_ptr<const correlates_rule> read_interval(const json_value& document,
                                                     const list_definition& list) {
  const axis line(document.find("axis"));
  std::vector<distance_rule::point> points;
  for (uint32_t i = 0; i < list.named_count(); ++i) {
    const auto& each = list.elements()[i];
    const double middle = (double{1} * each.lower + each.upper) / 2;
    if (each.has_range) points.push_back({i, line.position(middle), 0});
  }
  return std::make_unique<distance_rule>(document, std::move(points));
}

class tree_rule : public correlates_rule {
 public:
  tree_rule(const json_value& document, const list_definition& list)
      : list_(list),
        inside_(read_scores(document, "inside")),
        around_(read_scores(document, "around")),
        siblings_(read_scores(document, "siblings")),
        step_(read_score(member(document, "step"))),
        apart_(read_score(member(document, "apart"))) {
    if (const json_value* given = document.find("affinities")) read_affinities(*given);
    if (const json_value* step = document.find("affinity_step")) affinity_step_ = read_score(*step);
  }

  bool fill(uint32_t from, std::vector<correlates_score>& scores) const override {
    const std::vector<int32_t> own = affinities_of(from);
    std::vector<uint32_t> shared(scores.size());  // level of the nearest shared ancestor
    std::vector<int32_t> affinity(scores.size());
    for (uint32_t i = 0; i < scores.size(); ++i) {
      const auto& each = list_.elements()[i];
      const bool top = each.parent == no_element;
      const bool on_path = list_.lift(from, each.level) == i;
      shared[i] = on_path ? each.level : top ? 0 : shared[each.parent];
      affinity[i] = std::max(own[i], top ? apart_ : affinity[each.parent] - affinity_step_);
      scores[i] = limited(std::max(affinity[i], by_tree(from, i, shared[i])));
    }
    return true;
  }

 private:
  struct pair {
    uint32_t one, other;
    int32_t score;
  };
  using scores_by_place = std::vector<int32_t>;

  static scores_by_place read_scores(const json_value& document, const char* key) {
    scores_by_place scores;
    for (const json_value& each : member(document, key).items) scores.push_back(read_score(each));
    if (scores.empty()) refuse_document("\"" + std::string(key) + "\" must be scores");
    return scores;
  }

  void read_affinities(const json_value& given) {
    for (const json_value& each : given.items) {
      const bool fits = each.items.size() == 3 && is_id(each.items[0]) && is_id(each.items[1]);
      if (!fits) refuse_document("\"affinities\" must be two ids and a score each");
      const uint32_t one = list_.find(static_cast<uint32_t>(each.items[0].number));
      const uint32_t other = list_.find(static_cast<uint32_t>(each.items[1].number));
      const int32_t score = read_score(each.items[2]);
      const size_t count = list_.named_count();
      // A list of the application's own need not have all that these were written for.
      if (one < count && other < count) affinities_.push_back({one, other, score});
    }
  }

  static bool is_id(const json_value& value) {
    return value.is(json_value::type::integer) && value.number > 0 && value.number <= INT32_MAX;
  }

  static correlates_score limited(int32_t score) {
    return static_cast<correlates_score>(std::clamp<int32_t>(score, -best_score, best_score));
  }

  /* The last score stands for all places behind it. */
  static int32_t at(const scores_by_place& scores, uint32_t place) {
    return scores[std::min<size_t>(place, scores.size() - 1)];
  }

  int32_t by_tree(uint32_t from, uint32_t to, uint32_t shared) const {
    const uint32_t up = list_.elements()[from].level - shared;
    const uint32_t down = list_.elements()[to].level - shared;
    if (up == 0 && down == 0) return best_score;
    if (up == 0) return at(inside_, down - 1);
    if (down == 0) return at(around_, up - 1);
    if (shared == 0) return apart_;
    return at(siblings_, shared - 1) - step_ * static_cast<int32_t>(up + down - 2);
  }

  /* What is stated between an element or its ancestors and others; the lowest score elsewhere. */
  std::vector<int32_t> affinities_of(uint32_t from) const {
    std::vector<int32_t> found(list_.named_count(), -best_score);
    for (const pair& each : affinities_) {
      raise(found, from, each.one, each.other, each.score);
      raise(found, from, each.other, each.one, each.score);
    }
    return found;
  }

  void raise(std::vector<int32_t>& found, uint32_t from, uint32_t one, uint32_t other,
             int32_t score) const {
    const uint32_t level = list_.elements()[one].level;
    if (list_.lift(from, level) != one) return;
    const auto above = static_cast<int32_t>(list_.elements()[from].level - level);
    found[other] = std::max(found[other], score - affinity_step_ * above);
  }

  const list_definition& list_;
  scores_by_place inside_, around_, siblings_;
  int32_t step_, apart_;
  int32_t affinity_step_ = 0;
  std::vector<pair> affinities_;
};

std::unique_ptr<const correlates_rule> read_tree(const json_value& document,
                                                 const list_definition& list) {
  return std::make_unique<tree_rule>(document, list);
}

constexpr struct {
  std::string_view name;
  decltype(&read_tree) read;
} s_rules[] = {{"tree", read_tree}, {"plane", read_plane}, {"interval", read_interval}};

}  // namespace

std::unique_ptr<const correlates_rule> read_correlates_rule(const json_value& document,
                                                            const list_definition& list) {
  const std::string& wanted = member(document, "rule").text;
  for (const auto& rule : s_rules) {
    if (rule.name == wanted) return rule.read(document, list);
  }
  refuse_document("\"rule\" must be \"tree\", \"plane\" or \"interval\"");
}

correlates_score read_score(const json_value& value) {
  const bool whole = value.is(json_value::type::integer);
  if (!whole || value.number < -best_score || value.number > best_score) {
    refuse_document("a score is a whole number from -1000 to 1000");
  }
  return static_cast<correlates_score>(value.number);
}

}  // namespace manager
