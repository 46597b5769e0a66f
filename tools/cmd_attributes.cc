// zvplaylist attributes: the attributes that a statement can name.
#include <CLI/CLI.hpp>

#include "tools/command.h"
#include "tools/output.h"
#include "tools/session.h"

namespace zvplaylist {
namespace {

exit_code run_attributes() {
  std::string document;
  for (const std::string& name : session("eng").attributes()) document += name + "\n";
  write_output("-", document);
  return exit_fine;
}

}  // namespace

action declare_attributes(CLI::App& app) {
  app.footer(
      "Example:\n  zvplaylist attributes\n\nExit codes: 0 fine, 2 usage, 4 the output could not be "
      "written.");
  return run_attributes;
}

}  // namespace zvplaylist
