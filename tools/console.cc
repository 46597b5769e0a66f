// Messages, reports and progress on standard error.
#include "tools/console.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <vector>

#include "tools/text.h"

namespace zvplaylist {
namespace {

// Different repeated reports that are shown; more than that is a column of something else.
constexpr size_t most_repeated = 100;

constexpr std::string_view fault_colour = "\033[1;31m";
constexpr std::string_view plain_colour = "\033[0m";

bool environment_allows_colour() {
  const char* no_color = std::getenv("NO_COLOR");
  const char* term = std::getenv("TERM");
  return (no_color == nullptr || *no_color == '\0') &&
         (term == nullptr || std::string_view(term) != "dumb");
}

}  // namespace

console console::standard(bool quiet) {
  const bool terminal = isatty(STDERR_FILENO) == 1;
  return {std::cerr,
          {.colour = terminal && environment_allows_colour(),
           .progress = terminal && !quiet,
           .quiet = quiet}};
}

void console::report(outcome result, const place& where, std::string_view what) {
  ++counts_[static_cast<size_t>(result)];
  show(where, what);
}

void console::report_repeated(outcome result, const place& where, const std::string& what) {
  ++counts_[static_cast<size_t>(result)];
  const auto met = repeated_.find(what);
  if (met != repeated_.end()) {
    ++met->second;
  } else if (repeated_.size() == most_repeated) {
    ++untold_;
  } else {
    repeated_.emplace(what, 1);
    show(where, what);
  }
}

void console::summarize_repeated() {
  std::vector<std::pair<size_t, std::string>> often;
  for (const auto& [what, times] : repeated_)
    if (times > 1) often.emplace_back(times, what);
  std::sort(often.begin(), often.end(), std::greater<>());
  for (const auto& [times, what] : often) note(what + ": " + std::to_string(times) + " times");
  if (untold_ != 0) note(std::to_string(untold_) + " more of this kind");
  repeated_.clear();
  untold_ = 0;
}

void console::show(const place& where, std::string_view what) {
  if (style_.quiet) return;
  clear();
  out_ << printable(where.file);
  if (where.line != 0) out_ << ':' << where.line;
  out_ << ": " << printable(what) << '\n';
}

void console::error(std::string_view what) {
  clear();
  out_ << "zvplaylist: ";
  line(printable(what), true);
}

void console::note(std::string_view what) {
  if (style_.quiet) return;
  clear();
  out_ << printable(what) << '\n';
}

void console::line(std::string_view text, bool highlight) {
  clear();
  highlight = highlight && style_.colour;
  out_ << (highlight ? fault_colour : "") << text << (highlight ? plain_colour : "") << '\n';
}

void console::progress(std::string_view what, size_t done, size_t total) {
  const auto now = std::chrono::steady_clock::now();
  if (!style_.progress || now < next_progress_) return;
  next_progress_ = now + std::chrono::milliseconds(100);
  std::string text = printable(what) + ": " + std::to_string(done);
  if (total != 0) text += " of " + std::to_string(total);
  clear();
  out_ << '\r' << text << std::flush;
  shown_width_ = display_width(text);
}

void console::clear() {
  if (shown_width_ == 0) return;
  out_ << '\r' << std::string(shown_width_, ' ') << '\r';
  shown_width_ = 0;
}

}  // namespace zvplaylist
