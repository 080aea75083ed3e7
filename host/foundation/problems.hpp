// host/foundation/problems.hpp: what went wrong in places that cannot fail aloud.
#pragma once

#include <string>
#include <vector>

namespace wispen {

/// The platform stays silent about a strings table that does not parse or an image that is missing, so
/// the host does too; but it keeps a sentence about each for the developer. Thread safe; equal sentences
/// are kept once, and at most 1,000 of them.
void report_problem(std::string sentence);

/// The sentences since the last call, in order of appearance.
std::vector<std::string> take_problems();

}  // namespace wispen
