// wispen/row_value.hpp: a word from the command line as the value that a row stores.
#pragma once

#include <string>

#include "host/core/result.hpp"
#include "platform/Preferences.hpp"

namespace wispen::program {

/// The value for the row. Its type is the one given ("bool", "int", "real", "string"), else what the row
/// takes: a switch yes or no, a slider a number within its range, a choice one of its values, a text field
/// text; else the type of the row's default. An error says what the row would take.
Result<NSObject> row_value(const PSSpecifier& specifier, const std::string& word, const std::string& type);

}  // namespace wispen::program
