// The plain evaluation of a statement.
#include "tests/reference/model.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace reference {
namespace {

struct result {
  size_t in;
  const track* of;
  int32_t score;
  std::string group = "0";
};

uint32_t draw(uint32_t& state) {
  state = state * 214013u + 2531011u;
  return (state >> 16) & 0x7FFF;
}

// The quicksort whose permutation of ties counts: middle record as pivot, ranges independent.
template <class T>
void sort_plainly(std::vector<T>& records,
                  const std::function<int32_t(const T&, const T&)>& order) {
  std::vector<std::pair<int, int>> pending = {{0, static_cast<int>(records.size()) - 1}};
  while (!pending.empty()) {
    const auto [low, high] = pending.back();
    pending.pop_back();
    if (low >= high) continue;
    std::swap(records[low + (high - low) / 2], records[high]);
    int i = low - 1;
    for (int j = low; j < high; ++j)
      if (order(records[j], records[high]) < 0) std::swap(records[++i], records[j]);
    std::swap(records[i + 1], records[high]);
    pending.push_back({low, i});
    pending.push_back({i + 2, high});
  }
}

std::string folded(std::string text) {
  for (char& c : text)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  return text;
}

// Characters of one or two bytes.
std::vector<std::string> characters(const std::string& text) {
  std::vector<std::string> all;
  for (size_t i = 0; i < text.size();) {
    const size_t size = (text[i] & 0x80) != 0 ? 2 : 1;
    all.push_back(text.substr(i, size));
    i += size;
  }
  return all;
}

// The last character of the criterion may differ, if it is not the only one.
bool begins(const std::string& stored, const std::string& wanted) {
  const auto a = characters(folded(stored));
  const auto b = characters(folded(wanted));
  if (a.size() < b.size()) return false;
  return std::equal(b.begin(), b.end() - 1, a.begin()) && (b.size() > 1 || a[0] == b[0]);
}

double curve(int32_t tempo) {
  const double x = tempo / 290.0;
  const double p = x * x * -44.71767914238594 + x * x * x * 21.41256661842911 +
                   x * 32.696596322861204 + 1.630119227133498;
  return std::clamp(p, 0.0, 12.0);
}

bool holds(const std::string& op, int32_t a, int32_t b) {
  static const std::map<std::string, int> sides = {{"=", 0b010},  {"!=", 0b101}, {">", 0b100},
                                                   {">=", 0b110}, {"<", 0b001},  {"<=", 0b011}};
  return (sides.at(op) >> (1 + (a > b) - (a < b)) & 1) != 0;
}

int32_t tempo_score(const std::string& op, int32_t value, int32_t wanted) {
  if (op != "LIKE") return holds(op, value, wanted) ? 1000 : -1000;
  const double distance = std::fabs(curve(wanted) - curve(value));
  return distance <= 0.0 ? 1000 : static_cast<int32_t>(1000.0 - distance / 12.0 * 2000.0 + 0.5);
}

int32_t text_score(const std::string& op, const std::string& stored, const std::string& wanted) {
  const bool holds = op == "="        ? folded(stored) == folded(wanted)
                     : op == "!="     ? folded(stored) != folded(wanted)
                     : op == "BEGINS" ? begins(stored, wanted)
                                      : folded(stored).find(folded(wanted)) != std::string::npos;
  return holds ? 1000 : -1000;
}

std::vector<int32_t> scores_of(const expression& leaf, const track& of) {
  std::vector<int32_t> scores;
  for (uint32_t value : leaf.of == tempo ? of.tempos : std::vector<uint32_t>())
    scores.push_back(tempo_score(leaf.op, static_cast<int32_t>(value), std::stoi(leaf.text)));
  for (const std::string& text : of.texts[leaf.of])
    scores.push_back(text_score(leaf.op, text, leaf.text));
  return scores;
}

// Evaluates for one track. `last` is what the leaf evaluated last leaves to the result.
class evaluation {
 public:
  evaluation(const track& of, uint32_t& seed) : m_of(of), m_seed(seed) {}
  int32_t last = 0;

  // A condition's score; one that was never evaluated stands at -10001.
  int32_t score(const expression& of) {
    switch (of.kind) {
      case expression::number:
        return of.value;
      case expression::reversed:
        return last = 0, -10001;
      case expression::compare:
        return last = compared(of);
      case expression::in_list:
        return last = listed(of);
      case expression::score_compare: {
        const int32_t left = score(*of.left);
        const int32_t right = score(*of.right);
        return holds(of.op, left, right) ? 1000 : -1000;
      }
      default: {
        const bool left = passes(*of.left);
        if (left == (of.op == "OR")) return left ? 1000 : -1000;
        return passes(*of.right) ? 1000 : -1000;
      }
    }
  }

  bool passes(const expression& of) {
    const int32_t reached = score(of);
    if (of.kind == expression::score_compare) return reached >= 0;
    return reached >= (of.kind == expression::compare && of.op == "LIKE" ? 900 : 1000);
  }

