// host/program/lint_command.cpp: wispen lint.

#include "host/program/commands.hpp"
#include "host/program/output.hpp"

namespace wispen::program {

int lint(const CommonOptions& options) {
  static_cast<void>(options);
  return fail("");
}

}  // namespace wispen::program
