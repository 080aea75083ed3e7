// host/core/text_list.hpp: lists of words in one text: "de,en".
#pragma once

#include <string>
#include <vector>

namespace wispen {

/// Splits "de,en" at commas; blanks around the parts and empty parts are dropped.
std::vector<std::string> split_list(const std::string& text, char separator);
/// The words with that text between them.
std::string joined(const std::vector<std::string>& words, const std::string& between);

}  // namespace wispen
