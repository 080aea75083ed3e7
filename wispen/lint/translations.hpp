// wispen/lint/translations.hpp: the strings tables of a bundle, by language.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/strings/table.hpp"

namespace wispen::lint {

/// The tables of one list in every language that the bundle has.
class Translations {
 public:
  /// Reads `list`.strings in every .lproj of the folder. Errors of broken tables go to `errors`.
  Translations(const std::string& folder, const std::string& list,
               std::vector<std::pair<std::string, std::string>>& errors);

  /// The languages whose table lacks the text; a language without any such table is not asked.
  std::vector<std::string> lacking(const std::string& text) const;

 private:
  std::vector<std::pair<std::string, strings::Table>> tables_;
};

}  // namespace wispen::lint
