// wispen/drive/script.hpp: a script that uses pages as a user does, read and checked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"

namespace wispen::program {

/// One line: a verb and what follows it. Words are parted by blanks; in double quotes they may hold blanks,
/// with \" and \\ for those characters and \n for a line break. # begins a comment, at the start of a line or
/// before a blank.
struct Step {
  int line = 0;
  std::string source;
  std::vector<std::string> words;

  const std::string& verb() const { return words.front(); }
};

/// Fails, with the line's number, at the first line that is no step.
Result<std::vector<Step>> read_script(std::string_view text);

/// What a script can say, for people.
std::string script_help();

}  // namespace wispen::program
