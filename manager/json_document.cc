// Reads JSON into plain values, event by event, so that depth is known before memory is spent on
// it.

#include "manager/json_document.h"

#include <algorithm>
#include <charconv>
#include <nlohmann/json.hpp>

namespace manager {
namespace {

using json = nlohmann::json;

void refuse_repeated_keys(const std::vector<json_value::member>& members) {
  std::vector<std::string_view> keys;
  keys.reserve(members.size());
  for (const json_value::member& each : members) keys.emplace_back(each.key);
  std::sort(keys.begin(), keys.end());
  const auto twice = std::adjacent_find(keys.begin(), keys.end());
  if (twice == keys.end()) return;
  refuse_document("the key \"" + std::string(*twice) + "\" is given twice");
}

/* Texts go on as C strings, where such a one would be cut and keys could become alike. */
void refuse_nul(const std::string& text) {
  if (text.find('\0') != text.npos) refuse_document("a text contains the character U+0000");
}

class reader : public nlohmann::json_sax<json> {
 public:
  explicit reader(json_value& root) : root_(root) {}

  bool null() override { return leaf({}); }
  bool boolean(bool value) override { return integer(json_value::type::boolean, value, {}); }
  bool number_integer(number_integer_t value) override {
    return integer(json_value::type::integer, value, std::to_string(value));
  }
  bool number_unsigned(number_unsigned_t value) override {
    if (value > INT64_MAX) return number_float(static_cast<double>(value), std::to_string(value));
    return integer(json_value::type::integer, static_cast<int64_t>(value), std::to_string(value));
  }
  bool number_float(number_float_t, const string_t& text) override {
    json_value value;
    value.kind = json_value::type::real;
    value.text = text;
    return leaf(std::move(value));
  }
  bool string(string_t& text) override {
    refuse_nul(text);
    json_value value;
    value.kind = json_value::type::text;
    value.text = std::move(text);
    return leaf(std::move(value));
  }
  bool binary(binary_t&) override { return false; }
  bool start_object(size_t) override { return open(json_value::type::object); }
  bool key(string_t& name) override {
    refuse_nul(name);
    open_.back()->members.push_back({std::move(name), {}});
    return true;
  }
  bool end_object() override {
    refuse_repeated_keys(open_.back()->members);
    return close();
  }
  bool start_array(size_t) override { return open(json_value::type::array); }
  bool end_array() override { return close(); }
  bool parse_error(size_t, const std::string&, const nlohmann::detail::exception& fault) override {
    const std::string_view what = fault.what();
    const size_t id_end = what.find("] ");
    refuse_document(std::string(id_end != what.npos ? what.substr(id_end + 2) : what));
  }

 private:
  /* Where the next value goes. Parents do not move while they are open, because only the innermost
   * open container grows. */
  json_value& place() {
    if (open_.empty()) return root_;
    json_value& parent = *open_.back();
    if (parent.is(json_value::type::object)) return parent.members.back().value;
    return parent.items.emplace_back();
  }
  bool leaf(json_value value) {
    place() = std::move(value);
    return true;
  }
  bool integer(json_value::type kind, int64_t number, std::string text) {
    json_value value;
    value.kind = kind;
    value.number = number;
    value.text = std::move(text);
    return leaf(std::move(value));
  }
  bool open(json_value::type kind) {
    if (open_.size() >= json_value::depth_limit) {
      refuse_document("nested more than " + std::to_string(json_value::depth_limit) + " deep");
    }
    json_value& value = place();
    value.kind = kind;
    open_.push_back(&value);
    return true;
  }
  bool close() {
    open_.pop_back();
    return true;
  }

  json_value& root_;
  std::vector<json_value*> open_;
};

}  // namespace

void refuse_document(const std::string& message) {
  throw status_error(error_bad_data, message);
}

json_value json_value::parse(std::string_view text) {
  json_value root;
  reader events(root);
  json::sax_parse(text.begin(), text.end(), &events);
  return root;
}

const json_value* json_value::find(std::string_view key) const {
  const auto found = std::find_if(members.begin(), members.end(),
                                  [&](const member& each) { return each.key == key; });
  return found != members.end() ? &found->value : nullptr;
}

std::optional<double> json_value::as_real() const {
  if (is(type::integer)) return static_cast<double>(number);
  double value = 0;
  if (!is(type::real)) return std::nullopt;
  const auto fault = std::from_chars(text.data(), text.data() + text.size(), value).ec;
  return fault == std::errc() ? std::optional(value) : std::nullopt;
}

}  // namespace manager
