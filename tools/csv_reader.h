// csv_reader.h: rows of a CSV stream, quoted as RFC 4180 has it, line breaks within quotes
// included. A fault costs its own line only: an unbalanced quote, which would swallow what follows
// up to the next quote, is reported with the line where it opened, and reading resumes on the line
// behind.
#ifndef ZVPLAYLIST_CSV_READER_H
#define ZVPLAYLIST_CSV_READER_H

#include <memory>
#include <string>
#include <vector>

#include "tools/line_source.h"

namespace zvplaylist {

class csv_reader {
 public:
  enum class step { row, fault, end };

  csv_reader(line_source& lines, char delimiter);
  ~csv_reader();

  // Reads on. `row` holds the fields of a row, or `fault` what is wrong with the line.
  step next();
  // The row that next() gave cannot be right: if it spans several lines, resumes at its second.
  void resume_behind_first_line();

  std::vector<std::string> row;
  std::string fault;
  size_t line() const { return line_; }  // where the row or the fault begins

 private:
  struct parser;
  step fail(const char* what);

  line_source& lines_;
  char delimiter_;
  std::unique_ptr<parser> parser_;
  std::vector<source_line> row_lines_;
  size_t line_ = 0;
};

}  // namespace zvplaylist

#endif
