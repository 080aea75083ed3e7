// wispen/output.hpp: how the program talks: text for people, JSON for programs, one sentence for
// errors.
#pragma once

#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

#include "platform/Foundation.hpp"

namespace wispen::program {

using Json = nlohmann::ordered_json;

enum ExitStatus { kDone = 0, kFailed = 1, kWrongUse = 2 };

/// A property-list value as JSON: dates as ISO text, data as base64, nil as null.
Json json_of(const NSObject& value);

/// The same for a line of text: strings in quotes, yes and no for Booleans.
std::string text_of(const NSObject& value);

/// The text as a terminal may have it: control characters, marks that turn the text's direction, and bytes
/// that are no UTF-8 are written as \\x1b, \\u202e. Line breaks and tabs stay.
std::string shown(std::string_view text);

/// Whether everything printed so far has been written. Prints why not, unless nobody reads any more.
bool output_is_written();

/// Pads to a width in characters (not bytes); longer text stays whole.
std::string padded(const std::string& utf8, std::size_t width);

/// Prints one sentence on standard error and gives kFailed.
int fail(const std::string& sentence);

/// Prints the problems that the platform passed over in silence, on standard error.
void print_problems();

}  // namespace wispen::program
