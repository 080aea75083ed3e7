// tests/host/files/failing_calls.hpp: a kernel whose k-th call fails.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/files/system_calls.hpp"

namespace wispen::files::testing {

/// What the table of failing_calls() does; there is one at a time.
struct Plan {
  int fail_at = 0;                    ///< which call fails, counted from 1; 0: none
  int error_number = 0;               ///< what it fails with; 0: a write or read moves one byte only
  std::string only = {};              ///< when not empty, only calls of this name are counted
  bool keeps_failing = false;         ///< all later counted calls fail too
  int calls = 0;                      ///< counted so far
  int open_files = 0;                 ///< descriptors opened and not closed yet
  std::vector<std::string> log = {};  ///< names of calls in order
};

Plan& plan();

/// The real calls, but for what the plan says.
const SystemCalls& failing_calls();

}  // namespace wispen::files::testing
