// Shows a bad statement.
#include "tools/bad_statement.h"

#include "tools/command.h"
#include "tools/statement_fault.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

// What to tell where the library has a code and no message.
struct explained_status {
  zvsdk_status status;
  const char* hint;
};
constexpr explained_status explained_statuses[] = {
    {playlist_error_not_found, "IN wants a list of numbers in brackets: IN [90, 120]"},
    {playlist_error_internal,
     "it can be read but means nothing: a bare number as ORDER, two values or two attributes "
     "compared, or a score asked of AND, OR or IN"}};

}  // namespace

void fail_on_statement(console& out, const std::string& statement, const library_error& error,
                       const std::string& seed_hint) {
  if (error.status() == playlist_error_no_memory) throw error;
  if (error.status() == playlist_error_seed_required) throw failure(exit_usage, seed_hint);
  out.error(error.what());
  for (const explained_status& each : explained_statuses)
    if (each.status == error.status()) out.line(std::string("  ") + each.hint);
  const auto offset = locate_fault(statement, error.what());
  if (offset && !trim(statement).empty()) {
    const marked_line marked = mark_fault(statement, *offset);
    out.line("  " + marked.text);
    out.line("  " + marked.caret, true);
  }
  throw failure(exit_usage, "");
}

}  // namespace zvplaylist
