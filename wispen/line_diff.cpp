// wispen/line_diff.cpp: which lines two texts differ in.

#include "wispen/line_diff.hpp"

#include <algorithm>
#include <sstream>

namespace wispen::program {

namespace {

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

std::vector<std::string> line_diff(const std::string& before, const std::string& after) {
  const std::vector<std::string> a = lines_of(before);
  const std::vector<std::string> b = lines_of(after);
  // common[i][j]: how long a common sequence the tails from i and j have.
  std::vector<std::vector<std::size_t>> common(a.size() + 1, std::vector<std::size_t>(b.size() + 1, 0));
  for (std::size_t i = a.size(); i-- > 0;) {
    for (std::size_t j = b.size(); j-- > 0;) {
      common[i][j] = a[i] == b[j] ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);
    }
  }
  std::vector<std::string> changes;
  std::size_t i = 0;
  std::size_t j = 0;
  while (i < a.size() || j < b.size()) {
    if (i < a.size() && j < b.size() && a[i] == b[j]) {
      ++i;
      ++j;
    } else if (j == b.size() || (i < a.size() && common[i + 1][j] >= common[i][j + 1])) {
      changes.push_back("- " + a[i++]);
    } else {
      changes.push_back("+ " + b[j++]);
    }
  }
  return changes;
}

}  // namespace wispen::program
