// Reads catalogs row by row.
#include "tools/import.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>

#include "tools/csv_reader.h"
#include "tools/json.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct known_extension {
  std::string_view extension;
  catalog_format format;
};
constexpr known_extension known_extensions[] = {
    {".csv", catalog_format::csv},           {".tsv", catalog_format::tsv},
    {".tab", catalog_format::tsv},           {".jsonl", catalog_format::json_lines},
    {".ndjson", catalog_format::json_lines}, {".json", catalog_format::json_lines}};

// By the extension alone.
catalog_format format_of_path(std::string_view path) {
  const std::string lower = ascii_lower(path);
  for (const known_extension& known : known_extensions)
    if (lower.ends_with(known.extension)) return known.format;
  return catalog_format::unknown;
}

// What both kinds of catalog share: where they report and where their tracks go.
struct import_run {
  const std::string& name;
  const column_map& columns;
  const track_sink& sink;
  console& out;
  size_t rows = 0;
  size_t usable = 0;

  void take(const record& values, size_t line) {
    const place where{name, line};
    if (auto entry = track_from_record(values, where, out)) {
      sink(std::move(*entry), where);
      ++usable;
    }
  }
  void skip(size_t line, std::string_view what) {
    out.report(outcome::skipped, {name, line}, what);
  }
  void count_row() { out.progress("reading " + name, ++rows); }
};

using header = std::vector<std::optional<field>>;

header resolve_header(const std::vector<std::string>& names, import_run& run) {
  header columns;
  for (const std::string& name : names) columns.push_back(run.columns.find(trim(name)));
  for (const std::string& name : run.columns.missing_from(names))
    run.out.report(outcome::noted, {run.name, 1}, "there is no column '" + name + "'");
  return columns;
}

bool names_tracks(const header& columns) {
  return std::any_of(columns.begin(), columns.end(), [](const std::optional<field>& column) {
    return column == field::ident || column == field::location;
  });
}

// Excess fields are no harm while they are empty, as a comma at each line's end makes them.
bool fits_header(const std::vector<std::string>& row, const header& columns) {
  return row.size() >= columns.size() &&
         std::all_of(row.begin() + static_cast<std::ptrdiff_t>(columns.size()), row.end(),
                     [](const std::string& field) { return field.empty(); });
}

void take_csv_row(csv_reader& reader, const header& columns, import_run& run) {
  if (!fits_header(reader.row, columns)) {
    run.skip(reader.line(), std::to_string(reader.row.size()) + " fields where the header has " +
                                std::to_string(columns.size()) + ", row left out");
    return reader.resume_behind_first_line();
  }
  record values;
  for (size_t i = 0; i < columns.size(); ++i)
    if (columns[i]) values.emplace_back(*columns[i], std::move(reader.row[i]));
  run.take(values, reader.line());
}

void import_csv(line_source& lines, char delimiter, import_run& run) {
  csv_reader reader(lines, delimiter);
  std::optional<header> columns;
  for (auto step = reader.next(); step != csv_reader::step::end; step = reader.next()) {
    run.count_row();
    if (step == csv_reader::step::fault) {
      run.skip(reader.line(), reader.fault + ", row left out");
    } else if (!columns) {
      columns = resolve_header(reader.row, run);
      if (!names_tracks(*columns))
        return run.skip(reader.line(), "no column holds idents; name one with --map ident=COLUMN");
    } else {
      take_csv_row(reader, *columns, run);
    }
  }
}

void take_json_line(const source_line& line, import_run& run) {
  if (line.too_long) return run.skip(line.number, "line is too long, left out");
  const repaired_text repaired = replace_unusable(line.text);
  if (repaired.had_invalid)
    run.out.report(outcome::mended, {run.name, line.number}, "invalid UTF-8 replaced");
  record values;
  const std::string fault = read_flat_object(
      repaired.had_invalid ? repaired.text : line.text,
      [&](const std::string& key) { return run.columns.find(key).has_value(); },
      [&](const std::string& key, const std::string& value) {
        values.emplace_back(*run.columns.find(key), value);
      });
  if (!fault.empty()) return run.skip(line.number, fault + ", line left out");
  run.take(values, line.number);
}

void import_json_lines(line_source& lines, import_run& run) {
  source_line line;
  while (lines.next(line)) {
    if (trim(line.text).empty()) continue;
    run.count_row();
    take_json_line(line, run);
  }
}

// The delimiter that the header uses most.
char sniff_delimiter(std::string_view line) {
  char best = ',';
  for (char candidate : {'\t', ';'})
    if (std::count(line.begin(), line.end(), candidate) >
        std::count(line.begin(), line.end(), best))
      best = candidate;
  return best;
}

// The first line, which stays to be read.
std::string peek_line(line_source& lines) {
  source_line line;
  std::string text;
  if (lines.next(line)) {
    text = line.text;
    lines.put_back(std::move(line));
  }
  return text;
}

}  // namespace

size_t import_stream(std::istream& in, catalog_format format, const std::string& name,
                     const column_map& columns, const track_sink& sink, console& out) {
  import_run run{name, columns, sink, out};
  line_source lines(in);
  try {
    const std::string first = peek_line(lines);
    if (format == catalog_format::unknown && trim(first).starts_with('{'))
      format = catalog_format::json_lines;
    if (format == catalog_format::json_lines)
      import_json_lines(lines, run);
    else
      import_csv(lines, format == catalog_format::tsv ? '\t' : sniff_delimiter(first), run);
  } catch (const std::ios_base::failure&) {
    run.skip(0, "cannot be read " +
                    (run.rows == 0 ? "at all" : "behind row " + std::to_string(run.rows)));
  }
  return run.usable;
}

std::string catalog_name(const std::string& path) {
  return path == "-" ? "standard input" : path;
}

size_t import_file(const std::string& path, const column_map& columns, const track_sink& sink,
                   console& out) {
  if (path == "-")
    return import_stream(std::cin, catalog_format::unknown, catalog_name(path), columns, sink, out);
  std::error_code error;
  std::ifstream in;
  if (std::filesystem::is_directory(path, error))
    errno = EISDIR;
  else
    in.open(path, std::ios::binary);
  if (!in.is_open()) {
    out.report(outcome::skipped, {path}, std::strerror(errno));
    return 0;
  }
  return import_stream(in, format_of_path(path), path, columns, sink, out);
}

}  // namespace zvplaylist