  int32_t value(expression& of) {
    if (of.kind == expression::random) {
      if (of.seed && *of.seed == 0) of.seed = m_seed;
      const uint32_t drawn = draw(of.seed ? *of.seed : m_seed);
      return static_cast<int32_t>(of.value == 0 ? drawn : drawn % static_cast<uint32_t>(of.value));
    }
    if (of.kind != expression::arithmetic) {
      const int32_t reached = score(of);
      return of.kind == expression::reversed ? 0 : reached;
    }
    const int64_t left = value(*of.left);
    const int64_t right = value(*of.right);
    const int64_t exact = of.op == "*"   ? left * right
                          : of.op == "+" ? left + right
                          : of.op == "-" ? left - right
                          : right == 0   ? 0
                                         : left / right;
    return static_cast<int32_t>(static_cast<uint32_t>(exact));
  }

 private:
  int32_t compared(const expression& of) {
    const std::vector<int32_t> all = scores_of(of, m_of);
    if (all.empty()) return 0;
    const bool every = of.op == "<" || of.op == "<=";
    return every ? *std::min_element(all.begin(), all.end())
                 : *std::max_element(all.begin(), all.end());
  }
  int32_t listed(const expression& of) {
    if (m_of.tempos.empty()) return 0;
    const bool hit = std::any_of(of.list.begin(), of.list.end(), [&](uint32_t wanted) {
      return std::count(m_of.tempos.begin(), m_of.tempos.end(), wanted) != 0;
    });
    return hit ? 1000 : -1000;
  }

  const track& m_of;
  uint32_t& m_seed;
};

// The literal steps, with a slot for each group that points at a count.
void limit_per(std::vector<result>& results, attribute per, uint32_t limit, uint32_t& seed) {
  const size_t count = results.size();
  if (limit == 0 || limit >= count) return;
  std::vector<uint32_t> counts(count, 0);
  std::vector<size_t> slots(count, 0);
  std::map<std::string, size_t> slot_of;
  size_t next = 0;
  for (result& each : results) {
    std::vector<std::string> keys;
    if (per == tempo)
      for (uint32_t value : each.of->tempos) keys.push_back(std::to_string(value));
    for (const std::string& text : each.of->texts[per])
      keys.push_back("text " + std::to_string(each.in) + " " + text);
    if (keys.empty()) {
      each.group = "0";
      continue;
    }
    size_t slot = next, members = next;
    uint32_t sum = 0;
    slots[next] = next;
    for (const std::string& key : keys) {
      each.group = key;
      const auto found = slot_of.find(key);
      if (found == slot_of.end()) {
        slot_of[key] = slot;
      } else if (slot == next) {
        slot = found->second;
        members = slots[slot];
        sum = counts[members];
      } else if (found->second != slot) {
        sum += counts[slots[found->second]];
      }
    }
    slots[slot] = members;
    counts[members] = sum + 1;
    if (members == next) ++next;
  }
  for (size_t i = 0; i < count; ++i) std::swap(results[draw(seed) % count], results[i]);
  for (size_t i = 0; i < results.size(); ++i) {
    const auto found = slot_of.find(results[i].group);
    if (found == slot_of.end() || counts[slots[found->second]] <= limit) continue;
    --counts[slots[found->second]];
    results.erase(results.begin() + static_cast<std::ptrdiff_t>(i--));
  }
}

int32_t by_score(const result& a, const result& b) {
  return static_cast<int32_t>(static_cast<uint32_t>(b.score) - static_cast<uint32_t>(a.score));
}

// PER limits first, the smallest first; the clauses come to the sort in reverse.
int32_t by_limit(const limit& a, const limit& b) {
  if (!a.per || !b.per) return (a.per ? 13 : 39) - (b.per ? 13 : 39);
  return a.count < b.count ? -1 : a.count > b.count;
}

}  // namespace

std::string run(statement& of, const std::vector<library>& libraries, uint32_t seed) {
  std::vector<result> results;
  for (size_t in = 0; in < libraries.size(); ++in) {
    for (const track& each : libraries[in]) {
      evaluation here(each, seed);
      here.last = of.where ? 0 : 1000;
      if (!of.where || here.passes(*of.where)) results.push_back({in, &each, here.last});
    }
  }
  if (of.order)
    for (result& each : results) each.score = evaluation(*each.of, seed).value(*of.order);

  // The WHERE and ORDER clauses take part in the sort that brings the limits into order.
  std::vector<std::pair<int, limit>> actions;
  for (const limit& each : of.limits) actions.insert(actions.begin(), {37, each});
  if (of.order) actions.push_back({8, {}});
  actions.push_back({5, {}});
  sort_plainly<std::pair<int, limit>>(actions, [](const auto& a, const auto& b) {
    return a.first != 37 || b.first != 37 ? a.first - b.first : by_limit(a.second, b.second);
  });

  bool sorted = false;
  auto rank = [&] {
    if (!sorted) sort_plainly<result>(results, by_score);
    sorted = true;
  };
  for (const auto& [kind, each] : actions) {
    if (kind != 37 || results.size() < 2) continue;
    if (each.per) {
      limit_per(results, *each.per, each.count, seed);
    } else if (each.count < results.size()) {
      rank();
      results.resize(each.count, results[0]);
    }
  }
  rank();

  std::string text;
  for (const result& each : results)
    text += (text.empty() ? "" : " ") + each.of->ident + ":" + std::to_string(each.score);
  return text;
}

}  // namespace reference
