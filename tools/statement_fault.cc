// Finds the place of a fault by the text that a message quotes.
#include "tools/statement_fault.h"

#include <algorithm>

#include "tools/text.h"

namespace zvplaylist {
namespace {

// What a message quotes, between the texts around it, and which of several matches is meant.
enum class quoted { rest_of_statement, last_match, first_match };

struct message_shape {
  std::string_view before, after;
  quoted what;
};

constexpr message_shape shapes[] = {
    {"expected number at '", "'", quoted::rest_of_statement},
    {"expected ident|number at '", "'", quoted::rest_of_statement},
    {"expected RESULTS|PER at '", "'", quoted::rest_of_statement},
    {"unbalanced right parens '", "'", quoted::rest_of_statement},
    {"unexpected symbol '", "'", quoted::last_match},
    {"bad operator '", "'", quoted::last_match},
    {"attribute '", "' not supported by collection", quoted::first_match},
    {"support for attribute '", "'", quoted::first_match},
    {"unsupported value '", "' for attribute '", quoted::last_match},
    {"unknown value '", "' for attribute '", quoted::last_match},
    {"error setting criteria '", "' for attribute '", quoted::last_match},
};

constexpr std::string_view no_operator = "' does not support operator '";

// Whether the match is no piece of a longer word.
bool stands_alone(std::string_view text, size_t at, size_t size) {
  const bool joined_before = at > 0 && is_word_byte(text[at - 1]) && is_word_byte(text[at]);
  const size_t end = at + size;
  const bool joined_after =
      end < text.size() && is_word_byte(text[end - 1]) && is_word_byte(text[end]);
  return !joined_before && !joined_after;
}

std::optional<size_t> find_word(std::string_view text, std::string_view word, quoted which) {
  std::optional<size_t> found;
  if (word.empty()) return found;
  for (size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
    if (!stands_alone(text, at, word.size())) continue;
    found = at;
    if (which == quoted::first_match) break;
  }
  return found;
}

std::optional<std::string_view> between(std::string_view text, const message_shape& shape) {
  const size_t before = text.find(shape.before);
  if (before == std::string_view::npos) return std::nullopt;
  const size_t start = before + shape.before.size();
  const size_t end = text.rfind(shape.after);
  if (end == std::string_view::npos || end < start) return std::nullopt;
  return text.substr(start, end - start);
}

std::optional<size_t> locate(std::string_view statement, std::string_view text, quoted what) {
  if (what != quoted::rest_of_statement) return find_word(statement, text, what);
  if (!statement.ends_with(text)) return std::nullopt;
  return statement.size() - text.size();
}

// The operator that an attribute does not support stands beside the attribute.
std::optional<size_t> locate_operator(std::string_view statement, std::string_view message) {
  const auto attribute = between(message, {"attribute '", no_operator, {}});
  const auto op = between(message, {no_operator, "'", {}});
  if (!attribute || !op || op->empty()) return std::nullopt;
  for (size_t at = statement.find(*op); at != std::string_view::npos;
       at = statement.find(*op, at + 1)) {
    if (trim(statement.substr(0, at)).ends_with(*attribute) ||
        trim(statement.substr(at + op->size())).starts_with(*attribute))
      return at;
  }
  return find_word(statement, *attribute, quoted::first_match);
}

}  // namespace

std::optional<size_t> locate_fault(std::string_view statement, std::string_view message) {
  const size_t end = trim(statement).empty() ? 0 : statement.find_last_not_of(" \t\r\n;") + 1;
  if (message.find("unexpected end of statement") != std::string_view::npos) return end;
  if (message.find(no_operator) != std::string_view::npos)
    return locate_operator(statement, message);
  for (const message_shape& shape : shapes)
    if (const auto text = between(message, shape))
      return text->empty() ? end : locate(statement, *text, shape.what);
  return std::nullopt;
}

marked_line mark_fault(std::string_view statement, size_t offset) {
  offset = std::min(offset, statement.size());
  const size_t start = offset == 0 ? 0 : statement.rfind('\n', offset - 1) + 1;
  const size_t end = std::min(statement.find('\n', offset), statement.size());
  const std::string before = printable(statement.substr(start, offset - start));
  return {.text = before + printable(statement.substr(offset, end - offset)),
          .caret = std::string(display_width(before), ' ') + '^'};
}

}  // namespace zvplaylist
