// wispen/line_diff.hpp: which lines two texts differ in.
#pragma once

#include <string>
#include <vector>

namespace wispen::program {

/// The lines that were taken out ("- ...") and put in ("+ ..."), in order, by the longest common sequence of
/// lines. For files of some thousand lines at most: it takes the product of their numbers.
std::vector<std::string> line_diff(const std::string& before, const std::string& after);

}  // namespace wispen::program
