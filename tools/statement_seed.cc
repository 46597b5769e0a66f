// Looks for RAND with a number of its own, and for LIMIT.
#include "tools/statement_seed.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "tools/text.h"

namespace zvplaylist {
namespace {

// Takes a statement apart as far as it is needed here.
class scanner {
 public:
  explicit scanner(std::string_view text) : rest_(text) {}

  bool done() const { return rest_.empty(); }
  size_t left() const { return rest_.size(); }
  void skip_byte() { rest_.remove_prefix(1); }
  bool take(char c) {
    skip_white();
    if (!rest_.starts_with(c)) return false;
    skip_byte();
    return true;
  }
  // A quoted string, which may hold anything.
  bool take_string() {
    if (!rest_.starts_with('"') && !rest_.starts_with('\'')) return false;
    rest_.remove_prefix(std::min(rest_.find(rest_.front(), 1), rest_.size() - 1) + 1);
    return true;
  }
  std::string_view take_word() { return take_while(is_word_byte); }
  std::string_view take_number() {
    take('-');  // and the white space before
    return take_while(is_digit);
  }

 private:
  void skip_white() {
    while (!rest_.empty() && rest_.front() > 0 && rest_.front() <= ' ') skip_byte();
  }
  std::string_view take_while(bool (*fits)(char)) {
    const auto end = std::find_if_not(rest_.begin(), rest_.end(), fits);
    const std::string_view taken(rest_.data(), static_cast<size_t>(end - rest_.begin()));
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest_;
};

// Keywords may be cut short to some letters, in any letter case.
bool is_keyword(std::string_view word, std::string_view keyword, size_t least) {
  return word.size() >= least && keyword.starts_with(ascii_lower(word));
}

std::optional<uint32_t> number_of(std::string_view digits) {
  uint32_t number = 0;
  const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (result.ec == std::errc::result_out_of_range) return UINT32_MAX;
  if (number == 0) return std::nullopt;
  return number;
}

}  // namespace

std::optional<uint32_t> seed_in_statement(std::string_view statement) {
  scanner in(statement);
  while (!in.done()) {
    if (in.take_string()) continue;
    const std::string_view word = in.take_word();
    if (word.empty()) in.skip_byte();
    if (!is_keyword(word, "rand", 1) || !in.take('(')) continue;
    in.take_number();
    if (!in.take(',')) continue;
    if (const auto number = number_of(in.take_number())) return number;
  }
  return std::nullopt;
}

std::string_view without_limits(std::string_view statement) {
  scanner in(statement);
  while (!in.done()) {
    if (in.take_string()) continue;
    const std::string_view word = in.take_word();
    if (word.empty()) in.skip_byte();
    if (is_keyword(word, "limit", 3))
      return statement.substr(0, statement.size() - in.left() - word.size());
  }
  return statement;
}

}  // namespace zvplaylist
