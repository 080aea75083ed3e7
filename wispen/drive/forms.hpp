// wispen/drive/forms.hpp: every step that a script can say, and the function that does it.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/core/result.hpp"
#include "wispen/output.hpp"

namespace wispen::program {

class Driver;

/// A step's way of being written. A verb can have several forms.
struct Form {
  std::string_view verb;
  /// What follows the verb: w a word, n a number, and fixed words after a quote mark ('to).
  std::string_view arguments;
  /// Its use, then what it does; "" for a form that another one's help covers.
  std::string_view help;
  /// Gets the words and numbers that the form leaves open, in their order.
  Result<Json> (*run)(Driver& driver, const std::vector<std::string>& arguments);
};

std::span<const Form> forms();

}  // namespace wispen::program
