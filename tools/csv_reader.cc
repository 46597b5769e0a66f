// The one user of libcsv.
#include "tools/csv_reader.h"

#include <csv.h>

#include <new>

#include "tools/text.h"

namespace zvplaylist {

// libcsv's state for one row; strict, so that a stray quote is a fault and no guess.
struct csv_reader::parser {
  explicit parser(char delimiter) {
    if (csv_init(&state, CSV_STRICT | CSV_STRICT_FINI) != 0) throw std::bad_alloc();
    csv_set_delim(&state, static_cast<unsigned char>(delimiter));
  }
  ~parser() { csv_free(&state); }

  bool feed(const std::string& text) {
    return csv_parse(&state, text.data(), text.size(), on_field, on_row, this) == text.size();
  }
  bool finish() { return csv_fini(&state, on_field, on_row, this) == 0; }

  static void on_field(void* text, size_t size, void* self) {
    static_cast<parser*>(self)->fields.emplace_back(static_cast<const char*>(text), size);
  }
  static void on_row(int, void* self) { static_cast<parser*>(self)->complete = true; }

  csv_parser state;
  std::vector<std::string> fields;
  bool complete = false;
};

csv_reader::csv_reader(line_source& lines, char delimiter) : lines_(lines), delimiter_(delimiter) {}

csv_reader::~csv_reader() = default;

void csv_reader::resume_behind_first_line() {
  while (row_lines_.size() > 1) {
    lines_.put_back(std::move(row_lines_.back()));
    row_lines_.pop_back();
  }
}

csv_reader::step csv_reader::fail(const char* what) {
  fault = what;
  resume_behind_first_line();
  return step::fault;
}

csv_reader::step csv_reader::next() {
  parser_ = std::make_unique<parser>(delimiter_);
  row_lines_.clear();
  size_t bytes = 0;
  source_line line;
  while (!parser_->complete && lines_.next(line)) {
    if (row_lines_.empty()) {
      if (trim(line.text).empty()) continue;
      line_ = line.number;
    }
    bytes += line.text.size();
    const bool too_long = line.too_long || bytes > max_line_bytes;
    const bool fed = !too_long && parser_->feed(line.text);
    row_lines_.push_back(std::move(line));
    if (too_long) return fail(row_lines_.size() > 1 ? "quote is not closed" : "line is too long");
    if (!fed) return fail("unbalanced quote");
  }
  if (row_lines_.empty()) return step::end;
  if (!parser_->complete && !parser_->finish()) return fail("quote is not closed");
  row = std::move(parser_->fields);
  return step::row;
}

}  // namespace zvplaylist
