// The one user of nlohmann-json.
#include "tools/json.h"

#include <nlohmann/json.hpp>

#include "tools/text.h"

namespace zvplaylist {
namespace {

using nlohmann::json;

bool is_scalar(const json& value) {
  return value.is_string() || value.is_number() || value.is_null();
}

std::string scalar_text(const json& value) {
  return value.is_string() ? value.get<std::string>() : value.dump();
}

}  // namespace

std::string read_flat_object(
    std::string_view text, const std::function<bool(const std::string& key)>& wanted,
    const std::function<void(const std::string& key, const std::string& value)>& take) {
  const json object = json::parse(text, nullptr, false);
  if (object.is_discarded()) return "not valid JSON";
  if (!object.is_object()) return "not a JSON object";
  for (const auto& [key, value] : object.items()) {
    if (!wanted(key)) continue;
    const json elements = value.is_array() ? value : json::array({value});
    for (const json& element : elements) {
      if (!is_scalar(element)) return "'" + key + "' is neither text nor number";
      if (!element.is_null()) take(key, scalar_text(element));
    }
  }
  return {};
}

std::string json_quote(std::string_view text) {
  return json(text).dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string json_texts(const std::vector<std::string>& texts) {
  std::vector<std::string> quoted;
  for (const std::string& text : texts) quoted.push_back(json_quote(text));
  return "[" + joined(quoted) + "]";
}

std::string json_document(const std::vector<std::string>& items) {
  std::string document = "[";
  for (const std::string& item : items)
    document += (document.size() == 1 ? "\n  " : ",\n  ") + item;
  return document + (items.empty() ? "]\n" : "\n]\n");
}

}  // namespace zvplaylist
