// host/foundation/system_texts.cpp: the words that the platform itself shows, in the user's language.

#include "host/foundation/system_texts.hpp"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "host/foundation/bundle.hpp"

namespace wispen {

namespace {

struct Text {
  std::string_view english;
  std::string_view language;
  const char* text;
};

constexpr std::array kTexts = std::to_array<Text>({
    {"Back", "de", "Zurück"},
    {"Cancel", "de", "Abbrechen"},
    {"Done", "de", "Fertig"},
    {"Edit", "de", "Bearbeiten"},
    {"Save", "de", "Sichern"},
    {"Settings", "de", "Einstellungen"},
});

}  // namespace

NSString system_text(const char* english) {
  for (const std::string& language : preferred_languages()) {
    const std::string_view base = std::string_view(language).substr(0, language.find_first_of("-_"));
    if (base == "en") break;
    const auto* const found = std::ranges::find_if(
        kTexts, [&](const Text& text) { return text.english == english && text.language == base; });
    if (found != kTexts.end()) return NSString(found->text);
  }
  return NSString(english);
}

}  // namespace wispen
