// Splits a stream into lines.
#include "tools/line_source.h"

namespace zvplaylist {
namespace {

constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";
constexpr int end_of_stream = std::char_traits<char>::eof();

}  // namespace

line_source::line_source(std::istream& in) : in_(*in.rdbuf()) {}

bool line_source::next(source_line& line) {
  if (!waiting_.empty()) {
    line = std::move(waiting_.front());
    waiting_.pop_front();
    return true;
  }
  line = {.text = {}, .number = ++number_};
  int c = in_.sbumpc();
  if (c == end_of_stream) return false;
  for (; c != end_of_stream; c = in_.sbumpc()) {
    if (line.text.size() < max_line_bytes)
      line.text += static_cast<char>(c);
    else
      line.too_long = true;
    if (c == '\n') break;
    if (c != '\r') continue;
    if (in_.sgetc() == '\n') line.text += static_cast<char>(in_.sbumpc());
    break;
  }
  if (line.number == 1 && line.text.starts_with(byte_order_mark))
    line.text.erase(0, byte_order_mark.size());
  return true;
}

}  // namespace zvplaylist
