// wispen/drive/script.hpp: a script that uses pages as a user does, read and checked.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "wispen/drive/forms.hpp"

namespace wispen::program {

/// One line of a script.
struct Step {
  int line = 0;
  std::string source;
  const Form* form = nullptr;
  std::vector<std::string> arguments;  // what the form leaves open
};

/// A line is a verb and what follows it. Words are parted by blanks; in double quotes they may hold blanks,
/// with \" and \\ for those characters and \n for a line break. # begins a comment, at the start of a line or
/// before a blank. Fails, with the line's number, at the first line that is not a step.
Result<std::vector<Step>> read_script(std::string_view text);

/// What a script can say, for people.
std::string script_help();

}  // namespace wispen::program
