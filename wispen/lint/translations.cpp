// wispen/lint/translations.cpp: the strings tables of a bundle, by language.

#include "wispen/lint/translations.hpp"

#include <algorithm>
#include <filesystem>

namespace wispen::lint {

namespace fs = std::filesystem;

Translations::Translations(const std::string& folder, const std::string& list,
                           std::vector<std::pair<std::string, std::string>>& errors) {
  std::error_code error;
  std::vector<fs::path> languages;
  for (const auto& entry : fs::directory_iterator(folder, error)) {
    if (entry.path().extension() == ".lproj") languages.push_back(entry.path());
  }
  std::ranges::sort(languages);
  for (const fs::path& language : languages) {
    const fs::path file = language / (list + ".strings");
    if (!fs::exists(file, error)) continue;
    auto table = strings::Table::read(file.string());
    if (table.error()) {
      errors.emplace_back((language.filename() / file.filename()).string(), table.error()->message);
    }
    tables_.emplace_back(language.stem().string(), std::move(table));
  }
}

std::vector<std::string> Translations::lacking(const std::string& text) const {
  std::vector<std::string> languages;
  for (const auto& [language, table] : tables_) {
    if (table.find(text) == nullptr) languages.push_back(language);
  }
  return languages;
}

}  // namespace wispen::lint
