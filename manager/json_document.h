/*
 * json_document.h: JSON documents as plain values. The one place that knows the JSON library.
 *
 * Documents come from strangers: nesting is bounded while the text is read, a repeated key, text
 * that is no UTF-8 and U+0000 are refused, and members keep their order.
 */
#ifndef JSON_DOCUMENT_H
#define JSON_DOCUMENT_H

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "manager/guard.h"

namespace manager {

class json_value {
 public:
  enum class type { null, boolean, integer, real, text, array, object };
  struct member;

  static constexpr size_t depth_limit = 100;

  /* Throws status_error with a message that names the place. */
  static json_value parse(std::string_view text);

  type kind = type::null;
  int64_t number = 0;             // integer and boolean
  std::string text;               // text, and what an integer or real looked like
  std::vector<json_value> items;  // array
  std::vector<member> members;    // object

  /* A member by key, or null. */
  const json_value* find(std::string_view key) const;
  bool is(type wanted) const { return kind == wanted; }
  /* The number that this is, whole or not. */
  std::optional<double> as_real() const;
};

struct json_value::member {
  std::string key;
  json_value value;
};

/* Throws status_error (bad data) with a message. */
[[noreturn]] void refuse_document(const std::string& message);

/* Does work on a document of the data folder; the message of a fault then begins with its name. */
template <class Work>
auto naming_document(const std::string& document, Work work) {
  try {
    return work();
  } catch (const status_error& error) {
    throw status_error(error.status(), document + ".json: " + error.what());
  }
}

}  // namespace manager

#endif
