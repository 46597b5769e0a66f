// statement_fault.h: where in a statement the library found fault. Its messages quote the offending
// text, or all the text from the fault on; the place is found by looking for that.
#ifndef ZVPLAYLIST_STATEMENT_FAULT_H
#define ZVPLAYLIST_STATEMENT_FAULT_H

#include <optional>
#include <string>
#include <string_view>

namespace zvplaylist {

// The byte offset of the fault, up to the statement's length, which stands for its end.
std::optional<size_t> locate_fault(std::string_view statement, std::string_view message);

// The line of a statement that holds an offset, and below it the caret, fit for a terminal.
struct marked_line {
  std::string text;
  std::string caret;
};
marked_line mark_fault(std::string_view statement, size_t offset);

}  // namespace zvplaylist

#endif
