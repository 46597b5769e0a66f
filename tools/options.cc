// As CLI11 has them.
#include "tools/options.h"

#include <CLI/CLI.hpp>

#include "tools/columns.h"
#include "tools/output.h"

namespace zvplaylist {
namespace {

std::vector<std::string> format_names() {
  std::vector<std::string> names;
  for (const output_format& format : output_formats) names.push_back(format.name);
  return names;
}

void declare_format(CLI::App& app, std::string& format, const char* help,
                    const std::vector<std::string>& names) {
  app.add_option("--format", format, help)->type_name("NAME")->check(CLI::IsMember(names));
}

}  // namespace

void declare_repeatable(CLI::App& app, const char* name, std::vector<std::string>& target,
                        const char* type, const std::string& help) {
  app.add_option(name, target, help)->type_name(type)->allow_extra_args(false);
}

void declare_count(CLI::App& app, const char* name, uint32_t& target, const char* help) {
  app.add_option(name, target, help)->type_name("N")->check(CLI::Range(uint32_t{1}, UINT32_MAX));
}

void declare_output_option(CLI::App& app, std::string& output) {
  app.add_option("-o,--output", output, "Write to FILE instead of standard output")
      ->type_name("FILE");
}

void declare_language_option(CLI::App& app, std::string& language) {
  app.add_option("--language", language, "Language of names and texts: eng (as usual), ger or fre")
      ->type_name("LANG");
}

void declare_quiet_option(CLI::App& app, bool& quiet) {
  app.add_flag("-q,--quiet", quiet, "No progress and no reports on bad rows and files");
}

void declare_store_option(CLI::App& app, std::string& folder) {
  app.add_option("--store", folder, "Collections are in DIR, not in the user's data folder")
      ->type_name("DIR")
      ->envname("ZVPLAYLIST_STORE");
}

void declare_map_option(CLI::App& app, std::vector<std::string>& mappings) {
  declare_repeatable(app, "--map", mappings, "FIELD=COLUMN",
                     "The catalog's COLUMN holds FIELD (" + field_names_text() + ")");
}

void declare_music_options(CLI::App& app, music_options& options) {
  declare_repeatable(app, "--from", options.collections, "NAME",
                     "Take a stored collection (zvplaylist collections lists them)");
  declare_store_option(app, options.store);
  declare_repeatable(app, "--scan", options.folders, "DIR",
                     "Read the tags of every audio file below DIR");
  declare_repeatable(app, "--import", options.catalogs, "FILE",
                     "Read a catalog in CSV or JSON Lines; - is standard input");
  declare_map_option(app, options.mappings);
  declare_language_option(app, options.language);
  declare_quiet_option(app, options.quiet);
}

void declare_playlist_options(CLI::App& app, playlist_options& options, const char* random_help) {
  if (random_help != nullptr) declare_count(app, "--random", options.random, random_help);
  declare_format(app, options.format, "Output format: text, m3u8, xspf or json", format_names());
  declare_output_option(app, options.output);
}

void declare_document_options(CLI::App& app, std::string& format, std::string& output) {
  declare_format(app, format, "Output format: text or json", {"text", "json"});
  declare_output_option(app, output);
}

}  // namespace zvplaylist
