// zvplaylist info: what the collection holds for one track.
#include <algorithm>
#include <CLI/CLI.hpp>

#include "tools/json.h"
#include "tools/music.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct info_options {
  music_options source;
  std::string format = "text";
  std::string output;
  std::string ident;
};

// "Happy 40, Playful 25" for "40211:40,40209:25".
std::string profile_in_words(const std::string& profile, const term_lists& lists) {
  std::string words;
  each_part(profile, ",", [&](const std::string& pair) {
    const size_t colon = std::min(pair.find(':'), pair.size());
    const std::string id = pair.substr(0, colon);
    const auto known = lists.find(term_list::moods, id);
    const std::string name = known ? lists.name_of(term_list::moods, known->id) : id;
    words +=
        (words.empty() ? "" : ", ") + name + " " + pair.substr(std::min(colon + 1, pair.size()));
  });
  return words;
}

// "ZV_Tempo       Andante  (96)".
std::string text_line(const attribute_values& values, size_t width, const term_lists& lists) {
  std::string line = values.attribute + std::string(width - values.attribute.size() + 2, ' ');
  line += values.texts.empty() ? "-" : printable(joined(values.texts));
  if (!values.id.empty()) line += "  (" + values.id + ")";
  if (!values.profile.empty()) line += "  [" + profile_in_words(values.profile, lists) + "]";
  return line + '\n';
}

std::string render_info_text(const track& entry, const std::vector<attribute_values>& all,
                             const term_lists& lists) {
  size_t width = 0;
  for (const attribute_values& each : all) width = std::max(width, each.attribute.size());
  std::string document = printable(entry.ident) + '\n';
  for (const attribute_values& each : all) document += text_line(each, width, lists);
  return document;
}

std::string json_object(const attribute_values& values) {
  std::string object = "{\"texts\": " + json_texts(values.texts);
  if (!values.id.empty()) object += ", \"id\": " + values.id;
  if (!values.profile.empty()) object += ", \"profile\": " + json_quote(values.profile);
  return object + "}";
}

std::string render_info_json(const track& entry, const std::vector<attribute_values>& all) {
  std::string members;
  for (const attribute_values& each : all)
    members += (members.empty() ? "    " : ",\n    ") + json_quote(each.attribute) + ": " +
               json_object(each);
  return "{\n  \"ident\": " + json_quote(entry.ident) + ",\n  \"attributes\": {\n" + members +
         "\n  }\n}\n";
}

exit_code run_info(const info_options& options) {
  music tracks(options.source);
  if (!tracks.read()) return exit_bad_input;
  const track& entry = tracks.find(options.ident);
  const std::vector<attribute_values> values = tracks.library().values_of(entry.ident);
  return tracks.write(options.format == "json"
                          ? render_info_json(entry, values)
                          : render_info_text(entry, values, tracks.library().lists()),
                      options.output);
}

}  // namespace

action declare_info(CLI::App& app) {
  auto options = std::make_shared<info_options>();
  app.add_option("IDENT", options->ident, "The track")->required();
  declare_music_options(app, options->source);
  declare_document_options(app, options->format, options->output);
  app.footer(
      "Example:\n"
      "  zvplaylist info sample-017 --import data/sample/tracks.csv\n"
      "\n"
      "In brackets stands what the collection stores: the id in the list, or a plain number.\n"
      "Exit codes: 0 fine, 1 no such track, 2 usage, 3 an input held nothing usable,\n"
      "4 the output could not be written.");
  return [options] { return run_info(*options); };
}

}  // namespace zvplaylist
