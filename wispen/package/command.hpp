// wispen/package/command.hpp: running one of the machine's programs and reading what it prints.
#pragma once

#include <string>
#include <vector>

#include "host/core/result.hpp"

namespace wispen::package {

struct CommandResult {
  int status = 0;      // the exit status; 128 and the number for a signal
  std::string output;  // standard output and standard error
};

/// Runs a program that the usual search path holds, in the C locale and with no other environment, and waits
/// for its end. Fails where it cannot be started.
Result<CommandResult> run_command(const std::vector<std::string>& words);

}  // namespace wispen::package
