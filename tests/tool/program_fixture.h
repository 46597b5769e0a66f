// program_fixture.h: runs the program as a person does: arguments in, standard output, standard
// error and exit code out.
#ifndef ZVPLAYLIST_TESTS_PROGRAM_FIXTURE_H
#define ZVPLAYLIST_TESTS_PROGRAM_FIXTURE_H

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>

#include "tests/tool/workspace.h"

namespace zvplaylist {

using arguments = std::vector<std::string>;

struct run_result {
  std::string out, err;

  ptrdiff_t lines() const { return std::ranges::count(out, '\n'); }
};

inline std::string quoted(const std::string& argument) {
  std::string text = "'";
  for (char c : argument) text += c == '\'' ? "'\\''" : std::string(1, c);
  return text + "'";
}

class program : public testing::Test {
 protected:
  // Nobody's own defaults may reach the tests.
  program() { setenv("XDG_CONFIG_HOME", files_.path("").c_str(), 1); }

  // The run has to end with the code.
  run_result run(int code, const arguments& given, const std::string& input = "") {
    std::string command = ZVPLAYLIST_PROGRAM;
    for (const std::string& each : given) command.append(" ").append(quoted(each));
    files_.write("stdin", input);
    command += " <" + quoted(files_.path("stdin")) + " >" + quoted(files_.path("stdout")) + " 2>" +
               quoted(files_.path("stderr"));
    const int status = std::system(command.c_str());
    const run_result result = {read_file(files_.path("stdout")), read_file(files_.path("stderr"))};
    EXPECT_EQ(WIFEXITED(status) ? WEXITSTATUS(status) : -1, code) << command << result.err;
    return result;
  }
  // Over the sample library.
  run_result on_sample(int code, const std::string& command, arguments given) {
    given.insert(given.begin(), {command, "--import", SAMPLE_CATALOG});
    return run(code, given);
  }
  run_result generate(int code, const arguments& given) {
    return on_sample(code, "generate", given);
  }

  workspace files_;
};

}  // namespace zvplaylist

#endif
