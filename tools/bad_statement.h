// bad_statement.h: how a statement that the library refuses is shown: its message, a hint where it
// has none, and a caret under the offending place if the message tells where that is.
#ifndef ZVPLAYLIST_BAD_STATEMENT_H
#define ZVPLAYLIST_BAD_STATEMENT_H

#include "tools/console.h"
#include "tools/library.h"

namespace zvplaylist {

// Ends the run as wrong usage, but for an error that is not the statement's. `seed_hint` is what to
// say when the statement uses SEED and has none.
[[noreturn]] void fail_on_statement(console& out, const std::string& statement,
                                    const library_error& error, const std::string& seed_hint);

}  // namespace zvplaylist

#endif
