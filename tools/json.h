// json.h: the little JSON that the tool needs: flat objects in, quoted texts out.
#ifndef ZVPLAYLIST_JSON_H
#define ZVPLAYLIST_JSON_H

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zvplaylist {

// Calls `take` for each text or number of the members that are `wanted`, an array giving one call
// an element; null is passed over, and so is any value of another member. Returns what is wrong, or
// an empty text. `take` may have been called before a fault in a value was found.
std::string read_flat_object(
    std::string_view json, const std::function<bool(const std::string& key)>& wanted,
    const std::function<void(const std::string& key, const std::string& value)>& take);

// A JSON string with its quotes. Invalid UTF-8 is replaced.
std::string json_quote(std::string_view text);
// ["A", "B"]
std::string json_texts(const std::vector<std::string>& texts);
// A list as a whole document, with an item a line.
std::string json_document(const std::vector<std::string>& items);

}  // namespace zvplaylist

#endif
