// line_source.h: a stream as numbered lines, whichever of the three usual line ends it uses. Lines
// can be put back, which is how a reader resumes behind a fault. Memory: one line, plus those that
// were put back.
#ifndef ZVPLAYLIST_LINE_SOURCE_H
#define ZVPLAYLIST_LINE_SOURCE_H

#include <deque>
#include <istream>
#include <string>

namespace zvplaylist {

struct source_line {
  std::string text;       // its line end included
  size_t number = 0;      // from 1
  bool too_long = false;  // only the first max_line_bytes are in `text`
};

inline constexpr size_t max_line_bytes = 1 << 20;

class line_source {
 public:
  explicit line_source(std::istream& in);

  bool next(source_line& line);
  // The line comes again before any other; the one put back last comes first.
  void put_back(source_line&& line) { waiting_.push_front(std::move(line)); }

 private:
  std::streambuf& in_;
  std::deque<source_line> waiting_;
  size_t number_ = 0;
};

}  // namespace zvplaylist

#endif
