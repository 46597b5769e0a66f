// console.h: standard error as a person sees it: messages, reports on bad rows and files, and a
// progress line that appears on a terminal only and never mixes with them. Not for several threads.
#ifndef ZVPLAYLIST_CONSOLE_H
#define ZVPLAYLIST_CONSOLE_H

#include <array>
#include <chrono>
#include <iosfwd>
#include <string>
#include <string_view>
#include <unordered_map>

namespace zvplaylist {

// Where a report belongs. Line 0 stands for the file as a whole.
struct place {
  std::string_view file;
  size_t line = 0;
};

// What came of the row or file that is reported.
enum class outcome {
  skipped,  // nothing was taken from it
  mended,   // taken, with something replaced, cut or left out
  noted,    // taken as it is
};

struct console_style {
  bool colour = false;
  bool progress = false;
  bool quiet = false;  // errors that end the run, and nothing else
};

class console {
 public:
  console(std::ostream& out, console_style style) : out_(out), style_(style) {}
  console(const console&) = delete;
  console& operator=(const console&) = delete;
  ~console() { clear(); }
  // Standard error, as the terminal and the environment allow.
  static console standard(bool quiet = false);

  // "file:line: what", counted also when quiet.
  void report(outcome result, const place& where, std::string_view what);
  // The same for what may be so in any number of rows: shown where it is met first, then counted.
  void report_repeated(outcome result, const place& where, const std::string& what);
  // Shows how often each of those was met, where that was more than once.
  void summarize_repeated();
  size_t count(outcome result) const { return counts_[static_cast<size_t>(result)]; }

  void error(std::string_view what);
  void note(std::string_view what);
  // Text as it stands, for a statement and its caret; `highlight` uses the colour of faults.
  void line(std::string_view text, bool highlight = false);

  // Shows "what: done" or "what: done of total" at most ten times a second.
  void progress(std::string_view what, size_t done, size_t total = 0);
  void clear();

 private:
  void show(const place& where, std::string_view what);

  std::ostream& out_;
  console_style style_;
  std::array<size_t, 3> counts_{};
  std::unordered_map<std::string, size_t> repeated_;  // how often each was met
  size_t untold_ = 0;                                 // when there were too many different ones
  size_t shown_width_ = 0;
  std::chrono::steady_clock::time_point next_progress_{};
};

}  // namespace zvplaylist

#endif
