// zvplaylist validate: says whether a statement can be run and whether it needs a seed.
#include <CLI/CLI.hpp>

#include "tools/bad_statement.h"
#include "tools/options.h"
#include "tools/output.h"
#include "tools/session.h"
#include "tools/text.h"

namespace zvplaylist {
namespace {

struct validate_options {
  std::string language = "eng";
  std::string statement;
};

exit_code run_validate(const validate_options& options) {
  console out = console::standard();
  const std::string statement = replace_unusable(options.statement).text;
  session library(options.language);
  try {
    const bool uses_seed = library.validate(statement);
    write_output("-", uses_seed ? "the statement is fine and needs a seed (--seed IDENT)\n"
                                : "the statement is fine and needs no seed\n");
    return exit_fine;
  } catch (const library_error& error) {
    fail_on_statement(out, statement, error, error.what());
  }
}

}  // namespace

action declare_validate(CLI::App& app) {
  auto options = std::make_shared<validate_options>();
  app.add_option("STATEMENT", options->statement, "What to look at")->required();
  declare_language_option(app, options->language);
  app.footer(
      "Example:\n"
      "  zvplaylist validate \"GENPL WHERE ZV_Genre LIKE SEED AND ZV_Mood = 'Happy'\"\n"
      "\n"
      "Exit codes: 0 fine, 2 usage or bad statement, 4 the output could not be written.");
  return [options] { return run_validate(*options); };
}

}  // namespace zvplaylist
