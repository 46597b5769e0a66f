// The plain evaluation of a statement.
#include <algorithm>
#include <map>
#include <span>

#include "support/zcsl_random.h"
#include "support/zcsl_sort.h"
#include "tests/reference/reference.h"

namespace reference {
namespace {

struct result {
  size_t in;
  const facts* of;
  int32_t score;
  const std::string* group = nullptr;
};

// Higher scores first.
int32_t compare_results(const void* a, const void* b, void*) {
  const auto score = [](auto* of) { return uint32_t(static_cast<const result*>(of)->score); };
  return static_cast<int32_t>(score(b) - score(a));
}

// Evaluates for one media. `last` is what the leaf evaluated last leaves to the result; after a
// failure nothing is evaluated any more.
struct evaluation {
  const facts& of_media;
  uint32_t& random;
  int32_t last;
  zvsdk_status failure = 0;

  bool passes(expression& of) {
    const uint32_t level = of.wanted.level < 4 ? of.wanted.level : 0;
    const int32_t least = of.kind == expression::score_compare ? 0
                          : of.op == "LIKE"                    ? rules[of.of].thresholds[level]
                                                               : 1000;
    return score(of) >= least && failure == 0;
  }

  // A score; one that was never evaluated stands at -10001.
  int32_t score(expression& of) {
    if (failure != 0 || of.kind == expression::number) return of.value;
    if (of.kind == expression::reversed) return last = 0, -10001;
    if (of.kind == expression::compare) return last = compared(of);
    if (of.kind == expression::random) {
      if (of.seed && *of.seed == 0) of.seed = random;
      const uint32_t drawn = zcsl_random_rand(of.seed ? &*of.seed : &random);
      return last = static_cast<int32_t>(of.value == 0 ? drawn
                                                       : drawn % static_cast<uint32_t>(of.value));
    }
    if (of.kind == expression::logic) {
      const bool left = passes(*of.left), settled = failure != 0 || left == (of.op == "OR");
      return (settled ? left : passes(*of.right)) ? 1000 : -1000;
    }
    const int32_t left = operand(*of.left, of), right = operand(*of.right, of);
    const char side = "<=>"[1 + (left > right) - (left < right)];
    if (of.kind == expression::score_compare)
      return (of.op == "!=" ? side != '=' : of.op.find(side) < 2) ? 1000 : -1000;
    const auto a = static_cast<uint32_t>(left), b = static_cast<uint32_t>(right);
    const uint32_t result = of.op == "*"   ? a * b
                            : of.op == "+" ? a + b
                            : of.op == "-" ? a - b
                            : right == 0   ? 0
                                           : static_cast<uint32_t>(int64_t{left} / right);
    if (failure == 0) last = static_cast<int32_t>(result);
    return last;
  }

  // Arithmetic takes what stands in the result, a comparison of scores the score itself.
  int32_t operand(expression& inner, const expression& of) {
    const int32_t own = score(inner);
    return of.kind == expression::arithmetic && inner.kind != expression::number ? last : own;
  }

