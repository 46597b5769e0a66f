// The playlist as one JSON array.
#include "tools/json.h"
#include "tools/output.h"

namespace zvplaylist {
namespace {

constexpr field shown_terms[] = {field::genre, field::subgenre, field::mood,
                                 field::era,   field::origin,   field::artist_type};

// One object, member by member, with the members that have a value.
class object_writer {
 public:
  void number(const char* key, int64_t value) { member(key, std::to_string(value)); }
  void known_number(const char* key, uint32_t value) {
    if (value != 0) number(key, value);
  }
  void text(const std::string& key, const std::string& value) {
    if (!value.empty()) member(key, json_quote(value));
  }
  void texts(const char* key, const std::vector<std::string>& values) {
    member(key, json_texts(values));
  }
  std::string finish() const { return "{" + members_ + "}"; }

 private:
  void member(const std::string& key, const std::string& value) {
    members_ += (members_.empty() ? "" : ", ") + json_quote(key) + ": " + value;
  }

  std::string members_;
};

std::string object_of(size_t rank, const ranked_track& place) {
  const track& entry = *place.entry;
  object_writer object;
  object.number("rank", static_cast<int64_t>(rank));
  object.text("ident", entry.ident);
  object.text("location", entry.location);
  object.text("title", entry.title);
  object.texts("artists", entry.artists);
  object.text("album", entry.album);
  object.known_number("year", entry.year);
  for (const field source : shown_terms)
    object.text(std::string(field_name(source)), entry.term_of(source));
  object.known_number("tempo", entry.tempo);
  object.known_number("seconds", entry.seconds);
  object.number("score", place.score);
  return object.finish();
}

}  // namespace

std::string render_json(const playlist& tracks) {
  std::vector<std::string> objects;
  for (const ranked_track& place : tracks) objects.push_back(object_of(objects.size() + 1, place));
  return json_document(objects);
}

}  // namespace zvplaylist