  int32_t compared(const expression& of) {
    const texts& values = of_media.held[of.of];
    if (values.empty() || of.wanted.silent) return 0;
    int32_t best = -1000, worst = 1000;
    const bool every = of.op == "<" || of.op == "<=";
    for (const std::string& value : values) {
      const bool in_list = of.text.find("," + value.substr(1) + ",") != std::string::npos;
      const int32_t score = of.op != "IN" ? compare(of, value, failure) : in_list ? 1000 : -1000;
      if (failure != 0) return last;
      if (score == ignored) continue;
      best = std::max(best, score);
      worst = std::min(worst, score);
      if (every ? worst < -999 : best >= 1000) break;
    }
    return every ? worst : best;
  }
};

// Gives criteria to the comparisons, until one is refused.
zvsdk_status set_up(expression* of, const facts* seed) {
  if (of == nullptr) return 0;
  if (!of->text.empty() && of->op != "IN") {
    of->wanted = make_criterion(*of, of->text == "SEED" ? seed : nullptr);
    return of->wanted.refusal;
  }
  const zvsdk_status left = set_up(of->left.get(), seed);
  return left != 0 ? left : set_up(of->right.get(), seed);
}

// The literal steps, with a slot for each group that points at a count.
void limit_per(std::vector<result>& results, attribute per, uint32_t limit, uint32_t& random) {
  static const std::string s_zero = "#0";  // what has no value counts with a value of 0
  const size_t count = results.size();
  if (limit == 0 || limit >= count) return;
  std::vector<uint32_t> counts(count, 0);
  std::vector<size_t> slots(count, 0);
  std::map<std::string, size_t> slot_of;
  size_t next = 0;
  for (result& each : results) {
    const texts& values = each.of->held[per];
    each.group = &s_zero;
    if (values.empty()) continue;
    size_t slot = next, members = next;
    uint32_t sum = 0;
    slots[next] = next;
    for (const std::string& value : values) {
      const std::string group = value[0] == '#' ? value : std::to_string(each.in) + value;
      const auto [found, is_new] = slot_of.emplace(group, slot);
      each.group = &found->first;
      if (is_new || found->second == slot) continue;
      sum = (slot == next ? 0 : sum) + counts[slots[found->second]];
      if (slot == next) members = slots[slot = found->second];
    }
    slots[slot] = members;
    counts[members] = sum + 1;
    if (members == next) ++next;
  }
  for (result& each : results) std::swap(results[zcsl_random_rand(&random) % count], each);
  for (size_t i = 0; i < results.size(); ++i) {
    const auto found = slot_of.find(*results[i].group);
    if (found == slot_of.end() || counts[slots[found->second]] <= limit) continue;
    --counts[slots[found->second]];
    results.erase(results.begin() + static_cast<std::ptrdiff_t>(i--));
  }
}

}  // namespace

std::string run(statement& of, const std::vector<library>& libraries, const facts* seed,
                uint32_t random) {
  zvsdk_status status = 0;
  const auto failed = [&] { return "status " + std::to_string(status); };
  if (seed == nullptr && of.text.find("SEED") != std::string::npos)
    status = playlist_error_seed_required;
  if (status == 0) status = set_up(of.order.get(), seed);
  if (status == 0) status = set_up(of.where.get(), seed);
  if (status != 0) return failed();

  std::vector<result> results;
  for (size_t in = 0; in < libraries.size(); ++in) {
    for (size_t i = 0; i < libraries[in].size(); ++i) {
      if (in == 0 && seed != nullptr && i + 1 == seed->item) continue;
      evaluation here = {libraries[in][i], random, of.where ? 0 : 1000};
      if (!of.where || here.passes(*of.where))
        results.push_back({in, &libraries[in][i], here.last});
      status = here.failure;
    }
  }
  for (result& each : status == 0 && of.order ? std::span(results) : std::span<result>()) {
    evaluation here = {*each.of, random, each.score};
    here.score(*of.order);
    each.score = here.last;
    status = here.failure;
  }
  if (status != 0) return failed();

  // PER limits come first, the smallest first; the count comes after the ranking.
  std::ranges::sort(of.limits, {}, [](auto& each) { return std::pair(!each.first, each.second); });
  if (of.limits.empty() || of.limits.back().first) of.limits.push_back({std::nullopt, UINT32_MAX});
  for (const auto& [per, count] : of.limits) {
    if (results.size() < 2) break;
    if (per) limit_per(results, *per, count, random);
    if (!per)
      zcsl_utils_qsort(results.data(), static_cast<uint32_t>(results.size()), sizeof(result),
                       compare_results, nullptr);
    if (!per && count < results.size()) results.resize(count);
  }

  std::string text;
  for (const result& each : results)
    text += (text.empty() ? "" : " ") + each.of->ident + ":" + std::to_string(each.score);
  return text;
}

}  // namespace reference
